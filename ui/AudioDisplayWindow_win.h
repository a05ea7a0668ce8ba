#pragma once
// The audio display of decoder 1: a spectrum of what is sounding, in the "音频\歌词显示" window.
#include <windows.h>
// (after windows.h)
#include <ocidl.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/SkinDescription.h"
#include "mediainfo/LyricsLook.h"
#include "mediainfo/StreamPanel.h"
#include "playback/Bubbles.h"
#include "playback/FrequencyBands.h"
#include "settings/WindowPlacement.h"
#include "playback/TransportTexts.h"
#include "ui/TooltipClient_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

// The window's caption, also the main menu item that shows and hides it.
inline constexpr char kLyricsWindowCaption[] = "音频\\歌词显示";

class AudioDisplayWindow final : public WindowBase<AudioDisplayWindow> {
public:
    AudioDisplayWindow();
    ~AudioDisplayWindow();

    bool Create(HWND owner);
    // Shows (fading in) where it was last; the first time, under the main window unless a kept place came.
    void Show();
    void Hide();
    void Toggle();
    bool Visible() const;
    // Its kept place (pixels), or none: it opens under the main window.
    void Restore(const std::optional<WindowRect>& kept);
    // True once it has a place of its own to keep.
    bool HasPlace() const { return placed_; }
    // Rising bubbles in the spectrum's area instead of the bars, moving only while shown.
    void SetBubbles(bool on, bool colourChanging);
    void SetBands(const std::array<float, kSpectrumBands>& bands);
    // The tag and stream panel beside the spectrum.
    void SetStreamTexts(const StreamPanelTexts& texts);
    // A video's information lines in place of the stream panel.
    void SetInfoLines(const std::vector<std::string>& lines);

    // The balloon help of its panel and lyrics lines, in `colours` (background, text).
    void ShowTips(const DisplayTips& tips, COLORREF background, COLORREF text);

    // How the two lyrics lines look.
    void SetLyricsLook(const LyricsLook& look);
    // The current skin (ui/Theme_win.h).
    void Restyle();
    // The two lyrics lines (each may hold several lines joined by CR LF); both labels are
    // measured and placed anew after every change.
    void SetLyrics(const std::string& current, const std::string& next);

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

    // The user closed the window with its close box.
    std::function<void()> onUserClose;

private:
    void Paint(HDC dc);
    void PaintBars(HDC mem, const RECT& area);
    void PaintBubbles(HDC mem, const RECT& area);
    // Runs the bubbles' timer while they are on and the window shows; fits them to the area.
    void UpdateBubbles();
    RECT SpectrumArea() const;

    void PlaceLyrics();
    // The panel's lines and every font, for `dpi_`.
    void LayOutPanel();
    void SetPanelLine(size_t i, const std::string& text);
    HFONT LyricsFont(int points);

    HWND owner_ = nullptr;
    int dpi_ = 96;  // the DPI its layout and fonts are for
    LyricsLook look_;
    LyricsColours colours_;  // the look's colours, the skin's where the look keeps its defaults
    HFONT currentFont_ = nullptr;
    HFONT nextFont_ = nullptr;
    HBRUSH background_ = nullptr;
    IPicture* picture_ = nullptr;
    std::array<float, kSpectrumBands> bands_{};
    std::array<std::string, 10> panelShown_;  // what each stream panel line shows now
    bool placed_ = false;                     // shown or restored once: later shows keep where it is
    bool bubblesOn_ = false;
    bool bubblesColourChanging_ = false;
    bool bubblesRunning_ = false;  // their timer runs
    BubbleField bubbles_;
    TooltipClient tips_;
};

}  // namespace lumora
