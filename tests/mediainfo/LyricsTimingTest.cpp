#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsTiming.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

TEST(StampSeconds, RoundsHalvesToEvenAndRefusesWhatIsNoStamp) {
    const std::pair<std::string_view, std::optional<long long>> cases[] = {
        {"01:02.5", 62},   {"01:03.5", 64},       {"00:02.51", 3},        {"00:02.500000000000000001", 3},
        {"1:2", 62},       {"00:10.", 10},        {"0.5:00", 30},         {"000000000007:05", 425},
        {"99999:99", 6000039}, {"ab:cd", std::nullopt}, {"00:10:20", std::nullopt}, {"-1:00", std::nullopt},
        {"00:", std::nullopt}, {"00:1.2.3", std::nullopt}, {"1234567890:00", std::nullopt},  // over nine digits
    };
    for (const auto& [stamp, seconds] : cases) EXPECT_EQ(StampSeconds(stamp), seconds) << stamp;
    // The stamp runs to the last "]": a second bracket group makes it invalid, and the whole line is text.
    EXPECT_EQ(SplitStampedLine("[00:20]text").seconds, 20);
    EXPECT_EQ(SplitStampedLine("[00:10]a [b]").text, "[00:10]a [b]");
    for (const char* line : {"[00:10]a [b]", " [00:01]x", "[00:01", "[ti:歌名]"}) {
        EXPECT_EQ(SplitStampedLine(line).seconds, std::nullopt) << line;
    }
}

// The line reached and the next; equal stamps show together in list order; unstamped lines never show.
TEST(ChooseDisplayLines, TheLineReachedAndTheNext) {
    const TimedLyrics lyrics = BuildTimedLyrics("[00:00]title\r\n[00:20]one\r\n[00:10]ten\r\n[ab:cd]bad\r\n[00:20]two\r\n[00:30]end");
    const std::pair<long long, DisplayLines> cases[] = {
        {0, {"", "one\r\ntwo"}},  // entry 0 is only the fallback value: no line from 1 on has it
        {12, {"ten", "one\r\ntwo"}}, {20, {"one\r\ntwo", "end"}}, {29, {"one\r\ntwo", "end"}}, {40, {"end", "end"}},
    };
    for (const auto& [p, shown] : cases) EXPECT_EQ(ChooseDisplayLines(lyrics, p), shown) << p;
    EXPECT_FALSE(ChooseDisplayLines(TimedLyrics{}, 5) || ChooseDisplayLines(lyrics, -1));
    EXPECT_EQ(ChooseDisplayLines(BuildTimedLyrics("[00:05]zero\r\n[00:05]five\r\n[00:09]nine"), 1),
              (DisplayLines{"five", "five"}));
    EXPECT_EQ(ChooseDisplayLines(BuildTimedLyrics("[00:00]\r\n[00:01]一二三四五\r\n[00:02]ab一cd"), 1, 4),
              (DisplayLines{"一二\r\n三四\r\n五", "ab一\r\ncd"}));
}

TEST(LineByteLimit, WrapsNeverSplittingACharacter) {
    const std::tuple<std::string_view, int, std::string_view> cases[] = {
        {"ab一cd", 3, "ab\r\n一c\r\nd"},
        {"一二", 1, "一\r\n二"},  // wider than the limit: alone on its line
        {"hello big world", 10, "hello big\r\nworld"},  // at the blank between words
        {"go on and on", 5, "go on\r\nand\r\non"},  // a blank right at the limit is the break
        {"abcdefghijkl mn", 5, "abcde\r\nfghij\r\nkl mn"},  // no blank within the limit: inside the word
        {"我爱 你们大家", 6, "我爱\r\n你们大\r\n家"},
    };
    for (const auto& [text, limit, wrapped] : cases) EXPECT_EQ(WrapToLineBytes(text, limit), wrapped) << text;
    EXPECT_EQ(LineByteLimitLabel(20), "当前设置每行：20 个字节(一个汉字占两个字节)");
    const std::pair<std::string_view, int> stored[] = {{"20", 20}, {"21", 0}, {"-2", 0}, {"2 ", 0}, {"9998", 9998}, {"10000", 0}};
    for (const auto& [text, limit] : stored) EXPECT_EQ(ParseLineByteLimit(text), limit) << text;
}

TEST(ShiftTimeTrack, ShiftsClampsAndAddsStamps) {
    const std::pair<std::string_view, std::optional<std::string>> cases[] = {
        {"[00:03]a\r\n[00:58]b", "[00:08]a\r\n[01:03]b"},
        {"no stamp\r\n[00:01]x", "[00:00]no stamp\r\n[00:06]x"},
        {"[副歌]\r\n\r\n[00:10.5]x", "[00:00][副歌]\r\n\r\n[00:15]x"},  // empty lines stay; halves to even
        {"[00:10][01:10]chorus\r\n", "[00:15][01:15]chorus\r\n"},
        {"[99:59]end", "[100:04]end"},
        {"[00:01]a\r\n[ab:cd]b", std::nullopt},
        {"[00:01", "[00:00][00:01"},
    };
    for (const auto& [text, shifted] : cases) EXPECT_EQ(ShiftTimeTrack(text, 5), shifted) << text;
    EXPECT_EQ(ShiftTimeTrack("[00:03]a", -5), "[00:00]a");
}


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

}  // namespace
}  // namespace lumora
