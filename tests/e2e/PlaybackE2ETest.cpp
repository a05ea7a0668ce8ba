// The transport as a user works it in the real Lumora under Wine: the progress thumb, play after
// the end of the list, pictures in the queue, the open dialog's folder and the information editor
// on the file that plays. Silent files through the movie device: nothing here needs the sound sink.
#include <commctrl.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "e2e/Driver.h"
#include "platform/WinText_win.h"
#include "support/MpegFrames.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

int Seconds(const std::string& hhmmss) {
    int h = 0, m = 0, s = 0;
    if (std::sscanf(hhmmss.c_str(), "%d:%d:%d", &h, &m, &s) != 3) return -1;
    return h * 3600 + m * 60 + s;
}

// A bitmap of one red pixel: file header, info header (1 x 1, 24 bits), one padded row.
const std::string kBitmap("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x01\0\0\0\x01\0\0\0\x01\0\x18\0"
                          "\0\0\0\0\x04\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0",
                          58);

// A rectangle the slider answers into memory of its own process (TBM_GETTHUMBRECT, TBM_GETCHANNELRECT).
RECT SliderRect(HWND slider, UINT message) {
    RECT r{};
    DWORD pid = 0;
    GetWindowThreadProcessId(slider, &pid);
    HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, pid);
    if (!process) return r;
    if (void* remote = VirtualAllocEx(process, nullptr, sizeof r, MEM_COMMIT, PAGE_READWRITE)) {
        SendMessageW(slider, message, 0, reinterpret_cast<LPARAM>(remote));
        SIZE_T read = 0;
        ReadProcessMemory(process, remote, &r, sizeof r, &read);
        VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    }
    CloseHandle(process);
    return r;
}

class PlaybackE2E : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(LumoraExe().empty()) << "LUMORA_EXE is not set";
        ForgetSettings();
        StoreOption("L25", "1");  // the movie device, which plays the silent waves
    }
    void TearDown() override { lumora_.process.Kill(); }

    void Start(const fs::path& argument) {
        ASSERT_TRUE(lumora_.Start(Quoted(PathText(argument))));
        main_ = lumora_.main;
    }
    int Time() { return Seconds(ControlText(main_, IDC_MAIN_TIME)); }
    std::string Title() { return ControlText(main_, IDC_MAIN_TITLE); }

    TempFolder media_{L"Lumora 播放 E2E"};
    Session lumora_;
    HWND main_ = nullptr;
};

// The thumb is held at three quarters while the progress timer runs on, then let go: playing goes on
// from there.
TEST_F(PlaybackE2E, DraggedProgressThumbSeeksWhereItIsLetGo) {
    const fs::path wave = media_ / L"长.wav";
    WriteBytes(wave, SilentWave(40));
    Start(wave);
    ASSERT_TRUE(lumora_.Playing());
    HWND slider = GetDlgItem(main_, IDC_MAIN_PROGRESS);
    const RECT thumb = SliderRect(slider, TBM_GETTHUMBRECT);
    const RECT channel = SliderRect(slider, TBM_GETCHANNELRECT);
    const int y = (thumb.top + thumb.bottom) / 2;
    const int to = channel.left + (channel.right - channel.left) * 3 / 4;
    PostMessageW(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM((thumb.left + thumb.right) / 2, y));
    PostMessageW(slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, y));
    Sleep(1500);  // held still: several progress ticks pass
    PostMessageW(slider, WM_LBUTTONUP, 0, MAKELPARAM(to, y));
    EXPECT_TRUE(WaitFor([&] { return Time() >= 28; }, 5000)) << Time();
}

