#pragma once
// The media keys beyond WM_APPCOMMAND, which brings them while Lumora has the focus: held for the whole
// system when the option asks for it, and the system's own media controls on Windows 10 and later.
#include <windows.h>

#include <string>

struct IInspectable;
struct IUnknown;

namespace lumora {

// The media keys held for the whole system, so that they reach Lumora while another program has the focus.
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

// The system media transport controls of Windows 10 and later (the volume overlay, the lock screen):
// they show the playing file's title and artist, and their buttons arrive at the window as the media
// keys' WM_APPCOMMAND. Reached through combase.dll where it offers them; elsewhere (XP to 8, Wine)
// nothing is shown and nothing fails.
class SystemMediaControls {
public:
    SystemMediaControls() = default;
    ~SystemMediaControls();
    SystemMediaControls(const SystemMediaControls&) = delete;
    SystemMediaControls& operator=(const SystemMediaControls&) = delete;

    void Attach(HWND window);
    enum class Status { Closed = 0, Stopped = 2, Playing = 3, Paused = 4 };  // MediaPlaybackStatus
    void ShowStatus(Status status);
    void ShowFile(const std::string& title, const std::string& artist);

private:
    IInspectable* controls_ = nullptr;
    IUnknown* handler_ = nullptr;
    long long token_ = 0;
    Status status_ = Status::Closed;
};

}  // namespace lumora
