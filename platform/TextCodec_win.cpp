// Code page 936 on Windows, whatever the system code page is.
#include <windows.h>

#include "ports/TextCodec.h"

namespace lumora::detail {

namespace {
constexpr UINT kGbk = 936;
}

std::optional<std::string> EncodeCp936Strict(std::u16string_view utf16) {
    if (utf16.empty()) return std::string();
    const auto* src = reinterpret_cast<const wchar_t*>(utf16.data());
    const int srcLen = static_cast<int>(utf16.size());
    BOOL usedDefault = FALSE;
    // WC_NO_BEST_FIT_CHARS: no silent look-alike substitutes; a missing character is an error.
    const int n = WideCharToMultiByte(kGbk, WC_NO_BEST_FIT_CHARS, src, srcLen, nullptr, 0, nullptr, &usedDefault);
    if (n <= 0 || usedDefault) return std::nullopt;
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(kGbk, WC_NO_BEST_FIT_CHARS, src, srcLen, out.data(), n, nullptr, &usedDefault);
    if (usedDefault) return std::nullopt;
    return out;
}

std::optional<std::u16string> DecodeCp936Strict(std::string_view bytes) {
    if (bytes.empty()) return std::u16string();
    const int srcLen = static_cast<int>(bytes.size());
    const int n = MultiByteToWideChar(kGbk, MB_ERR_INVALID_CHARS, bytes.data(), srcLen, nullptr, 0);
    if (n <= 0) return std::nullopt;
    std::u16string out(static_cast<size_t>(n), u'\0');
    MultiByteToWideChar(kGbk, MB_ERR_INVALID_CHARS, bytes.data(), srcLen, reinterpret_cast<wchar_t*>(out.data()), n);
    return out;
}

}  // namespace lumora::detail
