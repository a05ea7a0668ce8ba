#pragma once
// Lumora's icon in the notification area ("“最小化到任务拦”"): it carries the playing file's name as its
// tip and tells its window of the mouse by kWmTrayIcon (lParam: the mouse message).
#include <windows.h>

#include <string>

namespace lumora {

inline constexpr UINT kWmTrayIcon = WM_APP + 40;

class TrayIcon {
public:
    ~TrayIcon() { Remove(); }
    // Adds the icon, or puts it back after Explorer restarted; false when the shell has no notification area.
    bool Show(HWND owner, const std::wstring& tip);
    void SetTip(const std::wstring& tip);
    void Remove();
    bool Shown() const { return shown_; }

private:
    bool Notify(DWORD message);

    HWND owner_ = nullptr;
    std::wstring tip_;
    bool shown_ = false;
};

}  // namespace lumora
