#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include "common/Titles.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "mediainfo/InfoEditor.h"
#include "mediainfo/ListInfo.h"
#include "mediainfo/TrailingTags.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

const std::string kPath = "D:\\音乐\\歌.mp3";
const std::string kAudio(1000, '\x55');

std::string Z(std::size_t n) { return std::string(n, '\0'); }
using test::Gbk;

// A standard 128-byte tag as another program leaves it: blanks pad the title, a track number ends the comment.
const std::string kForeignTag =
    "TAG" + std::string("Old title") + std::string(21, ' ') + "Old artist" + Z(50) + "1999" + Z(29) + "\x07\x0C";
const std::string kTitle26 = "十三个汉字的标题正好二十六x";  // 27 bytes in code page 936

// Each tail behind the audio, the tag and lyrics saved, and the tail after; every layout written out byte by
// byte: "LYRICS", the lyrics field when there are lyrics, then the tag in its groups.
TEST(InfoBlockWrite, TailsBeforeAndAfter) {
    const struct {
        std::string before;
        Id3v1Tag tag;
        std::string lyrics;
        std::string after;
    } cases[] = {
        {"", {"abc", "歌手", "", "2005", "ok"}, "[00:01]x",
         "LYRICSBEGININD0000211LYR00008[00:01]xTAGabc" + Z(27) + Gbk("歌手") + Z(26) + Z(30) + "2005ok" + Z(29)},
        {kForeignTag, {"t", "a", "b", "05", "c"}, "[00:02]歌",
         "LYRICSBEGININD0000211LYR00009[00:02]" + Gbk("歌") + "TAGt" + Z(29) + "a" + Z(29) + "b" + Z(29) + "05c" +
             Z(32)},
        // 27 bytes of title fill "TAG" and the title to 30: one zero byte follows; so after a 33-byte year and
        // comment. Such a tag is 133 bytes.
        {"", {kTitle26, "a", "b", "2005", std::string(29, 'c')}, "",
         "LYRICSTAG" + Gbk(kTitle26) + Z(4) + "a" + Z(29) + "b" + Z(29) + "2005" + std::string(29, 'c') + Z(6)},
        // Blocks of other programs are replaced from their start, their tag with them.
        {"LYRICSBEGININD0000200EAL00003abc000032LYRICS200" + kForeignTag, {"t", "", "", "", ""}, "",
         "LYRICSTAGt" + Z(124)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tag.title);
        test::FakeFileSystem fs;
        fs.files[kPath] = kAudio + c.before;
        ASSERT_EQ(WriteInfoBlock(fs, kPath, c.tag, BuildLyricsField(c.lyrics)), InfoWriteResult::Written);
        std::string after = c.after;  // never shortened: zero bytes fill up to the old length
        after.resize(std::max(after.size(), c.before.size()), '\0');
        EXPECT_EQ(fs.files[kPath], kAudio + after);
        // Our own readers read every item back.
        EXPECT_EQ(ReadMediaInfo(fs, kPath), (MediaInfoRecord{c.tag.title, c.tag.artist, c.tag.album, c.tag.year,
                                                             c.tag.comment, c.lyrics}));
    }
}

TEST(InfoBlockWrite, SavingAgainWritesOverTheOldBlockAndZeroesWhatALongerOneLeft) {
    // The largest block with the longest tag is found again, here at the very start of the file (behind
    // audio, the cases above).
    std::string lyrics = "[00:01]";
    lyrics += std::string(kMaxLyricsBytes - lyrics.size(), 'x');
    const Id3v1Tag full{kTitle26, "a", "b", "2005", std::string(29, 'c')};
    test::FakeFileSystem fs;
    fs.files[kPath] = "";
    ASSERT_EQ(WriteInfoBlock(fs, kPath, full, BuildLyricsField(lyrics)), InfoWriteResult::Written);
    const std::size_t sizeAfterFirst = fs.files[kPath].size();
    ASSERT_EQ(WriteInfoBlock(fs, kPath, {"s", "", "", "", ""}, BuildLyricsField("[00:02]short")),
              InfoWriteResult::Written);
    const std::string block = "LYRICSBEGININD0000211LYR00012[00:02]shortTAGs" + Z(29) + Z(95);
    EXPECT_EQ(fs.files[kPath], block + Z(sizeAfterFirst - block.size()));  // never shortened
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:02]short");
    // A third save still finds the block behind the zero bytes.
    ASSERT_EQ(WriteInfoBlock(fs, kPath, full, BuildLyricsField(lyrics)), InfoWriteResult::Written);
    EXPECT_EQ(fs.files[kPath].size(), sizeAfterFirst);
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), lyrics);
}

