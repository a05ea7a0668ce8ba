#include "ui/FileTypePages_win.h"

#include <commctrl.h>
#include <shellapi.h>

#include "platform/WinText_win.h"
#include "ports/Prompts.h"
#include "ports/ShellNotifier.h"
#include "ui/ControlIds.h"
#include "ui/Theme_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr std::string_view kOneIconQuestion = "确定所有的文件都使用该图标？";

enum Column { kExtension, kDescription, kState, kIconFile, kIconIndex };

DWORD WindowsMajorVersion() {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    return GetVersionExW(&info) ? info.dwMajorVersion : 5;
}

// Since Windows 8 only the user picks a type's default program: Lumora opens the system's page for it, where
// Lumora is listed through its capabilities. Windows XP has no such page.
bool OpenDefaultApps(HWND owner) {
    const DWORD major = WindowsMajorVersion();
    if (major < 6) return false;
    const auto rc = reinterpret_cast<INT_PTR>(
        major >= 10 ? ShellExecuteW(owner, L"open", L"ms-settings:defaultapps?registeredAppUser=Lumora", nullptr,
                                    nullptr, SW_SHOWNORMAL)
                    : ShellExecuteW(owner, L"open", L"control.exe",
                                    L"/name Microsoft.DefaultPrograms /page "
                                    L"pageDefaultProgram\\pageAdvancedSettings?pszAppName=Lumora",
                                    nullptr, SW_SHOWNORMAL));
    return rc > 32;
}

void SetCell(HWND list, int row, int column, const std::string& text) {
    std::wstring wide = Widen(text);
    ListView_SetItemText(list, row, column, wide.data());
}

// A length in the page's dialog units, in pixels.
int DialogUnits(HWND page, int units) {
    RECT r{0, 0, units, 0};
    MapDialogRect(page, &r);
    return r.right;
}

}  // namespace

// ---- Shared ----------------------------------------------------------------------------------------

RegistrationPage::RegistrationPage(Registry& registry, Prompts& prompts, std::string programPath,
                                   ShellNotifier& notifier)
    : prompts_(prompts),
      wrapper_(registry, prompts),
      registrar_(wrapper_, programPath),
      programPath_(std::move(programPath)),
      notifier_(notifier) {}

bool RegistrationPage::OnMessage(HWND, UINT msg, WPARAM wp, LPARAM, INT_PTR& result) {
    switch (msg) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            result = reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
            return true;
    }
    return false;
}

// ---- File types ------------------------------------------------------------------------------------

std::wstring FileTypesPage::Title() const { return Widen(kFileTypesPageTitle); }

void FileTypesPage::Layout(DialogTemplate& page) {
    page.AddControl(WC_LISTVIEWW, IDC_FILETYPES_LIST, L"", 6, 6, kWidth - 12, kHeight - 32,
                    LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP);
    page.AddControl(DialogTemplate::kButton, IDC_FILETYPES_ALL, L"全选", 6, kHeight - 20, 50, 14,
                    BS_PUSHBUTTON | WS_TABSTOP);
    page.AddControl(DialogTemplate::kButton, IDC_FILETYPES_NONE, L"全不选", 60, kHeight - 20, 50, 14,
                    BS_PUSHBUTTON | WS_TABSTOP);
    page.AddControl(DialogTemplate::kButton, IDC_FILETYPES_DEFAULT_APPS, L"系统默认应用设置...", kWidth - 96,
                    kHeight - 20, 90, 14, BS_PUSHBUTTON | WS_TABSTOP);
}

