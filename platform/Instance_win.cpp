#include "platform/Instance_win.h"

#include "platform/WinText_win.h"

namespace lumora {

WinInstanceProbe::WinInstanceProbe() {
    // One name for every session of the machine's user; "Local\" keeps users apart on a
    // terminal server while two starts from the same desktop still meet.
    mutex_ = CreateMutexW(nullptr, FALSE, L"Local\\Lumora.Player.Instance");
    another_ = mutex_ != nullptr && GetLastError() == ERROR_ALREADY_EXISTS;
}

WinInstanceProbe::~WinInstanceProbe() {
    if (mutex_) CloseHandle(mutex_);
}

std::optional<std::string> WinPathLookup::NameOnDisk(const std::string& path) {
    std::wstring wide = Widen(path);
    if (wide.size() < 3 || wide[1] != L':' || (wide[2] != L'\\' && wide[2] != L'/')) return std::nullopt;
    if (GetFileAttributesW(wide.c_str()) == INVALID_FILE_ATTRIBUTES) return std::nullopt;
    // Rebuild from the root, one part at a time, taking each part as the file system spells it:
    // FindFirstFile matches any letter case and short names, and answers the long name.
    std::wstring out = wide.substr(0, 3);  // the drive as the user wrote it
    out[2] = L'\\';
    size_t start = 3;
    while (start < wide.size()) {
        size_t end = wide.find_first_of(L"\\/", start);
        if (end == std::wstring::npos) end = wide.size();
        const std::wstring part = wide.substr(start, end - start);
        if (!part.empty()) {
            if (part.find_first_of(L"*?") != std::wstring::npos || part == L"." || part == L"..") {
                return std::nullopt;
            }
            WIN32_FIND_DATAW found;
            const HANDLE h = FindFirstFileW((out + part).c_str(), &found);
            if (h == INVALID_HANDLE_VALUE) return std::nullopt;
            FindClose(h);
            out += found.cFileName;
            if (end < wide.size()) out += L'\\';
        }
        start = end + 1;
    }
    return Narrow(out);
}

}  // namespace lumora
