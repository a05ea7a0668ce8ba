#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
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
    return {bitRate, hertz, layer, 7654, 12, flags, !flags, flags, 1, version, msPerFrame};
}

// Bit rates and the time per frame are truncated toward zero, frequencies are not.
TEST(StreamPanel, RefreshShowsEachPropertyAsTheDecoderGivesIt) {
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, Properties(61999, 22050, 2, true, MpegVersion::Mpeg2, 52.99f));
    EXPECT_EQ(Labels(panel), (Texts{"声音位率：61千位/秒", "声音频率：22.05KHz", "压缩层次：II", "总帧：7654", "读取帧：12",
                                    "效验：是版权：没有原文：是", "MPEG方式：1  MPEG版本：2", "每毫秒：52"}));
    RefreshStreamPanel(panel, Properties(-1999, 11025, 1, false, MpegVersion::Mpeg25, -0.5f));
    EXPECT_EQ(Labels(panel), (Texts{"声音位率：-1千位/秒", "声音频率：11.025KHz", "压缩层次：I", "总帧：7654", "读取帧：12",
                                    "效验：否版权：有原文：否", "MPEG方式：1  MPEG版本：2.5", "每毫秒：0"}));
    RefreshFramesRead(panel, 345);
    EXPECT_EQ(panel.framesRead, "读取帧：345");
    panel.title = "something";
    ResetStreamPanel(panel);
    EXPECT_EQ(panel, StreamPanelTexts());
}

// What the frame parser finds in a file lame made at 64 kbit/s and 22.05 kHz, as the panel shows it: an MP3
// PRO file, by the only test there is.
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
    RefreshStreamPanel(panel, Properties(63999, 22050, 3, false, MpegVersion::Mpeg2, 26));  // just under 64 kbit/s
    ShowTagLine(panel, std::nullopt);
    EXPECT_EQ(panel.title.find("PRO"), std::string::npos);
}

}  // namespace
}  // namespace lumora
