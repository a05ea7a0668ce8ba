#include "ui/AudioDisplayWindow_win.h"

#include <algorithm>

#include "ui/Theme_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraAudioDisplay";

}  // namespace

bool AudioDisplayWindow::Create(HWND owner) {
    owner_ = owner;
    static bool registered = false;
    if (!registered) {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        wc.lpfnWndProc = WndProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = Theme::DisplayBrush();
        wc.lpszClassName = kClass;
        if (!RegisterClassExW(&wc)) return false;
        registered = true;
    }
    RECT o;
    GetWindowRect(owner, &o);
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW, kClass, L"音频\\歌词显示", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME,
                            o.left, o.bottom, o.right - o.left, 130, owner, nullptr, GetModuleHandleW(nullptr), this);
    return hwnd_ != nullptr;
}

void AudioDisplayWindow::Show() {
    if (!hwnd_ || IsWindowVisible(hwnd_)) return;
    RECT o;
    GetWindowRect(owner_, &o);
    RECT r;
    GetWindowRect(hwnd_, &r);
    SetWindowPos(hwnd_, nullptr, o.left, o.bottom, o.right - o.left, r.bottom - r.top, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(hwnd_, SW_SHOWNOACTIVATE);
}

void AudioDisplayWindow::Toggle() {
    if (Visible()) {
        ShowWindow(hwnd_, SW_HIDE);
    } else {
        Show();
    }
}

void AudioDisplayWindow::SetBands(const std::array<float, kSpectrumBands>& bands) {
    // Bars fall gently instead of jumping to nothing between two buffers.
    for (size_t i = 0; i < bands.size(); ++i) bands_[i] = std::max(bands[i], bands_[i] * 0.8f);
    if (Visible()) InvalidateRect(hwnd_, nullptr, FALSE);
}

void AudioDisplayWindow::Paint(HDC dc) {
    RECT client;
    GetClientRect(hwnd_, &client);
    // Drawn off screen first, so the bars do not flicker.
    HDC mem = CreateCompatibleDC(dc);
    HBITMAP bitmap = CreateCompatibleBitmap(dc, client.right, client.bottom);
    HGDIOBJ old = SelectObject(mem, bitmap);
    FillRect(mem, &client, Theme::DisplayBrush());
    const int gap = 3;
    const int width = (client.right - gap) / kSpectrumBands - gap;
    HBRUSH bar = CreateSolidBrush(Theme::kDisplayText);
    HBRUSH cap = CreateSolidBrush(Theme::kAccent);
    for (int b = 0; b < kSpectrumBands; ++b) {
        const int height = static_cast<int>(bands_[static_cast<size_t>(b)] * static_cast<float>(client.bottom - 8));
        const int x = gap + b * (width + gap);
        RECT r{x, client.bottom - 4 - height, x + width, client.bottom - 4};
        FillRect(mem, &r, bar);
        RECT top{x, r.top - 3, x + width, r.top};
        FillRect(mem, &top, cap);
    }
    DeleteObject(bar);
    DeleteObject(cap);
    BitBlt(dc, 0, 0, client.right, client.bottom, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteObject(bitmap);
    DeleteDC(mem);
}

LRESULT CALLBACK AudioDisplayWindow::WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams));
    }
    auto* self = reinterpret_cast<AudioDisplayWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    switch (msg) {
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd, &ps);
            if (self) self->Paint(dc);
            EndPaint(hwnd, &ps);
            return 0;
        }
        case WM_CLOSE: ShowWindow(hwnd, SW_HIDE); return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace lumora
