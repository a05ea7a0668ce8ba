// Lumora's skins end to end: each one draws the main window differently, a choice in the settings dialog or
// the skin menu shows at once, and in every skin and DPI the controls stay whole inside the window.
#include <shlwapi.h>

#include <array>
#include <set>

#include "e2e/Driver.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"

namespace lumora::e2e {
namespace {

using namespace ids;

COLORREF ScreenPixel(POINT at) {
    HDC screen = GetDC(nullptr);
    const COLORREF c = GetPixel(screen, at.x, at.y);
    ReleaseDC(nullptr, screen);
    return c;
}

// What the main window shows in three places: its background, its display and the face of a button.
using Look = std::array<COLORREF, 3>;
Look LookOf(HWND main) {
    POINT background{2, 2};
    POINT display{314, 35};
    ClientToScreen(main, &background);
    ClientToScreen(main, &display);
    RECT stop;
    GetWindowRect(GetDlgItem(main, IDC_MAIN_STOP), &stop);
    return {ScreenPixel(background), ScreenPixel(display), ScreenPixel({stop.left + 4, (stop.top + stop.bottom) / 2})};
}

// The look once it stands still (painted, and twice the same).
Look SettledLook(HWND main) {
    Look last{};
    WaitFor([&] {
        const Look now = LookOf(main);
        const bool same = now == last;
        last = now;
        return same && IsWindowVisible(main);
    });
    return last;
}

int Brightness(COLORREF c) { return (GetRValue(c) + GetGValue(c) + GetBValue(c)) / 3; }

// A control of one of the settings dialog's pages (each page is a child dialog of the frame).
HWND PageControl(HWND dialog, int id) {
    for (HWND page = FindWindowExW(dialog, nullptr, L"#32770", nullptr); page;
         page = FindWindowExW(dialog, page, L"#32770", nullptr)) {
        if (HWND control = GetDlgItem(page, id)) return control;
    }
    return nullptr;
}

TEST_F(SessionTest, EverySkinDrawsTheMainWindowInItsOwnColours) {
    std::set<Look> looks;
    for (const char* skin : {"0", "1", "2", "5", "6"}) {
        ForgetSettings();
        StoreOption("L35", skin);
        ASSERT_TRUE(lumora_.Start(""));
        const Look look = SettledLook(lumora_.main);
        EXPECT_TRUE(looks.insert(look).second) << "skin " << skin << " looks like another";
        lumora_.process.Kill();
    }
}

TEST_F(SessionTest, AChosenSkinShowsAtOnceFromTheSettingsDialogAndFromTheSkinMenu) {
    ASSERT_TRUE(lumora_.Start(""));
    const Look night = SettledLook(lumora_.main);
    EXPECT_LT(Brightness(night[0]), 100);  // the night sky is dark

    // "界面：" on the settings dialog's "窗口与界面" page, taken on "确定": the light silver skin (the fifth).
    HWND dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_TRUE(dialog);
    HWND skins = PageControl(dialog, FormControlId(opt::kSkin));
    ASSERT_TRUE(skins);
    SendMessageW(skins, CB_SETCURSEL, 4, 0);
    Click(dialog, IDOK);
    EXPECT_TRUE(WaitFor([&] { return Brightness(LookOf(lumora_.main)[0]) > 180; }))
        << std::hex << LookOf(lumora_.main)[0];
    EXPECT_EQ(ReadOption("L35"), "6");

    // The skin menu keeps its choice at once: the amber whirlwind, warm and dark.
    Command(lumora_.main, IDM_SKIN_FIRST);
    EXPECT_TRUE(WaitFor([&] { return ReadOption("L35") == std::optional<std::string>("0"); }));
    EXPECT_TRUE(WaitFor([&] {
        const COLORREF c = LookOf(lumora_.main)[0];
        return Brightness(c) < 100 && GetRValue(c) > GetBValue(c);
    })) << std::hex
        << LookOf(lumora_.main)[0];
}

// A tag line too long for its place runs through it.
TEST_F(SessionTest, ATagLineThatDoesNotFitRunsThroughItsPlace) {
    std::string tag = "TAG";
    for (char c : {'T', 'A', 'L'}) tag += std::string(30, c);  // title, artist, album
    tag += "2026" + std::string(30, 'C') + '\x0C';
    WriteBytes(media_ / L"long tag.wav", SilentWave(30) + tag);
    StoreOption("L30", "100");
    ASSERT_TRUE(lumora_.Open(PathText(media_ / L"long tag.wav")));
    ASSERT_TRUE(lumora_.Playing());
    ASSERT_TRUE(
        WaitFor([&] { return ControlText(lumora_.main, IDC_MAIN_TAG_LINE).find("TTTT") != std::string::npos; }));
    HWND line = GetDlgItem(lumora_.main, IDC_MAIN_TAG_LINE);
    const auto row = [&] {
        RECT r;
        GetWindowRect(line, &r);
        std::vector<COLORREF> pixels;
        for (LONG x = r.left; x < r.right; x += 2) pixels.push_back(ScreenPixel({x, (r.top + r.bottom) / 2}));
        return pixels;
    };
    // Moving, it shows ever new pictures (a repaint after the new text would give one more at most).
    std::set<std::vector<COLORREF>> seen;
    EXPECT_TRUE(WaitFor([&] {
        seen.insert(row());
        return seen.size() >= 4;
    }));
}

// The control's text fits it in the control's own font.
bool TextFits(HWND control) {
    const std::wstring text = Widen(Text(control));
    HDC dc = GetDC(control);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, old);
    ReleaseDC(control, dc);
    RECT r;
    GetClientRect(control, &r);
    return size.cx <= r.right && size.cy <= r.bottom;
}

// At 96 and 144 DPI, in the heaviest and the lightest skin, with and without the quick buttons: every control
// shown lies whole inside the window above the status bar, its text fits it, and no two overlap.
TEST_F(SessionTest, InEverySkinAndDpiNothingIsClippedAndTheQuickButtonsComeAndGo) {
    constexpr wchar_t kKey[] = L"Control Panel\\Desktop";
    // Texts that are cut on purpose: the running tag line, the neighbours' names, the file's title.
    const std::set<int> cut = {IDC_MAIN_TAG_LINE, IDC_MAIN_PREVIOUS_LABEL, IDC_MAIN_NEXT_LABEL,
                               IDC_MAIN_TITLE,    IDC_MAIN_COMBINED,       IDC_MAIN_STATUS_LINE};
    for (const DWORD dpi : {96, 144}) {
        int heightWith = 0;
        for (const char* quick : {"1", "0"}) {
            ForgetSettings();
            StoreOption("L35", quick[0] == '1' ? "0" : "6");
            StoreOption("L59", quick);
            SHSetValueW(HKEY_CURRENT_USER, kKey, L"LogPixels", REG_DWORD, &dpi, sizeof dpi);
            const bool started = lumora_.Start("") && WaitFor([&] { return IsWindowVisible(lumora_.main) != FALSE; });
            SHDeleteValueW(HKEY_CURRENT_USER, kKey, L"LogPixels");
            ASSERT_TRUE(started);
            SettledLook(lumora_.main);
            RECT client, bar;
            GetClientRect(lumora_.main, &client);
            GetWindowRect(GetDlgItem(lumora_.main, IDC_MAIN_STATUS), &bar);
            MapWindowPoints(nullptr, lumora_.main, reinterpret_cast<POINT*>(&bar), 2);
            std::vector<std::pair<int, RECT>> shown;
            for (HWND c = GetWindow(lumora_.main, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                const int id = GetDlgCtrlID(c);
                if (!IsWindowVisible(c) || id == IDC_MAIN_STATUS) continue;
                RECT r;
                GetWindowRect(c, &r);
                MapWindowPoints(nullptr, lumora_.main, reinterpret_cast<POINT*>(&r), 2);
                const std::string where =
                    std::to_string(dpi) + " DPI, quick " + quick + ", control " + std::to_string(id);
                EXPECT_TRUE(r.left >= 0 && r.top >= 0 && r.right <= client.right && r.bottom <= bar.top) << where;
                if (!cut.count(id)) {
                    EXPECT_TRUE(TextFits(c)) << where << ": " << Text(c);
                }
                for (const auto& [other, o] : shown) {
                    RECT both;
                    EXPECT_FALSE(IntersectRect(&both, &r, &o)) << where << " and " << other;
                }
                shown.emplace_back(id, r);
            }
            EXPECT_EQ(IsWindowVisible(GetDlgItem(lumora_.main, IDC_QUICK_SETTINGS)) != FALSE, quick[0] == '1');
            if (quick[0] == '1') {
                heightWith = client.bottom;
            } else {
                EXPECT_LT(client.bottom, heightWith) << "the window keeps the quick buttons' room";
            }
            lumora_.process.Kill();
        }
    }
}

}  // namespace
}  // namespace lumora::e2e
