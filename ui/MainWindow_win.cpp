#include "ui/MainWindow_win.h"

#include <commctrl.h>
#include <shellapi.h>

#include "mediainfo/ListInfo.h"
#include "mediainfo/LyricsTiming.h"
#include "ports/FileSystem.h"
#include "platform/WinText_win.h"
#include "playback/TransportTexts.h"
#include "playback/VideoSizing.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "ui/ControlIds.h"
#include "ui/ImageButton_win.h"
#include "ui/InfoEditorDialog_win.h"
#include "ui/LyricsSettingsDialog_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr std::string_view kAssignLyricsTitle = "指定歌词文件";
constexpr std::string_view kAddToLibraryText = "添加文件到“我的音乐库”";

// The running instance looks for a second start's argument this often.
constexpr UINT_PTR kHandOffTimer = 3;
constexpr UINT kHandOffMs = 500;
// Position, texts and the end of a file; runs only while something plays.
constexpr UINT_PTR kProgressTimer = 1;
constexpr UINT kProgressMs = 250;
// The gradual volume change; runs only while the mixer moves toward the slider.
constexpr UINT_PTR kVolumeTimer = 2;
// The audio display; runs only while decoder 1 plays and the display is open.
constexpr UINT_PTR kDisplayTimer = 4;
constexpr UINT kDisplayMs = 60;

WNDPROC gTrackbarProc = nullptr;

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

ScreenExtent ScreenInTwips() {
    return {PixelsToTwipsX(GetSystemMetrics(SM_CXSCREEN)), PixelsToTwipsY(GetSystemMetrics(SM_CYSCREEN))};
}

HWND Label(HWND parent, int id, const wchar_t* text, int x, int y, int cx, int cy, DWORD align = SS_LEFT) {
    // SS_NOTIFY: the balloon help needs the label to see the mouse.
    HWND h =
        CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_NOTIFY | align, x, y, cx, cy,
                        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(h, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
    return h;
}

HWND Slider(HWND parent, int id, int x, int y, int cx, int cy, int low, int high, int pos) {
    HWND h = CreateWindowExW(0, TRACKBAR_CLASSW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBS_HORZ | TBS_NOTICKS, x, y,
                             cx, cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                             GetModuleHandleW(nullptr), nullptr);
    SendMessageW(h, TBM_SETRANGE, FALSE, MAKELPARAM(low, high));
    SendMessageW(h, TBM_SETPOS, TRUE, pos);
    return h;
}

bool IsDisplayControl(int id) {
    return id == IDC_MAIN_TITLE || id == IDC_MAIN_TIME || id == IDC_MAIN_PERCENT || id == IDC_MAIN_COMBINED ||
           id == IDC_MAIN_TAG_LINE;
}

}  // namespace

MainWindow::MainWindow(MainWindowServices services)
    : services_(services),
      queue_(services.prompts, services.files, *this, *this),
      decoder1_(services.files, acm_, waveOut_),
      player_({queue_, settings_, services.prompts, decoder2_, &decoder1_, volume_, *this,
               [] { return static_cast<double>(GetTickCount() % 1000003) / 1000003.0; }}),
      stream_(services.files),
      lists_(services.prompts, services.files, settings_, queue_, filterWindow_),
      defaultList_(services.prompts, services.files, settings_, queue_, lists_, filterWindow_),
      library_(services.prompts, services.files, services.rawRegistry, settings_, queue_, lists_, copyWindow_),
      lyrics_(services.files, *this) {}

void CopyLogWindow::Open(std::string_view header) {
    window_.Open(owner_, std::string(kAddToLibraryText));
    window_.AddLine(std::string(header));
}

MainWindow::~MainWindow() {
    if (hwnd_) DestroyWindow(hwnd_);
}

bool MainWindow::Create(const std::string& argument, const std::string& osCode) {
    osCode_ = osCode;
    if (!EnsureWindowClass(kMainClass, WndProc, Theme::BackgroundBrush())) return false;
    RECT r{0, 0, kClientWidth, kClientHeight};
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    AdjustWindowRectEx(&r, style, FALSE, WS_EX_ACCEPTFILES);
    hwnd_ =
        CreateWindowExW(WS_EX_ACCEPTFILES, kMainClass, Widen(kMainTitle).c_str(), style, CW_USEDEFAULT, CW_USEDEFAULT,
                        r.right - r.left, r.bottom - r.top, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    if (!hwnd_) return false;
    services_.prompts.SetOwner(hwnd_);
    LoadSequence(argument);
    return true;
}

LRESULT CALLBACK MainWindow::WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        auto* self = static_cast<MainWindow*>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
        self->hwnd_ = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    return self ? self->Handle(msg, wp, lp) : DefWindowProcW(hwnd, msg, wp, lp);
}

