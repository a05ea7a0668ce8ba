// The soak: Lumora plays a list in repeat-all mode for a long time with one decoder, and its private
// memory, handle count and GDI and USER object counts are printed at the start, every few minutes
// and at the end. They should stay flat. Under Wine the process's own counters are stubs (private
// usage, handle count and GUI resources all answer 0), so private memory is also summed from its
// committed private regions, handles counted in the system's handle table and GDI objects in the
// process's own GDI handle table (which Wine keeps where Windows does, behind the PEB).
// Usage: lumora_soak_probe LUMORA_EXE LIST_FILE DECODER(0|1) MINUTES SAMPLE_SECONDS
#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <cstdio>
#include <string>

#include "BenchProcess_win.h"
#include "ui/ControlIds.h"

namespace {

std::string Utf8(const wchar_t* w) {
    char out[1024] = {};
    WideCharToMultiByte(CP_UTF8, 0, w, -1, out, sizeof out, nullptr, nullptr);
    return out;
}

std::string ControlText(HWND main, int id) {
    wchar_t text[512] = {};
    DWORD_PTR got = 0;
    SendMessageTimeoutW(GetDlgItem(main, id), WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 5000,
                        &got);
    return Utf8(text);
}

void StoreOption(const wchar_t* name, const char* text) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", 0, nullptr, 0, KEY_SET_VALUE,
                    nullptr, &key, nullptr);
    RegSetValueExW(key, name, 0, REG_BINARY, reinterpret_cast<const BYTE*>(text), static_cast<DWORD>(strlen(text)));
    RegCloseKey(key);
}

size_t CommittedPrivateKiB(HANDLE process) {
    size_t total = 0;
    MEMORY_BASIC_INFORMATION info{};
    for (char* at = nullptr; VirtualQueryEx(process, at, &info, sizeof info) == sizeof info;
         at = static_cast<char*>(info.BaseAddress) + info.RegionSize) {
        if (info.State == MEM_COMMIT && info.Type == MEM_PRIVATE) total += info.RegionSize;
    }
    return total / 1024;
}

// SystemHandleInformation: a count, then one 16-byte (24 on 64-bit) entry a handle, owner first.
struct HandleEntry {
    USHORT pid;
    USHORT creatorBackTraceIndex;
    UCHAR objectType;
    UCHAR flags;
    USHORT handle;
    PVOID object;
    ACCESS_MASK access;
};

long SystemHandlesOf(DWORD pid) {
    using Query = LONG(WINAPI*)(int, PVOID, ULONG, PULONG);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::string buffer(1 << 20, '\0');
    ULONG needed = 0;
    while (query && query(16, buffer.data(), static_cast<ULONG>(buffer.size()), &needed) == LONG(0xC0000004)) {
        buffer.resize(buffer.size() * 2);
    }
    if (!query) return -1;
    const ULONG count = *reinterpret_cast<const ULONG*>(buffer.data());
    const auto* entries = reinterpret_cast<const HandleEntry*>(buffer.data() + sizeof(ULONG_PTR));
    long mine = 0;
    for (ULONG i = 0; i < count && (i + 1) * sizeof(HandleEntry) < buffer.size(); ++i) mine += entries[i].pid == pid;
    return mine;
}

// The GDI handle table's entries are 24 bytes in Wine (16 on 32-bit Windows); a used one has a type.
struct GdiEntry {
    unsigned long long object;
    ULONG owner;
    USHORT unique;
    UCHAR type;
    UCHAR flags;
    unsigned long long user;
};

long GdiTableCount(HANDLE process) {
    using Query = LONG(WINAPI*)(HANDLE, PROCESSINFOCLASS, PVOID, ULONG, PULONG);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess")));
    PROCESS_BASIC_INFORMATION basic{};
    void* table = nullptr;
    constexpr size_t kTableAt = sizeof(void*) == 8 ? 0xF8 : 0x94;  // PEB.GdiSharedHandleTable
    if (!query || query(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0 ||
        !ReadProcessMemory(process, static_cast<char*>(static_cast<void*>(basic.PebBaseAddress)) + kTableAt, &table,
                           sizeof table, nullptr) ||
        table == nullptr) {
        return -1;
    }
    std::string entries(0x10000 * sizeof(GdiEntry), '\0');
    if (!ReadProcessMemory(process, table, entries.data(), entries.size(), nullptr)) return -1;
    long used = 0;
    for (size_t at = 0; at < entries.size(); at += sizeof(GdiEntry)) {
        used += reinterpret_cast<const GdiEntry*>(entries.data() + at)->type != 0;
    }
    return used;
}

void Sample(HANDLE process, HWND main, DWORD start) {
    PROCESS_MEMORY_COUNTERS_EX mem{};
    mem.cb = sizeof mem;
    GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&mem), sizeof mem);
    DWORD handles = 0;
    GetProcessHandleCount(process, &handles);
    std::printf(
        "%5lu s  private %7zu KiB (committed %7zu KiB)  working set %7zu KiB  handles %4lu (table %4ld)  "
        "GDI %4lu (table %4ld)  USER %4lu  %s\n",
        (GetTickCount() - start) / 1000, mem.PrivateUsage / 1024, CommittedPrivateKiB(process),
        mem.WorkingSetSize / 1024, handles, SystemHandlesOf(GetProcessId(process)),
        GetGuiResources(process, GR_GDIOBJECTS), GdiTableCount(process), GetGuiResources(process, GR_USEROBJECTS),
        ControlText(main, lumora::ids::IDC_MAIN_TITLE).c_str());
    std::fflush(stdout);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 6) {
        std::fprintf(stderr, "usage: lumora_soak_probe LUMORA_EXE LIST_FILE DECODER MINUTES SAMPLE_SECONDS\n");
        return 2;
    }
    StoreOption(L"L25", Utf8(argv[3]).c_str());
    const bench::Child player(argv[1], L"\"" + std::wstring(argv[2]) + L"\"");
    const HWND main = player.WaitForWindow(lumora::ids::kMainClass, 30000, 100);
    if (!main) return 1;
    // Normal, then repeat one, then repeat all.
    for (int i = 0; i < 2; ++i) {
        PostMessageW(main, WM_COMMAND, MAKEWPARAM(lumora::ids::IDC_MAIN_MODE_LOOP, BN_CLICKED), 0);
    }
    Sleep(3000);
    std::printf("decoder %s, %s\n", Utf8(argv[3]).c_str(), ControlText(main, lumora::ids::IDC_MAIN_MODE).c_str());
    const DWORD start = GetTickCount();
    const DWORD total = static_cast<DWORD>(_wtoi(argv[4])) * 60000u;
    const DWORD every = static_cast<DWORD>(_wtoi(argv[5])) * 1000u;
    Sample(player.Process(), main, start);
    while (GetTickCount() - start < total) {
        if (WaitForSingleObject(player.Process(), every < total ? every : total) == WAIT_OBJECT_0) {
            std::printf("Lumora ended\n");
            return 1;
        }
        Sample(player.Process(), main, start);
    }
    PostMessageW(main, WM_CLOSE, 0, 0);
    const bool ended = WaitForSingleObject(player.Process(), 15000) == WAIT_OBJECT_0;
    return ended ? 0 : 1;
}
