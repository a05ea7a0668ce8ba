#include <gtest/gtest.h>

#include "playback/StreamPanelFeed.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

using test::MpegFrames;

TEST(StreamPanelFeed, OpenFillsFromTheFileAndProgressCountsFrames) {
    test::FakeFileSystem fs;
    fs.files["D:\\a.mp3"] = MpegFrames(100) + "TAGSong" + std::string(121, '\0');
    StreamPanelFeed feed(fs);
    feed.Opened("D:\\a.mp3", 2612);
    const StreamPanelTexts& t = feed.Texts();
    for (const auto& [text, part] : {std::pair{t.bitRate, "128"}, {t.totalFrames, "100"}, {t.title, "Song"}}) {
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    EXPECT_EQ(t.totalTime, "总时：00:00:02");
    feed.Progress(1000);  // about 38 frames of 26.1 ms
    EXPECT_NE(feed.Texts().framesRead.find("38"), std::string::npos) << feed.Texts().framesRead;
    feed.Progress(2612);  // the end of the file: every frame read
    EXPECT_EQ(feed.Texts().framesRead, "读取帧：100");
    feed.Progress(0);  // back at the start
    EXPECT_EQ(feed.Texts().framesRead.find("38"), std::string::npos) << feed.Texts().framesRead;
    fs.files["D:\\v.avi"] = "RIFF....AVI LIST";
    feed.Opened("D:\\v.avi", -1);  // the next file starts from the reset texts
    EXPECT_EQ(feed.Texts().bitRate, StreamPanelTexts().bitRate);
}

}  // namespace
}  // namespace lumora