LRESULT MainWindow::Handle(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_CREATE:
            OnCreate();
            return 0;
        case WM_COMMAND:
            if (LOWORD(wp) == IDC_MAIN_SPEED && HIWORD(wp) == STN_DBLCLK) {
                player_.ResetSpeed();
            } else {
                OnCommand(LOWORD(wp));
            }
            return 0;
        case WM_HSCROLL:
            OnScroll(reinterpret_cast<HWND>(lp), LOWORD(wp));
            return 0;
        case WM_TIMER:
            OnTimer(wp);
            return 0;
        case WM_DROPFILES:
            OnDropFiles(reinterpret_cast<HDROP>(wp));
            return 0;
        case WM_CONTEXTMENU:
            OnContextMenu(static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp)));
            return 0;
        case WM_MOVE:
            playlist_.FollowOwner();
            return 0;
        case WM_DRAWITEM:
            DrawImageButton(*reinterpret_cast<DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_CTLCOLORSTATIC: {
            const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
            HDC dc = reinterpret_cast<HDC>(wp);
            if (IsDisplayControl(id)) return reinterpret_cast<LRESULT>(Theme::PaintDisplay(dc));
            SetTextColor(dc, Theme::kText);
            SetBkColor(dc, Theme::kBackground);
            return reinterpret_cast<LRESULT>(Theme::BackgroundBrush());
        }
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            RECT display{6, 6, kClientWidth - 6, kDisplayBottom};
            FillRect(dc, &display, Theme::DisplayBrush());
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_DESTROY:
            KillTimer(hwnd_, kHandOffTimer);
            KillTimer(hwnd_, kProgressTimer);
            KillTimer(hwnd_, kVolumeTimer);
            KillTimer(hwnd_, kDisplayTimer);
            PostQuitMessage(0);
            return 0;
        case WM_NCDESTROY: {
            const LRESULT rc = DefWindowProcW(hwnd_, msg, wp, lp);
            hwnd_ = nullptr;
            return rc;
        }
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

void MainWindow::OnCreate() {
    const MainDisplayTexts t;
    HWND title = Label(hwnd_, IDC_MAIN_TITLE, Widen(t.title).c_str(), 14, 12, 296, 26);
    SendMessageW(title, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::BigFont()), FALSE);
    Label(hwnd_, IDC_MAIN_TIME, Widen(t.time).c_str(), 318, 12, 90, 20, SS_RIGHT);
    CreateImageButton(hwnd_, IDC_MAIN_TIME_MODE, Widen(t.timeMode).c_str(), 414, 11, 36, 22);
    Label(hwnd_, IDC_MAIN_PERCENT, Widen(t.percent).c_str(), 318, 38, 90, 18, SS_RIGHT);
    Label(hwnd_, IDC_MAIN_COMBINED, L"", 14, 40, 296, 18);

    Slider(hwnd_, IDC_MAIN_PROGRESS, 6, 66, kClientWidth - 12, 24, 0, 1000, 0);

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
    Label(hwnd_, IDC_MAIN_SEGMENT_A, Widen(t.segmentA).c_str(), 360, 132, 46, 18);
    Label(hwnd_, IDC_MAIN_SEGMENT_B, Widen(t.segmentB).c_str(), 408, 132, 46, 18);

    Label(hwnd_, IDC_MAIN_VOLUME_LABEL, Widen(kVolumeLabel).c_str(), 8, 160, 30, 18);
    Slider(hwnd_, IDC_MAIN_VOLUME, 38, 156, 150, 24, 0, 20, 20);
    Label(hwnd_, IDC_MAIN_SPEED_LABEL, L"速度", 196, 160, 30, 18);
    HWND speed = Slider(hwnd_, IDC_MAIN_SPEED, 226, 156, 150, 24, 1, 200, 100);
    gTrackbarProc =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(speed, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SpeedSliderProc)));
    Label(hwnd_, IDC_MAIN_SEGMENT_RANGE, Widen(t.segmentRange).c_str(), 384, 160, 70, 18, SS_RIGHT);

    Label(hwnd_, IDC_MAIN_PREVIOUS_LABEL, L"", 8, 184, 220, 18, SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS);
    Label(hwnd_, IDC_MAIN_NEXT_LABEL, L"", 232, 184, 148, 18, SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS);
    CreateImageButton(hwnd_, IDC_MAIN_LIBRARY, L"音乐库", 384, 181, 70, 22);
    Label(hwnd_, IDC_MAIN_STATUS_LINE, Widen(t.statusLine).c_str(), 8, 206, kClientWidth - 16, 18);

    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, hwnd_,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_MAIN_STATUS)), GetModuleHandleW(nullptr),
                              nullptr);
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
    // Everything under the display moves down to make room for the tag line.
    for (HWND child = GetWindow(hwnd_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (child == status_) continue;
        RECT r;
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&r), 2);
        if (r.top >= 62) SetWindowPos(child, nullptr, r.left, r.top + kTagLineShift, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    Label(hwnd_, IDC_MAIN_TAG_LINE, Widen(StreamPanelTexts{}.title).c_str(), 14, 62, kClientWidth - 28, 18,
          SS_LEFTNOWORDWRAP);
    const int widths[] = {230, 350, -1};
    SendMessageW(status_, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(widths));
}

