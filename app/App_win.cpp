#include "app/App_win.h"

#include "playback/HeaderCheck.h"

#include <shlwapi.h>

#include <algorithm>
#include <utility>

#include "app/Startup.h"
#include "app/Version.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/ListInfo.h"
#include "platform/HandOff_win.h"
#include "platform/MessagePump_win.h"
#include "platform/WinText_win.h"
#include "playback/FrequencyBands.h"
#include "playback/TransportTexts.h"
#include "playback/VideoSizing.h"
#include "ports/FileSystem.h"
#include "settings/IniFiles.h"
#include "settings/OptionNames.h"
#include "settings/RegistryWrapper.h"
#include "settings/SongMenu.h"
#include "settings/TipOverrides.h"
#include "settings/WindowPlacement.h"
#include "ui/ControlIds.h"
#include "ui/Menu_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowClass_win.h"
#include "ui/WindowFade_win.h"

namespace lumora {
namespace {

ScreenDpi CurrentDpi() { return {ScreenDpiX(), ScreenDpiY()}; }

ScreenExtent ScreenInTwips() {
    return {PixelsToTwipsX(GetSystemMetrics(SM_CXSCREEN)), PixelsToTwipsY(GetSystemMetrics(SM_CYSCREEN))};
}

// Each monitor's work area: a window restored there is not under a taskbar.
BOOL CALLBACK AddMonitor(HMONITOR monitor, HDC, LPRECT, LPARAM list) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info)) {
        const RECT& r = info.rcWork;
        reinterpret_cast<std::vector<WindowRect>*>(list)->push_back({r.left, r.top, r.right, r.bottom});
    }
    return TRUE;
}

std::vector<WindowRect> Monitors() {
    std::vector<WindowRect> monitors;
    EnumDisplayMonitors(nullptr, nullptr, AddMonitor, reinterpret_cast<LPARAM>(&monitors));
    return monitors;
}

WindowRect RectOf(HWND hwnd) {
    WINDOWPLACEMENT wp{};
    wp.length = sizeof wp;
    GetWindowPlacement(hwnd, &wp);  // the normal place, also while minimised
    const RECT& r = wp.rcNormalPosition;
    return {r.left, r.top, r.right, r.bottom};
}

// Differs from one start to the next, even for two starts within one clock tick.
std::uint64_t RandomSeed() {
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    return (static_cast<std::uint64_t>(counter.QuadPart) * 0x9E3779B97F4A7C15ULL) ^
           (static_cast<std::uint64_t>(GetCurrentProcessId()) << 32) ^ GetTickCount();
}

TimeOfDay Now() {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return {t.wHour, t.wMinute, t.wSecond, t.wMilliseconds};
}

// Every control of the main window whose help a user may write in the INI file.
constexpr int kTipControls[] = {
    ids::IDC_MAIN_PLAY,        ids::IDC_MAIN_STOP,        ids::IDC_MAIN_PREVIOUS,      ids::IDC_MAIN_NEXT,
    ids::IDC_MAIN_BACK,        ids::IDC_MAIN_FORWARD,     ids::IDC_MAIN_MODE_NORMAL,   ids::IDC_MAIN_MODE_LOOP,
    ids::IDC_MAIN_MODE_RANDOM, ids::IDC_MAIN_TIME_MODE,   ids::IDC_MAIN_SEGMENT,       ids::IDC_MAIN_PROGRESS,
    ids::IDC_MAIN_VOLUME,      ids::IDC_MAIN_SPEED,       ids::IDC_MAIN_LIST,          ids::IDC_MAIN_OPEN,
    ids::IDC_MAIN_TITLE,       ids::IDC_MAIN_TIME,        ids::IDC_MAIN_PERCENT,       ids::IDC_MAIN_MODE,
    ids::IDC_MAIN_SEGMENT_A,   ids::IDC_MAIN_SEGMENT_B,   ids::IDC_MAIN_SEGMENT_RANGE, ids::IDC_MAIN_PREVIOUS_LABEL,
    ids::IDC_MAIN_NEXT_LABEL,  ids::IDC_MAIN_COMBINED,    ids::IDC_MAIN_VOLUME_LABEL,  ids::IDC_MAIN_VOLUME_MIN,
    ids::IDC_MAIN_VOLUME_MAX,  ids::IDC_MAIN_SPEED_LABEL, ids::IDC_MAIN_STATUS_LINE,   ids::IDC_MAIN_DECODER_WORKAROUND,
    ids::IDC_MAIN_LIBRARY,     ids::IDC_MAIN_TAG_LINE,
};

}  // namespace

