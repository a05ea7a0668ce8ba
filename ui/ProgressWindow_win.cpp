#include "ui/ProgressWindow_win.h"

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr int kWidth = 420;
constexpr int kHeight = 320;

HWND Child(HWND parent, const wchar_t* cls, int id, DWORD style, int x, int y, int cx, int cy) {
    HWND h = CreateWindowExW(0, cls, L"", WS_CHILD | WS_VISIBLE | style, x, y, cx, cy, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(h, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
    return h;
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
    RECT r{0, 0, kWidth, kHeight};
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    AdjustWindowRectEx(&r, style, FALSE, WS_EX_DLGMODALFRAME);
    const int w = r.right - r.left;
    const int h = r.bottom - r.top;
    const int x = area.left + ((area.right - area.left) - w) / 2;
    const int y = area.top + ((area.bottom - area.top) - h) / 2;
    hwnd_ = CreateWindowExW(WS_EX_DLGMODALFRAME, kProgressClass, Widen(title).c_str(), style, x > 0 ? x : 0,
                            y > 0 ? y : 0, w, h, owner, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    Child(hwnd_, L"STATIC", IDC_PROGRESS_STATUS, SS_LEFT | SS_NOPREFIX, 10, 10, kWidth - 20, 18);
    Child(hwnd_, L"STATIC", IDC_PROGRESS_FILTERED, SS_LEFT | SS_NOPREFIX, 10, 32, (kWidth - 30) / 2, 18);
    Child(hwnd_, L"STATIC", IDC_PROGRESS_REMAINING, SS_LEFT | SS_NOPREFIX, kWidth / 2 + 5, 32, (kWidth - 30) / 2, 18);
    Child(hwnd_, L"LISTBOX", IDC_PROGRESS_LINES, WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT, 10, 56,
          kWidth - 20, kHeight - 100);
    HWND cancel =
        Child(hwnd_, L"BUTTON", IDC_PROGRESS_CANCEL, BS_PUSHBUTTON | WS_TABSTOP, kWidth / 2 - 40, kHeight - 36, 80, 26);
    SetWindowTextW(cancel, kCancelText);
    if (owner_) EnableWindow(owner_, FALSE);
    busy_.emplace();
    ShowWindow(hwnd_, SW_SHOW);
    UpdateWindow(hwnd_);
    return true;
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
