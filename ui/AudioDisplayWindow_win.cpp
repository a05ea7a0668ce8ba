#include "ui/AudioDisplayWindow_win.h"

#include <olectl.h>

#include <algorithm>

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/SkinPaint_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"
#include "ui/WindowFade_win.h"

namespace lumora {
namespace {

constexpr wchar_t kClass[] = L"LumoraAudioDisplay";
// The stream panel's column on the left; the spectrum fills the rest. Lengths at 96 DPI.
constexpr int kPanelWidth = 230;
constexpr int kHeight = 184;
constexpr int kLineHeight = 15;
constexpr int kPanelIds[] = {ids::IDC_STREAM_TITLE,     ids::IDC_STREAM_BIT_RATE,     ids::IDC_STREAM_FREQUENCY,
                             ids::IDC_STREAM_LAYER,     ids::IDC_STREAM_TOTAL_FRAMES, ids::IDC_STREAM_FRAMES_READ,
                             ids::IDC_STREAM_FLAGS,     ids::IDC_STREAM_MPEG,         ids::IDC_STREAM_MS_PER_FRAME,
                             ids::IDC_STREAM_TOTAL_TIME};
static_assert(std::size(kPanelIds) == 10, "one remembered text for each panel line");

// Room kept at the bottom of the spectrum for the two lyrics lines.
constexpr int kLyricsMargin = 4;
constexpr UINT_PTR kBubbleTimer = 1;
constexpr UINT kUpdateBubbles = WM_APP + 1;

}  // namespace

// Other bubbles each run.
AudioDisplayWindow::AudioDisplayWindow() : bubbles_(static_cast<std::uint32_t>(GetTickCount())) {}

AudioDisplayWindow::~AudioDisplayWindow() {
    if (currentFont_) DeleteObject(currentFont_);
    if (nextFont_) DeleteObject(nextFont_);
    if (background_) DeleteObject(background_);
    if (picture_) picture_->Release();
}

HFONT AudioDisplayWindow::LyricsFont(int points) {
    const int height = -MulDiv(points, dpi_, 72);
    return CreateFontW(height, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"SimSun");
}

void AudioDisplayWindow::SetLyricsLook(const LyricsLook& look) {
    look_ = look;
    if (currentFont_) DeleteObject(currentFont_);
    if (nextFont_) DeleteObject(nextFont_);
    if (background_) DeleteObject(background_);
    currentFont_ = LyricsFont(look.currentPoints);
    nextFont_ = LyricsFont(look.nextPoints);
    colours_ = LyricsColoursFor(look, Theme::Look());
    background_ = CreateSolidBrush(colours_.background);
    if (picture_) {
        picture_->Release();
        picture_ = nullptr;
    }
    if (look.usePicture && !look.picturePath.empty()) {
        // A picture that cannot be loaded leaves the plain background.
        std::wstring path = Widen(look.picturePath);
        void* raw = nullptr;
        if (SUCCEEDED(OleLoadPicturePath(path.data(), nullptr, 0, 0, IID_IPicture, &raw)) && raw) {
            picture_ = static_cast<IPicture*>(raw);
        }
    }
    if (!hwnd_) return;
    LayOutPanel();
    InvalidateRect(hwnd_, nullptr, TRUE);
}

void AudioDisplayWindow::LayOutPanel() {
    int y = Scaled(4, dpi_);
    for (int id : kPanelIds) {
        HWND label = GetDlgItem(hwnd_, id);
        SetWindowPos(label, nullptr, Scaled(6, dpi_), y, Scaled(kPanelWidth - 8, dpi_), Scaled(kLineHeight, dpi_),
                     SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), TRUE);
        y += Scaled(kLineHeight, dpi_);
    }
    SendDlgItemMessageW(hwnd_, ids::IDC_LYRICS_CURRENT, WM_SETFONT, reinterpret_cast<WPARAM>(currentFont_), FALSE);
    SendDlgItemMessageW(hwnd_, ids::IDC_LYRICS_NEXT, WM_SETFONT, reinterpret_cast<WPARAM>(nextFont_), FALSE);
    PlaceLyrics();
}

