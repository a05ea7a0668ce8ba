#pragma once
// The composition root: owns the services' users (settings, controllers, decoders, windows) for the
// program's lifetime and wires them. It presents the controllers' state in the windows and turns what
// the user does into the controllers' operations; the windows only draw and forward.
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "app/Commands.h"
#include "app/HandOff.h"
#include "app/KeyMap.h"
#include "app/Notices.h"
#include "app/TimerPlan.h"
#include "mediainfo/LyricsDisplay.h"
#include "mediainfo/LyricsLook.h"
#include "platform/Audio_win.h"
#include "platform/ControlHost_win.h"
#include "platform/Mci_win.h"
#include "playback/EngineDecoder.h"
#include "playback/MediaEngine.h"
#include "playback/Mp3Player.h"
#include "playback/PlaybackController.h"
#include "playback/ScreenSaverGuard.h"
#include "playback/StreamPanelFeed.h"
#include "playlist/DefaultList.h"
#include "playlist/ListFileController.h"
#include "playlist/MusicLibrary.h"
#include "playlist/QueueController.h"
#include "settings/IniFiles.h"
#include "settings/SettingsStore.h"
#include "ui/AudioDisplayWindow_win.h"
#include "ui/MainWindow_win.h"
#include "ui/MediaKeys_win.h"
#include "ui/PlaylistWindow_win.h"
#include "ui/ProgressWindow_win.h"
#include "ui/TaskbarButton_win.h"
#include "ui/TrayIcon_win.h"
#include "ui/VideoWindow_win.h"