#ifndef _WIN32
// What ffprobe takes for the file's title.
std::string ProbedTitle(const std::string& bytes) {
    const std::string file = std::filesystem::temp_directory_path() / "lumora-info-block-probe.mp3";
    std::ofstream(file, std::ios::binary) << bytes;
    std::string out(64, '\0');
    FILE* p = popen(("ffprobe -v error -show_entries format_tags=title -of csv=p=0 '" + file + "'").c_str(), "r");
    out.resize(p ? std::fread(out.data(), 1, out.size(), p) : 0);
    if (p) pclose(p);
    return out;
}
#endif

// Tails longer than the reach of the tag search (another program's lyrics block of 5000 bytes, or what an
// earlier save left behind one): the new, shorter block still ends where readers look for the tag, and the
// audio in front of it stays as it was.
TEST(InfoBlockWrite, AnyOldTailLeavesTheNewTagWhereReadersLook) {
    const std::string audio = test::MpegFrames(40);
    const std::string lyrics3v2 = "LYRICSBEGININD0000210LYR04956" + std::string(4956, 'l') + "004985LYRICS200";
    const std::string ownLeftBehind = "LYRICSTAGold" + Z(125) + Z(5000);
    const Id3v1Tag tag{"New title", "a", "", "2024", ""};
    for (const std::string& tail : {lyrics3v2 + kForeignTag, "LYRICSBEGIN" + std::string(5000, 'l') + "LYRICSEND" + kForeignTag,
                                    lyrics3v2, ownLeftBehind}) {
        SCOPED_TRACE(tail.size());
        test::FakeFileSystem fs;
        fs.files[kPath] = audio + tail;
        ASSERT_EQ(WriteInfoBlock(fs, kPath, tag, BuildLyricsField("[00:01]x")), InfoWriteResult::Written);
        const std::string& after = fs.files[kPath];
        EXPECT_EQ(after.substr(0, audio.size()), audio);
        EXPECT_EQ(after.substr(after.size() - kId3v1Size, 12), "TAGNew title");
        EXPECT_EQ(ReadMediaInfo(fs, kPath), (MediaInfoRecord{"New title", "a", "", "2024", "", "[00:01]x"}));
        EXPECT_EQ(LocateTrailingTags(after).audioEnd, after.rfind("LYRICSBEGININD0000211"));
#ifndef _WIN32
        EXPECT_EQ(ProbedTitle(after), "New title\n");
#endif
    }
}

// A disk that fails in the middle of the write: what it wrote is put back.
TEST(InfoBlockWrite, AFailedWritePutsTheOldBytesBack) {
    struct FailingOnce : test::FakeFileSystem {
        bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override {
            if (++writes > 1) return FakeFileSystem::WriteFilePart(path, offset, bytes);
            FakeFileSystem::WriteFilePart(path, offset, bytes.substr(0, bytes.size() / 2));
            return false;
        }
        int writes = 0;
    } fs;
    const std::string original = kAudio + "LYRICSBEGININD0000211LYR00008[00:01]x" + kForeignTag;
    fs.files[kPath] = original;
    const std::string lyrics = "[00:01]" + std::string(500, 'n');  // longer: the failed write extended the file
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {"new", "", "", "", ""}, BuildLyricsField(lyrics)), InfoWriteResult::FileError);
    EXPECT_EQ(fs.files[kPath], original + Z(fs.files[kPath].size() - original.size()));
}

