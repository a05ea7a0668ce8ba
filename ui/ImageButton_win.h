#pragma once
// Lumora's image buttons: owner-drawn push buttons whose faces the skin draws (normal, hot under the
// pointer, pressed, disabled, focused). The caption stays the window text, so it can be read like any
// button's. The parent answers WM_DRAWITEM with DrawImageButton and WM_CTLCOLORBTN with the brush of what
// lies behind the button (the corners outside its rounded face show it).
#include <windows.h>

namespace lumora {

HWND CreateImageButton(HWND parent, int id, const wchar_t* caption, int x, int y, int cx, int cy);
// Turns an existing push button (of a dialog) into an image button; every push button of `dialog`.
void MakeImageButton(HWND button);
void MakeImageButtons(HWND dialog);
// A button that stands for an option shows it: latched, it is drawn held down until released.
void SetImageButtonLatched(HWND button, bool latched);
// For WM_DRAWITEM of an image button.
void DrawImageButton(const DRAWITEMSTRUCT& item);

}  // namespace lumora
