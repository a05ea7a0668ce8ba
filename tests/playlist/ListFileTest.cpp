#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/DefaultList.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "playlist/MusicLibrary.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using test::Lines;

using test::Gbk;

const std::string kMain(ListHeader(ListKind::Main));

std::string ListBytes(std::string_view header, std::string_view counts, std::string_view files) {
    return Gbk(header) + "\r\n" + Gbk(counts) + "\r\n" + Gbk(files) + "\r\n";
}

TEST(ListFileCodec, ReadsOnlyOneOfOurListsWhole) {
    std::string names1001 = "D:\\m";
    for (int i = 0; i < 1001; ++i) names1001 += "*" + std::to_string(i) + ".mp3";
    const std::pair<std::string, ListReadStatus> cases[] = {
        {Gbk(kMain) + "\r\n2*1\r\n", ListReadStatus::NotAListFile},  // line 3 missing
        {ListBytes(kMain, "0*1", ""), ListReadStatus::NotAListFile},
        {Gbk(kMain) + "\r\n2*1\r\nD:\\m*\x81\x20.mp3\r\n", ListReadStatus::BadText},
        {Gbk(kMain) + "\r\n2\x81*1\r\nD:\\m*a.mp3\r\n", ListReadStatus::BadText},
        {ListBytes(kMain, "1*1", "D:\\m*" + std::string(256, 'a')), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*" + std::string(255, 'a')), ListReadStatus::Ok},
        {ListBytes(kMain, "1*1", "D:\\m?*a.mp3"), ListReadStatus::BadName},
        {ListBytes(kMain, "1001*1", names1001), ListReadStatus::TooManyNames},
        {ListBytes(kMain, "1*1", "D:\\m*" + std::string(kMaxListFileBytes, 'a')), ListReadStatus::TooLarge},
    };
    for (const auto& [bytes, status] : cases) EXPECT_EQ(ParseListFile(bytes).status, status) << bytes.substr(0, 120);
    // What is read: line 3's names win over the count; any line end reads; empty pieces are skipped.
    const ListFileRead read = ParseListFile(Gbk(kMain) + "\n 7 * 1 \rD:\\m*a.mp3**b.mp3*\r\nextra");
    EXPECT_EQ(read.list, (ListFileData{kMain, "7", "1", "D:\\m", {"a.mp3", "b.mp3"}}));
    for (const char* name : {"..\\..\\boot.ini", "sub/a.mp3", "..", "C:a.mp3", "a\x01.mp3"}) {
        EXPECT_EQ(ParseListFile(ListBytes(kMain, "1*1", std::string("D:\\m*") + name)).status, ListReadStatus::BadName);
    }
    test::FakeFileSystem fs;
    EXPECT_EQ(ReadListFile(fs, "C:\\none.qlb").status, ListReadStatus::Unreadable);
    fs.files["C:\\big.qlb"] = cases[std::size(cases) - 1].first;
    EXPECT_EQ(ReadListFile(fs, "C:\\big.qlb").status, ListReadStatus::TooLarge);
}

// Existing media files stay, and MPEG audio only when it holds frames; only the start of a file is read.
TEST(FilterNames, KeepsExistingMediaAndMpegFilesThatHoldFrames) {
    test::FakeFileSystem fs;
    test::RecordingProgress progress;
    fs.files["D:\\m\\a.mp3"] = test::MpegFrames(8);
    fs.files["D:\\m\\notes.txt"] = "";
    fs.files["D:\\m\\fake.mp3"] = std::string(5000, 'x');
    fs.files["D:\\m\\art.MP3"] = "ID3\x03" + std::string("\0\0\0\x02\x38\x40", 6) + std::string(40000, '\0') +
                                 test::MpegFrames(8);  // a tag that runs past the first read
    fs.files["D:\\m\\short.mp2"] = test::MpegFrames(1);  // one frame running to the end
    const Lines names{"a.mp3", "notes.txt", "gone.wma", "fake.mp3", "art.MP3", "short.mp2"};
    const FilterResult result = FilterNames(fs, "D:\\m", names, &progress, "加载列表文件");
    EXPECT_EQ(result.kept, (Lines{"a.mp3", "art.MP3", "short.mp2"}));
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(Lines(progress.events.begin() + 3, progress.events.end() - 1),
              (Lines{"dropped 002-(notes.txt)", "dropped 003-(gone.wma)", "dropped 004-(fake.mp3)",
                     "status 文件过滤完毕。", "counters 过滤掉 3个文件 还剩 3个文件"}));
    progress.allowed = progress.asked + 1;
    EXPECT_TRUE(FilterNames(fs, "D:\\m", {"a.mp3", "a.mp3", "a.mp3"}, &progress, "t").cancelled);
}

class ListFileControllerTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"D:\\m\\a.wma", "D:\\m\\b.wma", "D:\\m\\c.wma"}) fs.files[name] = "";
    }
    void OpenQueue(const std::string& folder, const Lines& names) {
        ASSERT_TRUE(queue.Queue().Replace(folder, test::Entries(folder, names)));
    }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    const std::string kDefaultPath = fs.userDataFolder + "\\" + std::string(kDefaultListFileName);
    SettingsStore settings;
    test::RecordingQueueView view;
    test::RecordingProgress progress;
    QueueController queue{prompts, fs, view, view};
    ListFileController lists{prompts, fs, settings, queue, progress};
    DefaultList defaults{prompts, fs, settings, queue, lists, progress};
};

