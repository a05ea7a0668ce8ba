#include "ui/ImageButton_win.h"

#include <commctrl.h>

#include "platform/WinText_win.h"
#include "ui/Dpi_win.h"
#include "ui/SkinPaint_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

constexpr wchar_t kLatchedProperty[] = L"LumoraLatched";
constexpr wchar_t kHotProperty[] = L"LumoraHot";
constexpr UINT_PTR kSubclassId = 1;

LRESULT CALLBACK ButtonProc(HWND button, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
    switch (msg) {
        case WM_MOUSEMOVE:
            if (!GetPropW(button, kHotProperty)) {
                SetPropW(button, kHotProperty, reinterpret_cast<HANDLE>(1));
                TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, button, 0};
                TrackMouseEvent(&track);
                InvalidateRect(button, nullptr, FALSE);
            }
            break;
        case WM_MOUSELEAVE:
            RemovePropW(button, kHotProperty);
            InvalidateRect(button, nullptr, FALSE);
            break;
        case WM_LBUTTONDBLCLK:
            // An owner-drawn button takes a quick second click as a double click: it is a click all the same.
            msg = WM_LBUTTONDOWN;
            break;
        case WM_ERASEBKGND:
            return 1;  // the whole face is painted at once
        case WM_NCDESTROY:
            RemovePropW(button, kHotProperty);
            RemovePropW(button, kLatchedProperty);
            RemoveWindowSubclass(button, ButtonProc, kSubclassId);
            break;
    }
    return DefSubclassProc(button, msg, wp, lp);
}

}  // namespace

HWND CreateImageButton(HWND parent, int id, const wchar_t* caption, int x, int y, int cx, int cy) {
    HWND button = CreateWindowExW(0, L"BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW, x, y, cx,
                                  cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(WindowDpi(parent))), FALSE);
    SetWindowSubclass(button, ButtonProc, kSubclassId, 0);
    return button;
}

void MakeImageButton(HWND button) {
    const LONG_PTR style = GetWindowLongPtrW(button, GWL_STYLE);
    SetWindowLongPtrW(button, GWL_STYLE, (style & ~static_cast<LONG_PTR>(BS_TYPEMASK)) | BS_OWNERDRAW);
    SetWindowSubclass(button, ButtonProc, kSubclassId, 0);
    InvalidateRect(button, nullptr, TRUE);
}

void MakeImageButtons(HWND dialog) {
    for (HWND c = GetWindow(dialog, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        wchar_t cls[16] = {};
        GetClassNameW(c, cls, 16);
        const LONG_PTR type = GetWindowLongPtrW(c, GWL_STYLE) & BS_TYPEMASK;
        if (lstrcmpiW(cls, L"Button") == 0 && (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON)) MakeImageButton(c);
    }
}

void SetImageButtonLatched(HWND button, bool latched) {
    if (latched) {
        SetPropW(button, kLatchedProperty, reinterpret_cast<HANDLE>(1));
    } else {
        RemovePropW(button, kLatchedProperty);
    }
    InvalidateRect(button, nullptr, TRUE);
}

void DrawImageButton(const DRAWITEMSTRUCT& item) {
    const SkinLook& look = Theme::Look();
    const bool pressed = (item.itemState & ODS_SELECTED) != 0 || GetPropW(item.hwndItem, kLatchedProperty) != nullptr;
    const bool disabled = (item.itemState & ODS_DISABLED) != 0;
    const bool focused = (item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0;
    const bool hot = !disabled && GetPropW(item.hwndItem, kHotProperty) != nullptr;
    const int dpi = WindowDpi(item.hwndItem);

    BufferedDc buffer(item.hDC, item.rcItem);
    HDC dc = buffer.Get();
    RECT r = buffer.Area();
    // What lies behind the rounded corners: the parent's background.
    HWND parent = GetParent(item.hwndItem);
    auto behind = reinterpret_cast<HBRUSH>(
        SendMessageW(parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(item.hwndItem)));
    FillRect(dc, &r, behind ? behind : Theme::PanelBrush());

    const SkinGradient& face = pressed ? look.buttonPressed : hot ? look.buttonHot : look.buttonFace;
    const int edgeWidth = look.buttonEdgeWidth > 0 ? Scaled(look.buttonEdgeWidth, dpi) : (focused ? 1 : 0);
    FillRounded(dc, r, Scaled(look.buttonRadius, dpi), face, pressed ? 0 : look.buttonGloss,
                focused ? look.accent : look.buttonEdge, edgeWidth);

    const std::wstring caption = WindowTextOf(item.hwndItem);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, disabled ? look.buttonDisabledText : look.buttonText);
    // The button's own font: its window sets the one for its DPI.
    HGDIOBJ oldFont = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
    if (pressed) OffsetRect(&r, Scaled(1, dpi), Scaled(1, dpi));
    DrawTextW(dc, caption.c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, oldFont);
}

}  // namespace lumora
