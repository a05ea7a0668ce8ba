#include "ui/ImageButton_win.h"

#include "platform/WinText_win.h"

#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"

namespace lumora {

HWND CreateImageButton(HWND parent, int id, const wchar_t* caption, int x, int y, int cx, int cy) {
    HWND button = CreateWindowExW(0, L"BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW, x, y, cx,
                                  cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont(WindowDpi(parent))), FALSE);
    return button;
}

namespace {
constexpr wchar_t kLatchedProperty[] = L"LumoraLatched";
}  // namespace

void SetImageButtonLatched(HWND button, bool latched) {
    if (latched) {
        SetPropW(button, kLatchedProperty, reinterpret_cast<HANDLE>(1));
    } else {
        RemovePropW(button, kLatchedProperty);
    }
    InvalidateRect(button, nullptr, TRUE);
}

void DrawImageButton(const DRAWITEMSTRUCT& item) {
    HDC dc = item.hDC;
    RECT r = item.rcItem;
    const bool pressed = (item.itemState & ODS_SELECTED) != 0 || GetPropW(item.hwndItem, kLatchedProperty) != nullptr;
    const bool disabled = (item.itemState & ODS_DISABLED) != 0;
    const bool focused = (item.itemState & ODS_FOCUS) != 0;
    const int dpi = WindowDpi(item.hwndItem);

    HBRUSH face = CreateSolidBrush(pressed ? Theme::kButtonHot : Theme::kButtonFace);
    HPEN edge = CreatePen(PS_SOLID, Scaled(1, dpi), focused ? Theme::kAccent : Theme::kButtonEdge);
    HGDIOBJ oldBrush = SelectObject(dc, face);
    HGDIOBJ oldPen = SelectObject(dc, edge);
    RoundRect(dc, r.left, r.top, r.right, r.bottom, Scaled(8, dpi), Scaled(8, dpi));
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(edge);
    DeleteObject(face);

    const std::wstring caption = WindowTextOf(item.hwndItem);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, disabled ? Theme::kButtonEdge : Theme::kText);
    // The button's own font: its window sets the one for its DPI.
    HGDIOBJ oldFont = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
    if (pressed) OffsetRect(&r, Scaled(1, dpi), Scaled(1, dpi));
    DrawTextW(dc, caption.c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, oldFont);
}

}  // namespace lumora
