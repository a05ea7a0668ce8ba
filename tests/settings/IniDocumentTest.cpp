#include <gtest/gtest.h>

#include "mediainfo/QgcFile.h"
#include "ports/TextCodec.h"
#include "settings/IniDocument.h"

namespace lumora {
namespace {

// The INI reader and the QGC importer both read as the private-profile functions do: blanks around names and
// values and one pair of quotes go, the first of a duplicated key counts, and only the first section of a name.
TEST(IniDocument, ReadsLikeTheProfileFunctionsAsTheQgcImporterDoes) {
    const struct {
        std::string lines;
        std::optional<std::string> value;
    } cases[] = {
        {"  标题 =  value with blanks  ", "value with blanks"},
        {"标题=\"  kept inside  \"", "  kept inside  "},
        {"标题=a=b", "a=b"},
        {"标题=", ""},
        {"标题=first\r\n标题=second", "first"},
        {"歌手=x\r\n[媒体信息]\r\n标题=in the second copy of the section", std::nullopt},
        {"标题 x=y", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string file = Utf8ToCp936("stray=before\r\n[媒体信息]\r\n" + c.lines + "\r\n[其他]\r\n标题=other").value();
        EXPECT_EQ(IniDocument(file).Get("媒体信息", "标题"), c.value) << c.lines;
        EXPECT_EQ(ParseQgcFile(file).title, c.value.value_or("")) << c.lines;
    }
    const IniDocument ascii("[Main]\nKey=v\n");
    EXPECT_EQ(ascii.Get("MAIN", "key"), "v");  // ASCII case does not matter
    EXPECT_EQ(ascii.Get("Main", "stray"), std::nullopt);
    EXPECT_EQ(IniDocument(std::string("[s]\nk=a\x01" "b\0c\n", 11)).Get("s", "k"), "abc");  // codes 0 and 1 dropped
}

TEST(IniDocument, WritingOneKeyLeavesEveryOtherByteAlone) {
    // Other programs' sections, comments, odd spacing and bytes that are not code page 936 survive our writes.
    const std::string original = "; comment\r\n[\xCA\xE9\xC7\xA9]\r\n1=C:\\a.mp3*12\r\n\r\n[\xC9\xE8\xD6\xC3]\r\n"
                                 "  \xC1\xD9\xCA\xB1 = old\r\nother=\xFF\xFE odd\r\n";  // 书签, 设置, 临时
    IniDocument doc(original);
    ASSERT_TRUE(doc.Set("设置", "临时", "new"));
    EXPECT_EQ(doc.Get("书签", "1"), "C:\\a.mp3*12");
    std::string expected = original;
    expected.replace(expected.find("  \xC1\xD9\xCA\xB1 = old"), 12, "\xC1\xD9\xCA\xB1=new");
    EXPECT_EQ(doc.Bytes(), expected);

    IniDocument fresh("[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");  // a new key ends its section, a new section the file
    ASSERT_TRUE(fresh.Set("a", "z", "3"));
    ASSERT_TRUE(fresh.Set("c", "w", "4"));
    EXPECT_EQ(fresh.Bytes(), "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n\r\n[c]\r\nw=4\r\n");
    IniDocument chinese;
    ASSERT_TRUE(chinese.Set("设置", "临时", "D:\\歌.mp3"));
    EXPECT_EQ(chinese.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=D:\\\xB8\xE8.mp3\r\n");
    EXPECT_EQ(IniDocument(chinese.Bytes()).Get("设置", "临时"), "D:\\歌.mp3");
}

TEST(IniDocument, RefusesWhatCannotBeWrittenAndReadsUnicodeFiles) {
    IniDocument doc("[s]\r\nk=v\r\n");
    EXPECT_FALSE(doc.Set("s", "k", "two\r\nlines"));
    EXPECT_FALSE(doc.Set("s", "a=b", "v"));
    EXPECT_FALSE(doc.Set("s]", "k", "v"));
    EXPECT_FALSE(doc.Set("s", "", "v"));
    EXPECT_FALSE(doc.Set("s", "k", "\xF0\x9F\x98\x80"));  // not in code page 936
    EXPECT_EQ(doc.Bytes(), "[s]\r\nk=v\r\n");

    std::string utf16 = "\xFF\xFE";
    for (char16_t c : std::u16string(u"[设置]\r\n临时=*\r\n")) {
        utf16 += static_cast<char>(c & 0xFF);
        utf16 += static_cast<char>(c >> 8);
    }
    IniDocument unicode(utf16);
    EXPECT_EQ(unicode.Get("设置", "临时"), "*");
    ASSERT_TRUE(unicode.Set("设置", "临时", ""));
    EXPECT_EQ(unicode.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=\r\n");
}

}  // namespace
}  // namespace lumora
