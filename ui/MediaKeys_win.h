#pragma once
// The media keys held for the whole system, so that they reach Lumora while another program has the
// focus (the option that asks for it is read by the program). While Lumora has the focus they come as
// WM_APPCOMMAND without this.
#include <windows.h>

namespace lumora {

class MediaHotKeys {
public:
    MediaHotKeys() = default;
    ~MediaHotKeys() { Release(); }
    MediaHotKeys(const MediaHotKeys&) = delete;
    MediaHotKeys& operator=(const MediaHotKeys&) = delete;

    // Holds each key it can get: a key another program holds stays with it. WM_HOTKEY then reaches
    // `window` with the key's WM_APPCOMMAND number as its id.
    void Hold(HWND window);
    void Release();

private:
    HWND window_ = nullptr;
    unsigned held_ = 0;  // a bit for each key of the table
};

}  // namespace lumora
