#include "ui/Boxes_win.h"

#include "platform/WinText_win.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Dpi_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowBase_win.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace lumora {
namespace {

// The box's own keys, as the system's message box has them: Ctrl+C copies its title and text, and a
// yes/no box takes Y and N without Alt. A dialog's keys pass through this hook before the dialog
// manager sees them; boxes may open over boxes, so each run keeps the one it covers.
struct BoxKeys {
    HWND box = nullptr;
    bool yesNo = false;
    std::wstring copyText;
};
BoxKeys* gKeys = nullptr;
HHOOK gHook = nullptr;

void CopyToClipboard(HWND owner, const std::wstring& text) {
    if (!OpenClipboard(owner)) return;
    EmptyClipboard();
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    if (HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes)) {
        if (void* p = GlobalLock(memory)) {
            memcpy(p, text.c_str(), bytes);
            GlobalUnlock(memory);
            // The clipboard owns the memory once it took it.
            if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
        } else {
            GlobalFree(memory);
        }
    }
    CloseClipboard();
}

LRESULT CALLBACK BoxKeyHook(int code, WPARAM wp, LPARAM lp) {
    const MSG* msg = reinterpret_cast<const MSG*>(lp);
    if (code == MSGF_DIALOGBOX && gKeys && msg->message == WM_KEYDOWN &&
        (msg->hwnd == gKeys->box || IsChild(gKeys->box, msg->hwnd))) {
        const bool ctrl = GetKeyState(VK_CONTROL) < 0, alt = GetKeyState(VK_MENU) < 0;
        wchar_t cls[16] = {};
        GetClassNameW(msg->hwnd, cls, 16);
        const bool inEdit = lstrcmpiW(cls, L"Edit") == 0;  // its own Ctrl+C and letters stay its own
        if (ctrl && !alt && msg->wParam == 'C' && !inEdit) {
            CopyToClipboard(gKeys->box, gKeys->copyText);
            return TRUE;
        }
        // The buttons are drawn by the box: Enter on one of them is its click, not the default button's.
        if (msg->wParam == VK_RETURN && !inEdit && msg->hwnd != gKeys->box) {
            PostMessageW(gKeys->box, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(msg->hwnd), BN_CLICKED),
                         reinterpret_cast<LPARAM>(msg->hwnd));
            return TRUE;
        }
        if (gKeys->yesNo && !ctrl && !alt && (msg->wParam == 'Y' || msg->wParam == 'N')) {
            PostMessageW(gKeys->box, WM_COMMAND, msg->wParam == 'Y' ? IDYES : IDNO, 0);
            return TRUE;
        }
    }
    return CallNextHookEx(gHook, code, wp, lp);
}

// Runs a box's template with its keys.
INT_PTR RunBox(const DialogTemplate& t, HWND owner, DLGPROC proc, LPARAM param, BoxKeys keys) {
    BoxKeys* covered = gKeys;
    gKeys = &keys;
    const bool hooked = gHook == nullptr;
    if (hooked) gHook = SetWindowsHookExW(WH_MSGFILTER, BoxKeyHook, nullptr, GetCurrentThreadId());
    const INT_PTR rc = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, proc, param);
    if (hooked && gHook) {
        UnhookWindowsHookEx(gHook);
        gHook = nullptr;
    }
    gKeys = covered;
    return rc;
}

// A message or input box: the caller fills the fields, runs it, and reads `input` back.
class BoxDialog final : public WindowBase<BoxDialog> {
public:
    BoxDialog(std::wstring text, std::wstring initial, bool hasInput)
        : input(std::move(initial)), text_(std::move(text)), hasInput_(hasInput) {}
    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp);

    std::wstring input;  // in: the answer offered; out: the answer typed, after OK

private:
    std::wstring text_;
    bool hasInput_ = false;
};

// Grows the box to fit its text: the text is measured in the dialog's own font.
void FitText(HWND dlg) {
    HWND label = GetDlgItem(dlg, IDC_BOX_TEXT);
    RECT labelRect;
    GetWindowRect(label, &labelRect);
    MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&labelRect), 2);
    const int width = labelRect.right - labelRect.left;
    const std::wstring text = WindowTextOf(label);
    HDC dc = GetDC(label);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
    RECT need{0, 0, width, 0};
    DrawTextW(dc, text.c_str(), -1, &need, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(dc, old);
    ReleaseDC(label, dc);
    const int grow = (need.bottom - need.top) - (labelRect.bottom - labelRect.top);
    if (grow <= 0) return;
    SetWindowPos(label, nullptr, 0, 0, width, need.bottom - need.top, SWP_NOMOVE | SWP_NOZORDER);
    // Everything below the text moves down with it.
    for (HWND child = GetWindow(dlg, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (child == label) continue;
        RECT r;
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&r), 2);
        SetWindowPos(child, nullptr, r.left, r.top + grow, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    RECT w;
    GetWindowRect(dlg, &w);
    SetWindowPos(dlg, nullptr, 0, 0, w.right - w.left, w.bottom - w.top + grow, SWP_NOMOVE | SWP_NOZORDER);
}

// The box's buttons in Lumora's look, the accent edge on the one with the focus; the caption keeps its
// underlined access key.
void DrawBoxButton(const DRAWITEMSTRUCT& item) {
    HDC dc = item.hDC;
    RECT r = item.rcItem;
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    const bool focused = (item.itemState & ODS_FOCUS) != 0;
    const int dpi = WindowDpi(item.hwndItem);
    HBRUSH face = CreateSolidBrush(pressed ? Theme::ButtonHot() : Theme::ButtonFace());
    HPEN edge = CreatePen(PS_SOLID, std::max(1, Scaled(1, dpi)), focused ? Theme::Accent() : Theme::ButtonEdge());
    FillRect(dc, &r, Theme::PanelBrush());
    HGDIOBJ oldBrush = SelectObject(dc, face);
    HGDIOBJ oldPen = SelectObject(dc, edge);
    RoundRect(dc, r.left, r.top, r.right, r.bottom, Scaled(8, dpi), Scaled(8, dpi));
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(edge);
    DeleteObject(face);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, Theme::Text());
    HGDIOBJ oldFont = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
    if (pressed) OffsetRect(&r, 1, 1);
    DrawTextW(dc, WindowTextOf(item.hwndItem).c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SelectObject(dc, oldFont);
}

void CenterOnOwner(HWND dlg) {
    HWND owner = GetWindow(dlg, GW_OWNER);
    RECT area;
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) {
        GetWindowRect(owner, &area);
    } else {
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    }
    RECT r;
    GetWindowRect(dlg, &r);
    const int x = area.left + ((area.right - area.left) - (r.right - r.left)) / 2;
    const int y = area.top + ((area.bottom - area.top) - (r.bottom - r.top)) / 2;
    SetWindowPos(dlg, HWND_TOP, x > 0 ? x : 0, y > 0 ? y : 0, 0, 0, SWP_NOSIZE);
}

