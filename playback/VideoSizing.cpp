#include "playback/VideoSizing.h"

#include <cmath>

#include "settings/SettingsStore.h"
#include "settings/OptionNames.h"

namespace lumora {

double VideoScale(int index) {
    static constexpr std::array<double, 20> kScales = {1.0,  0.5,  0.75, 1.25, 1.5, 1.75, 2.0,  2.25, 2.5,  2.75,
                                                      3.0,  3.25, 3.5,  3.75, 4.0, 4.25, 4.5,  4.75, 5.0,  0.25};
    return index >= 0 && index < static_cast<int>(kScales.size()) ? kScales[static_cast<size_t>(index)] : 1.0;
}

std::string VideoScaleEntry(int index) {
    if (index == 0) return "原始大小";
    std::string text = std::to_string(VideoScale(index));  // "0.750000"
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

VideoPlacement PlaceVideo(long pictureWidth, long pictureHeight, long screenWidth, long screenHeight,
                          const SettingsStore& settings) {
    const long long l45 = settings.Number(opt::kVideoStartSize).value_or(1);
    if (l45 == 0) return {VideoPlacement::Kind::FullScreen};
    if (l45 == 2 || pictureWidth <= 0 || pictureHeight <= 0) return {VideoPlacement::Kind::Keep};
    const double scale = VideoScale(static_cast<int>(settings.Number(opt::kVideoScale).value_or(0)));
    const long width = std::lround(static_cast<double>(pictureWidth) * scale);
    const long height = std::lround(static_cast<double>(pictureHeight) * scale);
    if (width <= screenWidth && height <= screenHeight) return {VideoPlacement::Kind::Size, width, height};
    switch (settings.Number(opt::kSmallVideoSize).value_or(1)) {
        case 0: return {VideoPlacement::Kind::FullScreen};
        case 2: return {VideoPlacement::Kind::Keep};
        default: return {VideoPlacement::Kind::Size, pictureWidth, pictureHeight};
    }
}

VideoPresentation PresentVideo(const VideoFacts& f, const SettingsStore& settings) {
    using Content = VideoPresentation::Content;
    VideoPresentation p;
    const bool keepClosed = settings.IsOn(opt::kNoVideoWindowForVideo);
    if (f.kind == MediaKind::Picture && !f.decoder1) {
        p.content = Content::StillPicture;
        return p;
    }
    if (f.kind == MediaKind::Flash || f.kind == MediaKind::MediaPlayer) {
        p.content = Content::HostedControl;
        if (f.hostedHasPictures && !keepClosed) p.place = VideoPlacement{VideoPlacement::Kind::Keep};
        return p;
    }
    if (f.decoder1 || f.pictureWidth <= 0 || f.pictureHeight <= 0) {
        p.content = Content::Sound;
        p.hideWindow = settings.IsOn(opt::kCloseVideoForAudio);
        return p;
    }
    p.content = Content::Movie;
    p.showInfoLines = true;
    if (!keepClosed) p.place = PlaceVideo(f.pictureWidth, f.pictureHeight, f.workWidth, f.workHeight, settings);
    return p;
}

}  // namespace lumora
