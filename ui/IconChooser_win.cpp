#include "ui/IconChooser_win.h"

#include <shellapi.h>

#include "common/Text.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/ImageButton_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

std::string SystemIconLibrary() {
    wchar_t folder[MAX_PATH] = {};
    const UINT n = GetSystemDirectoryW(folder, MAX_PATH);
    return Narrow(std::wstring_view(folder, n < MAX_PATH ? n : 0)) + "\\shell32.dll";
}

}  // namespace

HICON ExtractLargeIcon(const std::string& file, int index) {
    HICON large = nullptr;
    return ExtractIconExW(Widen(file).c_str(), index, &large, nullptr, 1) == 1 ? large : nullptr;
}

IconChooser::IconChooser(std::string programPath) : programPath_(std::move(programPath)) {}

IconChooser::~IconChooser() {
    if (images_) ImageList_Destroy(images_);
}

size_t IconChooser::AddFile(const std::string& file) {
    for (size_t i = 0; i < files_.size(); ++i) {
        if (EqualsIgnoringAsciiCase(files_[i], file)) return i;
    }
    files_.push_back(file);
    SendDlgItemMessageW(hwnd_, IDC_ICONS_FILE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(file).c_str()));
    return files_.size() - 1;
}

void IconChooser::ShowFile(size_t at, int select) {
    shown_ = at;
    SendDlgItemMessageW(hwnd_, IDC_ICONS_FILE, CB_SETCURSEL, at, 0);
    HWND list = GetDlgItem(hwnd_, IDC_ICONS_LIST);
    ListView_DeleteAllItems(list);
    const int size = GetSystemMetrics(SM_CXICON);
    HIMAGELIST images = ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 16, 16);
    ListView_SetImageList(list, images, LVSIL_NORMAL);
    if (images_) ImageList_Destroy(images_);
    images_ = images;

    const std::wstring path = Widen(files_[at]);
    const UINT count = ExtractIconExW(path.c_str(), -1, nullptr, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        IconHandle icon(ExtractLargeIcon(files_[at], static_cast<int>(i)));
        if (!icon.get()) continue;
        std::wstring label = std::to_wstring(i);
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
        item.iItem = static_cast<int>(i);
        item.pszText = label.data();
        item.iImage = ImageList_AddIcon(images, icon.get());
        item.lParam = static_cast<LPARAM>(i);
        const int row = ListView_InsertItem(list, &item);
        if (static_cast<int>(i) == select) {
            ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
            ListView_EnsureVisible(list, row, FALSE);
        }
    }
    ShowIndex();
}

int IconChooser::SelectedIndex() const {
    HWND list = GetDlgItem(hwnd_, IDC_ICONS_LIST);
    const int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    if (row < 0) return -1;
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    ListView_GetItem(list, &item);
    return static_cast<int>(item.lParam);
}

void IconChooser::ShowIndex() {
    const int index = SelectedIndex();
    SetDlgItemTextW(hwnd_, IDC_ICONS_INDEX,
                    index < 0 ? L"" : Widen(std::string(kIconIndexLabel) + std::to_string(index)).c_str());
    EnableWindow(GetDlgItem(hwnd_, IDOK), index >= 0);
}

void IconChooser::Browse() {
    WinPrompts prompts(hwnd_);
    const auto file = prompts.AskOpenFileName(
        "选择图标文件", "图标、程序和库文件 (*.ico;*.exe;*.dll;*.icl)|*.ico;*.exe;*.dll;*.icl|所有文件 (*.*)|*.*");
    if (file) ShowFile(AddFile(*file), 0);
}

void IconChooser::OnInit() {
    SetWindowTextW(hwnd_, Widen(kIconChooserTitle).c_str());
    AddFile(SystemIconLibrary());
    AddFile(programPath_);
    // The program's own icon is where everyone starts: the system's library is offered instead.
    if (initial_.file.empty() || EqualsIgnoringAsciiCase(initial_.file, programPath_)) {
        ShowFile(0, -1);
    } else {
        ShowFile(AddFile(initial_.file), initial_.index);
    }
}

INT_PTR IconChooser::OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_INITDIALOG:
            OnInit();
            MakeImageButtons(hwnd_);
            return TRUE;
        case WM_DRAWITEM:  // its push buttons are image buttons
            DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
            return TRUE;
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
        case WM_NOTIFY: {
            const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
            if (hdr->idFrom != IDC_ICONS_LIST) break;
            if (hdr->code == LVN_ITEMCHANGED) ShowIndex();
            if (hdr->code == NM_DBLCLK && SelectedIndex() >= 0) PostMessageW(hwnd_, WM_COMMAND, IDOK, 0);
            return TRUE;
        }
        case WM_COMMAND:
            switch (LOWORD(wp)) {
                case IDC_ICONS_FILE:
                    if (HIWORD(wp) == CBN_SELCHANGE) {
                        const LRESULT at = SendDlgItemMessageW(hwnd_, IDC_ICONS_FILE, CB_GETCURSEL, 0, 0);
                        if (at >= 0 && static_cast<size_t>(at) != shown_) ShowFile(static_cast<size_t>(at), 0);
                    }
                    return TRUE;
                case IDC_ICONS_BROWSE:
                    Browse();
                    return TRUE;
                case IDOK:
                    if (SelectedIndex() < 0) return TRUE;
                    chosen_ = IconChoice{files_[shown_], SelectedIndex()};
                    EndDialog(hwnd_, IDOK);
                    return TRUE;
                case IDCANCEL:
                    EndDialog(hwnd_, IDCANCEL);
                    return TRUE;
            }
            break;
        case WM_CLOSE:
            EndDialog(hwnd_, IDCANCEL);
            return TRUE;
    }
    return FALSE;
}

std::optional<IconChoice> IconChooser::Run(HWND owner, const IconChoice& initial) {
    DialogTemplate t(Widen(kIconChooserTitle), 260, 206,
                     DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"图标文件：", 8, 9, 40, 10, SS_LEFT);
    t.AddControl(WC_COMBOBOXW, IDC_ICONS_FILE, L"", 48, 7, 150, 120,
                 CBS_DROPDOWNLIST | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDC_ICONS_BROWSE, L"浏览...", 202, 6, 50, 14, BS_PUSHBUTTON | WS_TABSTOP);
    t.AddControl(
        WC_LISTVIEWW, IDC_ICONS_LIST, L"", 8, 26, 244, 148,
        LVS_ICON | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | LVS_SHAREIMAGELISTS | WS_BORDER | WS_TABSTOP);
    t.AddControl(DialogTemplate::kStatic, IDC_ICONS_INDEX, L"", 8, 188, 120, 10, SS_LEFT | SS_NOPREFIX);
    t.AddControl(DialogTemplate::kButton, IDOK, kOkText, 140, 186, 52, 14, BS_DEFPUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCancelText, 200, 186, 52, 14, BS_PUSHBUTTON | WS_TABSTOP);
    initial_ = initial;
    chosen_.reset();
    files_.clear();
    const INT_PTR rc =
        DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, DlgProc, reinterpret_cast<LPARAM>(this));
    return rc == IDOK ? chosen_ : std::nullopt;
}

}  // namespace lumora
