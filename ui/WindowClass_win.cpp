#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

int Dpi(int index) {
    HDC dc = GetDC(nullptr);
    const int dpi = dc ? GetDeviceCaps(dc, index) : 96;
    if (dc) ReleaseDC(nullptr, dc);
    return dpi > 0 ? dpi : 96;
}

}  // namespace

bool EnsureWindowClass(const wchar_t* name, WNDPROC proc, HBRUSH background, LPCWSTR cursor, UINT style) {
    WNDCLASSEXW existing{};
    existing.cbSize = sizeof existing;
    if (GetClassInfoExW(GetModuleHandleW(nullptr), name, &existing)) return true;
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = style;
    wc.lpfnWndProc = proc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hCursor = LoadCursorW(nullptr, cursor);
    // Lumora's icon at the sizes the system draws, shared: the class keeps it for the process's life.
    const auto icon = [](int cx, int cy) {
        return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                             GetSystemMetrics(cx), GetSystemMetrics(cy), LR_SHARED));
    };
    wc.hIcon = icon(SM_CXICON, SM_CYICON);
    wc.hIconSm = icon(SM_CXSMICON, SM_CYSMICON);
    wc.hbrBackground = background;
    wc.lpszClassName = name;
    return RegisterClassExW(&wc) != 0;
}

int ScreenDpiX() { return Dpi(LOGPIXELSX); }
int ScreenDpiY() { return Dpi(LOGPIXELSY); }
long long PixelsToTwipsX(long long px) { return px * 1440 / ScreenDpiX(); }
long long PixelsToTwipsY(long long px) { return px * 1440 / ScreenDpiY(); }
int TwipsToPixelsX(long long twips) { return static_cast<int>(twips * ScreenDpiX() / 1440); }
int TwipsToPixelsY(long long twips) { return static_cast<int>(twips * ScreenDpiY() / 1440); }

}  // namespace lumora
