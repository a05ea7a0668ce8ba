// Balloons and tips of tooltip.dll and the notification-area icon, on the real Lumora. The Desktop tests need
// a taskbar: tests/e2e/run-desktop-tests.sh runs them on a Wine desktop that has one.
#include <commctrl.h>
#include <shellapi.h>

#include "e2e/Driver.h"
#include "ui/TrayIcon_win.h"
#include "ui/tooltip/Tooltip.h"

namespace lumora::e2e {
namespace {

using namespace ids;

// The text of the balloon tooltip.dll shows on `session`'s main window; empty while none shows.
std::string ShownBalloon(const Session& session) {
    for (HWND tips : AllWindows(L"tooltips_class32")) {
        DWORD owner = 0;
        GetWindowThreadProcessId(tips, &owner);
        if (owner != session.process.Id() || !IsWindowVisible(tips)) continue;
        if (std::string text = ToolText(tips, session.main, kBalloonToolId); !text.empty()) return text;
    }
    return {};
}

// "启动提示软件信息(气泡提示)" and "播放信息(气泡提示)": the version after the start, the file when it starts.
TEST_F(SessionTest, BalloonsTellTheStartAndThePlayingFile) {
    StoreOption("L70", "1");
    StoreOption("L71", "1");
    WriteBytes(media_ / L"报时 Song.wav", SilentWave(30));
    ASSERT_TRUE(lumora_.Start(""));
    std::string shown;
    EXPECT_TRUE(WaitFor([&] { return (shown = ShownBalloon(lumora_)).find("版本") != std::string::npos; })) << shown;
    lumora_.process.Kill();
    StoreOption("L70", "0");  // its balloon would come before the file's
    ASSERT_TRUE(lumora_.Open(PathText(media_ / L"报时 Song.wav")));
    EXPECT_TRUE(WaitFor([&] { return (shown = ShownBalloon(lumora_)).starts_with("报时 Song.wav\r\n"); })) << shown;
}

// The list's tip tells of the entry under the pointer: "经典" its whole line and path.
TEST_F(SessionTest, TipsTellOfWhatThePointerIsOn) {
    StoreOption("L22", "1");
    for (const wchar_t* name : {L"一.wav", L"二.wav"}) WriteBytes(media_ / name, SilentWave(30));
    ASSERT_TRUE(lumora_.Open(media_.Text()));
    ASSERT_EQ(lumora_.Lines().size(), 2u);
    if (!IsWindowVisible(lumora_.list)) Click(lumora_.main, IDC_MAIN_LIST);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.list) != FALSE; }));
    HWND lines = GetDlgItem(lumora_.list, IDC_PLAYLIST_LINES), listTips = HelpTips(lumora_.list);
    const auto height = static_cast<int>(SendMessageW(lines, LB_GETITEMHEIGHT, 0, 0));
    PostMessageW(lines, WM_MOUSEMOVE, 0, MAKELPARAM(8, height + height / 2));  // on the second line
    const std::string second = lumora_.Lines()[1] + "\r\n" + PathText(media_ / L"二.wav");
    EXPECT_TRUE(WaitFor([&] { return ToolTipText(listTips, lines) == second; })) << ToolTipText(listTips, lines);
}

// Lumora's icon, told to the shell by its window and number; changing nothing in it succeeds only when it exists.
bool Icon(HWND main, DWORD message) {
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;
    data.hWnd = main;
    data.uID = 1;
    return Shell_NotifyIconW(message, &data) != FALSE;
}

// "“最小化到任务拦”": the icon stands from the start; minimised, the main window waits behind it, and the icon's
// menu and a click bring it back; after Explorer restarts, the icon is there again.
TEST_F(SessionTest, DesktopTrayIconHoldsTheMinimisedWindow) {
    // Wine's taskbar shows itself with its first icon.
    ASSERT_TRUE(FindWindowW(L"Shell_TrayWnd", nullptr)) << "no taskbar: run on a Wine desktop (run-desktop-tests.sh)";
    StoreOption("L11", "1");
    ASSERT_TRUE(lumora_.Start(""));
    HWND main = lumora_.main;
    EXPECT_TRUE(WaitFor([&] { return Icon(main, NIM_MODIFY); }));
    const auto minimise = [&] {
        ShowWindow(main, SW_MINIMIZE);
        return WaitFor([&] { return !IsWindowVisible(main); });
    };
    const auto shown = [&] { return WaitFor([&] { return IsWindowVisible(main) && !IsIconic(main); }); };

    EXPECT_TRUE(minimise());
    PostMessageW(main, kWmTrayIcon, 1, WM_RBUTTONUP);  // the icon's menu: "显示(&S)" by its key
    HWND menu = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (menu = FindWindowOf(lumora_.process.Id(), L"#32768")) != nullptr; }));
    PostMessageW(menu, WM_CHAR, 's', 0);
    EXPECT_TRUE(shown());
    EXPECT_TRUE(minimise());
    PostMessageW(main, kWmTrayIcon, 1, WM_LBUTTONUP);
    EXPECT_TRUE(shown());

    // A new Explorer knows no icons and says so to every window.
    ASSERT_TRUE(Icon(main, NIM_DELETE));
    PostMessageW(main, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(WaitFor([&] { return Icon(main, NIM_MODIFY); }));
}

}  // namespace
}  // namespace lumora::e2e
