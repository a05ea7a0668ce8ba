// Code page 936 on the host, through iconv. Windows uses TextCodec_win.cpp.
#include <iconv.h>

#include <cerrno>

#include "ports/TextCodec.h"

namespace lumora::detail {
namespace {

// glibc's "CP936" is GBK with 0x80 as the euro sign, the same table Windows uses.
std::optional<std::string> Convert(const char* to, const char* from, const char* in, size_t inSize) {
    iconv_t cd = iconv_open(to, from);
    if (cd == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
    std::string out(inSize * 2 + 8, '\0');
    char* src = const_cast<char*>(in);
    char* dst = out.data();
    size_t srcLeft = inSize;
    size_t dstLeft = out.size();
    const size_t rc = iconv(cd, &src, &srcLeft, &dst, &dstLeft);
    iconv_close(cd);
    if (rc == static_cast<size_t>(-1) || rc != 0 || srcLeft != 0) return std::nullopt;
    out.resize(out.size() - dstLeft);
    return out;
}

}  // namespace

std::optional<std::string> EncodeCp936Strict(std::u16string_view utf16) {
    return Convert("CP936", "UTF-16LE", reinterpret_cast<const char*>(utf16.data()), utf16.size() * 2);
}

std::optional<std::u16string> DecodeCp936Strict(std::string_view bytes) {
    auto raw = Convert("UTF-16LE", "CP936", bytes.data(), bytes.size());
    if (!raw) return std::nullopt;
    std::u16string out(raw->size() / 2, u'\0');
    for (size_t i = 0; i < out.size(); ++i) {
        out[i] = static_cast<char16_t>(static_cast<unsigned char>((*raw)[2 * i]) |
                                       (static_cast<unsigned char>((*raw)[2 * i + 1]) << 8));
    }
    return out;
}

}  // namespace lumora::detail
