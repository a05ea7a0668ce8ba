#include "ui/Theme_win.h"

#include <commctrl.h>

#include <map>
#include <utility>

#include "ui/Dpi_win.h"

namespace lumora {
namespace {

HFONT MakeFont(int height, int weight) {
    // "宋体" and "MS Shell Dlg" are mapped to a font with Chinese glyphs on Chinese Windows and
    // on Wine; the face name keeps the look on both.
    return CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg");
}

// One font for each height and weight asked for; there are only as many as the monitors have DPIs.
HFONT SharedFont(int height96, int weight, int dpi) {
    static std::map<std::pair<int, int>, HFONT> fonts;
    const int height = Scaled(height96, dpi);
    HFONT& font = fonts[{height, weight}];
    if (!font) font = MakeFont(height, weight);
    return font;
}

}  // namespace

// The brushes and fonts live as long as the program: created once, never deleted.
HBRUSH Theme::BackgroundBrush() {
    static HBRUSH brush = CreateSolidBrush(kBackground);
    return brush;
}

HBRUSH Theme::PanelBrush() {
    static HBRUSH brush = CreateSolidBrush(kPanel);
    return brush;
}

HBRUSH Theme::DisplayBrush() {
    static HBRUSH brush = CreateSolidBrush(kDisplay);
    return brush;
}

HBRUSH Theme::PaintPanel(HDC dc) {
    SetTextColor(dc, kText);
    SetBkColor(dc, kPanel);
    return PanelBrush();
}

HBRUSH Theme::PaintDisplay(HDC dc) {
    SetTextColor(dc, kDisplayText);
    SetBkColor(dc, kDisplay);
    return DisplayBrush();
}

HFONT Theme::UiFont(int dpi) { return SharedFont(-12, FW_NORMAL, dpi); }

HFONT Theme::BigFont(int dpi) { return SharedFont(-20, FW_BOLD, dpi); }

void Theme::PlainCheckBoxes(HWND dialog, std::initializer_list<int> ids) {
    for (int id : ids) PlainCheckBox(GetDlgItem(dialog, id));
}

void Theme::PlainCheckBox(HWND button) {
    // uxtheme.dll comes with XP; looked up all the same, as every call newer than Windows 2000.
    using SetWindowThemeFn = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    static const HMODULE uxtheme = LoadLibraryW(L"uxtheme.dll");  // kept for the program's life
    static const auto setWindowTheme =
        uxtheme ? reinterpret_cast<SetWindowThemeFn>(reinterpret_cast<void*>(GetProcAddress(uxtheme, "SetWindowTheme")))
                : nullptr;
    if (setWindowTheme) setWindowTheme(button, L"", L"");
}

void Theme::SliderThumb(HWND slider, int dpi) { SendMessageW(slider, TBM_SETTHUMBLENGTH, Scaled(20, dpi), 0); }

}  // namespace lumora
