// Playback end to end: Lumora plays real files under Wine while tests/e2e/run-sound-tests.sh
// records the sound sink. Each test marks the stretches that must sound or be silent; the script
// checks the recording against them. The media are made by the script with sox, lame and ffmpeg.
#include <commctrl.h>

#include <chrono>
#include <fstream>
#include <set>
#include <tuple>

#include "e2e/Driver.h"

namespace lumora::e2e {
namespace {

using namespace ids;

// The colours of the window's client area as the screen shows it, every fourth pixel each way: one
// for an unpainted picture.
size_t ScreenColours(HWND window) {
    RECT c;
    GetClientRect(window, &c);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&c), 2);
    HDC screen = GetDC(nullptr);
    std::set<COLORREF> colours;
    for (LONG y = c.top; y < c.bottom; y += 4) {
        for (LONG x = c.left; x < c.right; x += 4) colours.insert(GetPixel(screen, x, y));
    }
    ReleaseDC(nullptr, screen);
    return colours.size();
}

// Each test runs once per decoder: the parameter is what "L25" holds ("0" decoder 1, "1" decoder 2).
class SoundPlayback : public SessionTest, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        ASSERT_FALSE(Env(L"LUMORA_E2E_MEDIA").empty()) << "run through tests/e2e/run-sound-tests.sh";
        SessionTest::SetUp();
        StoreOption("L25", GetParam().c_str());
    }
    // Starts Lumora on a file or folder of the media folder, and waits until it plays.
    bool Play(const std::string& name) {
        return lumora_.Open(Env(L"LUMORA_E2E_MEDIA") + "\\" + name) && lumora_.Playing();
    }
    void MoveSlider(int id, int pos) {
        HWND slider = GetDlgItem(lumora_.main, id);
        SendMessageW(slider, TBM_SETPOS, TRUE, pos);
        PostMessageW(lumora_.main, WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), reinterpret_cast<LPARAM>(slider));
    }
    // Lets `settle` milliseconds pass (what the sound server holds plays out), then marks the next `ms`
    // as sounding or silent, for the recording check.
    void Hold(const char* kind, DWORD settle, DWORD ms, const std::string& what) {
        using namespace std::chrono;  // the recording's clock: Unix time in milliseconds
        const auto now = [] { return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count(); };
        Sleep(settle);
        const auto from = now();
        Sleep(ms);
        std::ofstream(std::filesystem::path(Widen(Env(L"LUMORA_EVENT_LOG"))), std::ios::app)
            << kind << ' ' << from << ' ' << now() << (GetParam() == "0" ? " decoder1-" : " decoder2-") << what << '\n';
    }
};

