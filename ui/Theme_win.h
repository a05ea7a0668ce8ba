#pragma once
// The colours and fonts of Lumora's default look (skin 2), drawn by the program itself.
#include <windows.h>

#include <initializer_list>

namespace lumora {

class Theme {
public:
    static constexpr COLORREF kBackground = RGB(30, 40, 58);
    static constexpr COLORREF kPanel = RGB(44, 58, 84);
    static constexpr COLORREF kDisplay = RGB(12, 18, 28);
    static constexpr COLORREF kText = RGB(226, 232, 242);
    static constexpr COLORREF kDisplayText = RGB(120, 220, 255);
    static constexpr COLORREF kAccent = RGB(255, 190, 70);
    static constexpr COLORREF kButtonFace = RGB(58, 76, 108);
    static constexpr COLORREF kButtonHot = RGB(78, 100, 140);
    static constexpr COLORREF kButtonEdge = RGB(96, 122, 168);

    static HBRUSH BackgroundBrush();
    static HBRUSH PanelBrush();
    static HBRUSH DisplayBrush();
    // For WM_CTLCOLOR*: sets the panel colours on `dc` and returns the panel brush.
    static HBRUSH PaintPanel(HDC dc);
    static HBRUSH PaintDisplay(HDC dc);
    // The fonts at a window's DPI (ui/Dpi_win.h), made at the first use of each DPI.
    static HFONT UiFont(int dpi);
    static HFONT BigFont(int dpi);
    // Check boxes on Lumora's dark panels are drawn without visual styles: a themed one draws its text in
    // the theme's dark colour whatever WM_CTLCOLORSTATIC sets.
    static void PlainCheckBoxes(HWND dialog, std::initializer_list<int> ids);
    static void PlainCheckBox(HWND button);
    // A slider's thumb at the dialog's DPI (the slider has TBS_FIXEDLENGTH): its own stays small.
    static void SliderThumb(HWND slider, int dpi);
};

}  // namespace lumora
