#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/MediaTest.h"
#include "playlist/PlayQueue.h"

namespace lumora {
namespace {

// Entries "C:\m\<name>" (default names "1".."count"), the one at `current` playing.
PlayQueue QueueOf(std::vector<std::string> names, int current = 1) {
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

// What the list window and the main window show; the neighbours wrap round at both ends.
TEST(PlayQueue, TextsByCountAndPlayingEntry) {
    EXPECT_EQ(PlayQueue().Texts(),
              (QueueTexts{"正在播放第0文件", "正在播放第0文件", "共0个文件", "一共选中0个文件",
                          "正在播放第0文件-----共0个文件", "上一首-无文件", "下一首-无文件",
                          std::string(kListWindowCaption), "无文件"}));
    EXPECT_EQ(EmptyQueueTexts(), PlayQueue().Texts());
    EXPECT_EQ(QueueOf({"1", "2", "3", "4", "5"}, 3).Texts(),
              (QueueTexts{"正在播放003-(3)", "正在播放第 3个文件", "共 5个文件", "一共选中 5个文件",
                          "正在播放第 3个文件-----共 5个文件", "上一首--002-(2)", "下一首--004-(4)",
                          std::string(kListWindowCaption), "3"}));
    const QueueTexts first = QueueOf({"1", "2", "3"}, 1).Texts(), last = QueueOf({"1", "2", "3"}, 3).Texts();
    EXPECT_EQ(first.previousLabel + last.nextLabel, "上一首--003-(3)下一首--001-(1)");
}

TEST(PlayQueue, RemovingAndMovingKeepThePlayingEntry) {
    PlayQueue queue = QueueOf({"a", "b", "c", "d"}, 3);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::IsPlaying);
    EXPECT_EQ(queue.Remove(1), RemoveOutcome::Removed);
    EXPECT_EQ(queue.Remove(3), RemoveOutcome::Removed);
    EXPECT_EQ(Order(queue) + queue.CurrentEntry()->path, "bcC:\\m\\c");
    for (int index : {0, 3}) {
        EXPECT_FALSE(queue.EntryAt(index) || queue.SetCurrent(index) || queue.Move(index, 1) || queue.Move(1, index));
        EXPECT_EQ(queue.Remove(index), RemoveOutcome::NoSuchEntry) << index;
    }
    const struct {
        int from, to, current;
        const char* order;
        int currentAfter;
    } moves[] = {
        {1, 4, 2, "bcdae", 1}, {4, 1, 2, "dabce", 3}, {2, 5, 2, "acdeb", 5}, {5, 2, 5, "aebcd", 2},
        {1, 2, 5, "bacde", 5}, {2, 4, 4, "acdbe", 3}, {4, 2, 2, "adbce", 3},
    };
    for (const auto& c : moves) {
        PlayQueue five = QueueOf({"a", "b", "c", "d", "e"}, c.current);
        ASSERT_TRUE(five.Move(c.from, c.to));
        EXPECT_EQ(Order(five) + std::to_string(five.Current()), c.order + std::to_string(c.currentAfter));
    }
}

TEST(PlayQueue, FindLooksDownwardAtNamesIgnoringAsciiCaseAndMediaFilesGoByTheLastFourCharacters) {
    const PlayQueue queue = QueueOf({"Love Song.mp3", "rock.wma", "情歌.mp3", "LOVE me.wav"});
    for (const auto& [from, keyword, found] : {std::tuple{2, "love", 4}, {0, "love", 1}, {1, "情歌", 3}, {1, "001", 0}}) {
        EXPECT_EQ(queue.FindFrom(from, keyword), found) << from << keyword;
    }
    for (const char* name : {"song.MP3", ".qt", "a.jpg", "  song.mp3  ", "001-(song.mp3)", "-12 clip.au)", "\x80.mp3"}) {
        EXPECT_TRUE(IsMediaFile(name)) << name;
    }
    for (const char* name : {"clip.mpeg", "b.rmvb", "mp3", "song.mp3.", "", "001-(tone.aiff)", "abc-(song.mp3)", "1.mp3)",
                             "12)", "\x80\x80\x80\x80"}) {
        EXPECT_FALSE(IsMediaFile(name)) << name;
    }
}

}  // namespace
}  // namespace lumora
