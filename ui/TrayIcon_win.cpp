#include "ui/TrayIcon_win.h"

#include <shellapi.h>

#include <iterator>

namespace lumora {

bool TrayIcon::Notify(DWORD message) {
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;  // what Windows XP knows
    data.hWnd = owner_;
    data.uID = 1;
    data.uFlags = NIF_ICON | NIF_MESSAGE | NIF_TIP;
    data.uCallbackMessage = kWmTrayIcon;
    data.hIcon =
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                      GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    lstrcpynW(data.szTip, tip_.c_str(), static_cast<int>(std::size(data.szTip)));
    return Shell_NotifyIconW(message, &data) != FALSE;
}

bool TrayIcon::Show(HWND owner, const std::wstring& tip) {
    owner_ = owner;
    tip_ = tip;
    // After Explorer restarted the old icon is gone: adding it again is what brings it back.
    shown_ = Notify(NIM_ADD) || (shown_ && Notify(NIM_MODIFY));
    return shown_;
}

void TrayIcon::SetTip(const std::wstring& tip) {
    if (tip == tip_) return;
    tip_ = tip;
    if (shown_) Notify(NIM_MODIFY);
}

namespace {

// NOTIFYICONIDENTIFIER, which the headers give only to programs built for Windows 7 and later.
struct IconIdentifier {
    DWORD cbSize;
    HWND hWnd;
    UINT uID;
    GUID guidItem;
};

}  // namespace

std::optional<POINT> TrayIcon::Anchor() const {
    using GetRectFn = HRESULT(WINAPI*)(const IconIdentifier*, RECT*);
    const auto getRect = reinterpret_cast<GetRectFn>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"shell32.dll"), "Shell_NotifyIconGetRect")));
    RECT r{};
    if (shown_ && getRect) {
        IconIdentifier id{};
        id.cbSize = sizeof id;
        id.hWnd = owner_;
        id.uID = 1;
        if (SUCCEEDED(getRect(&id, &r))) return POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    }
    HWND taskbar = FindWindowW(L"Shell_TrayWnd", nullptr);
    if (!taskbar || !IsWindowVisible(taskbar)) return std::nullopt;
    HWND area = FindWindowExW(taskbar, nullptr, L"TrayNotifyWnd", nullptr);
    if (!GetWindowRect(area ? area : taskbar, &r)) return std::nullopt;
    // Its top edge, near the right end: where the icons sit on a taskbar at the bottom.
    return POINT{r.right - GetSystemMetrics(SM_CXSMICON), r.top};
}

void TrayIcon::Remove() {
    if (shown_) Notify(NIM_DELETE);
    shown_ = false;
}

}  // namespace lumora
