#include "ui/Menu_win.h"

#include <algorithm>
#include <functional>

#include "platform/WinText_win.h"
#include "playlist/PlayQueue.h"
#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

// The flat lines' measures at 96 DPI.
constexpr int kLineHeight = 22;
constexpr int kSeparatorHeight = 7;
constexpr int kCheckArea = 26;  // left of the text: the check mark
constexpr int kKeyGap = 28;     // between a text and its key
constexpr int kArrowArea = 18;  // right of the text or key: the sub-menu arrow

// GDI objects made for one drawing and selected into its DC while it lasts.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object, bool owned = true) : dc_(dc), object_(object), owned_(owned) {
        old_ = SelectObject(dc, object);
    }
    ~Selected() {
        SelectObject(dc_, old_);
        if (owned_) DeleteObject(object_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ old_;
    bool owned_;
};

void Fill(HDC dc, const RECT& r, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &r, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void Measure(MEASUREITEMSTRUCT& m) {
    const auto& line = *reinterpret_cast<const PopupMenu::Line*>(m.itemData);
    const int dpi = line.menu->Dpi();
    if (line.separator) {
        m.itemWidth = static_cast<UINT>(Scaled(40, dpi));
        m.itemHeight = static_cast<UINT>(Scaled(kSeparatorHeight, dpi));
        return;
    }
    HDC dc = GetDC(nullptr);
    SIZE text{}, key{};
    {
        Selected font(dc, Theme::UiFont(dpi), false);
        GetTextExtentPoint32W(dc, line.text.c_str(), static_cast<int>(line.text.size()), &text);
        if (!line.key.empty()) GetTextExtentPoint32W(dc, line.key.c_str(), static_cast<int>(line.key.size()), &key);
    }
    ReleaseDC(nullptr, dc);
    // The system adds the width of a check mark to an owner-drawn line's width.
    const int width = Scaled(kCheckArea + kArrowArea, dpi) + text.cx + (key.cx ? Scaled(kKeyGap, dpi) + key.cx : 0) -
                      GetSystemMetrics(SM_CXMENUCHECK) + 1;
    m.itemWidth = static_cast<UINT>(std::max(width, Scaled(60, dpi)));
    m.itemHeight = static_cast<UINT>(std::max<int>(Scaled(kLineHeight, dpi), text.cy + Scaled(6, dpi)));
}

void DrawCheck(HDC dc, const RECT& area, COLORREF colour, int dpi) {
    const int cx = (area.left + area.right) / 2, cy = (area.top + area.bottom) / 2;
    const int u = std::max(Scaled(3, dpi), 2);
    const POINT tick[] = {{cx - u - u / 2, cy}, {cx - u / 2, cy + u}, {cx + u + u / 2, cy - u}};
    Selected pen(dc, CreatePen(PS_SOLID, std::max(Scaled(2, dpi), 1), colour));
    Polyline(dc, tick, 3);
}

void DrawArrow(HDC dc, const RECT& area, COLORREF colour, int dpi) {
    const int cx = (area.left + area.right) / 2, cy = (area.top + area.bottom) / 2;
    const int u = std::max(Scaled(3, dpi), 2);
    const POINT arrow[] = {{cx - u / 2, cy - u}, {cx + u / 2 + 1, cy}, {cx - u / 2, cy + u}};
    Selected pen(dc, CreatePen(PS_SOLID, 1, colour));
    Selected brush(dc, CreateSolidBrush(colour));
    Polygon(dc, arrow, 3);
}

void Draw(const DRAWITEMSTRUCT& d) {
    const auto& line = *reinterpret_cast<const PopupMenu::Line*>(d.itemData);
    const MenuColours& c = line.menu->Look().colours;
    const int dpi = line.menu->Dpi();
    HDC dc = d.hDC;
    const RECT r = d.rcItem;
    const bool grey = (d.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const bool selected = (d.itemState & ODS_SELECTED) != 0 && !grey && !line.separator;
    Fill(dc, r, selected ? c.highlight : c.background);
    if (line.separator) {
        const int y = (r.top + r.bottom) / 2;
        Fill(dc, RECT{r.left + Scaled(kCheckArea, dpi), y, r.right - Scaled(6, dpi), y + std::max(Scaled(1, dpi), 1)},
             c.grey);
        return;
    }
    if (selected) {
        // A narrow bar in the skin's accent marks the line under the pointer.
        Fill(dc, RECT{r.left, r.top, r.left + std::max(Scaled(3, dpi), 2), r.bottom}, Theme::Accent());
    }
    const COLORREF ink = grey ? c.grey : c.text;
    if (d.itemState & ODS_CHECKED)
        DrawCheck(dc, RECT{r.left, r.top, r.left + Scaled(kCheckArea, dpi), r.bottom}, ink, dpi);
    Selected font(dc, Theme::UiFont(dpi), false);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, ink);
    const UINT prefix = (d.itemState & ODS_NOACCEL) ? DT_HIDEPREFIX : 0;
    RECT text{r.left + Scaled(kCheckArea, dpi), r.top, r.right - Scaled(kArrowArea, dpi), r.bottom};
    DrawTextW(dc, line.text.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER | DT_LEFT | prefix);
    if (!line.key.empty()) DrawTextW(dc, line.key.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER | DT_RIGHT | prefix);
    if (line.submenu) {
        const RECT arrow{r.right - Scaled(kArrowArea, dpi), r.top, r.right, r.bottom};
        DrawArrow(dc, arrow, ink, dpi);
        // The system draws its own arrow after this, in its own colour: kept out of the line.
        ExcludeClipRect(dc, arrow.left, arrow.top, arrow.right, arrow.bottom);
    }
}

// One character in capitals (CharUpperW takes a single character in the pointer's low word).
wchar_t Upper(wchar_t c) {
    return static_cast<wchar_t>(
        reinterpret_cast<UINT_PTR>(CharUpperW(reinterpret_cast<LPWSTR>(static_cast<UINT_PTR>(c)))));
}

// The monitor's work area at a point of the screen.
RECT WorkAreaAt(int x, int y) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromPoint(POINT{x, y}, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

}  // namespace

PopupMenu::PopupMenu(const MenuLook& look, int dpi) : look_(look), dpi_(dpi), root_(CreatePopupMenu()) {
    if (!look_.flat) return;
    background_ = CreateSolidBrush(look_.colours.background);
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND | MIM_APPLYTOSUBMENUS;
    info.hbrBack = background_;
    SetMenuInfo(root_, &info);
}

PopupMenu::~PopupMenu() {
    DestroyMenu(root_);  // and every sub-menu a line opens
    if (background_) DeleteObject(background_);
}

HMENU PopupMenu::NewSubmenu() {
    HMENU menu = CreatePopupMenu();
    if (background_) {
        MENUINFO info{};
        info.cbSize = sizeof info;
        info.fMask = MIM_BACKGROUND;
        info.hbrBack = background_;
        SetMenuInfo(menu, &info);
    }
    return menu;
}

void PopupMenu::Add(HMENU menu, UINT_PTR id, const std::string& text, UINT flags, HMENU submenu) {
    const std::wstring wide = Widen(text);
    const size_t tab = wide.find(L'\t');
    if (submenu) {
        flags |= MF_POPUP;
        id = reinterpret_cast<UINT_PTR>(submenu);
    }
    if (!look_.flat) {
        AppendMenuW(menu, MF_STRING | flags, id, wide.c_str());
        return;
    }
    Line& line = lines_.emplace_back();
    line.text = wide.substr(0, tab);
    if (tab != std::wstring::npos) line.key = wide.substr(tab + 1);
    line.submenu = submenu != nullptr;
    line.menu = this;
    AppendMenuW(menu, MF_OWNERDRAW | flags, id, reinterpret_cast<LPCWSTR>(&line));
}

void PopupMenu::AddSeparator(HMENU menu) {
    if (!look_.flat) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        return;
    }
    Line& line = lines_.emplace_back();
    line.separator = true;
    line.menu = this;
    AppendMenuW(menu, MF_OWNERDRAW | MF_SEPARATOR, 0, reinterpret_cast<LPCWSTR>(&line));
}

void PopupMenu::Track(HWND owner, int x, int y) { TrackPopupMenu(root_, TPM_RIGHTBUTTON, x, y, 0, owner, nullptr); }

std::optional<LRESULT> FlatMenuMessage(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_MEASUREITEM) {
        auto& m = *reinterpret_cast<MEASUREITEMSTRUCT*>(lp);
        if (m.CtlType != ODT_MENU || !m.itemData) return std::nullopt;
        Measure(m);
        return TRUE;
    }
    if (msg == WM_DRAWITEM) {
        const auto& d = *reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
        if (d.CtlType != ODT_MENU || !d.itemData) return std::nullopt;
        Draw(d);
        return TRUE;
    }
    if (msg != WM_MENUCHAR) return std::nullopt;
    // The system cannot read an owner-drawn line's text: the line whose "&" key was typed is found here.
    HMENU menu = reinterpret_cast<HMENU>(lp);
    const wchar_t typed = Upper(static_cast<wchar_t>(LOWORD(wp)));
    for (int i = 0, count = GetMenuItemCount(menu); i < count; ++i) {
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU;
        if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info) || !(info.fType & MFT_OWNERDRAW) ||
            !info.dwItemData) {
            continue;
        }
        const std::wstring& text = reinterpret_cast<const PopupMenu::Line*>(info.dwItemData)->text;
        const size_t amp = text.find(L'&');
        if (amp + 1 < text.size() && Upper(text[amp + 1]) == typed) {
            return MAKELRESULT(i, info.hSubMenu ? MNC_SELECT : MNC_EXECUTE);
        }
    }
    return MAKELRESULT(0, MNC_IGNORE);
}

