#include <gtest/gtest.h>

#include <string>

#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "mediainfo/TestMedia.h"
#include "mediainfo/TrailingTags.h"
#include "ports/TextCodec.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

const std::string kPath = "D:\\音乐\\歌.mp3";
const std::string kAudio(2000, '\x55');

std::string Z(std::size_t n) { return std::string(n, '\0'); }
std::string Gbk(std::string_view utf8) { return Utf8ToCp936(utf8).value(); }

// A standard 128-byte tag as another program leaves it.
std::string ForeignTag() {
    return "TAG" + std::string("Old title") + Z(21) + std::string("Old artist") + Z(20) + Z(30) + "1999" + Z(30) +
           "\x0C";
}

class InfoBlockWrite : public testing::Test {
protected:
    InfoWriteResult Write(const Id3v1Tag& tag, std::string_view lyrics) {
        return WriteInfoBlock(fs, kPath, tag, BuildLyricsField(lyrics));
    }
    const std::string& File() { return fs.files[kPath]; }

    test::FakeFileSystem fs;
};

// Every layout below is written out byte by byte from the block's table.
TEST_F(InfoBlockWrite, AppendsBlockAndTagToAFileWithoutTag) {
    fs.files[kPath] = kAudio;
    ASSERT_EQ(Write({"abc", "歌手", "", "2005", "ok"}, "[00:01]x"), InfoWriteResult::Written);
    const std::string expected = kAudio + "LYRICS" + "BEGININD0000211LYR" + "00008" + "[00:01]x" +  //
                                 "TAG" + "abc" + Z(24) + Z(3) +                                     // title group
                                 "\xB8\xE8\xCA\xD6" + Z(26) +                                       // 歌手
                                 Z(30) +                                                            // album
                                 "2005ok" + Z(24) + Z(5);
    EXPECT_EQ(File(), expected);
}

TEST_F(InfoBlockWrite, PutsTheBlockWhereATagOnlyFileHadItsTag) {
    fs.files[kPath] = kAudio + ForeignTag();
    ASSERT_EQ(Write({"t", "a", "b", "05", "c"}, "[00:02]歌"), InfoWriteResult::Written);
    const std::string expected = kAudio + "LYRICS" + "BEGININD0000211LYR00009[00:02]" + Gbk("歌") + "TAG" + "t" +
                                 Z(26) + Z(3) + "a" + Z(29) + "b" + Z(29) + "05c" + Z(27) + Z(5);
    EXPECT_EQ(File(), expected);
}

TEST_F(InfoBlockWrite, EmptyLyricsWriteOnlyTheMark) {
    fs.files[kPath] = kAudio;
    ASSERT_EQ(Write({"t", "", "", "", "note"}, ""), InfoWriteResult::Written);
    EXPECT_EQ(File(), kAudio + "LYRICS" + "TAG" + "t" + Z(26) + Z(3) + Z(30) + Z(30) + "note" + Z(26) + Z(5));
}

TEST_F(InfoBlockWrite, FullGroupsGetOneZeroByteAndGrowTheTag) {
    fs.files[kPath] = kAudio;
    // 27 bytes of title fill "TAG"+title to 30: one zero byte follows, then the three zero bytes.
    const std::string title = "十三个汉字的标题正好二十六x";
    const std::string comment(29, 'c');  // with a four-digit year: 33 bytes, one zero byte
    ASSERT_EQ(Write({title, "a", "b", "2005", comment}, ""), InfoWriteResult::Written);
    const std::string tag =
        "TAG" + Gbk(title) + Z(1) + Z(3) + "a" + Z(29) + "b" + Z(29) + "2005" + comment + Z(1) + Z(5);
    EXPECT_EQ(tag.size(), 133u);
    EXPECT_EQ(File(), kAudio + "LYRICS" + tag);
    // Our own tag reader still reads every item back.
    EXPECT_EQ(ParseId3v1Tag(File()), (Id3v1Tag{title, "a", "b", "2005", comment}));
}

