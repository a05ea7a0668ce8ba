#pragma once
// Lumora's image buttons: owner-drawn push buttons in the program's own look. The caption stays
// the window text, so it can be read like any button's.
#include <windows.h>

namespace lumora {

HWND CreateImageButton(HWND parent, int id, const wchar_t* caption, int x, int y, int cx, int cy);
// A button that stands for an option shows it: latched, it is drawn held down until released.
void SetImageButtonLatched(HWND button, bool latched);
// For WM_DRAWITEM of an image button.
void DrawImageButton(const DRAWITEMSTRUCT& item);

}  // namespace lumora
