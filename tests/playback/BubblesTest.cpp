// The bubble display's motion: seeded, stepped by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "playback/Bubbles.h"

namespace lumora {
namespace {

TEST(Bubbles, RiseInsideTheAreaBurstAtTheTopAndComeBackFromBelow) {
    BubbleField field(7);
    field.SetArea(300, 180);
    ASSERT_FALSE(field.Bubbles().empty());
    BubbleField again(7);
    again.SetArea(300, 180);
    std::set<double> seen;  // every bubble ever shown, by its radius
    for (int step = 0; step < 600; ++step) {
        const std::vector<Bubble> before = field.Bubbles();
        field.Step();
        again.Step();
        ASSERT_EQ(field.Bubbles(), again.Bubbles()) << "the same seed gives the same bubbles";
        ASSERT_LE(field.Bubbles().size(), BubbleField::kMaxBubbles);
        for (const Bubble& b : field.Bubbles()) {
            ASSERT_GE(b.x - b.radius, -1e-9);
            ASSERT_LE(b.x + b.radius, 300 + 1e-9);
            ASSERT_GE(b.y + b.radius, 0);  // a bubble above the top has burst
            ASSERT_GT(b.radius, 0);
            seen.insert(b.radius);
            const auto was =
                std::find_if(before.begin(), before.end(), [&](const Bubble& o) { return o.radius == b.radius; });
            if (was != before.end()) {
                ASSERT_LT(b.y, was->y) << "bubbles only rise";
            }
        }
    }
    EXPECT_GT(seen.size(), 3 * BubbleField::kMaxBubbles) << "old bubbles burst and new ones come";
    BubbleField other(8);
    other.SetArea(300, 180);
    EXPECT_NE(other.Bubbles(), field.Bubbles());
}

TEST(Bubbles, ANewAreaStartsAfreshAndATinyOneHoldsNone) {
    BubbleField field(1);
    field.SetArea(300, 180);
    field.SetArea(100, 60);
    for (const Bubble& b : field.Bubbles()) EXPECT_LE(b.x + b.radius, 100 + 1e-9);
    field.SetArea(0, 180);
    field.Step();
    EXPECT_TRUE(field.Bubbles().empty());
}

TEST(Bubbles, ChangingColoursMoveOnWithEveryStepAndACalmOneStays) {
    BubbleField field(3);
    field.SetArea(200, 120);
    const Bubble b = field.Bubbles().front();
    const BubbleColour calm = field.ColourOf(b, false);
    std::set<std::tuple<int, int, int>> colours;
    for (int i = 0; i < 90; ++i) {
        const BubbleColour c = field.ColourOf(b, true);
        colours.insert({c.red, c.green, c.blue});
        // Light enough to show on the dark display.
        EXPECT_GE(std::max({c.red, c.green, c.blue}), 200);
        EXPECT_EQ(field.ColourOf(b, false), calm);
        field.Step();
    }
    EXPECT_GT(colours.size(), 40u);
}

}  // namespace
}  // namespace lumora
