#include "ui/InfoEditorDialog_win.h"

#include <memory>

#include "app/Version.h"
#include "mediainfo/InfoEditor.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/ImageButton_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr WORD kListBox = 0x0083;

struct ItemBox {
    int id;
    std::string_view label;
};
constexpr ItemBox kItems[] = {
    {IDC_INFO_TITLE, kTitleLabel}, {IDC_INFO_ARTIST, kArtistLabel},   {IDC_INFO_ALBUM, kAlbumLabel},
    {IDC_INFO_YEAR, kYearLabel},   {IDC_INFO_COMMENT, kCommentLabel},
};

std::string ItemText(HWND dlg, int id) {
    HWND box = GetDlgItem(dlg, id);
    const int length = GetWindowTextLengthW(box);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    GetWindowTextW(box, text.data(), length + 1);
    text.resize(static_cast<size_t>(length));
    return Narrow(text);
}

class EditorWindow final : public InfoEditorView, public WindowBase<EditorWindow> {
public:
    EditorWindow(InfoEditorDialog& fields, FileSystem& fs) : fields_(fields), fs_(fs) {}

    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
        switch (msg) {
            case WM_INITDIALOG:
                OnInit();
                MakeImageButtons(hwnd_);
                return TRUE;
            case WM_DRAWITEM:  // its push buttons are image buttons
                DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
                return TRUE;
            case WM_COMMAND:
                OnCommand(LOWORD(wp), HIWORD(wp));
                return TRUE;
            case WM_CTLCOLORDLG:
            case WM_CTLCOLORSTATIC:
            case WM_CTLCOLORBTN:
                return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
            case WM_CLOSE:
                EndDialog(hwnd_, IDCANCEL);
                return TRUE;
        }
        return FALSE;
    }

    // InfoEditorView
    void ShowFields(const MediaInfoRecord& r) override {
        const std::string* texts[] = {&r.title, &r.artist, &r.album, &r.year, &r.comment};
        for (size_t i = 0; i < std::size(kItems); ++i) SetDlgItemTextW(hwnd_, kItems[i].id, Widen(*texts[i]).c_str());
        SetDlgItemTextW(hwnd_, IDC_INFO_LYRICS, Widen(r.lyrics).c_str());
    }
    void ShowTimeShift(std::optional<long long> seconds) override {
        CheckDlgButton(hwnd_, IDC_INFO_SHIFT, seconds ? BST_CHECKED : BST_UNCHECKED);
        SetDlgItemTextW(hwnd_, IDC_INFO_SHIFT_VALUE, seconds ? (std::to_wstring(*seconds) + L" 秒").c_str() : L"");
    }
    void RefreshFileList() override {
        // The list shows the queue's lines; what changed is the chosen file's content, read again.
        const std::string path = editor_->Path();
        editor_->TakeFile(path);
    }