void MainWindow::LoadSequence(const std::string& argument) {
    playlist_.Create(*this, hwnd_);
    display_.Create(hwnd_);
    video_.Create(hwnd_);
    engine_.SetControls(&controls_);
    video_.onResize = [this](long width, long height) {
        if (engine_.Kind() == MediaKind::Flash || engine_.Kind() == MediaKind::MediaPlayer) controls_.Fit();
        if (engine_.Picture().width > 0)
            engine_.PlacePicture(reinterpret_cast<UINT_PTR>(video_.Handle()), PixelRect{0, 0, width, height});
    };
    decoder2_.SetVideoWindow(reinterpret_cast<UINT_PTR>(video_.Handle()));
    LoadSettings(settings_, services_.registry, ScreenInTwips());
    ApplyOsOverrides(settings_, osCode_);
    if (settings_.Number("Vol")) {
        const long long vol = *settings_.Number("Vol");
        SendDlgItemMessageW(hwnd_, IDC_MAIN_VOLUME, TBM_SETPOS, TRUE,
                            static_cast<LPARAM>(vol < 0    ? 0
                                                : vol > 20 ? 20
                                                           : vol));
    }
    if (tips_.Attach(hwnd_)) ApplyTips();
    playlist_.CreateInfoTip(settings_.IsOn("L22"));

    queue_.Clear();

    RestorePosition();
    playlist_.Restore(settings_, services_.registry);
    ShowWindow(hwnd_, SW_SHOW);
    if (settings_.IsOn("L57")) ShowWindow(playlist_.Handle(), SW_SHOWNOACTIVATE);
    UpdateWindow(hwnd_);

    if (argument.empty()) {
        defaultList_.LoadDefaultList();
    } else {
        OpenArgument(argument);
    }
    if (const auto alpha = ReadWindowOpacity(services_.ini, TransparentWindow::Main)) {
        SetWindowLongW(hwnd_, GWL_EXSTYLE, GetWindowLongW(hwnd_, GWL_EXSTYLE) | WS_EX_LAYERED);
        SetLayeredWindowAttributes(hwnd_, 0, static_cast<BYTE>(*alpha), LWA_ALPHA);
    }
    lineByteLimit_ =
        ParseLineByteLimit(services_.registry.ReadValueQuietly(kSetupKeyPath, kLineByteLimitValueName).text);
    lyrics_.SetLineByteLimit(lineByteLimit_);
    ReadLyricsLook();
    SetTimer(hwnd_, kHandOffTimer, kHandOffMs, nullptr);
}

void MainWindow::LyricsSettings() {
    LyricsSettingsDialog dialog;
    dialog.lineByteLimit = lineByteLimit_;
    dialog.look = lyricsLook_;
    if (!dialog.Run(hwnd_)) return;
    // Kept beside the options as text, numbers in decimal, like every other value of the setup key.
    const std::pair<std::string_view, std::string> values[] = {
        {kLineByteLimitValueName, std::to_string(dialog.lineByteLimit)},
        {"F8_BC", std::to_string(dialog.look.background)},
        {"F8_1_YY", std::to_string(dialog.look.current)},
        {"F8_2_YY", std::to_string(dialog.look.next)},
        {"F8_GcLab1", std::to_string(dialog.look.currentPoints)},
        {"F8_GcLab2", std::to_string(dialog.look.nextPoints)},
        {"F8_PicYN", dialog.look.usePicture ? "1" : "0"},
        {"F8_PicMi", dialog.look.stretchPicture ? "1" : "0"},
        {"F8_BPic", dialog.look.picturePath},
    };
    if (!services_.registry.CreateKey(kSetupKeyPath)) return;
    for (const auto& [name, value] : values) {
        if (!services_.registry.WriteValue(kSetupKeyPath, name, value)) return;
    }
    lineByteLimit_ = dialog.lineByteLimit;
    lyrics_.SetLineByteLimit(lineByteLimit_);
    lyricsLook_ = dialog.look;
    display_.SetLyricsLook(lyricsLook_);
}

