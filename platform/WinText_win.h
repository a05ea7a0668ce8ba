#pragma once
// UTF-8 inside, UTF-16 at the Win32 W call.
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

}  // namespace lumora
