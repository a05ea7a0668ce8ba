#include "ui/Prompts_win.h"

#include <commdlg.h>
#include <shlobj.h>

#include "platform/WinText_win.h"
#include "ui/Boxes_win.h"

namespace lumora {
namespace {

// "a|b|c|d" -> "a\0b\0c\0d\0\0", the form the common dialog wants.
std::wstring DialogFilter(std::string_view filter) {
    std::wstring out = Widen(filter);
    for (auto& c : out) {
        if (c == L'|') c = L'\0';
    }
    out.push_back(L'\0');
    out.push_back(L'\0');
    return out;
}

// The dialog's result split at its NULs: one full path, or the folder and then the names.
std::vector<std::string> SplitSelection(const std::wstring& buffer) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start < buffer.size() && buffer[start] != L'\0') {
        const size_t end = buffer.find(L'\0', start);
        parts.push_back(Narrow(buffer.substr(start, end - start)));
        start = end + 1;
    }
    return parts;
}

std::optional<std::wstring> RunFileDialog(HWND owner, std::string_view title, std::string_view filter,
                                          std::string_view defaultExtension, bool save, bool many) {
    const std::wstring wtitle = Widen(title);
    const std::wstring wfilter = DialogFilter(filter);
    const std::wstring wext = Widen(defaultExtension);
    // A selection of a thousand files needs far more than MAX_PATH.
    std::wstring file(many ? (1u << 19) : 32768u, L'\0');
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = owner;
    ofn.lpstrFilter = wfilter.c_str();
    ofn.lpstrFile = file.data();
    ofn.nMaxFile = static_cast<DWORD>(file.size());
    ofn.lpstrTitle = wtitle.c_str();
    ofn.lpstrDefExt = wext.empty() ? nullptr : wext.c_str();
    ofn.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                (save ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST) |
                (many ? OFN_ALLOWMULTISELECT : 0);
    const BOOL ok = save ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn);
    if (!ok) return std::nullopt;
    return file;
}

std::optional<std::string> AskFileName(HWND owner, std::string_view title, std::string_view filter,
                                       std::string_view defaultExtension, bool save) {
    auto file = RunFileDialog(owner, title, filter, defaultExtension, save, false);
    if (!file) return std::nullopt;
    file->resize(wcslen(file->c_str()));
    return Narrow(*file);
}

}  // namespace

void WinPrompts::ShowMessage(std::string_view text, std::string_view title) {
    ShowBox(owner_, text, title, BoxButtons::Ok);
}

bool WinPrompts::AskYesNo(std::string_view text, std::string_view title) {
    return ShowBox(owner_, text, title, BoxButtons::YesNo) == IDYES;
}

std::optional<std::string> WinPrompts::AskText(std::string_view prompt, std::string_view title,
                                               std::string_view initial) {
    return ShowInputBox(owner_, prompt, title, initial);
}

std::optional<std::vector<std::string>> WinPrompts::AskOpenFileNames(std::string_view title,
                                                                     std::string_view filter) {
    const auto buffer = RunFileDialog(owner_, title, filter, {}, false, true);
    if (!buffer) return std::nullopt;
    auto parts = SplitSelection(*buffer);
    if (parts.empty()) return std::nullopt;
    return parts;
}

std::optional<std::string> WinPrompts::AskFolder(std::string_view prompt) {
    const std::wstring title = Widen(prompt);
    wchar_t path[MAX_PATH] = {};
    BROWSEINFOW bi{};
    bi.hwndOwner = owner_;
    bi.lpszTitle = title.c_str();
    bi.ulFlags = BIF_RETURNONLYFSDIRS;
    PIDLIST_ABSOLUTE pidl = SHBrowseForFolderW(&bi);
    if (!pidl) return std::nullopt;
    const BOOL ok = SHGetPathFromIDListW(pidl, path);
    CoTaskMemFree(pidl);
    if (!ok || !path[0]) return std::nullopt;
    return Narrow(path);
}

std::optional<std::string> WinPrompts::AskSaveFileName(std::string_view title, std::string_view filter,
                                                       std::string_view defaultExtension) {
    return AskFileName(owner_, title, filter, defaultExtension, true);
}

std::optional<std::string> WinPrompts::AskOpenFileName(std::string_view title, std::string_view filter) {
    return AskFileName(owner_, title, filter, {}, false);
}

}  // namespace lumora
