#pragma once
// The main player window: transport controls, the display, the status bar. It creates, lays out and
// renders its controls and forwards what the user does to its events; the decisions are elsewhere.
#include <windows.h>
// (shellapi.h needs windows.h first)
#include <shellapi.h>
// (commctrl.h too)
#include <commctrl.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/Commands.h"
#include "common/SkinDescription.h"
#include "playback/PlaybackController.h"
#include "playback/TransportTexts.h"
#include "playlist/PlayQueue.h"
#include "ui/SkinPaint_win.h"
#include "ui/Menu_win.h"
#include "ui/SongBlockView_win.h"
#include "settings/TipOverrides.h"
#include "ui/TooltipClient_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

// What the main window forwards.
class MainWindowEvents {
public:
    virtual ~MainWindowEvents() = default;
    // A button or a menu entry.
    virtual void OnCommand(int id) = 0;
    // A double click on the speed slider.
    virtual void OnSpeedReset() = 0;
    enum class SliderMove { Dragging, Released, Other };
    virtual void OnSlider(int id, SliderMove move, int position) = 0;
    virtual void OnTimer(unsigned id) = 0;
    virtual void OnDropFiles(const std::vector<std::string>& paths) = 0;
    // The lines of the right-click menu.
    virtual std::vector<MenuLine> ContextMenu() = 0;
    virtual void OnMoved() = 0;
    // The user closes the window (the close box, Alt+F4 or the exit command).
    virtual void OnCloseRequest() = 0;
    // A media key: WM_APPCOMMAND's number (a held media key's WM_HOTKEY carries it too). True when
    // the program took it.
    virtual bool OnAppCommand(int appCommand) = 0;
    // The taskbar made the window's button, also again after Explorer restarted.
    virtual void OnTaskbarButton() = 0;
    // The window was minimised.
    virtual void OnMinimized() = 0;
    // The mouse on the notification-area icon (WM_LBUTTONUP, WM_RBUTTONUP...).
    virtual void OnTrayIcon(UINT mouseMessage) = 0;
    // The pointer rests on the progress track at this position (0 … 1000).
    virtual void OnProgressPointer(int permille) = 0;
};

class MainWindow final : public WindowBase<MainWindow> {
public:
    MainWindow() = default;
    ~MainWindow();

    bool Create(MainWindowEvents& events);
    void Destroy();

    // Rendering: each text is set only when it differs from what the control shows.
    void ShowQueueTexts(const QueueTexts& texts);
    void ShowPlayback(const PlaybackTexts& texts);
    void ShowTagLine(const std::string& text);
    void SetVolumePosition(int position);
    // The balloon help of every control; `colours` (background, text) when the user chose them.
    void ShowTips(const TransportTips& tips, std::optional<std::pair<std::uint32_t, std::uint32_t>> colours,
                  bool enabled);
    // Only the texts, as the player's state changes them.
    void SetTips(const TransportTips& tips);
    // The user's own help texts, by control id (read once at start).
    void SetTipOverrides(TipOverrides overrides) { tipOverrides_ = std::move(overrides); }
    // A balloon of tooltip.dll pointing at `at`, or at the display when none is given.
    void ShowBalloon(std::optional<POINT> at, const std::string& title, const std::string& text, unsigned ms);
    // The "倒制" button held down while "解码倒制" is on.
    void ShowDecoderWorkaround(bool on);
    // While on, the screen saver's and the display power-off's system commands are refused.
    void RefuseScreenSaver(bool on) { refuseScreenSaver_ = on; }
    void BringToFront();
    // The current skin (ui/Theme_win.h): drawn anew, fonts and all.
    void Restyle();
    // "显示主窗体“快捷按钮”": the row of quick buttons under the status line, the window as tall as it needs.
    void ShowQuickButtons(bool on);
    // "L30": the running text's speed.
    void SetRunningTextSpeed(std::optional<long long> speed);
    // "进度滑道变色": the played part of the progress track changes colour as the file plays.
    void SetColouredProgress(bool on);
    // A menu under the control `id` (a quick button's).
    void ShowMenuUnder(int id, const std::vector<MenuLine>& lines);
    // How its right-click menu looks.
    void SetMenuLook(const MenuLook& look) { menuLook_ = look; }
    // The block view of the song choice under the controls, shown or hidden; the window grows to hold it.
    void ShowSongBlocks(bool on);
    void SetSongBlocks(const std::vector<std::string>& lines, int current) { blocks_.SetEntries(lines, current); }
    // Where the song menu opens from its button: the button's lower left corner on the screen.
    POINT SongMenuPoint() const;
    // The keys of a dialog, for the window and its controls: Tab and Shift+Tab move the focus between
    // the controls, Enter clicks the focused button. True when `msg` was such a key.
    bool TakeDialogKey(const MSG& msg);

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void OnCreate();
    // Places every control and sets its font for `dpi_`.
    void Layout();
    void OnScroll(HWND slider, int code, int thumbPosition);
    void OnDropFiles(HDROP drop);
    void OnContextMenu(int x, int y);
    void SetText(int id, const std::string& text);
    void SetTip(int id, const std::string& text);
    void PaintBackdrop(HDC dc, const RECT& client) const;
    LRESULT ColourControl(HDC dc, HWND control, bool button);
    // The tag line runs when it does not fit; these measure, move and draw it.
    void MeasureTagLine(bool newText);
    // `seen`: whether the window can be seen, when the system is about to change it.
    void UpdateScrollTimer(std::optional<bool> seen = std::nullopt);
    void DrawTagLine(const DRAWITEMSTRUCT& item);
    LRESULT DrawSlider(NMCUSTOMDRAW& draw);

    MainWindowEvents* events_ = nullptr;
    HWND status_ = nullptr;
    int dpi_ = 96;  // the DPI the controls are laid out for
    // Each control's place (client coordinates) at 96 DPI, by control id.
    std::vector<std::pair<int, RECT>> layout96_;
    TooltipClient tips_;
    bool tipsAttached_ = false;
    TipOverrides tipOverrides_;
    // The slider whose thumb the user holds: the timers leave it where the user put it.
    int dragging_ = 0;
    // The slider just released by its thumb: the end-of-scroll that follows is no second release.
    int released_ = 0;
    // The control that had the focus when the window was last deactivated.
    HWND focus_ = nullptr;
    // What each control shows now, by control id (status bar parts by -1 - part).
    std::map<int, std::string> shown_;
    bool refuseScreenSaver_ = false;
    Backdrop backdrop_;
    RunningText runningText_;
    ScrollPace pace_ = RunningTextPace(std::nullopt);
    bool scrolling_ = false;  // the running text's timer runs
    bool colouredProgress_ = false;
    bool quickButtons_ = true;
    MenuLook menuLook_;
    SongBlockView blocks_;
};

}  // namespace lumora
