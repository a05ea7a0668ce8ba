#include "ui/Theme_win.h"

#include <commctrl.h>

#include <map>

#include "ui/Dpi_win.h"

namespace lumora {
namespace {

SkinLook& Current() {
    static SkinLook look = Theme::BuiltInLook(SkinFor(std::nullopt));
    return look;
}

HFONT MakeFont(int height, int weight) {
    // "宋体" and "MS Shell Dlg" are mapped to a font with Chinese glyphs on Chinese Windows and
    // on Wine; the face name keeps the look on both.
    return CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg");
}

// One font for each height and weight asked for: as many as the monitors have DPIs times the skins' weights.
HFONT SharedFont(int height96, int weight, int dpi) {
    static std::map<std::pair<int, int>, HFONT> fonts;
    const int height = Scaled(height96, dpi);
    HFONT& font = fonts[{height, weight}];
    if (!font) font = MakeFont(height, weight);
    return font;
}

// A lighter or darker background: the luminance of an sRGB colour, 0..255.
int Luminance(COLORREF c) { return (GetRValue(c) * 299 + GetGValue(c) * 587 + GetBValue(c) * 114) / 1000; }

}  // namespace

SkinLook Theme::BuiltInLook(const SkinChoice& choice) {
    HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(choice.resource), MAKEINTRESOURCEW(10) /* RT_RCDATA */);
    HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes) return SkinLook{};
    return ParseSkin({static_cast<const char*>(bytes), SizeofResource(nullptr, found)}).look;
}

bool Theme::Apply(const SkinLook& look) {
    if (Current() == look) return false;
    Current() = look;
    return true;
}

const SkinLook& Theme::Look() { return Current(); }

COLORREF Theme::Background() { return Current().background.from; }
COLORREF Theme::Panel() { return Current().panel; }
COLORREF Theme::Display() { return Current().display.from; }
COLORREF Theme::Text() { return Current().text; }
COLORREF Theme::DisplayText() { return Current().displayText; }
COLORREF Theme::Accent() { return Current().accent; }
COLORREF Theme::ButtonFace() { return Current().buttonFace.to; }
COLORREF Theme::ButtonHot() { return Current().buttonHot.to; }
COLORREF Theme::ButtonEdge() { return Current().buttonEdge; }

HBRUSH Theme::SolidBrush(COLORREF colour) {
    static std::map<COLORREF, HBRUSH> brushes;
    HBRUSH& brush = brushes[colour];
    if (!brush) brush = CreateSolidBrush(colour);
    return brush;
}

HBRUSH Theme::BackgroundBrush() { return SolidBrush(Background()); }
HBRUSH Theme::PanelBrush() { return SolidBrush(Panel()); }
HBRUSH Theme::DisplayBrush() { return SolidBrush(Display()); }

HBRUSH Theme::PaintPanel(HDC dc) {
    SetTextColor(dc, Text());
    SetBkColor(dc, Panel());
    return PanelBrush();
}

HBRUSH Theme::PaintDisplay(HDC dc) {
    SetTextColor(dc, DisplayText());
    SetBkColor(dc, Display());
    return DisplayBrush();
}

HFONT Theme::UiFont(int dpi) { return SharedFont(-12, Current().textWeight, dpi); }

HFONT Theme::BigFont(int dpi) { return SharedFont(-20, Current().titleWeight, dpi); }

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

void Theme::Caption(HWND window) {
    using SetAttributeFn = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
    static const HMODULE dwm = LoadLibraryW(L"dwmapi.dll");  // Vista and later; kept for the program's life
    static const auto setAttribute =
        dwm ? reinterpret_cast<SetAttributeFn>(reinterpret_cast<void*>(GetProcAddress(dwm, "DwmSetWindowAttribute")))
            : nullptr;
    if (!setAttribute) return;
    // DWMWA_USE_IMMERSIVE_DARK_MODE (20) from Windows 10 20H1, DWMWA_CAPTION_COLOR (35) and
    // DWMWA_TEXT_COLOR (36) from Windows 11; older systems refuse them and keep their own caption.
    const BOOL dark = Luminance(Background()) < 128;
    setAttribute(window, 20, &dark, sizeof dark);
    const COLORREF caption = Current().background.from;
    const COLORREF text = Current().text;
    setAttribute(window, 35, &caption, sizeof caption);
    setAttribute(window, 36, &text, sizeof text);
}

}  // namespace lumora