private:
    void OnInit() {
        HWND dlg = hwnd_;
        prompts_ = std::make_unique<WinPrompts>(dlg);
        editor_ = std::make_unique<InfoEditor>(fs_, *prompts_, *this, std::string(kVersionText), fields_.holder);
        SetWindowTextW(dlg, Widen(kInfoEditorTitle).c_str());
        Theme::PlainCheckBoxes(dlg, {IDC_INFO_READ_ONLY, IDC_INFO_SHIFT});
        for (const auto& f : fields_.files) {
            SendDlgItemMessageW(dlg, IDC_INFO_FILES, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(f.line).c_str()));
        }
        if (fields_.first >= 0 && fields_.first < static_cast<int>(fields_.files.size())) {
            SendDlgItemMessageW(dlg, IDC_INFO_FILES, LB_SETCURSEL, static_cast<WPARAM>(fields_.first), 0);
            Take(fields_.first);
        }
    }

    void Take(int index) {
        if (index < 0 || index >= static_cast<int>(fields_.files.size())) return;
        const std::string& path = fields_.files[static_cast<size_t>(index)].path;
        SetDlgItemTextW(hwnd_, IDC_INFO_PATH, Widen(path).c_str());
        if (!editor_->TakeFile(path)) SetDlgItemTextW(hwnd_, IDC_INFO_PATH, L"");
    }

    // The boxes are handed over before every command, so the editor works on what the user sees.
    void HandOver() {
        MediaInfoRecord r;
        std::string* texts[] = {&r.title, &r.artist, &r.album, &r.year, &r.comment};
        for (size_t i = 0; i < std::size(kItems); ++i) *texts[i] = ItemText(hwnd_, kItems[i].id);
        r.lyrics = ItemText(hwnd_, IDC_INFO_LYRICS);
        editor_->SetFields(r);
        editor_->SetRemoveReadOnly(IsDlgButtonChecked(hwnd_, IDC_INFO_READ_ONLY) == BST_CHECKED);
    }

    void OnCommand(int id, int code) {
        switch (id) {
            case IDC_INFO_FILES:
                if (code == LBN_SELCHANGE) {
                    Take(static_cast<int>(SendDlgItemMessageW(hwnd_, IDC_INFO_FILES, LB_GETCURSEL, 0, 0)));
                }
                break;
            case IDC_INFO_SHIFT:
                HandOver();
                if (IsDlgButtonChecked(hwnd_, IDC_INFO_SHIFT) == BST_CHECKED) {
                    if (!editor_->ChooseTimeShift()) ShowTimeShift(std::nullopt);
                } else {
                    editor_->ClearTimeShift();
                }
                break;
            case IDC_INFO_SAVE:
                HandOver();
                editor_->Save();
                break;
            case IDC_INFO_EXPORT:
                HandOver();
                editor_->ExportQgc();
                break;
            case IDC_INFO_IMPORT:
                HandOver();
                editor_->ImportQgc();
                break;
            case IDCANCEL:
                EndDialog(hwnd_, IDCANCEL);
                break;
            default:
                break;
        }
    }

    InfoEditorDialog& fields_;
    FileSystem& fs_;
    std::unique_ptr<WinPrompts> prompts_;
    std::unique_ptr<InfoEditor> editor_;
};

}  // namespace

void InfoEditorDialog::Run(HWND owner, FileSystem& fs) {
    DialogTemplate t(Widen(kInfoEditorTitle), 400, 250, DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.AddControl(kListBox, IDC_INFO_FILES, L"", 6, 6, 120, 238,
                 WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, IDC_INFO_PATH, L"", 134, 6, 260, 10, SS_LEFT | SS_NOPREFIX | SS_PATHELLIPSIS);
    short y = 20;
    for (const auto& item : kItems) {
        t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), Widen(item.label), 134, static_cast<short>(y + 2), 24, 10,
                     SS_LEFT);
        t.AddControl(DialogTemplate::kEdit, static_cast<WORD>(item.id), L"", 160, y, 234, 12,
                     ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP);
        y = static_cast<short>(y + 16);
    }
    t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), Widen(kLyricsLabel), 134, static_cast<short>(y + 2), 24, 10,
                 SS_LEFT);
    t.AddControl(DialogTemplate::kEdit, IDC_INFO_LYRICS, L"", 160, y, 234, 118,
                 ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | WS_BORDER | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_INFO_READ_ONLY, L"去掉“只读”属性", 134, 222, 80, 10,
                 BS_AUTOCHECKBOX | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_INFO_SHIFT, Widen(kTimeShiftTitle), 218, 222, 56, 10, BS_CHECKBOX | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, IDC_INFO_SHIFT_VALUE, L"", 276, 223, 40, 10, SS_LEFT);
    t.AddControl(DialogTemplate::kButton, IDC_INFO_SAVE, L"保存", 134, 234, 50, 13, BS_DEFPUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_INFO_EXPORT, L"导出QGC", 190, 234, 50, 13, BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_INFO_IMPORT, L"导入QGC", 246, 234, 50, 13, BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCloseText, 344, 234, 50, 13, BS_PUSHBUTTON | WS_TABSTOP);
    EditorWindow window(*this, fs);
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, EditorWindow::DlgProc,
                            reinterpret_cast<LPARAM>(&window));
}

}  // namespace lumora
