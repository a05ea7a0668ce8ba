#include "platform/Mci_win.h"

#include <windows.h>
#include <mmsystem.h>

#include "platform/WinText_win.h"

namespace lumora {

unsigned long WinMci::Send(const std::string& command, std::string* reply) {
    wchar_t buffer[512] = {};
    const MCIERROR rc =
        mciSendStringW(Widen(command).c_str(), reply ? buffer : nullptr, reply ? 512 : 0, nullptr);
    if (reply) *reply = Narrow(buffer);
    return rc;
}

std::string WinMci::ErrorText(unsigned long error) {
    wchar_t text[128] = {};
    if (!mciGetErrorStringW(error, text, 128)) return "MCI error " + std::to_string(error);
    return Narrow(text);
}

std::optional<std::string> WinMci::ShortPath(const std::string& path) {
    const std::wstring wide = Widen(path);
    wchar_t buffer[MAX_PATH + 1] = {};
    const DWORD n = GetShortPathNameW(wide.c_str(), buffer, MAX_PATH);
    if (n == 0 || n > MAX_PATH) return std::nullopt;
    return Narrow(buffer);
}

PixelRect WinMci::WindowRect(WindowId window) {
    RECT r{};
    GetWindowRect(reinterpret_cast<HWND>(static_cast<UINT_PTR>(window)), &r);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

}  // namespace lumora
