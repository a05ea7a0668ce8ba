#include "ui/VideoWindow_win.h"

#include <olectl.h>

#include <algorithm>

#include "platform/WinText_win.h"
#include "ui/Dpi_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraVideo";
constexpr DWORD kFramed = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX |
                          WS_CLIPCHILDREN;

}  // namespace

bool VideoWindow::Create(HWND owner) {
    owner_ = owner;
    if (!EnsureWindowClass(kClass, WndProc, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)), IDC_ARROW, CS_DBLCLKS)) {
        return false;
    }
    const int dpi = WindowDpi(owner);
    hwnd_ = CreateWindowExW(0, kClass, L"视频窗口", kFramed, CW_USEDEFAULT, CW_USEDEFAULT, Scaled(480, dpi),
                            Scaled(360, dpi), owner, nullptr, GetModuleHandleW(nullptr), this);
    if (hwnd_) dpi_ = WindowDpi(hwnd_);
    return hwnd_ != nullptr;
}

void VideoWindow::Restore(const std::optional<WindowRect>& kept) {
    centred_ = !kept;
    if (kept) {
        MoveToKeptPlace(hwnd_, *kept);
        return;
    }
    Centre();
}

void VideoWindow::Centre() {
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    GetMonitorInfoW(MonitorFromWindow(owner_, MONITOR_DEFAULTTONEAREST), &mi);
    RECT r;
    GetWindowRect(hwnd_, &r);
    const int width = r.right - r.left;
    const int height = r.bottom - r.top;
    const RECT& work = mi.rcWork;
    SetWindowPos(hwnd_, nullptr, work.left + std::max(0, static_cast<int>(work.right - work.left - width) / 2),
                 work.top + std::max(0, static_cast<int>(work.bottom - work.top - height) / 2), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

WindowRect VideoWindow::Place() const {
    RECT r = normal_;
    if (!fullScreen_) GetWindowRect(hwnd_, &r);
    return PlaceToKeep(hwnd_, r);
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
    // A video keeps its own pixels; only the frame is the window's DPI's.
    RECT r{0, 0, static_cast<int>(width), static_cast<int>(height)};
    AdjustWindowRectForDpi(r, kFramed, 0, dpi_);
    SetWindowPos(hwnd_, nullptr, 0, 0, r.right - r.left, r.bottom - r.top, SWP_NOMOVE | SWP_NOZORDER);
    // Sized to its first picture, a window without a kept place is centred anew; later the user's place holds.
    if (centred_ && !IsWindowVisible(hwnd_)) Centre();
    centred_ = false;
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
    ClearPicture();
    ShowWindow(hwnd_, SW_HIDE);
}

void VideoWindow::ClearPicture() {
    if (picture_) picture_->Release();
    picture_ = nullptr;
    if (hwnd_) InvalidateRect(hwnd_, nullptr, TRUE);
}

bool VideoWindow::ShowPicture(const std::string& path) {
    ClearPicture();
    std::wstring wide = Widen(path);
    void* raw = nullptr;
    if (FAILED(OleLoadPicturePath(wide.data(), nullptr, 0, 0, IID_IPicture, &raw)) || !raw) return false;
    picture_ = static_cast<IPicture*>(raw);
    OLE_XSIZE_HIMETRIC w = 0;
    OLE_YSIZE_HIMETRIC h = 0;
    picture_->get_Width(&w);
    picture_->get_Height(&h);
    // A still picture comes at its size in inches, at the window's DPI.
    const long px = MulDiv(w, dpi_, 2540);
    const long py = MulDiv(h, dpi_, 2540);
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    ShowSized(std::min<long>(std::max<long>(px, Scaled(160, dpi_)), work.right - work.left - Scaled(40, dpi_)),
              std::min<long>(std::max<long>(py, Scaled(120, dpi_)), work.bottom - work.top - Scaled(60, dpi_)));
    InvalidateRect(hwnd_, nullptr, TRUE);
    return true;
}

void VideoWindow::PaintPicture(HDC dc) {
    if (!picture_) return;
    RECT c;
    GetClientRect(hwnd_, &c);
    OLE_XSIZE_HIMETRIC w = 0;
    OLE_YSIZE_HIMETRIC h = 0;
    picture_->get_Width(&w);
    picture_->get_Height(&h);
    if (w <= 0 || h <= 0) return;
    // Fit inside the window, keeping the picture's proportions.
    const double scale = std::min(static_cast<double>(c.right) / w, static_cast<double>(c.bottom) / h);
    const long dw = static_cast<long>(w * scale);
    const long dh = static_cast<long>(h * scale);
    picture_->Render(dc, (c.right - dw) / 2, (c.bottom - dh) / 2, dw, dh, 0, h, w, -h, nullptr);
}

LRESULT VideoWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_SIZE:
            if (onResize) onResize(LOWORD(lp), HIWORD(lp));
            InvalidateRect(hwnd_, nullptr, TRUE);
            return 0;
        case kWmDpiChanged:
            dpi_ = NewDpi(wp);
            if (!fullScreen_) TakeSuggestedRect(hwnd_, lp);
            return 0;
        case WM_LBUTTONDBLCLK:
            // A double click toggles full screen, as in every player.
            fullScreen_ ? LeaveFullScreen() : ShowFullScreen();
            return 0;
        case WM_KEYDOWN:
            if (wp == VK_ESCAPE) LeaveFullScreen();
            return 0;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            PaintPicture(dc);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_SYSCOMMAND:
            // In front (full screen), it is the window the screen saver asks: refused as the main window does.
            if (refuseScreenSaver &&
                ((wp & 0xFFF0) == SC_SCREENSAVE || ((wp & 0xFFF0) == SC_MONITORPOWER && lp != -1))) {
                return 0;
            }
            break;
        case WM_CLOSE:
            LeaveFullScreen();
            if (onClose) onClose();
            ShowWindow(hwnd_, SW_HIDE);
            return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

}  // namespace lumora
