#include "ui/ImageButton_win.h"

#include "platform/WinText_win.h"

#include "ui/Theme_win.h"

namespace lumora {

HWND CreateImageButton(HWND parent, int id, const wchar_t* caption, int x, int y, int cx, int cy) {
    HWND button = CreateWindowExW(0, L"BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW, x, y, cx,
                                  cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(Theme::UiFont()), FALSE);
    return button;
}

void DrawImageButton(const DRAWITEMSTRUCT& item) {
    HDC dc = item.hDC;
    RECT r = item.rcItem;
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    const bool disabled = (item.itemState & ODS_DISABLED) != 0;
    const bool focused = (item.itemState & ODS_FOCUS) != 0;

    HBRUSH face = CreateSolidBrush(pressed ? Theme::kButtonHot : Theme::kButtonFace);
    HPEN edge = CreatePen(PS_SOLID, 1, focused ? Theme::kAccent : Theme::kButtonEdge);
    HGDIOBJ oldBrush = SelectObject(dc, face);
    HGDIOBJ oldPen = SelectObject(dc, edge);
    RoundRect(dc, r.left, r.top, r.right, r.bottom, 8, 8);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(edge);
    DeleteObject(face);

    const std::wstring caption = WindowTextOf(item.hwndItem);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, disabled ? Theme::kButtonEdge : Theme::kText);
    HGDIOBJ oldFont = SelectObject(dc, Theme::UiFont());
    if (pressed) OffsetRect(&r, 1, 1);
    DrawTextW(dc, caption.c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, oldFont);
}

}  // namespace lumora
