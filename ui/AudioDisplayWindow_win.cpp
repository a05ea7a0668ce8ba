#include "ui/AudioDisplayWindow_win.h"

#include <algorithm>

#include "platform/WinText.h"
#include "ui/ControlIds.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraAudioDisplay";
// The stream panel's column on the left; the spectrum fills the rest.
constexpr int kPanelWidth = 230;
constexpr int kLineHeight = 15;
constexpr int kPanelIds[] = {ids::IDC_STREAM_TITLE,      ids::IDC_STREAM_BIT_RATE,   ids::IDC_STREAM_FREQUENCY,
                             ids::IDC_STREAM_LAYER,      ids::IDC_STREAM_TOTAL_FRAMES, ids::IDC_STREAM_FRAMES_READ,
                             ids::IDC_STREAM_FLAGS,      ids::IDC_STREAM_MPEG,       ids::IDC_STREAM_MS_PER_FRAME,
                             ids::IDC_STREAM_TOTAL_TIME};

}  // namespace

bool AudioDisplayWindow::Create(HWND owner) {
    owner_ = owner;
    if (!EnsureWindowClass(kClass, WndProc, Theme::DisplayBrush())) return false;
    RECT o;
    GetWindowRect(owner, &o);
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW, kClass, L"音频\\歌词显示", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME,
                            o.left, o.bottom, o.right - o.left, 184, owner, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    int y = 4;
    for (int id : kPanelIds) {
        HWND label = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_LEFTNOWORDWRAP, 6, y,
                                     kPanelWidth - 8, kLineHeight, hwnd_,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                                     nullptr);
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
        y += kLineHeight;
    }
    SetStreamTexts(StreamPanelTexts{});
    return true;
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

void AudioDisplayWindow::SetStreamTexts(const StreamPanelTexts& t) {
    const std::string* texts[] = {&t.title,      &t.bitRate, &t.frequency, &t.layer,      &t.totalFrames,
                                  &t.framesRead, &t.flags,   &t.mpeg,      &t.msPerFrame, &t.totalTime};
    for (size_t i = 0; i < std::size(kPanelIds); ++i) {
        const std::wstring text = Widen(*texts[i]);
        wchar_t now[512] = {};
        GetDlgItemTextW(hwnd_, kPanelIds[i], now, 512);
        if (text != now) SetDlgItemTextW(hwnd_, kPanelIds[i], text.c_str());
    }
}

void AudioDisplayWindow::SetInfoLines(const std::vector<std::string>& lines) {
    for (size_t i = 0; i < std::size(kPanelIds); ++i) {
        SetDlgItemTextW(hwnd_, kPanelIds[i], i < lines.size() ? Widen(lines[i]).c_str() : L"");
    }
}

void AudioDisplayWindow::Paint(HDC dc) {
    RECT client;
    GetClientRect(hwnd_, &client);
    client.left = kPanelWidth;
    // Drawn off screen first, so the bars do not flicker.
    HDC mem = CreateCompatibleDC(dc);
    HBITMAP bitmap = CreateCompatibleBitmap(dc, client.right, client.bottom);
    // (the panel's labels paint themselves on the left)
    HGDIOBJ old = SelectObject(mem, bitmap);
    RECT all{0, 0, client.right, client.bottom};
    FillRect(mem, &all, Theme::DisplayBrush());
    const int gap = 3;
    const int width = (client.right - client.left - gap) / kSpectrumBands - gap;
    HBRUSH bar = CreateSolidBrush(Theme::kDisplayText);
    HBRUSH cap = CreateSolidBrush(Theme::kAccent);
    for (int b = 0; b < kSpectrumBands; ++b) {
        const int height = static_cast<int>(bands_[static_cast<size_t>(b)] * static_cast<float>(client.bottom - 8));
        const int x = client.left + gap + b * (width + gap);
        RECT r{x, client.bottom - 4 - height, x + width, client.bottom - 4};
        FillRect(mem, &r, bar);
        RECT top{x, r.top - 3, x + width, r.top};
        FillRect(mem, &top, cap);
    }
    DeleteObject(bar);
    DeleteObject(cap);
    BitBlt(dc, client.left, 0, client.right - client.left, client.bottom, mem, client.left, 0, SRCCOPY);
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
        case WM_CTLCOLORSTATIC: return reinterpret_cast<LRESULT>(Theme::PaintDisplay(reinterpret_cast<HDC>(wp)));
        case WM_CLOSE: ShowWindow(hwnd, SW_HIDE); return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace lumora
