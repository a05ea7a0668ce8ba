// The windows around the player: the list window docked to the main window, transparency and its
// settings page, and the lyrics window's kept place.
#include <commctrl.h>

#include "e2e/Driver.h"
#include "settings/IniDocument.h"

namespace lumora::e2e {
namespace {

using namespace ids;

std::filesystem::path PlayerIni() { return Widen(Env(L"APPDATA")) + L"\\Lumora\\tavrinplay.ini"; }
std::string IniValue(const std::string& section, const std::string& key) {
    return IniDocument(ReadBytes(PlayerIni())).Get(section, key).value_or("-");
}
RECT RectOf(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return r;
}

// What a drag to `r` becomes (Wine carries WM_MOVING's rectangle across processes both ways).
RECT Drag(HWND list, RECT r) {
    SendMessageW(list, WM_MOVING, WMSZ_LEFT, reinterpret_cast<LPARAM>(&r));
    SendMessageW(list, WM_EXITSIZEMOVE, 0, 0);
    return r;
}

// Waits for the window's layered alpha (255 for a plain window).
::testing::AssertionResult HasAlpha(HWND window, int alpha) {
    BYTE now = 255;
    const bool reached = WaitFor([&] {
        now = 255;
        if (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYERED)
            GetLayeredWindowAttributes(window, nullptr, &now, nullptr);
        return now == alpha;
    });
    return reached ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "alpha " << int{now};
}

HWND ShowLyricsWindow(const Session& lumora) {
    Command(lumora.main, IDM_LYRICS_WINDOW);
    HWND lyrics = WaitForWindow(lumora.process.Id(), L"LumoraAudioDisplay");
    return WaitFor([&] { return IsWindowVisible(lyrics) != FALSE; }) ? lyrics : nullptr;
}

class WindowsTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        std::filesystem::remove(PlayerIni());
    }
    void TearDown() override {
        SessionTest::TearDown();
        std::filesystem::remove(PlayerIni());
    }
};

}  // namespace

