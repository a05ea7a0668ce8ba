#pragma once
// The playlist window "《Lumora》文件列表": one line an entry, docked to the main window's right
// or bottom edge until the user drags it away, with its pop-up menu (play, remove, move, search).
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "app/Commands.h"
#include "settings/WindowPlacement.h"
#include "ui/Menu_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

// What the playlist window asks of the program: its commands come from the one command table.
class PlaylistCommands {
public:
    virtual ~PlaylistCommands() = default;
    virtual std::vector<MenuLine> PlaylistMenu() = 0;
    virtual void RunCommand(int id) = 0;
    // The information tip of an entry (1-based); empty for none.
    virtual std::string EntryInfo(int index) = 0;
};

class PlaylistWindow final : public WindowBase<PlaylistWindow> {
public:
    PlaylistWindow() = default;

    bool Create(PlaylistCommands& commands, HWND owner);
    void SetLines(const std::vector<std::string>& lines);
    void Select(int index);
    // The selected line, 1-based; 0 for none.
    int SelectedIndex() const;
    // False while it fades out.
    bool Visible() const;
    void SetCaption(const std::string& caption);
    // The information tip on the list ("L22" "1": the classic tip, otherwise a balloon).
    void CreateInfoTip(bool classic);
    void Toggle();
    // Follows the main window while docked (ListDock), also after a drag docked it.
    void FollowOwner();
    // A kept place (in pixels) gives the window its size and, undocked, its place; `dock` (StartListDock)
    // the edge it docks to.
    void Restore(const std::optional<WindowRect>& kept, ListDock dock);
    WindowRect Place() const;
    // The current skin (ui/Theme_win.h).
    void Restyle();
    // How its right-click menu looks.
    void SetMenuLook(const MenuLook& look) { menuLook_ = look; }

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void OnContextMenu(int x, int y);
    void OnMoving(RECT& r);
    void UpdateInfoTip();
    void DrawLine(const DRAWITEMSTRUCT& item) const;

    PlaylistCommands* commands_ = nullptr;
    HWND owner_ = nullptr;
    HWND lines_ = nullptr;
    HWND infoTip_ = nullptr;
    int pointed_ = 0;  // the entry under the pointer (from 1), 0 while it is over none: the tip tells of it
    ListDock dock_ = ListDock::Right;
    int dpi_ = 96;  // the DPI its font and sizes are for
    MenuLook menuLook_;
};

}  // namespace lumora
