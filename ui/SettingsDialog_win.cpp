#include "ui/SettingsDialog_win.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Dpi_win.h"
#include "ui/ImageButton_win.h"
#include "ui/SkinPaint_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr short kMargin = 6;
constexpr short kTabTop = 6;
// The tab strip's own header and frame around a page, in dialog units.
constexpr short kTabHeader = 16;
constexpr short kTabFrame = 4;
constexpr short kButtonsHeight = 22;

// The dialog open now: the keyboard hook of its modal loop finds it here (one settings dialog at a time).
SettingsDialog* g_open = nullptr;

// The tab strip drawn in the skin: the system's own is drawn in the system's colours only.
void PaintTabs(HWND tabs, HDC target) {
    const SkinLook& look = Theme::Look();
    const int dpi = WindowDpi(tabs);
    RECT client;
    GetClientRect(tabs, &client);
    BufferedDc buffer(target, client);
    HDC dc = buffer.Get();
    RECT page = client;
    TabCtrl_AdjustRect(tabs, FALSE, &page);
    RECT header = client;
    header.bottom = page.top - Scaled(2, dpi);
    FillRect(dc, &client, Theme::SolidBrush(look.tabFace));
    // The page's frame.
    RECT frame{client.left, header.bottom, client.right, client.bottom};
    FillRounded(dc, frame, 0, {look.panel, look.panel}, 0, look.buttonEdge, 1);
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(tabs, WM_GETFONT, 0, 0));
    HGDIOBJ oldFont = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    const int current = TabCtrl_GetCurSel(tabs);
    for (int i = 0; i < TabCtrl_GetItemCount(tabs); ++i) {
        RECT r;
        TabCtrl_GetItemRect(tabs, i, &r);
        wchar_t text[64] = {};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        TabCtrl_GetItem(tabs, i, &item);
        const bool chosen = i == current;
        InflateRect(&r, -Scaled(1, dpi), 0);
        if (chosen) {
            r.bottom = header.bottom + 1;  // it opens into its page
            FillRounded(dc, r, Scaled(4, dpi), {BlendColour(look.panel, look.accent, 300), look.panel}, 0,
                        look.buttonEdge, 1);
            RECT mark{r.left + Scaled(3, dpi), r.top + 1, r.right - Scaled(3, dpi), r.top + 1 + Scaled(2, dpi)};
            FillRect(dc, &mark, Theme::SolidBrush(look.accent));
            RECT join{r.left + 1, header.bottom, r.right - 1, header.bottom + 1};
            FillRect(dc, &join, Theme::SolidBrush(look.panel));
        } else {
            FillRounded(dc, r, Scaled(4, dpi), {BlendColour(look.tabFace, look.text, 60), look.tabFace}, 0,
                        BlendColour(look.tabFace, look.buttonEdge, 500), 1);
        }
        SetTextColor(dc, chosen ? look.text : BlendColour(look.text, look.tabFace, 300));
        DrawTextW(dc, text, -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    SelectObject(dc, oldFont);
}

LRESULT CALLBACK TabsProc(HWND tabs, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
    switch (msg) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(tabs, &ps);
            PaintTabs(tabs, dc);
            EndPaint(tabs, &ps);
            return 0;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(tabs, TabsProc, 1);
            break;
    }
    return DefSubclassProc(tabs, msg, wp, lp);
}

}  // namespace

