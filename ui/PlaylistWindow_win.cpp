#include "ui/PlaylistWindow_win.h"

#include <algorithm>
#include <cstdlib>

#include <commctrl.h>

#include "platform/WinText_win.h"
#include "playlist/PlayQueue.h"
#include "settings/Docking.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/Menu_win.h"
#include "ui/SkinPaint_win.h"
#include "ui/Theme_win.h"
#include "ui/TipGuard_win.h"
#include "ui/WindowClass_win.h"
#include "ui/WindowFade_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr int kDefaultWidth = 300;
constexpr int kInfoTipWidth = 400;
constexpr int kLineHeight = 18;
// A line is "001-(name)": its number is drawn in the accent colour.
constexpr int kNumberLength = 3;
constexpr UINT kWmPointedLine = WM_APP + 42;  // wParam: the line under the pointer (from 1), 0 for none

WNDPROC gListBoxProc = nullptr;

// The list box tells its window which line the pointer is on, for the information tip of that entry.
LRESULT CALLBACK LinesProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_MOUSEMOVE) {
        const LRESULT hit = SendMessageW(hwnd, LB_ITEMFROMPOINT, 0, lp);
        const bool outside = HIWORD(hit) != 0 || hit < 0;
        SendMessageW(GetParent(hwnd), kWmPointedLine, outside ? 0 : LOWORD(hit) + 1, 0);
    }
    return CallWindowProcW(gListBoxProc, hwnd, msg, wp, lp);
}

}  // namespace

bool PlaylistWindow::Create(PlaylistCommands& commands, HWND owner) {
    commands_ = &commands;
    owner_ = owner;
    if (!EnsureWindowClass(kPlaylistClass, WndProc, Theme::BackgroundBrush())) return false;
    RECT o;
    GetWindowRect(owner, &o);
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_ACCEPTFILES, kPlaylistClass, Widen(kListWindowCaption).c_str(),
                            WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN, o.right, o.top,
                            Scaled(kDefaultWidth, WindowDpi(owner)), o.bottom - o.top, owner, nullptr,
                            GetModuleHandleW(nullptr), this);
    if (hwnd_) Theme::Caption(hwnd_);
    return hwnd_ != nullptr;
}

LRESULT PlaylistWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_CREATE:
            dpi_ = WindowDpi(hwnd_);
            lines_ =
                CreateWindowExW(0, L"LISTBOX", L"",
                                WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT |
                                    LBS_OWNERDRAWFIXED | LBS_HASSTRINGS,
                                0, 0, 0, 0, hwnd_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PLAYLIST_LINES)),
                                GetModuleHandleW(nullptr), nullptr);
            SendMessageW(lines_, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), FALSE);
            gListBoxProc = reinterpret_cast<WNDPROC>(
                SetWindowLongPtrW(lines_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(LinesProc)));
            return 0;
        case kWmPointedLine:
            if (static_cast<int>(wp) != pointed_) {
                pointed_ = static_cast<int>(wp);
                UpdateInfoTip();
            }
            return 0;
        case kWmDpiChanged:
            dpi_ = NewDpi(wp);
            SendMessageW(lines_, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), TRUE);
            SendMessageW(lines_, LB_SETITEMHEIGHT, 0, Scaled(kLineHeight, dpi_));
            if (infoTip_) SendMessageW(infoTip_, TTM_SETMAXTIPWIDTH, 0, Scaled(kInfoTipWidth, dpi_));
            TakeSuggestedRect(hwnd_, lp);  // its WM_SIZE fits the list to the new size
            return 0;
        case WM_SIZE:
            MoveWindow(lines_, 0, 0, LOWORD(lp), HIWORD(lp), TRUE);
            return 0;
        case WM_CTLCOLORLISTBOX: return reinterpret_cast<LRESULT>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        case WM_MEASUREITEM:
            if (const auto result = FlatMenuMessage(msg, wp, lp)) return *result;
            reinterpret_cast<MEASUREITEMSTRUCT*>(lp)->itemHeight = static_cast<UINT>(Scaled(kLineHeight, dpi_));
            return TRUE;
        case WM_DRAWITEM:
            if (const auto result = FlatMenuMessage(msg, wp, lp)) return *result;
            DrawLine(*reinterpret_cast<DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wp) == IDC_PLAYLIST_LINES && HIWORD(wp) == LBN_SELCHANGE) {
                pointed_ = 0;  // until the pointer moves again: the keyboard moved the selection
                UpdateInfoTip();
            } else if (LOWORD(wp) == IDC_PLAYLIST_LINES && HIWORD(wp) == LBN_DBLCLK) {
                commands_->RunCommand(IDM_PLAYLIST_PLAY);
            } else if (LOWORD(wp) != IDC_PLAYLIST_LINES) {
                commands_->RunCommand(LOWORD(wp));
            }
            return 0;
        case WM_MENUCHAR:
            if (const auto result = FlatMenuMessage(msg, wp, lp)) return *result;
            break;
        case WM_CONTEXTMENU: OnContextMenu(static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))); return 0;
        case WM_DROPFILES: return SendMessageW(owner_, WM_DROPFILES, wp, lp);
        // A top-level window's media keys would go to the shell: the main window answers them.
        case WM_APPCOMMAND:
            if (SendMessageW(owner_, WM_APPCOMMAND, reinterpret_cast<WPARAM>(owner_), lp)) return TRUE;
            break;
        case WM_MOVING: OnMoving(*reinterpret_cast<RECT*>(lp)); return TRUE;
        // Docked, it takes the whole edge once the drag ends.
        case WM_EXITSIZEMOVE:
            FollowOwner();
            return 0;
        case WM_CLOSE:
            FadeOut(hwnd_);
            return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

