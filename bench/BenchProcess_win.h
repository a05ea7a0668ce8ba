// What the whole-process benches share: a program they start, wait for and end.
#pragma once

#include <windows.h>

#include <psapi.h>

#include <string>

namespace bench {

class Child {
public:
    // `args` follows the program's quoted path on its command line.
    Child(const std::wstring& exe, const std::wstring& args) {
        std::wstring cmd = L"\"" + exe + L"\" " + args;
        STARTUPINFOW si{};
        si.cb = sizeof si;
        started_ = CreateProcessW(exe.c_str(), cmd.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi_);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (!started_) return;
        Kill();
        CloseHandle(pi_.hProcess);
        CloseHandle(pi_.hThread);
    }
    bool Started() const { return started_; }
    HANDLE Process() const { return pi_.hProcess; }
    void Kill() const {
        TerminateProcess(pi_.hProcess, 0);
        WaitForSingleObject(pi_.hProcess, 5000);
    }
    // Its visible top-level window of class `cls`, looked for every `pollMs` for up to `ms`.
    HWND WaitForWindow(const wchar_t* cls, DWORD ms, DWORD pollMs) const {
        Find f{pi_.dwProcessId, cls, nullptr};
        for (DWORD waited = 0; started_ && !f.found && waited <= ms; waited += pollMs) {
            EnumWindows(Match, reinterpret_cast<LPARAM>(&f));
            if (!f.found) Sleep(pollMs);
        }
        return f.found;
    }
    double PeakMiB() const {
        PROCESS_MEMORY_COUNTERS pmc{};
        pmc.cb = sizeof pmc;
        GetProcessMemoryInfo(pi_.hProcess, &pmc, sizeof pmc);
        return static_cast<double>(pmc.PeakWorkingSetSize) / (1024.0 * 1024.0);
    }

private:
    struct Find {
        DWORD pid;
        const wchar_t* cls;
        HWND found;
    };
    static BOOL CALLBACK Match(HWND hwnd, LPARAM lp) {
        auto* f = reinterpret_cast<Find*>(lp);
        DWORD pid = 0;
        GetWindowThreadProcessId(hwnd, &pid);
        wchar_t cls[64] = {};
        GetClassNameW(hwnd, cls, 64);
        if (pid == f->pid && lstrcmpW(cls, f->cls) == 0 && IsWindowVisible(hwnd)) f->found = hwnd;
        return f->found == nullptr;
    }

    PROCESS_INFORMATION pi_{};
    bool started_ = false;
};

}  // namespace bench