// One page as a child dialog of the frame: the dialog manager then moves the focus into it with Tab.
class SettingsDialog::PageHost final : public WindowBase<PageHost> {
public:
    explicit PageHost(SettingsPage& page) : page_(page) {}
    HWND Create(HWND parent) {
        DialogTemplate t(L"", SettingsPage::kWidth, SettingsPage::kHeight,
                         DS_CONTROL | DS_SETFONT | WS_CHILD | WS_CLIPSIBLINGS);
        page_.Layout(t);
        return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), t.Get(), parent, DlgProc,
                                          reinterpret_cast<LPARAM>(this));
    }
    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_INITDIALOG) {
            SetWindowLongPtrW(hwnd_, GWL_EXSTYLE, GetWindowLongPtrW(hwnd_, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
            page_.OnInit(hwnd_);
            // Lumora's panel look on every page: check boxes and radio buttons drawn without visual styles,
            // whose text would not take the panel's colours.
            for (HWND c = GetWindow(hwnd_, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                const LONG_PTR type = GetWindowLongPtrW(c, GWL_STYLE) & BS_TYPEMASK;
                wchar_t cls[16] = {};
                GetClassNameW(c, cls, 16);
                if (lstrcmpiW(cls, L"Button") == 0 && type >= BS_CHECKBOX && type <= BS_AUTORADIOBUTTON &&
                    type != BS_GROUPBOX && type != BS_USERBUTTON) {
                    Theme::PlainCheckBox(c);
                }
            }
            MakeImageButtons(hwnd_);
            return FALSE;
        }
        INT_PTR result = FALSE;
        if (msg == WM_DRAWITEM && reinterpret_cast<const DRAWITEMSTRUCT*>(lp)->CtlType == ODT_BUTTON) {
            DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        }
        if (page_.OnMessage(hwnd_, msg, wp, lp, result)) return result;
        if (msg == WM_CTLCOLORDLG || msg == WM_CTLCOLORSTATIC || msg == WM_CTLCOLORBTN) {
            return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        }
        return FALSE;
    }
    SettingsPage& page_;
};

SettingsDialog::SettingsDialog(std::vector<std::unique_ptr<SettingsPage>> pages, int firstPage)
    : pages_(std::move(pages)), current_(firstPage) {}

SettingsDialog::~SettingsDialog() = default;

void SettingsDialog::PlacePages() {
    HWND tabs = GetDlgItem(hwnd_, IDC_SET_TABS);
    RECT r;
    GetWindowRect(tabs, &r);
    MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&r), 2);
    TabCtrl_AdjustRect(tabs, FALSE, &r);
    for (auto& host : hosts_) {
        SetWindowPos(host->Handle(), HWND_TOP, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOACTIVATE);
    }
}

// The tab strip wraps its captions into as many rows as the font needs: grow it, and the dialog with it,
// until a page's whole area fits below them.
void SettingsDialog::FitTabs() {
    HWND tabs = GetDlgItem(hwnd_, IDC_SET_TABS);
    RECT need{0, 0, SettingsPage::kWidth, SettingsPage::kHeight};
    MapDialogRect(hwnd_, &need);
    RECT r;
    GetWindowRect(tabs, &r);
    MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&r), 2);
    RECT shown = r;
    TabCtrl_AdjustRect(tabs, FALSE, &shown);
    const int dx = std::max(0L, need.right - (shown.right - shown.left));
    const int dy = std::max(0L, need.bottom - (shown.bottom - shown.top));
    if (dx == 0 && dy == 0) return;
    SetWindowPos(tabs, nullptr, 0, 0, r.right - r.left + dx, r.bottom - r.top + dy, SWP_NOMOVE | SWP_NOZORDER);
    for (int id : {IDOK, IDCANCEL}) {
        HWND button = GetDlgItem(hwnd_, id);
        RECT b;
        GetWindowRect(button, &b);
        MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&b), 2);
        SetWindowPos(button, nullptr, b.left + dx, b.top + dy, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    RECT w;
    GetWindowRect(hwnd_, &w);
    SetWindowPos(hwnd_, nullptr, w.left - dx / 2, w.top - dy / 2, w.right - w.left + dx, w.bottom - w.top + dy,
                 SWP_NOZORDER);
}

void SettingsDialog::OnInit() {
    SetWindowTextW(hwnd_, Widen(kSettingsTitle).c_str());
    if (onOpen_) onOpen_(hwnd_);
    Theme::Caption(hwnd_);
    HWND tabs = GetDlgItem(hwnd_, IDC_SET_TABS);
    SetWindowSubclass(tabs, TabsProc, 1, 0);
    MakeImageButtons(hwnd_);
    for (size_t i = 0; i < pages_.size(); ++i) {
        std::wstring title = pages_[i]->Title();
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = title.data();
        TabCtrl_InsertItem(tabs, static_cast<int>(i), &item);
        hosts_.push_back(std::make_unique<PageHost>(*pages_[i]));
        hosts_.back()->Create(hwnd_);
    }
    FitTabs();
    PlacePages();
    if (current_ < 0 || current_ >= static_cast<int>(pages_.size())) current_ = 0;
    TabCtrl_SetCurSel(tabs, current_);
    Show(current_);
}

void SettingsDialog::Show(int index) {
    for (size_t i = 0; i < hosts_.size(); ++i) {
        ShowWindow(hosts_[i]->Handle(), static_cast<int>(i) == index ? SW_SHOW : SW_HIDE);
    }
    current_ = index;
}

