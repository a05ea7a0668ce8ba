#include <gtest/gtest.h>

#include "mediainfo/QgcFile.h"
#include "ports/TextCodec.h"
#include "settings/IniDocument.h"
#include "settings/IniFiles.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

// The INI reader and the QGC importer both read as the private-profile functions do: blanks around names and
// values and one pair of quotes go, the first of a duplicated key counts, and only the first section of a name.
TEST(IniDocument, ReadsLikeTheProfileFunctionsAsTheQgcImporterDoes) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"  标题 =  \"  kept inside  \"  ", "  kept inside  "}, {"标题=a=b", "a=b"}, {"标题=first\r\n标题=second", "first"},
        {"歌手=x\r\n[媒体信息]\r\n标题=in the second copy of the section", std::nullopt}, {"标题 x=y", std::nullopt},
    };
    for (const auto& [lines, value] : cases) {
        const std::string file = Utf8ToCp936("stray=before\r\n[媒体信息]\r\n" + lines + "\r\n[其他]\r\n标题=other").value();
        EXPECT_EQ(IniDocument(file).Get("媒体信息", "标题"), value) << lines;
        EXPECT_EQ(ParseQgcFile(file).title, value.value_or("")) << lines;
    }
    EXPECT_EQ(IniDocument("[Main]\nKey=v\n").Get("MAIN", "key"), "v");  // ASCII case does not matter
    EXPECT_EQ(IniDocument(std::string("[s]\nk=a\x01" "b\0c\n", 11)).Get("s", "k"), "abc");  // codes 0 and 1 dropped
}

TEST(IniDocument, WritesOneKeyLeavingEveryOtherByteAloneAndReadsUnicodeFiles) {
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
    doc = IniDocument("[s]\r\nk=v\r\n");  // what cannot be written is refused
    for (const auto& [section, key, value] : {std::tuple{"s", "k", "two\r\nlines"}, {"s", "a=b", "v"}, {"s]", "k", "v"},
                                              {"s", "", "v"}, {"s", "k", "\xF0\x9F\x98\x80"}}) {  // the last: not code page 936
        EXPECT_FALSE(doc.Set(section, key, value)) << key << value;
    }
    EXPECT_EQ(doc.Bytes(), "[s]\r\nk=v\r\n");

    std::string utf16 = "\xFF\xFE";
    for (char16_t c : std::u16string(u"[设置]\r\n临时=*\r\n")) utf16 += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    IniDocument unicode(utf16);
    EXPECT_EQ(unicode.Get("设置", "临时"), "*");
    ASSERT_TRUE(unicode.Set("设置", "临时", ""));
    EXPECT_EQ(unicode.Bytes(), "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=\r\n");
}

const std::string kPlayerIni = "C:\\WINDOWS\\" + std::string(kPlayerIniFile);

TEST(IniFiles, ScratchValueAndWindowOpacity) {
    test::FakeFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ReadScratchValue(ini), "");  // no file yet
    ASSERT_TRUE(WriteScratchValue(ini, "E:\\歌曲\\a b.mp3"));
    EXPECT_EQ(fs.files[kPlayerIni], "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=E:\\\xB8\xE8\xC7\xFA\\a b.mp3\r\n");
    EXPECT_EQ(ReadScratchValue(ini), "E:\\歌曲\\a b.mp3");
    EXPECT_FALSE(WriteScratchValue(ini, "\xF0\x9F\x8E\xB5.mp3"));  // no code page 936 form
    fs.files[kPlayerIni] = "[书签]\r\n1=keep me\r\n";
    fs.unreadable.push_back(kPlayerIni);
    EXPECT_FALSE(WriteScratchValue(ini, "x"));
    EXPECT_EQ(fs.files[kPlayerIni], "[书签]\r\n1=keep me\r\n");
    fs.files.clear();
    fs.unreadable.clear();
    // The window opacity only when switched on and in range.
    for (const auto& [check, value, opacity] :
         {std::tuple<const char*, const char*, std::optional<int>>{"1", "20", 20}, {"1", "255", 255}, {"1", "19", std::nullopt},
          {"1", "256", std::nullopt}, {"1", "abc", std::nullopt}, {"0", "200", std::nullopt}}) {
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_check1", check);
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_0", value);
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::Main), opacity) << check << "/" << value;
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::List), std::nullopt);
    }
}

}  // namespace
}  // namespace lumora
