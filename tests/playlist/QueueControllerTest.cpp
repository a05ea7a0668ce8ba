#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using test::Message;
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
    EXPECT_EQ(prompts.openDialogs.at(0).title, "打开文件对话框，本播放器支持近50种文件类型");
    EXPECT_NE(prompts.openDialogs.at(0).text.find("*.mpeg;"), std::string::npos);  // undotted items get their dot
    EXPECT_EQ(view.lines, (Lines{"001-(b.mp3)", "002-(歌.wma)", "003-(c.txt)"}));
    EXPECT_EQ(view.played, (Lines{"D:\\音乐\\b.mp3"}));
    EXPECT_EQ(view.texts.playingPanel, "正在播放001-(b.mp3)");

    Open({"D:\\", "a.mp3", "b.mp3"});  // a drive root gets no second "\"
    EXPECT_EQ(controller.Queue().EntryAt(2)->path, "D:\\b.mp3");
    prompts.openManyAnswer = Lines{"E:\\歌曲\\晴天.mp3"};  // one file: its path as it stands
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Playing);
    EXPECT_EQ(view.played, (Lines{"E:\\歌曲\\晴天.mp3"}));
    prompts.openManyAnswer.reset();
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::Cancelled);
    EXPECT_EQ(controller.Queue().Count(), 1);

    Lines chosen{"C:\\m"};
    for (int i = 0; i < 1001; ++i) chosen.push_back(std::to_string(i) + ".mp3");
    prompts.openManyAnswer = chosen;
    EXPECT_EQ(controller.AddFromOpenDialog().outcome, AddOutcome::TooMany);  // the queue is cleared
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"您打开的文件太多了，本播放器目前只支持999个文件。", "打开的文件太多"}}));
    EXPECT_EQ(view.texts, EmptyQueueTexts());
}

TEST_F(QueueControllerTest, FolderGivesItsMediaFilesInListingOrderOrKeepsTheQueue) {
    fs.listingOrder["F:\\歌"] = {"z.mp3", "cover.jpg", "notes.txt", "a.WMA", "clip.mpeg"};
    prompts.folderAnswer = "F:\\歌";
    EXPECT_EQ(controller.AddFromFolder().outcome, AddOutcome::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(z.mp3)", "002-(cover.jpg)", "003-(a.WMA)"}));
    fs.files["H:\\a.doc"] = "";
    prompts.folderAnswer = "H:\\";
    EXPECT_EQ(controller.AddFromFolder().outcome, AddOutcome::Refused);
    EXPECT_EQ(controller.Queue().Count(), 3);
}

TEST(IsRegularPath, AbsoluteWindowsPathsWithoutForbiddenCharacters) {
    for (const char* path : {"C:\\音乐\\a.mp3", "d:\\", "\\\\server\\share\\a.mp3", "Z:\\"}) {
        EXPECT_TRUE(IsRegularPath(path)) << path;
    }
    for (const char* path : {"", "a.mp3", "C:a.mp3", "\\a.mp3", "\\\\\\a", "1:\\a", "C:\\a*b", "C:\\a?", "C:\\a\"b",
                             "C:\\a<b>", "C:\\a|b", "C:\\a:b", "C:\\a\tb", "\\\\", "[:\\a", "@:\\a"}) {
        EXPECT_FALSE(IsRegularPath(path)) << path;
    }
}

TEST_F(QueueControllerTest, DropsAndPendingPaths) {
    Open({"C:\\m", "a.mp3", "b.mp3"});
    fs.files["C:\\in\\x.mp3"] = "";
    fs.files["K:\\b.mid"] = "";
    EXPECT_EQ(controller.AddDropped({"C:\\in\\x.mp3", "x.mp3"}).outcome, AddOutcome::Refused);  // one bad path
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"拖放文件里含有不规则路径，请重新拖放。", "错误"}}));
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
    EXPECT_EQ(controller.Queue().Count(), 2);
}

TEST_F(QueueControllerTest, RemoveAndMoveAnEntry) {
    Open({"D:\\m", "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3"}, 3);
    EXPECT_FALSE(controller.RemoveEntry(3));
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"正在播放的媒体文件不能删除。", "错误"}}));
    EXPECT_TRUE(controller.RemoveEntry(1));
    EXPECT_EQ(view.texts.positionPanel, "正在播放第 2个文件");
    EXPECT_EQ(view.selected, 2);

    prompts.messages.clear();
    for (const char* answer : {"0", "5", "2.0", "３", "99999999999999999999"}) {
        prompts.textAnswer = answer;
        EXPECT_FALSE(controller.MoveEntry(1)) << answer;
    }
    EXPECT_EQ(prompts.messages, std::vector<Message>(5, {"你输入的范围不正确！", "错误"}));
    prompts.textAnswer = " 4 ";
    EXPECT_TRUE(controller.MoveEntry(1));
    EXPECT_EQ(prompts.questions.back(), (Message{"你想把001-(b.mp3) 的位置移动到哪里？\r\n范围:1～4", "移动位置"}));
    EXPECT_EQ(view.lines, (Lines{"001-(c.mp3)", "002-(d.mp3)", "003-(e.mp3)", "004-(b.mp3)"}));
    EXPECT_TRUE(view.played.empty());
}

TEST_F(QueueControllerTest, SearchPlaysTheNextMatchBelowThePlayingEntry) {
    EXPECT_FALSE(controller.FindFromCurrent());
    EXPECT_TRUE(prompts.questions.empty());
    prompts.messages.clear();
    Open({"C:\\m", "Love a.mp3", "b.mp3", "love c.mp3", "LOVE d.mp3"}, 2);
    prompts.textAnswer = "love";
    EXPECT_TRUE(controller.FindFromCurrent());
    EXPECT_TRUE(controller.FindFromCurrent());  // goes on from the entry found
    EXPECT_EQ(view.played, (Lines{"C:\\m\\love c.mp3", "C:\\m\\LOVE d.mp3"}));
    EXPECT_FALSE(controller.FindFromCurrent());  // never wraps round to the top
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"从当前位置向下没有找到名字里含有“love”的媒体文件。", "查找媒体"}}));
    EXPECT_EQ(controller.Queue().Current(), 4);
}

}  // namespace
}  // namespace lumora
