#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mediainfo/LrcReader.h"
#include "mediainfo/SmiReader.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

Lines Times(const LyricLists& lists) { return lists.times.empty() ? Lines{} : SplitLyricsList(lists.times); }

// Stamps expand, fractions drop, times sort; the first offset tag anywhere shifts every stamp, negative
// stamps read as 0 and "correct" stretches.
TEST(LrcReader, ExpandsStampsAndAppliesOffsetsCorrectionAndLimits) {
    const std::string lrc =
        "[ti:歌名]\r\n[00:10.99][01:10]副歌\r\n  [00:20.5]verse\r\nno stamp\r\n[00:30:50]<00:30.00>word <00:31.00>two";
    EXPECT_EQ(LyricListsToText(ParseLrc(Utf8ToCp936(lrc).value(), false)),
              "[00:10]副歌\r\n[00:20]verse\r\n[00:30]word two\r\n[01:10]副歌");
    std::string many = "[00:01]";
    for (int i = 0; i < 1000; ++i) many += "[99999:99]";
    const struct {
        std::string lrc;
        bool correct;
        Lines times;
    } cases[] = {
        {"[offset:500]\n[00:10.2]a\n[00:00.3]b", false, {"00:00", "00:09"}},
        {"[00:10]a\n[offset:-1500]", false, {"00:11"}},
        {"[offset:+2000]\n[offset:0]\n[00:10]a", false, {"00:08"}},
        {"[01:40]a", true, {"02:01"}},  // 100 s -> 122 - 1
        {"[999999999999:00]a\n[00:1e5]b", false, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(Times(ParseLrc(c.lrc, c.correct)), c.times) << c.lrc.substr(0, 40);
    const Lines bounded = Times(ParseLrc(many + std::string(1000, 'x'), false));
    EXPECT_EQ(bounded.size(), kMaxStampsPerLine);
    EXPECT_EQ(bounded.back(), "100000:39");  // 99 seconds carry into the minutes
}

TEST(SmiReader, ReadsSyncLinesTheWayLumoraAlwaysHas) {
    const std::string smi =
        "<SAMI><BODY>\r\n<SYNC Start=1000><P Class=ZHCC>第一句\r\n<sync start=62500><p class=ZHCC>&nbsp;\r\n"
        "<P Class=ZHCC>not a sync line\r\n<SYNC Start=\"9209\"><P Class=ZHCC>quoted\r\n"
        "<SYNC Start=5><P Class=KRCC>text\r\n"  // "><" at position 14: the number is "5"
        "<SYNC Start=1000>\r\n"  // no "><": the number is 0, the text the line minus four characters
        "</BODY></SAMI>";
    EXPECT_EQ(LyricListsToText(ParseSmi(Utf8ToCp936(smi).value(), false)),
              "[00:01]第一句\r\n[01:02]\r\n[00:09]quoted\r\n[00:00]C Start=5><P Class=KRCC>text\r\n[00:00]C Start=1000>");
    EXPECT_EQ(Times(ParseSmi("<SYNC Start=100000><P Class=ZHCC>x", true)), Lines{"02:01"});
}

}  // namespace
}  // namespace lumora
