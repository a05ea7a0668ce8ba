#pragma once
// The main window's panel of stream facts and its title area. The texts are the panel's state: the window
// shows them as they are, and the MP3 PRO mark compares them.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/Id3v1.h"
#include "mediainfo/MpegFrameHeader.h"

namespace lumora {

struct MpegStreamFacts;

// What the panel shows while no file plays.
// The total time label, shared by the main window and the stream panel.
inline std::string TotalTimeText(std::string_view length = "N/A") { return "总时：" + std::string(length); }

struct StreamPanelTexts {
    std::string title = "现在没有歌曲播放...";
    std::string bitRate = "声音位率：N/A千位/秒";
    std::string frequency = "声音频率：N/A KHz";
    std::string layer = "压缩层次：N/A";
    std::string totalFrames = "总帧：N/A";
    std::string framesRead = "读取帧：N/A";
    std::string flags = "效验：N/A版权：N/A原文：N/A";
    std::string mpeg = "MPEG方式：N/A MPEG版本：N/A";
    std::string msPerFrame = "每毫秒：N/A帧";
    std::string totalTime = TotalTimeText();
    std::string time = "00:00";
    bool operator==(const StreamPanelTexts&) const = default;
};

// The properties decoder 1 reports for the open file. An empty one is a read that failed: the label built
// from it keeps the text it had.
struct DecoderProperties {
    std::optional<std::int32_t> bitRate;    // bits per second
    std::optional<std::int32_t> frequency;  // samples per second
    std::optional<int> layer;               // 1, 2 or 3; anything else leaves the layer label alone
    std::optional<std::int32_t> totalFrames;
    std::optional<std::int32_t> framesRead;
    std::optional<bool> crc;
    std::optional<bool> copyright;
    std::optional<bool> original;
    std::optional<int> mode;  // the header's channel mode number, 0 to 3
    std::optional<MpegVersion> version;
    std::optional<float> msPerFrame;  // playing time of one frame in milliseconds
};

// What our own decoder reports for a scanned file after `framesRead` frames.
DecoderProperties PropertiesOf(const MpegStreamFacts& facts, std::int32_t framesRead);

// Sets every label to its "N/A" text; when playback stops or no file is open.
void ResetStreamPanel(StreamPanelTexts& panel);

// Fills the labels from the decoder, in the order the decoder is asked: bit rate, frequency, layer, total
// frames, frames read, the CRC, copyright and original flags, mode and version, the time per frame.
void RefreshStreamPanel(StreamPanelTexts& panel, const DecoderProperties& properties);

// The progress timer's update of "读取帧：".
void RefreshFramesRead(StreamPanelTexts& panel, std::optional<std::int32_t> framesRead);

// Shows the tag line in the title area, after the refresh: a 64 kbit/s, 22.05 kHz layer III stream gets
// "（MP3 PRO文件）" behind it. That guess at MP3 PRO (which hides its extra data in such a stream) is all
// the program ever knew; nothing parses the stream for it.
void ShowTagLine(StreamPanelTexts& panel, const std::optional<Id3v1Tag>& tag);

}  // namespace lumora
