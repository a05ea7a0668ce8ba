#pragma once
// Small helpers every Lumora window shares.
#include <windows.h>

namespace lumora {

// Registers a window class once per process; true when it is (or already was) registered.
bool EnsureWindowClass(const wchar_t* name, WNDPROC proc, HBRUSH background, LPCWSTR cursor = IDC_ARROW,
                       UINT style = 0);

// Twips (1/1440 inch) and pixels on the screen.
int ScreenDpiX();
int ScreenDpiY();
long long PixelsToTwipsX(long long px);
long long PixelsToTwipsY(long long px);
int TwipsToPixelsX(long long twips);
int TwipsToPixelsY(long long twips);

}  // namespace lumora
