// Balloons of tooltip.dll and the notification-area icon, on the real Lumora.
// The DesktopTray tests need a taskbar: tests/e2e/run-desktop-tests.sh runs them on a Wine desktop that has one.
#include <commctrl.h>
#include <shellapi.h>

#include "e2e/Driver.h"
#include "ui/TrayIcon_win.h"
#include "ui/tooltip/Tooltip.h"

namespace lumora::e2e {
namespace {

using namespace ids;

// The text of the balloon tooltip.dll shows for `main`; empty while none shows.
std::string ShownBalloon(DWORD pid, HWND main) {
    for (HWND tips : AllWindows(L"tooltips_class32")) {
        DWORD owner = 0;
        GetWindowThreadProcessId(tips, &owner);
        if (owner != pid || !IsWindowVisible(tips)) continue;
        constexpr size_t kChars = 512;
        const std::string answer =
            AskInto(tips, TTM_GETTEXTW, kChars, sizeof(TOOLINFOW) + kChars * sizeof(wchar_t), [&](char* remote) {
                TOOLINFOW info{};
                info.cbSize = TTTOOLINFOW_V2_SIZE;
                info.hwnd = main;
                info.uId = kBalloonToolId;
                info.lpszText = reinterpret_cast<wchar_t*>(remote + sizeof(TOOLINFOW));
                return std::string(reinterpret_cast<const char*>(&info), sizeof info);
            });
        const std::string text = Narrow(reinterpret_cast<const wchar_t*>(answer.data() + sizeof(TOOLINFOW)));
        if (!text.empty()) return text;
    }
    return {};
}

// "播放信息(气泡提示)": a file that starts names itself in a balloon; the start-up balloon comes first.
TEST_F(SessionTest, BalloonsTellTheStartAndThePlayingFile) {
    StoreOption("L70", "1");
    StoreOption("L71", "1");
    WriteBytes(media_ / L"报时 Song.wav", SilentWave(30));
    ASSERT_TRUE(lumora_.Start(""));
    std::string shown;
    EXPECT_TRUE(WaitFor([&] {
        return (shown = ShownBalloon(lumora_.process.Id(), lumora_.main)).find("版本") != std::string::npos;
    })) << shown;
    lumora_.process.Kill();
    StoreOption("L70", "0");  // its balloon would take the place of the file's
    ASSERT_TRUE(lumora_.Open(PathText(media_ / L"报时 Song.wav")));
    EXPECT_TRUE(lumora_.Playing());
    EXPECT_TRUE(WaitFor([&] {
        return (shown = ShownBalloon(lumora_.process.Id(), lumora_.main)).starts_with("报时 Song.wav\r\n");
    })) << shown;
}

// The list's tip tells of the entry under the pointer: "经典" its whole line and path, else its information.
// The previous and next buttons name their neighbours, the volume its per cent.
TEST_F(SessionTest, TipsTellOfWhatThePointerIsOn) {
    StoreOption("L22", "1");
    StoreOption("L70", "0");
    for (const wchar_t* name : {L"一.wav", L"二.wav"}) WriteBytes(media_ / name, SilentWave(30));
    ASSERT_TRUE(lumora_.Open(media_.Text()));
    ASSERT_EQ(lumora_.Lines().size(), 2u);
    HWND lines = GetDlgItem(lumora_.list, IDC_PLAYLIST_LINES);
    HWND listTips = nullptr;
    for (HWND w : AllWindows(L"tooltips_class32")) listTips = GetWindow(w, GW_OWNER) == lumora_.list ? w : listTips;
    ASSERT_NE(listTips, nullptr);
    if (!IsWindowVisible(lumora_.list)) Click(lumora_.main, IDC_MAIN_LIST);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.list) != FALSE; }));
    // The middle of the second line (the list shows from its first).
    const auto height = static_cast<int>(SendMessageW(lines, LB_GETITEMHEIGHT, 0, 0));
    PostMessageW(lines, WM_MOUSEMOVE, 0, MAKELPARAM(8, height + height / 2));
    const std::string path = PathText(media_ / L"二.wav");
    EXPECT_TRUE(WaitFor([&] { return ToolTipText(listTips, lines) == lumora_.Lines()[1] + "\r\n" + path; }))
        << ToolTipText(listTips, lines);

    HWND mainTips = nullptr;  // the component's help window: the main window's with the most tools
    for (HWND w : AllWindows(L"tooltips_class32")) {
        if (GetWindow(w, GW_OWNER) == lumora_.main &&
            (!mainTips || SendMessageW(w, TTM_GETTOOLCOUNT, 0, 0) > SendMessageW(mainTips, TTM_GETTOOLCOUNT, 0, 0)))
            mainTips = w;
    }
    ASSERT_NE(mainTips, nullptr);
    const auto tipOf = [&](int id) { return ToolTipText(mainTips, GetDlgItem(lumora_.main, id)); };
    EXPECT_TRUE(WaitFor([&] { return tipOf(IDC_MAIN_NEXT).ends_with(lumora_.Lines()[1]); })) << tipOf(IDC_MAIN_NEXT);
    EXPECT_TRUE(tipOf(IDC_MAIN_VOLUME).ends_with("100%")) << tipOf(IDC_MAIN_VOLUME);
}

// Whether the shell holds Lumora's icon: changing nothing in it succeeds only for an icon that exists.
bool IconShown(HWND main) {
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;
    data.hWnd = main;
    data.uID = 1;
    return Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
}

// "“最小化到任务拦”": the icon stands from the start; minimised, the main window waits behind it, and the icon's
// menu and a click bring it back; after Explorer restarts, the icon is there again.
TEST_F(SessionTest, DesktopTrayIconHoldsTheMinimisedWindow) {
    // Wine's taskbar shows itself with its first icon.
    ASSERT_TRUE(FindWindowW(L"Shell_TrayWnd", nullptr)) << "no taskbar: run on a Wine desktop (run-desktop-tests.sh)";
    StoreOption("L11", "1");
    StoreOption("L70", "0");
    ASSERT_TRUE(lumora_.Start(""));
    HWND main = lumora_.main;
    EXPECT_TRUE(WaitFor([&] { return IconShown(main); }));

    ShowWindow(main, SW_MINIMIZE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(main); }));
    // The icon's menu: "显示(&S)" chosen by its key.
    PostMessageW(main, kWmTrayIcon, 1, WM_RBUTTONUP);
    HWND menu = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (menu = FindWindowOf(lumora_.process.Id(), L"#32768")) != nullptr; }));
    PostMessageW(menu, WM_CHAR, 's', 0);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(main) && !IsIconic(main); }));

    ShowWindow(main, SW_MINIMIZE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(main); }));
    PostMessageW(main, kWmTrayIcon, 1, WM_LBUTTONUP);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(main) && !IsIconic(main); }));

    // A new Explorer knows no icons and says so to every window.
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;
    data.hWnd = main;
    data.uID = 1;
    ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &data));
    PostMessageW(main, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(WaitFor([&] { return IconShown(main); }));
}

}  // namespace
}  // namespace lumora::e2e
