#include "ui/LyricsSettingsDialog_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include <string>

#include "mediainfo/LyricsTiming.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

// The slider counts pairs of bytes: the limit is always even. 0 is "no limit".
constexpr int kMaxPairs = 50;

struct State {
    LyricsSettingsDialog* fields;
    int limit;
    AudioDisplayWindow::LyricsLook look;
    COLORREF custom[16];
};

void ShowLimit(HWND dlg, int limit) {
    SetDlgItemTextW(dlg, IDC_LYRICS_SET_LABEL, Widen(LineByteLimitLabel(limit)).c_str());
    SetDlgItemTextW(dlg, IDC_LYRICS_SET_PREVIEW, Widen(LineByteLimitPreview(limit)).c_str());
}

bool PickColour(HWND dlg, State& s, COLORREF& colour) {
    CHOOSECOLORW cc{};
    cc.lStructSize = sizeof cc;
    cc.hwndOwner = dlg;
    cc.rgbResult = colour;
    cc.lpCustColors = s.custom;
    cc.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!ChooseColorW(&cc)) return false;
    colour = cc.rgbResult;
    return true;
}

int SizeIn(HWND dlg, int id, int fallback) {
    BOOL ok = FALSE;
    const UINT n = GetDlgItemInt(dlg, id, &ok, FALSE);
    return ok && n >= 6 && n <= 72 ? static_cast<int>(n) : fallback;
}

INT_PTR CALLBACK Proc(HWND dlg, UINT msg, WPARAM wp, LPARAM lp) {
    auto* s = reinterpret_cast<State*>(GetWindowLongPtrW(dlg, DWLP_USER));
    switch (msg) {
        case WM_INITDIALOG: {
            SetWindowLongPtrW(dlg, DWLP_USER, lp);
            s = reinterpret_cast<State*>(lp);
            SetWindowTextW(dlg, Widen(kLyricsSettingsTitle).c_str());
            HWND slider = GetDlgItem(dlg, IDC_LYRICS_SET_LIMIT);
            SendMessageW(slider, TBM_SETRANGE, FALSE, MAKELPARAM(0, kMaxPairs));
            SendMessageW(slider, TBM_SETPOS, TRUE, s->limit / 2);
            SetDlgItemInt(dlg, IDC_LYRICS_SET_CURRENT_SIZE, static_cast<UINT>(s->look.currentPoints), FALSE);
            SetDlgItemInt(dlg, IDC_LYRICS_SET_NEXT_SIZE, static_cast<UINT>(s->look.nextPoints), FALSE);
            CheckDlgButton(dlg, IDC_LYRICS_SET_PICTURE_ON, s->look.usePicture ? BST_CHECKED : BST_UNCHECKED);
            CheckDlgButton(dlg, IDC_LYRICS_SET_PICTURE_STRETCH, s->look.stretchPicture ? BST_CHECKED : BST_UNCHECKED);
            SetDlgItemTextW(dlg, IDC_LYRICS_SET_PICTURE_PATH, Widen(s->look.picturePath).c_str());
            ShowLimit(dlg, s->limit);
            return TRUE;
        }
        case WM_HSCROLL:
            if (s && reinterpret_cast<HWND>(lp) == GetDlgItem(dlg, IDC_LYRICS_SET_LIMIT)) {
                s->limit = 2 * static_cast<int>(SendMessageW(reinterpret_cast<HWND>(lp), TBM_GETPOS, 0, 0));
                ShowLimit(dlg, s->limit);  // the preview follows the slider at once
            }
            return TRUE;
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        case WM_COMMAND:
            if (!s) break;
            switch (LOWORD(wp)) {
                case IDC_LYRICS_SET_BACKGROUND:
                    PickColour(dlg, *s, s->look.background);
                    return TRUE;
                case IDC_LYRICS_SET_CURRENT:
                    PickColour(dlg, *s, s->look.current);
                    return TRUE;
                case IDC_LYRICS_SET_NEXT:
                    PickColour(dlg, *s, s->look.next);
                    return TRUE;
                case IDOK:
                    s->look.currentPoints = SizeIn(dlg, IDC_LYRICS_SET_CURRENT_SIZE, s->look.currentPoints);
                    s->look.nextPoints = SizeIn(dlg, IDC_LYRICS_SET_NEXT_SIZE, s->look.nextPoints);
                    s->look.usePicture = IsDlgButtonChecked(dlg, IDC_LYRICS_SET_PICTURE_ON) == BST_CHECKED;
                    s->look.stretchPicture = IsDlgButtonChecked(dlg, IDC_LYRICS_SET_PICTURE_STRETCH) == BST_CHECKED;
                    s->fields->lineByteLimit = s->limit;
                    s->fields->look = s->look;
                    EndDialog(dlg, IDOK);
                    return TRUE;
                case IDCANCEL:
                    EndDialog(dlg, IDCANCEL);
                    return TRUE;
            }
            break;
        case WM_CLOSE:
            EndDialog(dlg, IDCANCEL);
            return TRUE;
    }
    return FALSE;
}

}  // namespace

bool LyricsSettingsDialog::Run(HWND owner) {
    DialogTemplate t(Widen(kLyricsSettingsTitle), 260, 226,
                     DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.AddControl(DialogTemplate::kStatic, IDC_LYRICS_SET_LABEL, L"", 8, 8, 244, 10, SS_LEFT | SS_NOPREFIX);
    // The slider is a common control: its class goes in by name.
    t.AddControl(TRACKBAR_CLASSW, IDC_LYRICS_SET_LIMIT, L"", 8, 20, 244, 16, TBS_HORZ | TBS_NOTICKS | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, IDC_LYRICS_SET_PREVIEW, L"", 8, 40, 244, 80,
                 SS_LEFT | SS_NOPREFIX | WS_BORDER);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_BACKGROUND, L"背景颜色...", 8, 126, 78, 14,
                 BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_CURRENT, L"当前歌词颜色...", 90, 126, 78, 14,
                 BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_NEXT, L"下一句颜色...", 172, 126, 80, 14,
                 BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"当前歌词字号：", 8, 148, 60, 10, SS_LEFT);
    t.AddControl(DialogTemplate::kEdit, IDC_LYRICS_SET_CURRENT_SIZE, L"", 70, 146, 30, 12,
                 ES_NUMBER | WS_BORDER | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"下一句字号：", 130, 148, 56, 10, SS_LEFT);
    t.AddControl(DialogTemplate::kEdit, IDC_LYRICS_SET_NEXT_SIZE, L"", 188, 146, 30, 12,
                 ES_NUMBER | WS_BORDER | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_PICTURE_ON, L"使用背景图片", 8, 166, 64, 10,
                 BS_AUTOCHECKBOX | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_PICTURE_STRETCH, L"拉伸图片", 76, 166, 50, 10,
                 BS_AUTOCHECKBOX | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_LYRICS_SET_PICTURE, L"选择图片...", 190, 164, 62, 14,
                 BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, IDC_LYRICS_SET_PICTURE_PATH, L"", 8, 182, 244, 10,
                 SS_LEFT | SS_NOPREFIX | SS_PATHELLIPSIS);
    t.AddControl(DialogTemplate::kButton, IDOK, kOkText, 140, 204, 52, 14, BS_DEFPUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCancelText, 200, 204, 52, 14, BS_PUSHBUTTON | WS_TABSTOP);
    State state{this, lineByteLimit, look, {}};
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, Proc, reinterpret_cast<LPARAM>(&state)) ==
           IDOK;
}

}  // namespace lumora
