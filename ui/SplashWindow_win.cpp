#include "ui/SplashWindow_win.h"

#include "app/Version.h"

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
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
    const int x = work.left + ((work.right - work.left) - kWidth) / 2;
    const int y = work.top + ((work.bottom - work.top) - kHeight) / 2;
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, ids::kSplashClass, L"Lumora", WS_POPUP | WS_BORDER, x, y,
                            kWidth, kHeight, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    HWND os = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_CENTER, 0, kHeight - 44, kWidth, 20, hwnd_,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(ids::IDC_SPLASH_OS)),
                              GetModuleHandleW(nullptr), nullptr);
    SendMessageW(os, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
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
            r.bottom -= 50;
            SetBkMode(dc, TRANSPARENT);
            SetTextColor(dc, Theme::kAccent);
            HFONT big = CreateFontW(-40, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                    CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH, L"MS Shell Dlg");
            HGDIOBJ old = SelectObject(dc, big);
            DrawTextW(dc, L"Lumora", -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
            SelectObject(dc, Theme::UiFont());
            SetTextColor(dc, Theme::kText);
            RECT version = r;
            version.top = r.bottom - 40;
            const std::wstring text = L"版本 " + Widen(kVersionText);
            DrawTextW(dc, text.c_str(), -1, &version, DT_CENTER | DT_SINGLELINE);
            SelectObject(dc, old);
            DeleteObject(big);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_CTLCOLORSTATIC: {
            HDC dc = reinterpret_cast<HDC>(wp);
            SetTextColor(dc, Theme::kText);
            SetBkColor(dc, Theme::kBackground);
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