INT_PTR BoxDialog::OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
    HWND dlg = hwnd_;
    switch (msg) {
        case WM_INITDIALOG:
            if (gKeys && !gKeys->box) gKeys->box = dlg;
            SetDlgItemTextW(dlg, IDC_BOX_TEXT, text_.c_str());
            if (hasInput_) SetDlgItemTextW(dlg, IDC_BOX_EDIT, input.c_str());
            FitText(dlg);
            CenterOnOwner(dlg);
            // Enter answers with the first button (the buttons are drawn by the box, none is a default one).
            SendMessageW(dlg, DM_SETDEFID, GetDlgItem(dlg, IDYES) ? IDYES : IDOK, 0);
            if (hasInput_) {
                SetFocus(GetDlgItem(dlg, IDC_BOX_EDIT));
                SendDlgItemMessageW(dlg, IDC_BOX_EDIT, EM_SETSEL, 0, -1);
                return FALSE;
            }
            return TRUE;
        case WM_DRAWITEM:
            DrawBoxButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        case WM_COMMAND:
            switch (LOWORD(wp)) {
                case IDOK:
                case IDCANCEL:
                case IDYES:
                case IDNO:
                    if (LOWORD(wp) == IDOK && hasInput_) {
                        input = WindowTextOf(GetDlgItem(dlg, IDC_BOX_EDIT));
                    }
                    EndDialog(dlg, LOWORD(wp));
                    return TRUE;
            }
            break;
        case WM_CLOSE:
            EndDialog(dlg, IDCANCEL);
            return TRUE;
    }
    return FALSE;
}

constexpr DWORD kBoxStyle = DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU;

}  // namespace

int ShowBox(HWND owner, std::string_view text, std::string_view title, BoxButtons buttons) {
    BoxDialog box(Widen(text), {}, false);
    DialogTemplate t(Widen(title), 220, 64, kBoxStyle);
    t.AddControl(DialogTemplate::kStatic, IDC_BOX_TEXT, L"", 10, 10, 200, 20, SS_LEFT | SS_NOPREFIX);
    if (buttons == BoxButtons::Ok) {
        t.AddControl(DialogTemplate::kButton, IDOK, kOkText, 85, 40, 50, 15, BS_OWNERDRAW | WS_TABSTOP);
    } else {
        t.AddControl(DialogTemplate::kButton, IDYES, L"是(&Y)", 55, 40, 50, 15, BS_OWNERDRAW | WS_TABSTOP);
        t.AddControl(DialogTemplate::kButton, IDNO, L"否(&N)", 115, 40, 50, 15, BS_OWNERDRAW | WS_TABSTOP);
    }
    const INT_PTR rc = RunBox(t, owner, BoxDialog::DlgProc, reinterpret_cast<LPARAM>(&box),
                              {nullptr, buttons == BoxButtons::YesNo, Widen(title) + L"\r\n\r\n" + Widen(text)});
    if (buttons == BoxButtons::YesNo) return rc == IDYES ? IDYES : IDNO;
    return IDOK;
}

std::optional<std::string> ShowInputBox(HWND owner, std::string_view prompt, std::string_view title,
                                        std::string_view initial) {
    BoxDialog box(Widen(prompt), Widen(initial), true);
    DialogTemplate t(Widen(title), 230, 82, kBoxStyle);
    t.AddControl(DialogTemplate::kStatic, IDC_BOX_TEXT, L"", 10, 10, 210, 20, SS_LEFT | SS_NOPREFIX);
    t.AddControl(DialogTemplate::kEdit, IDC_BOX_EDIT, L"", 10, 36, 210, 13, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDOK, kOkText, 60, 58, 50, 15, BS_OWNERDRAW | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCancelText, 120, 58, 50, 15, BS_OWNERDRAW | WS_TABSTOP);
    const INT_PTR rc = RunBox(t, owner, BoxDialog::DlgProc, reinterpret_cast<LPARAM>(&box),
                              {nullptr, false, Widen(title) + L"\r\n\r\n" + Widen(prompt)});
    if (rc != IDOK) return std::nullopt;
    return Narrow(box.input);
}

}  // namespace lumora
