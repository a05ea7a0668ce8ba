#include "ui/MainWindow_win.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>

#include "app/Notices.h"
#include "mediainfo/StreamPanel.h"
#include "platform/WinText_win.h"
#include "ui/AudioDisplayWindow_win.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/ImageButton_win.h"
#include "ui/Menu_win.h"
#include "ui/Theme_win.h"
#include "ui/TrayIcon_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

using namespace ids;

WNDPROC gTrackbarProc = nullptr;
WNDPROC gProgressProc = nullptr;
constexpr UINT kWmProgressPointer = WM_APP + 41;  // wParam: the position under the pointer, 0 … 1000

// The progress track tells its window where the pointer rests, for the time under it in its tip.
LRESULT CALLBACK ProgressSliderProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_MOUSEMOVE) {
        RECT channel{}, thumb{};
        SendMessageW(hwnd, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&channel));
        SendMessageW(hwnd, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
        const int half = (thumb.right - thumb.left) / 2;
        const int permille = PermilleAt(static_cast<short>(LOWORD(lp)), channel.left + half, channel.right - half);
        SendMessageW(GetParent(hwnd), kWmProgressPointer, static_cast<WPARAM>(permille), 0);
    }
    return CallWindowProcW(gProgressProc, hwnd, msg, wp, lp);
}

// The speed slider goes back to 100% on a double click on its track or pointer.
LRESULT CALLBACK SpeedSliderProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_LBUTTONDBLCLK) {
        SendMessageW(GetParent(hwnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hwnd), STN_DBLCLK),
                     reinterpret_cast<LPARAM>(hwnd));
        return 0;
    }
    return CallWindowProcW(gTrackbarProc, hwnd, msg, wp, lp);
}

constexpr int kClientWidth = 460;
// The display at the top holds the title, the times, the neighbours and the tag line; the
// controls sit below it.
constexpr int kDisplayBottom = 84;
constexpr int kTagLineShift = 22;  // the room the tag line takes in the display
constexpr int kClientHeight = 248 + kTagLineShift;
constexpr int kTipKey = 100000;  // tips are remembered beside the texts, under id + kTipKey
constexpr int kStatusParts[] = {230, 350, -1};
// The quick buttons' row under the status line.
constexpr int kQuickTop = 250;
constexpr int kQuickHeight = 22;
constexpr int kQuickIds[] = {IDC_QUICK_LYRICS, IDC_QUICK_INFO, IDC_QUICK_FOLDER, IDC_QUICK_SETTINGS, IDC_QUICK_SKIN};
constexpr const char* kQuickCaptions[] = {"歌词", "信息", "文件夹", "设置", kSkinMenuText};
constexpr int kSliderIds[] = {IDC_MAIN_PROGRESS, IDC_MAIN_VOLUME, IDC_MAIN_SPEED};

bool IsQuickButton(int id) { return std::find(std::begin(kQuickIds), std::end(kQuickIds), id) != std::end(kQuickIds); }

HWND Label(HWND parent, int id, const wchar_t* text, int x, int y, int cx, int cy, DWORD align = SS_LEFT) {
    // SS_NOTIFY: the balloon help needs the label to see the mouse.
    HWND h =
        CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_NOTIFY | align, x, y, cx, cy,
                        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    return h;
}

HWND Slider(HWND parent, int id, int x, int y, int cx, int cy, int low, int high, int pos) {
    // A fixed thumb length, so that the thumb grows with the DPI as the track does.
    HWND h = CreateWindowExW(
        0, TRACKBAR_CLASSW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBS_HORZ | TBS_NOTICKS | TBS_FIXEDLENGTH, x, y,
        cx, cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(h, TBM_SETRANGE, FALSE, MAKELPARAM(low, high));
    SendMessageW(h, TBM_SETPOS, TRUE, pos);
    return h;
}

bool IsDisplayControl(int id) {
    return id == IDC_MAIN_TITLE || id == IDC_MAIN_TIME || id == IDC_MAIN_PERCENT || id == IDC_MAIN_COMBINED ||
           id == IDC_MAIN_TAG_LINE;
}

}  // namespace

MainWindow::~MainWindow() { Destroy(); }

void MainWindow::Destroy() {
    if (hwnd_) DestroyWindow(hwnd_);
}

