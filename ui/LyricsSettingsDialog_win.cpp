#include "ui/LyricsSettingsDialog_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include <string>

#include "mediainfo/LyricsTiming.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/Dpi_win.h"
#include "ui/ImageButton_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

// The slider counts pairs of bytes: the limit is always even. 0 is "no limit".
constexpr int kMaxPairs = 50;

int SizeIn(HWND dlg, int id, int fallback) {
    BOOL ok = FALSE;
    const UINT n = GetDlgItemInt(dlg, id, &ok, FALSE);
    return ok && IsLyricsPointSize(n) ? static_cast<int>(n) : fallback;
}

}  // namespace

void LyricsSettingsDialog::ShowLimit() {
    SetDlgItemTextW(hwnd_, IDC_LYRICS_SET_LABEL, Widen(LineByteLimitLabel(edited_.lineByteLimit)).c_str());
    SetDlgItemTextW(hwnd_, IDC_LYRICS_SET_PREVIEW, Widen(LineByteLimitPreview(edited_.lineByteLimit)).c_str());
}

bool LyricsSettingsDialog::PickColour(std::uint32_t& colour) {
    CHOOSECOLORW cc{};
    cc.lStructSize = sizeof cc;
    cc.hwndOwner = hwnd_;
    cc.rgbResult = colour;
    cc.lpCustColors = custom_;
    cc.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!ChooseColorW(&cc)) return false;
    colour = cc.rgbResult;
    return true;
}

void LyricsSettingsDialog::PickPicture() {
    WinPrompts prompts(hwnd_);
    if (!ChooseLyricsPicture(prompts, edited_.look)) return;
    CheckDlgButton(hwnd_, IDC_LYRICS_SET_PICTURE_ON, BST_CHECKED);
    SetDlgItemTextW(hwnd_, IDC_LYRICS_SET_PICTURE_PATH, Widen(edited_.look.picturePath).c_str());
}

void LyricsSettingsDialog::OnInit() {
    const LyricsLook& look = edited_.look;
    SetWindowTextW(hwnd_, Widen(kLyricsSettingsTitle).c_str());
    Theme::PlainCheckBoxes(hwnd_, {IDC_LYRICS_SET_PICTURE_ON, IDC_LYRICS_SET_PICTURE_STRETCH});
    HWND slider = GetDlgItem(hwnd_, IDC_LYRICS_SET_LIMIT);
    Theme::SliderThumb(slider, WindowDpi(hwnd_));
    SendMessageW(slider, TBM_SETRANGE, FALSE, MAKELPARAM(0, kMaxPairs));
    SendMessageW(slider, TBM_SETPOS, TRUE, edited_.lineByteLimit / 2);
    SetDlgItemInt(hwnd_, IDC_LYRICS_SET_CURRENT_SIZE, static_cast<UINT>(look.currentPoints), FALSE);
    SetDlgItemInt(hwnd_, IDC_LYRICS_SET_NEXT_SIZE, static_cast<UINT>(look.nextPoints), FALSE);
    CheckDlgButton(hwnd_, IDC_LYRICS_SET_PICTURE_ON, look.usePicture ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(hwnd_, IDC_LYRICS_SET_PICTURE_STRETCH, look.stretchPicture ? BST_CHECKED : BST_UNCHECKED);
    SetDlgItemTextW(hwnd_, IDC_LYRICS_SET_PICTURE_PATH, Widen(look.picturePath).c_str());
    ShowLimit();
}

void LyricsSettingsDialog::Confirm() {
    LyricsLook& look = edited_.look;
    look.currentPoints = SizeIn(hwnd_, IDC_LYRICS_SET_CURRENT_SIZE, look.currentPoints);
    look.nextPoints = SizeIn(hwnd_, IDC_LYRICS_SET_NEXT_SIZE, look.nextPoints);
    look.usePicture = IsDlgButtonChecked(hwnd_, IDC_LYRICS_SET_PICTURE_ON) == BST_CHECKED;
    look.stretchPicture = IsDlgButtonChecked(hwnd_, IDC_LYRICS_SET_PICTURE_STRETCH) == BST_CHECKED;
    settings = edited_;
    EndDialog(hwnd_, IDOK);
}

INT_PTR LyricsSettingsDialog::OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_INITDIALOG:
            OnInit();
            MakeImageButtons(hwnd_);
            return TRUE;
        case WM_DRAWITEM:  // its push buttons are image buttons
            DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case kWmDpiChanged:  // the dialog manager scales the rest
            Theme::SliderThumb(GetDlgItem(hwnd_, IDC_LYRICS_SET_LIMIT), NewDpi(wp));
            return FALSE;
        case WM_HSCROLL:
            if (reinterpret_cast<HWND>(lp) == GetDlgItem(hwnd_, IDC_LYRICS_SET_LIMIT)) {
                edited_.lineByteLimit = 2 * static_cast<int>(SendMessageW(reinterpret_cast<HWND>(lp), TBM_GETPOS, 0, 0));
                ShowLimit();  // the preview follows the slider at once
            }
            return TRUE;
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        case WM_COMMAND:
            switch (LOWORD(wp)) {
                case IDC_LYRICS_SET_BACKGROUND: PickColour(edited_.look.background); return TRUE;
                case IDC_LYRICS_SET_CURRENT: PickColour(edited_.look.current); return TRUE;
                case IDC_LYRICS_SET_NEXT: PickColour(edited_.look.next); return TRUE;
                case IDC_LYRICS_SET_PICTURE: PickPicture(); return TRUE;
                case IDOK: Confirm(); return TRUE;
                case IDCANCEL: EndDialog(hwnd_, IDCANCEL); return TRUE;
            }
            break;
        case WM_CLOSE:
            EndDialog(hwnd_, IDCANCEL);
            return TRUE;
    }
    return FALSE;
}


bool LyricsSettingsDialog::Run(HWND owner) {
    DialogTemplate t(Widen(kLyricsSettingsTitle), 260, 226,
                     DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.AddControl(DialogTemplate::kStatic, IDC_LYRICS_SET_LABEL, L"", 8, 8, 244, 10, SS_LEFT | SS_NOPREFIX);
    // The slider is a common control: its class goes in by name.
    t.AddControl(TRACKBAR_CLASSW, IDC_LYRICS_SET_LIMIT, L"", 8, 20, 244, 16,
                 TBS_HORZ | TBS_NOTICKS | TBS_FIXEDLENGTH | WS_TABSTOP);
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
    edited_ = settings;
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, DlgProc, reinterpret_cast<LPARAM>(this)) ==
           IDOK;
}

}  // namespace lumora
