// The bubble display's motion: seeded, stepped by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "playback/Bubbles.h"

namespace lumora {
namespace {

TEST(Bubbles, RiseInsideTheAreaBurstAtTheTopAndComeBackFromBelow) {
    BubbleField field(7), again(7);
    field.SetArea(300, 180);
    again.SetArea(300, 180);
    ASSERT_FALSE(field.Bubbles().empty());
    std::set<double> seen;  // every bubble shown, by its radius
    for (int step = 0; step < 600; ++step) {
        const std::vector<Bubble> before = field.Bubbles();
        field.Step();
        again.Step();
        ASSERT_EQ(field.Bubbles(), again.Bubbles()) << "the same seed gives the same bubbles";
        ASSERT_LE(field.Bubbles().size(), BubbleField::kMaxBubbles);
        for (const Bubble& b : field.Bubbles()) {
            ASSERT_TRUE(b.x - b.radius >= -1e-9 && b.x + b.radius <= 300 + 1e-9 && b.y + b.radius >= 0) << step;
            seen.insert(b.radius);
            const auto was =
                std::find_if(before.begin(), before.end(), [&](const Bubble& o) { return o.radius == b.radius; });
            ASSERT_TRUE(was == before.end() || b.y < was->y) << "bubbles only rise";
        }
    }
    EXPECT_GT(seen.size(), 3 * BubbleField::kMaxBubbles) << "old bubbles burst and new ones come";
    // A new area starts afresh; one too small for a bubble holds none.
    field.SetArea(8, 8);
    EXPECT_FALSE(field.Bubbles().empty());
    for (const auto& [width, height] : {std::pair{7, 180}, {180, 7}}) {
        field.SetArea(width, height);
        field.Step();
        EXPECT_TRUE(field.Bubbles().empty()) << width << "x" << height;
    }
    EXPECT_TRUE(BubblesShown(true, false, true));
    EXPECT_FALSE(BubblesShown(false, false, true) || BubblesShown(true, true, true) ||
                 BubblesShown(true, false, false));
}

TEST(Bubbles, ChangingColoursMoveOnWithEveryStepAndACalmOneStays) {
    BubbleField field(3);
    field.SetArea(200, 120);
    const Bubble b = field.Bubbles().front();
    const BubbleColour calm = field.ColourOf(b, false);
    std::set<std::tuple<int, int, int>> colours;
    for (int i = 0; i < 90; ++i, field.Step()) {
        const BubbleColour c = field.ColourOf(b, true);
        colours.insert({c.red, c.green, c.blue});
        EXPECT_GE(std::max({c.red, c.green, c.blue}), 200);  // light on the dark display
        EXPECT_EQ(field.ColourOf(b, false), calm);
    }
    EXPECT_GT(colours.size(), 40u);
    EXPECT_GE(std::max({calm.red, calm.green, calm.blue}), 200);
}

}  // namespace
}  // namespace lumora
