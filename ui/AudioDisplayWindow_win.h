#pragma once
// The audio display of decoder 1: a spectrum of what is sounding, in the "音频\歌词显示" window.
#include <windows.h>
// (after windows.h)
#include <ocidl.h>

#include <array>
#include <string>
#include <vector>

#include "mediainfo/StreamPanel.h"
#include "playback/FrequencyBands.h"

namespace lumora {

// The window's caption, also the main menu item that shows and hides it.
inline constexpr wchar_t kLyricsWindowCaption[] = L"音频\\歌词显示";

class AudioDisplayWindow {
public:
    AudioDisplayWindow() = default;
    ~AudioDisplayWindow();
    AudioDisplayWindow(const AudioDisplayWindow&) = delete;
    AudioDisplayWindow& operator=(const AudioDisplayWindow&) = delete;

    bool Create(HWND owner);
    HWND Handle() const { return hwnd_; }
    void Show();
    void Toggle();
    bool Visible() const { return hwnd_ && IsWindowVisible(hwnd_); }
    void SetBands(const std::array<float, kSpectrumBands>& bands);
    // The tag and stream panel beside the spectrum.
    void SetStreamTexts(const StreamPanelTexts& texts);
    // A video's information lines in place of the stream panel.
    void SetInfoLines(const std::vector<std::string>& lines);

    // How the two lyrics lines look; read from the "F8_" options by the main window.
    struct LyricsLook {
        COLORREF background = RGB(12, 18, 28);
        COLORREF current = RGB(255, 190, 70);  // the line whose time has come
        COLORREF next = RGB(120, 220, 255);    // the line after it
        int currentPoints = 14;
        int nextPoints = 11;
        bool usePicture = false;     // a picture behind the spectrum and the lyrics
        bool stretchPicture = true;  // stretched over the area, or centred at its own size
        std::string picturePath;
    };
    void SetLyricsLook(const LyricsLook& look);
    // The two lyrics lines (each may hold several lines joined by CR LF); both labels are
    // measured and placed anew after every change.
    void SetLyrics(const std::string& current, const std::string& next);

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void Paint(HDC dc);

    void PlaceLyrics();
    HFONT LyricsFont(int points);

    HWND hwnd_ = nullptr;
    HWND owner_ = nullptr;
    LyricsLook look_;
    HFONT currentFont_ = nullptr;
    HFONT nextFont_ = nullptr;
    HBRUSH background_ = nullptr;
    IPicture* picture_ = nullptr;
    std::array<float, kSpectrumBands> bands_{};
};

}  // namespace lumora