// A list holds one folder: the user hears how many entries of other folders stay out before anything is written.
TEST_F(ListFileControllerTest, SavesTheQueueFilteredOrAsItStandsAskingBeforeLeavingOutOtherFolders) {
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);  // empty queue
    OpenQueue("D:\\m", {"a.wma", "x.txt"});
    prompts.saveAnswer = "C:\\lists\\我的";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);  // fewer than two remain
    EXPECT_EQ(prompts.messages.back().title, kNothingLeftTitle);
    fs.files["E:\\x\\o.wma"] = "";
    std::vector<MediaEntry> mixed = test::Entries("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    mixed.insert(mixed.begin() + 1, {"E:\\x\\o.wma", "o.wma"});
    ASSERT_TRUE(queue.Queue().Replace("D:\\m", mixed));
    prompts.yesNoAnswer = false;
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Cancelled);
    EXPECT_EQ(prompts.questions.back().text, OtherFolderQuestionText(1, "D:\\m"));
    EXPECT_EQ(fs.files.count("C:\\lists\\我的.QLB"), 0u);
    prompts.yesNoAnswer = true;
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at("C:\\lists\\我的.QLB"), ListBytes(kMain, "2*1", "D:\\m*a.wma*b.wma"));
    EXPECT_NE(prompts.messages.back().text.find("C:\\lists\\我的.QLB"), std::string::npos);
    settings.SetText(opt::kFilterLists, "0");  // not filtered: every name as it stands, flag "0"
    OpenQueue("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    prompts.saveAnswer = "C:\\lists\\all.qlb";
    const std::size_t asked = prompts.questions.size();
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(prompts.questions.size(), asked);  // one folder: nothing to ask
    EXPECT_EQ(fs.files.at("C:\\lists\\all.qlb"), ListBytes(kMain, "3*0", "D:\\m*a.wma*gone.wma*b.wma"));
    EXPECT_EQ(WithListExtension("C:\\c.txt"), "C:\\c.txt.QLB");
    fs.failWrites = true;
    prompts.saveAnswer = "C:\\l";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
    EXPECT_EQ(fs.files.count("C:\\l.QLB"), 0u);
}

