// Playback figures under Wine, for Lumora with each decoder and for a program that only plays the
// file through MCI. This side drives the programs and reads peak memory; it logs (wall clock, ms)
// each program's start and its playing and paused stretches, from which bench/playback.sh takes
// the first sound in the recording and the CPU time the system counted for the process.
#include <windows.h>

#include <cstdio>
#include <string>

#include "BenchProcess_win.h"

namespace {

constexpr int IDC_MAIN_PLAY = 1001;  // Lumora's play/pause button

long long UnixMs() {
    FILETIME ft;
    GetSystemTimeAsFileTime(&ft);
    const unsigned long long t = (static_cast<unsigned long long>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    return static_cast<long long>((t - 116444736000000000ULL) / 10000ULL);
}

// Marks `ms` of wall time as one stretch of the program's life.
void Stretch(FILE* log, const char* name, const char* what, DWORD ms) {
    const long long from = UnixMs();
    Sleep(ms);
    std::fprintf(log, "%s %s %lld %lld\n", what, name, from, UnixMs());
    std::fflush(log);
}

void SetDecoder(const char* value) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", 0, nullptr, 0, KEY_WRITE, nullptr,
                    &key, nullptr);
    RegSetValueExW(key, L"L25", 0, REG_BINARY, reinterpret_cast<const BYTE*>(value), 1);
    RegCloseKey(key);
}

void Run(const char* name, const std::wstring& exe, const std::wstring& file, FILE* log, bool lumora) {
    std::fprintf(log, "start %s %lld 0\n", name, UnixMs());
    std::fflush(log);
    const bench::Child child(exe, L"\"" + file + L"\"");
    if (!child.Started()) return;
    Sleep(2000);
    Stretch(log, name, "playing", 3000);
    if (lumora) {
        HWND main = FindWindowW(L"LumoraMain", nullptr);
        PostMessageW(main, WM_COMMAND, MAKEWPARAM(IDC_MAIN_PLAY, BN_CLICKED), 0);
        Sleep(500);
        Stretch(log, name, "paused", 3000);
    }
    const double peakMiB = child.PeakMiB();
    child.Kill();
    std::printf("%-10s peak memory %.1f MiB\n", name, peakMiB);
    std::fflush(stdout);
    Sleep(1500);  // silence between two programs, so each one's first sound stands apart
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: lumora_playback_bench LUMORA_EXE FLOOR_EXE FILE LOG\n");
        return 2;
    }
    FILE* log = _wfopen(argv[4], L"w");
    if (!log) return 1;
    Run("floor", argv[2], argv[3], log, false);
    SetDecoder("1");
    Run("decoder2", argv[1], argv[3], log, true);
    SetDecoder("0");
    Run("decoder1", argv[1], argv[3], log, true);
    std::fclose(log);
    return 0;
}
