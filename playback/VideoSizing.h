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

double VideoScale(int index);

VideoPlacement PlaceVideo(long pictureWidth, long pictureHeight, long screenWidth, long screenHeight,
                          const SettingsStore& settings);

}  // namespace lumora
