#include <gtest/gtest.h>

#include "settings/IniFiles.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

const std::string kPlayerIni = "C:\\WINDOWS\\" + std::string(kPlayerIniFile);

TEST(IniFiles, ScratchValueLivesInTheWindowsDirectoryAndAFileThatCannotBeReadIsNeverReplaced) {
    test::FakeFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ini.PathOf("D:\\lists\\zvplaygc.ini"), "D:\\lists\\zvplaygc.ini");
    EXPECT_EQ(ReadScratchValue(ini), "");  // no file yet
    ASSERT_TRUE(WriteScratchValue(ini, "E:\\歌曲\\a b.mp3"));
    EXPECT_EQ(fs.files[kPlayerIni], "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=E:\\\xB8\xE8\xC7\xFA\\a b.mp3\r\n");
    EXPECT_EQ(ReadScratchValue(ini), "E:\\歌曲\\a b.mp3");
    ASSERT_TRUE(WriteScratchValue(ini, ""));
    EXPECT_EQ(ReadScratchValue(ini), "");
    fs.failWrites = true;
    EXPECT_FALSE(WriteScratchValue(ini, "x"));
    fs.failWrites = false;
    EXPECT_FALSE(WriteScratchValue(ini, "\xF0\x9F\x8E\xB5.mp3"));  // no code page 936 form
    fs.files[kPlayerIni] = "[书签]\r\n1=keep me\r\n";
    fs.unreadable.push_back(kPlayerIni);
    EXPECT_FALSE(WriteScratchValue(ini, "x"));
    EXPECT_EQ(fs.files[kPlayerIni], "[书签]\r\n1=keep me\r\n");
}

TEST(IniFiles, WindowOpacityOnlyWhenSwitchedOnAndInRange) {
    const struct {
        const char* check;
        const char* value;
        std::optional<int> opacity;
    } cases[] = {
        {"1", "200", 200}, {"1", "20", 20}, {"1", "255", 255}, {"1", "19", std::nullopt}, {"1", "256", std::nullopt},
        {"1", "abc", std::nullopt}, {"1", "", std::nullopt}, {"1", "99999999999", std::nullopt},
        {"0", "200", std::nullopt}, {"", "200", std::nullopt},
    };
    for (const auto& c : cases) {
        test::FakeFileSystem fs;
        IniFiles ini(fs);
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_check1", c.check);
        ini.Write(std::string(kPlayerIniFile), "透明度", "form_tm_0", c.value);
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::Main), c.opacity) << c.check << "/" << c.value;
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::List), std::nullopt);
    }
}

}  // namespace
}  // namespace lumora