App::App(AppServices services)
    : services_(services),
      queue_(services.prompts, services.files, *this, *this),
      decoder1_(services.files, acm_, waveOut_),
      player_({queue_, settings_, services.prompts, decoder2_, &decoder1_, *this, *this,
               SeededDraws(RandomSeed())}),
      stream_(services.files),
      lists_(services.prompts, services.files, settings_, queue_, filterWindow_),
      defaultList_(services.prompts, services.files, settings_, queue_, lists_, filterWindow_),
      library_(services.prompts, services.files, services.rawRegistry, settings_, queue_, lists_, copyWindow_),
      lyrics_(services.files, *this, settings_) {
    BuildCommands();
}

App::~App() {
    SetMessageFilter(nullptr);
    window_.Destroy();
}

bool App::Start(const std::string& argument, const std::string& osCode) {
    osCode_ = osCode;
    if (!window_.Create(*this)) return false;
    HWND main = window_.Handle();
    services_.prompts.SetOwner(main);
    playlist_.Create(*this, main);
    display_.Create(main);
    display_.onUserClose = [this] { displayClosedByUser_ = true; };
    video_.Create(main);
    engine_.SetControls(&controls_);
    video_.onResize = [this](long width, long height) {
        if (engine_.Kind() == MediaKind::Flash || engine_.Kind() == MediaKind::MediaPlayer) controls_.Fit();
        if (engine_.Picture().width > 0)
            engine_.PlacePicture(reinterpret_cast<UINT_PTR>(video_.Handle()), PixelRect{0, 0, width, height});
    };
    decoder2_.SetVideoWindow(reinterpret_cast<UINT_PTR>(video_.Handle()));
    decoder2_.SetHeadCheck([this](const std::string& path) { return FileHeadLooksSound(services_.files, path); });
    decoder2_.SetFiltersFirst([this] { return settings_.IsOn(opt::kDecoderWorkaround); });
    video_.onClose = [this] { WriteSetupValues(PlaceValues(kVideoWindowPlace, video_.Place(), CurrentDpi())); };
    LoadSettings(settings_, services_.registry, ScreenInTwips());
    ApplyOsOverrides(settings_, osCode_);
    if (const auto vol = settings_.Number(opt::kVolume)) {
        const int level = static_cast<int>(std::clamp(*vol, 0LL, 20LL));
        window_.SetVolumePosition(level);
        player_.RestoreVolume(level);
    }
    player_.RestoreTimeMode();
    window_.SetTipOverrides(LoadTipOverrides(services_.ini, kTipControls));
    OptionsChanged();  // what the windows take from the options
    SetMessageFilter([this](MSG& msg) { return FilterMessage(msg); });
    mediaControls_.Attach(main);

    queue_.Clear();

    ApplyTransparency(LoadWindowTransparency(services_.ini));
    RestorePositions();
    FadeIn(main, SW_SHOW);
    if (settings_.IsOn(opt::kListWindowAtStart)) FadeIn(playlist_.Handle());
    if (settings_.IsOn(opt::kVideoWindowAtStart)) video_.ShowAsIs();  // "启动时打开视频窗口"
    UpdateWindow(main);
    // "启动提示软件信息(气泡提示)": once the window stands.
    if (settings_.IsOn(opt::kStartupInfoBalloon)) {
        startupBalloonDue_ = true;
        SetTimerRunning(TimerId::StartupBalloon, true, kStartupBalloonDelayMs);
    }

    const long long startedMs = ThisProcessStartMs();
    if (argument == kSettingsArgument) {
        // "Lumora set" (the installer's last page, or the user) opens the file types to choose; once the main
        // window runs its message loop, so that the dialog is modal over it.
        PostMessageW(main, WM_COMMAND, ids::IDM_SETTINGS_FILE_TYPES, 0);
    } else if (!argument.empty() && settings_.Text(opt::kSamePlayer) == "1" &&
               (services_.handOffs.Collecting() || HandOffBatch::StartedTogether(startedMs, OtherLumoraStarts()))) {
        // Started together with others (one Explorer selection): this start's file opens with theirs.
        services_.handOffs.Receive({HandOffKind::Argument, GetCurrentProcessId(), startedMs, argument}, HandOffNowMs());
    } else if (argument.empty()) {
        defaultList_.LoadDefaultList();
    } else {
        OpenArgument(argument);
    }
    ApplyLyricsSettings(LoadLyricsDisplaySettings(services_.registry));
    HandOffArrived();
    return true;
}

