#pragma once
// Lumora keeps text as UTF-8 inside. Everything it stores in files and registry values is
// code page 936 (GBK), converted here explicitly, never through the system code page, so the
// bytes are the same on a Chinese, a Western or a UTF-8 system.
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

// UTF-8 to CP936. Empty optional when the text holds a character CP936 has no code for
// (or is not valid UTF-8): callers say so instead of writing question marks.
std::optional<std::string> Utf8ToCp936(std::string_view utf8);

// CP936 to UTF-8. Never fails: a byte that starts no valid character becomes U+FFFD,
// so a damaged file still shows everything that can be read.
std::string Cp936ToUtf8(std::string_view bytes);

// UTF-8 <-> UTF-16 (the Win32 W functions). Invalid sequences become U+FFFD.
std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);

namespace detail {
// The system's own converters (WideCharToMultiByte with 936 on Windows, iconv elsewhere).
// Strict: empty optional on any character that does not convert exactly.
std::optional<std::string> EncodeCp936Strict(std::u16string_view utf16);
std::optional<std::u16string> DecodeCp936Strict(std::string_view bytes);
}  // namespace detail

}  // namespace lumora