bool MainWindow::Create(MainWindowEvents& events) {
    events_ = &events;
    if (!EnsureWindowClass(kMainClass, WndProc, Theme::BackgroundBrush())) return false;
    // Sized for its DPI once it exists (the monitor it lands on decides).
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    CreateWindowExW(WS_EX_ACCEPTFILES, kMainClass, Widen(kMainTitle).c_str(), style, CW_USEDEFAULT, CW_USEDEFAULT,
                    kClientWidth, kClientHeight, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    tipsAttached_ = tips_.Attach(hwnd_);
    return true;
}

LRESULT MainWindow::OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
    // Explorer announces a new taskbar to every window; the taskbar (Windows 7 and later) tells the
    // window when its button exists.
    static const UINT taskbarCreated = RegisterWindowMessageW(L"TaskbarCreated");
    static const UINT buttonCreated = RegisterWindowMessageW(L"TaskbarButtonCreated");
    if ((msg == taskbarCreated || msg == buttonCreated) && msg != 0) {
        events_->OnTaskbarButton();
        return 0;
    }
    switch (msg) {
        case WM_CREATE: OnCreate(); return 0;
        case kWmDpiChanged:
            dpi_ = NewDpi(wp);
            TakeSuggestedRect(hwnd_, lp);
            Layout();
            events_->OnMoved();  // the docked list follows the new size
            return 0;
        case WM_COMMAND:
            if (LOWORD(wp) == IDC_MAIN_SPEED && HIWORD(wp) == STN_DBLCLK) {
                events_->OnSpeedReset();
            } else {
                events_->OnCommand(LOWORD(wp));
            }
            return 0;
        case WM_HSCROLL: OnScroll(reinterpret_cast<HWND>(lp), LOWORD(wp), static_cast<short>(HIWORD(wp))); return 0;
        case WM_TIMER:
            if (wp == kScrollTimerId) {
                runningText_.Step(pace_.pixels);
                InvalidateRect(GetDlgItem(hwnd_, IDC_MAIN_TAG_LINE), nullptr, FALSE);
            } else {
                events_->OnTimer(static_cast<unsigned>(wp));
            }
            return 0;
        case WM_DROPFILES: OnDropFiles(reinterpret_cast<HDROP>(wp)); return 0;
        case WM_CONTEXTMENU: OnContextMenu(static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))); return 0;
        case WM_MOVE: events_->OnMoved(); return 0;
        case kWmTrayIcon:
            events_->OnTrayIcon(static_cast<UINT>(lp));
            return 0;
        case kWmProgressPointer:
            events_->OnProgressPointer(static_cast<int>(wp));
            return 0;
        case WM_MEASUREITEM:
        case WM_MENUCHAR:
            if (const auto result = FlatMenuMessage(msg, wp, lp)) return *result;
            break;
        case WM_DRAWITEM: {
            if (FlatMenuMessage(msg, wp, lp)) return TRUE;
            const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lp);
            if (item.CtlType == ODT_STATIC) {
                DrawTagLine(item);
            } else {
                DrawImageButton(item);
            }
            return TRUE;
        }
        case WM_NOTIFY: {
            auto* header = reinterpret_cast<NMHDR*>(lp);
            if (header->code == static_cast<UINT>(NM_CUSTOMDRAW) &&
                std::find(std::begin(kSliderIds), std::end(kSliderIds), static_cast<int>(header->idFrom)) !=
                    std::end(kSliderIds)) {
                return DrawSlider(*reinterpret_cast<NMCUSTOMDRAW*>(lp));
            }
            break;
        }
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return ColourControl(reinterpret_cast<HDC>(wp), reinterpret_cast<HWND>(lp), msg == WM_CTLCOLORBTN);
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT paints all of it
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            backdrop_.Draw(dc, ps.rcPaint);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        // Shown, hidden, minimised or restored: the running text's timer runs only while it can be seen.
        case WM_SIZE:
            if (wp == SIZE_MINIMIZED) events_->OnMinimized();
            UpdateScrollTimer(wp != SIZE_MINIMIZED && IsWindowVisible(hwnd_));
            break;
        case WM_SHOWWINDOW:
            UpdateScrollTimer(wp != FALSE && !IsIconic(hwnd_));
            break;
        case WM_ACTIVATE:
            // As a dialog does: the control that had the focus gets it back when the window is active again.
            if (LOWORD(wp) == WA_INACTIVE) {
                HWND focus = GetFocus();
                focus_ = IsChild(hwnd_, focus) ? focus : nullptr;
            } else if (focus_ && IsWindow(focus_) && !HIWORD(wp)) {
                SetFocus(focus_);
                return 0;
            }
            break;
        case WM_APPCOMMAND:
            if (events_->OnAppCommand(GET_APPCOMMAND_LPARAM(lp))) return TRUE;
            break;
        case WM_HOTKEY:
            events_->OnAppCommand(static_cast<int>(wp));
            return 0;
        case WM_SYSCOMMAND:
            // Sent to the foreground window; refused, the screen saver does not start. A display powering
            // on (-1) is never refused.
            if (refuseScreenSaver_ &&
                ((wp & 0xFFF0) == SC_SCREENSAVE || ((wp & 0xFFF0) == SC_MONITORPOWER && lp != -1))) {
                return 0;
            }
            break;
        case WM_CLOSE: events_->OnCloseRequest(); return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

