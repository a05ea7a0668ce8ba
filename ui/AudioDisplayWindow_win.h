#pragma once
// The audio display of decoder 1: a spectrum of what is sounding, in the "音频\歌词显示" window.
#include <windows.h>
// (after windows.h)
#include <ocidl.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "mediainfo/LyricsLook.h"
#include "mediainfo/StreamPanel.h"
#include "playback/FrequencyBands.h"
#include "playback/TransportTexts.h"
#include "ui/TooltipClient_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

// The window's caption, also the main menu item that shows and hides it.
inline constexpr char kLyricsWindowCaption[] = "音频\\歌词显示";

class AudioDisplayWindow final : public WindowBase<AudioDisplayWindow> {
public:
    AudioDisplayWindow() = default;
    ~AudioDisplayWindow();

    bool Create(HWND owner);
    void Show();
    void Toggle();
    bool Visible() const { return hwnd_ && IsWindowVisible(hwnd_); }
    void SetBands(const std::array<float, kSpectrumBands>& bands);
    // The tag and stream panel beside the spectrum.
    void SetStreamTexts(const StreamPanelTexts& texts);
    // A video's information lines in place of the stream panel.
    void SetInfoLines(const std::vector<std::string>& lines);

    // The balloon help of its panel and lyrics lines, in `colours` (background, text).
    void ShowTips(const DisplayTips& tips, COLORREF background, COLORREF text);

    // How the two lyrics lines look.
    void SetLyricsLook(const LyricsLook& look);
    // The two lyrics lines (each may hold several lines joined by CR LF); both labels are
    // measured and placed anew after every change.
    void SetLyrics(const std::string& current, const std::string& next);

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

    // The user closed the window with its close box.
    std::function<void()> onUserClose;

private:
    void Paint(HDC dc);

    void PlaceLyrics();
    // The panel's lines and every font, for `dpi_`.
    void LayOutPanel();
    void SetPanelLine(size_t i, const std::string& text);
    HFONT LyricsFont(int points);

    HWND owner_ = nullptr;
    int dpi_ = 96;  // the DPI its layout and fonts are for
    LyricsLook look_;
    HFONT currentFont_ = nullptr;
    HFONT nextFont_ = nullptr;
    HBRUSH background_ = nullptr;
    IPicture* picture_ = nullptr;
    std::array<float, kSpectrumBands> bands_{};
    std::array<std::string, 10> panelShown_;  // what each stream panel line shows now
    TooltipClient tips_;
};

}  // namespace lumora