void MainWindow::ReadLyricsLook() {
    // The lyrics window's look: "F8_BC" its background, "F8_1_YY" and "F8_2_YY" the colours of the
    // current and the next line (COLORREF values in decimal), "F8_GcLab1" and "F8_GcLab2" their sizes
    // in points (6 to 72); "F8_PicYN" "1" puts the picture "F8_BPic" behind them, stretched when
    // "F8_PicMi" is "1" and centred at its own size otherwise. A value missing or out of range keeps
    // the default look.
    AudioDisplayWindow::LyricsLook look;
    auto colour = [&](const char* name, COLORREF& into) {
        const auto n = ParseDecimal(services_.registry.ReadValueQuietly(kSetupKeyPath, name).text);
        if (n && *n >= 0 && *n <= 0xFFFFFF) into = static_cast<COLORREF>(*n);
    };
    auto points = [&](const char* name, int& into) {
        const auto n = ParseDecimal(services_.registry.ReadValueQuietly(kSetupKeyPath, name).text);
        if (n && *n >= 6 && *n <= 72) into = static_cast<int>(*n);
    };
    colour("F8_BC", look.background);
    colour("F8_1_YY", look.current);
    colour("F8_2_YY", look.next);
    points("F8_GcLab1", look.currentPoints);
    points("F8_GcLab2", look.nextPoints);
    look.usePicture = services_.registry.ReadValueQuietly(kSetupKeyPath, "F8_PicYN").text == "1";
    look.stretchPicture = services_.registry.ReadValueQuietly(kSetupKeyPath, "F8_PicMi").text != "0";
    look.picturePath = services_.registry.ReadValueQuietly(kSetupKeyPath, "F8_BPic").text;
    lyricsLook_ = look;
    display_.SetLyricsLook(look);
}

void MainWindow::ApplyTips() {
    const TransportTips t = MakeTransportTips(settings_, queue_.Queue(), modeSuffix_, false);
    const std::pair<int, const std::string*> tips[] = {
        {IDC_MAIN_PLAY, &t.play},
        {IDC_MAIN_STOP, &t.stop},
        {IDC_MAIN_PREVIOUS, &t.previous},
        {IDC_MAIN_NEXT, &t.next},
        {IDC_MAIN_BACK, &t.back},
        {IDC_MAIN_FORWARD, &t.forward},
        {IDC_MAIN_MODE_NORMAL, &t.modeNormal},
        {IDC_MAIN_MODE_LOOP, &t.modeLoop},
        {IDC_MAIN_MODE_RANDOM, &t.modeRandom},
        {IDC_MAIN_TIME_MODE, &t.timeMode},
        {IDC_MAIN_SEGMENT, &t.segment},
        {IDC_MAIN_PROGRESS, &t.progress},
        {IDC_MAIN_VOLUME, &t.volume},
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
        {IDC_MAIN_PREVIOUS_LABEL, &t.previous},
        {IDC_MAIN_NEXT_LABEL, &t.next},
        {IDC_MAIN_COMBINED, &t.neighbours},
        {IDC_MAIN_VOLUME_LABEL, &t.volume},
        {IDC_MAIN_SPEED_LABEL, &t.speed},
        {IDC_MAIN_STATUS_LINE, &t.statusLine},
    };
    for (const auto& [id, text] : tips) tips_.Set(GetDlgItem(hwnd_, id), *text);
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_LIBRARY), "加载“我的音乐库”");
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_TAG_LINE), "当前文件的标签信息：标题、歌手、专集、年代和其他");
    if (settings_.Text("L34") == "0") {
        tips_.SetColors(static_cast<COLORREF>(settings_.Number("L34B").value_or(0xE1FFFF)),
                        static_cast<COLORREF>(settings_.Number("L34F").value_or(0)));
    }
    tips_.Enable(settings_.IsOn("L31"));
}

void MainWindow::SetText(int id, const std::string& text) { SetDlgItemTextW(hwnd_, id, Widen(text).c_str()); }

void MainWindow::ShowTagLine() {
    // Set only when it changes: the progress timer asks four times a second.
    const std::wstring text = Widen(stream_.Texts().title);
    wchar_t now[512] = {};
    GetDlgItemTextW(hwnd_, IDC_MAIN_TAG_LINE, now, 512);
    if (text != now) SetDlgItemTextW(hwnd_, IDC_MAIN_TAG_LINE, text.c_str());
}

void MainWindow::ShowLines(const std::vector<std::string>& lines) { playlist_.SetLines(lines); }

