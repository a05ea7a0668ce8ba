#pragma once
// Lumora's icon in the notification area ("“最小化到任务拦”"): it carries the playing file's name as its
// tip and tells its window of the mouse by kWmTrayIcon (lParam: the mouse message).
#include <windows.h>

#include <optional>
#include <string>

namespace lumora {

inline constexpr UINT kWmTrayIcon = WM_APP + 40;

class TrayIcon {
public:
    TrayIcon() = default;
    ~TrayIcon() { Remove(); }
    TrayIcon(const TrayIcon&) = delete;
    TrayIcon& operator=(const TrayIcon&) = delete;
    // Adds the icon, or puts it back after Explorer restarted; false when the shell has no notification area.
    bool Show(HWND owner, const std::wstring& tip);
    void SetTip(const std::wstring& tip);
    void Remove();
    bool Shown() const { return shown_; }
    const std::wstring& Tip() const { return tip_; }
    // The screen point a balloon over the icon points at: the icon where the shell tells it (Windows 7
    // on), else the notification area's corner; none without a taskbar.
    std::optional<POINT> Anchor() const;

private:
    bool Notify(DWORD message);

    HWND owner_ = nullptr;
    std::wstring tip_;
    bool shown_ = false;
};

}  // namespace lumora
