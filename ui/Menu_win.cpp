#include "ui/Menu_win.h"

#include "platform/WinText_win.h"

namespace lumora {

void TrackMenu(HWND owner, const std::vector<MenuLine>& lines, int x, int y) {
    HMENU root = CreatePopupMenu();
    HMENU menu = root;
    std::wstring submenuText;
    for (const MenuLine& line : lines) {
        switch (line.kind) {
            case MenuSlot::Kind::Separator:
                AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
                break;
            case MenuSlot::Kind::SubmenuBegin:
                menu = CreatePopupMenu();
                submenuText = Widen(line.text);
                break;
            case MenuSlot::Kind::SubmenuEnd:
                AppendMenuW(root, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), submenuText.c_str());
                menu = root;
                break;
            case MenuSlot::Kind::Item:
                AppendMenuW(menu,
                            MF_STRING | (line.state.enabled ? MF_ENABLED : MF_GRAYED) |
                                (line.state.checked ? MF_CHECKED : 0),
                            static_cast<UINT_PTR>(line.id), Widen(line.text).c_str());
                break;
        }
    }
    TrackPopupMenu(root, TPM_RIGHTBUTTON, x, y, 0, owner, nullptr);
    DestroyMenu(root);
}

}  // namespace lumora
