#pragma once
// The audio display of decoder 1: a spectrum of what is sounding, in the "音频\歌词显示" window.
#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "mediainfo/StreamPanel.h"
#include "playback/FrequencyBands.h"

namespace lumora {

class AudioDisplayWindow {
public:
    AudioDisplayWindow() = default;
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

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void Paint(HDC dc);

    HWND hwnd_ = nullptr;
    HWND owner_ = nullptr;
    std::array<float, kSpectrumBands> bands_{};
};

}  // namespace lumora