void MainWindow::OnCreate() {
    const MainDisplayTexts t;
    Label(hwnd_, IDC_MAIN_TITLE, Widen(t.title).c_str(), 14, 12, 296, 26);
    Label(hwnd_, IDC_MAIN_TIME, Widen(t.time).c_str(), 318, 12, 90, 20, SS_RIGHT);
    CreateImageButton(hwnd_, IDC_MAIN_TIME_MODE, Widen(t.timeMode).c_str(), 414, 11, 36, 22);
    Label(hwnd_, IDC_MAIN_PERCENT, Widen(t.percent).c_str(), 318, 38, 90, 18, SS_RIGHT);
    Label(hwnd_, IDC_MAIN_COMBINED, L"", 14, 40, 296, 18);

    HWND progress = Slider(hwnd_, IDC_MAIN_PROGRESS, 6, 66, kClientWidth - 12, 24, 0, 1000, 0);
    gProgressProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(progress, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ProgressSliderProc)));

    struct Button {
        int id;
        const std::string* text;
        const char* fixed;
        int x, width;
    };
    const Button transport[] = {
        {IDC_MAIN_PLAY, &t.play, nullptr, 6, 54},        {IDC_MAIN_STOP, nullptr, "停止", 64, 54},
        {IDC_MAIN_PREVIOUS, nullptr, "上一首", 122, 60}, {IDC_MAIN_NEXT, nullptr, "下一首", 186, 60},
        {IDC_MAIN_BACK, &t.back, nullptr, 250, 48},      {IDC_MAIN_FORWARD, &t.forward, nullptr, 302, 48},
        {IDC_MAIN_OPEN, nullptr, "打开", 354, 48},       {IDC_MAIN_LIST, nullptr, "列表", 406, 48},
    };
    for (const auto& b : transport) {
        CreateImageButton(hwnd_, b.id, Widen(b.text ? *b.text : std::string(b.fixed)).c_str(), b.x, 96, b.width, 26);
    }

    Label(hwnd_, IDC_MAIN_MODE, Widen(t.mode).c_str(), 8, 132, 128, 18);
    CreateImageButton(hwnd_, IDC_MAIN_MODE_NORMAL, L"正常", 138, 128, 44, 22);
    CreateImageButton(hwnd_, IDC_MAIN_MODE_LOOP, L"循环", 186, 128, 44, 22);
    CreateImageButton(hwnd_, IDC_MAIN_MODE_RANDOM, L"随机", 234, 128, 44, 22);
    CreateImageButton(hwnd_, IDC_MAIN_SEGMENT, Widen(t.segment).c_str(), 290, 128, 64, 22);
    // One above the other: side by side, "A=00:00:00" and "B=00:00:00" do not fit beside the buttons.
    Label(hwnd_, IDC_MAIN_SEGMENT_A, Widen(t.segmentA).c_str(), 360, 123, 94, 16);
    Label(hwnd_, IDC_MAIN_SEGMENT_B, Widen(t.segmentB).c_str(), 360, 139, 94, 16);

    Label(hwnd_, IDC_MAIN_VOLUME_LABEL, Widen(kVolumeLabel).c_str(), 8, 160, 28, 18);
    Label(hwnd_, IDC_MAIN_VOLUME_MIN, L"MIN", 36, 160, 27, 18);
    Slider(hwnd_, IDC_MAIN_VOLUME, 63, 156, 101, 24, 0, 20, 20);
    Label(hwnd_, IDC_MAIN_VOLUME_MAX, L"MAX", 164, 160, 28, 18);
    Label(hwnd_, IDC_MAIN_SPEED_LABEL, L"速度", 196, 160, 30, 18);
    HWND speed = Slider(hwnd_, IDC_MAIN_SPEED, 226, 156, 150, 24, 1, 200, 100);
    gTrackbarProc =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(speed, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SpeedSliderProc)));
    Label(hwnd_, IDC_MAIN_SEGMENT_RANGE, Widen(t.segmentRange).c_str(), 384, 160, 70, 18, SS_RIGHT);

    Label(hwnd_, IDC_MAIN_PREVIOUS_LABEL, L"", 8, 184, 170, 18, SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS);
    Label(hwnd_, IDC_MAIN_NEXT_LABEL, L"", 182, 184, 100, 18, SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS);
    CreateImageButton(hwnd_, IDC_MAIN_SONG_MENU, Widen(kSongMenuText).c_str(), 286, 181, 46, 22);
    CreateImageButton(hwnd_, IDC_MAIN_DECODER_WORKAROUND, Widen(kDecoderWorkaroundCaption).c_str(), 336, 181, 44, 22);
    CreateImageButton(hwnd_, IDC_MAIN_LIBRARY, L"音乐库", 384, 181, 70, 22);
    Label(hwnd_, IDC_MAIN_STATUS_LINE, Widen(t.statusLine).c_str(), 8, 206, kClientWidth - 16, 18);

    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, hwnd_,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_MAIN_STATUS)), GetModuleHandleW(nullptr),
                              nullptr);
    Theme::PlainCheckBox(status_);  // (without visual styles, which would ignore its colour)
    // Everything under the display moves down to make room for the tag line.
    for (HWND child = GetWindow(hwnd_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (child == status_) continue;
        RECT r;
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&r), 2);
        if (r.top >= 62) SetWindowPos(child, nullptr, r.left, r.top + kTagLineShift, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    // The block view lies under everything, in a band of its own that is there only while it shows.
    if (blocks_.Create(hwnd_, IDC_MAIN_SONG_BLOCKS)) {
        SetWindowPos(blocks_.Handle(), nullptr, 6, kQuickTop + kQuickHeight + 4, kClientWidth - 12, 76, SWP_NOZORDER);
        blocks_.onChoose = [this](int entry) { events_->OnCommand(kFirstSongCommand + entry - 1); };
    }
    const std::string tagLine = StreamPanelTexts{}.title;
    // Drawn by the window: it runs when it does not fit.
    Label(hwnd_, IDC_MAIN_TAG_LINE, Widen(tagLine).c_str(), 14, 62, kClientWidth - 28, 18, SS_OWNERDRAW);
    shown_[IDC_MAIN_TAG_LINE] = tagLine;
    const int quickWidth =
        (kClientWidth - 16 - 6 * static_cast<int>(std::size(kQuickIds) - 1)) / static_cast<int>(std::size(kQuickIds));
    for (size_t i = 0; i < std::size(kQuickIds); ++i) {
        CreateImageButton(hwnd_, kQuickIds[i], Widen(kQuickCaptions[i]).c_str(),
                          8 + static_cast<int>(i) * (quickWidth + 6), kQuickTop, quickWidth, kQuickHeight);
    }
    // The controls above were placed for 96 DPI: that layout is kept and scaled for the window's DPI.
    for (HWND child = GetWindow(hwnd_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (child == status_) continue;
        RECT r;
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&r), 2);
        layout96_.emplace_back(GetDlgCtrlID(child), r);
    }
    dpi_ = WindowDpi(hwnd_);
    Theme::Caption(hwnd_);
    Layout();
}

