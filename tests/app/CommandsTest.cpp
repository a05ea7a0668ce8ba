#include <gtest/gtest.h>

#include <tuple>

#include "app/Commands.h"
#include "app/TimerPlan.h"

namespace lumora {
namespace {

TEST(Commands, OneTableRunsCommandsAndBuildsMenus) {
    std::vector<int> ran;
    CommandTable table;
    table.Add({1, "a", [&](const UiState& ui) { ran.push_back(ui.selectedEntry); }});
    table.Add({2, "b", [&](const UiState&) { ran.push_back(-2); }, NeedsSelectedEntry});
    table.Add({3, "c", [&](const UiState&) { ran.push_back(-3); }, CheckedWhilePlaylistShown});
    table.Add({4, "d", [&](const UiState&) {}, CheckedWhileLyricsWindowShown});
    table.Add({1, "A", [&](const UiState&) { ran.push_back(-1); }});  // replaces the first
    const UiState selected{false, true, 5};

    EXPECT_TRUE(table.Run(1, selected));
    EXPECT_FALSE(table.Run(2, UiState{}));  // disabled: nothing runs
    EXPECT_TRUE(table.Run(2, selected));
    EXPECT_EQ(ran, (std::vector<int>{-1, -2}));

    using K = MenuSlot::Kind;
    const MenuSlot layout[] = {{K::Item, 1}, {K::Separator}, {K::SubmenuBegin, 0, "sub"}, {K::Item, 2},
                               {K::Item, 42}, {K::SubmenuEnd}, {K::Item, 3}, {K::Item, 4}};
    const auto lines = table.Menu(layout, UiState{false, true, 0});
    ASSERT_EQ(lines.size(), 7u);  // the unknown 42 is left out
    EXPECT_FALSE(lines[3].state.enabled);
    EXPECT_TRUE(lines[5].state.checked);
    EXPECT_FALSE(lines[6].state.checked);
    EXPECT_TRUE(table.Menu(layout, UiState{true, false, 0})[6].state.checked);
}

TEST(TimerPlan, OnlyTimersWithWorkRun) {
    struct Case {
        bool playing, decoder1, displayShown, volumeChanging, closedByUser;
        bool progress, display, volume, openDisplay;
    } cases[] = {
        {false, false, false, false, false, false, false, false, false},  // idle
        {false, true, true, false, false, false, false, false, false},    // paused under decoder 1
        {true, false, true, false, false, true, false, false, false},     // decoder 2 has no spectrum
        {true, true, false, false, false, true, true, false, true},       // decoder 1 opens its display
        {true, true, false, false, true, true, false, false, false},      // ... unless the user closed it
        {false, false, false, true, false, false, false, true, false},
    };
    for (const auto& c : cases) {
        const TimerPlan p = PlanTimers({c.playing, c.decoder1, c.displayShown, c.volumeChanging, {}, c.closedByUser});
        EXPECT_EQ(std::tuple(p.progress, p.display, p.volume, p.openDisplay),
                  std::tuple(c.progress, c.display, c.volume, c.openDisplay)) << &c - cases;
    }
    // "L53" in sixths of 50 ms; missing is 50 ms, below one step is one step.
    EXPECT_EQ(PlanTimers({}).volumeIntervalMs, 50u);
    EXPECT_EQ(PlanTimers({false, false, false, true, 12}).volumeIntervalMs, 100u);
    EXPECT_EQ(PlanTimers({false, false, false, true, 0}).volumeIntervalMs, 8u);
}

}  // namespace
}  // namespace lumora