void MainWindow::ShowTexts(const QueueTexts& texts) {
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Widen(texts.playingPanel).c_str()));
    SendMessageW(status_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(Widen(texts.positionPanel).c_str()));
    SendMessageW(status_, SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(Widen(texts.totalPanel).c_str()));
    SetText(IDC_MAIN_PREVIOUS_LABEL, texts.previousLabel);
    SetText(IDC_MAIN_NEXT_LABEL, texts.nextLabel);
    SetText(IDC_MAIN_COMBINED, texts.combinedLabel);
    SetText(IDC_MAIN_TITLE, texts.itemCaption);
    playlist_.SetCaption(texts.listCaption);
    ApplyTips();
}

void MainWindow::SelectLine(int index) { playlist_.Select(index); }

void MainWindow::Play(const std::string& path) { player_.OpenAndPlay(path); }

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
    SendDlgItemMessageW(hwnd_, IDC_MAIN_PROGRESS, TBM_SETPOS, TRUE, t.progress);
    SendDlgItemMessageW(hwnd_, IDC_MAIN_SPEED, TBM_SETPOS, TRUE, t.speed);
    EnableWindow(GetDlgItem(hwnd_, IDC_MAIN_BACK), t.backForwardEnabled);
    EnableWindow(GetDlgItem(hwnd_, IDC_MAIN_FORWARD), t.backForwardEnabled);
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_PROGRESS), t.progressLine.empty() ? std::string(kProgressTip) : t.progressLine);
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_SPEED), t.speedTip);
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_VOLUME), t.volumeTip);
    tips_.Set(GetDlgItem(hwnd_, IDC_MAIN_SEGMENT), t.segmentTip);
    UpdateTimers();
}

void MainWindow::ShowLyricsLines(std::string_view first, std::string_view second) {
    display_.SetLyrics(std::string(first), std::string(second));
}

void MainWindow::FileOpened(const std::string& path) {
    // "当正在播放的媒体文件装有“歌词”时，自动打开…" / "…没有“歌词”时，自动关闭“音频\歌词显示”窗口"
    if (lyrics_.Load(path)) {
        if (settings_.IsOn("L48")) display_.Show();
    } else if (settings_.IsOn("L49") && !player_.UsingDecoder1()) {
        ShowWindow(display_.Handle(), SW_HIDE);
    }
    stream_.Opened(path, player_.LengthMs());
    display_.SetStreamTexts(stream_.Texts());
    ShowTagLine();
    if (engine_.Kind() == MediaKind::Picture && !player_.UsingDecoder1()) {
        video_.ShowPicture(path);
        return;
    }
    video_.ClearPicture();
    if (engine_.Kind() == MediaKind::Flash || engine_.Kind() == MediaKind::MediaPlayer) {
        // The hosted control fills the video window; it is shown for a Flash movie and for
        // Windows Media with pictures (the Media Player control tells their width).
        const bool pictures =
            engine_.Kind() == MediaKind::Flash || controls_.NumberByName("ImageSourceWidth").value_or(0) > 0;
        if (pictures && !settings_.IsOn("L67")) video_.ShowAsIs();
        controls_.Fit();
        return;
    }
    const PixelRect picture = engine_.Picture();
    if (player_.UsingDecoder1() || picture.width <= 0 || picture.height <= 0) {
        // "当播放“音频”文件时自动关闭视频窗口"
        if (settings_.IsOn("L51")) video_.Hide();
        return;
    }
    display_.SetInfoLines(engine_.Info().lines);
    if (settings_.IsOn("L67")) return;  // "播放“视频”文件时不弹出视频窗口"
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const VideoPlacement place =
        PlaceVideo(picture.width, picture.height, work.right - work.left, work.bottom - work.top, settings_);
    switch (place.kind) {
        case VideoPlacement::Kind::FullScreen:
            video_.ShowFullScreen();
            break;
        case VideoPlacement::Kind::Size:
            video_.ShowSized(place.width, place.height);
            break;
        case VideoPlacement::Kind::Keep:
            video_.ShowAsIs();
            break;
    }
}

void MainWindow::UpdateTimers() {
    const bool progress = player_.IsPlaying();
    if (progress != progressTimerOn_) {
        progress ? SetTimer(hwnd_, kProgressTimer, kProgressMs, nullptr) : KillTimer(hwnd_, kProgressTimer);
        progressTimerOn_ = progress;
    }
    if (player_.UsingDecoder1() && player_.IsPlaying()) display_.Show();
    const bool display = player_.UsingDecoder1() && player_.IsPlaying() && display_.Visible();
    if (display != displayTimerOn_) {
        display ? SetTimer(hwnd_, kDisplayTimer, kDisplayMs, nullptr) : KillTimer(hwnd_, kDisplayTimer);
        displayTimerOn_ = display;
    }
    const bool volume = player_.VolumeChanging();
    if (volume != volumeTimerOn_) {
        // "L53": the delay between two steps, in 50 ms units.
        const UINT step = static_cast<UINT>(std::max<long long>(1, settings_.Number("L53").value_or(6)) * 50 / 6);
        volume ? SetTimer(hwnd_, kVolumeTimer, step, nullptr) : KillTimer(hwnd_, kVolumeTimer);
        volumeTimerOn_ = volume;
    }
}

