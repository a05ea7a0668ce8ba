// Lumora's skins end to end: each one draws the main window differently, a choice in the settings dialog or
// the skin menu shows at once, and in every skin and DPI the controls stay whole inside the window.
#include <shlwapi.h>

#include <array>
#include <set>

#include "common/SkinDescription.h"
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

// The look once it stands still (painted, and twice the same), and other than `before`.
Look SettledLook(HWND main, const Look& before = {}) {
    Look last{};
    WaitFor([&] {
        const Look now = LookOf(main);
        const bool same = now == last;
        last = now;
        return same && now != before && IsWindowVisible(main);
    });
    return last;
}

int Brightness(COLORREF c) { return (GetRValue(c) + GetGValue(c) + GetBValue(c)) / 3; }

TEST_F(SessionTest, EachSkinDrawsTheMainWindowInItsOwnColoursAtOnceFromTheDialogOrTheMenu) {
    ASSERT_TRUE(lumora_.Start(""));
    Look look = SettledLook(lumora_.main);
    EXPECT_LT(Brightness(look[0]), 100);  // the night sky is dark

    // "界面：" on the settings dialog's "窗口与界面" page, taken on "确定": the light silver skin (the fifth).
    HWND dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_TRUE(dialog);
    SendMessageW(PageControl(dialog, FormControlId(opt::kSkin)), CB_SETCURSEL, 4, 0);
    Click(dialog, IDOK);
    look = SettledLook(lumora_.main, look);
    EXPECT_GT(Brightness(look[0]), 180) << std::hex << look[0];
    EXPECT_EQ(ReadOption("L35"), "6");

    // The skin menu: each skin kept at once, and drawn in colours of its own.
    std::set<Look> looks;
    for (int i = 0; i < 5; ++i) {
        Command(lumora_.main, IDM_SKIN_FIRST + i);
        const auto value = std::to_string(SkinChoices()[static_cast<size_t>(i)].value);
        EXPECT_TRUE(WaitFor([&] { return ReadOption("L35") == value; })) << value;
        look = SettledLook(lumora_.main, look);
        EXPECT_TRUE(looks.insert(look).second) << "skin " << value << " looks like another";
    }
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

// At 96 and 144 DPI, in the heaviest and the lightest skin (this one under the user's own background), with and
// without the quick buttons: every control shown lies whole inside the window above the status bar, its text fits
// it, and no two overlap.
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
            StoreOption("L6", quick[0] == '1' ? "0" : "1");  // "“背景”": the user's own red over the silver
            StoreOption("BackColour", "255");
            SHSetValueW(HKEY_CURRENT_USER, kKey, L"LogPixels", REG_DWORD, &dpi, sizeof dpi);
            const bool started = lumora_.Start("") && WaitFor([&] { return IsWindowVisible(lumora_.main) != FALSE; });
            SHDeleteValueW(HKEY_CURRENT_USER, kKey, L"LogPixels");
            ASSERT_TRUE(started);
            const COLORREF background = SettledLook(lumora_.main)[0];
            EXPECT_EQ(GetRValue(background) > 240 && GetGValue(background) < 9, quick[0] == '0')
                << std::hex << background;
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
                const auto where = std::to_string(dpi) + " DPI, quick " + quick + ", control " + std::to_string(id);
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
