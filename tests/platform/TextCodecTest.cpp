#include <gtest/gtest.h>

#include "ports/TextCodec.h"

namespace lumora {
namespace {

TEST(TextCodec, CodePage936BothWaysAndWhatItCannotHold) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""}, {"L25", "L25"}, {"设置", "\xC9\xE8\xD6\xC3"}, {"“背景”", "\xA1\xB0\xB1\xB3\xBE\xB0\xA1\xB1"},
        {"€", "\x80"},  // the one single-byte character above 0x7F
    };
    for (const auto& [utf8, cp936] : cases) {
        EXPECT_EQ(Utf8ToCp936(utf8), std::string(cp936)) << utf8;
        EXPECT_EQ(Cp936ToUtf8(cp936), std::string(utf8)) << utf8;
    }
    EXPECT_FALSE(Utf8ToCp936("abc\xF0\x9F\x98\x80").has_value());  // refused, not guessed
    EXPECT_FALSE(Utf8ToCp936("\xC0\xAF").has_value());              // overlong UTF-8
    EXPECT_EQ(Cp936ToUtf8("\xC1\xD9\xFF" "A"), "临\xEF\xBF\xBD" "A");  // damaged bytes lose only themselves
    EXPECT_EQ(Cp936ToUtf8("A\xC1"), "A\xEF\xBF\xBD");                  // a lead byte cut off at the end
    const std::string smile = "\xF0\x9F\x98\x80";
    EXPECT_EQ(Utf8ToUtf16("a" + smile + "设").size(), 4u);
    EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16("a" + smile + "设")), "a" + smile + "设");
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, u'\xD800')), "\xEF\xBF\xBD");  // lone surrogate
}

}  // namespace
}  // namespace lumora