void App::HandOffArrived() {
    if (window_.Handle()) SetTimerRunning(TimerId::HandOff, services_.handOffs.Collecting(), kHandOffIntervalMs);
}

void App::ApplyLyricsSettings(const LyricsDisplaySettings& settings) {
    lyricsSettings_ = settings;
    lyrics_.SetLineByteLimit(settings.lineByteLimit);
    display_.SetLyricsLook(settings.look);
}

void App::ApplyTransparency(const WindowTransparency& transparency) {
    SetWindowOpacity(window_.Handle(), transparency.AlphaOf(TransparentWindow::Main));
    SetWindowOpacity(playlist_.Handle(), transparency.AlphaOf(TransparentWindow::List));
    SetWindowOpacity(display_.Handle(), transparency.AlphaOf(TransparentWindow::Lyrics));
}

void App::ShowBubbles() {
    display_.SetBubbles(BubblesShown(settings_.IsOn(opt::kBubbles), settings_.IsOn(opt::kNoLyricsWindowBubbles),
                                     player_.IsPlaying() && !player_.UsingDecoder1()),
                        settings_.IsOn(opt::kColouredBubbles));
}

void App::ShowTips() {
    std::optional<std::pair<std::uint32_t, std::uint32_t>> colours;
    if (settings_.Text(opt::kDefaultBalloonColours) == "0") {
        colours.emplace(static_cast<std::uint32_t>(settings_.Number(opt::kBalloonBackColour).value_or(0xE1FFFF)),
                        static_cast<std::uint32_t>(settings_.Number(opt::kBalloonTextColour).value_or(0)));
    } else {
        // The tips' own colours, the system's: also after the user's colours were switched off.
        colours.emplace(GetSysColor(COLOR_INFOBK), GetSysColor(COLOR_INFOTEXT));
    }
    window_.ShowTips(MakeTransportTips(settings_, queue_.Queue(), player_.Texts(), player_.FilePlays(), pointerMs_),
                     colours, true);
    display_.ShowTips(MakeDisplayTips(settings_), colours->first, colours->second);
}

void App::RefreshTips() {
    window_.SetTips(MakeTransportTips(settings_, queue_.Queue(), player_.Texts(), player_.FilePlays(), pointerMs_));
}

// The presenter side of the controllers' views.

void App::SetLevel(int level) {
    decoder1_.SetVolume(level);
    decoder2_.SetVolume(level);
}

void App::ShowLines(const std::vector<std::string>& lines) {
    playlist_.SetLines(lines);
    ShowSongBlocks();
}

void App::ShowTexts(const QueueTexts& texts) {
    window_.ShowQueueTexts(texts);
    ShowSongBlocks();
    playlist_.SetCaption(texts.listCaption);
    RefreshTips();
    UpdateTrayIcon();  // its tip names the playing file
}

void App::SelectLine(int index) { playlist_.Select(index); }

void App::Play(const std::string& path) { player_.OpenAndPlay(path); }

void App::ShowPlayback(const PlaybackTexts& texts) {
    window_.ShowPlayback(texts);
    const bool paused = !player_.IsPlaying() && player_.FilePlays();
    using Bar = TaskbarButton::State;
    taskbar_.Show(player_.IsPlaying() ? Bar::Playing : paused ? Bar::Paused : Bar::Idle, texts.progress);
    using Controls = SystemMediaControls::Status;
    mediaControls_.ShowStatus(player_.IsPlaying()          ? Controls::Playing
                              : paused                     ? Controls::Paused
                              : queue_.Queue().Count() > 0 ? Controls::Stopped
                                                           : Controls::Closed);
    RefreshTips();
    UpdateTimers();
    ShowBubbles();
    screenSaver_.Update(player_.IsPlaying());
}

