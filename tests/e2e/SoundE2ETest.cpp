// Playback end to end: Lumora plays real files under Wine while tests/e2e/run-sound-tests.sh
// records the sound sink. Each test marks the stretches that must sound or be silent; the script
// checks the recording against them.
#include <commctrl.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "e2e/Driver.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;

long long UnixMs() {
    FILETIME ft;
    GetSystemTimeAsFileTime(&ft);
    return static_cast<long long>((ULARGE_INTEGER{{ft.dwLowDateTime, ft.dwHighDateTime}}.QuadPart - 116444736000000000ULL) / 10000);
}

// The label's text fits its control (width and height) in the control's own font.
bool TextFits(HWND parent, int id) {
    HWND label = GetDlgItem(parent, id);
    const std::wstring text = Widen(ControlText(parent, id));
    HDC dc = GetDC(label);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(label, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, old);
    ReleaseDC(label, dc);
    RECT r;
    GetClientRect(label, &r);
    return size.cx <= r.right && size.cy <= r.bottom;
}

// Each test runs once per decoder: the parameter is what "L25" holds ("0" decoder 1, "1" decoder 2).
class SoundPlayback : public SessionTest, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        ASSERT_FALSE(Env(L"LUMORA_E2E_MEDIA").empty()) << "run through tests/e2e/run-sound-tests.sh";
        SessionTest::SetUp();
        StoreOption("L25", GetParam().c_str());
    }
    bool Start(const std::string& relative) { return lumora_.Start(Quoted(Env(L"LUMORA_E2E_MEDIA") + relative)); }
    std::string LineName(size_t i) {
        const auto lines = lumora_.Lines();
        return i < lines.size() ? lines[i].substr(5, lines[i].size() - 6) : std::string();
    }
    void PlayLine(int index) {
        SendDlgItemMessageW(lumora_.list, IDC_PLAYLIST_LINES, LB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
        Command(lumora_.list, IDM_PLAYLIST_PLAY);
    }
    void MoveSlider(int id, int pos) {
        HWND slider = GetDlgItem(lumora_.main, id);
        SendMessageW(slider, TBM_SETPOS, TRUE, pos);
        PostMessageW(lumora_.main, WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), reinterpret_cast<LPARAM>(slider));
    }
    // Marks the next `ms` milliseconds as sounding or silent, for the recording check.
    void Hold(const char* kind, DWORD ms, const std::string& what) {
        const long long from = UnixMs();
        Sleep(ms);
        std::ofstream(std::filesystem::path(Widen(Env(L"LUMORA_EVENT_LOG"))), std::ios::app)
            << kind << ' ' << from << ' ' << UnixMs() << (GetParam() == "0" ? " decoder1-" : " decoder2-") << what << '\n';
    }
};