void AudioDisplayWindow::Restyle() {
    if (!hwnd_) return;
    SetClassLongPtrW(hwnd_, GCLP_HBRBACKGROUND, reinterpret_cast<LONG_PTR>(Theme::DisplayBrush()));
    Theme::Caption(hwnd_);
    SetLyricsLook(look_);  // the lyrics' colours and the fonts in the skin's
    RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void AudioDisplayWindow::SetLyrics(const std::string& current, const std::string& next) {
    if (!hwnd_) return;
    SetDlgItemTextW(hwnd_, ids::IDC_LYRICS_CURRENT, Widen(current).c_str());
    SetDlgItemTextW(hwnd_, ids::IDC_LYRICS_NEXT, Widen(next).c_str());
    PlaceLyrics();
}

void AudioDisplayWindow::PlaceLyrics() {
    RECT client;
    GetClientRect(hwnd_, &client);
    const int margin = Scaled(kLyricsMargin, dpi_);
    const int areaLeft = Scaled(kPanelWidth, dpi_) + margin;
    const int areaWidth = std::max(10, static_cast<int>(client.right) - areaLeft - margin);
    const int ids[] = {ids::IDC_LYRICS_CURRENT, ids::IDC_LYRICS_NEXT};
    SIZE need[2] = {};
    for (int i = 0; i < 2; ++i) {
        HWND label = GetDlgItem(hwnd_, ids[i]);
        const int length = GetWindowTextLengthW(label);
        std::wstring text(static_cast<size_t>(length) + 1, L'\0');
        GetWindowTextW(label, text.data(), length + 1);
        text.resize(static_cast<size_t>(length));
        if (text.empty()) continue;
        HDC dc = GetDC(label);
        HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
        RECT r{0, 0, areaWidth, 0};
        DrawTextW(dc, text.c_str(), -1, &r, DT_CALCRECT | DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
        SelectObject(dc, old);
        ReleaseDC(label, dc);
        need[i] = {std::min<LONG>(r.right - r.left + Scaled(4, dpi_), areaWidth), r.bottom - r.top};
    }
    // The current line sits in the middle of the spectrum, the next one right under it. Lines that
    // do not fit make the window taller (up to the work area), so that no wrapped line is cut.
    const int total = need[0].cy + need[1].cy + margin;
    if (total + 2 * margin > client.bottom) {
        RECT window;
        GetWindowRect(hwnd_, &window);
        MONITORINFO mi{};
        mi.cbSize = sizeof mi;
        GetMonitorInfoW(MonitorFromWindow(hwnd_, MONITOR_DEFAULTTONEAREST), &mi);
        const int frame = (window.bottom - window.top) - client.bottom;
        const int height = std::min<int>(total + 2 * margin + frame, mi.rcWork.bottom - mi.rcWork.top);
        const int top = std::min<int>(window.top, mi.rcWork.bottom - height);
        if (height != window.bottom - window.top) {
            SetWindowPos(hwnd_, nullptr, window.left, top, window.right - window.left, height,
                         SWP_NOZORDER | SWP_NOACTIVATE);
            GetClientRect(hwnd_, &client);
        }
    }
    int y = std::max(margin, (static_cast<int>(client.bottom) - total) / 2);
    for (int i = 0; i < 2; ++i) {
        HWND label = GetDlgItem(hwnd_, ids[i]);
        const int x = areaLeft + (areaWidth - need[i].cx) / 2;
        SetWindowPos(label, HWND_TOP, x, y, need[i].cx, need[i].cy, SWP_NOACTIVATE);
        ShowWindow(label, need[i].cy > 0 ? SW_SHOWNA : SW_HIDE);
        y += need[i].cy + margin;
    }
    InvalidateRect(hwnd_, nullptr, FALSE);
}

bool AudioDisplayWindow::Create(HWND owner) {
    owner_ = owner;
    if (!EnsureWindowClass(kClass, WndProc, Theme::DisplayBrush())) return false;
    RECT o;
    GetWindowRect(owner, &o);
    hwnd_ = CreateWindowExW(WS_EX_TOOLWINDOW, kClass, Widen(kLyricsWindowCaption).c_str(),
                            WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME, o.left, o.bottom, o.right - o.left,
                            Scaled(kHeight, WindowDpi(owner)), owner, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    dpi_ = WindowDpi(hwnd_);
    Theme::Caption(hwnd_);
    for (int id : kPanelIds) {
        // SS_NOTIFY: the balloon help needs the line to see the mouse.
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_NOTIFY | SS_LEFTNOWORDWRAP, 0, 0, 0,
                        0, hwnd_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                        nullptr);
    }
    for (int id : {ids::IDC_LYRICS_CURRENT, ids::IDC_LYRICS_NEXT}) {
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | SS_NOPREFIX | SS_NOTIFY | SS_CENTER, 0, 0, 0, 0, hwnd_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    }
    SetLyricsLook(look_);
    SetStreamTexts(StreamPanelTexts{});
    tips_.Attach(hwnd_);
    return true;
}

void AudioDisplayWindow::ShowTips(const DisplayTips& tips, COLORREF background, COLORREF text) {
    for (int id : kPanelIds) tips_.Set(GetDlgItem(hwnd_, id), tips.panel);
    for (int id : {ids::IDC_LYRICS_CURRENT, ids::IDC_LYRICS_NEXT}) tips_.Set(GetDlgItem(hwnd_, id), tips.lyrics);
    tips_.SetColors(background, text);
    tips_.Enable(!tips.panel.empty());
}

void AudioDisplayWindow::Show() {
    if (!hwnd_ || Visible()) return;
    if (!placed_) {
        RECT o;
        GetWindowRect(owner_, &o);
        RECT r;
        GetWindowRect(hwnd_, &r);
        SetWindowPos(hwnd_, nullptr, o.left, o.bottom, o.right - o.left, r.bottom - r.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        placed_ = true;
    }
    FadeIn(hwnd_);
}

void AudioDisplayWindow::Hide() { FadeOut(hwnd_); }

bool AudioDisplayWindow::Visible() const { return hwnd_ && ShownOrShowing(hwnd_); }

void AudioDisplayWindow::Toggle() {
    if (Visible()) {
        Hide();
    } else {
        Show();
    }
}

void AudioDisplayWindow::Restore(const std::optional<WindowRect>& kept) {
    if (!hwnd_ || !kept) return;
    SetWindowPos(hwnd_, nullptr, static_cast<int>(kept->left), static_cast<int>(kept->top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    placed_ = true;
}

void AudioDisplayWindow::SetBubbles(bool on, bool colourChanging) {
    if (on == bubblesOn_ && colourChanging == bubblesColourChanging_) return;
    bubblesOn_ = on;
    bubblesColourChanging_ = colourChanging;
    UpdateBubbles();
    if (hwnd_) InvalidateRect(hwnd_, nullptr, FALSE);
}

RECT AudioDisplayWindow::SpectrumArea() const {
    RECT client;
    GetClientRect(hwnd_, &client);
    client.left = Scaled(kPanelWidth, dpi_);
    return client;
}

void AudioDisplayWindow::UpdateBubbles() {
    if (!hwnd_) return;
    const bool run = bubblesOn_ && IsWindowVisible(hwnd_);
    if (run == bubblesRunning_) return;
    bubblesRunning_ = run;
    if (run) {
        const RECT area = SpectrumArea();
        bubbles_.SetArea(area.right - area.left, area.bottom);
        SetTimer(hwnd_, kBubbleTimer, BubbleField::kStepMs, nullptr);
    } else {
        KillTimer(hwnd_, kBubbleTimer);
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
    for (size_t i = 0; i < std::size(kPanelIds); ++i) SetPanelLine(i, *texts[i]);
}

void AudioDisplayWindow::SetPanelLine(size_t i, const std::string& text) {
    // The progress timer sends the panel four times a second: only what changed is set.
    if (panelShown_[i] == text) return;
    panelShown_[i] = text;
    SetDlgItemTextW(hwnd_, kPanelIds[i], Widen(text).c_str());
}

void AudioDisplayWindow::SetInfoLines(const std::vector<std::string>& lines) {
    for (size_t i = 0; i < std::size(kPanelIds); ++i) SetPanelLine(i, i < lines.size() ? lines[i] : std::string());
}

void AudioDisplayWindow::Paint(HDC dc) {
    RECT whole;
    GetClientRect(hwnd_, &whole);
    // The stream panel's ground between its lines (the lines paint their own).
    const int saved = SaveDC(dc);
    for (int id : kPanelIds) {
        RECT line;
        GetWindowRect(GetDlgItem(hwnd_, id), &line);
        MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&line), 2);
        ExcludeClipRect(dc, line.left, line.top, line.right, line.bottom);
    }
    const RECT panel{0, 0, Scaled(kPanelWidth, dpi_), whole.bottom};
    FillRect(dc, &panel, Theme::DisplayBrush());
    RestoreDC(dc, saved);
    RECT client = SpectrumArea();
    // Drawn off screen first, so the bars do not flicker.
    HDC mem = CreateCompatibleDC(dc);
    HBITMAP bitmap = CreateCompatibleBitmap(dc, client.right, client.bottom);
    // (the panel's labels paint themselves on the left)
    HGDIOBJ old = SelectObject(mem, bitmap);
    RECT all{0, 0, client.right, client.bottom};
    FillRect(mem, &all, background_ ? background_ : Theme::DisplayBrush());
    if (picture_) {
        OLE_XSIZE_HIMETRIC w = 0;
        OLE_YSIZE_HIMETRIC h = 0;
        picture_->get_Width(&w);
        picture_->get_Height(&h);
        const long areaWidth = client.right - client.left;
        long dw = areaWidth;
        long dh = client.bottom;
        if (!look_.stretchPicture) {  // the picture's own size in inches, at the window's DPI
            dw = MulDiv(w, dpi_, 2540);
            dh = MulDiv(h, dpi_, 2540);
        }
        picture_->Render(mem, client.left + (areaWidth - dw) / 2, (client.bottom - dh) / 2, dw, dh, 0, h, w, -h,
                         nullptr);
    }
    if (bubblesOn_) {
        PaintBubbles(mem, client);
    } else {
        PaintBars(mem, client);
    }
    BitBlt(dc, client.left, 0, client.right - client.left, client.bottom, mem, client.left, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteObject(bitmap);
    DeleteDC(mem);
}

void AudioDisplayWindow::PaintBars(HDC mem, const RECT& client) {
    const int gap = Scaled(3, dpi_);
    const int foot = Scaled(4, dpi_);  // room under the bars
    const int width = (client.right - client.left - gap) / kSpectrumBands - gap;
    const SkinLook& skin = Theme::Look();
    // Bars glow towards the accent at their top; the peaks are the accent itself.
    const SkinGradient bar{BlendColour(skin.displayText, skin.accent, 450), skin.displayText};
    HBRUSH cap = Theme::SolidBrush(skin.accent);
    for (int b = 0; b < kSpectrumBands; ++b) {
        const int height =
            static_cast<int>(bands_[static_cast<size_t>(b)] * static_cast<float>(client.bottom - 2 * foot));
        const int x = client.left + gap + b * (width + gap);
        RECT r{x, client.bottom - foot - height, x + width, client.bottom - foot};
        FillGradient(mem, r, bar);
        RECT top{x, r.top - gap, x + width, r.top};
        FillRect(mem, &top, cap);
    }
}

void AudioDisplayWindow::PaintBubbles(HDC mem, const RECT& area) {
    // Each bubble: a faint tint of its colour over the background inside a ring of it, and a small light
    // spot up and to the left, as glass shows.
    const auto mix = [](BYTE a, BYTE b) { return static_cast<BYTE>((a + 4 * b) / 5); };
    const COLORREF back = look_.background;
    HBRUSH shine = CreateSolidBrush(RGB(255, 255, 255));
    const int ring = std::max(1, Scaled(1, dpi_));
    for (const Bubble& b : bubbles_.Bubbles()) {
        const BubbleColour c = bubbles_.ColourOf(b, bubblesColourChanging_);
        HPEN pen = CreatePen(PS_SOLID, ring, RGB(c.red, c.green, c.blue));
        HBRUSH tint = CreateSolidBrush(
            RGB(mix(c.red, GetRValue(back)), mix(c.green, GetGValue(back)), mix(c.blue, GetBValue(back))));
        HGDIOBJ oldPen = SelectObject(mem, pen);
        HGDIOBJ oldBrush = SelectObject(mem, tint);
        const int x = area.left + static_cast<int>(b.x), y = static_cast<int>(b.y), r = static_cast<int>(b.radius);
        Ellipse(mem, x - r, y - r, x + r + 1, y + r + 1);
        const int s = std::max(1, r / 4), sx = x - r / 2, sy = y - r / 2;
        SelectObject(mem, GetStockObject(NULL_PEN));
        SelectObject(mem, shine);
        Ellipse(mem, sx - s, sy - s, sx + s + 1, sy + s + 1);
        SelectObject(mem, oldBrush);
        SelectObject(mem, oldPen);
        DeleteObject(tint);
        DeleteObject(pen);
    }
    DeleteObject(shine);
}

LRESULT AudioDisplayWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            Paint(dc);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_CTLCOLORSTATIC: {
            HDC dc = reinterpret_cast<HDC>(wp);
            const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
            if ((id == ids::IDC_LYRICS_CURRENT || id == ids::IDC_LYRICS_NEXT)) {
                SetTextColor(dc, id == ids::IDC_LYRICS_CURRENT ? colours_.current : colours_.next);
                SetBkColor(dc, colours_.background);
                return reinterpret_cast<LRESULT>(background_);
            }
            return reinterpret_cast<LRESULT>(Theme::PaintDisplay(dc));
        }
        case WM_SIZE:
            PlaceLyrics();
            if (bubblesRunning_) {
                const RECT area = SpectrumArea();
                bubbles_.SetArea(area.right - area.left, area.bottom);
            }
            break;
        case WM_SHOWWINDOW:
            // Its own ShowWindow call has not made the window visible yet: the timer follows once it has.
            PostMessageW(hwnd_, kUpdateBubbles, 0, 0);
            break;
        case kUpdateBubbles:
            UpdateBubbles();
            return 0;
        case WM_TIMER:
            if (wp == kBubbleTimer) {
                bubbles_.Step();
                const RECT area = SpectrumArea();
                InvalidateRect(hwnd_, &area, FALSE);
                return 0;
            }
            break;
        case WM_MOVE:
            // Moved by the user (or restored): it keeps that place.
            if (IsWindowVisible(hwnd_)) placed_ = true;
            break;
        case kWmDpiChanged:
            dpi_ = NewDpi(wp);
            SetLyricsLook(look_);          // every font anew: the lyrics' are in points
            TakeSuggestedRect(hwnd_, lp);  // its WM_SIZE places the lyrics again
            return 0;
        case WM_CLOSE:
            Hide();
            if (onUserClose) onUserClose();
            return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

}  // namespace lumora
