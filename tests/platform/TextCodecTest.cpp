#include <gtest/gtest.h>

#include "ports/TextCodec.h"

namespace lumora {
namespace {

TEST(TextCodec, ChineseRoundTripsThroughCodePage936Bytes) {
    const auto bytes = Utf8ToCp936("临时");
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, "\xC1\xD9\xCA\xB1");
    EXPECT_EQ(Cp936ToUtf8(*bytes), "临时");
}

TEST(TextCodec, TableOfKnownEncodings) {
    struct Case {
        const char* utf8;
        const char* cp936;
    } cases[] = {
        {"", ""},
        {"L25", "L25"},
        {"设置", "\xC9\xE8\xD6\xC3"},
        {"路径", "\xC2\xB7\xBE\xB6"},
        {"“背景”", "\xA1\xB0\xB1\xB3\xBE\xB0\xA1\xB1"},
        {"€", "\x80"},  // the one single-byte character above 0x7F
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.utf8);
        EXPECT_EQ(Utf8ToCp936(c.utf8), std::string(c.cp936));
        EXPECT_EQ(Cp936ToUtf8(c.cp936), std::string(c.utf8));
    }
}

TEST(TextCodec, CharacterOutsideCodePage936IsRefusedNotGuessed) {
    EXPECT_FALSE(Utf8ToCp936("abc\xF0\x9F\x98\x80").has_value());  // an emoji
    EXPECT_FALSE(Utf8ToCp936("\xC0\xAF").has_value());              // overlong UTF-8
}

TEST(TextCodec, DamagedBytesLoseOnlyThemselves) {
    EXPECT_EQ(Cp936ToUtf8("\xC1\xD9\xFF" "A"), "临\xEF\xBF\xBD" "A");
    EXPECT_EQ(Cp936ToUtf8("A\xC1"), "A\xEF\xBF\xBD");  // lead byte cut off at the end
}

TEST(TextCodec, Utf16ConversionKeepsSurrogatePairs) {
    const std::string smile = "\xF0\x9F\x98\x80";
    const std::u16string wide = Utf8ToUtf16("a" + smile + "设");
    ASSERT_EQ(wide.size(), 4u);
    EXPECT_EQ(Utf16ToUtf8(wide), "a" + smile + "设");
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, u'\xD800')), "\xEF\xBF\xBD");  // lone surrogate
}

}  // namespace
}  // namespace lumora
