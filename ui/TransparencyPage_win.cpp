#include "ui/TransparencyPage_win.h"

#include <commctrl.h>

#include <string>
#include <string_view>

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr std::string_view kWindows[] = {"主窗体", "文件列表框", "音频\\歌词显示窗口"};
static_assert(std::size(kWindows) == std::tuple_size_v<decltype(WindowTransparency::opacity)>);

class TransparencyPage final : public SettingsPage {
public:
    TransparencyPage(IniFiles& ini, std::function<void(const WindowTransparency&)> preview)
        : ini_(ini), preview_(std::move(preview)), shown_(LoadWindowTransparency(ini)) {}

    std::wstring Title() const override { return Widen(kTransparencyPageTitle); }

    void Layout(DialogTemplate& t) override {
        t.AddControl(DialogTemplate::kButton, IDC_TRANSPARENCY_ON, L"启用窗口透明效果（Windows 2000及以上）", 6, 6, 300,
                     10, BS_AUTOCHECKBOX | WS_TABSTOP);
        short y = 28;
        for (size_t i = 0; i < std::size(kWindows); ++i) {
            const WORD id = static_cast<WORD>(i);
            t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(IDC_TRANSPARENCY_VALUE + id), L"", 6, y, 300, 10,
                         SS_LEFT | SS_NOPREFIX);
            t.AddControl(TRACKBAR_CLASSW, static_cast<WORD>(IDC_TRANSPARENCY_SLIDER + id), L"", 6,
                         static_cast<short>(y + 11), 300, 16, TBS_HORZ | TBS_NOTICKS | TBS_FIXEDLENGTH | WS_TABSTOP);
            y = static_cast<short>(y + 38);
        }
        t.AddControl(DialogTemplate::kStatic, 0, L"数值越小越透明：20 最透明，255 不透明。", 6, y, 300, 10,
                     SS_LEFT | SS_NOPREFIX);
    }

    void OnInit(HWND page) override {
        page_ = page;
        CheckDlgButton(page, IDC_TRANSPARENCY_ON, shown_.on ? BST_CHECKED : BST_UNCHECKED);
        for (size_t i = 0; i < std::size(kWindows); ++i) {
            HWND slider = Slider(i);
            SendMessageW(slider, TBM_SETRANGE, FALSE, MAKELPARAM(kLeastOpacity, kOpaque));
            SendMessageW(slider, TBM_SETPAGESIZE, 0, 16);
            SendMessageW(slider, TBM_SETPOS, TRUE, shown_.opacity[i]);
            Theme::SliderThumb(slider, WindowDpi(page));
        }
        Refresh(false);
    }

    bool OnMessage(HWND, UINT msg, WPARAM wp, LPARAM, INT_PTR& result) override {
        if (msg == WM_HSCROLL || (msg == WM_COMMAND && LOWORD(wp) == IDC_TRANSPARENCY_ON && HIWORD(wp) == BN_CLICKED)) {
            Refresh(true);
            result = TRUE;
            return true;
        }
        return false;
    }

    bool Confirm(HWND) override {
        // The options' page has told the user of a registry fault already; an INI file that cannot be
        // written leaves the windows as they were before the dialog, which the caller restores.
        SaveWindowTransparency(ini_, Current());
        return true;
    }

private:
    HWND Slider(size_t i) const { return GetDlgItem(page_, IDC_TRANSPARENCY_SLIDER + static_cast<int>(i)); }

    WindowTransparency Current() const {
        WindowTransparency t;
        t.on = IsDlgButtonChecked(page_, IDC_TRANSPARENCY_ON) == BST_CHECKED;
        for (size_t i = 0; i < std::size(kWindows); ++i) {
            t.opacity[i] = ClampOpacity(static_cast<int>(SendMessageW(Slider(i), TBM_GETPOS, 0, 0)));
        }
        return t;
    }

    // The values as texts, the sliders usable only while transparency is on, and the windows showing it.
    void Refresh(bool preview) {
        const WindowTransparency t = Current();
        for (size_t i = 0; i < std::size(kWindows); ++i) {
            const std::string text = std::string(kWindows[i]) + "：" + std::to_string(t.opacity[i]);
            SetDlgItemTextW(page_, IDC_TRANSPARENCY_VALUE + static_cast<int>(i), Widen(text).c_str());
            EnableWindow(Slider(i), t.on);
        }
        if (preview && !(t == shown_)) {
            shown_ = t;
            if (preview_) preview_(t);
        }
    }

    IniFiles& ini_;
    std::function<void(const WindowTransparency&)> preview_;
    WindowTransparency shown_;  // what the windows show now
    HWND page_ = nullptr;
};

}  // namespace

std::unique_ptr<SettingsPage> MakeTransparencyPage(IniFiles& ini,
                                                   std::function<void(const WindowTransparency&)> preview) {
    return std::make_unique<TransparencyPage>(ini, std::move(preview));
}

}  // namespace lumora
