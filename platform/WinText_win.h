#pragma once
// UTF-8 inside, UTF-16 at the Win32 W call.
#include <windows.h>

#include <string>
#include <string_view>

#include "ports/TextCodec.h"

namespace lumora {

inline std::wstring Widen(std::string_view utf8) {
    const std::u16string u = Utf8ToUtf16(utf8);
    return std::wstring(u.begin(), u.end());
}

inline std::string Narrow(std::wstring_view wide) {
    return Utf16ToUtf8(std::u16string(wide.begin(), wide.end()));
}

// A window's whole text, however long.
inline std::wstring WindowTextOf(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// A file path as the wide file functions take it. Past MAX_PATH only the "\\?\" form opens; that form
// turns off the handling of "/" and "..", so the path is made full first (with a buffer that grows to
// fit: never cut). Short paths go as they are.
inline std::wstring FilePathArg(std::string_view utf8) {
    std::wstring wide = Widen(utf8);
    // 12 below MAX_PATH: CreateDirectoryW's own limit leaves room for an 8.3 name.
    if (wide.size() < MAX_PATH - 12 || wide.rfind(L"\\\\?\\", 0) == 0) return wide;
    std::wstring full(wide.size() + 1, L'\0');
    for (;;) {
        const DWORD n = GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (n == 0) return wide;
        if (n < full.size()) {
            full.resize(n);
            break;
        }
        full.resize(n + 1);
    }
    if (full.rfind(L"\\\\", 0) == 0) return L"\\\\?\\UNC\\" + full.substr(2);
    if (full.size() >= 3 && full[1] == L':') return L"\\\\?\\" + full;
    return full;
}

}  // namespace lumora
