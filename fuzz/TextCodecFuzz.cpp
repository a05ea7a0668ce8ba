// Any bytes as code page 936: decoding never fails, and text decoded without damage encodes back the same.
#include "FuzzChecks.h"
#include "ports/TextCodec.h"

LUMORA_FUZZ(input) {
    const std::string bytes(input), utf8 = Cp936ToUtf8(bytes);
    if (utf8.find("\xEF\xBF\xBD") == std::string::npos) Check(Utf8ToCp936(utf8) == bytes);
    (void)Utf16ToUtf8(Utf8ToUtf16(bytes));  // the same bytes as UTF-8 input
}
