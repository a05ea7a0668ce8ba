// The video window end to end: the picture is painted, and the window opens where it was last or on
// the main window's screen. The clips are made by tests/e2e/run-sound-tests.sh with ffmpeg.
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

// How many colours the screen shows over the window's client area, sampled on a grid.
size_t ColoursShown(HWND window) {
    RECT c;
    GetClientRect(window, &c);
    POINT origin{0, 0};
    ClientToScreen(window, &origin);
    HDC screen = GetDC(nullptr);
    std::set<COLORREF> colours;
    for (int y = c.bottom / 10; y < c.bottom; y += c.bottom / 10) {
        for (int x = c.right / 10; x < c.right; x += c.right / 10) colours.insert(GetPixel(screen, origin.x + x, origin.y + y));
    }
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

// The picture is painted: the clip's test pattern shows many colours, never one. A window without a kept
// place opens inside the main window's screen, not at its corner; closed, it keeps its place.
TEST_P(SoundVideo, PictureIsPaintedAndTheWindowKeepsItsPlace) {
    HWND video = StartVideo();
    ASSERT_NE(video, nullptr);
    EXPECT_TRUE(WaitFor([&] { return ColoursShown(video) >= 4; }, 5000)) << ColoursShown(video);
    RECT r;
    GetWindowRect(video, &r);
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    GetMonitorInfoW(MonitorFromWindow(lumora_.main, MONITOR_DEFAULTTONEAREST), &mi);
    EXPECT_GT(r.left, mi.rcWork.left);
    EXPECT_GT(r.top, mi.rcWork.top);
    EXPECT_LE(r.right, mi.rcWork.right);
    EXPECT_LE(r.bottom, mi.rcWork.bottom);

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

// Microsoft Video 1 (which the AVI device decodes itself) and Motion JPEG (which only the system's
// media filters decode, as the system's own media player plays it).
INSTANTIATE_TEST_SUITE_P(Clips, SoundVideo, ::testing::Values("clip.avi", "clip-mjpeg.avi"),
                         [](const auto& param) { return std::string(param.index == 0 ? "Video1" : "MotionJpeg"); });

}  // namespace
}  // namespace lumora::e2e
