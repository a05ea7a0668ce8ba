#include <gtest/gtest.h>

#include "playback/VideoSizing.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

TEST(VideoSizing, PlacementByTheThreeOptions) {
    using K = VideoPlacement::Kind;
    struct Case {
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
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.l45) + "/" + c.l46 + "/" + c.l47);
        SettingsStore s;
        s.SetText("L45", c.l45);
        s.SetText("L46", c.l46);
        s.SetText("L47", c.l47);
        const VideoPlacement p = PlaceVideo(c.w, c.h, 1024, 768, s);
        EXPECT_EQ(p.kind, c.kind);
        if (c.kind == K::Size) { EXPECT_EQ(std::pair(p.width, p.height), std::pair(c.width, c.height)); }
    }
    EXPECT_EQ(VideoScale(99), 1.0);
}

}  // namespace
}  // namespace lumora
