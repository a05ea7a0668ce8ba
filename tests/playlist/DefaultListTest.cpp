#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/DefaultList.h"
#include "playlist/ListFile.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

class DefaultListTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"a.wma", "b.wma", "c.wma"}) fs.files[std::string("D:\\歌\\") + name] = "";
    }
    void OpenQueue(const std::string& folder, const Lines& names) {
        std::vector<MediaEntry> entries;
        for (const auto& n : names) entries.push_back({JoinPath(folder, n), n});
        ASSERT_TRUE(queue.Queue().Replace(folder, entries));
    }
    Lines Saved() { return ParseListFile(fs.files.at(kPath)).list.names; }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    const std::string kPath = fs.userDataFolder + "\\" + std::string(kDefaultListFileName);
    SettingsStore settings;
    test::RecordingQueueView view;
    test::RecordingProgress progress;
    QueueController queue{prompts, fs, view};
    ListFileController lists{prompts, fs, settings, queue, view, progress};
    DefaultList defaults{prompts, fs, settings, queue, lists, progress};
};

TEST_F(DefaultListTest, SavesTheQueueAlwaysFilteredOnlyFromFixedDisks) {
    settings.SetText(kFilterOption, "0");  // the filter option does not apply to the default list
    OpenQueue("D:\\歌", {"a.wma", "gone.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at(kPath), EncodeListFile(ListKind::Default, true, "D:\\歌", {"a.wma", "b.wma"}));
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{"列表默认文件已保存完毕。", std::string(kFileSavedTitle)}}));
    EXPECT_EQ(progress.events.front(), "open 保存默认列表文件");

    fs.drives['N'] = DriveKind::Network;
    OpenQueue("N:\\share", {"a.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_NE(prompts.messages.back().text.find("N盘，不是固定硬盘"), std::string::npos);
    OpenQueue("D:\\歌", {"a.wma", "x.txt"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_EQ(prompts.messages.back().title, kNothingLeftTitle);
    EXPECT_EQ(Saved(), (Lines{"a.wma", "b.wma"}));
}

TEST_F(DefaultListTest, StartUpPlaysAtOnceOrWaits) {
    fs.files[kPath] = EncodeListFile(ListKind::Default, true, "D:\\歌", {"c.wma", "gone.wma", "a.wma"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\歌\\c.wma"});
    view = {};
    settings.SetText(kDefaultListPlaysOption, "0");
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Waiting);
    EXPECT_EQ(view.lines.size(), 2u);
    EXPECT_TRUE(view.played.empty());
    EXPECT_TRUE(progress.events.empty());  // no window at start-up
}

TEST_F(DefaultListTest, DamagedListIsReportedAndDeletedMissingOneIsNot) {
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::None);
    fs.files[kPath] = EncodeListFile(ListKind::Default, true, "D:\\歌", {"gone.wma", "x.txt"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Damaged);
    EXPECT_EQ(fs.files.count(kPath), 0u);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{
        "默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。", "默认列表文件错误"}}));
}

TEST_F(DefaultListTest, DeleteHasThreeOutcomes) {
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::NotSet);
    fs.files[kPath] = "x";
    fs.failRemoves = true;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Failed);
    fs.failRemoves = false;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Deleted);
    EXPECT_EQ(fs.files.count(kPath), 0u);
}

TEST_F(DefaultListTest, ExitSavesQuietlyOnlyWhenAskedTo) {
    OpenQueue("D:\\歌", {"a.wma", "b.wma"});
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(fs.files.count(kPath), 0u);
    settings.SetText(kSaveDefaultOnExitOption, "1");
    EXPECT_TRUE(defaults.SaveDefaultListOnExit());
    OpenQueue("D:\\歌", {"a.wma"});  // cannot make a list: the last one stays
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(Saved(), (Lines{"a.wma", "b.wma"}));
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(progress.events.empty());
}

}  // namespace
}  // namespace lumora