TEST_F(InfoBlockWrite, SavingAgainWritesOverTheOldBlockAndZeroesWhatALongerOneLeft) {
    fs.files[kPath] = kAudio + ForeignTag();
    const std::string longLyrics = "[00:01]" + std::string(1000, 'x') + "\r\n[00:02]y";
    ASSERT_EQ(Write({"first", "", "", "", ""}, longLyrics), InfoWriteResult::Written);
    const std::size_t sizeAfterFirst = File().size();
    ASSERT_EQ(File().substr(kAudio.size(), 6), "LYRICS");

    ASSERT_EQ(Write({"second", "", "", "", ""}, "[00:03]z"), InfoWriteResult::Written);
    const std::string block = "LYRICSBEGININD0000211LYR00008[00:03]z" + ("TAGsecond" + Z(21)) + Z(3) + Z(95);
    EXPECT_EQ(File().size(), sizeAfterFirst);  // never shortened
    EXPECT_EQ(File().substr(0, kAudio.size() + block.size()), kAudio + block);
    EXPECT_EQ(File().find_first_not_of('\0', kAudio.size() + block.size()), std::string::npos);
    // The new tag is the one readers find, and the new lyrics are what the lookup reads.
    EXPECT_EQ(FindId3v1Tag(File()), kAudio.size() + 37);
    EXPECT_EQ(ParseId3v1Tag(File())->title, "second");
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:03]z");

    // A third save still finds the block behind the zero bytes.
    ASSERT_EQ(Write({"third", "", "", "", ""}, longLyrics), InfoWriteResult::Written);
    EXPECT_EQ(File().size(), sizeAfterFirst);
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), longLyrics);
}

TEST_F(InfoBlockWrite, TheLargestBlockWithTheLongestTagIsFoundAgain) {
    fs.files[kPath] = kAudio;
    std::string lyrics = "[00:01]";
    lyrics += std::string(kMaxLyricsBytes - lyrics.size(), 'x');
    const Id3v1Tag full{"十三个汉字的标题正好二十六x", "a", "b", "2005", std::string(29, 'c')};
    ASSERT_EQ(BuildLyricsField(lyrics).substr(18, 5), "03555");
    ASSERT_EQ(Write(full, lyrics), InfoWriteResult::Written);
    ASSERT_EQ(Write(full, "[00:02]short"), InfoWriteResult::Written);
    EXPECT_EQ(File().substr(kAudio.size(), 41), "LYRICSBEGININD0000211LYR00012[00:02]short");
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:02]short");
}

TEST_F(InfoBlockWrite, MarksThatCannotStartABlockAreLeftAlone) {
    // "LYRICS" in the audio not followed by BEGIN or TAG, and marks typed into the lyrics of our block.
    const std::string audio = kAudio + "LYRICS of a song" + kAudio;
    fs.files[kPath] = audio;
    ASSERT_EQ(Write({"t", "", "", "", ""}, "[00:01]LYRICSBEGIN LYRICSTAG"), InfoWriteResult::Written);
    EXPECT_EQ(File().substr(0, audio.size() + 6), audio + "LYRICS");
    ASSERT_EQ(Write({"u", "", "", "", ""}, "[00:02]y"), InfoWriteResult::Written);
    EXPECT_EQ(File().substr(0, audio.size() + 37), audio + "LYRICSBEGININD0000211LYR00008[00:02]y");
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:02]y");
}

TEST_F(InfoBlockWrite, ALyrics3BlockOfAnotherProgramIsReplacedFromItsStart) {
    for (const char* name : {"l3v2_ind_crc_id3v1.mp3", "l3v2_ind_emptylyr_at_eof_no_id3v1.mp3"}) {
        const auto original = test::ReadBytes(test::kCorpusDir + "/lyrics3/" + name);
        if (!original) GTEST_SKIP() << "corpus not found";
        const std::size_t start = original->rfind("LYRICSBEGIN");
        fs.files[kPath] = *original;
        ASSERT_EQ(Write({"t", "", "", "", ""}, "[00:01]x"), InfoWriteResult::Written) << name;
        EXPECT_EQ(File().substr(0, start), original->substr(0, start)) << name;
        EXPECT_EQ(File().substr(start, 37), "LYRICSBEGININD0000211LYR00008[00:01]x") << name;
        EXPECT_EQ(File().find("LYRICS200"), std::string::npos) << name;
        EXPECT_EQ(ParseId3v1Tag(File())->title, "t") << name;
    }
    // A Lyrics3 v1 block the same way.
    const std::string v1 = "LYRICSBEGIN[00:01]old wordsLYRICSEND";
    fs.files[kPath] = kAudio + v1 + ForeignTag();
    ASSERT_EQ(Write({"t", "", "", "", ""}, ""), InfoWriteResult::Written);
    EXPECT_EQ(File().substr(0, kAudio.size() + 9), kAudio + "LYRICSTAG");
}