void TrackMenu(HWND owner, const std::vector<MenuLine>& lines, int x, int y, const MenuLook& look) {
    PopupMenu popup(look, WindowDpi(owner));
    HMENU menu = popup.Root();
    HMENU submenu = nullptr;
    std::string submenuText;
    for (const MenuLine& line : lines) {
        switch (line.kind) {
            case MenuSlot::Kind::Separator:
                popup.AddSeparator(menu);
                break;
            case MenuSlot::Kind::SubmenuBegin:
                menu = submenu = popup.NewSubmenu();
                submenuText = line.text;
                break;
            case MenuSlot::Kind::SubmenuEnd:
                popup.Add(popup.Root(), 0, submenuText, 0, submenu);
                menu = popup.Root();
                break;
            case MenuSlot::Kind::Item:
                popup.Add(menu, static_cast<UINT_PTR>(line.id), line.text,
                          (line.state.enabled ? MF_ENABLED : MF_GRAYED) | (line.state.checked ? MF_CHECKED : 0));
                break;
        }
    }
    popup.Track(owner, x, y);
}

void TrackSongMenu(HWND owner, const std::vector<std::string>& lines, int current, int firstCommand, int x, int y,
                   const MenuLook& look, const SongMenuOptions& options) {
    MenuLook songLook = look;
    songLook.flat = look.flat || options.flat;  // "列表试": plain owner-drawn columns
    const int dpi = WindowDpi(owner);
    PopupMenu popup(songLook, dpi);

    // The work area in lines and columns, for the widest line.
    int widest = 0;
    {
        HDC dc = GetDC(nullptr);
        Selected font(dc, Theme::UiFont(dpi), false);
        for (const std::string& text : lines) {
            SIZE size{};
            const std::wstring wide = Widen(text);
            GetTextExtentPoint32W(dc, wide.c_str(), static_cast<int>(wide.size()), &size);
            widest = std::max<int>(widest, size.cx);
        }
        ReleaseDC(nullptr, dc);
    }
    const RECT work = WorkAreaAt(x, y);
    const int lineHeight = songLook.flat ? Scaled(kLineHeight, dpi) : GetSystemMetrics(SM_CYMENUSIZE) + 2;
    const int columnWidth = widest + Scaled(kCheckArea + kArrowArea, dpi) + 2 * GetSystemMetrics(SM_CXEDGE);
    const SongMenuScreen screen{(work.bottom - work.top - 2 * GetSystemMetrics(SM_CYEDGE) - 4) / lineHeight,
                                (work.right - work.left) / std::max(columnWidth, 1)};
    const SongMenuLayout layout = LayOutSongMenu(static_cast<int>(lines.size()), options, screen);

    const UINT columnBreak = layout.barBreaks ? MF_MENUBARBREAK : MF_MENUBREAK;
    const std::function<void(HMENU, const std::vector<SongMenuItem>&)> addEntries =
        [&](HMENU menu, const std::vector<SongMenuItem>& items) {
            for (const SongMenuItem& item : items) {
                // A block holding the playing entry is checked too: the way to it is marked.
                const UINT flags = (item.newColumn ? columnBreak : 0) |
                                   (current >= item.first && current <= item.last ? MF_CHECKED : 0);
                if (item.block) {
                    HMENU block = popup.NewSubmenu();
                    popup.Add(menu, 0, BlockCaption(item), flags, block);
                    addEntries(block, BlockLines(layout, item));
                } else {
                    popup.Add(menu, static_cast<UINT_PTR>(firstCommand + item.first - 1),
                              lines[static_cast<size_t>(item.first - 1)], flags);
                }
            }
        };
    addEntries(popup.Root(), layout.items);
    if (lines.empty()) popup.Add(popup.Root(), 0, std::string(kNoFileTitle), MF_GRAYED);
    popup.Track(owner, x, y);
}

}  // namespace lumora
