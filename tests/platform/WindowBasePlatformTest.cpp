// The window base with real windows: `this` kept from creation to WM_NCDESTROY, and no exception
// leaving a window procedure. The built program's resources, as Explorer and the loader read them.
#include <windows.h>
// (shellapi.h needs windows.h first)
#include <shellapi.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/MessagePump_win.h"
#include "platform/WinText_win.h"
#include "ui/WindowBase_win.h"
#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

constexpr UINT kThrow = WM_APP + 1;
constexpr UINT kAnswer = WM_APP + 2;
std::vector<std::string> gReports;

class ProbeWindow final : public WindowBase<ProbeWindow> {
public:
    bool Create() {
        EnsureWindowClass(L"LumoraProbe", WndProc, nullptr);
        return CreateWindowExW(0, L"LumoraProbe", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                               GetModuleHandleW(nullptr), this) != nullptr;
    }
    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == kThrow) throw std::runtime_error("probe fault");
        return msg == kAnswer ? 42 : DefWindowProcW(hwnd_, msg, wp, lp);
    }
};

TEST(WindowBase, KeepsItsWindowUntilDestroyedAndNoExceptionEscapes) {
    const auto before = SetWindowFaultReporter([](const char* what) { gReports.emplace_back(what); });
    ProbeWindow probe;
    ASSERT_TRUE(probe.Create());
    HWND hwnd = probe.Handle();
    for (UINT msg : {kAnswer, kThrow, kThrow}) SendMessageW(hwnd, msg, 0, 0);
    EXPECT_EQ(gReports, (std::vector<std::string>{"probe fault"}));  // told once, the window still answers
    EXPECT_EQ(SendMessageW(hwnd, kAnswer, 0, 0), 42);
    DestroyWindow(hwnd);
    EXPECT_EQ(probe.Handle(), nullptr);
    SetWindowFaultReporter(before);
}

// The nested pump leaves a quit for the main loop; busy scopes nest.
TEST(MessagePump, KeepsTheQuitForTheMainLoop) {
    PostQuitMessage(7);
    EXPECT_FALSE(PumpWaitingMessages());
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 7u);
    {
        const BusyScope outer;
        { const BusyScope inner; }
        EXPECT_TRUE(IsBusy());
    }
    EXPECT_FALSE(IsBusy());
}

// A text of a built file's version block, as Explorer's properties show it.
std::string VersionText(const std::wstring& file, const std::wstring& name) {
    std::vector<char> block(GetFileVersionInfoSizeW(file.c_str(), nullptr) + 1);
    void* value = nullptr;
    UINT size = 0;
    GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data());
    if (!VerQueryValueW(block.data(), name.c_str(), &value, &size) || size == 0) return {};
    if (name.find(L"Translation") != std::wstring::npos) {
        return std::to_string(static_cast<WORD*>(value)[0]) + "/" + std::to_string(static_cast<WORD*>(value)[1]);
    }
    return Narrow(static_cast<const wchar_t*>(value));
}

TEST(Resources, TheProgramAndItsComponentCarryVersionIconAndManifest) {
    const std::wstring exe = Widen(LUMORA_BUILD_DIR "/Lumora.exe");
    EXPECT_EQ(VersionText(exe, L"\\StringFileInfo\\080404B0\\FileDescription"), "Lumora 媒体播放器");
    for (const auto& file : {exe, Widen(LUMORA_BUILD_DIR "/tooltip.dll")}) {
        EXPECT_EQ(VersionText(file, L"\\VarFileInfo\\Translation"), "2052/1200");  // Chinese (PRC), Unicode
        EXPECT_EQ(VersionText(file, L"\\StringFileInfo\\080404B0\\FileVersion"), LUMORA_VERSION_TEXT);
    }
    EXPECT_EQ(ExtractIconExW(exe.c_str(), -1, nullptr, nullptr, 0), 1u);
    // Visual styles: the manifest asks for common controls 6; and per-monitor DPI awareness.
    HMODULE image = LoadLibraryExW(exe.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    HRSRC manifest = FindResourceW(image, MAKEINTRESOURCEW(1), RT_MANIFEST);
    ASSERT_NE(manifest, nullptr);
    const std::string text(static_cast<const char*>(LockResource(LoadResource(image, manifest))),
                           SizeofResource(image, manifest));
    EXPECT_NE(text.find("\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""), std::string::npos) << text;
    EXPECT_NE(text.find(">PerMonitorV2, PerMonitor</dpiAwareness>"), std::string::npos) << text;
    FreeLibrary(image);
}

}  // namespace
}  // namespace lumora