// After the list has ended, play plays again and the display follows: caption, time and progress.
TEST_F(PlaybackE2E, PlayAfterTheListEndedShowsPlaying) {
    const fs::path wave = media_ / L"短.wav";
    WriteBytes(wave, SilentWave(2));
    Start(wave);
    ASSERT_TRUE(lumora_.Playing());
    ASSERT_EQ(WaitForControlText(main_, IDC_MAIN_PLAY, "播放"), "播放");
    Click(main_, IDC_MAIN_PLAY);
    ASSERT_TRUE(lumora_.Playing());
    EXPECT_TRUE(WaitFor([&] { return Time() >= 1; }, 5000)) << ControlText(main_, IDC_MAIN_TIME);
}

// A still picture is shown for its time and the queue goes on to the next entry.
TEST_F(PlaybackE2E, StillPictureGivesWayToTheNextEntry) {
    WriteBytes(media_ / L"a.bmp", kBitmap);
    WriteBytes(media_ / L"b.wav", SilentWave(20));
    Start(media_.Path());
    ASSERT_TRUE(lumora_.WaitForLineCount(2));
    ASSERT_TRUE(WaitFor([&] { return Title() == "a.bmp"; }));
    EXPECT_TRUE(WaitFor([&] { return Title() == "b.wav"; }, 12000)) << Title();
    EXPECT_TRUE(lumora_.Playing());
}

// The second open dialog starts where the first ended: a bare name typed there is found in that folder.
TEST_F(PlaybackE2E, OpenDialogStartsInTheFolderLastUsed) {
    TempFolder other(L"Lumora 另一个文件夹");
    WriteBytes(media_ / L"first.wav", SilentWave(20));
    WriteBytes(other / L"one.wav", SilentWave(20));
    WriteBytes(other / L"two.wav", SilentWave(20));
    Start(media_ / L"first.wav");
    ASSERT_TRUE(lumora_.Playing());
    const char* const kTitle = "打开文件对话框，本播放器支持近50种文件类型";
    for (const std::string& typed : {PathText(other / L"one.wav"), std::string("two.wav")}) {
        PostMessageW(main_, WM_COMMAND, IDM_OPEN_FILES, 0);
        HWND dialog = WaitForBox(kTitle);
        ASSERT_NE(dialog, nullptr);
        AnswerFileDialog(dialog, typed);
        const std::string name = typed.substr(typed.find_last_of('\\') + 1);
        EXPECT_TRUE(WaitFor([&] { return Title() == name; }, 5000)) << typed;
    }
}

// The file that plays through the MPEG device, which holds it open, is saved into and goes on playing where it was.
TEST_F(PlaybackE2E, InformationEditorSavesTheFileThatPlays) {
    const fs::path wave = media_ / L"正在播放.mp3";
    const std::string audio = test::MpegFrames(1150);
    WriteBytes(wave, audio);
    Start(wave);
    ASSERT_TRUE(lumora_.Playing());
    ASSERT_TRUE(WaitFor([&] { return Time() >= 2; }));
    PostMessageW(main_, WM_COMMAND, IDM_MEDIA_INFO, 0);
    HWND editor = WaitForBox(kInfoEditorTitle);
    ASSERT_NE(editor, nullptr);
    SendMessageW(GetDlgItem(editor, IDC_INFO_TITLE), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"新标题"));
    const int before = Time();
    Click(editor, IDC_INFO_SAVE);
    HWND done = WaitForBox("完毕");
    ASSERT_NE(done, nullptr) << "no success box";
    EXPECT_EQ(BoxText(done), "恭喜！媒体信息保存完毕！");
    AnswerBox(done, IDOK);
    Click(editor, IDCANCEL);
    const std::string bytes = ReadBytes(wave);
    EXPECT_EQ(bytes.substr(0, audio.size()), audio);
    EXPECT_EQ(bytes.substr(bytes.size() - 128, 3 + 6), "TAG" + Cp936("新标题"));
    // Playing on from where it was, not from the start.
    EXPECT_TRUE(lumora_.Playing());
    const int after = Time();
    EXPECT_GE(after, before);
    EXPECT_TRUE(WaitFor([&] { return Time() > after; }, 5000));
}

}  // namespace
}  // namespace lumora::e2e
