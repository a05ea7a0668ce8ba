// The song menu "选歌", its block view and the flat menus, driven from outside: the menu is worked with
// the keys a user presses (posted to it, they reach its own loop), and its look is read from the screen.
#include <string>

#include "e2e/Driver.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"

namespace lumora::e2e {
namespace {

using namespace ids;

class SongMenuE2E : public SessionTest {
protected:
    // A folder of files "01.wav", "02.wav" …, opened; the first plays. The pointer waits in a corner.
    void Open(int count = 12) {
        for (int i = 1; i <= count; ++i) {
            const auto path = media_ / ((i < 10 ? L"0" : L"") + std::to_wstring(i) + L".wav");
            if (!std::filesystem::exists(path)) WriteBytes(path, SilentWave(30));
        }
        SetCursorPos(0, 0);
        ASSERT_TRUE(lumora_.Open(media_.Text()));
        ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == static_cast<size_t>(count); }));
        ASSERT_TRUE(lumora_.WaitForTitle("01.wav"));
    }
    // Opens a menu with `command` (the right-click menu for 0), types `keys` into it and waits until it is gone.
    // With `colour`, first waits for the screen to show it a little inside the first line's right end.
    bool Menu(int command, std::initializer_list<UINT> keys, COLORREF colour = CLR_INVALID) {
        RECT r{};
        GetWindowRect(lumora_.main, &r);
        PostMessageW(lumora_.main, command ? WM_COMMAND : WM_CONTEXTMENU,
                     command ? static_cast<WPARAM>(command) : reinterpret_cast<WPARAM>(lumora_.main),
                     command ? 0 : MAKELPARAM(r.left + 40, r.top + 60));
        const auto shown = [&] { return FindWindowOf(lumora_.process.Id(), L"#32768"); };
        HWND menu = nullptr;
        EXPECT_TRUE(WaitFor([&] { return (menu = shown()) != nullptr && IsWindowVisible(menu); }));
        bool drawn = colour == CLR_INVALID || WaitFor(
                                                  [&] {
                                                      GetWindowRect(menu, &r);
                                                      HDC screen = GetDC(nullptr);
                                                      const COLORREF at = GetPixel(screen, r.right - 10, r.top + 8);
                                                      ReleaseDC(nullptr, screen);
                                                      return at == colour;
                                                  },
                                                  3000);
        for (const UINT key : keys) {
            PostMessageW(menu, WM_KEYDOWN, key, 1);
            PostMessageW(menu, WM_KEYUP, key, 0xC0000001);
        }
        EXPECT_TRUE(WaitFor([&] { return !shown() || !IsWindowVisible(shown()); }));
        return drawn;
    }
};

// Five a column, chosen by hand: from the first line, Right goes to the next column (entry 6, then 11),
// Down to entry 12, and Enter plays it. The right-click menu's entry opens the same menu. Beyond the lower
// bound, blocks of fifty (five columns of ten) are sub-menus: the second opened starts with entry 51.
TEST_F(SongMenuE2E, ColumnsAndBlocksAndTheChosenEntryPlays) {
    StoreOption("L39", "5");
    StoreOption("L40", "0");
    Open();
    EXPECT_FALSE(IsWindowVisible(GetDlgItem(lumora_.main, IDC_MAIN_SONG_BLOCKS)));
    Menu(IDC_MAIN_SONG_MENU, {VK_DOWN, VK_RIGHT, VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("12.wav"));
    Menu(IDM_SONG_MENU, {VK_DOWN, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("06.wav"));

    for (const auto& [name, text] : {std::pair{"L39", "10"}, {"L40", "1"}, {"L41", "2"}, {"L42", "40"}}) {
        StoreOption(name, text);
    }
    Open(60);
    Menu(IDC_MAIN_SONG_MENU, {VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(lumora_.WaitForTitle("51.wav"));
}

// "使用XP菜单…" with the user's menu colours: the song menu and the right-click menu are drawn in them. Switched
// on in the settings it works at once; switched off, only from the next start.
TEST_F(SongMenuE2E, FlatMenusInTheUsersColoursAtOnceAndUntilTheNextStart) {
    const COLORREF background = RGB(20, 160, 60);
    StoreOption("L24", "1");
    StoreOption("L1B", std::to_string(background).c_str());
    StoreOption("L65", "0");
    const auto flat = [&] {
        const bool songMenu = Menu(IDC_MAIN_SONG_MENU, {VK_ESCAPE}, background);
        return Menu(0, {VK_ESCAPE}, background) && songMenu;
    };
    const auto setFlat = [&](bool on) {
        HWND dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
        ASSERT_NE(dialog, nullptr);
        HWND box = nullptr;
        for (HWND page = nullptr; !box && (page = FindWindowExW(dialog, page, L"#32770", nullptr));) {
            box = GetDlgItem(page, FormControlId(opt::kXpMenus));
        }
        SendMessageW(box, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
        Click(dialog, IDOK);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    };
    Open();
    EXPECT_FALSE(flat());
    setFlat(true);
    EXPECT_TRUE(flat());
    Open();
    EXPECT_TRUE(flat());
    setFlat(false);
    EXPECT_TRUE(flat());
    Open();
    EXPECT_FALSE(flat());
}

// "模块式"选歌: a block per entry under the controls, inside the window; a click on one plays it.
TEST_F(SongMenuE2E, BlockViewPlaysTheClickedBlock) {
    StoreOption("L62", "1");
    Open();
    HWND blocks = GetDlgItem(lumora_.main, IDC_MAIN_SONG_BLOCKS);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(blocks) != FALSE; }));
    RECT view{}, status{};
    GetWindowRect(blocks, &view);
    GetWindowRect(GetDlgItem(lumora_.main, IDC_MAIN_STATUS), &status);
    EXPECT_LE(view.bottom, status.top);
    // The second block of the first row (blocks of 34 by 20 pixels, 4 apart, at 96 DPI).
    PostMessageW(blocks, WM_LBUTTONUP, 0, MAKELPARAM(4 + 38 + 17, 4 + 10));
    EXPECT_TRUE(lumora_.WaitForTitle("02.wav"));
}

}  // namespace
}  // namespace lumora::e2e
