#include "ui/Theme_win.h"

namespace lumora {
namespace {

HFONT MakeFont(int height, int weight) {
    // "宋体" and "MS Shell Dlg" are mapped to a font with Chinese glyphs on Chinese Windows and
    // on Wine; the face name keeps the look on both.
    return CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg");
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

HFONT Theme::UiFont() {
    static HFONT font = MakeFont(-12, FW_NORMAL);
    return font;
}

HFONT Theme::BigFont() {
    static HFONT font = MakeFont(-20, FW_BOLD);
    return font;
}

}  // namespace lumora
