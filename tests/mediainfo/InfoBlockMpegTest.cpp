// The information block written into a real MP3 file on disk, read back by ffprobe and decoded by ffmpeg:
// another program finds the tag items, and the audio decodes to the same samples as before. ffmpeg runs on
// the build machine only, so the Windows build of the unit tests leaves this test out.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <string>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/TestMedia.h"
#include "ports/TextCodec.h"
#include "support/HostFileSystem.h"

namespace lumora {
namespace {

namespace fsys = std::filesystem;

bool RunCommand(const std::string& command) { return std::system(command.c_str()) == 0; }

class InfoBlockMpeg : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(RunCommand("command -v ffprobe >/dev/null 2>&1 && command -v ffmpeg >/dev/null 2>&1"))
            << "ffmpeg is not installed";
        const std::string fixture = test::kMpegFixturesDir + "/l3_cbr128_44k_stereo.mp3";
        ASSERT_TRUE(fsys::exists(fixture)) << "test media not made";
        folder_ = fsys::temp_directory_path() / ("lumora-infoblock-" + std::to_string(std::random_device{}()));
        fsys::create_directories(folder_);
        mp3_ = (folder_ / "song.mp3").string();
        fsys::copy_file(fixture, mp3_);
    }
    void TearDown() override {
        std::error_code ec;
        fsys::remove_all(folder_, ec);
    }

    std::string Output(const std::string& command) {
        const std::string out = (folder_ / "out.txt").string();
        if (!RunCommand(command + " >'" + out + "' 2>/dev/null")) return {};
        return test::ReadBytes(out).value_or(std::string());
    }
    // ffprobe's tags with their bytes as the file holds them (no UTF-8 check).
    std::map<std::string, std::string> Tags() {
        std::istringstream lines(Output(
            "ffprobe -v error -show_entries format_tags -of default=noprint_wrappers=1:sv=ignore '" + mp3_ + "'"));
        std::map<std::string, std::string> tags;
        for (std::string line; std::getline(lines, line);) {
            const std::size_t eq = line.find('=');
            if (line.rfind("TAG:", 0) == 0 && eq != std::string::npos)
                tags[line.substr(4, eq - 4)] = line.substr(eq + 1);
        }
        return tags;
    }
    std::string PcmMd5() { return Output("ffmpeg -v quiet -i '" + mp3_ + "' -c:a pcm_s16le -f md5 -"); }

    fsys::path folder_;
    std::string mp3_;
    test::HostFileSystem fs_;
};

TEST_F(InfoBlockMpeg, AnotherReaderFindsTheTagAndTheAudioIsUnchanged) {
    const std::string before = PcmMd5();
    ASSERT_NE(before.find("MD5="), std::string::npos);
    const Id3v1Tag first{"标题Title", "歌手", "专集", "2005", "其他"};
    ASSERT_EQ(WriteInfoBlock(fs_, mp3_, first, BuildLyricsField("[00:01]第一句")),
              InfoWriteResult::Written);
    auto tags = Tags();
    EXPECT_EQ(tags["title"] + tags["artist"] + tags["album"] + tags["date"] + tags["comment"],
              Utf8ToCp936(first.title + first.artist + first.album + first.year + first.comment));
    EXPECT_EQ(PcmMd5(), before);
    // Saved again with longer lyrics: written over the first block, the tag still last.
    const Id3v1Tag second{"Second", "Artist", "Album", "1999", "note"};
    const std::string lyrics = "[00:01]" + std::string(900, 'x');
    ASSERT_EQ(WriteInfoBlock(fs_, mp3_, second, BuildLyricsField(lyrics)), InfoWriteResult::Written);
    tags = Tags();
    EXPECT_EQ(tags["title"] + tags["date"], "Second1999");
    EXPECT_EQ(PcmMd5(), before);
    EXPECT_EQ(ReadEmbeddedLyrics(fs_, mp3_), lyrics);
}

}  // namespace
}  // namespace lumora
#endif