// The first failing field in the editor's order wins; text GBK cannot hold comes after the lengths.
TEST(ValidateMediaInfo, LimitsAndOrder) {
    const std::string lyrics3555 = std::string(3553, 'x') + "\r\n";
    const std::pair<MediaInfoRecord, std::string> cases[] = {
        {{kTitle26, "", std::string(29, 'a'), "05", "", lyrics3555}, "ok"},
        {{"十四个汉字的标题正好二十八字", "", "", "", "", ""}, "“标题”内容大于最大值，请删去一些内容再继续。"},
        {{"", "", std::string(30, 'a'), "", "", ""}, "“专集”内容大于"},
        {{"", "", "", "205", "", ""}, "“年代”内容不合法。"},
        {{"", "", "", "", "", std::string(1776, 'x') + "\r\n" + std::string(888, 'x') + "\r\n" + std::string(888, 'y')},
         "“歌词”内容大于最大值，请删去一些内容再继续。\r\n\r\n提示："},
        {{"", "", "", "x", std::string(40, 'c'), ""}, "“年代”"},
        {{"", "", "", "", "😀", ""}, "“其他”中有无法保存的字符"},
        {{"", "", "", "", std::string(30, 'c'), "😀"}, "“其他”内容大于"},
    };
    for (const auto& [record, start] : cases) {
        EXPECT_EQ(ValidateMediaInfo(record).value_or("ok").rfind(start, 0), 0u) << record.title << record.year;
    }
    EXPECT_EQ(LyricsByteSize("ab\n歌"), 6u);  // the line break counts 2, as the edit box would hold it
    EXPECT_EQ(BuildLyricsField("[00:01]歌\n[00:02]b"), "BEGININD0000211LYR00019[00:01]歌\r\n[00:02]b");
}

// "LYRICS" and a tag as our information block writer saves them.
std::string Written(const Id3v1Tag& tag) { return BuildInfoBlockBytes(tag, "").value(); }

using Tails = std::tuple<std::size_t, std::optional<std::size_t>, std::optional<std::size_t>, std::optional<std::size_t>>;

// "纠错": what other programs leave in a tag or a lyrics block and shows as garbage goes, only when asked. A
// field ends at its first zero byte; control characters, a half Chinese character cut by the field's end and
// blanks (full-width too) around it go; lyrics keep their line breaks.
TEST(Id3v1, RepairTakesOutWhatShowsAsGarbageOnlyWhenAsked) {
    const auto pad = [](std::string s, std::size_t n, char c) { return s.resize(n, c), s; };
    const std::string tag = "TAG" + pad(Gbk("歌名") + std::string("\0left", 5), 30, '\0') +
                            pad("\x01mix\x1F", 30, ' ') + std::string(29, 'a') + "\xB8" +
                            pad("2005x" + Gbk("　"), 34, '\0') + "\x0C";
    const std::string a29(29, 'a');
    EXPECT_EQ(ParseId3v1Tag(kAudio + tag), (Id3v1Tag{"歌名left", "\x01mix\x1F", a29 + "\xEF\xBF\xBD", "2005", "x　"}));
    EXPECT_EQ(ParseId3v1Tag(kAudio + tag, true), (Id3v1Tag{"歌名", "mix", a29, "2005", "x"}));
    test::FakeFileSystem fs;
    fs.files[kPath] = kAudio;
    ASSERT_EQ(WriteInfoBlock(fs, kPath, {}, BuildLyricsField("[00:01]a\x01z\r\n[00:02]c\x7F")),
              InfoWriteResult::Written);
    EXPECT_EQ(ReadMediaInfo(fs, kPath, true)->lyrics + "|" + ReadEmbeddedLyrics(fs, kPath).value(),
              "[00:01]az\r\n[00:02]c|[00:01]a\x01z\r\n[00:02]c\x7F");
}

