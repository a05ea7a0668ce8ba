#pragma once
// The video window: MCI draws the picture as its child; it keeps the picture filling it.
#include <windows.h>

#include <ocidl.h>

#include <functional>
#include <string>

namespace lumora {

class VideoWindow {
public:
    VideoWindow() = default;
    VideoWindow(const VideoWindow&) = delete;
    VideoWindow& operator=(const VideoWindow&) = delete;

    bool Create(HWND owner);
    HWND Handle() const { return hwnd_; }
    // Shows the window with a client area of that size, or over the whole screen.
    void ShowSized(long width, long height);
    void ShowFullScreen();
    void ShowAsIs();
    void Hide();
    // A still picture (BMP, JPEG, GIF, WMF, EMF, icon, cursor) drawn to fit; false when it cannot be read.
    bool ShowPicture(const std::string& path);
    void ClearPicture();
    // Called with the new client size whenever it changes.
    std::function<void(long width, long height)> onResize;

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void LeaveFullScreen();

    HWND hwnd_ = nullptr;
    HWND owner_ = nullptr;
    bool fullScreen_ = false;
    IPicture* picture_ = nullptr;
    void PaintPicture(HDC dc);
    RECT normal_{};
};

}  // namespace lumora
