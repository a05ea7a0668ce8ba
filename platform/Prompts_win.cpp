#include "platform/Prompts_win.h"

#include <commdlg.h>

#include "platform/WinText.h"

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

std::optional<std::string> AskFileName(HWND owner, std::string_view title, std::string_view filter,
                                       std::string_view defaultExtension, bool save) {
    const std::wstring wtitle = Widen(title);
    const std::wstring wfilter = DialogFilter(filter);
    const std::wstring wext = Widen(defaultExtension);
    std::wstring file(32768, L'\0');
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = owner;
    ofn.lpstrFilter = wfilter.c_str();
    ofn.lpstrFile = file.data();
    ofn.nMaxFile = static_cast<DWORD>(file.size());
    ofn.lpstrTitle = wtitle.c_str();
    ofn.lpstrDefExt = wext.empty() ? nullptr : wext.c_str();
    ofn.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                (save ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
    const BOOL ok = save ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn);
    if (!ok) return std::nullopt;
    file.resize(wcslen(file.c_str()));
    return Narrow(file);
}

}  // namespace

void WinPrompts::ShowMessage(std::string_view text, std::string_view title) {
    MessageBoxW(owner_, Widen(text).c_str(), Widen(title).c_str(), MB_OK | MB_ICONINFORMATION);
}

std::optional<std::string> WinPrompts::AskSaveFileName(std::string_view title, std::string_view filter,
                                                       std::string_view defaultExtension) {
    return AskFileName(owner_, title, filter, defaultExtension, true);
}

std::optional<std::string> WinPrompts::AskOpenFileName(std::string_view title, std::string_view filter) {
    return AskFileName(owner_, title, filter, {}, false);
}

}  // namespace lumora
