#include "app/Notices.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumora {
namespace {

// The chime's one timer is due at the next full hour; one that comes a moment early still names that hour.
TEST(Notices, TheChimeWaitsForTheNextFullHourAndNamesIt) {
    const struct {
        TimeOfDay now;
        unsigned msToNextHour;
        int announced;
    } kCases[] = {
        {{13, 0, 0, 0}, 3600000, 13}, {{13, 59, 59, 999}, 1, 14},    {{13, 30, 15, 250}, 1784750, 13},
        {{23, 59, 30, 0}, 30000, 0},  {{14, 0, 0, 10}, 3599990, 14}, {{8, 58, 59, 999}, 60001, 8},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(MsToNextHour(c.now), c.msToNextHour) << c.now.hour << ":" << c.now.minute;
        EXPECT_EQ(ChimeHour(c.now), c.announced) << c.now.hour << ":" << c.now.minute;
    }
    // Given a moment early, the chime waits for the hour after; given late, for the next one.
    EXPECT_EQ(MsToNextHour({13, 59, 59, 990}, true), 3600010u);
    EXPECT_EQ(MsToNextHour({13, 58, 59, 999}, true), 60001u);
    EXPECT_EQ(MsToNextHour({14, 0, 0, 20}, true), 3599980u);
    EXPECT_EQ(ChimeBalloon(7).text + ChimeBalloon(23).text, "现在时间：07:00现在时间：23:00");
}

TEST(Notices, ThePlayingBalloonNamesTitleAndArtistOrTheFileAndTheLength) {
    EXPECT_EQ(PlayingBalloon("a.mp3", "歌", "人", 185000).text, "歌 - 人\r\n长度：00:03:05");
    EXPECT_EQ(PlayingBalloon("a.mp3", "歌", "", 0).text, "歌");
    EXPECT_EQ(PlayingBalloon("一 Song.wav", "", "人", -1).text, "一 Song.wav");
    EXPECT_EQ(PlayingBalloon("a.mp3", "", "", 3723000).text, "a.mp3\r\n长度：01:02:03");
    EXPECT_EQ(StartupBalloon("Lumora", "1.2.3"), (BalloonText{"Lumora", "Lumora 版本：1.2.3"}));
}

// Behind the icon the balloon points at it; on a shown window at its display; else at the screen's corner.
TEST(Notices, BalloonsPointWhereTheWindowIs) {
    using enum BalloonPlace;
    EXPECT_EQ(std::vector({PlaceBalloon(true, false, true), PlaceBalloon(true, true, false),
                           PlaceBalloon(false, true, true), PlaceBalloon(false, false, false)}),
              std::vector({TrayIcon, MainWindow, ScreenCorner, ScreenCorner}));
}

// The icon's tip fits the shell's 128 UTF-16 units with its terminator, cut after whole characters.
TEST(Notices, TheIconTipNamesTheFileAndIsCutToWholeCharacters) {
    EXPECT_EQ(TrayTipText("Lumora", ""), "Lumora");
    EXPECT_EQ(TrayTipText("Lumora", "12345", 15), "Lumora - 12345");
    EXPECT_EQ(TrayTipText("Lumora", "123456", 15), "Lumora - 1234…");
    EXPECT_EQ(TrayTipText("L", "xxxxxx😀😀", 12), "L - xxxxxx…");  // two units each
    std::string name;
    for (int i = 0; i < 130; ++i) name += "歌";
    EXPECT_EQ(TrayTipText("Lumora", name), "Lumora - " + name.substr(0, 117 * 3) + "…");
}

}  // namespace
}  // namespace lumora