// One long tone through the transport: pause, resume, the volume, the speed, stop and the A-B loop.
TEST_P(SoundPlayback, LongFileThroughTheTransport) {
    StoreOption("L60", "1");  // no gradual change: the level follows the slider at once
    ASSERT_TRUE(Start("\\long.mp3"));
    ASSERT_TRUE(lumora_.Playing());
    Sleep(700);
    Hold("sound", 1000, "playing");
    {
        SCOPED_TRACE("pause holds the time and is silent; play resumes from there");
        Click(lumora_.main, IDC_MAIN_PLAY);
        ASSERT_TRUE(lumora_.Stopped());
        Sleep(700);  // what the sound server had already taken still plays out
        const int pausedAt = lumora_.Time();
        Hold("silence", 1000, "paused");
        EXPECT_EQ(lumora_.Time(), pausedAt);
        EXPECT_GE(pausedAt, 1);
        Click(lumora_.main, IDC_MAIN_PLAY);
        ASSERT_TRUE(lumora_.Playing());
        Sleep(600);
        Hold("sound", 800, "resumed");
        EXPECT_GE(lumora_.Time(), pausedAt);
    }
    {
        SCOPED_TRACE("the volume slider sets the level heard: each step down is quieter");
        for (const int level : {20, 8, 2}) {
            MoveSlider(IDC_MAIN_VOLUME, level);
            Sleep(700);  // what the sound server holds plays out at the old level
            Hold(level == 20 ? "sound" : "quieter", 800, "volume-" + std::to_string(level));
        }
        MoveSlider(IDC_MAIN_VOLUME, 20);
    }
    {
        SCOPED_TRACE("the speed slider plays on, and its double-click resets it");
        MoveSlider(IDC_MAIN_SPEED, 150);
        Sleep(700);
        // The speed's texts are the controller's (unit tested); here the slider and its reset are real.
        Hold("sound", 600, "after-speed-change");
        HWND slider = GetDlgItem(lumora_.main, IDC_MAIN_SPEED);
        PostMessageW(slider, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
        EXPECT_TRUE(WaitFor([&] { return SendMessageW(slider, TBM_GETPOS, 0, 0) == 100; }));
    }
    {
        SCOPED_TRACE("stop is silent and clears the time");
        Click(lumora_.main, IDC_MAIN_STOP);
        ASSERT_TRUE(lumora_.Stopped());
        Sleep(400);
        Hold("silence", 800, "stopped");
        EXPECT_EQ(ControlText(lumora_.main, IDC_MAIN_TIME), "-");
    }
    {
        SCOPED_TRACE("A-B: at B playing goes back to A and on, five times; A and B show their whole times");
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
        EXPECT_TRUE(TextFits(lumora_.main, IDC_MAIN_SEGMENT_A));
        EXPECT_TRUE(TextFits(lumora_.main, IDC_MAIN_SEGMENT_B));
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
        Hold("sound", 600, "segment-after-five-loops");
    }
}

TEST_P(SoundPlayback, NextPreviousAndEndOfFileByMode) {
    ASSERT_TRUE(Start("\\tones"));
    ASSERT_TRUE(lumora_.Playing());
    ASSERT_EQ(lumora_.Lines().size(), 3u);
    EXPECT_EQ(lumora_.Title(), LineName(0));
    Click(lumora_.main, IDC_MAIN_NEXT);
    EXPECT_TRUE(lumora_.WaitForTitle(LineName(1)));
    Click(lumora_.main, IDC_MAIN_PREVIOUS);
    EXPECT_TRUE(lumora_.WaitForTitle(LineName(0)));

    // Normal: the last entry plays to its end and playing stops.
    PlayLine(3);
    ASSERT_TRUE(lumora_.WaitForTitle(LineName(2)));
    EXPECT_TRUE(lumora_.Stopped());
    EXPECT_EQ(lumora_.Title(), LineName(2));
    Sleep(300);
    Hold("silence", 700, "normal-after-last");

    // Repeat all: after the last comes the first.
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    EXPECT_EQ(WaitForControlText(lumora_.main, IDC_MAIN_MODE, "播放方式：全部循环"), "播放方式：全部循环");
    PlayLine(3);
    ASSERT_TRUE(lumora_.WaitForTitle(LineName(2)));
    EXPECT_TRUE(lumora_.WaitForTitle(LineName(0)));
    Sleep(300);
    Hold("sound", 700, "repeat-all-wrapped");

    // Repeat one: the same entry again.
    Click(lumora_.main, IDC_MAIN_MODE_LOOP);
    EXPECT_EQ(WaitForControlText(lumora_.main, IDC_MAIN_MODE, "播放方式：单曲循环"), "播放方式：单曲循环");
    PlayLine(2);
    ASSERT_TRUE(lumora_.WaitForTitle(LineName(1)));
    // Through the 2 s file once, then back at its start.
    ASSERT_TRUE(WaitFor([&] { return lumora_.Time() >= 1; }, 5000));
    EXPECT_TRUE(WaitFor([&] { return lumora_.Time() == 0 && ControlText(lumora_.main, IDC_MAIN_PLAY) == "暂停"; }, 6000));
    EXPECT_EQ(lumora_.Title(), LineName(1));
    Sleep(400);
    Hold("sound", 500, "repeat-one-again");
}

// VBR files of every rate play to their end, whatever their frames' bit rates.
TEST_P(SoundPlayback, VariableBitRateFilesPlayToTheirEnd) {
    for (const char* name : {"v2-44k", "v9-44k", "v2-22k", "v9-11k", "v9-8k"}) {
        ASSERT_TRUE(Start(std::string("\\vbr\\") + name + ".mp3"));
        ASSERT_TRUE(lumora_.Playing()) << name;
        const DWORD started = GetTickCount();
        Sleep(2900);  // the tone is 4 s long
        Hold("sound", 600, std::string("vbr-") + name + "-near-its-end");
        EXPECT_TRUE(lumora_.Stopped()) << name;
        EXPECT_GE(GetTickCount() - started, 3500u) << name;
    }
}

// A file no decoder can play asks the cannot-play question (with "L16" 1), whichever decoder tried it.
TEST_P(SoundPlayback, AFileNobodyCanPlayAsksTheQuestion) {
    StoreOption("L16", "1");
    ASSERT_TRUE(Start("\\worse\\zeros.mp3"));
    HWND box = WaitForBox("无法播放");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(BoxText(box).rfind("zeros.mp3 文件无法播放", 0), 0u) << BoxText(box);
    AnswerBox(box, IDYES);
}

// The video window comes up at the picture's size ("L45" 1 and "L46" 0, 原始大小, at start) and the sound
// plays: an AVI, and an MPEG-1 program stream through the system's MPEG filters.
TEST_P(SoundPlayback, VideoOpensItsWindowAtThePicturesSizeAndSounds) {
    for (const auto& [file, width, height] : {std::tuple{"clip.avi", 320L, 240L}, {"clip.mpg", 352L, 240L}}) {
        ASSERT_TRUE(Start(std::string("\\") + file));
        ASSERT_TRUE(lumora_.Playing());
        HWND video = WaitForWindow(lumora_.process.Id(), L"LumoraVideo");
        ASSERT_NE(video, nullptr);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(video) != FALSE; }));
        RECT r;
        GetClientRect(video, &r);
        EXPECT_EQ(std::pair(r.right, r.bottom), std::pair(width, height)) << file;
        Sleep(1000);  // the MPEG filters take a moment before the sound flows
        Hold("sound", 800, file);
    }
}

TEST_P(SoundPlayback, BrokenFilesWithMediaNamesNeverStopThePlayer) {
    ASSERT_TRUE(Start("\\worse"));
    ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == 6; }));
    // Each one either plays what it holds or is skipped; in the end the queue has been gone through
    // and the window still answers.
    EXPECT_TRUE(lumora_.Stopped());
    DWORD_PTR answer = 0;
    EXPECT_NE(SendMessageTimeoutW(lumora_.main, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, &answer), 0);
    DWORD code = 0;
    EXPECT_FALSE(lumora_.process.WaitForExit(0, &code)) << "Lumora ended with " << code;
    for (size_t i = 0; i < 6; ++i) {
        PlayLine(static_cast<int>(i) + 1);
        Sleep(300);
    }
    EXPECT_NE(SendMessageTimeoutW(lumora_.main, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, &answer), 0);
    EXPECT_FALSE(lumora_.process.WaitForExit(0, &code));
}

INSTANTIATE_TEST_SUITE_P(Sound, SoundPlayback, ::testing::Values("1", "0"),
                         [](const auto& param) { return param.param == "0" ? "Decoder1" : "Decoder2"; });

}  // namespace
}  // namespace lumora::e2e
