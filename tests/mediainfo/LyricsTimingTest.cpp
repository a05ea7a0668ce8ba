#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/LyricsTiming.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

TEST(StampSeconds, RoundsHalvesToEven) {
    const struct {
        std::string_view stamp;
        std::optional<long long> seconds;
    } cases[] = {
        {"01:02.5", 62},
        {"01:03.5", 64},
        {"00:00.5", 0},
        {"00:01.5", 2},
        {"00:02.51", 3},
        {"00:02.49", 2},
        {"00:02.500000000000000001", 3},
        {"1:2", 62},
        {"00:10.", 10},
        {"0.5:00", 30},
        {"000000000007:05", 425},
        {"99999:99", 6000039},
        {"ab:cd", std::nullopt},
        {"00:10:20", std::nullopt},
        {"-1:00", std::nullopt},
        {"00:", std::nullopt},
        {"1 :00", std::nullopt},
        {"00:1.2.3", std::nullopt},
        {"1234567890:00", std::nullopt},  // more than nine digits
    };
    for (const auto& c : cases) EXPECT_EQ(StampSeconds(c.stamp), c.seconds) << c.stamp;
}

TEST(SplitStampedLine, StampUpToTheLastBracket) {
    EXPECT_EQ(SplitStampedLine("[00:20]text").seconds, 20);
    EXPECT_EQ(SplitStampedLine("[00:20]text").text, "text");
    EXPECT_EQ(SplitStampedLine("[00:20]").text, "");
    // The stamp runs to the last "]": a second bracket group makes it invalid, and the whole line is text.
    EXPECT_EQ(SplitStampedLine("[00:10]a [b]").seconds, std::nullopt);
    EXPECT_EQ(SplitStampedLine("[00:10]a [b]").text, "[00:10]a [b]");
    for (const char* line : {"[ab:cd]text", "", "text", " [00:01]x", "[00:01", "[ti:歌名]"}) {
        EXPECT_EQ(SplitStampedLine(line).seconds, std::nullopt) << line;
        EXPECT_EQ(SplitStampedLine(line).text, line);
    }
}

TimedLyrics Timed(const std::vector<std::optional<long long>>& times) {
    TimedLyrics lyrics;
    for (const auto& t : times) {
        lyrics.times.push_back(t);
        lyrics.texts.push_back(t ? "at " + std::to_string(*t) : "no stamp");
    }
    return lyrics;
}

TEST(ChooseDisplayLines, TheLineReachedAndTheNext) {
    const auto lyrics = Timed({0, 10, 20, 30});
    const struct {
        long long p;
        DisplayLines shown;
    } cases[] = {
        {25, {"at 20", "at 30"}}, {40, {"at 30", "at 30"}},  // the last line is both
        {20, {"at 20", "at 30"}}, {19, {"at 10", "at 20"}},
        {0, {"", "at 10"}},  // entry 0 is only the fallback value: no line from 1 on has it
    };
    for (const auto& c : cases) EXPECT_EQ(ChooseDisplayLines(lyrics, c.p), c.shown) << c.p;
    // Nothing to choose from, no position, or lists of different lengths: the window is left alone.
    EXPECT_EQ(ChooseDisplayLines(TimedLyrics{}, 5), std::nullopt);
    EXPECT_EQ(ChooseDisplayLines(lyrics, -1), std::nullopt);
    TimedLyrics uneven = Timed({0, 10});
    uneven.texts.pop_back();
    EXPECT_EQ(ChooseDisplayLines(uneven, 5), std::nullopt);
}

TEST(ChooseDisplayLines, EqualStampsShowTogetherInListOrder) {
    TimedLyrics lyrics = BuildTimedLyrics("[00:00]title\r\n[00:20]one\r\n[00:10]ten\r\n[00:20]two\r\n[00:30]end");
    EXPECT_EQ(ChooseDisplayLines(lyrics, 20), (DisplayLines{"one\r\ntwo", "end"}));
    EXPECT_EQ(ChooseDisplayLines(lyrics, 29), (DisplayLines{"one\r\ntwo", "end"}));
    // No sorting: at 12 the last stamp not later than 12 in list order is 10, the first later one is 20.
    EXPECT_EQ(ChooseDisplayLines(lyrics, 12), (DisplayLines{"ten", "one\r\ntwo"}));
    // Entry 0 with a value matching a later line shows that line before the first stamp is reached.
    lyrics = BuildTimedLyrics("[00:05]zero\r\n[00:05]five\r\n[00:09]nine");
    EXPECT_EQ(ChooseDisplayLines(lyrics, 1), (DisplayLines{"five", "five"}));
}

