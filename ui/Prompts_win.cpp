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

// The folder part of a full path; the path itself when it has none.
std::wstring FolderPart(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/");
    if (slash == std::wstring::npos) return path;
    return path.substr(0, slash == 2 && path[1] == L':' ? 3 : slash);  // "D:\\" keeps its backslash
}

std::wstring StartFolder(const std::wstring& last) {
    if (!last.empty()) return last;
    wchar_t music[MAX_PATH] = {};
    if (SUCCEEDED(SHGetFolderPathW(nullptr, CSIDL_MYMUSIC, nullptr, 0, music))) return music;
    return {};
}

int CALLBACK BrowseCallback(HWND dialog, UINT msg, LPARAM, LPARAM start) {
    if (msg == BFFM_INITIALIZED && start) SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, start);
    return 0;
}

}  // namespace

std::optional<std::wstring> WinPrompts::RunFileDialog(std::string_view title, std::string_view filter,
                                                      std::string_view defaultExtension, bool save, bool many) {
    const std::wstring wtitle = Widen(title);
    const std::wstring wfilter = DialogFilter(filter);
    const std::wstring wext = Widen(defaultExtension);
    const std::wstring start = StartFolder(lastFolder_);
    // A selection of a thousand files needs far more than MAX_PATH.
    std::wstring file(many ? (1u << 19) : 32768u, L'\0');
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = owner_;
    ofn.lpstrFilter = wfilter.c_str();
    ofn.lpstrFile = file.data();
    ofn.nMaxFile = static_cast<DWORD>(file.size());
    ofn.lpstrInitialDir = start.empty() ? nullptr : start.c_str();
    ofn.lpstrTitle = wtitle.c_str();
    ofn.lpstrDefExt = wext.empty() ? nullptr : wext.c_str();
    ofn.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                (save ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST) |
                (many ? OFN_ALLOWMULTISELECT : 0);
    const BOOL ok = save ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn);
    if (!ok) return std::nullopt;
    // One name: its folder; several: the folder comes first, on its own.
    const std::wstring first(file.c_str());
    lastFolder_ = many && file[first.size() + 1] != L'\0' ? first : FolderPart(first);
    return file;
}

std::optional<std::string> WinPrompts::AskFileName(std::string_view title, std::string_view filter,
                                                   std::string_view defaultExtension, bool save) {
    auto file = RunFileDialog(title, filter, defaultExtension, save, false);
    if (!file) return std::nullopt;
    file->resize(wcslen(file->c_str()));
    return Narrow(*file);
}

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
    const auto buffer = RunFileDialog(title, filter, {}, false, true);
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
    const std::wstring start = StartFolder(lastFolder_);
    bi.lpfn = BrowseCallback;
    bi.lParam = start.empty() ? 0 : reinterpret_cast<LPARAM>(start.c_str());
    PIDLIST_ABSOLUTE pidl = SHBrowseForFolderW(&bi);
    if (!pidl) return std::nullopt;
    const BOOL ok = SHGetPathFromIDListW(pidl, path);
    CoTaskMemFree(pidl);
    if (!ok || !path[0]) return std::nullopt;
    lastFolder_ = path;
    return Narrow(path);
}

std::optional<std::string> WinPrompts::AskSaveFileName(std::string_view title, std::string_view filter,
                                                       std::string_view defaultExtension) {
    return AskFileName(title, filter, defaultExtension, true);
}

std::optional<std::string> WinPrompts::AskOpenFileName(std::string_view title, std::string_view filter) {
    return AskFileName(title, filter, {}, false);
}

}  // namespace lumora