int PlaylistWindow::SelectedIndex() const {
    const LRESULT sel = SendMessageW(lines_, LB_GETCURSEL, 0, 0);
    return sel == LB_ERR ? 0 : static_cast<int>(sel) + 1;
}

void PlaylistWindow::SetLines(const std::vector<std::string>& lines) {
    SendMessageW(lines_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(lines_, LB_RESETCONTENT, 0, 0);
    for (const auto& line : lines) SendMessageW(lines_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(line).c_str()));
    SendMessageW(lines_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(lines_, nullptr, TRUE);
    // The lines are new (an entry removed, moved, another list): the tip must not name the old one.
    UpdateInfoTip();
}

void PlaylistWindow::Select(int index) {
    SendMessageW(lines_, LB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
    UpdateInfoTip();
}

void PlaylistWindow::CreateInfoTip(bool classic) {
    if (infoTip_) DestroyWindow(infoTip_);
    infoTip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                               WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX | (classic ? 0 : TTS_BALLOON), CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hwnd_, nullptr, GetModuleHandleW(nullptr),
                               nullptr);
    SendMessageW(infoTip_, TTM_SETMAXTIPWIDTH, 0, Scaled(kInfoTipWidth, dpi_));
    GuardTip(infoTip_);
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = hwnd_;
    info.uId = reinterpret_cast<UINT_PTR>(lines_);
    info.lpszText = const_cast<wchar_t*>(L"");
    SendMessageW(infoTip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

void PlaylistWindow::UpdateInfoTip() {
    if (!infoTip_) return;
    // The entry under the pointer; the selected one while the pointer is elsewhere (the keyboard moves it).
    const std::wstring text = Widen(commands_->EntryInfo(pointed_ > 0 ? pointed_ : SelectedIndex()));
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.hwnd = hwnd_;
    info.uId = reinterpret_cast<UINT_PTR>(lines_);
    info.lpszText = const_cast<wchar_t*>(text.c_str());
    SendMessageW(infoTip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    if (text.empty()) SendMessageW(infoTip_, TTM_POP, 0, 0);
}

void PlaylistWindow::Restyle() {
    SetClassLongPtrW(hwnd_, GCLP_HBRBACKGROUND, reinterpret_cast<LONG_PTR>(Theme::BackgroundBrush()));
    Theme::Caption(hwnd_);
    SendMessageW(lines_, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), FALSE);
    RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void PlaylistWindow::DrawLine(const DRAWITEMSTRUCT& item) const {
    const SkinLook& look = Theme::Look();
    BufferedDc buffer(item.hDC, item.rcItem);
    HDC dc = buffer.Get();
    RECT r = buffer.Area();
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    if (selected) {
        FillGradient(dc, r, look.selection);
    } else {
        // Every other line a shade apart, for the eye to follow a line across.
        const bool odd = item.itemID != static_cast<UINT>(-1) && (item.itemID % 2) == 1;
        FillRect(dc, &r, Theme::SolidBrush(odd ? BlendColour(look.panel, look.text, 40) : look.panel));
    }
    if (item.itemID == static_cast<UINT>(-1)) return;
    const auto length = SendMessageW(item.hwndItem, LB_GETTEXTLEN, item.itemID, 0);
    if (length == LB_ERR) return;
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(item.hwndItem, LB_GETTEXT, item.itemID, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    SetBkMode(dc, TRANSPARENT);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
    r.left += Scaled(4, dpi_);
    const int number = std::min<int>(kNumberLength, static_cast<int>(text.size()));
    SetTextColor(dc, selected ? look.selectionText : look.accent);
    const UINT format = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
    RECT measured = r;
    DrawTextW(dc, text.c_str(), number, &measured, format | DT_CALCRECT);
    DrawTextW(dc, text.c_str(), number, &r, format);
    r.left += measured.right - measured.left;
    SetTextColor(dc, selected ? look.selectionText : look.text);
    DrawTextW(dc, text.c_str() + number, static_cast<int>(text.size()) - number, &r, format | DT_END_ELLIPSIS);
    SelectObject(dc, old);
}

void PlaylistWindow::SetCaption(const std::string& caption) { SetWindowTextW(hwnd_, Widen(caption).c_str()); }

bool PlaylistWindow::Visible() const { return hwnd_ && ShownOrShowing(hwnd_); }

void PlaylistWindow::Toggle() {
    if (Visible()) {
        FadeOut(hwnd_);
    } else {
        FollowOwner();
        FadeIn(hwnd_);
    }
}

void PlaylistWindow::FollowOwner() {
    if (!hwnd_ || dock_ == ListDock::None) return;
    RECT o, r;
    GetWindowRect(owner_, &o);
    GetWindowRect(hwnd_, &r);
    const WindowRect at =
        DockedListPlace(dock_, {o.left, o.top, o.right, o.bottom}, {r.left, r.top, r.right, r.bottom});
    SetWindowPos(hwnd_, nullptr, static_cast<int>(at.left), static_cast<int>(at.top), static_cast<int>(at.Width()),
                 static_cast<int>(at.Height()), SWP_NOZORDER | SWP_NOACTIVATE);
}

void PlaylistWindow::OnMoving(RECT& r) {
    RECT o;
    GetWindowRect(owner_, &o);
    const WindowRect owner{o.left, o.top, o.right, o.bottom}, moving{r.left, r.top, r.right, r.bottom};
    const int snap = Scaled(kDockSnapPixels, dpi_);
    dock_ = SnapDock(moving, owner, snap);
    const WindowRect at = SnapPlace(moving, owner, snap);
    r = {static_cast<LONG>(at.left), static_cast<LONG>(at.top), static_cast<LONG>(at.right),
         static_cast<LONG>(at.bottom)};
}

void PlaylistWindow::OnContextMenu(int x, int y) {
    if (x != -1 || y != -1) {
        // A right click selects the line under the mouse first.
        POINT pt{x, y};
        ScreenToClient(lines_, &pt);
        const LRESULT hit = SendMessageW(lines_, LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y));
        if (HIWORD(hit) == 0) SendMessageW(lines_, LB_SETCURSEL, LOWORD(hit), 0);
    } else {
        RECT r;
        GetWindowRect(lines_, &r);
        x = r.left + Scaled(20, dpi_);
        y = r.top + Scaled(20, dpi_);
    }
    TrackMenu(hwnd_, commands_->PlaylistMenu(), x, y, menuLook_);
}

void PlaylistWindow::Restore(const std::optional<WindowRect>& kept, ListDock dock) {
    dock_ = dock;
    if (kept) MoveToKeptPlace(hwnd_, *kept);
    FollowOwner();
}

WindowRect PlaylistWindow::Place() const {
    RECT r;
    GetWindowRect(hwnd_, &r);
    return PlaceToKeep(hwnd_, r);
}

}  // namespace lumora
