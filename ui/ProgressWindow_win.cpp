#include "ui/ProgressWindow_win.h"

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

using namespace ids;

// The client area and the controls' places in it, at 96 DPI.
constexpr int kWidth = 420;
constexpr int kHeight = 320;
constexpr struct {
    int id;
    RECT at96;
} kPlaces[] = {
    {IDC_PROGRESS_STATUS, {10, 10, kWidth - 10, 28}},
    {IDC_PROGRESS_FILTERED, {10, 32, 10 + (kWidth - 30) / 2, 50}},
    {IDC_PROGRESS_REMAINING, {kWidth / 2 + 5, 32, kWidth / 2 + 5 + (kWidth - 30) / 2, 50}},
    {IDC_PROGRESS_LINES, {10, 56, kWidth - 10, kHeight - 44}},
    {IDC_PROGRESS_CANCEL, {kWidth / 2 - 40, kHeight - 36, kWidth / 2 + 40, kHeight - 10}},
};

HWND Child(HWND parent, const wchar_t* cls, int id, DWORD style) {
    return CreateWindowExW(0, cls, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

ProgressWindow::~ProgressWindow() { Close(); }

bool ProgressWindow::Open(HWND owner, const std::string& title) {
    Close();
    owner_ = owner;
    cancelled_ = false;
    finished_ = false;
    if (!EnsureWindowClass(kProgressClass, WndProc, Theme::BackgroundBrush())) return false;
    RECT area;
    if (owner && IsWindowVisible(owner)) {
        GetWindowRect(owner, &area);
    } else {
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    }
    dpi_ = WindowDpi(owner);
    RECT r{0, 0, Scaled(kWidth, dpi_), Scaled(kHeight, dpi_)};
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    AdjustWindowRectForDpi(r, style, WS_EX_DLGMODALFRAME, dpi_);
    const int w = r.right - r.left;
    const int h = r.bottom - r.top;
    const int x = area.left + ((area.right - area.left) - w) / 2;
    const int y = area.top + ((area.bottom - area.top) - h) / 2;
    hwnd_ = CreateWindowExW(WS_EX_DLGMODALFRAME, kProgressClass, Widen(title).c_str(), style, x > 0 ? x : 0,
                            y > 0 ? y : 0, w, h, owner, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    Child(hwnd_, L"STATIC", IDC_PROGRESS_STATUS, SS_LEFT | SS_NOPREFIX);
    Child(hwnd_, L"STATIC", IDC_PROGRESS_FILTERED, SS_LEFT | SS_NOPREFIX);
    Child(hwnd_, L"STATIC", IDC_PROGRESS_REMAINING, SS_LEFT | SS_NOPREFIX);
    Child(hwnd_, L"LISTBOX", IDC_PROGRESS_LINES, WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT);
    HWND cancel = Child(hwnd_, L"BUTTON", IDC_PROGRESS_CANCEL, BS_PUSHBUTTON | WS_TABSTOP);
    SetWindowTextW(cancel, kCancelText);
    dpi_ = WindowDpi(hwnd_);
    Layout();
    if (owner_) EnableWindow(owner_, FALSE);
    busy_.emplace();
    ShowWindow(hwnd_, SW_SHOW);
    UpdateWindow(hwnd_);
    return true;
}

void ProgressWindow::Layout() {
    for (const auto& place : kPlaces) {
        HWND control = GetDlgItem(hwnd_, place.id);
        const RECT r = Scaled(place.at96, dpi_);
        SetWindowPos(control, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), TRUE);
    }
}

void ProgressWindow::SetItem(int id, const std::string& text) {
    if (hwnd_) SetDlgItemTextW(hwnd_, id, Widen(text).c_str());
}

void ProgressWindow::SetStatus(const std::string& text) { SetItem(IDC_PROGRESS_STATUS, text); }

void ProgressWindow::SetCounters(const std::string& filtered, const std::string& remaining) {
    SetItem(IDC_PROGRESS_FILTERED, filtered);
    SetItem(IDC_PROGRESS_REMAINING, remaining);
}

void ProgressWindow::AddLine(const std::string& line) {
    if (!hwnd_) return;
    HWND list = GetDlgItem(hwnd_, IDC_PROGRESS_LINES);
    const LRESULT at = SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(line).c_str()));
    if (at >= 0) SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(at), 0);
}

bool ProgressWindow::Pump() {
    // Only the progress window takes input while the work runs; the owner is disabled. A quit is
    // left for the main loop and stops the work.
    if (!PumpWaitingMessages()) cancelled_ = true;
    return !cancelled_;
}

void ProgressWindow::Finish() {
    finished_ = true;
    busy_.reset();
    if (hwnd_) SetDlgItemTextW(hwnd_, IDC_PROGRESS_CANCEL, kCloseText);
    if (owner_) EnableWindow(owner_, TRUE);
}

void ProgressWindow::Close() {
    busy_.reset();
    if (owner_) EnableWindow(owner_, TRUE);
    if (hwnd_) DestroyWindow(hwnd_);
    hwnd_ = nullptr;
}

LRESULT ProgressWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_COMMAND:
            if (LOWORD(wp) == IDC_PROGRESS_CANCEL || LOWORD(wp) == IDCANCEL) {
                if (finished_) {
                    Close();
                } else {
                    cancelled_ = true;
                }
            }
            return 0;
        case WM_CLOSE:
            if (finished_) {
                Close();
            } else {
                cancelled_ = true;
            }
            return 0;
        case kWmDpiChanged:
            dpi_ = NewDpi(wp);
            TakeSuggestedRect(hwnd_, lp);
            Layout();
            return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORLISTBOX:
            return reinterpret_cast<LRESULT>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

void CopyLogWindow::Open(std::string_view header) {
    window_.Open(owner_(), ids::kAddToLibraryText);
    window_.AddLine(std::string(header));
}

}  // namespace lumora
