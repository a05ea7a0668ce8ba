#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/StreamPanel.h"
#include "mediainfo/TestMedia.h"

namespace lumora {
namespace {

using Texts = std::vector<std::string>;

// The labels that show stream facts, in the panel's order.
Texts Labels(const StreamPanelTexts& p) {
    return {p.bitRate, p.frequency, p.layer, p.totalFrames, p.framesRead, p.flags, p.mpeg, p.msPerFrame};
}

DecoderProperties Properties(std::int32_t bitRate, std::int32_t hertz, int layer, bool flags, MpegVersion version,
                             float msPerFrame) {
    DecoderProperties p;
    p.bitRate = bitRate;
    p.frequency = hertz;
    p.layer = layer;
    p.totalFrames = 7654;
    p.framesRead = 12;
    p.crc = p.original = flags;
    p.copyright = !flags;
    p.mode = 1;
    p.version = version;
    p.msPerFrame = msPerFrame;
    return p;
}

// Bit rates and the time per frame are truncated toward zero, frequencies are not.
TEST(StreamPanel, RefreshShowsEachPropertyAsTheDecoderGivesIt) {
    const struct {
        DecoderProperties properties;
        Texts labels;
    } cases[] = {
        {Properties(128000, 44100, 3, false, MpegVersion::Mpeg1, 26.122449f),
         {"声音位率：128千位/秒", "声音频率：44.1KHz", "压缩层次：III ", "总帧：7654", "读取帧：12",
          "效验：否版权：有原文：否", "MPEG方式：1  MPEG版本：1", "每毫秒：26"}},
        {Properties(61999, 22050, 2, true, MpegVersion::Mpeg2, 52.99f),
         {"声音位率：61千位/秒", "声音频率：22.05KHz", "压缩层次：II", "总帧：7654", "读取帧：12",
          "效验：是版权：没有原文：是", "MPEG方式：1  MPEG版本：2", "每毫秒：52"}},
        {Properties(-1999, 11025, 1, true, MpegVersion::Mpeg25, -0.5f),
         {"声音位率：-1千位/秒", "声音频率：11.025KHz", "压缩层次：I", "总帧：7654", "读取帧：12",
          "效验：是版权：没有原文：是", "MPEG方式：1  MPEG版本：2.5", "每毫秒：0"}},
        {Properties(8000, 8000, 3, false, MpegVersion::Mpeg25, 72.0f),
         {"声音位率：8千位/秒", "声音频率：8KHz", "压缩层次：III ", "总帧：7654", "读取帧：12",
          "效验：否版权：有原文：否", "MPEG方式：1  MPEG版本：2.5", "每毫秒：72"}},
    };
    for (const auto& c : cases) {
        StreamPanelTexts panel;
        RefreshStreamPanel(panel, c.properties);
        EXPECT_EQ(Labels(panel), c.labels);
        EXPECT_EQ(panel.title, "现在没有歌曲播放...");
        panel.title = "something";
        ResetStreamPanel(panel);
        EXPECT_EQ(panel, StreamPanelTexts());
    }
    EXPECT_EQ(Labels(StreamPanelTexts()),
              (Texts{"声音位率：N/A千位/秒", "声音频率：N/A KHz", "压缩层次：N/A", "总帧：N/A", "读取帧：N/A",
                     "效验：N/A版权：N/A原文：N/A", "MPEG方式：N/A MPEG版本：N/A", "每毫秒：N/A帧"}));
}

TEST(StreamPanel, AFailedReadOrAnUnknownLayerLeavesTheLabelAsItWas) {
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, Properties(128000, 44100, 3, false, MpegVersion::Mpeg1, 26.1f));
    const Texts before = Labels(panel);
    DecoderProperties failed = Properties(64000, 22050, 0, true, MpegVersion::Mpeg2, NAN);
    failed.original.reset();  // the flags line needs all three flags
    failed.version.reset();   // the MPEG line needs mode and version
    failed.framesRead.reset();
    RefreshStreamPanel(panel, failed);
    failed.layer = 4;
    RefreshStreamPanel(panel, failed);
    Texts after = before;
    after[0] = "声音位率：64千位/秒";
    after[1] = "声音频率：22.05KHz";
    EXPECT_EQ(Labels(panel), after);
    RefreshFramesRead(panel, 345);
    EXPECT_EQ(panel.framesRead, "读取帧：345");
}

TEST(StreamPanel, TagLineGetsTheMp3ProMarkOnlyFor64kAt22kLayerThree) {
    const std::string line = "  标题：歌  歌手：无  专集：无  年代：无  其他：无";
    const struct {
        std::int32_t bitRate, hertz;
        int layer;
        bool mark;
    } cases[] = {
        {64000, 22050, 3, true},  {64999, 22050, 3, true},  {65000, 22050, 3, false},
        {64000, 24000, 3, false}, {64000, 22050, 2, false}, {63999, 22050, 3, false},
    };
    for (const auto& c : cases) {
        StreamPanelTexts panel;
        RefreshStreamPanel(panel, Properties(c.bitRate, c.hertz, c.layer, false, MpegVersion::Mpeg2, 26));
        ShowTagLine(panel, Id3v1Tag{"歌", "", "", "", ""});
        EXPECT_EQ(panel.title, c.mark ? line + "（MP3 PRO文件）" : line) << c.bitRate << " " << c.layer;
    }
}

// What the frame parser finds in a file lame made at 64 kbit/s and 22.05 kHz, as the panel shows it.
TEST(StreamPanel, ShowsWhatTheFrameParserFindsInAFile) {
    const auto bytes = test::ReadBytes(test::kMpegFixturesDir + "/l3_mpeg2_22k_stereo_64.mp3");
    ASSERT_TRUE(bytes) << "no generated files in " << test::kMpegFixturesDir;
    const auto facts = ScanMpegAudio(*bytes);
    ASSERT_TRUE(facts);
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, PropertiesOf(*facts, 3));
    ShowTagLine(panel, std::nullopt);
    EXPECT_EQ(Labels(panel),
              (Texts{"声音位率：64千位/秒", "声音频率：22.05KHz", "压缩层次：III ", "总帧：79", "读取帧：3",
                     "效验：否版权：没有原文：是", "MPEG方式：0  MPEG版本：2", "每毫秒：26"}));
    EXPECT_EQ(panel.title, "  标题：N/A  歌手：N/A  专集：N/A  年代：N/A  其他：N/A（MP3 PRO文件）");
}

}  // namespace
}  // namespace lumora
