#pragma once
// The texts of the main window's transport controls: their captions at start and the balloon
// help on each, which follows the options and the queue.
#include <optional>
#include <string>
#include <string_view>

#include "playback/PlaybackController.h"

namespace lumora {

class SettingsStore;
class PlayQueue;

inline constexpr std::string_view kBackLabel = "后退";
inline constexpr std::string_view kForwardLabel = "前进";
inline constexpr std::string_view kProgressTip = "播放进度";
inline constexpr std::string_view kVolumeLabel = "音量";
// The main window's button of "解码倒制" (opt::kDecoderWorkaround).
inline constexpr std::string_view kDecoderWorkaroundCaption = "倒制";

// What the main window shows before anything plays.
struct MainDisplayTexts {
    std::string title{kNoFileTitle};
    std::string percent = "0%";
    std::string time = "00:00:00";
    std::string segmentRange = "0-0";
    std::string statusLine = VolumeStatusText(20);
    std::string back{kBackLabel};
    std::string forward{kForwardLabel};
    std::string play{PlayCaption(false)};
    std::string timeMode{TimeModeArrow(TimeMode::Elapsed)};
    std::string mode = ModeLabel(PlayMode::Normal, false);
    std::string segment{SegmentButtonText(false)};
    std::string segmentA = "A=N/A";
    std::string segmentB = "B=N/A";
};


struct TransportTips {
    std::string play;
    std::string stop;
    std::string previous;
    std::string next;
    std::string back;
    std::string forward;
    std::string modeNormal;
    std::string modeLoop;
    std::string modeRandom;
    std::string timeMode;
    std::string segment;
    std::string progress;
    std::string volume;
    std::string volumeLabel;  // the label before the volume slider and its end labels
    std::string speed;
    std::string list;
    std::string open;
    std::string title;
    std::string time;
    std::string percent;
    std::string mode;
    std::string segmentRange;
    std::string neighbours;
    std::string statusLine;
    std::string decoderWorkaround;  // says whether it is on, and that it counts from the next file
    // "“显示“气泡”式帮助提示文本”": the help texts above show; off, only the information tips do.
    bool help = true;
    // "“显示“气泡”式信息提示文本”": previous, next, volume and progress tell the neighbour's list line, the
    // volume in per cent and the time under the pointer instead of their help.
    bool information = true;
    bool operator==(const TransportTips&) const = default;
};

// The balloon help of the "音频\歌词显示" window: its stream panel and its two lyrics lines; empty while
// "“显示“气泡”式帮助提示文本”" is off.
struct DisplayTips {
    std::string panel;
    std::string lyrics;
    bool operator==(const DisplayTips&) const = default;
};
DisplayTips MakeDisplayTips(const SettingsStore& settings);

// `playback`: what the player shows now (its mode, time mode, volume, speed and segment);
// `hasFile`: a file is open (back and forward can move in it); `pointerMs`: the time of the progress
// track under the pointer while it rests there on an open file.
TransportTips MakeTransportTips(const SettingsStore& settings, const PlayQueue& queue, const PlaybackTexts& playback,
                                bool hasFile, std::optional<long long> pointerMs = std::nullopt);

}  // namespace lumora
