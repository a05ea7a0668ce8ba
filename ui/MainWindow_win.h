#pragma once
// The main player window: transport controls, the display, the status bar, and the owner of the
// play queue and the playlist window. It draws and forwards; the decisions are the controllers'.
#include <windows.h>
// (shellapi.h needs windows.h first)
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

#include "app/Startup.h"
#include "mediainfo/LyricsDisplay.h"
#include "platform/Audio_win.h"
#include "platform/ControlHost_win.h"
#include "platform/Mci_win.h"
#include "platform/Volume_win.h"
#include "playback/EngineDecoder.h"
#include "playback/Mp3Player.h"
#include "playback/MediaEngine.h"
#include "playback/PlaybackController.h"
#include "playback/StreamPanelFeed.h"
#include "playlist/DefaultList.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "playlist/MusicLibrary.h"
#include "playlist/QueueController.h"
#include "settings/SettingsStore.h"
#include "ui/AudioDisplayWindow_win.h"
#include "ui/PlaylistWindow_win.h"
#include "ui/ProgressWindow_win.h"
#include "ui/TooltipClient_win.h"
#include "ui/VideoWindow_win.h"

namespace lumora {

class FileSystem;
class IniFiles;
class Registry;
class RegistryWrapper;
class WinPrompts;

struct MainWindowServices {
    FileSystem& files;
    IniFiles& ini;
    RegistryWrapper& registry;
    WinPrompts& prompts;
    Registry& rawRegistry;  // for values kept as plain strings (the music library's folder)
};

// The progress window of a list filtering run.
class FilterWindow final : public FilterProgress {
public:
    explicit FilterWindow(HWND& owner) : owner_(owner) {}
    void Open(std::string_view title) override { window_.Open(owner_, std::string(title)); }
    void ShowStatus(std::string_view text) override { window_.SetStatus(std::string(text)); }
    void ShowCounters(std::string_view filtered, std::string_view remaining) override {
        window_.SetCounters(std::string(filtered), std::string(remaining));
    }
    void AddDroppedLine(std::string_view line) override { window_.AddLine(std::string(line)); }
    bool KeepGoing() override { return window_.Pump(); }
    void Close() override { window_.Close(); }

private:
    HWND& owner_;
    ProgressWindow window_;
};

// The copy window of adding every file to the music library: a log the user reads afterwards.
class CopyLogWindow final : public LibraryCopyView {
public:
    explicit CopyLogWindow(HWND& owner) : owner_(owner) {}
    void Open(std::string_view header) override;
    void AddLine(std::string_view line) override { window_.AddLine(std::string(line)); }
    bool KeepGoing() override { return window_.Pump(); }
    void Close() override { window_.Finish(); }

private:
    HWND& owner_;
    ProgressWindow window_;
};

class MainWindow final : public QueueView, public QueuePlayer, public PlaybackView, public LyricsView {
public:
    explicit MainWindow(MainWindowServices services);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Creates the window, loads the options and opens the argument; `osCode` as start-up found it.
    bool Create(const std::string& argument, const std::string& osCode);
    HWND Handle() const { return hwnd_; }

    // QueueView
    void ShowLines(const std::vector<std::string>& lines) override;
    void ShowTexts(const QueueTexts& texts) override;
    void SelectLine(int index) override;
    void Play(const std::string& path) override;

    // PlaybackView
    void ShowPlayback(const PlaybackTexts& texts) override;
    void FileOpened(const std::string& path) override;

    // LyricsView
    void ShowLyricsLines(std::string_view first, std::string_view second) override;

    // The open-argument operation: a file, a folder or a drive root, as the command line or a
    // second instance named it.
    void OpenArgument(const std::string& argument);

    // Commands of the playlist window.
    void RemoveEntry(int index);
    void MoveEntry(int index);
    void FindEntry();
    void PlayEntry(int index);
    // The playlist window's information tip for an entry; empty for no entry.
    std::string EntryInfo(int index);

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
    void OnCreate();
    void OnCommand(int id);
    void OnTimer(UINT_PTR id);
    void OnDropFiles(HDROP drop);
    void OnContextMenu(int x, int y);
    void OnClose();
    void OnScroll(HWND slider, int code);
    void UpdateTimers();
    void LoadSequence(const std::string& argument);
    void ApplyTips();
    void RestorePosition();
    void SavePositions();
    void SetText(int id, const std::string& text);
    void ShowTagLine();
    void TakeAddResult(const AddResult& result);
    void OpenListFile();
    void OpenInfoEditor();
    void AssignLyrics();
    void ReadLyricsLook();
    void LyricsSettings();

    MainWindowServices services_;
    SettingsStore settings_;
    QueueController queue_;
    WinMci mci_;
    MediaEngine engine_{mci_};
    WinControls controls_;
    EngineDecoder decoder2_{engine_, 0};
    WinVolume volume_;
    AcmMp3Decoder acm_;
    WaveOut waveOut_;
    Mp3Player decoder1_;
    PlaybackController player_;
    bool progressTimerOn_ = false;
    bool volumeTimerOn_ = false;
    PlaylistWindow playlist_;
    AudioDisplayWindow display_;
    VideoWindow video_;
    StreamPanelFeed stream_;
    bool displayTimerOn_ = false;
    TooltipClient tips_;
    FilterWindow filterWindow_{hwnd_};
    CopyLogWindow copyWindow_{hwnd_};
    ListFileController lists_;
    DefaultList defaultList_;
    MusicLibrary library_;
    LyricsDisplay lyrics_;
    int lineByteLimit_ = 0;
    AudioDisplayWindow::LyricsLook lyricsLook_;
    std::string osCode_;
    std::string pendingDropList_;  // "aaa*" and the paths waiting to be added
    int pendingDropCount_ = 0;
    std::string modeSuffix_{kSuffixNormal};
    HWND hwnd_ = nullptr;
    HWND status_ = nullptr;
};

}  // namespace lumora