// A disk that fails in the middle of the write: what it wrote is put back.
class FailingOnceFileSystem : public test::FakeFileSystem {
public:
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override {
        ++writes;
        if (writes == 1) {
            FakeFileSystem::WriteFilePart(path, offset, bytes.substr(0, bytes.size() / 2));
            return false;
        }
        return FakeFileSystem::WriteFilePart(path, offset, bytes);
    }
    int writes = 0;
};

TEST(InfoBlockFailure, AFailedWritePutsTheOldBytesBack) {
    FailingOnceFileSystem fs;
    const std::string original = kAudio + "LYRICSBEGININD0000211LYR00008[00:01]x" + ForeignTag();
    fs.files[kPath] = original;
    const std::string lyrics = "[00:01]" + std::string(500, 'n');  // longer: the failed write extended the file
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {"new", "", "", "", ""}, BuildLyricsField(lyrics)), InfoWriteResult::FileError);
    EXPECT_EQ(fs.writes, 2);
    EXPECT_EQ(fs.files[kPath].substr(0, original.size()), original);
    EXPECT_EQ(fs.files[kPath].find_first_not_of('\0', original.size()), std::string::npos);
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:01]x");
}

TEST(InfoBlockFailure, NothingIsTouchedForMissingFilesOrTextGbkCannotHold) {
    test::FakeFileSystem fs;
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {}, ""), InfoWriteResult::FileError);
    fs.files[kPath] = kAudio;
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {"😀", "", "", "", ""}, ""), InfoWriteResult::NotEncodable);
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {}, BuildLyricsField("[00:01]한국어")), InfoWriteResult::NotEncodable);
    EXPECT_EQ(fs.files[kPath], kAudio);
    fs.readOnly.push_back(kPath);
    EXPECT_EQ(WriteInfoBlock(fs, kPath, {}, ""), InfoWriteResult::FileError);
    EXPECT_EQ(fs.files[kPath], kAudio);
}

TEST(InfoByteLength, CountsCodePage936Bytes) {
    EXPECT_EQ(InfoByteLength("abc"), 3u);
    EXPECT_EQ(InfoByteLength("歌手a"), 5u);
    EXPECT_EQ(InfoByteLength("€"), 1u);         // one byte in code page 936
    EXPECT_EQ(InfoByteLength("😀"), 2u);         // not in GBK: counted 2, refused by validation
    EXPECT_EQ(LyricsByteSize("ab\r\n歌"), 6u);  // the line break counts 2
    EXPECT_EQ(LyricsByteSize("ab\n歌"), 6u);    // as the edit box would hold it
}

TEST(ValidateMediaInfo, LimitsAndOrder) {
    const std::string hint =
        "“歌词”内容大于最大值，请删去一些内容再继续。\r\n\r\n提示：您可以将其直接导出“QGC”文件，放在此媒体文件同一目录"
        "下，"
        "\r\n\r\n并且文件名与媒体名相同（不包括“后缀名”），也可以“动态显示歌词”。";
    const std::string lyrics3555 = std::string(3553, 'x') + "\r\n";
    const std::string lyrics3556 =
        std::string(1776, 'x') + "\r\n" + std::string(888, 'x') + "\r\n" + std::string(888, 'y');
    const struct {
        MediaInfoRecord record;
        std::optional<std::string> message;
    } cases[] = {
        {{"十三个汉字的标题正好二十六x", "", "", "", "", ""}, std::nullopt},  // 27 bytes
        {{"十四个汉字的标题正好二十八字", "", "", "", "", ""}, "“标题”内容大于最大值，请删去一些内容再继续。"},
        {{"", "十四个汉字的歌手名正好二十九x", "", "", "", ""}, std::nullopt},  // 29 bytes
        {{"", "十五个汉字的歌手名字正好三十字", "", "", "", ""}, "“歌手”内容大于最大值，请删去一些内容再继续。"},
        {{"", "", std::string(30, 'a'), "", "", ""}, "“专集”内容大于最大值，请删去一些内容再继续。"},
        {{"", "", "", "05", "", ""}, std::nullopt},
        {{"", "", "", "2005", "", ""}, std::nullopt},
        {{"", "", "", "205", "", ""}, "“年代”内容不合法。"},
        {{"", "", "", "ab", "", ""}, "“年代”内容不合法。"},
        {{"", "", "", "20年", "", ""}, "“年代”内容不合法。"},
        {{"", "", "", "", "十五个汉字的备注内容正好三十字", ""}, "“其他”内容大于最大值，请删去一些内容再继续。"},
        {{"", "", "", "", "", lyrics3555}, std::nullopt},
        {{"", "", "", "", "", lyrics3556}, hint},
        // The first failing field in the editor's order wins.
        {{"十四个汉字的标题正好二十八字", "", "", "x", "", lyrics3556}, "“标题”内容大于最大值，请删去一些内容再继续。"},
        {{"", "", "", "x", std::string(40, 'c'), ""}, "“年代”内容不合法。"},
        // Text GBK cannot hold is refused after the length checks, naming the field.
        {{"", "", "", "", "😀", ""}, "“其他”中有无法保存的字符（只能保存简体中文GBK字符），请删去或替换后再继续。"},
        {{"", "", "", "", std::string(30, 'c'), "😀"}, "“其他”内容大于最大值，请删去一些内容再继续。"},
    };
    for (const auto& c : cases) EXPECT_EQ(ValidateMediaInfo(c.record), c.message) << c.record.title << c.record.year;
    EXPECT_EQ(BuildLyricsField(lyrics3555).substr(0, 23), "BEGININD0000211LYR03555");
}