TEST_F(ListFileControllerTest, LoadReplacesTheQueueOffersToFilterAnUnfilteredListAndRefusalsKeepIt) {
    fs.files["C:\\l.qlb"] = ListBytes(kMain, "9*1", "D:\\m*c.wma*gone.wma*a.wma");
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);  // fixed disk, filtered: names as they stand
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(gone.wma)", "003-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\m\\c.wma"});
    fs.files["C:\\one.qlb"] = ListBytes(kMain, "2*0", "D:\\m*gone.wma*gone2.wma");  // nothing left once filtered
    fs.files["C:\\bad.qlb"] = ListBytes("这是ZEV-正式版-的", "2*1", "D:\\m*a.wma*b.wma");
    for (const char* path : {"C:\\one.qlb", "C:\\bad.qlb", "C:\\missing.qlb"}) {
        EXPECT_EQ(lists.LoadListFile(path), AddOutcome::Refused) << path;
    }
    ASSERT_EQ(prompts.messages.size(), 3u);
    EXPECT_NE(prompts.messages[2].text.find("C:\\missing.qlb"), std::string::npos);
    EXPECT_EQ(std::pair(queue.Queue().Count(), view.played.size()), std::pair(3, std::size_t{1}));  // all as it was
    fs.files["C:\\l.qlb"] = ListBytes(kMain, "3*0", "D:\\m*c.wma*gone.wma*a.wma");
    for (const auto& [answer, skipOption, shownAndAsked] : {std::tuple{true, "0", 21u}, {false, "0", 31u}, {true, "1", 30u}}) {
        prompts = {};
        prompts.yesNoAnswer = answer;
        settings.SetText(opt::kSkipListFilterQuestion, skipOption);
        EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
        EXPECT_EQ(view.lines.size() * 10 + prompts.questions.size(), shownAndAsked);
    }
}

TEST_F(ListFileControllerTest, DefaultListSavesTheQueueAlwaysFilteredOnlyFromFixedDisks) {
    settings.SetText(opt::kFilterLists, "0");  // the filter option does not apply to the default list
    OpenQueue("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at(kDefaultPath), EncodeListFile(ListKind::Default, true, "D:\\m", {"a.wma", "b.wma"}));
    EXPECT_EQ(prompts.messages.at(0).title, kFileSavedTitle);
    fs.drives['N'] = DriveKind::Network;
    OpenQueue("N:\\share", {"a.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    OpenQueue("D:\\m", {"a.wma", "x.txt"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_EQ(prompts.messages.back().title, kNothingLeftTitle);
    EXPECT_EQ(ParseListFile(fs.files.at(kDefaultPath)).list.names, (Lines{"a.wma", "b.wma"}));
    fs.files.erase(kDefaultPath);
    OpenQueue("D:\\m", {"a.wma", "b.wma"});
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());  // "L56" off: nothing saved on exit
    settings.SetText(opt::kSaveListOnExit, "1");
    EXPECT_TRUE(defaults.SaveDefaultListOnExit() && fs.files.count(kDefaultPath));
    fs.files[kDefaultPath] = EncodeListFile(ListKind::Default, true, "D:\\m", {"gone.wma", "x.txt"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Damaged);  // reported and deleted
    EXPECT_EQ(fs.files.count(kDefaultPath), 0u);
}

const std::string kSubKey = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
const std::string kLib = "D:\\库\\";
const std::string kList = kLib + std::string(kLibraryListName);

// The library folder is D:\库; the queue holds three files of E:\in, the first playing.
class MusicLibraryTest : public ListFileControllerTest {
protected:
    void SetUp() override {
        fs.files = {{"E:\\in\\a.mp3", "aaaa"}, {"E:\\in\\b.wma", "bb"}, {"E:\\in\\c.wma", "ccc"}};
        fs.folders.push_back("D:\\库");
        registry.Put(RegistryRoot::CurrentUser, kSubKey, std::string(kLibraryValueName), {RegistryValue::Kind::Text, kLib});
        OpenQueue("E:\\in", {"a.mp3", "b.wma", "c.wma"});
        settings.SetText(opt::kLibraryRenameBox, "0");
    }
    Lines Listed() { return ParseListFile(fs.files.at(kList)).list.names; }

    test::FakeRegistry registry;
    test::RecordingCopyView copyLog;
    MusicLibrary library{prompts, fs, registry, settings, queue, lists, copyLog};
};

TEST_F(MusicLibraryTest, FolderMustBeOnAFixedDiskAndIsKeptWithAFinalBackslash) {
    registry.keys.clear();
    fs.drives['G'] = DriveKind::Removable;
    fs.folders.push_back("C:\\新库");
    prompts.folderScript = {"G:\\music", "C:\\新库"};
    EXPECT_TRUE(library.ChangeLibraryFolder());  // after "yes"
    EXPECT_EQ(prompts.messages.size(), 1u);
    const RegistryValue* value = registry.Find(RegistryRoot::CurrentUser, kSubKey, std::string(kLibraryValueName));
    EXPECT_EQ(value ? value->data : "", "C:\\新库\\");
}

TEST_F(MusicLibraryTest, AddsThePlayingFileToANewListThenKnowsItIsThere) {
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Added);
    EXPECT_EQ(fs.files.at(kLib + "a.mp3"), "aaaa");
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AlreadyThere);
    fs.files[kLib + "b.wma"] = "bb";  // same name and length, but not listed
    ASSERT_TRUE(queue.Queue().SetCurrent(2));
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedExisting);
    EXPECT_EQ(fs.files.at(kList), EncodeListFile(ListKind::Library, true, kLib, {"a.mp3", "b.wma"}));
    // A damaged list (another folder) is made again; the same folder in another case without the "\" is not.
    fs.files[kList] = EncodeListFile(ListKind::Library, true, "C:\\elsewhere\\", {"z.mp3"});
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedExisting);
    fs.files[kList] = EncodeListFile(ListKind::Library, true, "d:\\库", {"b.wma"});
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AlreadyThere);
    registry.keys.clear();
    prompts.yesNoAnswer = false;
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::NoLibrary);
}

