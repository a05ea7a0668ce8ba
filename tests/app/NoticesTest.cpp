#include "app/Notices.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(ChimeBalloon(7).text, "现在时间：07:00");
    EXPECT_EQ(ChimeBalloon(23).text, "现在时间：23:00");
}

TEST(Notices, ThePlayingBalloonNamesTitleAndArtistOrTheFileAndTheLength) {
    EXPECT_EQ(PlayingBalloon("a.mp3", "歌", "人", 185000).text, "歌 - 人\r\n长度：00:03:05");
    EXPECT_EQ(PlayingBalloon("a.mp3", "歌", "", 0).text, "歌");
    EXPECT_EQ(PlayingBalloon("一 Song.wav", "", "人", -1).text, "一 Song.wav");
    EXPECT_EQ(PlayingBalloon("a.mp3", "", "", 3723000).text, "a.mp3\r\n长度：01:02:03");
    const BalloonText start = StartupBalloon("Lumora", "1.2.3");
    EXPECT_EQ(start.title, "Lumora");
    EXPECT_NE(start.text.find("1.2.3"), std::string::npos);
}

// Behind the icon the balloon points at it; on a shown window at its display; else at the screen's corner.
TEST(Notices, BalloonsPointWhereTheWindowIs) {
    EXPECT_EQ(PlaceBalloon(true, false, true), BalloonPlace::TrayIcon);
    EXPECT_EQ(PlaceBalloon(true, true, false), BalloonPlace::MainWindow);
    EXPECT_EQ(PlaceBalloon(false, true, false), BalloonPlace::MainWindow);
    EXPECT_EQ(PlaceBalloon(false, true, true), BalloonPlace::ScreenCorner);
    EXPECT_EQ(PlaceBalloon(false, false, false), BalloonPlace::ScreenCorner);
}

TEST(Notices, TheIconTipNamesTheFileAndIsCutToWholeCharacters) {
    EXPECT_EQ(TrayTipText("Lumora", ""), "Lumora");
    EXPECT_EQ(TrayTipText("Lumora", "a.mp3"), "Lumora - a.mp3");
    EXPECT_EQ(TrayTipText("Lumora", "12345", 15), "Lumora - 12345");  // 14 units and the terminator
    EXPECT_EQ(TrayTipText("Lumora", "123456", 15), "Lumora - 1234…");
    std::string name;
    for (int i = 0; i < 130; ++i) name += "歌";
    const std::string tip = TrayTipText("Lumora", name + "😀");
    EXPECT_TRUE(tip.starts_with("Lumora - 歌"));
    EXPECT_TRUE(tip.ends_with("歌…"));
    // 3 bytes a character here: "Lumora - " and 117 of them with "…" fill 127 units and the terminator.
    EXPECT_EQ(tip.size(), 9 + 117 * 3 + 3);
    const std::string emoji = TrayTipText("L", std::string(6, 'x') + "😀😀", 12);  // 2 units each
    EXPECT_EQ(emoji, "L - xxxxxx…");
}

TEST(Notices, TheClassicListTipHasTheWholeLineAndThePath) {
    EXPECT_EQ(ClassicListTip("001-(歌.mp3)", "D:\\音乐\\歌.mp3"), "001-(歌.mp3)\r\nD:\\音乐\\歌.mp3");
}

TEST(Notices, ThePointerOnTheProgressTrackGivesAPosition) {
    EXPECT_EQ(PermilleAt(10, 10, 110), 0);
    EXPECT_EQ(PermilleAt(60, 10, 110), 500);
    EXPECT_EQ(PermilleAt(110, 10, 110), 1000);
    EXPECT_EQ(PermilleAt(0, 10, 110), 0);
    EXPECT_EQ(PermilleAt(500, 10, 110), 1000);
    EXPECT_EQ(PermilleAt(5, 10, 10), 0);
}

}  // namespace
}  // namespace lumora
