// Whole-process figures under Wine: time from process start to a visible main window, and peak
// memory, for Lumora and for a program that only opens one window, measured in the same run.
// Also: filling the queue from a folder of 5,000 files against listing that folder.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "BenchProcess_win.h"
#include "platform/FileSystem_win.h"
#include "platform/WinText_win.h"
#include "playlist/QueueController.h"
#include "support/Fakes.h"

namespace {

struct Figures {
    double ms;
    double peakMiB;
};

Figures Launch(const std::wstring& exe, const wchar_t* cls) {
    LARGE_INTEGER freq, t0, t1;
    QueryPerformanceFrequency(&freq);
    QueryPerformanceCounter(&t0);
    const bench::Child child(exe, L"\"" + exe.substr(0, exe.find_last_of(L"\\/")) + L"\"");
    if (!child.Started()) return {-1, -1};
    child.WaitForWindow(cls, 30000, 1);
    QueryPerformanceCounter(&t1);
    Sleep(500);  // let start-up settle before reading the peak
    return {1000.0 * static_cast<double>(t1.QuadPart - t0.QuadPart) / static_cast<double>(freq.QuadPart),
            child.PeakMiB()};
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

class NullView : public lumora::QueueView, public lumora::QueuePlayer {
public:
    void ShowLines(const std::vector<std::string>&) override {}
    void ShowTexts(const lumora::QueueTexts&) override {}
    void SelectLine(int) override {}
    void Play(const std::string&) override {}
};

void FolderScan() {
    wchar_t tmp[MAX_PATH];
    GetTempPathW(MAX_PATH, tmp);
    const std::wstring folder = std::wstring(tmp) + L"lumora-bench-5000";
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int i = 0; i < 5000; ++i) {
        const std::wstring name = folder + L"\\file " + std::to_wstring(i) + (i % 10 == 0 ? L".mp3" : L".txt");
        CloseHandle(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    lumora::WinFileSystem fs;
    lumora::test::FakePrompts prompts;
    NullView view;
    LARGE_INTEGER freq, a, b, c;
    QueryPerformanceFrequency(&freq);
    std::vector<double> list, fill;
    for (int run = 0; run < 5; ++run) {
        QueryPerformanceCounter(&a);
        const auto names = fs.ListFiles(lumora::Narrow(folder));
        QueryPerformanceCounter(&b);
        lumora::QueueController queue(prompts, fs, view, view);
        queue.AddPending({lumora::Narrow(folder)});
        QueryPerformanceCounter(&c);
        list.push_back(1000.0 * static_cast<double>(b.QuadPart - a.QuadPart) / static_cast<double>(freq.QuadPart));
        fill.push_back(1000.0 * static_cast<double>(c.QuadPart - b.QuadPart) / static_cast<double>(freq.QuadPart));
    }
    std::printf("folder of 5000 files (500 media): list %.1f ms, fill queue %.1f ms (median of 5)\n", Median(list),
                Median(fill));
    for (int i = 0; i < 5000; ++i) {
        DeleteFileW((folder + L"\\file " + std::to_wstring(i) + (i % 10 == 0 ? L".mp3" : L".txt")).c_str());
    }
    RemoveDirectoryW(folder.c_str());
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: lumora_startup_bench LUMORA_EXE FLOOR_EXE\n");
        return 2;
    }
    std::vector<double> lumoraMs, lumoraMiB, floorMs, floorMiB;
    for (int run = 0; run < 5; ++run) {
        const Figures floor = Launch(argv[2], L"LumoraFloorWindow");
        const Figures lumora = Launch(argv[1], L"LumoraMain");
        floorMs.push_back(floor.ms);
        floorMiB.push_back(floor.peakMiB);
        lumoraMs.push_back(lumora.ms);
        lumoraMiB.push_back(lumora.peakMiB);
    }
    std::printf("start to visible main window (median of 5): Lumora %.0f ms, floor %.0f ms\n", Median(lumoraMs),
                Median(floorMs));
    std::printf("peak working set (median of 5): Lumora %.1f MiB, floor %.1f MiB\n", Median(lumoraMiB),
                Median(floorMiB));
    FolderScan();
    return 0;
}