void MainWindow::OnScroll(HWND slider, int code) {
    const int id = GetDlgCtrlID(slider);
    const int pos = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
    if (id == IDC_MAIN_VOLUME) {
        player_.SetVolume(pos);
    } else if (id == IDC_MAIN_SPEED && (code == TB_ENDTRACK || code == TB_THUMBPOSITION)) {
        player_.SetSpeed(pos);
    } else if (id == IDC_MAIN_PROGRESS && (code == TB_ENDTRACK || code == TB_THUMBPOSITION)) {
        player_.SeekToPermille(pos);
    } else if (id == IDC_MAIN_PROGRESS && code == TB_THUMBTRACK && settings_.IsOn("L68") && lyrics_.HasLyrics()) {
        // "…移动“时间进度条”时显示歌词进度": the lines follow the pointer while it is dragged.
        const long long length = player_.LengthMs();
        if (length > 0) lyrics_.Tick(length * pos / 1000 / 1000);
    }
}

void MainWindow::OpenArgument(const std::string& argument) {
    const auto path = ResolveArgument(argument, services_.files);
    if (!path) return;  // names nothing: silently not added
    pendingDropList_ = MakePendingDropList({*path});
    pendingDropCount_ = 1;
    const AddResult result = queue_.AddPending(ParsePendingDropList(pendingDropList_));
    pendingDropList_.clear();
    pendingDropCount_ = 0;
    TakeAddResult(result);
}

void MainWindow::TakeAddResult(const AddResult& result) {
    if (result.outcome == AddOutcome::ListFile) lists_.LoadListFile(result.listFile);
}

void MainWindow::OpenListFile() {
    const auto path =
        services_.prompts.AskOpenFileName("打开Lumora专用列表文件（*.QLB）", "QLB Lumora列表文件 (*.qlb)|*.qlb");
    if (path) lists_.LoadListFile(*path);
}

void MainWindow::OpenInfoEditor() {
    InfoEditorDialog dialog;
    const PlayQueue& queue = queue_.Queue();
    const auto lines = queue.Lines();
    for (int i = 1; i <= queue.Count(); ++i) {
        const MediaEntry* entry = queue.EntryAt(i);
        if (entry) dialog.files.push_back({lines[static_cast<size_t>(i - 1)], entry->path});
    }
    dialog.first = queue.Current() > 0 ? queue.Current() - 1 : (dialog.files.empty() ? -1 : 0);
    dialog.Run(hwnd_, services_.files);
    // What was saved may be the playing file's lyrics: read them again.
    if (const MediaEntry* playing = queue.EntryAt(queue.Current())) lyrics_.Load(playing->path);
}

void MainWindow::AssignLyrics() {
    const PlayQueue& queue = queue_.Queue();
    const MediaEntry* playing = queue.EntryAt(queue.Current());
    if (!playing) {
        services_.prompts.ShowMessage("当前没有文件播放，无法指定歌词文件。", kAssignLyricsTitle);
        return;
    }
    const auto lyrics = services_.prompts.AskOpenFileName("为当前播放的文件指定歌词文件",
                                                          "歌词文件 (*.qgc;*.lrc;*.smi)|*.qgc;*.lrc;*.smi");
    if (!lyrics) return;
    switch (AssignLyricsFile(services_.files, playing->path, *lyrics)) {
        case AssignResult::Assigned:
            lyrics_.Load(playing->path);
            break;
        case AssignResult::NotStorable:
            services_.prompts.ShowMessage("歌词文件的路径或媒体文件名含有无法保存的字符，无法指定。", kAssignLyricsTitle);
            break;
        case AssignResult::Failed:
            services_.prompts.ShowMessage("无法写入歌词记录文件 zvplaygc.ini。", kAssignLyricsTitle);
            break;
    }
}

void MainWindow::RemoveEntry(int index) { queue_.RemoveEntry(index); }
void MainWindow::MoveEntry(int index) { queue_.MoveEntry(index); }
void MainWindow::FindEntry() { queue_.FindFromCurrent(); }

void MainWindow::PlayEntry(int index) { player_.PlayEntry(index); }