void SettingsDialog::Confirm() {
    for (size_t i = 0; i < pages_.size(); ++i) {
        if (!pages_[i]->Confirm(hosts_[i]->Handle())) {
            TabCtrl_SetCurSel(GetDlgItem(hwnd_, IDC_SET_TABS), static_cast<int>(i));
            Show(static_cast<int>(i));
            return;
        }
    }
    EndDialog(hwnd_, IDOK);
}

// Ctrl+Tab and Ctrl+Shift+Tab (and Ctrl+PgDn, Ctrl+PgUp) turn the pages wherever the focus is, as in
// the system's property sheets; the dialog's own modal loop would only move the focus.
LRESULT CALLBACK SettingsDialog::KeyHook(int code, WPARAM wp, LPARAM lp) {
    const auto* msg = reinterpret_cast<const MSG*>(lp);
    if (code == MSGF_DIALOGBOX && g_open && msg->message == WM_KEYDOWN && (GetKeyState(VK_CONTROL) & 0x8000)) {
        const bool back = msg->wParam == VK_PRIOR || (msg->wParam == VK_TAB && (GetKeyState(VK_SHIFT) & 0x8000));
        if (msg->wParam == VK_TAB || msg->wParam == VK_PRIOR || msg->wParam == VK_NEXT) {
            const int count = static_cast<int>(g_open->pages_.size());
            const int next = (g_open->current_ + (back ? count - 1 : 1)) % count;
            TabCtrl_SetCurSel(GetDlgItem(g_open->hwnd_, IDC_SET_TABS), next);
            g_open->Show(next);
            return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wp, lp);
}

INT_PTR SettingsDialog::OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_INITDIALOG:
            OnInit();
            return TRUE;
        case WM_NOTIFY: {
            const auto* n = reinterpret_cast<const NMHDR*>(lp);
            if (n->idFrom == static_cast<UINT_PTR>(IDC_SET_TABS) && n->code == TCN_SELCHANGE) {
                Show(TabCtrl_GetCurSel(n->hwndFrom));
            }
            return TRUE;
        }
        case WM_COMMAND:
            switch (LOWORD(wp)) {
                case IDOK:
                    Confirm();
                    return TRUE;
                case IDCANCEL:
                    EndDialog(hwnd_, IDCANCEL);
                    return TRUE;
            }
            break;
        case WM_SIZE:  // a DPI change has scaled the tab strip
            PlacePages();
            return FALSE;
        case WM_ERASEBKGND: {
            RECT client;
            GetClientRect(hwnd_, &client);
            FillGradient(reinterpret_cast<HDC>(wp), client, Theme::Look().background);
            SetWindowLongPtrW(hwnd_, DWLP_MSGRESULT, 1);
            return TRUE;
        }
        case WM_CTLCOLORBTN:  // behind the buttons' corners, at the foot of the background
            return reinterpret_cast<INT_PTR>(Theme::SolidBrush(Theme::Look().background.to));
        case WM_DRAWITEM:
            DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_CLOSE:
            EndDialog(hwnd_, IDCANCEL);
            return TRUE;
    }
    return FALSE;
}

bool SettingsDialog::Run(HWND owner, const std::function<void(HWND)>& onOpen) {
    onOpen_ = onOpen;
    constexpr short tabWidth = SettingsPage::kWidth + 2 * kTabFrame;
    constexpr short tabHeight = SettingsPage::kHeight + kTabHeader + 2 * kTabFrame;
    constexpr short width = tabWidth + 2 * kMargin;
    constexpr short height = kTabTop + tabHeight + kButtonsHeight;
    DialogTemplate t(Widen(kSettingsTitle), width, height,
                     DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT);
    t.AddControl(WC_TABCONTROLW, IDC_SET_TABS, L"", kMargin, kTabTop, tabWidth, tabHeight,
                 WS_TABSTOP | WS_CLIPSIBLINGS | TCS_MULTILINE);
    const short buttonsY = kTabTop + tabHeight + 4;
    t.AddControl(DialogTemplate::kButton, IDOK, kOkText, width - kMargin - 2 * 52 - 6, buttonsY, 52, 14,
                 BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCancelText, width - kMargin - 52, buttonsY, 52, 14,
                 BS_PUSHBUTTON | WS_TABSTOP);
    g_open = this;
    hook_ = SetWindowsHookExW(WH_MSGFILTER, KeyHook, nullptr, GetCurrentThreadId());
    const INT_PTR answer =
        DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, DlgProc, reinterpret_cast<LPARAM>(this));
    if (hook_) UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
    g_open = nullptr;
    return answer == IDOK;
}

}  // namespace lumora
