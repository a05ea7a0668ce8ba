#include "settings/TipOverrides.h"

#include <gtest/gtest.h>

#include <array>

#include "ports/TextCodec.h"
#include "settings/IniFiles.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

std::string Cp936(std::string_view utf8) { return Utf8ToCp936(utf8).value_or(std::string()); }

// The user's texts replace the built-in help of the controls asked for; "\n" breaks the line; an empty
// text, another section or key, or live information keep the built-in text.
TEST(TipOverrides, TheUsersTextsReplaceTheHelpOfTheirControls) {
    const std::string ini = Cp936(
        "[设置]\r\n临时=\r\n[提示1003]\r\ntooltiptext=开始\\n或暂停\r\n[提示1004]\r\nTOOLTIPTEXT=  \r\n"
        "[提示1005]\r\nTIP=x\r\n[提示1006]\r\nTOOLTIPTEXT=\x01\t停止\x7F\r\n[提示9]\r\nTOOLTIPTEXT=没问\r\n");
    const int ids[] = {1003, 1004, 1005, 1006, 1007};
    const TipOverrides tips(ini, ids);
    EXPECT_EQ(tips.For(1003, "内置"), "开始\r\n或暂停");
    EXPECT_EQ(tips.For(1003, "音量 80%", true), "音量 80%");
    EXPECT_EQ(tips.For(1006, "内置"), "停止");
    for (int id : {1004, 1005, 1007, 9}) EXPECT_EQ(tips.For(id, "内置"), "内置") << id;  // 9 was not asked for
    // A long text is cut after whole characters.
    std::string longText;
    for (size_t i = 0; i < kMaxTipChars + 20; ++i) longText += "歌";
    EXPECT_EQ(TipOverrides(Cp936("[提示1]\r\nTOOLTIPTEXT=" + longText), std::array{1}).For(1, ""),
              longText.substr(0, kMaxTipChars * 3));
    // Read from the player's own INI file.
    test::FakeFileSystem fs;
    IniFiles files(fs);
    ASSERT_TRUE(files.Write(kPlayerIniFile, "提示1101", kTipTextKey, "列表"));
    EXPECT_EQ(LoadTipOverrides(files, std::array{1101}).For(1101, ""), "列表");
}

}  // namespace
}  // namespace lumora
