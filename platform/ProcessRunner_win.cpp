#include "platform/ProcessRunner_win.h"

#include <windows.h>

#include <vector>

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
    // Keep the caller's windows painted while the other program works.
    for (;;) {
        const DWORD wait = MsgWaitForMultipleObjects(1, &pi.hProcess, FALSE, INFINITE, QS_ALLINPUT);
        if (wait != WAIT_OBJECT_0 + 1) break;
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hProcess);
    return code;
}

}  // namespace lumora
