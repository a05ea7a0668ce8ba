// The sound card inspector against Wine's real waveOut: the window shows what the sound driver reports.
#include <windows.h>
// (mmsystem.h needs windows.h first)
#include <mmsystem.h>

#include <gtest/gtest.h>

#include <bit>

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/SoundCardWindow_win.h"

namespace lumora {
namespace {

std::wstring gName;
LRESULT gFormats = -1, gFormatsAgain = -1;

// Runs inside the inspector's modal loop: reads it, asks again, closes it.
void CALLBACK ReadInspector(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dlg = FindWindowW(L"#32770", Widen(ids::kSoundCardTitle).c_str());
    if (!dlg) return;  // not up yet: the next tick
    KillTimer(nullptr, timer);
    gName = WindowTextOf(GetDlgItem(dlg, ids::IDC_SOUND_NAME));
    gFormats = SendDlgItemMessageW(dlg, ids::IDC_SOUND_FORMATS, LB_GETCOUNT, 0, 0);
    SendDlgItemMessageW(dlg, ids::IDC_SOUND_AGAIN, BM_CLICK, 0, 0);
    gFormatsAgain = SendDlgItemMessageW(dlg, ids::IDC_SOUND_FORMATS, LB_GETCOUNT, 0, 0);
    SendMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
}

TEST(SoundCardPlatform, ShowsTheFirstDeviceAndReadsItAgain) {
    // Wine's device 0 is the PulseAudio sink scripts/wine-env.sh starts.
    WAVEOUTCAPSW caps{};
    ASSERT_EQ(waveOutGetDevCapsW(0, &caps, sizeof caps), MMSYSERR_NOERROR) << "run under scripts/wine-env.sh";
    ASSERT_NE(caps.szPname[0], L'\0');
    SetTimer(nullptr, 0, 200, ReadInspector);
    ShowSoundCardInspector(nullptr);
    EXPECT_EQ(gName, std::wstring(L"产品（声卡）名称：") + caps.szPname);
    EXPECT_EQ(gFormats, std::popcount(caps.dwFormats & 0xFFFu));
    EXPECT_EQ(gFormatsAgain, gFormats);  // refilled, not added to
}

}  // namespace
}  // namespace lumora