// One long tone through the transport: pause, resume, the volume, the speed, stop and the A-B loop.
TEST_P(SoundPlayback, LongFileThroughTheTransport) {
    StoreOption("L60", "1");  // no gradual change: the level follows the slider at once
    ASSERT_TRUE(Play("long.mp3"));
    Hold("sound", 700, 1000, "playing");

    // Pause holds the time and is silent; play resumes from there.
    Click(lumora_.main, IDC_MAIN_PLAY);
    ASSERT_TRUE(lumora_.Stopped());
    Sleep(700);  // what the sound server had already taken still plays out
    const int pausedAt = lumora_.Time();
    Hold("silence", 0, 1000, "paused");
    EXPECT_EQ(lumora_.Time(), pausedAt);
    EXPECT_GE(pausedAt, 1);
    Click(lumora_.main, IDC_MAIN_PLAY);
    ASSERT_TRUE(lumora_.Playing());
    Hold("sound", 600, 800, "resumed");
    EXPECT_GE(lumora_.Time(), pausedAt);

    // The volume slider sets the level heard: each step down is quieter.
    for (const int level : {20, 8, 2}) {
        MoveSlider(IDC_MAIN_VOLUME, level);
        Hold(level == 20 ? "sound" : "quieter", 700, 800, "volume-" + std::to_string(level));
    }
    MoveSlider(IDC_MAIN_VOLUME, 20);

    // The speed slider plays on, and its double-click resets it. (The speed's texts are the
    // controller's, unit tested; here the slider and its reset are real.)
    MoveSlider(IDC_MAIN_SPEED, 150);
    Hold("sound", 700, 600, "after-speed-change");
    HWND slider = GetDlgItem(lumora_.main, IDC_MAIN_SPEED);
    PostMessageW(slider, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(WaitFor([&] { return SendMessageW(slider, TBM_GETPOS, 0, 0) == 100; }));

    // Stop is silent and clears the time.
    Click(lumora_.main, IDC_MAIN_STOP);
    ASSERT_TRUE(lumora_.Stopped());
    Hold("silence", 400, 800, "stopped");
    EXPECT_EQ(ControlText(lumora_.main, IDC_MAIN_TIME), "-");

    // A-B: at B playing goes back to A and on, five times; A and B show their whole times.
    Click(lumora_.main, IDC_MAIN_PLAY);
    ASSERT_TRUE(lumora_.Playing());
    Click(lumora_.main, IDC_MAIN_SEGMENT);
    ASSERT_TRUE(WaitFor([&] { return lumora_.Time() >= 1; }));
    PostMessageW(lumora_.main, WM_COMMAND, MAKEWPARAM(IDC_MAIN_SEGMENT_A, STN_CLICKED), 0);
    ASSERT_TRUE(WaitFor([&] { return ControlText(lumora_.main, IDC_MAIN_SEGMENT_A) != "A=N/A"; }));
    const int a = Seconds(ControlText(lumora_.main, IDC_MAIN_SEGMENT_A).substr(2));
    ASSERT_TRUE(WaitFor([&] { return lumora_.Time() >= a + 2; }));
    PostMessageW(lumora_.main, WM_COMMAND, MAKEWPARAM(IDC_MAIN_SEGMENT_B, STN_CLICKED), 0);
    ASSERT_TRUE(WaitFor([&] { return ControlText(lumora_.main, IDC_MAIN_SEGMENT_B) != "B=N/A"; }));
    EXPECT_TRUE(TextFits(GetDlgItem(lumora_.main, IDC_MAIN_SEGMENT_A)));
    EXPECT_TRUE(TextFits(GetDlgItem(lumora_.main, IDC_MAIN_SEGMENT_B)));
    const int b = Seconds(ControlText(lumora_.main, IDC_MAIN_SEGMENT_B).substr(2));
    int loops = 0;
    for (int previous = lumora_.Time(), i = 0; i < 100 && loops < 5; ++i) {
        Sleep(200);
        const int t = lumora_.Time();
        EXPECT_GE(t, a);
        EXPECT_LE(t, b + 1);
        loops += t < previous;
        previous = t;
    }
    EXPECT_EQ(loops, 5);
    Hold("sound", 0, 600, "segment-after-five-loops");
}

// Three short tones through next, previous and each mode's end of file; then VBR files and a file
// that cannot play.
TEST_P(SoundPlayback, NextPreviousAndTheEndsOfFiles) {
    StoreOption("L16", "1");
    ASSERT_TRUE(Play("tones"));
    ASSERT_EQ(lumora_.Lines().size(), 3u);
    Click(lumora_.main, IDC_MAIN_NEXT);
    EXPECT_TRUE(lumora_.WaitForTitle(lumora_.Name(1)));
    Click(lumora_.main, IDC_MAIN_PREVIOUS);
    EXPECT_TRUE(lumora_.WaitForTitle(lumora_.Name(0)));

    // Normal: the last entry plays to its end and playing stops.
    lumora_.PlayLine(3);
    ASSERT_TRUE(lumora_.WaitForTitle(lumora_.Name(2)));
    EXPECT_TRUE(lumora_.Stopped());
    EXPECT_EQ(lumora_.Title(), lumora_.Name(2));
    Hold("silence", 300, 700, "normal-after-last");

    // Repeat all: after the last comes the first.
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    EXPECT_TRUE(Shows(lumora_.main, IDC_MAIN_MODE, "播放方式：全部循环"));
    lumora_.PlayLine(3);
    ASSERT_TRUE(lumora_.WaitForTitle(lumora_.Name(2)));
    EXPECT_TRUE(lumora_.WaitForTitle(lumora_.Name(0)));
    Hold("sound", 300, 700, "repeat-all-wrapped");

    // Repeat one: the same entry again.
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    EXPECT_TRUE(Shows(lumora_.main, IDC_MAIN_MODE, "播放方式：单曲循环"));
    lumora_.PlayLine(2);
    ASSERT_TRUE(lumora_.WaitForTitle(lumora_.Name(1)));
    // Through the 2 s file once, then back at its start.
    ASSERT_TRUE(WaitFor([&] { return lumora_.Time() >= 1; }, 5000));
    EXPECT_TRUE(
        WaitFor([&] { return lumora_.Time() == 0 && ControlText(lumora_.main, IDC_MAIN_PLAY) == "暂停"; }, 6000));
    EXPECT_EQ(lumora_.Title(), lumora_.Name(1));
    Hold("sound", 400, 500, "repeat-one-again");

    // VBR files of every rate play to their end, whatever their frames' bit rates.
    for (const std::string name : {"v2-44k", "v9-44k", "v2-22k", "v9-11k", "v9-8k"}) {
        ASSERT_TRUE(Play("vbr\\" + name + ".mp3")) << name;
        const DWORD started = GetTickCount();
        Hold("sound", 2900, 600, "vbr-" + name + "-near-its-end");  // the tone is 4 s long
        EXPECT_TRUE(lumora_.Stopped()) << name;
        EXPECT_GE(GetTickCount() - started, 3500u) << name;
    }

    // A file no decoder can play asks the cannot-play question (with "L16" 1), whichever decoder tried
    // it. (Files of every kind that nobody can play are the bad-files campaign's.)
    ASSERT_TRUE(lumora_.Open(Env(L"LUMORA_E2E_MEDIA") + "\\zeros.mp3"));
    EXPECT_EQ(CloseBox("无法播放", IDYES).rfind("zeros.mp3 文件无法播放", 0), 0u);
}

// A video opens its window at the picture's size ("L45" 1 and "L46" 0, 原始大小, at start), centred on
// the main window's screen, shows its picture (the test pattern has many colours) and sounds: AVIs in
// the two codecs the system's AVI device decodes itself, and an MPEG-1 program stream through the
// system's MPEG filters. Closed, the window keeps its place for the next start.
TEST_P(SoundPlayback, VideoShowsItsPictureAtItsSizeAndKeepsItsPlace) {
    HWND video = nullptr;
    const auto startVideo = [&](const std::string& file) {
        video = Play(file) ? WaitForWindow(lumora_.process.Id(), L"LumoraVideo") : nullptr;
        return video && WaitFor([&] { return IsWindowVisible(video) != FALSE; });
    };
    RECT r;
    for (const auto& [file, width, height] :
         {std::tuple{"clip.avi", 320L, 240L}, {"clip-cinepak.avi", 320L, 240L}, {"clip.mpg", 352L, 240L}}) {
        ASSERT_TRUE(startVideo(file)) << file;
        GetClientRect(video, &r);
        EXPECT_EQ(std::pair(r.right, r.bottom), std::pair(width, height)) << file;
        EXPECT_TRUE(WaitFor([&] { return ScreenColours(video) > 16; }, 3000)) << file << ": " << ScreenColours(video);
        GetWindowRect(video, &r);
        MONITORINFO mi{};
        mi.cbSize = sizeof mi;
        GetMonitorInfoW(MonitorFromWindow(lumora_.main, MONITOR_DEFAULTTONEAREST), &mi);
        EXPECT_NEAR(r.left + r.right, mi.rcWork.left + mi.rcWork.right, 2) << file;
        EXPECT_NEAR(r.top + r.bottom, mi.rcWork.top + mi.rcWork.bottom, 2) << file;
        Hold("sound", 1000, 800, file);  // the MPEG filters take a moment before the sound flows
    }
    SetWindowPos(video, nullptr, 120, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    PostMessageW(video, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return ReadOption("MovLEFT").has_value(); }));
    ASSERT_TRUE(startVideo("clip.avi"));
    GetWindowRect(video, &r);
    EXPECT_EQ(std::pair(r.left, r.top), std::pair(120L, 90L));
}

INSTANTIATE_TEST_SUITE_P(Sound, SoundPlayback, ::testing::Values("1", "0"),
                         [](const auto& param) { return param.param == "0" ? "Decoder1" : "Decoder2"; });

}  // namespace
}  // namespace lumora::e2e
