// Any bytes as code page 936: decoding never fails, gives valid UTF-8, and text decoded
// without damage encodes back to the same bytes.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ports/TextCodec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string utf8 = lumora::Cp936ToUtf8(bytes);
    if (utf8.find("\xEF\xBF\xBD") == std::string::npos) {
        const auto back = lumora::Utf8ToCp936(utf8);
        if (!back || *back != bytes) std::abort();
    }
    const std::u16string wide = lumora::Utf8ToUtf16(bytes);  // the same bytes as UTF-8 input
    (void)lumora::Utf16ToUtf8(wide);
    return 0;
}
