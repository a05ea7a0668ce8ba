#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/MediaTest.h"
#include "playlist/PlayQueue.h"

namespace lumora {
namespace {

// Entries "C:\m\<name>", the one at `current` playing.
PlayQueue QueueOf(const std::vector<std::string>& names, int current = 1) {
    std::vector<MediaEntry> entries;
    for (const auto& name : names) entries.push_back({"C:\\m\\" + name, name});
    PlayQueue queue;
    EXPECT_TRUE(queue.Replace("C:\\m", entries));
    EXPECT_TRUE(queue.SetCurrent(current));
    return queue;
}

std::string Order(const PlayQueue& queue) {
    std::string order;
    for (int i = 1; i <= queue.Count(); ++i) order += queue.EntryAt(i)->name;
    return order;
}

// What the list window and the main window show for a queue of `count` entries playing `current`.
TEST(PlayQueue, TextsByCountAndPlayingEntry) {
    const struct {
        int count, current;
        QueueTexts texts;
    } cases[] = {
        {0, 0, {"正在播放第0文件", "正在播放第0文件", "共0个文件", "一共选中0个文件", "正在播放第0文件-----共0个文件",
                "上一首-无文件", "下一首-无文件", std::string(kListWindowCaption), "无文件"}},
        {5, 3, {"正在播放003-(3)", "正在播放第 3个文件", "共 5个文件", "一共选中 5个文件",
                "正在播放第 3个文件-----共 5个文件", "上一首--002-(2)", "下一首--004-(4)", std::string(kListWindowCaption),
                "3"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> names;
        for (int i = 1; i <= c.count; ++i) names.push_back(std::to_string(i));
        PlayQueue queue;
        if (c.count) queue = QueueOf(names, c.current);
        EXPECT_EQ(queue.Texts(), c.texts);
    }
    EXPECT_EQ(EmptyQueueTexts(), cases[0].texts);
    const struct {
        int count, current;
        const char *previous, *next;
    } neighbours[] = {
        {3, 1, "上一首--003-(3)", "下一首--002-(2)"},
        {3, 3, "上一首--002-(2)", "下一首--001-(1)"},
        {1, 1, "上一首--001-(1)", "下一首--001-(1)"},
    };
    for (const auto& c : neighbours) {
        std::vector<std::string> names;
        for (int i = 1; i <= c.count; ++i) names.push_back(std::to_string(i));
        const QueueTexts texts = QueueOf(names, c.current).Texts();
        EXPECT_EQ(texts.previousLabel, c.previous) << c.count << "/" << c.current;
        EXPECT_EQ(texts.nextLabel, c.next) << c.count << "/" << c.current;
    }
    const std::pair<int, const char*> lines[] = {{1, "001-(x)"}, {12, "012-(x)"}, {999, "999-(x)"}, {1000, "1000-(x)"}};
    for (const auto& [number, line] : lines) EXPECT_EQ(ListLine(number, "x"), line);
    EXPECT_EQ(NumberText(3), " 3");
    EXPECT_EQ(NumberText(0), "0");
}

TEST(PlayQueue, ReplaceAcceptsAThousandNamesAndRefusesMoreWithoutTouchingTheQueue) {
    PlayQueue queue = QueueOf({"a", "b"}, 2);
    std::vector<MediaEntry> many(1001, MediaEntry{"C:\\x.mp3", "x.mp3"});
    EXPECT_FALSE(queue.Replace("C:\\", many));
    EXPECT_EQ(Order(queue), "ab");
    EXPECT_EQ(queue.Current(), 2);
    many.pop_back();
    EXPECT_TRUE(queue.Replace("C:\\", many));
    EXPECT_EQ(queue.Count(), 1000);
    EXPECT_EQ(queue.Current(), 1);
    queue.Clear();
    EXPECT_EQ(queue.Current(), 0);
    EXPECT_TRUE(queue.Lines().empty());
}

TEST(PlayQueue, RemovingAndMovingKeepThePlayingEntry) {
    PlayQueue queue = QueueOf({"a", "b", "c", "d"}, 3);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::IsPlaying);
    EXPECT_EQ(queue.Remove(1), RemoveOutcome::Removed);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::Removed);
    EXPECT_EQ(queue.Lines(), (std::vector<std::string>{"001-(b)", "002-(c)"}));
    EXPECT_EQ(queue.Current(), 2);
    EXPECT_EQ(queue.CurrentEntry()->path, "C:\\m\\c");
    for (int index : {-1, 0, 3}) {
        EXPECT_EQ(queue.EntryAt(index), nullptr) << index;
        EXPECT_FALSE(queue.SetCurrent(index)) << index;
        EXPECT_EQ(queue.Remove(index), RemoveOutcome::NoSuchEntry) << index;
        EXPECT_FALSE(queue.Move(index, 1) || queue.Move(1, index)) << index;
    }
    EXPECT_EQ(Order(queue), "bc");

    const struct {
        int from, to, current;
        const char* order;
        int currentAfter;
    } moves[] = {
        {1, 4, 2, "bcdae", 1}, {4, 1, 2, "dabce", 3}, {2, 5, 2, "acdeb", 5}, {5, 2, 5, "aebcd", 2},
        {1, 2, 5, "bacde", 5}, {3, 3, 3, "abcde", 3}, {2, 4, 4, "acdbe", 3}, {4, 2, 2, "adbce", 3},
    };
    for (const auto& c : moves) {
        PlayQueue five = QueueOf({"a", "b", "c", "d", "e"}, c.current);
        ASSERT_TRUE(five.Move(c.from, c.to));
        EXPECT_EQ(Order(five), c.order) << c.from << "->" << c.to;
        EXPECT_EQ(five.Current(), c.currentAfter) << c.from << "->" << c.to;
    }
}

TEST(PlayQueue, FindLooksDownwardAtNamesIgnoringAsciiCase) {
    const PlayQueue queue = QueueOf({"Love Song.mp3", "rock.wma", "情歌.mp3", "LOVE me.wav", "012.mp3"});
    const std::tuple<int, const char*, int> cases[] = {
        {1, "love", 1}, {2, "love", 4}, {5, "love", 0},  // never wraps round to the top
        {0, "love", 1}, {-3, "rock", 2}, {1, "情歌", 3}, {1, "001", 0},  // the line's number is not searched
        {1, "012", 5},  {1, "", 0},      {6, "012", 0},
    };
    for (const auto& [from, keyword, found] : cases) EXPECT_EQ(queue.FindFrom(from, keyword), found) << from << keyword;
}

// Only the last four characters of a name count (of the name inside the brackets of a list line).
TEST(IsMediaFile, LooksOnlyAtTheLastFourCharacters) {
    const struct {
        const char* name;
        bool media;
    } cases[] = {
        {"song.mp3", true},        {"song.MP3", true},       {"movie.qt", true},        {"a.rm", true},
        {"voice.Ra", true},        {"clip.mpeg", false},     {"tone.aiff", false},      {"a.midi", false},
        {"b.rmvb", false},         {"歌.qt", true},          {"C:\\音乐\\a.mp3", true}, {".mp3", true},
        {"mp3", false},            {"readme", false},        {"song.mp3.", false},      {"song.mp3.zip", false},
        {"a.b.wav", true},         {"  song.mp3  ", true},   {"", false},               {"q.", false},
        {"a.WMA", true},           {"a.jpg", true},          {"a.cda", true},           {"a.AVI", true},
        {"001-(song.mp3)", true},  {"012-(歌曲.WMV)", true}, {"001-(tone.aiff)", false}, {"001-(song.mp3) ", true},
        {"123 clip.qt)", true},    {"-12 clip.au)", true},   {"abc-(song.mp3)", false},  {"1.mp3)", false},
        {"song (live).mp3", true}, {"12)", false},           {"001)", false},
        // Broken UTF-8 is cut somewhere harmless.
        {"\x80\x80\x80\x80", false}, {"\xe6\xad", false},    {"\x80.mp3", true},         {"\x80\x80)", false},
    };
    for (const auto& c : cases) EXPECT_EQ(IsMediaFile(c.name), c.media) << c.name;
}

}  // namespace
}  // namespace lumora