TEST_F(MusicLibraryTest, EveryNameCanBeAskedWithTheTitleProposed) {
    settings.SetText(opt::kLibraryRenameBox, "1");
    settings.SetText(opt::kLibraryNameIsTitle, "1");
    fs.files["E:\\in\\a.mp3"] = std::string(5000, 'x') + "TAG" + Gbk("晴天") + std::string(121, '\0');
    prompts.textScript = {std::nullopt, "..\\..\\Windows\\evil", "晴天"};
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::SkippedByUser);
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Failed);
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedRenamed);
    EXPECT_EQ(Listed(), Lines{"晴天.mp3"});
    for (const auto& [path, bytes] : fs.files) EXPECT_EQ(path.find("evil"), std::string::npos) << path;
}

TEST_F(MusicLibraryTest, AddAllLogsEveryFileWithItsMarker) {
    fs.files["E:\\in\\d.wma"] = "d";
    fs.files[kList] = EncodeListFile(ListKind::Library, true, kLib, {"b.wma"});
    fs.files.insert({{kLib + "b.wma", "bb"}, {kLib + "c.wma", "other"}, {kLib + "d.wma", "d"}});
    OpenQueue("E:\\in", {"a.mp3", "b.wma", "gone.wma", "c.wma", "d.wma"});
    prompts.yesNoAnswer = false;
    EXPECT_TRUE(library.AddAllToLibrary());
    EXPECT_EQ(copyLog.lines,
              (Lines{"<==（重新建立“我的音乐库”文件列表）==>", "a.mp3 <==（文件成功加入）==> ",
                     "b.wma <==（文件已存在）==> ", "gone.wma <==（文件不存在）==> ",
                     "c.wma <==（用户中止复制该文件）==> ", "d.wma <==（文件已存在，并且成功加入）==> ", "close"}));
    EXPECT_EQ(Listed(), (Lines{"b.wma", "a.mp3", "d.wma"}));
}

TEST_F(MusicLibraryTest, AddAllCancelKeepsWhatWasCopied) {
    copyLog.allowed = 2;
    fs.files[kLib + "b.wma"] = "other";
    prompts.textAnswer = "b2";
    EXPECT_TRUE(library.AddAllToLibrary());
    EXPECT_EQ(copyLog.lines,
              (Lines{"<==（建立“我的音乐库”文件列表）==>", "a.mp3 <==（文件成功加入）==> ",
                     "b.wma <==（文件重新命名，并且成功加入）==> ", "c.wma <==（用户取消复制）==> ", "close"}));
    EXPECT_EQ(Listed(), (Lines{"a.mp3", "b2.wma"}));
}

}  // namespace
}  // namespace lumora
