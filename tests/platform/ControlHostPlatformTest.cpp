// The ActiveX container against a real control: Wine ships the Windows Media Player control
// ("WMPlayer.OCX"), which stands in here for the controls Lumora hosts where systems have them.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/ControlHost_win.h"

namespace lumora {
namespace {

class ControlHostPlatform : public ::testing::Test {
protected:
    void SetUp() override {
        OleInitialize(nullptr);
        window_ = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, 320, 240, nullptr,
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(window_, nullptr);
    }
    void TearDown() override {
        DestroyWindow(window_);
        OleUninitialize();
    }
    HWND window_ = nullptr;
};

TEST_F(ControlHostPlatform, HostsARegisteredControlInPlaceAndFitsItToTheWindow) {
    ASSERT_TRUE(ActiveXControl::IsRegistered(L"WMPlayer.OCX"));
    ActiveXControl control;
    // Created, activated in place (its window a child of ours, filling it) and its automation
    // interface found (Wine's answers only through its type information).
    ASSERT_TRUE(control.Create(L"WMPlayer.OCX", window_));
    HWND child = GetWindow(window_, GW_CHILD);
    ASSERT_NE(child, nullptr);
    RECT r, host;
    for (const bool moved : {false, true}) {
        if (moved) MoveWindow(window_, 0, 0, 500, 400, FALSE), control.Fit();
        GetClientRect(window_, &host);
        GetClientRect(child, &r);
        EXPECT_EQ(std::pair(r.right, r.bottom), std::pair(host.right, host.bottom)) << moved;
    }

    // A call the control does not know answers false; nothing is thrown across the host.
    EXPECT_FALSE(control.PutText(L"NoSuchProperty", L"x"));
    control.Destroy();
    EXPECT_EQ(GetWindow(window_, GW_CHILD), nullptr);  // its window went with it
    EXPECT_FALSE(control.Call(1));
}

}  // namespace
}  // namespace lumora
