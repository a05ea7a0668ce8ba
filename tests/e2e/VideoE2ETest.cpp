// The video window end to end: it opens where it was last or on the main window's screen, for every
// AVI the system can play. The clips are made by tests/e2e/run-sound-tests.sh with ffmpeg.
#include <windows.h>

#include <gtest/gtest.h>

#include <set>

#include "e2e/Driver.h"
#include "platform/WinText_win.h"
#include "settings/WindowPlacement.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;

std::string MediaFolder() {
    wchar_t buf[MAX_PATH] = {};
    GetEnvironmentVariableW(L"LUMORA_E2E_MEDIA", buf, MAX_PATH);
    return Narrow(buf);
}

// The colours of the window's client area as the screen shows it: one for an unpainted picture.
size_t ScreenColours(HWND window) {
    RECT c;
    GetClientRect(window, &c);
    POINT origin{0, 0};
    ClientToScreen(window, &origin);
    BITMAPINFO bi{};
    bi.bmiHeader = {sizeof(BITMAPINFOHEADER), c.right, -c.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    HDC screen = GetDC(nullptr);
    HDC copy = CreateCompatibleDC(screen);
    void* bits = nullptr;
    HBITMAP shot = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(copy, shot);
    BitBlt(copy, 0, 0, c.right, c.bottom, screen, origin.x, origin.y, SRCCOPY);
    std::set<DWORD> colours;
    const auto* px = static_cast<const DWORD*>(bits);
    for (long i = 0; bits && i < c.right * c.bottom; ++i) colours.insert(px[i] & 0xFFFFFF);
    SelectObject(copy, old);
    DeleteObject(shot);
    DeleteDC(copy);
    ReleaseDC(nullptr, screen);
    return colours.size();
}

class SoundVideo : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        ASSERT_FALSE(MediaFolder().empty()) << "run through tests/e2e/run-sound-tests.sh";
        ForgetSettings();
        StoreOption("L25", "1");
    }
    void TearDown() override { lumora_.process.Kill(); }
    HWND StartVideo() {
        if (!lumora_.Start(Quoted(MediaFolder() + "\\" + GetParam())) || !lumora_.Playing()) return nullptr;
        HWND video = WaitForWindow(lumora_.process.Id(), L"LumoraVideo");
        if (!video || !WaitFor([&] { return IsWindowVisible(video) != FALSE; })) return nullptr;
        return video;
    }

    Session lumora_;
};

// The clip plays in a window at the picture's size (320 x 240) and its picture is painted (the test
// pattern has many colours). A window without a kept place opens centred on the main window's screen;
// closed, it keeps its place for the next start.
TEST_P(SoundVideo, WindowOpensOnTheScreenAndKeepsItsPlace) {
    HWND video = StartVideo();
    ASSERT_NE(video, nullptr);
    RECT r;
    GetClientRect(video, &r);
    EXPECT_EQ(std::pair(r.right, r.bottom), std::pair(320L, 240L));
    EXPECT_TRUE(WaitFor([&] { return ScreenColours(video) > 16; }, 3000)) << ScreenColours(video) << " colours";
    GetWindowRect(video, &r);
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    GetMonitorInfoW(MonitorFromWindow(lumora_.main, MONITOR_DEFAULTTONEAREST), &mi);
    const RECT& work = mi.rcWork;
    EXPECT_NEAR(r.left + r.right, work.left + work.right, 2);
    EXPECT_NEAR(r.top + r.bottom, work.top + work.bottom, 2);

    SetWindowPos(video, nullptr, 120, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    PostMessageW(video, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return ReadOption("MovLEFT").has_value(); }));
    lumora_.process.Kill();
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(video); }));
    video = StartVideo();
    ASSERT_NE(video, nullptr);
    GetWindowRect(video, &r);
    EXPECT_EQ(std::pair(r.left, r.top), std::pair(120L, 90L));
}

// Microsoft Video 1 and Cinepak, which the system's AVI device decodes itself.
INSTANTIATE_TEST_SUITE_P(SoundClips, SoundVideo, ::testing::Values("clip.avi", "clip-cinepak.avi"),
                         [](const auto& param) { return std::string(param.index == 0 ? "Video1" : "Cinepak"); });

}  // namespace
}  // namespace lumora::e2e
