#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

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

TEST_F(QueueControllerTest, OpenDialogPlaysTheFirstOfTheFolderAndNames) {
    prompts.openManyAnswer = Lines{"D:\\音乐", "b.mp3", "歌.wma", "c.txt"};
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Playing);
    EXPECT_NE(prompts.openDialogs.at(0).text.find("*.mpeg;"), std::string::npos);  // undotted items get their dot
    EXPECT_EQ(view.lines, (Lines{"001-(b.mp3)", "002-(歌.wma)", "003-(c.txt)"}));
    EXPECT_EQ(view.played, (Lines{"D:\\音乐\\b.mp3"}));

    prompts.openManyAnswer = Lines{"E:\\歌曲\\晴天.mp3"};  // one file: its path as it stands
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Playing);
    EXPECT_EQ(view.played.back(), "E:\\歌曲\\晴天.mp3");
    prompts.openManyAnswer.reset();
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Cancelled);

    Lines chosen{"C:\\m"};
    for (int i = 0; i < 1001; ++i) chosen.push_back(std::to_string(i) + ".mp3");
    prompts.openManyAnswer = chosen;
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::TooMany);  // the queue is cleared
    EXPECT_EQ(std::pair(prompts.messages.size(), view.texts), std::pair(std::size_t{1}, EmptyQueueTexts()));
}

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

TEST(IsRegularPath, AbsoluteWindowsPathsWithoutForbiddenCharacters) {
    for (const char* path : {"C:\\音乐\\a.mp3", "d:\\", "\\\\server\\share\\a.mp3", "Z:\\"}) {
        EXPECT_TRUE(IsRegularPath(path)) << path;
    }
    for (const char* path : {"", "a.mp3", "C:a.mp3", "\\a.mp3", "\\\\\\a", "1:\\a", "C:\\a*b", "C:\\a?", "C:\\a\"b",
                             "C:\\a<b>", "C:\\a|b", "C:\\a:b", "C:\\a\tb", "\\\\", "[:\\a", "@:\\a", "a\\b"}) {
        EXPECT_FALSE(IsRegularPath(path)) << path;
    }
}

TEST_F(QueueControllerTest, DropsAndPendingPaths) {
    Open({"C:\\m", "a.mp3", "b.mp3"});
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

}  // namespace
}  // namespace lumora