std::string MainWindow::EntryInfo(int index) {
    const MediaEntry* entry = queue_.Queue().EntryAt(index);
    if (!entry) return {};
    // "文件列表框中直接截取媒体文件信息"
    return ListInfoTipFor(services_.files, entry->path, entry->name, settings_.IsOn("L29"));
}

void MainWindow::OnCommand(int id) {
    switch (id) {
        case IDC_MAIN_OPEN:
        case IDM_OPEN_FILES:
            TakeAddResult(queue_.AddFromOpenDialog());
            break;
        case IDM_OPEN_FOLDER:
            TakeAddResult(queue_.AddFromFolder());
            break;
        case IDM_OPEN_LIST:
            OpenListFile();
            break;
        case IDM_SAVE_LIST:
            lists_.SaveListFile();
            break;
        case IDM_DEFAULT_LIST_SAVE:
            defaultList_.SaveDefaultList();
            break;
        case IDM_DEFAULT_LIST_DELETE:
            defaultList_.DeleteDefaultList();
            break;
        case IDC_MAIN_LIBRARY:
        case IDM_LIBRARY_LOAD:
            library_.LoadLibrary();
            break;
        case IDM_LIBRARY_ADD_CURRENT:
            library_.AddCurrentToLibrary();
            break;
        case IDM_LIBRARY_ADD_ALL:
            library_.AddAllToLibrary();
            break;
        case IDM_LIBRARY_CHANGE:
            library_.ChangeLibraryFolder();
            break;
        case IDM_LIBRARY_DELETE:
            library_.DeleteLibrary();
            break;
        case IDM_MEDIA_INFO:
            OpenInfoEditor();
            break;
        case IDM_ASSIGN_LYRICS:
            AssignLyrics();
            break;
        case IDM_LYRICS_WINDOW:
            display_.Toggle();
            break;
        case IDM_LYRICS_SETTINGS:
            LyricsSettings();
            break;
        case IDC_MAIN_LIST:
        case IDM_SHOW_PLAYLIST:
            playlist_.Toggle();
            break;
        case IDM_EXIT:
            OnClose();
            break;
        case IDC_MAIN_PLAY:
            player_.PlayPause();
            break;
        case IDC_MAIN_STOP:
            player_.Stop();
            break;
        case IDC_MAIN_PREVIOUS:
            player_.Previous();
            break;
        case IDC_MAIN_NEXT:
            player_.Next();
            break;
        case IDC_MAIN_BACK:
            player_.Back();
            break;
        case IDC_MAIN_FORWARD:
            player_.Forward();
            break;
        case IDC_MAIN_MODE_NORMAL:
            player_.SetNormal();
            break;
        case IDC_MAIN_MODE_LOOP:
            player_.ToggleLoop();
            break;
        case IDC_MAIN_MODE_RANDOM:
            player_.SetRandom();
            break;
        case IDC_MAIN_TIME_MODE:
            player_.ToggleTimeMode();
            break;
        case IDC_MAIN_SEGMENT:
            player_.SegmentCommand();
            break;
        case IDC_MAIN_SEGMENT_A:
            player_.SetA();
            break;
        case IDC_MAIN_SEGMENT_B:
            player_.SetB();
            break;
        case IDC_MAIN_TIME:
        case IDM_JUMP_TO_TIME:
            player_.JumpToTime();
            break;
        default:
            break;
    }
}

void MainWindow::OnTimer(UINT_PTR id) {
    if (id == kProgressTimer) {
        player_.ProgressTick();
        if (const long long ms = player_.PositionMs(); ms >= 0) lyrics_.Tick(ms / 1000);
        stream_.Progress(player_.PositionMs());
        display_.SetStreamTexts(stream_.Texts());
        ShowTagLine();
        return;
    }
    if (id == kDisplayTimer) {
        display_.SetBands(SpectrumBands(decoder1_.SoundingPcm(), decoder1_.Channels(), decoder1_.SampleRate()));
        return;
    }
    if (id == kVolumeTimer) {
        player_.VolumeTick();
        UpdateTimers();
        return;
    }
    if (id != kHandOffTimer) return;
    const HandOffAction action = PollHandOff(services_.ini, settings_);
    if (action.open) OpenArgument(*action.open);
    if (action.bringToFront) {
        ShowWindow(hwnd_, SW_SHOWNORMAL);
        SetForegroundWindow(hwnd_);
        BringWindowToTop(hwnd_);
    }
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
    TakeAddResult(queue_.AddDropped(paths));
}