TEST(LyricsField, BuildsAndRecognises) {
    EXPECT_EQ(BuildLyricsField(""), "");
    EXPECT_EQ(BuildLyricsField("[00:01]歌\n[00:02]b"), "BEGININD0000211LYR00019[00:01]歌\r\n[00:02]b");
    EXPECT_TRUE(IsEmbeddedLyricsField("BEGININD0000211LYR00001x"));
    EXPECT_FALSE(IsEmbeddedLyricsField("BEGININD0000211LYR00000"));  // 23 characters
    EXPECT_FALSE(IsEmbeddedLyricsField("BEGINIXD0000211LYR00001x"));
    EXPECT_EQ(EmbeddedLyricsText("BEGININD0000211LYR00004歌词TAGxyz"), "歌词");
    EXPECT_EQ(EmbeddedLyricsText("BEGININD0000200CRC00008C21D9A03000037LYRICS200"), "");  // no LYR item
}

TEST(EmbeddedLyrics, ReadFromOurBlocksAndStandardLyrics3Blocks) {
    test::FakeFileSystem fs;
    fs.files[kPath] = kAudio + "LYRICSBEGININD0000211LYR00011[00:01]" + Gbk("歌词") + ForeignTag();
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:01]歌词");
    // A Lyrics3 v2.00 block with IND then LYR is read as far as LYR says.
    fs.files[kPath] = kAudio + "LYRICSBEGININD0000211LYR00008[00:05]aEAL00003abc000048LYRICS200" + ForeignTag();
    EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), "[00:05]a");
    for (const std::string& tail : {std::string(), std::string("LYRICSTAG"), std::string("LYRICSBEGININD00002")}) {
        fs.files[kPath] = kAudio + tail + ForeignTag();
        EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), std::nullopt) << tail;
    }
    const auto corpus = test::ReadBytes(test::kCorpusDir + "/lyrics3/l3v2_ind_crc_id3v1.mp3");
    if (corpus) {
        fs.files[kPath] = *corpus;
        EXPECT_EQ(ReadEmbeddedLyrics(fs, kPath), std::nullopt);  // IND and CRC only
    }
}

TEST(ReadMediaInfo, GivesWhatTheEditorShows) {
    test::FakeFileSystem fs;
    fs.files[kPath] = kAudio;
    ASSERT_EQ(
        WriteInfoBlock(fs, kPath, {"标题", "歌手", "专集", "1999", "备注"}, BuildLyricsField("[00:01]a\r\n[00:02]b")),
        InfoWriteResult::Written);
    EXPECT_EQ(ReadMediaInfo(fs, kPath),
              (MediaInfoRecord{"标题", "歌手", "专集", "1999", "备注", "[00:01]a\r\n[00:02]b"}));
    fs.files["D:\\plain.mp3"] = kAudio;
    EXPECT_EQ(ReadMediaInfo(fs, "D:\\plain.mp3"), MediaInfoRecord{});
    EXPECT_EQ(ReadMediaInfo(fs, "D:\\missing.mp3"), std::nullopt);
}

}  // namespace
}  // namespace lumora
