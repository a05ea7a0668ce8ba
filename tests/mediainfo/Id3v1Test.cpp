#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "mediainfo/ListInfo.h"
#include "mediainfo/TrailingTags.h"
#include "support/Fakes.h"

namespace lumora {
namespace {


// "LYRICS" and a tag as our information block writer saves them.
std::string Written(const Id3v1Tag& tag) { return BuildInfoBlockBytes(tag, "").value(); }

// An ID3v1 tag as other programs write it: fixed fields, a genre byte, a track number in v1.1.
std::string StandardTag(std::string title, std::string year, std::string comment, int track = 0) {
    title.resize(30, ' ');
    year.resize(4, '\0');
    comment.resize(30, '\0');
    if (track) comment[29] = static_cast<char>(track);
    return "TAG" + title + std::string(60, '\0') + year + comment + "\x11";
}

const std::string kAudio(1000, '\x55');

using Tails = std::tuple<std::size_t, std::optional<std::size_t>, std::optional<std::size_t>, std::optional<std::size_t>>;

Tails TailsOf(std::string_view file) {
    const TrailingTags t = LocateTrailingTags(file);
    return {t.audioEnd, t.id3v1, t.lyrics, t.ape};
}

TEST(Id3v1Reader, ReadsOurWritersTagsAndOtherProgramsTags) {
    const std::string c29(29, 'c');
    const struct {
        std::string tail;
        Id3v1Tag read;
    } cases[] = {
        // A year and a comment of 30 bytes or more grow the tag; the whole comment still reads back.
        {Written({"十三个汉字的标题正好二十六", "a", "b", "2005", c29}), {"十三个汉字的标题正好二十六", "a", "b", "2005", c29}},
        // Without a year the comment starts where the year would; leading digits then read as a year.
        {Written({"  t  ", "a", "b", "", "12 songs  "}), {"t", "a", "b", "12", " songs"}},
        {StandardTag("Title", "1990", "note", 12), {"Title", "", "", "1990", "note"}},  // the track is no text
        {StandardTag("", "1993", std::string(28, ' '), 12), {"", "", "", "1993", ""}},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseId3v1Tag(kAudio + c.tail), c.read) << c.read.title << "|" << c.read.comment;
}

TEST(LocateTrailingTags, EndsTheAudioAtTheFirstTagBehindIt) {
    const std::string tag = StandardTag("t", "", "");
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
    for (const auto& [file, tails] : cases) EXPECT_EQ(TailsOf(file), tails) << file.size();
}

// The tag line under the title, the file list's record and the list's balloon help built from that record.
TEST(TagTexts, TagLineFileListRecordAndListTip) {
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

}  // namespace
}  // namespace lumora
