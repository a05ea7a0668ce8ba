#pragma once
// Each of Lumora's main, list and lyrics windows has its own opacity ("透明度" in the settings), and
// shows and hides with a short fade unless "关闭“窗口”渐变效果。" is on: layered-window alpha steps on
// a timer of the window's own, which stops at the end of the ramp.
#include <windows.h>

#include <initializer_list>

namespace lumora {

// Whether windows fade when they show and hide; off, they show and hide at once.
void SetWindowFades(bool on);
// The window's opacity (20-255): layered below 255, a plain window at 255. A fade under way ends there.
void SetWindowOpacity(HWND window, int alpha);
// Shows the window with `showCommand`, fading in from nothing to its opacity; a fade out under way turns back.
void FadeIn(HWND window, int showCommand = SW_SHOWNOACTIVATE);
// Fades the window out and hides it; its opacity comes back for the next show.
void FadeOut(HWND window);
// False while the window fades out: it counts as hidden already.
bool ShownOrShowing(HWND window);
// Fades the visible ones of these windows out together and returns when they are hidden (the program
// is closing, no message loop will run a timer).
void FadeOutNow(std::initializer_list<HWND> windows);

}  // namespace lumora
