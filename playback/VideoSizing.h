#pragma once
// Where the video window goes when a video starts, from the picture's size and the options
// opt::kVideoStartSize (0 full screen, 1 sized to the picture, 2 the window keeps its size),
// opt::kVideoScale (the scale of the picture when sized to it) and opt::kSmallVideoSize (what to do
// when that size does not fit the screen: 0 full screen, 1 the picture's own size, 2 leave the window alone).
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "playback/MediaEngine.h"

namespace lumora {

class SettingsStore;

struct VideoPlacement {
    enum class Kind { FullScreen, Size, Keep };
    Kind kind = Kind::Keep;
    long width = 0;   // client area, for Kind::Size
    long height = 0;
};

double VideoScale(int index);
// The scale list's entry for `index`: "原始大小" first, then the factor ("0.5", "2").
std::string VideoScaleEntry(int index);

VideoPlacement PlaceVideo(long pictureWidth, long pictureHeight, long screenWidth, long screenHeight,
                          const SettingsStore& settings);

// What an opened file shows in the video window.
struct VideoFacts {
    MediaKind kind = MediaKind::None;
    bool decoder1 = false;         // our MPEG audio player: never a picture
    long pictureWidth = 0;         // the MCI device's picture; 0 for sound only
    long pictureHeight = 0;
    bool hostedHasPictures = false;  // a hosted control that draws (Flash, or Windows Media with video)
    long workWidth = 0;            // the screen's work area
    long workHeight = 0;
};

struct VideoPresentation {
    enum class Content { StillPicture, HostedControl, Movie, Sound };
    Content content = Content::Sound;
    // How to show the window; empty leaves it as it is.
    std::optional<VideoPlacement> place;
    bool hideWindow = false;     // "L51": a sound file closes the video window
    bool showInfoLines = false;  // a movie's information lines replace the stream panel
};

// "L67" keeps the window closed for videos, "L51" closes it for sound, "L45" to "L47" size it.
VideoPresentation PresentVideo(const VideoFacts& facts, const SettingsStore& settings);

}  // namespace lumora
