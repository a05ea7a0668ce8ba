#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/TextCodec.h"
#include "playlist/DefaultList.h"
#include "playlist/ListFile.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::Message;
using Lines = std::vector<std::string>;
using Messages = std::vector<Message>;

class TitleProgress : public FilterProgress {
public:
    void Open(std::string_view title) override { titles.emplace_back(title); }
    void ShowStatus(std::string_view) override {}
    void ShowCounters(std::string_view, std::string_view) override {}
    void AddDroppedLine(std::string_view) override {}
    bool KeepGoing() override { return true; }
    void Close() override {}
    Lines titles;
};

class RecordingView : public QueueView, public QueuePlayer {
public:
    void ShowLines(const std::vector<std::string>& shown) override { lines = shown; }
    void ShowTexts(const QueueTexts&) override {}
    void SelectLine(int) override {}
    void Play(const std::string& path) override { played.push_back(path); }
    Lines lines;
    Lines played;
};

const std::string kPath = "C:\\Users\\u\\AppData\\Roaming\\Lumora\\zvp3mr.qlb";
const Message kDamaged{"默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。",
                       "默认列表文件错误"};

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

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    SettingsStore settings;
    RecordingView view;
    TitleProgress progress;
    QueueController queue{prompts, fs, view, view};
    ListFileController lists{prompts, fs, settings, queue, progress};
    DefaultList defaults{prompts, fs, settings, queue, lists, progress};
};

TEST_F(DefaultListTest, SavesTheQueueAlwaysFilteredInTheUserDataFolder) {
    settings.SetText("L13", "0");  // the filter option does not apply to the default list
    OpenQueue("D:\\歌", {"a.wma", "gone.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Saved);
    EXPECT_EQ(
        Cp936ToUtf8(fs.files.at(kPath)),
        "这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。\r\n2*1\r\nD:\\歌*a.wma*b.wma\r\n");
    EXPECT_EQ(prompts.messages, (Messages{{"列表默认文件已保存完毕。", "文件保存完毕"}}));
    EXPECT_EQ(progress.titles, Lines{"保存默认列表文件"});
}

TEST_F(DefaultListTest, RefusesQueuesOffFixedDisksAndSingleFilesWithoutTouchingTheOldList) {
    fs.files[kPath] = "old";
    fs.drives['K'] = DriveKind::CdRom;
    fs.drives['N'] = DriveKind::Network;
    for (const char* folder : {"K:\\", "N:\\share"}) {
        OpenQueue(folder, {"a.wma", "b.wma"});
        EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    }
    OpenQueue("D:\\歌", {"a.wma", "x.txt"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_EQ(
        prompts.messages,
        (Messages{{"当前打开的文件在K盘，不是固定硬盘。因此不能制作默认列表文件，请把文件拷入固定硬盘后在制作默认列表"
                   "文件。",
                   "驱动器对话框"},
                  {"当前打开的文件在N盘，不是固定硬盘。因此不能制作默认列表文件，请把文件拷入固定硬盘后在制作默认列表"
                   "文件。",
                   "驱动器对话框"},
                  {"没有一个文件剩下来，原因有三个：1、只选择一个文件，程序不会保存只有一个文件的默认列表文件。2、没有"
                   "一个是媒体文件，程序不会保存没有文件的默认列表文件。3、文件根本不存在。单击“确定”退出",
                   "没有文件剩下"}}));
    EXPECT_EQ(fs.files.at(kPath), "old");
}

TEST_F(DefaultListTest, StartUpPlaysAtOnceOrWaitsAsL15Says) {
    fs.files[kPath] = EncodeListFile(ListKind::Default, true, "D:\\歌", {"c.wma", "gone.wma", "a.wma"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\歌\\c.wma"});

    view = {};
    settings.SetText("L15", "0");
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Waiting);
    EXPECT_EQ(view.lines.size(), 2u);
    EXPECT_TRUE(view.played.empty());
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(progress.titles.empty());  // no window at start-up
}

TEST_F(DefaultListTest, DamagedListIsReportedAndDeletedMissingOneIsNot) {
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::None);
    for (const std::string& bytes :
         {std::string("garbage"), EncodeListFile(ListKind::Default, true, "D:\\歌", {"gone.wma", "x.txt"})}) {
        fs.files[kPath] = bytes;
        EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Damaged);
        EXPECT_EQ(fs.files.count(kPath), 0u);
    }
    EXPECT_EQ(prompts.messages, (Messages{kDamaged, kDamaged}));
    EXPECT_EQ(queue.Queue().Count(), 0);
}

TEST_F(DefaultListTest, DeleteHasThreeOutcomes) {
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::NotSet);
    fs.files[kPath] = "x";
    fs.failRemoves = true;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Failed);
    fs.failRemoves = false;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Deleted);
    EXPECT_EQ(prompts.messages, (Messages{{"对不起！您还没有设置默认列表文件。", "没有设置"},
                                          {"默认列表文件删除失败。", "删除失败"},
                                          {"默认列表文件已删除。", "删除完毕"}}));
    EXPECT_EQ(fs.files.count(kPath), 0u);
}

TEST_F(DefaultListTest, ExitSavesQuietlyOnlyWhenL56IsOn) {
    OpenQueue("D:\\歌", {"a.wma", "b.wma"});
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(fs.files.count(kPath), 0u);
    settings.SetText("L56", "1");
    EXPECT_TRUE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(ParseListFile(fs.files.at(kPath)).list.names, (Lines{"a.wma", "b.wma"}));
    OpenQueue("D:\\歌", {"a.wma"});  // cannot make a list: the last one stays
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(ParseListFile(fs.files.at(kPath)).list.names.size(), 2u);
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(progress.titles.empty());
}

}  // namespace
}  // namespace lumora
