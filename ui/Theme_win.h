#pragma once
// The colours and fonts of the skin Lumora's windows draw with now (common/SkinDescription.h). The
// windows ask for them whenever they paint, so that a new skin shows as soon as they repaint.
#include <windows.h>

#include <initializer_list>

#include "common/SkinDescription.h"

namespace lumora {

class Theme {
public:
    // The description built into the program for `choice`; the built-in defaults where it is missing.
    static SkinLook BuiltInLook(const SkinChoice& choice);
    // Makes `look` the current one; false when it already was. The windows restyle themselves after it.
    static bool Apply(const SkinLook& look);
    static const SkinLook& Look();

    static COLORREF Background();  // the top of the background's gradient
    static COLORREF Panel();
    static COLORREF Display();
    static COLORREF Text();
    static COLORREF DisplayText();
    static COLORREF Accent();
    static COLORREF ButtonFace();
    static COLORREF ButtonHot();
    static COLORREF ButtonEdge();

    static HBRUSH BackgroundBrush();
    static HBRUSH PanelBrush();
    static HBRUSH DisplayBrush();
    // One solid brush per colour, kept for the program's life: a window class may hold it.
    static HBRUSH SolidBrush(COLORREF colour);
    // For WM_CTLCOLOR*: sets the panel colours on `dc` and returns the panel brush.
    static HBRUSH PaintPanel(HDC dc);
    static HBRUSH PaintDisplay(HDC dc);
    // The fonts at a window's DPI (ui/Dpi_win.h) in the skin's weights, made at the first use of each.
    static HFONT UiFont(int dpi);
    static HFONT BigFont(int dpi);
    // Check boxes on Lumora's dark panels are drawn without visual styles: a themed one draws its text in
    // the theme's dark colour whatever WM_CTLCOLORSTATIC sets.
    static void PlainCheckBoxes(HWND dialog, std::initializer_list<int> ids);
    static void PlainCheckBox(HWND button);
    // A slider's thumb at the dialog's DPI (the slider has TBS_FIXEDLENGTH): its own stays small.
    static void SliderThumb(HWND slider, int dpi);
    // The caption bar in the skin where the system draws it so (Windows 10 and 11: dark or light, and
    // the skin's own colour on 11).
    static void Caption(HWND window);
};

}  // namespace lumora
