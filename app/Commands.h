#pragma once
// Commands are data: one table of command id, menu text, action and state query builds both the
// dispatcher and every pop-up menu (the main window's and the playlist window's).
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// What the state queries look at: the windows as the user sees them.
struct UiState {
    bool lyricsWindowShown = false;
    bool playlistShown = false;
    int selectedEntry = 0;  // the playlist window's selected line, 1-based; 0 for none
    int skin = 2;           // "L35"
};

struct CommandState {
    bool enabled = true;
    bool checked = false;
};

// The state queries: pure functions of what the user sees.
using StateQuery = CommandState (*)(const UiState&);
CommandState AlwaysEnabled(const UiState&);
CommandState CheckedWhileLyricsWindowShown(const UiState& ui);
CommandState CheckedWhilePlaylistShown(const UiState& ui);
CommandState NeedsSelectedEntry(const UiState& ui);

struct Command {
    int id = 0;
    std::string_view menuText;  // empty for a button that has no menu entry
    std::function<void(const UiState&)> action;
    StateQuery state = AlwaysEnabled;
};

// A menu's layout: items by command id, separators and one level of sub-menus.
struct MenuSlot {
    enum class Kind { Item, Separator, SubmenuBegin, SubmenuEnd };
    Kind kind = Kind::Item;
    int id = 0;                  // Item
    std::string_view text = {};  // SubmenuBegin: the sub-menu's own caption
};

// One line of a menu ready to be drawn.
struct MenuLine {
    MenuSlot::Kind kind = MenuSlot::Kind::Item;
    int id = 0;
    std::string text;
    CommandState state;
};

class CommandTable {
public:
    // A second command with the same id replaces the first.
    void Add(Command command);
    // Runs the command when it is in the table and enabled in `ui`; false otherwise.
    bool Run(int id, const UiState& ui) const;
    // The lines of a menu; an item whose id is not in the table is left out.
    std::vector<MenuLine> Menu(std::span<const MenuSlot> layout, const UiState& ui) const;

private:
    const Command* Find(int id) const;
    std::vector<Command> commands_;
};

}  // namespace lumora
