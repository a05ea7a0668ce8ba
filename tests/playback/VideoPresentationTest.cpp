#include <gtest/gtest.h>

#include "playback/VideoSizing.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

TEST(VideoPresentation, WhatAnOpenedFileShows) {
    using C = VideoPresentation::Content;
    using K = VideoPlacement::Kind;
    struct Case {  // "L67": videos keep the window closed; "L51": sound closes it
        MediaKind kind;
        bool decoder1, hostedPictures;
        long width;
        const char *l67, *l51;
        C content;
        std::optional<K> place;
        bool hide, infoLines;
    } cases[] = {
        {MediaKind::Picture, false, false, 0, "0", "1", C::StillPicture, std::nullopt, false, false},
        {MediaKind::Picture, true, false, 0, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Flash, false, true, 0, "0", "0", C::HostedControl, K::Keep, false, false},
        {MediaKind::Flash, false, true, 0, "1", "0", C::HostedControl, std::nullopt, false, false},
        {MediaKind::MediaPlayer, false, false, 0, "0", "0", C::HostedControl, std::nullopt, false, false},
        {MediaKind::Mci, false, false, 0, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Mci, false, false, 0, "0", "0", C::Sound, std::nullopt, false, false},
        {MediaKind::Mci, true, false, 320, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Mci, false, false, 320, "0", "1", C::Movie, K::Size, false, true},
        {MediaKind::Mci, false, false, 320, "1", "1", C::Movie, std::nullopt, false, true},
    };
    for (const auto& c : cases) {
        SettingsStore s;
        s.SetText("L67", c.l67);
        s.SetText("L51", c.l51);
        VideoFacts f{c.kind, c.decoder1, c.width, c.width * 3 / 4, c.hostedPictures, 1024, 768};
        const VideoPresentation p = PresentVideo(f, s);
        SCOPED_TRACE(static_cast<int>(c.kind));
        EXPECT_EQ(p.content, c.content);
        EXPECT_EQ(p.place.has_value(), c.place.has_value());
        if (p.place && c.place) {
            EXPECT_EQ(p.place->kind, *c.place);
        }
        EXPECT_EQ(p.hideWindow, c.hide);
        EXPECT_EQ(p.showInfoLines, c.infoLines);
    }
    // Too wide for the screen is too big, even when the height fits.
    SettingsStore fullScreenWhenTooBig;
    fullScreenWhenTooBig.SetText("L47", "0");
    EXPECT_EQ(PlaceVideo(1100, 100, 1024, 768, fullScreenWhenTooBig).kind, VideoPlacement::Kind::FullScreen);
    // A picture without height is sound.
    EXPECT_EQ(PresentVideo({MediaKind::Mci, false, 320, 0, false, 1024, 768}, SettingsStore()).content, C::Sound);
}

}  // namespace
}  // namespace lumora