void MainWindow::Layout() {
    int bottom96 = 0;  // under the lowest control
    for (const auto& [id, r96] : layout96_) {
        HWND control = GetDlgItem(hwnd_, id);
        // (the style, not IsWindowVisible: the window itself may not show yet)
        const bool blocksHidden = id == IDC_MAIN_SONG_BLOCKS && (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) == 0;
        // A hidden quick button, or the song blocks while hidden, take no room.
        const bool hidden = (IsQuickButton(id) && !quickButtons_) || blocksHidden;
        RECT place96 = r96;
        // The song blocks lie under the quick buttons, or in their place while they are hidden.
        if (id == IDC_MAIN_SONG_BLOCKS && !quickButtons_) OffsetRect(&place96, 0, kQuickTop - place96.top);
        if (!hidden) bottom96 = std::max(bottom96, static_cast<int>(place96.bottom));
        const RECT r = hidden ? RECT{} : Scaled(place96, dpi_);
        if (IsQuickButton(id)) ShowWindow(control, hidden ? SW_HIDE : SW_SHOWNA);
        SetWindowPos(control, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        HFONT font = id == IDC_MAIN_TITLE ? Theme::BigFont(dpi_) : Theme::UiFont(dpi_);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
        wchar_t cls[32] = {};
        GetClassNameW(control, cls, 32);
        if (lstrcmpiW(cls, TRACKBAR_CLASSW) == 0) Theme::SliderThumb(control, dpi_);
    }
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(dpi_)), FALSE);
    // The status bar draws its text in the system's colour: its ground is a light tint of the skin's.
    SendMessageW(status_, SB_SETBKCOLOR, 0,
                 static_cast<LPARAM>(BlendColour(Theme::Look().background.to, SkinRgb(255, 255, 255), 800)));
    SendMessageW(status_, WM_SIZE, 0, 0);  // its height follows the font
    // The client area at this DPI, and never so low that the status bar covers a control: its height
    // may follow the system's DPI rather than the window's.
    RECT bar, window, client;
    GetWindowRect(status_, &bar);
    GetWindowRect(hwnd_, &window);
    GetClientRect(hwnd_, &client);
    const int width = Scaled(kClientWidth, dpi_);
    const int height = std::max<int>(Scaled(kClientHeight, dpi_), Scaled(bottom96 + 4, dpi_) + (bar.bottom - bar.top));
    if (client.right != width || client.bottom != height) {
        // The frame as it is drawn: under Wine and before Windows 10 it need not follow the window's DPI.
        SetWindowPos(hwnd_, nullptr, 0, 0, (window.right - window.left) + width - client.right,
                     (window.bottom - window.top) + height - client.bottom, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(status_, WM_SIZE, 0, 0);
    }
    int widths[std::size(kStatusParts)];
    for (size_t i = 0; i < std::size(kStatusParts); ++i) {
        widths[i] = kStatusParts[i] < 0 ? -1 : Scaled(kStatusParts[i], dpi_);
    }
    SendMessageW(status_, SB_SETPARTS, std::size(widths), reinterpret_cast<LPARAM>(widths));
    backdrop_.Make(hwnd_, [this](HDC dc, const RECT& area) { PaintBackdrop(dc, area); });
    MeasureTagLine(false);
    RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainWindow::PaintBackdrop(HDC dc, const RECT& client) const {
    const SkinLook& look = Theme::Look();
    FillGradient(dc, client, look.background);
    const RECT display = Scaled(RECT{6, 6, kClientWidth - 6, kDisplayBottom}, dpi_);
    FillRounded(dc, display, Scaled(look.displayRadius, dpi_), look.display, 0, look.displayEdge, Scaled(1, dpi_));
    // A fine line between the display's lines and the tag line under them.
    RECT rule = Scaled(RECT{14, 60, kClientWidth - 14, 61}, dpi_);
    rule.bottom = rule.top + std::max(1, Scaled(1, dpi_));
    FillRect(dc, &rule, Theme::SolidBrush(BlendColour(look.display.to, look.displayEdge, 500)));
}

LRESULT MainWindow::ColourControl(HDC dc, HWND control, bool button) {
    const SkinLook& look = Theme::Look();
    const int id = GetDlgCtrlID(control);
    SetBkMode(dc, TRANSPARENT);
    if (!button) {
        SetTextColor(dc, id == IDC_MAIN_TIME || id == IDC_MAIN_PERCENT ? look.accent
                         : IsDisplayControl(id)                        ? look.displayText
                                                                       : look.text);
    }
    HBRUSH brush = backdrop_.BrushFor(dc, control);
    return reinterpret_cast<LRESULT>(brush ? brush : Theme::BackgroundBrush());
}

void MainWindow::Restyle() {
    SetClassLongPtrW(hwnd_, GCLP_HBRBACKGROUND, reinterpret_cast<LONG_PTR>(Theme::BackgroundBrush()));
    Theme::Caption(hwnd_);
    Layout();  // the fonts in the skin's weights, and the backdrop
}

void MainWindow::ShowQuickButtons(bool on) {
    if (on == quickButtons_) return;
    quickButtons_ = on;
    Layout();
    events_->OnMoved();  // the docked windows follow the new height
}

void MainWindow::SetRunningTextSpeed(std::optional<long long> speed) {
    const ScrollPace pace = RunningTextPace(speed);
    if (pace.intervalMs == pace_.intervalMs && pace.pixels == pace_.pixels) return;
    pace_ = pace;
    if (scrolling_) KillTimer(hwnd_, kScrollTimerId);
    scrolling_ = false;  // started again at the new pace
    UpdateScrollTimer();
}

void MainWindow::SetColouredProgress(bool on) {
    if (on == colouredProgress_) return;
    colouredProgress_ = on;
    InvalidateRect(GetDlgItem(hwnd_, IDC_MAIN_PROGRESS), nullptr, TRUE);
}

void MainWindow::ShowMenuUnder(int id, const std::vector<MenuLine>& lines) {
    RECT r;
    GetWindowRect(GetDlgItem(hwnd_, id), &r);
    TrackMenu(hwnd_, lines, r.left, r.bottom, menuLook_);
}

void MainWindow::MeasureTagLine(bool newText) {
    HWND line = GetDlgItem(hwnd_, IDC_MAIN_TAG_LINE);
    if (!line) return;
    const std::wstring text = WindowTextOf(line);
    HDC dc = GetDC(line);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(line, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, old);
    ReleaseDC(line, dc);
    RECT box;
    GetClientRect(line, &box);
    runningText_.Measure(size.cx, box.right, newText);
    UpdateScrollTimer();
    InvalidateRect(line, nullptr, FALSE);
}

void MainWindow::UpdateScrollTimer(std::optional<bool> seen) {
    const bool run = runningText_.Moves() && seen.value_or(IsWindowVisible(hwnd_) && !IsIconic(hwnd_));
    if (run == scrolling_) return;
    scrolling_ = run;
    if (run) {
        SetTimer(hwnd_, kScrollTimerId, pace_.intervalMs, nullptr);
    } else {
        KillTimer(hwnd_, kScrollTimerId);
        runningText_.Rewind();  // stopped: shown from its start
        InvalidateRect(GetDlgItem(hwnd_, IDC_MAIN_TAG_LINE), nullptr, FALSE);
    }
}

void MainWindow::DrawTagLine(const DRAWITEMSTRUCT& item) {
    BufferedDc buffer(item.hDC, item.rcItem);
    HDC dc = buffer.Get();
    const RECT area = buffer.Area();
    HBRUSH behind = backdrop_.BrushFor(dc, item.hwndItem);
    FillRect(dc, &area, behind ? behind : Theme::DisplayBrush());
    const std::wstring text = WindowTextOf(item.hwndItem);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, Theme::DisplayText());
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
    const UINT format = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP;
    RECT r = area;
    r.left -= runningText_.Offset();
    r.right = r.left + runningText_.Period() + area.right;
    DrawTextW(dc, text.c_str(), -1, &r, format);
    if (runningText_.Moves()) {
        OffsetRect(&r, runningText_.Period(), 0);
        DrawTextW(dc, text.c_str(), -1, &r, format);
    }
    SelectObject(dc, old);
}

