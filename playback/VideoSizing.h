#pragma once
// Where the video window goes when a video starts, from the picture's size and the options
// opt::kVideoStartSize (0 full screen, 1 sized to the picture, 2 the window keeps its size),
// opt::kVideoScale (the scale of the picture when sized to it) and opt::kSmallVideoSize (what to do
// when that size does not fit the screen: 0 full screen, 1 the picture's own size, 2 leave the window alone).
#include <array>
#include <string_view>

namespace lumora {

class SettingsStore;

struct VideoPlacement {
    enum class Kind { FullScreen, Size, Keep };
    Kind kind = Kind::Keep;
    long width = 0;   // client area, for Kind::Size
    long height = 0;
};

// The scale list of opt::kVideoScale, first entry "原始大小".
inline constexpr std::array<std::string_view, 20> kVideoScaleNames = {
    "原始大小", "0.5倍", "0.75倍", "1.25倍", "1.5倍", "1.75倍", "2倍",   "2.25倍", "2.5倍", "2.75倍",
    "3倍",      "3.25倍", "3.5倍", "3.75倍", "4倍",   "4.25倍", "4.5倍", "4.75倍", "5倍",   "0.25倍"};
double VideoScale(int index);

VideoPlacement PlaceVideo(long pictureWidth, long pictureHeight, long screenWidth, long screenHeight,
                          const SettingsStore& settings);

}  // namespace lumora
