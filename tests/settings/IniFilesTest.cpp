#include <gtest/gtest.h>

#include "settings/IniFiles.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakeFileSystem;

const std::string kPlayerIni = "C:\\WINDOWS\\tavrinplay.ini";

TEST(IniFiles, FileWithoutFolderLivesInTheWindowsDirectory) {
    FakeFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ini.PathOf("tavrinplay.ini"), kPlayerIni);
    EXPECT_EQ(ini.PathOf("D:\\lists\\zvplaygc.ini"), "D:\\lists\\zvplaygc.ini");
    ASSERT_TRUE(ini.Write("tavrinplay.ini", "书签", "1", "x"));
    EXPECT_TRUE(fs.files.count(kPlayerIni));
}

TEST(IniFiles, ScratchValueIsKeyLinShiInSectionSheZhi) {
    FakeFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ReadScratchValue(ini), "");  // no file yet
    ASSERT_TRUE(WriteScratchValue(ini, "E:\\歌曲\\a b.mp3"));
    EXPECT_EQ(fs.files[kPlayerIni], "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=E:\\\xB8\xE8\xC7\xFA\\a b.mp3\r\n");
    EXPECT_EQ(ReadScratchValue(ini), "E:\\歌曲\\a b.mp3");
    ASSERT_TRUE(WriteScratchValue(ini, "*"));
    EXPECT_EQ(ReadScratchValue(ini), "*");
    ASSERT_TRUE(WriteScratchValue(ini, ""));
    EXPECT_EQ(ReadScratchValue(ini), "");
}

TEST(IniFiles, WindowOpacityOnlyWhenSwitchedOnAndInRange) {
    struct Case {
        const char* check;
        const char* value;
        std::optional<int> opacity;
    } cases[] = {
        {"1", "200", 200}, {"1", "20", 20}, {"1", "255", 255}, {"1", "19", std::nullopt}, {"1", "256", std::nullopt},
        {"1", "abc", std::nullopt}, {"1", "", std::nullopt}, {"1", "99999999999", std::nullopt},
        {"0", "200", std::nullopt}, {"", "200", std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.check) + "/" + c.value);
        FakeFileSystem fs;
        IniFiles ini(fs);
        ini.Write("tavrinplay.ini", "透明度", "form_tm_check1", c.check);
        ini.Write("tavrinplay.ini", "透明度", "form_tm_0", c.value);
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::Main), c.opacity);
        EXPECT_EQ(ReadWindowOpacity(ini, TransparentWindow::List), std::nullopt);
    }
}

TEST(IniFiles, AFileThatCannotBeReadIsNeverReplaced) {
    FakeFileSystem fs;
    fs.files[kPlayerIni] = "[书签]\r\n1=keep me\r\n";
    fs.unreadable.push_back(kPlayerIni);
    IniFiles ini(fs);
    EXPECT_FALSE(WriteScratchValue(ini, "x"));
    EXPECT_EQ(fs.files[kPlayerIni], "[书签]\r\n1=keep me\r\n");
}

TEST(IniFiles, FailedWriteAndUnwritableTextReportFalse) {
    FakeFileSystem fs;
    IniFiles ini(fs);
    fs.failWrites = true;
    EXPECT_FALSE(WriteScratchValue(ini, "x"));
    fs.failWrites = false;
    EXPECT_FALSE(WriteScratchValue(ini, "\xF0\x9F\x8E\xB5.mp3"));  // no code page 936 form
    EXPECT_TRUE(fs.files.empty());
}

}  // namespace
}  // namespace lumora
