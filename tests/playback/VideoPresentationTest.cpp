#include <gtest/gtest.h>

#include "playback/VideoSizing.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

using K = VideoPlacement::Kind;

SettingsStore Options(std::initializer_list<std::pair<const char*, const char*>> values) {
    SettingsStore s;
    for (const auto& [name, text] : values) s.SetText(name, text);
    return s;
}

TEST(VideoSizing, PlacementByTheThreeOptions) {
    const struct {
        const char *l45, *l46, *l47;
        long w, h;
        K kind;
        long width, height;
    } cases[] = {
        {"0", "0", "1", 320, 240, K::FullScreen, 0, 0},
        {"2", "0", "1", 320, 240, K::Keep, 0, 0},
        {"1", "0", "1", 320, 240, K::Size, 320, 240},    // 原始大小
        {"1", "6", "1", 320, 240, K::Size, 640, 480},    // twice
        {"1", "1", "1", 320, 240, K::Size, 160, 120},    // half
        {"1", "18", "1", 320, 240, K::Size, 320, 240},   // five times does not fit: the picture's own size
        {"1", "18", "0", 320, 240, K::FullScreen, 0, 0},
        {"1", "18", "2", 320, 240, K::Keep, 0, 0},
        {"1", "0", "1", 0, 0, K::Keep, 0, 0},            // no picture size reported
        {"1", "0", "0", 1100, 100, K::FullScreen, 0, 0},  // too wide for the screen is too big, though the height fits
    };
    for (const auto& c : cases) {
        const VideoPlacement p = PlaceVideo(c.w, c.h, 1024, 768, Options({{"L45", c.l45}, {"L46", c.l46}, {"L47", c.l47}}));
        EXPECT_EQ(std::tuple(p.kind, c.kind == K::Size ? p.width : 0, c.kind == K::Size ? p.height : 0),
                  std::tuple(c.kind, c.width, c.height)) << c.l45 << "/" << c.l46 << "/" << c.l47 << " " << c.w;
    }
}

TEST(VideoPresentation, WhatAnOpenedFileShows) {
    using C = VideoPresentation::Content;
    struct Case {  // "L67": videos keep the window closed; "L51": sound closes it
        MediaKind kind;
        bool decoder1, hostedPictures;
        long width, height;
        const char *l67, *l51;
        C content;
        std::optional<K> place;
        bool hide, infoLines;
    } cases[] = {
        {MediaKind::Picture, false, false, 0, 0, "0", "1", C::StillPicture, std::nullopt, false, false},
        {MediaKind::Picture, true, false, 0, 0, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Flash, false, true, 0, 0, "0", "0", C::HostedControl, K::Keep, false, false},
        {MediaKind::Flash, false, true, 0, 0, "1", "0", C::HostedControl, std::nullopt, false, false},
        {MediaKind::MediaPlayer, false, false, 0, 0, "0", "0", C::HostedControl, std::nullopt, false, false},
        {MediaKind::Mci, false, false, 0, 0, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Mci, false, false, 0, 0, "0", "0", C::Sound, std::nullopt, false, false},
        {MediaKind::Mci, true, false, 320, 240, "0", "1", C::Sound, std::nullopt, true, false},
        {MediaKind::Mci, false, false, 320, 240, "0", "1", C::Movie, K::Size, false, true},
        {MediaKind::Mci, false, false, 320, 240, "1", "1", C::Movie, std::nullopt, false, true},
        {MediaKind::Mci, false, false, 320, 0, "0", "0", C::Sound, std::nullopt, false, false},  // no height: sound
    };
    for (const auto& c : cases) {
        const VideoPresentation p = PresentVideo({c.kind, c.decoder1, c.width, c.height, c.hostedPictures, 1024, 768},
                                                 Options({{"L67", c.l67}, {"L51", c.l51}}));
        EXPECT_EQ(std::tuple(p.content, p.place ? std::optional(p.place->kind) : std::nullopt, p.hideWindow, p.showInfoLines),
                  std::tuple(c.content, c.place, c.hide, c.infoLines)) << &c - cases;
    }
}

}  // namespace
}  // namespace lumora
