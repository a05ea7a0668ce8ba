// Lumora at a high DPI. Wine takes the DPI ("LogPixels" of the user's desktop settings) as a program
// starts, so a test in the one session can start Lumora at 144 DPI.
#include <shlwapi.h>

#include <map>

#include "e2e/Driver.h"

namespace lumora::e2e {

// The main window's client area (under id 0) and its controls, by control id.
static std::map<int, RECT> Layout(HWND main) {
    std::map<int, RECT> places;
    GetClientRect(main, &places[0]);
    for (HWND c = GetWindow(main, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        RECT& r = places[GetDlgCtrlID(c)];
        GetWindowRect(c, &r);
        MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&r), 2);
    }
    return places;
}

// Started at 144 DPI (which the test prefix never keeps), then told that its monitor has 96, as when the
// window moves to another monitor.
TEST_F(SessionTest, AtOneAndAHalfTimesTheDpiTheMainWindowIsOneAndAHalfTimesAsLargeAndNoControlsOverlap) {
    constexpr wchar_t kKey[] = L"Control Panel\\Desktop";
    const DWORD high = 144;
    SHSetValueW(HKEY_CURRENT_USER, kKey, L"LogPixels", REG_DWORD, &high, sizeof high);
    const bool started = lumora_.Start("") && WaitFor([&] { return IsWindowVisible(lumora_.main) != FALSE; });
    SHDeleteValueW(HKEY_CURRENT_USER, kKey, L"LogPixels");
    ASSERT_TRUE(started);

    std::map<int, RECT> at144 = Layout(lumora_.main);
    RECT suggested;  // the window lays itself out in it
    GetWindowRect(lumora_.main, &suggested);
    AskInto(lumora_.main, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(96, 96), sizeof suggested,
            [&](char*) { return std::string(reinterpret_cast<const char*>(&suggested), sizeof suggested); });
    std::map<int, RECT> at96 = Layout(lumora_.main);
    ASSERT_GT(at96.size(), 30u);
    ASSERT_EQ(at96.size(), at144.size());
    for (const auto& [id, r] : at96) {
        // The status bar's height follows its font (or the system's DPI), and the client area's the bar's.
        for (const auto edge : {&RECT::left, &RECT::top, &RECT::right, &RECT::bottom}) {
            if (id == ids::IDC_MAIN_STATUS || (!id && edge == &RECT::bottom)) continue;
            EXPECT_NEAR(at144[id].*edge, r.*edge * 1.5, 1) << id;
        }
    }
    for (const auto* places : {&at96, &at144}) {
        for (auto a = std::next(places->begin()); a != places->end(); ++a) {  // the controls, after id 0
            for (auto b = std::next(a); b != places->end(); ++b) {
                RECT both;
                EXPECT_FALSE(IntersectRect(&both, &a->second, &b->second)) << a->first << " and " << b->first;
            }
        }
    }
}

}  // namespace lumora::e2e