void FileTypesPage::OnInit(HWND page) {
    HWND list = GetDlgItem(page, IDC_FILETYPES_LIST);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    const struct {
        const wchar_t* caption;
        int width;
    } columns[] = {{L"扩展名", 36}, {L"说明", 112}, {L"状态", 34}, {L"图标文件", 84}, {L"图标序列", 34}};
    for (int i = 0; i < static_cast<int>(std::size(columns)); ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<wchar_t*>(columns[i].caption);
        column.cx = DialogUnits(page, columns[i].width);
        ListView_InsertColumn(list, i, &column);
    }
    for (int row = 0; row < static_cast<int>(items_.size()); ++row) {
        std::wstring text = Widen(items_[static_cast<size_t>(row)]);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        ListView_InsertItem(list, &item);
    }
    ListView_SetItemState(list, 0, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    if (WindowsMajorVersion() < 6) ShowWindow(GetDlgItem(page, IDC_FILETYPES_DEFAULT_APPS), SW_HIDE);
    Refresh(page);
}

void FileTypesPage::Refresh(HWND page) {
    HWND list = GetDlgItem(page, IDC_FILETYPES_LIST);
    for (int row = 0; row < static_cast<int>(items_.size()); ++row) {
        const std::string& extension = items_[static_cast<size_t>(row)];
        const FileTypeState state = registrar_.RefreshFileTypeItem(extension);
        SetCell(list, row, kDescription, std::string(FileTypeDescription(extension)));
        SetCell(list, row, kState, state.handled ? "已注册" : "");
        SetCell(list, row, kIconFile, state.icon.file);
        SetCell(list, row, kIconIndex, state.icon.file.empty() ? "" : std::to_string(state.icon.index));
        ListView_SetCheckState(list, row, state.handled);
    }
}

void FileTypesPage::CheckAll(HWND page, bool on) {
    HWND list = GetDlgItem(page, IDC_FILETYPES_LIST);
    for (int row = 0; row < static_cast<int>(items_.size()); ++row) ListView_SetCheckState(list, row, on);
}

bool FileTypesPage::OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) {
    if (msg == WM_COMMAND && HIWORD(wp) == BN_CLICKED) {
        switch (LOWORD(wp)) {
            case IDC_FILETYPES_ALL:
                CheckAll(page, true);
                return true;
            case IDC_FILETYPES_NONE:
                CheckAll(page, false);
                return true;
            case IDC_FILETYPES_DEFAULT_APPS:
                OpenDefaultApps(page);
                return true;
        }
    }
    return RegistrationPage::OnMessage(page, msg, wp, lp, result);
}

bool FileTypesPage::Confirm(HWND page) {
    HWND list = GetDlgItem(page, IDC_FILETYPES_LIST);
    std::vector<FileTypeChoice> choices;
    for (int row = 0; row < static_cast<int>(items_.size()); ++row) {
        choices.push_back({items_[static_cast<size_t>(row)], ListView_GetCheckState(list, row) != 0});
    }
    // New types show the icon the others already have.
    bool changed = false;
    const bool ok = registrar_.Apply(choices, registrar_.CurrentIcon(items_), changed);
    if (changed) notifier_.AssociationsChanged();
    Refresh(page);
    return ok;
}

// ---- Icon ------------------------------------------------------------------------------------------

std::wstring FileIconPage::Title() const { return Widen(kFileIconPageTitle); }

void FileIconPage::Layout(DialogTemplate& page) {
    page.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"注册的文件类型显示的图标：", 6, 8, 200, 10,
                    SS_LEFT);
    page.AddControl(DialogTemplate::kStatic, IDC_FILEICON_PREVIEW, L"", 10, 24, 24, 24, SS_ICON | SS_CENTERIMAGE);
    page.AddControl(DialogTemplate::kStatic, IDC_FILEICON_FILE, L"", 42, 24, kWidth - 48, 10,
                    SS_LEFT | SS_NOPREFIX | SS_PATHELLIPSIS);
    page.AddControl(DialogTemplate::kStatic, IDC_FILEICON_INDEX, L"", 42, 37, 120, 10, SS_LEFT | SS_NOPREFIX);
    page.AddControl(DialogTemplate::kButton, IDC_FILEICON_CHOOSE, L"选择图标...", 42, 54, 70, 14,
                    BS_PUSHBUTTON | WS_TABSTOP);
}

void FileIconPage::OnInit(HWND page) {
    pending_.reset();
    Show(page, registrar_.CurrentIcon(FileTypeItems()));
}

