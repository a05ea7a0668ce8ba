#pragma once
// The song menu "选歌": the queue's entries as a pop-up menu, laid out as the options say, and the menu
// colours. Portable: the menu windows draw what these return.
//
// The three menu types, chosen by the entry count when "自动设置“选歌”菜单类型。" is on:
//   Plain   - up to the upper bound ("L41"): one menu, its columns as long as the work area allows;
//   Columns - up to the lower bound ("L42"): one menu, "L39" entries a column ("自动调节": as many as fit);
//   Blocks  - beyond it: one sub-menu ("001-050" ...) for each block of entries, each laid out in columns.
// With the option off the menu always has columns. Whatever the type, no menu is larger than the work
// area: a column never holds more lines than fit its height, and a menu whose columns would not fit its
// width becomes blocks.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

class SettingsStore;

enum class SongMenuType { Plain, Columns, Blocks };

// What the options ask of the song menu.
struct SongMenuOptions {
    int filesPerColumn = 0;  // "L39": 0 = "自动调节"
    bool autoType = true;    // "L40"
    int upperBound = 32;     // "L41"
    int lowerBound = 130;    // "L42"
    bool flat = false;       // "L36": plain column breaks, no 3-D bars between columns
};
SongMenuOptions SongMenuOptionsFrom(const SettingsStore& settings);

// The work area in menu lines: how many fit one above the other, how many entry columns side by side.
struct SongMenuScreen {
    int lines = 1;
    int columns = 1;
};

// One line of a menu: an entry, or a block that opens a sub-menu of entries first..last (1-based).
struct SongMenuItem {
    bool block = false;
    int first = 0;
    int last = 0;
    bool newColumn = false;  // starts a new column
    bool operator==(const SongMenuItem&) const = default;
};

struct SongMenuLayout {
    SongMenuType type = SongMenuType::Plain;
    int perColumn = 1;      // entries a column
    int blockSize = 0;      // entries a block (Blocks only)
    bool barBreaks = true;  // columns apart with the system's 3-D bars
    // The column length "L39" asks for does not fit the work area and was cut to it.
    bool cut = false;
    std::vector<SongMenuItem> items;  // the menu's own lines
};

SongMenuLayout LayOutSongMenu(int entries, const SongMenuOptions& options, SongMenuScreen screen);
// The lines of a block's sub-menu.
std::vector<SongMenuItem> BlockLines(const SongMenuLayout& layout, const SongMenuItem& block);
// A block's caption: its first and last numbers in three digits, "001-050".
std::string BlockCaption(const SongMenuItem& block);

// The menu colours (COLORREF values): the skin's, or the user's "L1B" and "L1F" while "L24" is on.
struct MenuColours {
    std::uint32_t background = 0;
    std::uint32_t text = 0;
    std::uint32_t highlight = 0;  // the bar under the chosen line
    std::uint32_t grey = 0;       // disabled lines and separators
};
MenuColours ChooseMenuColours(const SettingsStore& settings, std::uint32_t skinBackground, std::uint32_t skinText,
                              std::uint32_t skinHighlight);

// The block view of the main window: numbered blocks in rows, a page of rows at a time.
// The row to show on top so that entry `current` (1-based; 0 for none) is on the page of `visibleRows`.
int RowToShow(int current, int perRow, int visibleRows, int topRow);
// The entry (1-based) at row and column of the view; none outside the queue.
std::optional<int> BlockAt(int row, int column, int perRow, int entries);

}  // namespace lumora
