// The window base with real windows: `this` kept from creation to WM_NCDESTROY, and no exception
// leaving a window procedure.
#include <windows.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/MessagePump_win.h"
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

}  // namespace
}  // namespace lumora
