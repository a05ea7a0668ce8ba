#include "ui/TrayIcon_win.h"

#include <shellapi.h>

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
    tip_ = tip;
    if (shown_) Notify(NIM_MODIFY);
}

void TrayIcon::Remove() {
    if (shown_) Notify(NIM_DELETE);
    shown_ = false;
}

}  // namespace lumora
