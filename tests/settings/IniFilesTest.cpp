#include <gtest/gtest.h>

#include "settings/IniFiles.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

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
