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
    const std::wstring wide = FilePathArg(path);
    std::wstring buffer(wide.size() + 1, L'\0');
    for (;;) {  // the buffer grows until the whole short path fits: a cut path would open another file
        const DWORD n = GetShortPathNameW(wide.c_str(), buffer.data(), static_cast<DWORD>(buffer.size()));
        if (n == 0) return std::nullopt;
        if (n < buffer.size()) {
            buffer.resize(n);
            break;
        }
        buffer.resize(n + 1);
    }
    // MCI takes no "\\?\" path; the short form of a long path usually fits without it.
    if (buffer.rfind(L"\\\\?\\UNC\\", 0) == 0) {
        buffer = L"\\\\" + buffer.substr(8);
    } else if (buffer.rfind(L"\\\\?\\", 0) == 0) {
        buffer = buffer.substr(4);
    }
    return Narrow(buffer);
}

PixelRect WinMci::WindowRect(WindowId window) {
    RECT r{};
    GetWindowRect(reinterpret_cast<HWND>(static_cast<UINT_PTR>(window)), &r);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

}  // namespace lumora
