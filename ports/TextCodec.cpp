#include "ports/TextCodec.h"

namespace lumora {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Decodes one UTF-8 sequence at `i`; returns kReplacement and advances one byte on error.
char32_t NextCodePoint(std::string_view s, size_t& i) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    if (b0 < 0x80) {
        ++i;
        return b0;
    }
    int len = 0;
    char32_t cp = 0;
    if ((b0 & 0xE0) == 0xC0) {
        len = 2;
        cp = b0 & 0x1F;
    } else if ((b0 & 0xF0) == 0xE0) {
        len = 3;
        cp = b0 & 0x0F;
    } else if ((b0 & 0xF8) == 0xF0) {
        len = 4;
        cp = b0 & 0x07;
    } else {
        ++i;
        return kReplacement;
    }
    if (i + static_cast<size_t>(len) > s.size()) {
        ++i;
        return kReplacement;
    }
    for (int k = 1; k < len; ++k) {
        const auto b = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
        if ((b & 0xC0) != 0x80) {
            ++i;
            return kReplacement;
        }
        cp = (cp << 6) | (b & 0x3F);
    }
    static constexpr char32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < kMin[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++i;
        return kReplacement;
    }
    i += static_cast<size_t>(len);
    return cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

bool IsValidUtf8(std::string_view s) {
    for (size_t i = 0; i < s.size();) {
        const size_t at = i;
        if (NextCodePoint(s, i) == kReplacement && !(i - at == 3 && s.substr(at, 3) == "\xEF\xBF\xBD")) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) {
        const char32_t cp = NextCodePoint(utf8, i);
        if (cp >= 0x10000) {
            out += static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
            out += static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (size_t i = 0; i < utf16.size(); ++i) {
        char32_t cp = utf16[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = kReplacement;
        }
        AppendUtf8(out, cp);
    }
    return out;
}

std::optional<std::string> Utf8ToCp936(std::string_view utf8) {
    bool ascii = true;
    for (char c : utf8) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii) return std::string(utf8);
    if (!IsValidUtf8(utf8)) return std::nullopt;
    return detail::EncodeCp936Strict(Utf8ToUtf16(utf8));
}

std::string Cp936ToUtf8(std::string_view bytes) {
    bool ascii = true;
    for (char c : bytes) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii) return std::string(bytes);
    if (auto whole = detail::DecodeCp936Strict(bytes)) return Utf16ToUtf8(*whole);

    // Damaged text: decode character by character so that only the bad bytes are lost.
    std::string out;
    for (size_t i = 0; i < bytes.size();) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        if (b < 0x80) {
            out += static_cast<char>(b);
            ++i;
            continue;
        }
        if (b >= 0x81 && b <= 0xFE && i + 1 < bytes.size()) {
            if (auto pair = detail::DecodeCp936Strict(bytes.substr(i, 2)); pair && pair->size() == 1) {
                out += Utf16ToUtf8(*pair);
                i += 2;
                continue;
            }
        }
        if (auto single = detail::DecodeCp936Strict(bytes.substr(i, 1)); single && single->size() == 1) {
            out += Utf16ToUtf8(*single);
        } else {
            AppendUtf8(out, kReplacement);
        }
        ++i;
    }
    return out;
}

}  // namespace lumora
