#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "mediainfo/TrailingTags.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

const std::string kPath = "D:\\音乐\\歌.mp3";
const std::string kAudio(2000, '\x55');

std::string Z(std::size_t n) { return std::string(n, '\0'); }
using test::Gbk;

// A standard 128-byte tag as another program leaves it.
const std::string kForeignTag = "TAG" + std::string("Old title") + Z(21) + "Old artist" + Z(50) + "1999" + Z(30) + "\x0C";
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
    // The largest block with the longest tag is found again; so is a block at the very start of a file.
    std::string lyrics = "[00:01]";
    lyrics += std::string(kMaxLyricsBytes - lyrics.size(), 'x');
    const Id3v1Tag full{kTitle26, "a", "b", "2005", std::string(29, 'c')};
    test::FakeFileSystem fs;
    for (const std::string& audio : {kAudio, std::string()}) {
        fs.files[kPath] = audio;
        ASSERT_EQ(WriteInfoBlock(fs, kPath, full, BuildLyricsField(lyrics)), InfoWriteResult::Written);
        const std::size_t sizeAfterFirst = fs.files[kPath].size();
        ASSERT_EQ(WriteInfoBlock(fs, kPath, {"s", "", "", "", ""}, BuildLyricsField("[00:02]short")),
                  InfoWriteResult::Written);
        const std::string block = audio + "LYRICSBEGININD0000211LYR00012[00:02]shortTAGs" + Z(29) + Z(95);
        EXPECT_EQ(fs.files[kPath], block + Z(sizeAfterFirst - block.size()));  // never shortened
        EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:02]short");
        // A third save still finds the block behind the zero bytes.
        ASSERT_EQ(WriteInfoBlock(fs, kPath, full, BuildLyricsField(lyrics)), InfoWriteResult::Written);
        EXPECT_EQ(fs.files[kPath].size(), sizeAfterFirst);
        EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), lyrics);
    }
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
        Id3v1Tag read;
        EXPECT_TRUE(ReadId3v1Tag(fs, kPath, read));
        EXPECT_EQ(read, tag);
        EXPECT_EQ(ReadMediaInfo(fs, kPath), (MediaInfoRecord{"New title", "a", "", "2024", "", "[00:01]x"}));
        EXPECT_EQ(LocateTrailingTags(after).audioEnd, after.rfind("LYRICSBEGININD0000211"));
#ifndef _WIN32
        EXPECT_EQ(ProbedTitle(after), "New title\n");
#endif
    }
}

// A disk that fails in the middle of the write: what it wrote is put back.
class FailingOnceFileSystem : public test::FakeFileSystem {
public:
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override {
        if (++writes == 1) {
            FakeFileSystem::WriteFilePart(path, offset, bytes.substr(0, bytes.size() / 2));
            return false;
        }
        return FakeFileSystem::WriteFilePart(path, offset, bytes);
    }
    int writes = 0;
};

TEST(InfoBlockWrite, AFailedWritePutsTheOldBytesBack) {
    FailingOnceFileSystem fs;
    const std::string original = kAudio + "LYRICSBEGININD0000211LYR00008[00:01]x" + kForeignTag;
    fs.files[kPath] = original;
    const std::string lyrics = "[00:01]" + std::string(500, 'n');  // longer: the failed write extended the file
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {"new", "", "", "", ""}, BuildLyricsField(lyrics)), InfoWriteResult::FileError);
    EXPECT_EQ(fs.writes, 2);
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
    EXPECT_EQ(InfoByteLength("😀"), 2u);  // not in GBK: counted 2, refused by validation
    EXPECT_EQ(LyricsByteSize("ab\n歌"), 6u);  // the line break counts 2, as the edit box would hold it
    EXPECT_EQ(BuildLyricsField("[00:01]歌\n[00:02]b"), "BEGININD0000211LYR00019[00:01]歌\r\n[00:02]b");
}

}  // namespace
}  // namespace lumora
