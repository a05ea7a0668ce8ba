// The song menu "选歌", its block view and the flat menus, driven from outside: the menu is worked with
// the keys a user presses, and its look read from the screen.
#include <string>

#include "e2e/Driver.h"

namespace lumora::e2e {
namespace {

using namespace ids;

// The pop-up menu window Lumora shows now.
HWND WaitForPopupMenu(DWORD pid) {
    HWND menu = nullptr;
    WaitFor([&] { return (menu = FindWindowOf(pid, L"#32768")) != nullptr && IsWindowVisible(menu); });
    return menu;
}

bool MenuGone(DWORD pid) {
    return WaitFor([&] {
        HWND menu = FindWindowOf(pid, L"#32768");
        return !menu || !IsWindowVisible(menu);
    });
}

// Keys typed while a menu is open go to the menu's own loop.
void Keys(HWND menu, std::initializer_list<UINT> keys) {
    for (const UINT key : keys) {
        PostMessageW(menu, WM_KEYDOWN, key, 1);
        PostMessageW(menu, WM_KEYUP, key, 0xC0000001);
    }
}

// The colour the screen shows a little inside the first line's right end, away from its text.
COLORREF FirstLineColour(HWND menu) {
    RECT r{};
    GetWindowRect(menu, &r);
    HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, r.right - 10, r.top + 8);
    ReleaseDC(nullptr, screen);
    return colour;
}

class SongMenuE2E : public SessionTest {
protected:
    // A folder of files "01.wav", "02.wav" …, opened; the first plays. The pointer waits in a corner, away
    // from the menus.
    void Open(int count = 12) {
        for (int i = 1; i <= count; ++i) {
            WriteBytes(media_ / ((i < 10 ? L"0" : L"") + std::to_wstring(i) + L".wav"), SilentWave(30));
        }
        SetCursorPos(0, 0);
        ASSERT_TRUE(lumora_.Open(media_.Text()));
        ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == static_cast<size_t>(count); }));
        ASSERT_TRUE(lumora_.WaitForTitle("01.wav"));
    }
};

// Five a column, chosen by hand: from the first line, Right goes to the next column (entry 6, then 11),
// Down to entry 12, and Enter plays it. The right-click menu opens the same menu.
TEST_F(SongMenuE2E, ColumnsOfTheChosenLengthAndTheChosenEntryPlays) {
    StoreOption("L39", "5");
    StoreOption("L40", "0");
    StoreOption("L65", "0");
    Open();
    const DWORD pid = lumora_.process.Id();
    EXPECT_FALSE(IsWindowVisible(GetDlgItem(lumora_.main, IDC_MAIN_SONG_BLOCKS)));

    Click(lumora_.main, IDC_MAIN_SONG_MENU);
    HWND menu = WaitForPopupMenu(pid);
    ASSERT_NE(menu, nullptr);
    Keys(menu, {VK_DOWN, VK_RIGHT, VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("12.wav"));
    EXPECT_TRUE(MenuGone(pid));

    Command(lumora_.main, IDM_SONG_MENU);
    menu = WaitForPopupMenu(pid);
    ASSERT_NE(menu, nullptr);
    Keys(menu, {VK_DOWN, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("06.wav"));
}

// More than the lower bound: blocks of entries, each a sub-menu.
TEST_F(SongMenuE2E, BeyondTheLowerBoundTheMenuHasBlocks) {
    StoreOption("L39", "10");
    StoreOption("L41", "2");
    StoreOption("L42", "40");
    Open(60);
    const DWORD pid = lumora_.process.Id();
    Click(lumora_.main, IDC_MAIN_SONG_MENU);
    HWND menu = WaitForPopupMenu(pid);
    ASSERT_NE(menu, nullptr);
    // Blocks of fifty (five columns of ten): the second block, opened, starts with entry 51.
    Keys(menu, {VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("51.wav"));
}

// "使用XP菜单…" with the user's menu colours: the song menu and the right-click menu are drawn in them.
// Without it, neither is.
TEST_F(SongMenuE2E, FlatMenusInTheUsersColours) {
    const COLORREF background = RGB(20, 160, 60);
    StoreOption("L24", "1");
    StoreOption("L1B", std::to_string(background).c_str());
    StoreOption("L1F", std::to_string(RGB(250, 250, 210)).c_str());
    for (const char* flat : {"1", "0"}) {
        SCOPED_TRACE(flat);
        StoreOption("L65", flat);
        Open();
        const DWORD pid = lumora_.process.Id();
        const auto drawnIn = [&](COLORREF colour, HWND menu) {
            return WaitFor([&] { return FirstLineColour(menu) == colour; }, 5000);
        };
        Click(lumora_.main, IDC_MAIN_SONG_MENU);
        HWND menu = WaitForPopupMenu(pid);
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(drawnIn(background, menu), *flat == '1') << std::hex << FirstLineColour(menu);
        Keys(menu, {VK_ESCAPE});
        ASSERT_TRUE(MenuGone(pid));

        RECT r{};
        GetWindowRect(lumora_.main, &r);
        PostMessageW(lumora_.main, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(lumora_.main),
                     MAKELPARAM(r.left + 40, r.top + 60));
        menu = WaitForPopupMenu(pid);
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(drawnIn(background, menu), *flat == '1') << std::hex << FirstLineColour(menu);
        Keys(menu, {VK_ESCAPE});
        ASSERT_TRUE(MenuGone(pid));
        lumora_.process.Kill();
    }
}

// "模块式"选歌: a block per entry under the controls; a click on one plays it.
TEST_F(SongMenuE2E, BlockViewPlaysTheClickedBlock) {
    StoreOption("L62", "1");
    Open();
    HWND blocks = GetDlgItem(lumora_.main, IDC_MAIN_SONG_BLOCKS);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(blocks) != FALSE; }));
    // Inside the window, above its status bar.
    RECT view{}, status{}, client{};
    GetWindowRect(blocks, &view);
    GetWindowRect(GetDlgItem(lumora_.main, IDC_MAIN_STATUS), &status);
    GetClientRect(lumora_.main, &client);
    MapWindowPoints(lumora_.main, nullptr, reinterpret_cast<POINT*>(&client), 2);
    EXPECT_LE(view.bottom, status.top);
    EXPECT_GE(view.top, client.top);
    // The second block of the first row (blocks of 34 by 20 pixels, 4 apart, at 96 DPI).
    PostMessageW(blocks, WM_LBUTTONUP, 0, MAKELPARAM(4 + 38 + 17, 4 + 10));
    EXPECT_TRUE(lumora_.WaitForTitle("02.wav"));
}

}  // namespace
}  // namespace lumora::e2e