void App::KeepDisplayOn(bool on) {
    // Only ES_CONTINUOUS clears what the thread asked for: the system's idle timers run again.
    SetThreadExecutionState(on ? ES_CONTINUOUS | ES_DISPLAY_REQUIRED : ES_CONTINUOUS);
    window_.RefuseScreenSaver(on);
    video_.refuseScreenSaver = on;
}

void App::ToggleDecoderWorkaround() {
    // "0" or "1" only, whatever the key held; from the next file on.
    if (WriteOptionNow(settings_, services_.registry, opt::kDecoderWorkaround,
                       settings_.IsOn(opt::kDecoderWorkaround) ? "0" : "1")) {
        window_.ShowDecoderWorkaround(settings_.IsOn(opt::kDecoderWorkaround));
        RefreshTips();  // the button's tip tells the state
    }
}

void App::OptionsChanged() {
    // "“主窗体”在最前面" and "“列表/音频显示框”在最前面".
    const auto keepOnTop = [](HWND window, bool on) {
        SetWindowPos(window, on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    };
    keepOnTop(window_.Handle(), settings_.IsOn(opt::kMainWindowTopmost));
    keepOnTop(playlist_.Handle(), settings_.IsOn(opt::kListWindowTopmost));
    keepOnTop(display_.Handle(), settings_.IsOn(opt::kListWindowTopmost));
    window_.ShowDecoderWorkaround(settings_.IsOn(opt::kDecoderWorkaround));
    ApplyLooks();
    SetWindowFades(!settings_.IsOn(opt::kNoWindowFades));
    ShowBubbles();
    ShowTips();
    playlist_.CreateInfoTip(settings_.IsOn(opt::kClassicListTips));
    screenSaver_.Update(player_.IsPlaying());
    UpdateTimers();
    window_.ShowSongBlocks(settings_.IsOn(opt::kModuleSongMenu));
    ShowSongBlocks();
    if (settings_.IsOn(opt::kMediaKeysAlways)) {
        hotKeys_.Hold(window_.Handle());
    } else {
        hotKeys_.Release();
    }
    UpdateTrayIcon();
    ArmChime();
}

void App::UpdateTrayIcon() {
    HWND main = window_.Handle();
    if (!main) return;
    if (!settings_.IsOn(opt::kTrayIcon)) {
        tray_.Remove();
        if (!IsWindowVisible(main)) ShowMainWindow();  // never left without a way back
        return;
    }
    const MediaEntry* playing = queue_.Queue().CurrentEntry();
    const std::wstring tip = Widen(TrayTipText(ids::kMainTitle, playing ? playing->name : std::string()));
    if (tray_.Shown()) {
        tray_.SetTip(tip);
    } else {
        tray_.Show(main, tip);  // may fail while the shell has no notification area: TaskbarCreated retries
    }
}

void App::ArmChime(bool justChimed) {
    if (!window_.Handle()) return;
    SetTimerRunning(TimerId::Chime, false, 0);
    if (settings_.IsOn(opt::kHourlyChime)) SetTimerRunning(TimerId::Chime, true, MsToNextHour(Now(), justChimed));
}

void App::ShowBalloon(const BalloonText& balloon) {
    if (startupBalloonDue_ || nextBalloon_) {
        nextBalloon_ = balloon;  // the latest waits; it shows after the start-up balloon
        return;
    }
    PointBalloon(balloon);
}

void App::PointBalloon(const BalloonText& balloon) {
    HWND main = window_.Handle();
    std::optional<POINT> at;
    switch (PlaceBalloon(tray_.Shown(), IsWindowVisible(main) != FALSE, IsIconic(main) != FALSE)) {
        case BalloonPlace::MainWindow:
            break;  // the window's own place
        case BalloonPlace::TrayIcon:
            if ((at = tray_.Anchor())) break;
            [[fallthrough]];
        case BalloonPlace::ScreenCorner: {
            RECT work{};
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
            at = POINT{work.right - GetSystemMetrics(SM_CXSMICON) * 2, work.bottom};
            break;
        }
    }
    window_.ShowBalloon(at, balloon.title, balloon.text, kBalloonShowMs);
}

void App::ApplyLooks() {
    const SkinLook look = LookWithUserColours(Theme::BuiltInLook(SkinFor(settings_.Number(opt::kSkin))), settings_,
                                              [](int index) { return static_cast<SkinColour>(GetSysColor(index)); });
    if (Theme::Apply(look)) {
        window_.Restyle();
        playlist_.Restyle();
        display_.Restyle();
    }
    window_.ShowQuickButtons(settings_.IsOn(opt::kShortcutButtons));
    window_.SetRunningTextSpeed(settings_.Number(opt::kRunningTextSpeed));
    window_.SetColouredProgress(settings_.IsOn(opt::kColouredProgress));
    // The menus' colours follow the skin unless the user chose their own.
    menuLook_.flat = menuLook_.flat || settings_.IsOn(opt::kXpMenus);
    menuLook_.colours = ChooseMenuColours(settings_, Theme::Panel(), Theme::Text(), Theme::ButtonHot());
    window_.SetMenuLook(menuLook_);
    playlist_.SetMenuLook(menuLook_);
}

void App::ChooseSkin(int value) {
    if (WriteOptionNow(settings_, services_.registry, opt::kSkin, std::to_string(value))) ApplyLooks();
}

void App::ShowSongMenu(bool fromButton) {
    POINT at = window_.SongMenuPoint();
    if (!fromButton) GetCursorPos(&at);
    const PlayQueue& queue = queue_.Queue();
    TrackSongMenu(window_.Handle(), queue.Lines(), queue.Current(), ids::kFirstSongCommand, at.x, at.y, menuLook_,
                  SongMenuOptionsFrom(settings_));
}

void App::ShowSongBlocks() {
    if (settings_.IsOn(opt::kModuleSongMenu)) window_.SetSongBlocks(queue_.Queue().Lines(), queue_.Queue().Current());
}

void App::ShowLyricsLines(std::string_view first, std::string_view second) {
    display_.SetLyrics(std::string(first), std::string(second));
}

void App::FileClosed() {
    stream_.Reset();
    display_.SetStreamTexts(stream_.Texts());
    window_.ShowTagLine(stream_.Texts().title);
}

void App::FileOpened(const std::string& path) {
    displayClosedByUser_ = false;
    pointerMs_.reset();  // a time of the last file
    UpdateTimers();
    // "当正在播放的媒体文件装有“歌词”时，自动打开…" / "…没有“歌词”时，自动关闭“音频\歌词显示”窗口"
    if (lyrics_.Load(path)) {
        if (settings_.IsOn(opt::kAutoOpenLyricsWindow)) display_.Show();
    } else if (settings_.IsOn(opt::kAutoCloseLyricsWindow) && !player_.UsingDecoder1()) {
        display_.Hide();
    }
    stream_.Opened(path, player_.LengthMs(), settings_.IsOn(opt::kRepairMediaInfo));
    // The system's media controls show the tag's title and artist; a file without a title shows its name.
    const Id3v1Tag tag = stream_.Tag().value_or(Id3v1Tag{});
    const std::string fileName = path.substr(path.find_last_of('\\') + 1);
    mediaControls_.ShowFile(tag.title.empty() ? fileName : tag.title, tag.artist);
    // "播放信息(气泡提示)"
    if (settings_.IsOn(opt::kPlayInfoBalloon)) {
        ShowBalloon(PlayingBalloon(fileName, tag.title, tag.artist, player_.LengthMs()));
    }
    display_.SetStreamTexts(stream_.Texts());
    window_.ShowTagLine(stream_.Texts().title);

    const MediaKind kind = engine_.Kind();
    const PixelRect picture = engine_.Picture();
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    VideoFacts facts;
    facts.kind = kind;
    facts.decoder1 = player_.UsingDecoder1();
    facts.pictureWidth = picture.width;
    facts.pictureHeight = picture.height;
    facts.hostedHasPictures =
        kind == MediaKind::Flash ||
        (kind == MediaKind::MediaPlayer && controls_.NumberByName("ImageSourceWidth").value_or(0) > 0);
    facts.workWidth = work.right - work.left;
    facts.workHeight = work.bottom - work.top;
    const VideoPresentation show = PresentVideo(facts, settings_);

    if (show.content == VideoPresentation::Content::StillPicture) {
        video_.ShowPicture(path);
        return;
    }
    video_.ClearPicture();
    if (show.hideWindow) video_.Hide();
    if (show.showInfoLines) display_.SetInfoLines(engine_.Info().lines);
    if (show.place) {
        switch (show.place->kind) {
            case VideoPlacement::Kind::FullScreen: video_.ShowFullScreen(); break;
            case VideoPlacement::Kind::Size: video_.ShowSized(show.place->width, show.place->height); break;
            case VideoPlacement::Kind::Keep: video_.ShowAsIs(); break;
        }
    }
    if (show.content == VideoPresentation::Content::HostedControl) controls_.Fit();
}

// Timers: only those with work to do run.

void App::SetTimerRunning(TimerId id, bool on, unsigned intervalMs) {
    const unsigned bit = 1u << static_cast<unsigned>(id);
    if (on == ((runningTimers_ & bit) != 0)) return;
    if (on) {
        SetTimer(window_.Handle(), static_cast<UINT_PTR>(id), intervalMs, nullptr);
        runningTimers_ |= bit;
    } else {
        KillTimer(window_.Handle(), static_cast<UINT_PTR>(id));
        runningTimers_ &= ~bit;
    }
}

void App::UpdateTimers() {
    TimerInputs in;
    in.playing = player_.IsPlaying();
    in.decoder1 = player_.UsingDecoder1();
    in.displayShown = display_.Visible();
    in.volumeChanging = player_.VolumeChanging();
    in.volumeStepSetting = settings_.Number(opt::kVolumeFadeDelay);
    in.displayClosedByUser = displayClosedByUser_;
    const TimerPlan plan = PlanTimers(in);
    if (plan.openDisplay) display_.Show();
    SetTimerRunning(TimerId::Progress, plan.progress, kProgressIntervalMs);
    SetTimerRunning(TimerId::Display, plan.display, kDisplayIntervalMs);
    SetTimerRunning(TimerId::Volume, plan.volume, plan.volumeIntervalMs);
}

void App::OnTimer(unsigned id) {
    // Inside nested work (a list filter, a library copy, another program) neither the next file nor a
    // second start's argument may begin: they wait for their next tick.
    if (IsBusy() && (static_cast<TimerId>(id) == TimerId::Progress || static_cast<TimerId>(id) == TimerId::HandOff)) {
        return;
    }
    switch (static_cast<TimerId>(id)) {
        case TimerId::Progress:
            player_.ProgressTick();
            if (const long long ms = player_.PositionMs(); ms >= 0) lyrics_.Tick(ms);
            stream_.Progress(player_.PositionMs());
            display_.SetStreamTexts(stream_.Texts());
            window_.ShowTagLine(stream_.Texts().title);
            return;
        case TimerId::Display:
            display_.SetBands(SpectrumBands(decoder1_.SoundingPcm(), decoder1_.Channels(), decoder1_.SampleRate()));
            return;
        case TimerId::Volume:
            player_.VolumeTick();
            UpdateTimers();
            return;
        case TimerId::HandOff:
            if (const auto action = services_.handOffs.Ready(HandOffNowMs(), settings_, OtherLumoraStarts())) {
                TakeHandOff(*action);
            }
            HandOffArrived();
            return;
        case TimerId::StartupBalloon:
            SetTimerRunning(TimerId::StartupBalloon, false, 0);
            startupBalloonDue_ = false;
            PointBalloon(StartupBalloon(ids::kMainTitle, kVersionText));
            if (nextBalloon_) SetTimerRunning(TimerId::NextBalloon, true, kNextBalloonDelayMs);
            return;
        case TimerId::NextBalloon:
            SetTimerRunning(TimerId::NextBalloon, false, 0);
            if (const auto next = std::exchange(nextBalloon_, std::nullopt)) PointBalloon(*next);
            return;
        case TimerId::Chime:
            ShowBalloon(ChimeBalloon(ChimeHour(Now())));
            ArmChime(true);
            return;
    }
}

// What the user does in the main window.

void App::OnSpeedReset() { player_.ResetSpeed(); }

void App::OnSlider(int id, SliderMove move, int pos) {
    if (id == ids::IDC_MAIN_VOLUME) {
        player_.SetVolume(pos);
    } else if (id == ids::IDC_MAIN_SPEED && move == SliderMove::Released) {
        player_.SetSpeed(pos);
    } else if (id == ids::IDC_MAIN_PROGRESS && move == SliderMove::Released) {
        player_.SeekToPermille(pos);
    } else if (id == ids::IDC_MAIN_PROGRESS && move == SliderMove::Dragging && settings_.IsOn(opt::kLyricsWhileSeeking) &&
               lyrics_.HasLyrics()) {
        // "…移动“时间进度条”时显示歌词进度": the lines follow the pointer while it is dragged.
        const long long length = player_.LengthMs();
        if (length > 0) lyrics_.Tick(length * pos / 1000);
    }
}

void App::OnDropFiles(const std::vector<std::string>& paths) { TakeAddResult(queue_.AddDropped(paths)); }

void App::OnMoved() { playlist_.FollowOwner(); }

void App::OnCloseRequest() { Close(); }

void App::OnTaskbarButton() {
    taskbar_.Attach(window_.Handle());
    if (!settings_.IsOn(opt::kTrayIcon)) return;
    // Explorer (re)started: the icon comes back; a window hidden behind an icon that cannot come back shows.
    tray_.Show(window_.Handle(), tray_.Tip());
    if (!tray_.Shown() && !IsWindowVisible(window_.Handle())) ShowMainWindow();
}

// "“最小化到任务拦”": minimised, the main window lives on as the notification-area icon only, when there is one.
void App::OnMinimized() {
    if (!settings_.IsOn(opt::kTrayIcon)) return;
    if (!tray_.Shown()) UpdateTrayIcon();
    if (tray_.Shown()) ShowWindow(window_.Handle(), SW_HIDE);
}

void App::OnTrayIcon(UINT mouseMessage) {
    if (mouseMessage == WM_LBUTTONUP || mouseMessage == WM_LBUTTONDBLCLK) {
        ShowMainWindow();
    } else if (mouseMessage == WM_RBUTTONUP || mouseMessage == WM_CONTEXTMENU) {
        // The menu closes when the user clicks elsewhere only if its window is in front.
        SetForegroundWindow(window_.Handle());
        POINT at{};
        GetCursorPos(&at);
        TrackMenu(window_.Handle(), TrayMenu(), at.x, at.y, menuLook_);
        PostMessageW(window_.Handle(), WM_NULL, 0, 0);
    }
}

void App::OnProgressPointer(int permille) {
    const long long length = player_.LengthMs();
    pointerMs_ = length > 0 ? std::optional<long long>(length * permille / 1000) : std::nullopt;
    RefreshTips();
}

void App::ShowMainWindow() {
    HWND main = window_.Handle();
    ShowWindow(main, IsIconic(main) || !IsWindowVisible(main) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(main);
}

void App::OpenArgument(const std::string& argument) {
    const auto path = ResolveArgument(argument, services_.files);
    if (!path) return;  // names nothing: silently not added
    TakeAddResult(queue_.AddPending({*path}));
}

void App::TakeHandOff(const HandOffAction& action) {
    std::vector<std::string> paths;
    for (const auto& argument : action.open) {
        if (argument == kSettingsArgument) PostMessageW(window_.Handle(), WM_COMMAND, ids::IDM_SETTINGS_FILE_TYPES, 0);
        if (auto path = ResolveArgument(argument, services_.files)) paths.push_back(std::move(*path));
    }
    // In name order, as Explorer lists the files the user selected.
    const auto nameOf = [](const std::string& path) { return Widen(path.substr(path.find_last_of('\\') + 1)); };
    std::stable_sort(paths.begin(), paths.end(), [&](const std::string& a, const std::string& b) {
        return StrCmpLogicalW(nameOf(a).c_str(), nameOf(b).c_str()) < 0;
    });
    if (!paths.empty()) TakeAddResult(queue_.AddPending(paths));
    if (action.bringToFront) window_.BringToFront();
}

void App::TakeAddResult(const AddResult& result) {
    if (result.outcome == AddOutcome::ListFile) lists_.LoadListFile(result.listFile);
}

std::string App::EntryInfo(int index) {
    const MediaEntry* entry = queue_.Queue().EntryAt(index);
    if (!entry) return {};
    // "“文件列表框使用“经典”提示文本”": the entry's whole line and where the file is, in a plain tip.
    if (settings_.IsOn(opt::kClassicListTips)) return ClassicListTip(ListLine(index, entry->name), entry->path);
    // "文件列表框中直接截取媒体文件信息"
    return ListInfoTipFor(services_.files, entry->path, entry->name, settings_.IsOn(opt::kListReadsMediaInfo),
                          settings_.IsOn(opt::kRepairMediaInfo));
}

// Places between runs.

void App::RestorePositions() {
    HWND main = window_.Handle();
    const WindowRect now = RectOf(main);
    const auto fromSettings = [&](std::string_view name) { return settings_.Number(name); };
    const auto monitors = Monitors();
    if (const auto kept = KeptPlace(kMainWindowPlace, fromSettings, CurrentDpi(), monitors, now)) {
        SetWindowPos(main, nullptr, static_cast<int>(kept->left), static_cast<int>(kept->top), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    } else {
        RECT work;
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        const int x = work.left + static_cast<int>(((work.right - work.left) - now.Width()) / 2);
        const int y = work.top + static_cast<int>(((work.bottom - work.top) - now.Height()) / 2);
        SetWindowPos(main, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    const auto fromRegistry = [&](std::string_view name) {
        return ParseDecimal(services_.registry.ReadValue(kSetupKeyPath, name));
    };
    const auto listKept = KeptPlace(kPlaylistWindowPlace, fromRegistry, CurrentDpi(), monitors);
    playlist_.Restore(listKept, StartListDock(settings_.Number(opt::kListWindowPlace), listKept, RectOf(main)));
    video_.Restore(KeptPlace(kVideoWindowPlace, fromSettings, CurrentDpi(), monitors));
    const auto fromIni = [&](std::string_view name) {
        return ParseDecimal(services_.ini.Read(kPlayerIniFile, kWindowPlaceSection, name));
    };
    display_.Restore(KeptPlace(kLyricsWindowPlace, fromIni, CurrentDpi(), monitors, RectOf(display_.Handle())));
}

bool App::WriteSetupValues(const std::vector<std::pair<std::string_view, std::string>>& values) {
    for (const auto key : kSetupKeyLevels) {
        if (!services_.registry.CreateKey(key)) return false;
    }
    for (const auto& [name, text] : values) {
        if (!services_.registry.WriteValue(kSetupKeyPath, name, text)) return false;
    }
    return true;
}

void App::SavePositions() {
    auto values = PlaceValues(kMainWindowPlace, RectOf(window_.Handle()), CurrentDpi());
    for (auto& value : PlaceValues(kVideoWindowPlace, video_.Place(), CurrentDpi())) values.push_back(std::move(value));
    values.emplace_back(opt::kVolume, std::to_string(player_.Texts().volume));
    for (auto& value : PlaceValues(kPlaylistWindowPlace, playlist_.Place(), CurrentDpi())) {
        values.push_back(std::move(value));
    }
    WriteSetupValues(values);
    if (display_.HasPlace()) {
        for (const auto& [name, text] : PlaceValues(kLyricsWindowPlace, RectOf(display_.Handle()), CurrentDpi())) {
            services_.ini.Write(kPlayerIniFile, kWindowPlaceSection, name, text);
        }
    }
}

void App::Close() {
    defaultList_.SaveDefaultListOnExit();  // only when "L56" asks for it
    SavePositions();
    FadeOutNow({display_.Handle(), playlist_.Handle(), window_.Handle()});
    hotKeys_.Release();
    tray_.Remove();
    engine_.CloseAll();
    screenSaver_.Update(false);
    window_.Destroy();
    closed_ = true;
}

}  // namespace lumora
