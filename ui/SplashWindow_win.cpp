#include "ui/SplashWindow_win.h"

#include "app/Version.h"

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

constexpr UINT_PTR kSplashTimer = 1;
constexpr int kWidth = 360;
constexpr int kHeight = 170;

}  // namespace

SplashWindow::~SplashWindow() { Close(); }

bool SplashWindow::Create() {
    if (!EnsureWindowClass(ids::kSplashClass, WndProc, Theme::BackgroundBrush(), IDC_APPSTARTING)) return false;
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, ids::kSplashClass, L"Lumora", WS_POPUP | WS_BORDER,
                            work.left, work.top, kWidth, kHeight, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    // Sized for the DPI of the screen it came up on, and centred there.
    dpi_ = WindowDpi(hwnd_);
    const int width = Scaled(kWidth, dpi_);
    const int height = Scaled(kHeight, dpi_);
    SetWindowPos(hwnd_, nullptr, work.left + ((work.right - work.left) - width) / 2,
                 work.top + ((work.bottom - work.top) - height) / 2, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    HWND os = CreateWindowExW(
        0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_CENTER, 0, height - Scaled(44, dpi_), width, Scaled(20, dpi_),
        hwnd_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(ids::IDC_SPLASH_OS)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(os, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), FALSE);
    ShowWindow(hwnd_, SW_SHOWNOACTIVATE);
    UpdateWindow(hwnd_);
    return true;
}

void SplashWindow::SetOsLabel(const std::string& label) {
    if (hwnd_) SetDlgItemTextW(hwnd_, ids::IDC_SPLASH_OS, Widen(label).c_str());
}

void SplashWindow::StartTimer(unsigned ms, std::function<void()> done) {
    done_ = std::move(done);
    if (hwnd_) SetTimer(hwnd_, kSplashTimer, ms, nullptr);
}

void SplashWindow::StopTimer() {
    if (hwnd_) KillTimer(hwnd_, kSplashTimer);
}

void SplashWindow::Close() {
    if (!hwnd_) return;
    StopTimer();
    HWND h = hwnd_;
    hwnd_ = nullptr;
    DestroyWindow(h);
}

LRESULT SplashWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            RECT r;
            GetClientRect(hwnd_, &r);
            r.bottom -= Scaled(50, dpi_);
            SetBkMode(dc, TRANSPARENT);
            SetTextColor(dc, Theme::Accent());
            HFONT big =
                CreateFontW(Scaled(-40, dpi_), 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH, L"MS Shell Dlg");
            HGDIOBJ old = SelectObject(dc, big);
            DrawTextW(dc, L"Lumora", -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
            SelectObject(dc, Theme::UiFont(dpi_));
            SetTextColor(dc, Theme::Text());
            RECT version = r;
            version.top = r.bottom - Scaled(40, dpi_);
            const std::wstring text = L"版本 " + Widen(kVersionText);
            DrawTextW(dc, text.c_str(), -1, &version, DT_CENTER | DT_SINGLELINE);
            SelectObject(dc, old);
            DeleteObject(big);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_CTLCOLORSTATIC: {
            HDC dc = reinterpret_cast<HDC>(wp);
            SetTextColor(dc, Theme::Text());
            SetBkColor(dc, Theme::Background());
            return reinterpret_cast<LRESULT>(Theme::BackgroundBrush());
        }
        case WM_TIMER:
            if (wp == kSplashTimer) {
                StopTimer();
                if (done_) {
                    auto done = std::move(done_);
                    done();
                }
            }
            return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

}  // namespace lumora
