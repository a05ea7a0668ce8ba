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

RECT WindowRectOf(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return r;
}

// What a drag to `r` becomes: the list window answers WM_MOVING in place. (Wine carries the rectangle of
// WM_MOVING across processes both ways, as it does for the messages the system itself sends so.)
RECT Drag(HWND list, RECT r) {
    SendMessageW(list, WM_MOVING, WMSZ_LEFT, reinterpret_cast<LPARAM>(&r));
    SendMessageW(list, WM_EXITSIZEMOVE, 0, 0);
    return r;
}

// The alpha a layered window is drawn with; 255 for a plain one.
int AlphaOf(HWND window) {
    if (!(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYERED)) return 255;
    BYTE alpha = 0;
    DWORD flags = 0;
    if (!GetLayeredWindowAttributes(window, nullptr, &alpha, &flags) || !(flags & LWA_ALPHA)) return -1;
    return alpha;
}

::testing::AssertionResult HasAlpha(HWND window, int alpha) {
    if (WaitFor([&] { return AlphaOf(window) == alpha; })) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "alpha " << AlphaOf(window) << " instead of " << alpha;
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
    ASSERT_TRUE(lumora_.Start(""));  // the list opens with it ("L57")
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.list) != FALSE; }));
    // Its menu entry hides it (after its fade) and shows it again.
    Command(lumora_.main, IDM_SHOW_PLAYLIST);
    ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(lumora_.list); }));
    Command(lumora_.main, IDM_SHOW_PLAYLIST);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.list) != FALSE; }));
    const auto docked = [&] {
        const RECT m = WindowRectOf(lumora_.main), l = WindowRectOf(lumora_.list);
        return l.left == m.right && l.top == m.top && l.bottom == m.bottom;
    };
    ASSERT_TRUE(WaitFor(docked));
    SetWindowPos(lumora_.main, nullptr, 40, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitFor(docked)) << "moves with the main window";

    // Dragged away it stays; dragged close to the bottom edge it snaps there and takes the edge's width.
    const RECT main = WindowRectOf(lumora_.main), list = WindowRectOf(lumora_.list);
    const LONG width = list.right - list.left, height = list.bottom - list.top;
    const RECT away =
        Drag(lumora_.list, {main.right + 80, main.top + 50, main.right + 80 + width, main.top + 50 + height});
    EXPECT_EQ(away.left, main.right + 80);
    SetWindowPos(lumora_.list, nullptr, away.left, away.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(lumora_.main, nullptr, 20, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(WaitFor([&] { return WindowRectOf(lumora_.main).left == 20; }));
    EXPECT_EQ(WindowRectOf(lumora_.list).left, away.left);
    const RECT m = WindowRectOf(lumora_.main);
    const RECT snapped = Drag(lumora_.list, {m.left + 5, m.bottom + 6, m.left + 5 + width, m.bottom + 6 + height});
    EXPECT_EQ(snapped.left, m.left);
    EXPECT_EQ(snapped.top, m.bottom);
    EXPECT_TRUE(WaitFor([&] {
        const RECT l = WindowRectOf(lumora_.list);
        return l.left == m.left && l.top == m.bottom && l.right == m.right;
    }));
}

// The INI file's transparency on the windows, and the page "透明度" that previews, keeps and puts back.
TEST_F(WindowsTest, TransparencyComesFromTheIniFileAndTheSettingsPageKeepsItOnlyOnConfirmation) {
    std::filesystem::create_directories(PlayerIni().parent_path());
    WriteBytes(PlayerIni(), Cp936("[透明度]\r\nform_tm_check1=1\r\nform_tm_0=200\r\nform_tm_1=150\r\nform_tm_2=9\r\n"));
    ASSERT_TRUE(lumora_.Start(""));
    EXPECT_TRUE(HasAlpha(lumora_.main, 200));
    EXPECT_TRUE(HasAlpha(lumora_.list, 150));
    Command(lumora_.main, IDM_LYRICS_WINDOW);
    HWND lyrics = WaitForWindow(lumora_.process.Id(), L"LumoraAudioDisplay");
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lyrics) != FALSE; }));
    EXPECT_TRUE(HasAlpha(lyrics, 255)) << "a value out of range leaves the window opaque";

    const auto page = [&](HWND dialog, int id) {
        for (HWND p = FindWindowExW(dialog, nullptr, L"#32770", nullptr); p;
             p = FindWindowExW(dialog, p, L"#32770", nullptr)) {
            if (HWND control = GetDlgItem(p, id)) return control;
        }
        return HWND{};
    };
    const auto slide = [&](HWND slider, int to) {
        SendMessageW(slider, TBM_SETPOS, TRUE, to);
        SendMessageW(GetParent(slider), WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, to), reinterpret_cast<LPARAM>(slider));
    };
    HWND dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    HWND slider = page(dialog, IDC_TRANSPARENCY_SLIDER);
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(SendMessageW(slider, TBM_GETPOS, 0, 0), 200);
    EXPECT_EQ(Text(page(dialog, IDC_TRANSPARENCY_VALUE)), "主窗体：200");
    slide(slider, 90);
    EXPECT_TRUE(HasAlpha(lumora_.main, 90)) << "shown while the slider moves";
    EXPECT_EQ(Text(page(dialog, IDC_TRANSPARENCY_VALUE)), "主窗体：90");
    Click(dialog, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_TRUE(HasAlpha(lumora_.main, 200)) << "put back on 取消";
    EXPECT_EQ(IniValue("透明度", "form_tm_0"), "200");

    dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    slide(page(dialog, IDC_TRANSPARENCY_SLIDER + 2), 120);
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_EQ(IniValue("透明度", "form_tm_2"), "120");
    EXPECT_EQ(IniValue("透明度", "form_tm_0"), "200");
    EXPECT_TRUE(HasAlpha(lyrics, 120));

    // Switched off: every window opaque, and so it stays.
    dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    HWND on = page(dialog, IDC_TRANSPARENCY_ON);
    SendMessageW(on, BM_SETCHECK, BST_UNCHECKED, 0);
    SendMessageW(GetParent(on), WM_COMMAND, MAKEWPARAM(IDC_TRANSPARENCY_ON, BN_CLICKED), reinterpret_cast<LPARAM>(on));
    EXPECT_FALSE(IsWindowEnabled(page(dialog, IDC_TRANSPARENCY_SLIDER)));
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_EQ(IniValue("透明度", "form_tm_check1"), "0");
    for (HWND w : {lumora_.main, lumora_.list, lyrics}) EXPECT_TRUE(HasAlpha(w, 255));
}