TEST_F(WindowsTest, TheDockedListFollowsTheMainWindowAndStaysWhereItWasDraggedAway) {
    ASSERT_TRUE(lumora_.Start(""));  // the list opens with it ("L57"); its menu entry hides (after a fade) and shows it
    Command(lumora_.main, IDM_SHOW_PLAYLIST);
    ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(lumora_.list); }));
    Command(lumora_.main, IDM_SHOW_PLAYLIST);
    const auto docked = [&] {
        const RECT m = RectOf(lumora_.main), l = RectOf(lumora_.list);
        return IsWindowVisible(lumora_.list) && l.left == m.right && l.top == m.top && l.bottom == m.bottom;
    };
    ASSERT_TRUE(WaitFor(docked));
    SetWindowPos(lumora_.main, nullptr, 40, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitFor(docked)) << "moves with the main window";

    // Dragged away it stays there.
    const RECT m = RectOf(lumora_.main), l = RectOf(lumora_.list);
    const RECT away = Drag(lumora_.list, {m.right + 80, m.top + 50, l.right + 80, l.bottom + 50});
    SetWindowPos(lumora_.list, nullptr, away.left, away.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(lumora_.main, nullptr, 20, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(WaitFor([&] { return RectOf(lumora_.main).left == 20; }));
    EXPECT_EQ(RectOf(lumora_.list).left, away.left);
    // Dragged close to the bottom edge it snaps there, and takes the whole edge.
    const RECT n = RectOf(lumora_.main);
    const RECT snapped = Drag(lumora_.list, {n.left + 5, n.bottom + 6, n.left + 305, n.bottom + 206});
    EXPECT_EQ(snapped.top, n.bottom);
    EXPECT_TRUE(WaitFor([&] { return RectOf(lumora_.list).right == n.right; }));
}

// The INI file's transparency on the windows, and the page "透明度" that previews, keeps and puts back.
TEST_F(WindowsTest, TransparencyComesFromTheIniFileAndTheSettingsPageKeepsItOnlyOnConfirmation) {
    std::filesystem::create_directories(PlayerIni().parent_path());
    WriteBytes(PlayerIni(), Cp936("[透明度]\r\nform_tm_check1=1\r\nform_tm_0=200\r\nform_tm_1=150\r\nform_tm_2=9\r\n"));
    ASSERT_TRUE(lumora_.Start(""));
    EXPECT_TRUE(HasAlpha(lumora_.main, 200));
    EXPECT_TRUE(HasAlpha(lumora_.list, 150));
    HWND lyrics = ShowLyricsWindow(lumora_);
    ASSERT_NE(lyrics, nullptr);
    EXPECT_TRUE(HasAlpha(lyrics, 255)) << "a value out of range leaves the window opaque";

    HWND dialog = nullptr;
    const auto control = [&](int id) {
        for (HWND p = FindWindowExW(dialog, nullptr, L"#32770", nullptr); p;
             p = FindWindowExW(dialog, p, L"#32770", nullptr))
            if (HWND c = GetDlgItem(p, id)) return c;
        return HWND{};
    };
    const auto slide = [&](int id, int to) {
        SendMessageW(control(id), TBM_SETPOS, TRUE, to);
        SendMessageW(GetParent(control(id)), WM_HSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(control(id)));
    };
    const auto close = [&](int button) {
        Click(dialog, button);
        return WaitFor([&] { return !IsWindow(dialog); });
    };
    ASSERT_TRUE(dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle));
    EXPECT_EQ(SendMessageW(control(IDC_TRANSPARENCY_SLIDER), TBM_GETPOS, 0, 0), 200);
    slide(IDC_TRANSPARENCY_SLIDER, 90);
    EXPECT_TRUE(HasAlpha(lumora_.main, 90)) << "shown while the slider moves";
    EXPECT_EQ(Text(control(IDC_TRANSPARENCY_VALUE)), "主窗体：90");
    ASSERT_TRUE(close(IDCANCEL));
    EXPECT_TRUE(HasAlpha(lumora_.main, 200)) << "put back on 取消";
    EXPECT_EQ(IniValue("透明度", "form_tm_0"), "200");

    ASSERT_TRUE(dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle));
    slide(IDC_TRANSPARENCY_SLIDER + 2, 120);
    ASSERT_TRUE(close(IDOK));
    EXPECT_EQ(IniValue("透明度", "form_tm_2"), "120");
    EXPECT_EQ(IniValue("透明度", "form_tm_0"), "200");
    EXPECT_TRUE(HasAlpha(lyrics, 120));
}

// "FromX" and "FromY": the lyrics window's place is kept, and never restored off every screen.
TEST_F(WindowsTest, TheLyricsWindowKeepsItsPlaceButNeverOffScreen) {
    ASSERT_TRUE(lumora_.Start(""));
    HWND lyrics = ShowLyricsWindow(lumora_);
    ASSERT_NE(lyrics, nullptr);
    SetWindowPos(lyrics, nullptr, 96, 192, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    PostMessageW(lumora_.main, WM_CLOSE, 0, 0);
    ASSERT_EQ(lumora_.process.ExitCode(), 0u);
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(IniValue("窗口位置", "FromX"), std::to_string(96 * 1440 / dpi));
    EXPECT_EQ(IniValue("窗口位置", "FromY"), std::to_string(192 * 1440 / dpi));

    WriteBytes(PlayerIni(), Cp936("[窗口位置]\r\nFromX=900000\r\nFromY=-900000\r\n"));  // a monitor now gone
    ASSERT_TRUE(lumora_.Start(""));
    ASSERT_NE(lyrics = ShowLyricsWindow(lumora_), nullptr);
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    EXPECT_EQ(RectOf(lyrics).right, work.right);
    EXPECT_EQ(RectOf(lyrics).top, work.top);
}

}  // namespace lumora::e2e
