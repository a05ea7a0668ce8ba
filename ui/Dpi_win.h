#pragma once
// Each window is laid out for the DPI of the monitor it is on (the manifest makes Lumora per-monitor
// aware). The functions that tell it are newer than XP and looked up at run time; without them every
// window has the screen's DPI.
#include <windows.h>

#include "settings/WindowPlacement.h"

namespace lumora {

// Sent to a top-level window when its DPI changes: the new DPI in wParam, the suggested rectangle at lParam.
inline constexpr UINT kWmDpiChanged = 0x02E0;

// GetDpiForWindow where the system has it, else the screen's LOGPIXELSY.
int WindowDpi(HWND window);
// A length of the 96-DPI layout at `dpi`.
inline int Scaled(int value, int dpi) { return ScaleForDpi(value, dpi); }
RECT Scaled(const RECT& r, int dpi);
// AdjustWindowRectEx for the frame at `dpi` (AdjustWindowRectExForDpi where the system has it).
void AdjustWindowRectForDpi(RECT& r, DWORD style, DWORD exStyle, int dpi);
// WM_DPICHANGED's new DPI, and its suggested rectangle taken (after the window has made its fonts
// for the new DPI, so that the WM_SIZE this sends lays out with them).
inline int NewDpi(WPARAM wp) { return HIWORD(wp); }
void TakeSuggestedRect(HWND window, LPARAM lp);

// Places are kept in twips at the screen's DPI (settings/WindowPlacement.h), sizes among them at the
// window's own DPI, so that a window keeps its size on a monitor of another DPI.
// Moves `window` to a kept place: first there, so that a monitor of another DPI has changed the window's
// DPI before the size is set for it.
void MoveToKeptPlace(HWND window, const WindowRect& kept);
// The place to keep for `window` at `r` (screen pixels).
WindowRect PlaceToKeep(HWND window, const RECT& r);

}  // namespace lumora
