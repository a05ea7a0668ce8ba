#include <gtest/gtest.h>

#include <string>
#include <vector>

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

TEST(QueueTextHelpers, LinesAndNumbers) {
    EXPECT_EQ(ListLine(1, "song.mp3"), "001-(song.mp3)");
    EXPECT_EQ(ListLine(12, "歌曲.wma"), "012-(歌曲.wma)");
    EXPECT_EQ(ListLine(999, "a.mp3"), "999-(a.mp3)");
    EXPECT_EQ(ListLine(1000, "a.mp3"), "1000-(a.mp3)");
    EXPECT_EQ(NumberText(3), " 3");
    EXPECT_EQ(NumberText(0), "0");
}

TEST(PlayQueue, ReplaceAcceptsAThousandNamesAndRefusesMoreWithoutTouchingTheQueue) {
    PlayQueue queue = QueueOf({"a.mp3", "b.mp3"}, 2);
    std::vector<MediaEntry> many(1001, MediaEntry{"C:\\x.mp3", "x.mp3"});
    EXPECT_FALSE(queue.Replace("C:\\", many));
    EXPECT_EQ(Order(queue), "a.mp3b.mp3");
    EXPECT_EQ(queue.Current(), 2);
    many.pop_back();
    EXPECT_TRUE(queue.Replace("C:\\", many));
    EXPECT_EQ(queue.Count(), 1000);
    EXPECT_EQ(queue.Current(), 1);
}

TEST(PlayQueue, EmptyAndFilledTexts) {
    const QueueTexts empty{"正在播放第0文件", "正在播放第0文件",   "共0个文件",
                           "一共选中0个文件", "正在播放第0文件-----共0个文件", "上一首-无文件",
                           "下一首-无文件",   "《Lumora》文件列表", "无文件"};
    const QueueTexts third{"正在播放003-(c)", "正在播放第 3个文件", "共 5个文件",
                           "一共选中 5个文件", "正在播放第 3个文件-----共 5个文件", "上一首--002-(b)",
                           "下一首--004-(d)", "《Lumora》文件列表", "c"};
    PlayQueue queue = QueueOf({"a", "b", "c", "d", "e"}, 3);
    EXPECT_EQ(queue.Texts(), third);
    queue.Clear();
    EXPECT_EQ(queue.Current(), 0);
    EXPECT_TRUE(queue.Lines().empty());
    EXPECT_EQ(queue.Texts(), empty);
    EXPECT_EQ(EmptyQueueTexts(), empty);
}

TEST(PlayQueue, NeighbourLabelsWrapRound) {
    const struct {
        int count, current;
        const char *previous, *next;
    } cases[] = {
        {3, 1, "上一首--003-(3)", "下一首--002-(2)"},
        {3, 3, "上一首--002-(2)", "下一首--001-(1)"},
        {1, 1, "上一首--001-(1)", "下一首--001-(1)"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> names;
        for (int i = 1; i <= c.count; ++i) names.push_back(std::to_string(i));
        const QueueTexts texts = QueueOf(names, c.current).Texts();
        EXPECT_EQ(texts.previousLabel, c.previous) << c.count << "/" << c.current;
        EXPECT_EQ(texts.nextLabel, c.next) << c.count << "/" << c.current;
    }
}

TEST(PlayQueue, IndexesOutsideTheQueueChangeNothing) {
    PlayQueue queue = QueueOf({"a", "b"}, 2);
    for (int index : {-1, 0, 3}) {
        EXPECT_EQ(queue.EntryAt(index), nullptr) << index;
        EXPECT_FALSE(queue.SetCurrent(index)) << index;
        EXPECT_EQ(queue.Remove(index), RemoveOutcome::NoSuchEntry) << index;
        EXPECT_FALSE(queue.Move(index, 1) || queue.Move(1, index)) << index;
    }
    EXPECT_EQ(Order(queue), "ab");
    EXPECT_EQ(queue.Current(), 2);
}

TEST(PlayQueue, RemovingRenumbersAndKeepsThePlayingEntry) {
    PlayQueue queue = QueueOf({"a", "b", "c", "d"}, 3);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::IsPlaying);
    EXPECT_EQ(queue.Remove(1), RemoveOutcome::Removed);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::Removed);
    EXPECT_EQ(queue.Lines(), (std::vector<std::string>{"001-(b)", "002-(c)"}));
    EXPECT_EQ(queue.Current(), 2);
    EXPECT_EQ(queue.CurrentEntry()->path, "C:\\m\\c");
}

TEST(PlayQueue, MovingShiftsTheEntriesBetweenAndFollowsThePlayingOne) {
    const struct {
        int from, to, current;
        const char* order;
        int currentAfter;
    } cases[] = {
        {1, 4, 2, "bcdae", 1}, {4, 1, 2, "dabce", 3}, {2, 5, 2, "acdeb", 5}, {5, 2, 5, "aebcd", 2},
        {1, 2, 5, "bacde", 5}, {3, 3, 3, "abcde", 3}, {2, 4, 4, "acdbe", 3}, {4, 2, 2, "adbce", 3},
    };
    for (const auto& c : cases) {
        PlayQueue queue = QueueOf({"a", "b", "c", "d", "e"}, c.current);
        const std::string playing = queue.CurrentEntry()->path;
        ASSERT_TRUE(queue.Move(c.from, c.to));
        EXPECT_EQ(Order(queue), c.order) << c.from << "->" << c.to;
        EXPECT_EQ(queue.Current(), c.currentAfter) << c.from << "->" << c.to;
        EXPECT_EQ(queue.CurrentEntry()->path, playing);
    }
}

TEST(PlayQueue, FindLooksDownwardAtNamesIgnoringAsciiCase) {
    const PlayQueue queue = QueueOf({"Love Song.mp3", "rock.wma", "情歌.mp3", "LOVE me.wav", "012.mp3"});
    EXPECT_EQ(queue.FindFrom(1, "love"), 1);
    EXPECT_EQ(queue.FindFrom(2, "love"), 4);
    EXPECT_EQ(queue.FindFrom(5, "love"), 0);  // never wraps round to the top
    EXPECT_EQ(queue.FindFrom(1, "情歌"), 3);
    EXPECT_EQ(queue.FindFrom(1, "001"), 0);  // the line's number is not searched
    EXPECT_EQ(queue.FindFrom(1, "012"), 5);
    EXPECT_EQ(queue.FindFrom(1, ""), 0);
}

}  // namespace
}  // namespace lumora
