// Lumora at a high DPI: Wine takes the DPI ("LogPixels" of the user's desktop settings) when a program
// starts, so a test in the one session can start Lumora at 144 DPI.
#include <map>

#include "e2e/Driver.h"

namespace lumora::e2e {
namespace {

constexpr wchar_t kDesktopKey[] = L"Control Panel\\Desktop";

// The user's DPI while it lives; the one before, or none, afterwards.
class ScreenDpiSetting {
public:
    ScreenDpiSetting() {
        RegCreateKeyExW(HKEY_CURRENT_USER, kDesktopKey, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key_, nullptr);
        DWORD size = sizeof before_;
        had_ = RegQueryValueExW(key_, L"LogPixels", nullptr, nullptr, reinterpret_cast<BYTE*>(&before_), &size) ==
               ERROR_SUCCESS;
    }
    ~ScreenDpiSetting() {
        if (had_) {
            Set(before_);
        } else {
            RegDeleteValueW(key_, L"LogPixels");
        }
        RegCloseKey(key_);
    }
    void Set(DWORD dpi) {
        RegSetValueExW(key_, L"LogPixels", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&dpi), sizeof dpi);
    }

private:
    HKEY key_ = nullptr;
    DWORD before_ = 0;
    bool had_ = false;
};

// The main window's client size (under id 0) and its visible controls' places, by control id.
std::map<int, RECT> Layout(HWND main) {
    std::map<int, RECT> places;
    GetClientRect(main, &places[0]);
    for (HWND c = GetWindow(main, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        if (!IsWindowVisible(c)) continue;
        RECT r;
        GetWindowRect(c, &r);
        MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&r), 2);
        places[GetDlgCtrlID(c)] = r;
    }
    return places;
}

// Started at 144 DPI, then told that its monitor has 96 (as when the window moves to another monitor).
TEST_F(SessionTest, AtOneAndAHalfTimesTheDpiTheMainWindowIsOneAndAHalfTimesAsLargeAndNoControlsOverlap) {
    ScreenDpiSetting dpi;
    dpi.Set(144);
    ASSERT_TRUE(lumora_.Start(""));
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.main) != FALSE; }));
    std::map<int, RECT> at[2];
    at[1] = Layout(lumora_.main);
    RECT window;
    GetWindowRect(lumora_.main, &window);
    const RECT& client = at[1][0];
    // The frame as it is, around two thirds of the client area.
    const RECT suggested{window.left, window.top, window.right - client.right / 3, window.bottom - client.bottom / 3};
    AskInto(lumora_.main, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(96, 96), sizeof suggested,
            [&](char*) { return std::string(reinterpret_cast<const char*>(&suggested), sizeof suggested); });
    at[0] = Layout(lumora_.main);

    ASSERT_GT(at[0].size(), 30u);
    ASSERT_EQ(at[0].size(), at[1].size());
    for (const auto& [id, r] : at[0]) {
        // The status bar takes its height from its font (or the system's DPI), and the client area (id 0)
        // its height from the status bar.
        if (id == ids::IDC_MAIN_STATUS) continue;
        const RECT& big = at[1][id];
        for (const auto& [small, large] : {std::pair{r.left, big.left},
                                           {r.top, big.top},
                                           {r.right, big.right},
                                           {id ? r.bottom : 0, id ? big.bottom : 0}}) {
            EXPECT_NEAR(large, small * 1.5, 1) << "control " << id;
        }
    }
    for (const auto& places : at) {
        for (auto a = places.begin(); a != places.end(); ++a) {
            for (auto b = std::next(a); a->first != 0 && b != places.end(); ++b) {
                RECT both;
                EXPECT_FALSE(IntersectRect(&both, &a->second, &b->second))
                    << "controls " << a->first << " and " << b->first;
            }
        }
    }
}

}  // namespace
}  // namespace lumora::e2e
