// The playlist window's docking while it is dragged, and kept places that no screen shows any longer.
#include <gtest/gtest.h>

#include <algorithm>

#include "common/Fade.h"
#include "settings/Docking.h"

namespace lumora {
namespace {

const WindowRect kOwner{100, 100, 560, 400};

TEST(Docking, TheListSnapsToTheRightOrBottomEdgeWithinTheSnapDistanceAndLeavesItWhenDraggedAway) {
    const struct {
        WindowRect moving;
        ListDock dock;
        WindowRect placed;
    } cases[] = {
        {{570, 110, 870, 410}, ListDock::Right, {560, 100, 860, 400}},  // near the right edge
        {{544, 84, 844, 384}, ListDock::Right, {560, 100, 860, 400}},   // just inside the snap distance
        {{543, 100, 843, 400}, ListDock::None, {543, 100, 843, 400}},   // one pixel too far left
        {{560, 117, 860, 417}, ListDock::None, {560, 117, 860, 417}},   // one pixel too low
        {{90, 410, 390, 600}, ListDock::Below, {100, 400, 400, 590}},   // near the bottom edge
        {{116, 384, 416, 584}, ListDock::Below, {100, 400, 400, 600}},
        {{117, 400, 417, 600}, ListDock::None, {117, 400, 417, 600}},
        {{800, 500, 1100, 800}, ListDock::None, {800, 500, 1100, 800}},  // far away
    };
    for (const auto& c : cases) {
        EXPECT_EQ(SnapDock(c.moving, kOwner, kDockSnapPixels), c.dock) << c.moving.left << "," << c.moving.top;
        EXPECT_EQ(SnapPlace(c.moving, kOwner, kDockSnapPixels), c.placed) << c.moving.left << "," << c.moving.top;
    }
    // Docked, it follows the owner wherever that goes, and takes the length of the edge it docks to.
    const WindowRect moved{300, 50, 760, 350};
    EXPECT_EQ(DockedListPlace(ListDock::Right, moved, {560, 100, 860, 400}), (WindowRect{760, 50, 1060, 350}));
    EXPECT_EQ(DockedListPlace(ListDock::Below, moved, {100, 400, 400, 600}), (WindowRect{300, 350, 760, 550}));
    EXPECT_EQ(DockedListPlace(ListDock::None, moved, {1, 2, 3, 4}), (WindowRect{1, 2, 3, 4}));
}

TEST(Docking, AKeptPlaceThatNoScreenShowsComesBackOnTheNearestWorkArea) {
    const WindowRect areas[] = {{0, 0, 1024, 738}, {1024, 0, 2304, 994}};
    const struct {
        WindowRect kept;
        WindowRect placed;
    } cases[] = {
        {{100, 100, 400, 300}, {100, 100, 400, 300}},        // on the first
        {{1000, 100, 1300, 300}, {1000, 100, 1300, 300}},    // across both
        {{-268, 100, 32, 300}, {-268, 100, 32, 300}},        // 32 pixels show: enough to take hold of
        {{-269, 100, 31, 300}, {0, 100, 300, 300}},          // less: moved in
        {{3000, 2000, 3300, 2200}, {2004, 794, 2304, 994}},  // below and right of the second
        {{100, -400, 400, -100}, {100, 0, 400, 300}},        // above the first
        {{500, 730, 800, 930}, {500, 538, 800, 738}},        // under the first's taskbar
        {{-3000, 0, 0, 1200}, {0, 0, 3000, 1200}},           // larger than any: its top-left corner shows
    };
    for (const auto& c : cases) EXPECT_EQ(OntoWorkArea(c.kept, areas), c.placed) << c.kept.left << "," << c.kept.top;
    EXPECT_EQ(OntoWorkArea({5, 5, 9, 9}, {}), (WindowRect{5, 5, 9, 9}));
}

TEST(WindowFade, TheAlphaRampEndsExactlyAtTheWindowsOwnOpacity) {
    EXPECT_EQ(FadeSteps(0, 255, 60, 15), (std::vector<int>{63, 127, 191, 255}));
    EXPECT_EQ(FadeSteps(200, 0, 45, 15), (std::vector<int>{134, 67, 0}));
    EXPECT_EQ(FadeSteps(0, 300, 30, 15), (std::vector<int>{127, 255}));  // never past opaque
    EXPECT_EQ(FadeSteps(-5, 20, 10, 15), (std::vector<int>{20}));        // one step, however short
    EXPECT_EQ(FadeSteps(0, 20, 10, 0), (std::vector<int>{20}));
    EXPECT_TRUE(FadeSteps(128, 128).empty());
    const std::vector<int> full = FadeSteps(0, 128);
    EXPECT_EQ(full.size(), static_cast<size_t>(kFadeMs / kFadeTickMs));
    EXPECT_TRUE(std::is_sorted(full.begin(), full.end()));
    EXPECT_EQ(full.back(), 128);
}

}  // namespace
}  // namespace lumora