namespace lumora {

class FileSystem;
class IniFiles;
class Registry;
class RegistryWrapper;
class WinPrompts;

struct AppServices {
    FileSystem& files;
    IniFiles& ini;
    RegistryWrapper& registry;
    WinPrompts& prompts;
    Registry& rawRegistry;  // for values kept as plain strings (the music library's folder)
    HandOffBatch& handOffs;  // what other starts hand over, collected from the program's first moment
    // The machine's own registry, where file types are registered also by a portable copy, on request.
    Registry& systemRegistry;
    // A portable copy's registry file (settings/FileRegistry.h); empty for an installed Lumora.
    std::string portableRegistryFile;
};

class App final : QueueView,
                  QueuePlayer,
                  PlaybackView,
                  LyricsView,
                  MainWindowEvents,
                  PlaylistCommands,
                  VolumeControl,
                  DisplayPower {
public:
    explicit App(AppServices services);
    ~App() override;
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    // Creates the windows, loads the options and opens the argument; `osCode` as start-up found it.
    bool Start(const std::string& argument, const std::string& osCode);
    // The main window has been closed: the message loop ends even when the quit message it posted was
    // taken by a message loop of the system's (one of Wine's media components does so now and then).
    bool Closed() const { return closed_; }
    // Another start has sent a message to the hand-off batch.
    void HandOffArrived();

private:
    // QueueView
    void ShowLines(const std::vector<std::string>& lines) override;
    void ShowTexts(const QueueTexts& texts) override;
    void SelectLine(int index) override;
    // QueuePlayer
    void Play(const std::string& path) override;
    // PlaybackView
    void ShowPlayback(const PlaybackTexts& texts) override;
    void FileOpened(const std::string& path) override;
    void FileClosed() override;
    // VolumeControl: the level goes to both decoders' own sound, which every system applies.
    void SetLevel(int level) override;
    // DisplayPower: the thread's execution state keeps the display on from Windows 2000 on (it ends with
    // the process), and the windows refuse the screen saver's command, which XP starts regardless.
    void KeepDisplayOn(bool on) override;
    // LyricsView
    void ShowLyricsLines(std::string_view first, std::string_view second) override;
    // MainWindowEvents
    void OnCommand(int id) override;
    void OnSpeedReset() override;
    void OnSlider(int id, SliderMove move, int position) override;
    void OnTimer(unsigned id) override;
    void OnDropFiles(const std::vector<std::string>& paths) override;
    std::vector<MenuLine> ContextMenu() override;
    void OnMoved() override;
    void OnCloseRequest() override;
    bool OnAppCommand(int appCommand) override;
    void OnTaskbarButton() override;
    void OnMinimized() override;
    void OnTrayIcon(UINT mouseMessage) override;
    void OnProgressPointer(int permille) override;
    // The main window back from the notification area or from its button, in front.
    void ShowMainWindow();
    // "“最小化到任务拦”": the icon while the option is on, and its tip.
    void UpdateTrayIcon();
    std::vector<MenuLine> TrayMenu();
    // A balloon of tooltip.dll where the window's state puts it (app/Notices.h); one that comes while the
    // start-up balloon is due waits for it.
    void ShowBalloon(const BalloonText& balloon);
    void PointBalloon(const BalloonText& balloon);
    // "整点报时(气泡提示)": one timer, due at the next full hour, while the option is on.
    void ArmChime(bool justChimed = false);
    // PlaylistCommands
    std::vector<MenuLine> PlaylistMenu() override;
    void RunCommand(int id) override;
    std::string EntryInfo(int index) override;

    // The command table and its actions (AppCommands_win.cpp).
    void BuildCommands();
    UiState CurrentUiState() const;
    // The keyboard (AppCommands_win.cpp): a key the table has runs its command's entry of the table.
    bool FilterMessage(MSG& msg);
    void RunKeyCommand(KeyCommand command);
    std::vector<MenuLine> WithKeys(std::vector<MenuLine> lines) const;
    // As the volume slider moved by one step.
    void StepVolume(int step);
    void OpenArgument(const std::string& argument);
    void TakeHandOff(const HandOffAction& action);
    void TakeAddResult(const AddResult& result);
    void OpenListFile();
    void OpenInfoEditor();
    void AssignLyrics();
    void EditLyricsSettings();
    // The settings dialog "功能与设置"; "确定" saves the options, and those the windows took at start show at once.
    enum class SettingsPageChoice { First, FileTypes };
    void OpenSettings(SettingsPageChoice page);
    void ApplyLyricsSettings(const LyricsDisplaySettings& settings);
    // The main window's "倒制" button: "解码倒制" on or off, kept at once.
    void ToggleDecoderWorkaround();
    // The store changed (the settings dialog's confirmation, the "倒制" button): what the windows show from
    // it at start is shown anew. Everything else reads the store when it is used.
    void OptionsChanged();
    // The skin and the looks of the options, in every window; unchanged looks are not drawn again.
    void ApplyLooks();
    // A skin chosen from the menu: kept at once, shown at once.
    void ChooseSkin(int value);
    // The song menu "选歌" under its button, or at the pointer when its menu entry chose it.
    void ShowSongMenu(bool fromButton);
    void ShowSongBlocks();

    // The main, list and lyrics windows' opacity: kept, or previewed by the settings page "透明度".
    void ApplyTransparency(const WindowTransparency& transparency);
    // The bubbles of the audio display while decoder 2 plays ("L27", "L37", "L64").
    void ShowBubbles();
    void ShowTips();
    void RefreshTips();
    void UpdateTimers();
    void SetTimerRunning(TimerId id, bool on, unsigned intervalMs);
    void RestorePositions();
    void SavePositions();
    // Writes values into the setup key (creating it first); false at the first that fails.
    bool WriteSetupValues(const std::vector<std::pair<std::string_view, std::string>>& values);
    void Close();

    AppServices services_;
    SettingsStore settings_;
    MainWindow window_;
    PlaylistWindow playlist_;
    AudioDisplayWindow display_;
    VideoWindow video_;
    FilterWindow filterWindow_{[this] { return window_.Handle(); }};
    CopyLogWindow copyWindow_{[this] { return window_.Handle(); }};

    QueueController queue_;
    WinMci mci_;
    MediaEngine engine_{mci_};
    WinControls controls_;
    EngineDecoder decoder2_{engine_, 0, [] { return static_cast<std::uint32_t>(GetTickCount()); }};
    AcmMp3Decoder acm_;
    WaveOut waveOut_;
    Mp3Player decoder1_;
    PlaybackController player_;
    StreamPanelFeed stream_;
    ListFileController lists_;
    DefaultList defaultList_;
    MusicLibrary library_;
    LyricsDisplay lyrics_;
    ScreenSaverGuard screenSaver_{settings_, *this};
    LyricsDisplaySettings lyricsSettings_;
    CommandTable commands_;
    TaskbarButton taskbar_;
    TrayIcon tray_;
    // The time of the progress track under the pointer, for its tip; none until the pointer comes.
    std::optional<long long> pointerMs_;
    // A balloon held back until the start-up one has been seen.
    std::optional<BalloonText> nextBalloon_;
    bool startupBalloonDue_ = false;
    MediaHotKeys hotKeys_;
    SystemMediaControls mediaControls_;
    std::string osCode_;
    unsigned runningTimers_ = 0;  // a bit for each TimerId that runs
    bool displayClosedByUser_ = false;  // until the next file opens
    bool closed_ = false;
    // Flat menus ("使用XP菜单…") come at once when switched on, and stay until the next start.
    MenuLook menuLook_;
};

}  // namespace lumora
