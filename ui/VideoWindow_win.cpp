#include "ui/VideoWindow_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraVideo";
constexpr DWORD kFramed = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX |
                          WS_CLIPCHILDREN;

}  // namespace

bool VideoWindow::Create(HWND owner) {
    owner_ = owner;
    static bool registered = false;
    if (!registered) {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        wc.style = CS_DBLCLKS;
        wc.lpfnWndProc = WndProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
        wc.lpszClassName = kClass;
        if (!RegisterClassExW(&wc)) return false;
        registered = true;
    }
    hwnd_ = CreateWindowExW(0, kClass, L"视频窗口", kFramed, CW_USEDEFAULT, CW_USEDEFAULT, 480, 360, owner, nullptr,
                            GetModuleHandleW(nullptr), this);
    return hwnd_ != nullptr;
}

void VideoWindow::LeaveFullScreen() {
    if (!fullScreen_) return;
    fullScreen_ = false;
    SetWindowLongW(hwnd_, GWL_STYLE, static_cast<LONG>(kFramed));
    SetWindowPos(hwnd_, nullptr, normal_.left, normal_.top, normal_.right - normal_.left,
                 normal_.bottom - normal_.top, SWP_NOZORDER | SWP_FRAMECHANGED);
}

void VideoWindow::ShowSized(long width, long height) {
    LeaveFullScreen();
    RECT r{0, 0, static_cast<int>(width), static_cast<int>(height)};
    AdjustWindowRectEx(&r, kFramed, FALSE, 0);
    SetWindowPos(hwnd_, nullptr, 0, 0, r.right - r.left, r.bottom - r.top, SWP_NOMOVE | SWP_NOZORDER);
    ShowWindow(hwnd_, SW_SHOWNA);
}

void VideoWindow::ShowFullScreen() {
    if (!fullScreen_) GetWindowRect(hwnd_, &normal_);
    fullScreen_ = true;
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    GetMonitorInfoW(MonitorFromWindow(owner_, MONITOR_DEFAULTTONEAREST), &mi);
    SetWindowLongW(hwnd_, GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_CLIPCHILDREN));
    SetWindowPos(hwnd_, HWND_TOP, mi.rcMonitor.left, mi.rcMonitor.top, mi.rcMonitor.right - mi.rcMonitor.left,
                 mi.rcMonitor.bottom - mi.rcMonitor.top, SWP_FRAMECHANGED);
    ShowWindow(hwnd_, SW_SHOW);
}

void VideoWindow::ShowAsIs() {
    if (!IsWindowVisible(hwnd_)) ShowWindow(hwnd_, SW_SHOWNA);
    RECT c;
    GetClientRect(hwnd_, &c);
    if (onResize) onResize(c.right, c.bottom);
}

void VideoWindow::Hide() {
    LeaveFullScreen();
    ShowWindow(hwnd_, SW_HIDE);
}

LRESULT CALLBACK VideoWindow::WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams));
    }
    auto* self = reinterpret_cast<VideoWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    switch (msg) {
        case WM_SIZE:
            if (self && self->onResize) self->onResize(LOWORD(lp), HIWORD(lp));
            return 0;
        case WM_LBUTTONDBLCLK:
            // A double click toggles full screen, as in every player.
            if (self) self->fullScreen_ ? self->LeaveFullScreen() : self->ShowFullScreen();
            return 0;
        case WM_KEYDOWN:
            if (self && wp == VK_ESCAPE) self->LeaveFullScreen();
            return 0;
        case WM_CLOSE: ShowWindow(hwnd, SW_HIDE); return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace lumora
