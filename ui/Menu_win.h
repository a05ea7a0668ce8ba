#pragma once
// Pop-up menus built from the command table's lines, and the song menu "选歌". Either the system's plain
// menus, or flat owner-drawn ones in the menu colours ("使用XP菜单…"): a highlight bar, Lumora's own check
// marks, separators and sub-menu arrows, the keys right-aligned, in the font of the owner's DPI.
#include <windows.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "app/Commands.h"
#include "settings/SongMenu.h"

namespace lumora {

struct MenuLook {
    bool flat = false;
    MenuColours colours;
};

// A pop-up menu with its sub-menus and the data of its owner-drawn lines, destroyed with it.
class PopupMenu {
public:
    PopupMenu(const MenuLook& look, int dpi);
    ~PopupMenu();
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;

    HMENU Root() const { return root_; }
    // A new sub-menu; it belongs to the root once a line opens it.
    HMENU NewSubmenu();
    // A line: `text` may hold a key after a tab. `flags`: MF_GRAYED, MF_CHECKED, MF_MENUBREAK, MF_MENUBARBREAK.
    void Add(HMENU menu, UINT_PTR id, const std::string& text, UINT flags = 0, HMENU submenu = nullptr);
    void AddSeparator(HMENU menu);
    // Shows the menu at (x, y) on the screen; the chosen command arrives at `owner` as WM_COMMAND.
    void Track(HWND owner, int x, int y);

    // One owner-drawn line.
    struct Line {
        std::wstring text;
        std::wstring key;
        bool separator = false;
        bool submenu = false;
        const PopupMenu* menu = nullptr;
    };
    const MenuLook& Look() const { return look_; }
    int Dpi() const { return dpi_; }

private:
    MenuLook look_;
    int dpi_;
    HMENU root_;
    HBRUSH background_ = nullptr;  // the menus' own background, around their lines
    std::deque<Line> lines_;       // stable addresses: each line's item data points at its Line
};

void TrackMenu(HWND owner, const std::vector<MenuLine>& lines, int x, int y, const MenuLook& look);

// The song menu: `lines` are the queue's list lines, `current` the playing entry (1-based, 0 for none);
// entry n sends `firstCommand` + n - 1. "列表试" (`layout.barBreaks` off) draws it flat whatever `look` says.
void TrackSongMenu(HWND owner, const std::vector<std::string>& lines, int current, int firstCommand, int x, int y,
                   const MenuLook& look, const SongMenuOptions& options);

// The owner's WM_MEASUREITEM, WM_DRAWITEM and WM_MENUCHAR (a line's "&" key) for the lines of a flat
// menu: the message's result; nothing for other messages and other controls' items.
std::optional<LRESULT> FlatMenuMessage(UINT msg, WPARAM wp, LPARAM lp);

}  // namespace lumora