LRESULT MainWindow::DrawSlider(NMCUSTOMDRAW& draw) {
    if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const SkinLook& look = Theme::Look();
    HWND slider = draw.hdr.hwndFrom;
    switch (draw.dwItemSpec) {
        case TBCD_CHANNEL: {
            // A rounded groove, filled from its start to the thumb.
            RECT thumb{};
            SendMessageW(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
            const int middle = (draw.rc.top + draw.rc.bottom) / 2;
            const int half = std::max(2, Scaled(3, dpi_));
            const RECT groove{draw.rc.left, middle - half, draw.rc.right, middle + half};
            FillRounded(draw.hdc, groove, half, {look.track, look.track}, 0, look.buttonEdge, 0);
            const int low = static_cast<int>(SendMessageW(slider, TBM_GETRANGEMIN, 0, 0));
            const int high = static_cast<int>(SendMessageW(slider, TBM_GETRANGEMAX, 0, 0));
            const int pos = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
            const int permille = high > low ? (pos - low) * 1000 / (high - low) : 0;
            const COLORREF done = static_cast<int>(draw.hdr.idFrom) == IDC_MAIN_PROGRESS
                                      ? ProgressTrackColour(look, permille, colouredProgress_)
                                      : look.trackDone.from;
            RECT played = groove;
            played.right = std::max(groove.left, static_cast<LONG>((thumb.left + thumb.right) / 2));
            FillRounded(draw.hdc, played, half, {BlendColour(done, SkinRgb(255, 255, 255), 200), done}, 0, done, 0);
            return CDRF_SKIPDEFAULT;
        }
        case TBCD_THUMB: {
            RECT r = draw.rc;
            const int width = std::min<int>(r.right - r.left, Scaled(12, dpi_));
            r.left = (r.left + r.right - width) / 2;
            r.right = r.left + width;
            InflateRect(&r, 0, -Scaled(2, dpi_));
            const bool hot = (draw.uItemState & (CDIS_HOT | CDIS_SELECTED)) != 0 || GetFocus() == slider;
            FillRounded(draw.hdc, r, width / 2, look.thumb, 40, hot ? look.accent : look.buttonEdge,
                        std::max(1, Scaled(1, dpi_)));
            return CDRF_SKIPDEFAULT;
        }
        default:
            return CDRF_SKIPDEFAULT;  // no tick marks
    }
}

void MainWindow::OnScroll(HWND slider, int code, int thumbPosition) {
    using Move = MainWindowEvents::SliderMove;
    const int id = GetDlgCtrlID(slider);
    Move move = Move::Other;
    int position = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
    switch (code) {
        case TB_THUMBTRACK:
            dragging_ = id;
            move = Move::Dragging;
            break;
        case TB_THUMBPOSITION:
            // Where the thumb was let go, as the notification says.
            dragging_ = 0;
            released_ = id;
            move = Move::Released;
            position = thumbPosition;
            break;
        case TB_ENDTRACK:
            // After a drag it only closes the gesture; after a click or a key it is the release.
            dragging_ = 0;
            move = released_ == id ? Move::Other : Move::Released;
            released_ = 0;
            break;
        default: break;
    }
    events_->OnSlider(id, move, position);
}

void MainWindow::OnDropFiles(HDROP drop) {
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    std::vector<std::string> paths;
    for (UINT i = 0; i < count; ++i) {
        const UINT len = DragQueryFileW(drop, i, nullptr, 0);
        std::wstring path(len + 1, L'\0');
        DragQueryFileW(drop, i, path.data(), len + 1);
        path.resize(len);
        paths.push_back(Narrow(path));
    }
    DragFinish(drop);
    events_->OnDropFiles(paths);
}

void MainWindow::OnContextMenu(int x, int y) {
    if (x == -1 && y == -1) {  // from the keyboard
        RECT r;
        GetWindowRect(hwnd_, &r);
        x = r.left + Scaled(20, dpi_);
        y = r.top + Scaled(40, dpi_);
    }
    TrackMenu(hwnd_, events_->ContextMenu(), x, y, menuLook_);
}

void MainWindow::SetText(int id, const std::string& text) {
    auto [it, added] = shown_.try_emplace(id);
    if (!added && it->second == text) return;
    it->second = text;
    if (id < 0) {
        SendMessageW(status_, SB_SETTEXTW, static_cast<WPARAM>(-1 - id), reinterpret_cast<LPARAM>(Widen(text).c_str()));
    } else {
        SetDlgItemTextW(hwnd_, id, Widen(text).c_str());
    }
}

void MainWindow::SetTip(int id, const std::string& text) {
    auto [it, added] = shown_.try_emplace(id + kTipKey);
    if (!added && it->second == text) return;
    it->second = text;
    tips_.Set(GetDlgItem(hwnd_, id), text);
}

void MainWindow::ShowQueueTexts(const QueueTexts& texts) {
    SetText(-1, texts.playingPanel);
    SetText(-2, texts.positionPanel);
    SetText(-3, texts.totalPanel);
    SetText(IDC_MAIN_PREVIOUS_LABEL, texts.previousLabel);
    SetText(IDC_MAIN_NEXT_LABEL, texts.nextLabel);
    SetText(IDC_MAIN_COMBINED, texts.combinedLabel);
    SetText(IDC_MAIN_TITLE, texts.itemCaption);
}

void MainWindow::ShowPlayback(const PlaybackTexts& t) {
    SetText(IDC_MAIN_PLAY, t.playCaption);
    SetText(IDC_MAIN_MODE, t.modeLabel);
    SetText(IDC_MAIN_SEGMENT, t.segmentButton);
    SetText(IDC_MAIN_SEGMENT_A, t.segmentA);
    SetText(IDC_MAIN_SEGMENT_B, t.segmentB);
    SetText(IDC_MAIN_TIME_MODE, t.timeMode);
    SetText(IDC_MAIN_TIME, t.time);
    SetText(IDC_MAIN_PERCENT, t.percent);
    SetText(IDC_MAIN_TITLE, t.title);
    SetText(IDC_MAIN_STATUS_LINE, t.statusLine);
    if (dragging_ != IDC_MAIN_PROGRESS) SendDlgItemMessageW(hwnd_, IDC_MAIN_PROGRESS, TBM_SETPOS, TRUE, t.progress);
    if (dragging_ != IDC_MAIN_SPEED) SendDlgItemMessageW(hwnd_, IDC_MAIN_SPEED, TBM_SETPOS, TRUE, t.speed);
    EnableWindow(GetDlgItem(hwnd_, IDC_MAIN_BACK), t.backForwardEnabled);
    EnableWindow(GetDlgItem(hwnd_, IDC_MAIN_FORWARD), t.backForwardEnabled);
}

void MainWindow::ShowTagLine(const std::string& text) {
    if (shown_[IDC_MAIN_TAG_LINE] == text) return;
    SetText(IDC_MAIN_TAG_LINE, text);
    MeasureTagLine(true);
}

void MainWindow::SetVolumePosition(int position) {
    SendDlgItemMessageW(hwnd_, IDC_MAIN_VOLUME, TBM_SETPOS, TRUE, position);
}

void MainWindow::ShowTips(const TransportTips& t, std::optional<std::pair<std::uint32_t, std::uint32_t>> colours,
                          bool enabled) {
    if (!tipsAttached_) return;
    SetTips(t);
    if (colours) tips_.SetColors(static_cast<COLORREF>(colours->first), static_cast<COLORREF>(colours->second));
    tips_.Enable(enabled && (t.help || t.information));
}

void MainWindow::SetTips(const TransportTips& t) {
    if (!tipsAttached_) return;
    struct Tip {
        int id;
        const std::string* text;
        bool information = false;  // shows live information while those tips are on
    };
    const Tip tips[] = {
        {IDC_MAIN_PLAY, &t.play},
        {IDC_MAIN_STOP, &t.stop},
        {IDC_MAIN_PREVIOUS, &t.previous, true},
        {IDC_MAIN_NEXT, &t.next, true},
        {IDC_MAIN_BACK, &t.back},
        {IDC_MAIN_FORWARD, &t.forward},
        {IDC_MAIN_MODE_NORMAL, &t.modeNormal},
        {IDC_MAIN_MODE_LOOP, &t.modeLoop},
        {IDC_MAIN_MODE_RANDOM, &t.modeRandom},
        {IDC_MAIN_TIME_MODE, &t.timeMode},
        {IDC_MAIN_SEGMENT, &t.segment},
        {IDC_MAIN_PROGRESS, &t.progress, true},
        {IDC_MAIN_VOLUME, &t.volume, true},
        {IDC_MAIN_SPEED, &t.speed},
        {IDC_MAIN_LIST, &t.list},
        {IDC_MAIN_OPEN, &t.open},
        {IDC_MAIN_TITLE, &t.title},
        {IDC_MAIN_TIME, &t.time},
        {IDC_MAIN_PERCENT, &t.percent},
        {IDC_MAIN_MODE, &t.mode},
        {IDC_MAIN_SEGMENT_A, &t.segment},
        {IDC_MAIN_SEGMENT_B, &t.segment},
        {IDC_MAIN_SEGMENT_RANGE, &t.segmentRange},
        {IDC_MAIN_PREVIOUS_LABEL, &t.previous, true},
        {IDC_MAIN_NEXT_LABEL, &t.next, true},
        {IDC_MAIN_COMBINED, &t.neighbours},
        {IDC_MAIN_VOLUME_LABEL, &t.volumeLabel},
        {IDC_MAIN_VOLUME_MIN, &t.volumeLabel},
        {IDC_MAIN_VOLUME_MAX, &t.volumeLabel},
        {IDC_MAIN_SPEED_LABEL, &t.speed},
        {IDC_MAIN_STATUS_LINE, &t.statusLine},
        {IDC_MAIN_DECODER_WORKAROUND, &t.decoderWorkaround},
    };
    const auto set = [&](int id, std::string_view text, bool information) {
        SetTip(id, t.help ? std::string(tipOverrides_.For(id, text, information && t.information)) : std::string(text));
    };
    for (const auto& tip : tips) set(tip.id, *tip.text, tip.information);
    set(IDC_MAIN_LIBRARY, t.help ? "加载“我的音乐库”" : "", false);
    set(IDC_MAIN_TAG_LINE, t.help ? "当前文件的标签信息：标题、歌手、专集、年代和其他" : "", false);
    set(IDC_MAIN_SONG_MENU, t.help ? "从当前列表中选一首播放" : "", false);
    set(IDC_QUICK_LYRICS, t.help ? kLyricsWindowCaption : "", false);
    set(IDC_QUICK_INFO, t.help ? kInfoEditorTitle : "", false);
    set(IDC_QUICK_FOLDER, t.help ? "打开文件夹" : "", false);
    set(IDC_QUICK_SETTINGS, t.help ? kSettingsTitle : "", false);
    set(IDC_QUICK_SKIN, t.help ? "选择界面" : "", false);
}

void MainWindow::ShowBalloon(std::optional<POINT> at, const std::string& title, const std::string& text, unsigned ms) {
    if (!tipsAttached_) return;
    if (!at) {
        // Under the display's title line, in its middle.
        RECT r{};
        GetWindowRect(GetDlgItem(hwnd_, IDC_MAIN_TITLE), &r);
        at = POINT{(r.left + r.right) / 2, r.bottom};
    }
    tips_.ShowBalloon(*at, title, text, ms);
}

bool MainWindow::TakeDialogKey(const MSG& msg) {
    if (msg.message != WM_KEYDOWN || !hwnd_ || (msg.hwnd != hwnd_ && !IsChild(hwnd_, msg.hwnd))) return false;
    if (GetKeyState(VK_CONTROL) < 0 || GetKeyState(VK_MENU) < 0) return false;
    if (msg.wParam == VK_TAB) {
        // From the window itself (nothing focused yet) the first control is next.
        HWND from = msg.hwnd == hwnd_ ? nullptr : msg.hwnd;
        if (HWND to = GetNextDlgTabItem(hwnd_, from, GetKeyState(VK_SHIFT) < 0)) SetFocus(to);
        return true;
    }
    if (msg.wParam == VK_RETURN && msg.hwnd != hwnd_ && (SendMessageW(msg.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON)) {
        SendMessageW(msg.hwnd, BM_CLICK, 0, 0);
        return true;
    }
    return false;
}

void MainWindow::ShowDecoderWorkaround(bool on) {
    SetImageButtonLatched(GetDlgItem(hwnd_, IDC_MAIN_DECODER_WORKAROUND), on);
}

void MainWindow::ShowSongBlocks(bool on) {
    HWND view = blocks_.Handle();
    if (!view || on == ((GetWindowLongW(view, GWL_STYLE) & WS_VISIBLE) != 0)) return;
    ShowWindow(view, on ? SW_SHOWNA : SW_HIDE);
    Layout();
    events_->OnMoved();  // the docked list follows the new height
}

POINT MainWindow::SongMenuPoint() const {
    RECT r{};
    GetWindowRect(GetDlgItem(hwnd_, IDC_MAIN_SONG_MENU), &r);
    return {r.left, r.bottom};
}

void MainWindow::BringToFront() {
    ShowWindow(hwnd_, SW_SHOWNORMAL);
    SetForegroundWindow(hwnd_);
    BringWindowToTop(hwnd_);
}

}  // namespace lumora
