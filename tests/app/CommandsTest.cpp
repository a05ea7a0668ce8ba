#include <gtest/gtest.h>

#include <tuple>

#include "app/Commands.h"
#include "app/KeyMap.h"
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

// What users rely on: the keys of a player where they expect them, and never a key that an edit box,
// a slider or the list's own movement needs.
TEST(KeyMap, KeysRunTheirCommandsOnlyWhereTheyBelong) {
    using C = KeyCommand;
    using F = KeyFocus;
    using namespace keys;
    const auto held = [](unsigned key) { return KeyPress{key, false, false, false, true}; };
    const KeyPress ctrlO{'O', true};
    // clang-format off
    for (const auto& [press, focus, expected] : {
             std::tuple{KeyPress{kSpace}, F::Window, C::PlayPause}, {{kSpace}, F::List, C::PlayPause},
             {{kSpace}, F::Edit, C::None},           // typed into an edit box
             {held(kSpace), F::Window, C::None},     // a held key toggles once
             {{kSpace, true}, F::Window, C::None},   // modifiers must match
             {held(kLeft), F::Window, C::Back},      // ... and seeks on
             {held(kRight), F::Window, C::Forward}, {held(kUp), F::Slider, C::VolumeUp},
             {held(kDown), F::Window, C::VolumeDown},
             {{kLeft}, F::Slider, C::None},          // the slider's own
             {{kDown}, F::List, C::None}, {{kPageUp}, F::List, C::None}, {{kPeriod}, F::List, C::None},  // the list's
             {{kPageDown}, F::Window, C::Next}, {{kPageUp}, F::Window, C::Previous}, {{kPeriod}, F::Slider, C::Stop},
             {ctrlO, F::Window, C::OpenFiles}, {ctrlO, F::Edit, C::None}, {{'O'}, F::Window, C::None},
             {{'O', true, false, true}, F::Window, C::None},  // Alt is the system's
             {{'O', true, true}, F::List, C::OpenFolder}, {{'L', true}, F::Slider, C::ShowList},
             {{'S', true}, F::Window, C::SaveList}, {{'T', true}, F::Window, C::JumpToTime},
             {{'I', true}, F::Window, C::MediaInfo}, {{'F', true}, F::List, C::FindEntry},
             {{kReturn}, F::List, C::PlayEntry}, {{kDelete}, F::List, C::RemoveEntry},
             {{kReturn}, F::Window, C::None},        // clicks the focused button
             {{kDelete}, F::Window, C::None}}) {
        EXPECT_EQ(CommandForKey(press, focus), expected) << press.key << " " << static_cast<int>(focus);
    }
    // Menus show the key that runs their command.
    for (const auto& [command, label] : {std::pair{C::OpenFiles, "Ctrl+O"}, {C::OpenFolder, "Ctrl+Shift+O"},
             {C::RemoveEntry, "Del"}, {C::PlayEntry, "Enter"}, {C::None, ""}}) {
        EXPECT_EQ(KeyLabel(command), label);
    }
    // Media keys: play only starts, pause only pauses.
    for (const auto& [appCommand, playing, expected] : {
             std::tuple{14, true, C::PlayPause}, {46, true, C::None}, {46, false, C::PlayPause},
             {47, false, C::None}, {47, true, C::PlayPause}, {11, false, C::Next}, {12, false, C::Previous},
             {13, true, C::Stop}, {10, true, C::VolumeUp}, {9, true, C::VolumeDown}, {49, true, C::Forward},
             {50, true, C::Back}, {8, true, C::None}}) {
        EXPECT_EQ(CommandForAppCommand(appCommand, playing), expected) << appCommand;
    }
    // clang-format on
}

}  // namespace
}  // namespace lumora