TEST(LocateTrailingTags, EndsTheAudioAtTheFirstTagBehindItWhichTheTagLineAndListTipShow) {
    const std::string& tag = kForeignTag;
    const std::string lyrics3v2 = "LYRICSBEGININD0000210000021LYRICS200";  // IND "10", size 21
    const std::string ape = "APETAGEX" + std::string("\xD0\x07\x00\x00\x28\x00\x00\x00", 8) + std::string(16, '\0');
    const std::pair<std::string, Tails> cases[] = {
        {kAudio, {1000, std::nullopt, std::nullopt, std::nullopt}},
        {"LYRICS" + tag, {0, 6, 0, std::nullopt}},
        {kAudio + "LYRICSBEGINsome wordsLYRICSEND" + tag, {1000, 1030, 1000, std::nullopt}},
        {kAudio + lyrics3v2, {1000, std::nullopt, 1000, std::nullopt}},
        {kAudio + "TAG" + std::string(200, '\x55'), {1203, std::nullopt, std::nullopt, std::nullopt}},  // in the audio
        // Zero bytes a shorter block of ours left behind; "TAG" in the title.
        {kAudio + Written({"TAG", "a", "b", "2005", std::string(29, 'c')}) + std::string(3000, '\0'),
         {1000, 1006, 1000, std::nullopt}},
        {kAudio + "12345678" + ape + lyrics3v2 + tag, {1000, 1040 + lyrics3v2.size(), 1040, 1000}},
    };
    for (const auto& [file, tails] : cases) {
        const TrailingTags t = LocateTrailingTags(file);
        EXPECT_EQ(Tails(t.audioEnd, t.id3v1, t.lyrics, t.ape), tails) << file.size();
    }
    EXPECT_EQ(ParseId3v1Tag(kAudio + kForeignTag), (Id3v1Tag{"Old title", "Old artist", "", "1999", ""}));
    // The tag line under the title, the file list's record and the list's balloon help built from that record.
    EXPECT_EQ(BuildTagLine(Id3v1Tag{"歌名", "", "", "", "x"}), "  标题：歌名  歌手：无  专集：无  年代：无  其他：x");
    EXPECT_EQ(BuildTagLine(std::nullopt), "  标题：N/A  歌手：N/A  专集：N/A  年代：N/A  其他：N/A");
    // A comment holding "@" stays whole; a short record fills with "无".
    EXPECT_EQ(ListInfoTip("c.mp3", "t@a@b@1999@x@y"),
              "文件：c.mp3\r\n标题：t\r\n歌手：a\r\n专集：b\r\n年代：1999\r\n其他：x@y");
    test::FakeFileSystem fs;
    fs.files["D:\\a.mp3"] = kAudio + Written({"歌", "", "", "", "c"});
    EXPECT_EQ(ListInfoTipFor(fs, "D:\\a.mp3", "a.mp3", false), "文件：a.mp3");  // tags only when asked
    EXPECT_EQ(ListInfoTipFor(fs, "D:\\a.mp3", "a.mp3", true), ListInfoTip("a.mp3", "歌@无@无@无@c"));
}

class RecordingEditorView : public InfoEditorView {
public:
    void ShowFields(const MediaInfoRecord& record) override { shown.push_back(record); }
    void ShowTimeShift(std::optional<long long> seconds) override { shift = seconds; }
    void RefreshFileList() override { ++refreshes; }
    std::vector<MediaInfoRecord> shown;
    std::optional<long long> shift;
    int refreshes = 0;
};

class InfoEditorTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files[kPath] = std::string(500, 'a');
        ASSERT_TRUE(editor.TakeFile(kPath));
    }

    test::FakeFileSystem fs;
    test::FakePrompts prompts;
    RecordingEditorView view;
    InfoEditor editor{fs, prompts, view, "1.2.3"};
};

TEST_F(InfoEditorTest, SavesOnlyAWritableFileWithValidFieldsLettingGoOfTheFileLumoraHolds) {
    const MediaInfoRecord bad{"", "", "", "205", std::string(30, 'c'), ""};
    editor.SetFields(bad);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Invalid);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{*ValidateMediaInfo(bad), std::string(kErrorTitle)}}));
    fs.readOnly.push_back(kPath);
    const MediaInfoRecord record{"标题", "歌手", "专集", "05", "其他", "[00:01]一\r\n[00:02]二"};
    editor.SetFields(record);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::WriteFailed);
    editor.SetRemoveReadOnly(true);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);
    EXPECT_EQ(std::pair(prompts.messages.size(), view.refreshes), std::pair(std::size_t{3}, 1));
    ASSERT_TRUE(editor.TakeFile(kPath));
    EXPECT_EQ(view.shown.back(), record);

    // A file Lumora itself holds (the playing device) is let go for the write test and the write, and taken
    // back after each; a file read-only for real is still refused.
    struct Holder : FileHolder {
        bool LetGo(const std::string& path) override {
            log += "let go,";
            return path == kPath && std::erase(fs->readOnly, path) > 0;
        }
        void TakeBack() override {
            log += "back,";
            fs->readOnly.push_back(kPath);
        }
        test::FakeFileSystem* fs = nullptr;
        std::string log;
    } holder;
    holder.fs = &fs;
    InfoEditor held{fs, prompts, view, "1.2.3", &holder};
    fs.readOnly.push_back(kPath);  // the device's hold
    ASSERT_TRUE(held.TakeFile(kPath));
    held.SetFields({"新标题", "", "", "", "", ""});
    EXPECT_EQ(held.Save(), InfoSaveOutcome::Saved);
    EXPECT_EQ(holder.log, "let go,back,let go,back,");
    EXPECT_NE(fs.files[kPath].find(Gbk("TAG新标题")), std::string::npos);
    const std::string other = "D:\\音乐\\只读.mp3";
    fs.files[other] = "x";
    fs.readOnly.push_back(other);
    EXPECT_FALSE(held.TakeFile(other));
    EXPECT_EQ(prompts.messages.back().title, kErrorTitle);
}