void FileIconPage::Show(HWND page, const IconChoice& icon) {
    shown_ = icon;
    preview_.Reset(ExtractLargeIcon(icon.file, icon.index));
    SendDlgItemMessageW(page, IDC_FILEICON_PREVIEW, STM_SETICON, reinterpret_cast<WPARAM>(preview_.get()), 0);
    SetDlgItemTextW(page, IDC_FILEICON_FILE, Widen(icon.file).c_str());
    SetDlgItemTextW(page, IDC_FILEICON_INDEX, Widen(std::string(kIconIndexLabel) + std::to_string(icon.index)).c_str());
}

void FileIconPage::Choose(HWND page) {
    IconChooser chooser(programPath_);
    const auto chosen = chooser.Run(page, shown_);
    if (!chosen || *chosen == shown_) return;
    if (!prompts_.AskYesNo(kOneIconQuestion, kFileIconPageTitle)) return;
    pending_ = *chosen;
    Show(page, *chosen);
}

bool FileIconPage::OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) {
    if (msg == WM_COMMAND && LOWORD(wp) == IDC_FILEICON_CHOOSE && HIWORD(wp) == BN_CLICKED) {
        Choose(page);
        return true;
    }
    return RegistrationPage::OnMessage(page, msg, wp, lp, result);
}

bool FileIconPage::Confirm(HWND) {
    if (!pending_) return true;
    bool changed = false;
    for (const auto& extension : FileTypeItems()) {
        if (!registrar_.RefreshFileTypeItem(extension).handled) continue;
        if (!registrar_.SetIcon(extension, *pending_)) return false;
        changed = true;
    }
    pending_.reset();
    if (changed) notifier_.AssociationsChanged();
    return true;
}

// ---- Context menu ----------------------------------------------------------------------------------

std::wstring ShellMenuPage::Title() const { return Widen(kShellMenuPageTitle); }

void ShellMenuPage::Layout(DialogTemplate& page) {
    page.AddControl(DialogTemplate::kButton, IDC_SHELLMENU_FOLDER, L"“添加到文件夹菜单”", 10, 14, 110, 10,
                    BS_AUTOCHECKBOX | WS_TABSTOP | WS_GROUP);
    page.AddControl(DialogTemplate::kStatic, IDC_SHELLMENU_FOLDER_NOTE, L"注册文件夹，可打开该文件夹下所有媒体文件。",
                    124, 14, kWidth - 130, 20, SS_LEFT);
    page.AddControl(DialogTemplate::kButton, IDC_SHELLMENU_DRIVE, L"“添加到驱动器菜单”", 10, 44, 110, 10,
                    BS_AUTOCHECKBOX | WS_TABSTOP);
    page.AddControl(DialogTemplate::kStatic, IDC_SHELLMENU_DRIVE_NOTE,
                    L"注册驱动器，可打开该驱动器根目录下所有媒体文件。", 124, 44, kWidth - 130, 20, SS_LEFT);
}

void ShellMenuPage::OnInit(HWND page) {
    Theme::PlainCheckBoxes(page, {IDC_SHELLMENU_FOLDER, IDC_SHELLMENU_DRIVE});
    CheckDlgButton(page, IDC_SHELLMENU_FOLDER, registrar_.FolderVerbSet() ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(page, IDC_SHELLMENU_DRIVE, registrar_.DriveVerbSet() ? BST_CHECKED : BST_UNCHECKED);
}

bool ShellMenuPage::Confirm(HWND page) {
    const bool folder = IsDlgButtonChecked(page, IDC_SHELLMENU_FOLDER) == BST_CHECKED;
    const bool drive = IsDlgButtonChecked(page, IDC_SHELLMENU_DRIVE) == BST_CHECKED;
    const bool changed = folder != registrar_.FolderVerbSet() || drive != registrar_.DriveVerbSet();
    const bool ok = registrar_.SetFolderVerb(folder) && registrar_.SetDriveVerb(drive);
    if (changed) notifier_.AssociationsChanged();
    return ok;
}

}  // namespace lumora
