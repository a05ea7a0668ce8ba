#include <gtest/gtest.h>

#include "settings/IniDocument.h"

namespace lumora {
namespace {

TEST(IniDocument, ReadsLikeThePrivateProfileFunctions) {
    const IniDocument doc(
        "stray=before any section\r\n"
        "[Main]\r\n"
        "  Key = value with blanks  \r\n"
        "Quoted=\"  kept inside  \"\r\n"
        "Empty=\r\n"
        "Dup=first\r\n"
        "Dup=second\r\n"
        "[main]\r\n"
        "Other=from the second copy of the section\r\n");
    struct Case {
        const char* section;
        const char* key;
        std::optional<std::string> value;
    } cases[] = {
        {"Main", "Key", "value with blanks"},
        {"MAIN", "key", "value with blanks"},  // ASCII case does not matter
        {"Main", "Quoted", "  kept inside  "},
        {"Main", "Empty", ""},
        {"Main", "Dup", "first"},
        {"Main", "Other", std::nullopt},  // only the first section of a name counts
        {"Main", "stray", std::nullopt},
        {"Nope", "Key", std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.section) + "/" + c.key);
        EXPECT_EQ(doc.Get(c.section, c.key), c.value);
    }
}

TEST(IniDocument, ChineseNamesAndValuesAreCodePage936) {
    IniDocument doc;
    ASSERT_TRUE(doc.Set("设置", "临时", "D:\\音乐\\歌.mp3"));
    EXPECT_EQ(doc.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=D:\\\xD2\xF4\xC0\xD6\\\xB8\xE8.mp3\r\n");
    EXPECT_EQ(IniDocument(doc.Bytes()).Get("设置", "临时"), "D:\\音乐\\歌.mp3");
}

TEST(IniDocument, CharactersOfCodeZeroAndOneAreDroppedOnRead) {
    const IniDocument doc(std::string("[s]\nk=a\x01" "b\0c\n", 11));
    EXPECT_EQ(doc.Get("s", "k"), "abc");
}

TEST(IniDocument, WritingOneKeyLeavesEveryOtherByteAlone) {
    // Other programs' sections, comments, odd spacing and even bytes that are not valid
    // code page 936 must survive our writes.
    const std::string original =
        "; comment\r\n"
        "[\xCA\xE9\xC7\xA9]\r\n"  // 书签
        "1=C:\\a.mp3*12\r\n"
        "\r\n"
        "[\xC9\xE8\xD6\xC3]\r\n"  // 设置
        "  \xC1\xD9\xCA\xB1 = old\r\n"  // 临时
        "other=\xFF\xFE odd\r\n";
    IniDocument doc(original);
    ASSERT_TRUE(doc.Set("设置", "临时", "new"));
    EXPECT_EQ(doc.Get("设置", "临时"), "new");
    EXPECT_EQ(doc.Get("书签", "1"), "C:\\a.mp3*12");
    EXPECT_NE(doc.Bytes().find("other=\xFF\xFE odd\r\n"), std::string::npos);
    std::string expected = original;
    expected.replace(expected.find("  \xC1\xD9\xCA\xB1 = old"), 12, "\xC1\xD9\xCA\xB1=new");
    EXPECT_EQ(doc.Bytes(), expected);
}

TEST(IniDocument, NewKeyGoesAtTheEndOfItsSectionNewSectionAtTheEndOfTheFile) {
    IniDocument doc("[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");
    ASSERT_TRUE(doc.Set("a", "z", "3"));
    ASSERT_TRUE(doc.Set("c", "w", "4"));
    EXPECT_EQ(doc.Bytes(), "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n\r\n[c]\r\nw=4\r\n");
}

TEST(IniDocument, RefusesWhatCannotBeWrittenAndChangesNothing) {
    IniDocument doc("[s]\r\nk=v\r\n");
    const std::string before = doc.Bytes();
    EXPECT_FALSE(doc.Set("s", "k", "two\r\nlines"));
    EXPECT_FALSE(doc.Set("s", "a=b", "v"));
    EXPECT_FALSE(doc.Set("s]", "k", "v"));
    EXPECT_FALSE(doc.Set("s", "", "v"));
    EXPECT_FALSE(doc.Set("s", "k", "\xF0\x9F\x98\x80"));  // not in code page 936
    EXPECT_EQ(doc.Bytes(), before);
}

TEST(IniDocument, UnicodeFileFromAnotherProgramIsRead) {
    std::string utf16 = "\xFF\xFE";
    for (char16_t c : std::u16string(u"[设置]\r\n临时=*\r\n")) {
        utf16 += static_cast<char>(c & 0xFF);
        utf16 += static_cast<char>(c >> 8);
    }
    IniDocument doc(utf16);
    EXPECT_EQ(doc.Get("设置", "临时"), "*");
    ASSERT_TRUE(doc.Set("设置", "临时", ""));
    EXPECT_EQ(doc.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=\r\n");
}

}  // namespace
}  // namespace lumora