void MainWindow::OnContextMenu(int x, int y) {
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, IDM_OPEN_FILES, L"打开文件(&O)...");
    AppendMenuW(menu, MF_STRING, IDM_OPEN_FOLDER, L"打开文件夹(&F)...");
    AppendMenuW(menu, MF_STRING, IDM_OPEN_LIST, L"打开列表文件(&P)...");
    AppendMenuW(menu, MF_STRING, IDM_SAVE_LIST, L"保存列表文件(&S)...");
    AppendMenuW(menu, MF_STRING, IDM_JUMP_TO_TIME, L"直接播放(&T)...");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, IDM_DEFAULT_LIST_SAVE, L"“把当前列表设成默认列表”");
    AppendMenuW(menu, MF_STRING, IDM_DEFAULT_LIST_DELETE, L"删除当前默认列表");
    HMENU library = CreatePopupMenu();
    AppendMenuW(library, MF_STRING, IDM_LIBRARY_ADD_CURRENT, L"把当前正在播放的文件保存到‘我的音乐库’。");
    AppendMenuW(library, MF_STRING, IDM_LIBRARY_ADD_ALL, L"把当前所有文件保存到‘我的音乐库’");
    AppendMenuW(menu, MF_STRING, IDM_LIBRARY_LOAD, L"打开‘我的音乐库’");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(library), Widen(kAddToLibraryText).c_str());
    AppendMenuW(menu, MF_STRING, IDM_LIBRARY_CHANGE, L"更改“我的音乐库”的路径");
    AppendMenuW(menu, MF_STRING, IDM_LIBRARY_DELETE, L"删除“我的音乐库”");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, IDM_MEDIA_INFO, L"媒体信息编辑(&I)...");
    AppendMenuW(menu, MF_STRING, IDM_ASSIGN_LYRICS, L"为当前文件指定歌词文件...");
    AppendMenuW(menu, MF_STRING | (display_.Visible() ? MF_CHECKED : 0), IDM_LYRICS_WINDOW, kLyricsWindowCaption);
    AppendMenuW(menu, MF_STRING, IDM_LYRICS_SETTINGS, L"歌词显示设置...");
    AppendMenuW(menu, MF_STRING | (IsWindowVisible(playlist_.Handle()) ? MF_CHECKED : 0), IDM_SHOW_PLAYLIST,
                L"文件列表(&L)");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, IDM_EXIT, L"退出(&X)");
    if (x == -1 && y == -1) {
        RECT r;
        GetWindowRect(hwnd_, &r);
        x = r.left + 20;
        y = r.top + 40;
    }
    TrackPopupMenu(menu, TPM_RIGHTBUTTON, x, y, 0, hwnd_, nullptr);
    DestroyMenu(menu);
}

void MainWindow::RestorePosition() {
    RECT r;
    GetWindowRect(hwnd_, &r);
    int x, y;
    const auto top = settings_.Number("TOP");
    const auto left = settings_.Number("LEFT");
    if (top && left) {
        x = TwipsToPixelsX(*left);
        y = TwipsToPixelsY(*top);
    } else {
        RECT work;
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        x = work.left + ((work.right - work.left) - (r.right - r.left)) / 2;
        y = work.top + ((work.bottom - work.top) - (r.bottom - r.top)) / 2;
    }
    SetWindowPos(hwnd_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::SavePositions() {
    static constexpr std::string_view kLevels[] = {
        "HKEY_LOCAL_MACHINE\\SOFTWARE",
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\Tavrinsoft",
        kPlayerKeyPath,
        kSetupKeyPath,
    };
    for (const auto key : kLevels) {
        if (!services_.registry.CreateKey(key)) return;
    }
    WINDOWPLACEMENT wp{};
    wp.length = sizeof wp;
    GetWindowPlacement(hwnd_, &wp);  // the normal position, also while minimised
    const RECT& r = wp.rcNormalPosition;
    if (!services_.registry.WriteValue(kSetupKeyPath, "TOP", std::to_string(PixelsToTwipsY(r.top)))) return;
    if (!services_.registry.WriteValue(kSetupKeyPath, "LEFT", std::to_string(PixelsToTwipsX(r.left)))) return;
    // The video window keeps the place it was given; written back as loaded until it exists.
    for (const char* name : {"MovTOP", "MovLEFT", "MovH", "MovW"}) {
        if (const auto n = settings_.Number(name)) {
            if (!services_.registry.WriteValue(kSetupKeyPath, name, std::to_string(*n))) return;
        }
    }
    playlist_.Save(services_.registry);
}

void MainWindow::OnClose() {
    defaultList_.SaveDefaultListOnExit();  // only when "L56" asks for it
    SavePositions();
    engine_.CloseAll();
    DestroyWindow(hwnd_);
}

}  // namespace lumora
