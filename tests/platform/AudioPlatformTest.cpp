// The sound card of decoder 1 against Wine's real waveOut: buffers come back once each, when played.
#include <windows.h>

#include <gtest/gtest.h>

#include <map>

#include "platform/Audio_win.h"

namespace lumora {
namespace {

// Delivers the window messages that carry the sound card's completions, for `ms`.
void Pump(DWORD ms) {
    const DWORD end = GetTickCount() + ms;
    while (static_cast<long>(end - GetTickCount()) > 0) {
        MSG m;
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&m);
        Sleep(10);
    }
}

TEST(WaveOutPlatform, AResetLeavesNoStaleCompletionAndNothingIsQueuedTwice) {
    WaveOut out;
    std::map<int, int> done;
    out.onDone = [&](int id) { ++done[id]; };
    ASSERT_EQ(out.Open(44100, 2), AudioStatus::Ok);
    const std::string quarterSecond(44100 / 4 * 4, '\0');
    for (int id = 0; id < AudioOut::kBuffers; ++id) ASSERT_EQ(out.Write(id, quarterSecond), AudioStatus::Ok);
    ASSERT_EQ(out.Reset(), AudioStatus::Ok);
    for (int id = 0; id < AudioOut::kBuffers; ++id) ASSERT_EQ(out.Write(id, quarterSecond), AudioStatus::Ok);
    EXPECT_EQ(out.Write(3, quarterSecond), AudioStatus::StillPlaying);  // the last one still sounds
    Pump(2500);
    EXPECT_EQ(done, (std::map<int, int>{{0, 1}, {1, 1}, {2, 1}, {3, 1}}));
    EXPECT_EQ(out.SetVolume(10), AudioStatus::Ok);  // the device's own level
    out.Close();
}

}  // namespace
}  // namespace lumora
