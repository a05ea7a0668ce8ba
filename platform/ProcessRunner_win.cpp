#include "platform/ProcessRunner_win.h"

#include <windows.h>

#include <vector>

#include "platform/MessagePump_win.h"
#include "platform/WinText_win.h"

namespace lumora {

std::optional<unsigned long> WinProcessRunner::RunAndWait(const std::string& commandLine, bool minimised) {
    std::wstring cmd = Widen(commandLine);
    std::vector<wchar_t> buffer(cmd.begin(), cmd.end());  // CreateProcessW may write into it
    buffer.push_back(L'\0');
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESHOWWINDOW;
    si.wShowWindow = static_cast<WORD>(minimised ? SW_SHOWMINNOACTIVE : SW_SHOWNORMAL);
    PROCESS_INFORMATION pi{};
    if (!CreateProcessW(nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) {
        return std::nullopt;
    }
    CloseHandle(pi.hThread);
    // Keep the caller's windows painted while the other program works; a quit stops the wait.
    const BusyScope busy;
    bool quit = false;
    for (;;) {
        const DWORD wait = MsgWaitForMultipleObjects(1, &pi.hProcess, FALSE, INFINITE, QS_ALLINPUT);
        if (wait != WAIT_OBJECT_0 + 1) break;
        if (!PumpWaitingMessages()) {
            quit = true;
            break;
        }
    }
    DWORD code = 0;
    const bool ended = GetExitCodeProcess(pi.hProcess, &code) && code != STILL_ACTIVE;
    CloseHandle(pi.hProcess);
    if (quit && !ended) return std::nullopt;
    return code;
}

}  // namespace lumora
