#include <gtest/gtest.h>

#include <map>

#include "settings/WindowPlacement.h"

namespace lumora {
namespace {

const WindowRect kMonitors[] = {{0, 0, 1024, 768}, {1024, 0, 2048, 768}};

TEST(WindowPlacement, KeptPlacesComeBackOnlyOnAScreen) {
    const ScreenDpi dpi{96, 120};
    std::map<std::string_view, long long> values = {{"F4L", 1440}, {"F4T", 1440}, {"F4W", 2880}, {"F4H", 1440}};
    const ReadNumber read = [&](std::string_view name) -> std::optional<long long> {
        const auto it = values.find(name);
        return it == values.end() ? std::nullopt : std::optional<long long>(it->second);
    };
    EXPECT_EQ(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors), (WindowRect{96, 120, 288, 240}));

    values["F4L"] = 1440 * 20;  // on the second monitor
    EXPECT_TRUE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));
    values["F4L"] = 1440 * 30;  // right of every monitor
    EXPECT_FALSE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));
    values["F4L"] = 0;
    values["F4H"] = 0;
    EXPECT_FALSE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));
    values = {{"F4L", 1440}, {"F4T", 1440}, {"F4W", 0}, {"F4H", 1440}};
    EXPECT_FALSE(KeptPlace(kPlaylistWindowPlace, read, dpi, kMonitors));

    // The main window keeps its own size.
    values = {{"LEFT", 0}, {"TOP", 0}};
    EXPECT_EQ(KeptPlace(kMainWindowPlace, read, dpi, kMonitors, {5, 5, 465, 305}), (WindowRect{0, 0, 460, 300}));
    values["LEFT"] = -460 * 15;  // ends exactly where the first monitor begins
    EXPECT_FALSE(KeptPlace(kMainWindowPlace, read, dpi, kMonitors, {5, 5, 465, 305}));
}

TEST(WindowPlacement, ValuesAreTwipsAtTheScreensDpi) {
    const auto values = PlaceValues(kPlaylistWindowPlace, {96, 48, 288, 144}, {96, 96});
    const std::vector<std::pair<std::string_view, std::string>> expected = {
        {"F4L", "1440"}, {"F4T", "720"}, {"F4W", "2880"}, {"F4H", "1440"}};
    EXPECT_EQ(values, expected);
    const std::vector<std::pair<std::string_view, std::string>> main = {{"LEFT", "1440"}, {"TOP", "0"}};
    EXPECT_EQ(PlaceValues(kMainWindowPlace, {144, 0, 500, 300}, {144, 96}), main);
    EXPECT_EQ(TwipsToPixels(PixelsToTwips(300, 120), 120), 300);
    EXPECT_EQ(PixelsToTwips(96, 0), 1440);  // a screen that tells no DPI counts as 96
}

}  // namespace
}  // namespace lumora
