// Lumora at a high DPI: Wine takes the DPI ("LogPixels" of the user's desktop settings) when a program
// starts, so one session runs Lumora at 96 DPI and again at 144.
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

TEST_F(SessionTest, AtOneAndAHalfTimesTheDpiTheMainWindowIsOneAndAHalfTimesAsLargeAndNoControlsOverlap) {
    ScreenDpiSetting dpi;
    std::map<int, RECT> at[2];
    for (int i = 0; i < 2; ++i) {
        dpi.Set(i == 0 ? 96 : 144);
        ASSERT_TRUE(lumora_.Start(""));
        ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(lumora_.main) != FALSE; }));
        at[i] = Layout(lumora_.main);
        lumora_.process.Kill();
    }
    ASSERT_GT(at[0].size(), 30u);
    ASSERT_EQ(at[0].size(), at[1].size());
    for (const auto& [id, r] : at[0]) {
        // The status bar takes its height from its font; its width is the window's.
        if (id == ids::IDC_MAIN_STATUS) continue;
        const RECT& big = at[1][id];
        for (const auto& [small, large] :
             {std::pair{r.left, big.left}, {r.top, big.top}, {r.right, big.right}, {r.bottom, big.bottom}}) {
            EXPECT_NEAR(large, small * 1.5, 1) << "control " << id;
        }
    }
    for (auto a = at[1].begin(); a != at[1].end(); ++a) {
        for (auto b = std::next(a); a->first != 0 && b != at[1].end(); ++b) {
            RECT both;
            EXPECT_FALSE(IntersectRect(&both, &a->second, &b->second))
                << "controls " << a->first << " and " << b->first;
        }
    }
}

}  // namespace
}  // namespace lumora::e2e
