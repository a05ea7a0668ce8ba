#include <gtest/gtest.h>

#include <algorithm>

#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "settings/SongMenu.h"
#include "common/SkinDescription.h"

namespace lumora {
namespace {

int Columns(const std::vector<SongMenuItem>& items) {
    return items.empty()
               ? 0
               : 1 + static_cast<int>(std::count_if(items.begin(), items.end(), [](auto& i) { return i.newColumn; }));
}

// The type follows the entry count between the two bounds; columns and blocks never outgrow the work area.
TEST(SongMenu, LayoutByCountBoundsAndWorkArea) {
    using T = SongMenuType;
    struct Case {
        int entries, perColumnAsked;
        bool autoType;
        int upper, lower, lines, screenColumns;
        T type;
        int perColumn, blockSize, menuLines, columns;
        bool cut;
    };
    // clang-format off
    const Case cases[] = {
        // up to the upper bound: one plain menu, columns as long as the screen allows, "L39" aside
        {20, 10, true, 32, 130, 40, 8,     T::Plain, 40, 0, 20, 1, false},
        {32, 0, true, 32, 130, 20, 8,      T::Plain, 20, 0, 32, 2, false},
        // up to the lower bound: "L39" entries a column, or as many as fit
        {33, 10, true, 32, 130, 40, 8,     T::Columns, 10, 0, 33, 4, false},
        {130, 0, true, 32, 130, 40, 8,     T::Columns, 40, 0, 130, 4, false},
        {100, 60, true, 32, 130, 40, 8,    T::Columns, 40, 0, 100, 3, true},  // cut to the screen
        // beyond it: blocks of about fifty, whole columns each
        {131, 10, true, 32, 130, 40, 8,    T::Blocks, 10, 50, 3, 1, false},
        {999, 0, true, 32, 130, 40, 8,     T::Blocks, 40, 40, 25, 1, false},
        {999, 25, true, 32, 130, 10, 8,    T::Blocks, 10, 50, 20, 2, true},
        // the bounds the user set, and the type chosen by hand: always columns
        {5, 2, true, 0, 4, 40, 8,          T::Blocks, 2, 16, 1, 1, false},
        {500, 50, false, 32, 130, 60, 20,  T::Columns, 50, 0, 500, 10, false},
        {10, 3, false, 32, 130, 40, 8,     T::Columns, 3, 0, 10, 4, false},
        {40, 10, false, 32, 130, 40, 4,    T::Columns, 10, 0, 40, 4, false},  // just as wide as the screen
        // columns wider than the work area become blocks
        {300, 10, false, 32, 130, 40, 8,   T::Blocks, 10, 50, 6, 1, false},
        {300, 0, true, 400, 500, 30, 3,    T::Blocks, 30, 30, 10, 1, false},
        {200, 17, true, 32, 130, 40, 8,    T::Blocks, 17, 34, 6, 1, false},   // two columns of 17
        {999, 60, true, 32, 130, 80, 8,    T::Blocks, 60, 60, 17, 1, false},  // one column of 60
        // a short column would make more blocks than the screen holds: the columns grow
        {999, 1, false, 32, 130, 30, 4,    T::Blocks, 3, 12, 84, 3, false},
        {0, 0, true, 32, 130, 40, 8,       T::Plain, 40, 0, 0, 0, false},
        {1, 0, true, 32, 130, 40, 8,       T::Plain, 40, 0, 1, 1, false},
        {10, 0, true, 32, 130, 40, 0,      T::Plain, 40, 0, 10, 1, false},  // no room at all: still one column
    };
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
        const SongMenuOptions options{c.perColumnAsked, c.autoType, c.upper, c.lower, false};
        const SongMenuLayout layout = LayOutSongMenu(c.entries, options, {c.lines, c.screenColumns});
        EXPECT_EQ(layout.type, c.type);
        EXPECT_EQ(layout.perColumn, c.perColumn);
        EXPECT_EQ(layout.blockSize, c.blockSize);
        EXPECT_EQ(static_cast<int>(layout.items.size()), c.menuLines);
        EXPECT_EQ(Columns(layout.items), c.columns);
        EXPECT_EQ(layout.cut, c.cut);
        EXPECT_LE(Columns(layout.items), std::max(c.screenColumns, 1));
        // Every entry once, in order, through the blocks' sub-menus, none of them wider than the screen.
        int next = 1;
        for (const SongMenuItem& item : layout.items) {
            const auto lines = item.block ? BlockLines(layout, item) : std::vector<SongMenuItem>{item};
            EXPECT_LE(Columns(lines), std::max(c.screenColumns, 1));
            for (const SongMenuItem& line : lines) {
                EXPECT_FALSE(line.block);
                EXPECT_EQ(line.first, next++);
            }
        }
        EXPECT_EQ(next, c.entries + 1);
    }
}

TEST(SongMenu, BlockCaptionsBarsAndTheOptions) {
    const SongMenuLayout layout = LayOutSongMenu(120, {10, true, 32, 100, false}, {40, 8});
    ASSERT_EQ(layout.items.size(), 3u);
    EXPECT_EQ(BlockCaption(layout.items[0]), "001-050");
    EXPECT_EQ(BlockCaption(layout.items[2]), "101-120");
    const auto lines = BlockLines(layout, layout.items[1]);
    EXPECT_EQ(lines[10], (SongMenuItem{false, 61, 61, true}));
    EXPECT_TRUE(BlockLines(layout, lines[0]).empty());
    EXPECT_TRUE(layout.barBreaks);
    EXPECT_FALSE(LayOutSongMenu(3, {0, true, 32, 130, true}, {40, 8}).barBreaks);  // "列表试": plain breaks

    SettingsStore store;
    for (const auto& [name, text] : {std::pair{opt::kSongMenuLayout, "12"},
                                     {opt::kAutoSongMenuType, "0"},
                                     {opt::kSongMenuUpperBound, "7"},
                                     {opt::kSongMenuLowerBound, "9"},
                                     {opt::kFlatSongMenu, "1"}}) {
        store.SetText(name, text);
    }
    const SongMenuOptions o = SongMenuOptionsFrom(store);
    EXPECT_EQ(std::tuple(o.filesPerColumn, o.autoType, o.upperBound, o.lowerBound, o.flat),
              std::tuple(12, false, 7, 9, true));
}

// The skin's colours unless "L24" is on; then the user's, with a highlight and grey of their own.
TEST(SongMenu, MenuColoursAndTheBlockView) {
    SettingsStore store;
    store.SetText(opt::kMenuBackColour, "255");  // red
    store.SetText(opt::kMenuTextColour, "16777215");
    const MenuColours skin = ChooseMenuColours(store, 0x102030, 0xF0F0F0, 0x405060);
    EXPECT_EQ(std::tuple(skin.background, skin.text, skin.highlight), std::tuple(0x102030u, 0xF0F0F0u, 0x405060u));
    EXPECT_EQ(skin.grey, BlendColour(0x102030, 0xF0F0F0, 450));
    store.SetText(opt::kMenuColours, "1");
    const MenuColours own = ChooseMenuColours(store, 0x102030, 0xF0F0F0, 0x405060);
    EXPECT_EQ(std::tuple(own.background, own.text, own.highlight), std::tuple(0x0000FFu, 0xFFFFFFu, 0x4040FFu));
    store.SetText(opt::kMenuTextColour, "-2147483643");  // a system colour: the skin's text instead
    store.SetText(opt::kMenuBackColour, "16777216");     // no colour at all
    const MenuColours odd = ChooseMenuColours(store, 0x102030, 0xF0F0F0, 0x405060);
    EXPECT_EQ(std::tuple(odd.background, odd.text), std::tuple(0x102030u, 0xF0F0F0u));

    // Blocks of ten a row, three rows a page: the page follows the playing entry.
    EXPECT_EQ(RowToShow(35, 10, 3, 0), 1);
    EXPECT_EQ(RowToShow(30, 10, 3, 0), 0);
    EXPECT_EQ(RowToShow(35, 10, 3, 2), 2);
    EXPECT_EQ(RowToShow(5, 10, 3, 2), 0);
    EXPECT_EQ(RowToShow(0, 10, 3, 2), 2);
    EXPECT_EQ(RowToShow(5, 0, 3, 2), 2);
    EXPECT_EQ(BlockAt(0, 3, 10, 20), 4);
    EXPECT_EQ(BlockAt(1, 4, 10, 20), 15);
    EXPECT_EQ(BlockAt(1, 9, 10, 20), 20);
    EXPECT_EQ(BlockAt(2, 0, 10, 20), std::nullopt);
    EXPECT_EQ(BlockAt(0, 10, 10, 20), std::nullopt);
    EXPECT_EQ(BlockAt(-1, 0, 10, 20), std::nullopt);
}

}  // namespace
}  // namespace lumora
