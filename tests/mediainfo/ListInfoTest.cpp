#include <gtest/gtest.h>

#include "mediainfo/ListInfo.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

TEST(ListInfo, RecordItemsOneToALine) {
    EXPECT_EQ(ListInfoTip("a.mp3", "Song@Singer@Album@2005@fine"),
              "文件：a.mp3\r\n标题：Song\r\n歌手：Singer\r\n专集：Album\r\n年代：2005\r\n其他：fine");
    EXPECT_EQ(ListInfoTip("b.mp3", "无@无@无@无@无"),
              "文件：b.mp3\r\n标题：无\r\n歌手：无\r\n专集：无\r\n年代：无\r\n其他：无");
    // A comment holding "@" stays whole; a short record fills with "无".
    EXPECT_EQ(ListInfoTip("c.mp3", "t@a@b@1999@x@y"),
              "文件：c.mp3\r\n标题：t\r\n歌手：a\r\n专集：b\r\n年代：1999\r\n其他：x@y");
    EXPECT_EQ(ListInfoTip("d.mp3", "only"), "文件：d.mp3\r\n标题：only\r\n歌手：无\r\n专集：无\r\n年代：无\r\n其他：无");
}

TEST(ListInfo, TagsAreReadOnlyWhenAsked) {
    test::FakeFileSystem fs;
    std::string tag = "TAG";
    tag += std::string("\xB8\xE8", 2);  // 歌
    tag.resize(128, '\0');
    fs.files["D:\\a.mp3"] = std::string(1000, 'x') + tag;
    EXPECT_EQ(ListInfoTipFor(fs, "D:\\a.mp3", "a.mp3", false), "文件：a.mp3");
    const std::string tip = ListInfoTipFor(fs, "D:\\a.mp3", "a.mp3", true);
    EXPECT_EQ(tip.substr(0, tip.find("\r\n歌手")), "文件：a.mp3\r\n标题：歌");
    EXPECT_NE(ListInfoTipFor(fs, "D:\\missing.mp3", "missing.mp3", true).find("标题：无"), std::string::npos);
}

}  // namespace
}  // namespace lumora
