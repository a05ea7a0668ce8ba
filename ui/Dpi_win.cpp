#include "ui/Dpi_win.h"

#include "ui/WindowClass_win.h"

namespace lumora {
namespace {

template <typename F>
F User32Function(const char* name) {
    HMODULE user32 = GetModuleHandleW(L"user32.dll");
    return user32 ? reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(user32, name))) : nullptr;
}

}  // namespace

int WindowDpi(HWND window) {
    // Windows 10 1607 and later.
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto getDpiForWindow = User32Function<GetDpiForWindowFn>("GetDpiForWindow");
    const int dpi = getDpiForWindow && window ? static_cast<int>(getDpiForWindow(window)) : 0;
    return dpi > 0 ? dpi : ScreenDpiY();
}

RECT Scaled(const RECT& r, int dpi) {
    return {Scaled(r.left, dpi), Scaled(r.top, dpi), Scaled(r.right, dpi), Scaled(r.bottom, dpi)};
}

void AdjustWindowRectForDpi(RECT& r, DWORD style, DWORD exStyle, int dpi) {
    using AdjustFn = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto adjust = User32Function<AdjustFn>("AdjustWindowRectExForDpi");
    if (!adjust || !adjust(&r, style, FALSE, exStyle, static_cast<UINT>(dpi)))
        AdjustWindowRectEx(&r, style, FALSE, exStyle);
}

void TakeSuggestedRect(HWND window, LPARAM lp) {
    const RECT& r = *reinterpret_cast<const RECT*>(lp);
    SetWindowPos(window, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void MoveToKeptPlace(HWND window, const WindowRect& kept) {
    SetWindowPos(window, nullptr, static_cast<int>(kept.left), static_cast<int>(kept.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    const int dpi = WindowDpi(window);
    const int screen = ScreenDpiY();
    SetWindowPos(window, nullptr, 0, 0, ScaleBy(static_cast<int>(kept.Width()), dpi, screen),
                 ScaleBy(static_cast<int>(kept.Height()), dpi, screen), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

WindowRect PlaceToKeep(HWND window, const RECT& r) {
    const int dpi = WindowDpi(window);
    const int screen = ScreenDpiY();
    return {r.left, r.top, r.left + ScaleBy(r.right - r.left, screen, dpi),
            r.top + ScaleBy(r.bottom - r.top, screen, dpi)};
}

}  // namespace lumora