TEST_F(InfoEditorTest, TimeTrackShiftIsAskedAndAppliedByTheSave) {
    EXPECT_FALSE(editor.ChooseTimeShift());  // no lyrics yet: nothing is asked
    EXPECT_EQ(std::pair(prompts.messages.size(), prompts.questions.size()), std::pair(std::size_t{1}, std::size_t{0}));
    editor.SetFields({"", "", "", "", "", "[00:03]a\r\n[01:10]b\r\nc"});
    prompts.textScript = {"五", " -5 "};
    EXPECT_FALSE(editor.ChooseTimeShift());
    EXPECT_TRUE(editor.ChooseTimeShift());
    EXPECT_EQ(view.shift, -5);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);
    const std::string shifted = "[00:00]a\r\n[01:05]b\r\n[00:00]c";
    EXPECT_EQ(view.shown.back().lyrics, shifted);
    EXPECT_EQ(view.shift, std::nullopt);
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::Saved);  // saved again: not shifted twice
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), shifted);

    editor.SetFields({"", "", "", "", "", "[ab:cd]x"});
    prompts.textAnswer = "3";
    ASSERT_TRUE(editor.ChooseTimeShift());
    const std::size_t shown = prompts.messages.size();
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::BadTimeTrack);
    EXPECT_EQ(prompts.messages.size(), shown + 1);
    editor.SetFields({});
    EXPECT_EQ(editor.Save(), InfoSaveOutcome::NoLyricsToShift);
}

TEST_F(InfoEditorTest, ExportsAndImportsQgcFiles) {
    const MediaInfoRecord record{"标题", "歌手", "专集", "2005", "其他", "[00:01]一\r\n\r\n[00:02]二"};
    editor.SetFields(record);
    prompts.saveAnswer = "D:\\导出.QGC";
    EXPECT_TRUE(editor.ExportQgc());
    EXPECT_EQ(fs.files["D:\\导出.QGC"],
              Gbk("[文件信息]\r\n说明=这是“Lumora”的媒体信息文件\r\n版本=1.2.3\r\n\r\n"
                  "[媒体信息]\r\n标题=标题\r\n歌手=歌手\r\n专集=专集\r\n年代=2005\r\n其他=其他\r\n\r\n"
                  "[媒体歌词]\r\n行数=3\r\n歌词1=[00:01]一\r\n歌词2=\r\n歌词3=[00:02]二\r\n"));
    // Exported over a file of its own, the keys the export does not write stay.
    fs.files["D:\\导出.QGC"] = Gbk("[歌曲]\r\n评分=5\r\n[媒体信息]\r\n标题=旧\r\n来源=CD\r\n");
    EXPECT_TRUE(editor.ExportQgc());
    const std::string merged = fs.files["D:\\导出.QGC"];
    for (const char* kept : {"[歌曲]\r\n评分=5\r\n", "来源=CD\r\n", "标题=标题\r\n", "歌词3=[00:02]二\r\n"}) {
        EXPECT_NE(merged.find(Gbk(kept)), std::string::npos) << kept;
    }
    editor.SetFields({});
    prompts.openAnswer = "D:\\导出.QGC";
    EXPECT_TRUE(editor.ImportQgc());
    EXPECT_EQ(view.shown.back(), record);
    prompts.openAnswer = "D:\\none.QGC";
    EXPECT_FALSE(editor.ImportQgc());
    fs.failWrites = true;
    EXPECT_FALSE(editor.ExportQgc());
    editor.SetFields({"😀", "", "", "", "", ""});  // refused before anything is written
    EXPECT_FALSE(editor.ExportQgc());
}

}  // namespace
}  // namespace lumora