TEST(ChooseDisplayLines, UnstampedLinesNeverBecomeCurrent) {
    const auto lyrics = BuildTimedLyrics("[00:00]a\r\n[ab:cd]bad\r\n[00:10]b\r\n[00:20]c");
    for (long long p : {0, 5, 10, 15, 25}) {
        const auto shown = ChooseDisplayLines(lyrics, p);
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->first.find("bad"), std::string::npos) << p;
        EXPECT_EQ(shown->second.find("bad"), std::string::npos) << p;
    }
    // An unstamped first or last entry leaves its fallback line empty.
    EXPECT_EQ(ChooseDisplayLines(BuildTimedLyrics("歌名\r\n[00:10]a\r\n"), 3), (DisplayLines{"", "a"}));
    EXPECT_EQ(ChooseDisplayLines(BuildTimedLyrics("歌名\r\n[00:10]a\r\n"), 30), (DisplayLines{"a", ""}));
}

TEST(ChooseDisplayLines, WrapsAtTheLineByteLimit) {
    const auto lyrics = BuildTimedLyrics("[00:00]\r\n[00:01]一二三四五\r\n[00:02]ab一cd");
    EXPECT_EQ(ChooseDisplayLines(lyrics, 1, 4), (DisplayLines{"一二\r\n三四\r\n五", "ab一\r\ncd"}));
    EXPECT_EQ(ChooseDisplayLines(lyrics, 1, 0), (DisplayLines{"一二三四五", "ab一cd"}));
}

TEST(LineByteLimit, WrapsNeverSplittingACharacter) {
    EXPECT_EQ(WrapToLineBytes("ab一cd", 3), "ab\r\n一c\r\nd");
    EXPECT_EQ(WrapToLineBytes("一二", 1), "一\r\n二");  // wider than the limit: alone on its line
    EXPECT_EQ(WrapToLineBytes("abc\r\ndef", 2), "ab\r\nc\r\nde\r\nf");
    EXPECT_EQ(WrapToLineBytes("", 4), "");

    for (int limit : {2, 10, 36}) {
        const std::string preview = LineByteLimitPreview(limit);
        std::string joined;
        for (auto line : SplitLyricsLines(preview)) {
            EXPECT_LE(InfoByteLength(line), static_cast<std::size_t>(limit)) << line;
            joined += line;
        }
        EXPECT_EQ(joined, LineByteLimitPreview(0)) << limit;  // nothing lost
    }
    EXPECT_EQ(LineByteLimitPreview(0).substr(0, 18), "这是浏览文本");
    EXPECT_EQ(LineByteLimitLabel(0), "当前设置：不进行调整");
    EXPECT_EQ(LineByteLimitLabel(20), "当前设置每行：20 个字节(一个汉字占两个字节)");

    const struct {
        std::string_view stored;
        int limit;
    } stored[] = {{"20", 20}, {"0", 0},   {"21", 0},      {"-2", 0},   {"2 ", 0},
                  {"", 0},    {"abc", 0}, {"9998", 9998}, {"10000", 0}};
    for (const auto& s : stored) EXPECT_EQ(ParseLineByteLimit(s.stored), s.limit) << s.stored;
}

TEST(ShiftTimeTrack, ShiftsClampsAndAddsStamps) {
    const struct {
        std::string_view text;
        long long offset;
        std::optional<std::string> shifted;
    } cases[] = {
        {"[00:03]a\r\n[01:10]b", -5, "[00:00]a\r\n[01:05]b"},
        {"[00:58]a", 5, "[01:03]a"},
        {"no stamp\r\n[00:01]x", 2, "[00:00]no stamp\r\n[00:03]x"},
        {"[副歌]\r\n\r\n[00:10.5]x", 0, "[00:00][副歌]\r\n\r\n[00:10]x"},  // empty lines stay; halves to even
        {"[00:10][01:10]chorus", 3, "[00:13][01:13]chorus"},
        {"[99:59]end", 120, "[101:59]end"},
        {"[00:01]a\r\n", 1, "[00:02]a\r\n"},
        {"[00:01]a\r\n[ab:cd]b", 1, std::nullopt},
        {"[ti:歌名]", 1, std::nullopt},
        {"[00:01", 1, "[00:00][00:01"},
    };
    for (const auto& c : cases) EXPECT_EQ(ShiftTimeTrack(c.text, c.offset), c.shifted) << c.text;
}

TEST(LyricLists, JoinSplitAndText) {
    const std::string times = JoinLyricsList({"00:01", "01:05"});
    EXPECT_EQ(SplitLyricsList(times), (Lines{"00:01", "01:05"}));
    EXPECT_EQ(LyricListsToText({times, JoinLyricsList({"一", "二"})}), "[00:01]一\r\n[01:05]二");
    EXPECT_EQ(LyricListsToText({times, "only one"}), "");
    EXPECT_EQ(FormatStamp(6005), "100:05");
    EXPECT_EQ(FormatStamp(-3), "00:00");
}

TEST(CorrectLyricsSeconds, StretchesAndTakesBackOneInNinety) {
    const std::pair<long long, long long> cases[] = {{0, 0},    {1, 1},     {50, 61},    {74, 89},
                                                     {90, 108}, {100, 121}, {1000, 1207}};
    for (const auto& [in, out] : cases) EXPECT_EQ(CorrectLyricsSeconds(in), out) << in;
}

}  // namespace
}  // namespace lumora
