// Any bytes as code page 936: decoding never fails, and text decoded without damage encodes back the same.
#include "FuzzChecks.h"
#include "ports/TextCodec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string bytes(lumora::fuzz::Bytes(data, size));
    const std::string utf8 = lumora::Cp936ToUtf8(bytes);
    if (utf8.find("\xEF\xBF\xBD") == std::string::npos) lumora::fuzz::Check(lumora::Utf8ToCp936(utf8) == bytes);
    (void)lumora::Utf16ToUtf8(lumora::Utf8ToUtf16(bytes));  // the same bytes as UTF-8 input
    return 0;
}
