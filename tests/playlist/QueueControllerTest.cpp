#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/MediaTest.h"
#include "playlist/PlayQueue.h"
#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using test::Lines;

class QueueControllerTest : public testing::Test {
protected:
    // Fills the queue through the open dialog, makes `current` play and forgets what that showed.
    void Open(const Lines& chosen, int current = 1) {
        prompts.openManyAnswer = chosen;
        ASSERT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Playing);
        ASSERT_TRUE(controller.Queue().SetCurrent(current));
        controller.Refresh();
        view.played.clear();
    }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::RecordingQueueView view;
    QueueController controller{prompts, fs, view, view};
};

// The search starts at the playing entry and goes down; with nothing playing (stopped, or nothing open) it is
// refused, and nothing found changes nothing.
TEST_F(QueueControllerTest, SearchLooksDownFromThePlayingEntryOnlyWhileSomethingPlays) {
    Open({"D:\\m", "love a.mp3", "rock.mp3", "love b.mp3"}, 2);
    prompts.textAnswer = "LOVE";
    EXPECT_FALSE(controller.FindFromCurrent(false));
    EXPECT_EQ(prompts.questions.size(), 0u);  // refused before the keyword is asked
    EXPECT_EQ(prompts.messages.at(0).title, "无法“过滤”");
    EXPECT_TRUE(controller.FindFromCurrent(true));
    EXPECT_EQ(view.played, (Lines{"D:\\m\\love b.mp3"}));
    EXPECT_TRUE(controller.FindFromCurrent(true));  // the playing entry is the first looked at: it plays on
    EXPECT_EQ(std::pair(view.played.size(), view.selected), std::pair(std::size_t{1}, 3));
    prompts.textAnswer = "rock";
    EXPECT_FALSE(controller.FindFromCurrent(true));
    EXPECT_EQ(std::pair(prompts.messages.size(), controller.Queue().Current()), std::pair(std::size_t{1}, 3));
}

TEST_F(QueueControllerTest, OpenDialogDropsPendingAndRegularPaths) {
    prompts.openManyAnswer = Lines{"D:\\音乐", "b.mp3", "歌.wma", "c.txt"};  // the folder, then the names
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Playing);
    EXPECT_NE(prompts.openDialogs.at(0).text.find("*.mpeg;"), std::string::npos);  // undotted items get their dot
    EXPECT_EQ(view.lines, (Lines{"001-(b.mp3)", "002-(歌.wma)", "003-(c.txt)"}));
    EXPECT_EQ(view.played, (Lines{"D:\\音乐\\b.mp3"}));
    fs.files.insert({{"C:\\in\\x.mp3", ""}, {"K:\\b.mid", ""}});
    EXPECT_EQ(controller.AddDropped({"C:\\in\\x.mp3", "x.mp3"}).outcome, AddOutcome::Refused);  // one bad path
    EXPECT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(controller.AddDropped({"C:\\in\\x.mp3", "K:\\"}).outcome, AddOutcome::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(x.mp3)", "002-(b.mid)"}));

    // Pending paths: media files and the media directly in folders; a list file is handed back untouched.
    for (const char* path : {"C:\\a.mp3", "C:\\doc.txt", "D:a", "D:\\m\\b.wma", "D:\\m\\sub\\deep.mp3", "E:\\我的.QLB"}) {
        fs.files[path] = "";
    }
    EXPECT_EQ(controller.AddPending({"C:\\gone.mp3", "C:\\doc.txt", "", "D:\\m\\", "C:\\a.mp3"}).outcome,
              AddOutcome::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(b.wma)", "002-(a.mp3)"}));
    EXPECT_EQ(controller.Queue().Folder(), "D:\\m");
    EXPECT_EQ(controller.AddPending({"C:\\a.mp3", "E:\\我的.QLB"}), (AddResult{AddOutcome::ListFile, "E:\\我的.QLB"}));
    EXPECT_EQ(controller.AddPending({"C:\\gone.mp3", "C:\\doc.txt", "D:a"}).outcome, AddOutcome::Cancelled);

    // Paths from outside are taken only when absolute and free of the characters Windows forbids.
    for (const char* path : {"C:\\音乐\\a.mp3", "d:\\", "\\\\server\\share\\a.mp3", "Z:\\"}) {
        EXPECT_TRUE(IsRegularPath(path)) << path;
    }
    for (const char* path : {"", "a.mp3", "C:a.mp3", "\\a.mp3", "\\\\\\a", "1:\\a", "C:\\a*b", "C:\\a?", "C:\\a\"b",
                             "C:\\a<b>", "C:\\a|b", "C:\\a:b", "C:\\a\tb", "\\\\", "[:\\a", "@:\\a", "a\\b"}) {
        EXPECT_FALSE(IsRegularPath(path)) << path;
    }
}

TEST_F(QueueControllerTest, RemoveAndMoveAnEntry) {
    Open({"D:\\m", "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3"}, 3);
    EXPECT_FALSE(controller.RemoveEntry(3));
    EXPECT_TRUE(controller.RemoveEntry(1));
    EXPECT_EQ(std::pair(view.texts.positionPanel, view.selected), std::pair(std::string("正在播放第 2个文件"), 2));
    for (const char* answer : {"0", "5", "2.0", "３", "99999999999999999999"}) {
        prompts.textAnswer = answer;
        EXPECT_FALSE(controller.MoveEntry(1)) << answer;
    }
    EXPECT_EQ(prompts.messages.size(), 6u);  // refusing the playing entry, then each bad answer
    prompts.textAnswer = " 4 ";
    EXPECT_TRUE(controller.MoveEntry(1));
    EXPECT_NE(prompts.questions.back().text.find("001-(b.mp3) 的位置移动到哪里？\r\n范围:1～4"), std::string::npos);
    EXPECT_EQ(view.lines, (Lines{"001-(c.mp3)", "002-(d.mp3)", "003-(e.mp3)", "004-(b.mp3)"}));
    EXPECT_TRUE(view.played.empty());
}

// Entries "C:\m\<name>" (default names "1".."count"), the one at `current` playing.
PlayQueue QueueOf(std::vector<std::string> names, int current = 1) {
    PlayQueue queue;
    EXPECT_TRUE(queue.Replace("C:\\m", test::Entries("C:\\m", names)));
    EXPECT_TRUE(queue.SetCurrent(current));
    return queue;
}

std::string Order(const PlayQueue& queue) {
    std::string order;
    for (int i = 1; i <= queue.Count(); ++i) order += queue.EntryAt(i)->name;
    return order;
}

// What the list window and the main window show; the neighbours wrap round at both ends.
TEST(PlayQueue, TextsByCountAndPlayingEntryWhichRemovingAndMovingKeep) {
    EXPECT_EQ(QueueOf({"1", "2", "3", "4", "5"}, 3).Texts(),
              (QueueTexts{"正在播放003-(3)", "正在播放第 3个文件", "共 5个文件", "一共选中 5个文件",
                          "正在播放第 3个文件-----共 5个文件", "上一首--002-(2)", "下一首--004-(4)",
                          std::string(kListWindowCaption), "3"}));
    const QueueTexts first = QueueOf({"1", "2", "3"}, 1).Texts(), last = QueueOf({"1", "2", "3"}, 3).Texts();
    EXPECT_EQ(first.previousLabel + last.nextLabel, "上一首--003-(3)下一首--001-(1)");

    // Removing and moving keep the playing entry.
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