// "FromX" and "FromY": the lyrics window opens where it was, and never off every screen.
TEST_F(WindowsTest, TheLyricsWindowComesBackWhereItWasAndNeverOffScreen) {
    const int dpi = [] {
        HDC screen = GetDC(nullptr);
        const int d = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        return d;
    }();
    ASSERT_TRUE(lumora_.Start(""));
    Command(lumora_.main, IDM_LYRICS_WINDOW);
    HWND lyrics = WaitForWindow(lumora_.process.Id(), L"LumoraAudioDisplay");
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lyrics) != FALSE; }));
    SetWindowPos(lyrics, nullptr, 96, 192, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    PostMessageW(lumora_.main, WM_CLOSE, 0, 0);
    ASSERT_EQ(lumora_.process.ExitCode(), 0u);
    EXPECT_EQ(IniValue("窗口位置", "FromX"), std::to_string(96 * 1440 / dpi));
    EXPECT_EQ(IniValue("窗口位置", "FromY"), std::to_string(192 * 1440 / dpi));

    ASSERT_TRUE(lumora_.Start(""));
    Command(lumora_.main, IDM_LYRICS_WINDOW);
    lyrics = WaitForWindow(lumora_.process.Id(), L"LumoraAudioDisplay");
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lyrics) != FALSE; }));
    EXPECT_EQ(WindowRectOf(lyrics).left, 96);
    EXPECT_EQ(WindowRectOf(lyrics).top, 192);
    PostMessageW(lumora_.main, WM_CLOSE, 0, 0);
    ASSERT_EQ(lumora_.process.ExitCode(), 0u);

    // Kept on a monitor that is gone: it comes back on the screen's work area.
    WriteBytes(PlayerIni(), Cp936("[窗口位置]\r\nFromX=900000\r\nFromY=-900000\r\n"));
    ASSERT_TRUE(lumora_.Start(""));
    Command(lumora_.main, IDM_LYRICS_WINDOW);
    lyrics = WaitForWindow(lumora_.process.Id(), L"LumoraAudioDisplay");
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lyrics) != FALSE; }));
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const RECT r = WindowRectOf(lyrics);
    EXPECT_EQ(r.right, work.right);
    EXPECT_EQ(r.top, work.top);
}

}  // namespace lumora::e2e

namespace lumora::e2e {

// Lumora's own boxes answer the keyboard as the system's do: Ctrl+C copies the box, Esc closes it.
TEST_F(SessionTest, ABoxCopiesItsTextWithCtrlCAndClosesWithEscape) {
    ASSERT_TRUE(lumora_.Start(""));
    HWND box = OpenBox(lumora_.main, IDM_ASSIGN_LYRICS, "指定歌词文件");
    ASSERT_NE(box, nullptr);
    const std::string text = BoxText(box);
    ASSERT_FALSE(text.empty());
    SetForegroundWindow(box);
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == box; }));
    const auto press = [](std::initializer_list<WORD> keys) {
        std::vector<INPUT> inputs;
        for (WORD k : keys) inputs.push_back({INPUT_KEYBOARD, {.ki = {k, 0, 0, 0, 0}}});
        for (auto k = std::rbegin(keys); k != std::rend(keys); ++k)
            inputs.push_back({INPUT_KEYBOARD, {.ki = {*k, 0, KEYEVENTF_KEYUP, 0, 0}}});
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    };
    const auto clipboard = [] {
        std::string out;
        if (!OpenClipboard(nullptr)) return out;
        if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
            if (const auto* p = static_cast<const wchar_t*>(GlobalLock(data))) {
                out = Narrow(p);
                GlobalUnlock(data);
            }
        }
        CloseClipboard();
        return out;
    };
    // Pressed again until the copy shows: the first keys may reach the box before it has the keyboard.
    EXPECT_TRUE(WaitFor([&] {
        press({VK_CONTROL, 'C'});
        return WaitFor([&] { return clipboard() == "指定歌词文件\r\n\r\n" + text; }, 500);
    })) << clipboard();
    press({VK_ESCAPE});
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
}

}  // namespace lumora::e2e
