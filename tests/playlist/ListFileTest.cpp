#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ports/TextCodec.h"
#include "playlist/DefaultList.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

using test::Message;
using Lines = std::vector<std::string>;

// Counts whole reads (the fake reads parts through ReadFile too) and the largest part asked for.
class ReadCountingFileSystem : public test::FakeFileSystem {
public:
    FileRead ReadFile(const std::string& path) override {
        wholeReads += inPart ? 0 : 1;
        return FakeFileSystem::ReadFile(path);
    }
    FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) override {
        largestPart = std::max(largestPart, maxBytes);
        inPart = true;
        FileRead part = FakeFileSystem::ReadFilePart(path, offset, maxBytes);
        inPart = false;
        return part;
    }
    int wholeReads = 0;
    size_t largestPart = 0;
    bool inPart = false;
};

std::string Gbk(std::string_view utf8) { return Utf8ToCp936(utf8).value(); }

const std::string kMain(ListHeader(ListKind::Main));

std::string ListBytes(std::string_view header, std::string_view counts, std::string_view files) {
    return Gbk(header) + "\r\n" + Gbk(counts) + "\r\n" + Gbk(files) + "\r\n";
}

TEST(ListFileCodec, EncodesInCp936WithCrLfAndReadsBack) {
    EXPECT_EQ(EncodeListFile(ListKind::Library, true, "D:\\音乐", {"晴天.mp3", "b.wma"}),
              ListBytes("这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。", "2*1",
                        "D:\\音乐*晴天.mp3*b.wma"));
    const ListFileRead back = ParseListFile(EncodeListFile(ListKind::Editor, false, "E:\\", {"a.mp3"}));
    EXPECT_EQ(back.list, (ListFileData{std::string(ListHeader(ListKind::Editor)), "1", "0", "E:\\", {"a.mp3"}}));
    // Line 3's names win over the count; any line end reads; empty pieces are skipped.
    const ListFileRead read = ParseListFile(Gbk(kMain) + "\n 7 * 1 \rD:\\m*a.mp3**b.mp3*\r\nextra");
    ASSERT_EQ(read.status, ListReadStatus::Ok);
    EXPECT_EQ(read.list, (ListFileData{kMain, "7", "1", "D:\\m", {"a.mp3", "b.mp3"}}));
    // Nothing is written that could not be read back.
    EXPECT_EQ(EncodeListFile(ListKind::Main, true, "D:\\m", {"a.mp3", "笑\xF0\x9F\x98\x80.mp3"}), "");
    EXPECT_EQ(EncodeListFile(ListKind::Main, true, "D:\\m", {"a*b.mp3"}), "");
    EXPECT_EQ(FirstUnstorableText("D:\\m", {"a.mp3", "笑\xF0\x9F\x98\x80.mp3"}), "笑\xF0\x9F\x98\x80.mp3");
    for (const char* header : {"x-y-测试版-z", "a-b-正式版"}) EXPECT_TRUE(HasEditionMarker(header)) << header;
    for (const char* header : {"a-正式版", "a-b-c-正式版", "a-b-正式版x", ""}) EXPECT_FALSE(HasEditionMarker(header)) << header;
}

TEST(ListFileCodec, RefusesWhatIsNotOneOfOurListsWhole) {
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
    ReadCountingFileSystem fs;
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
    EXPECT_EQ(progress.events,
              (Lines{"open 加载列表文件", "status 正在过滤文件...", "counters 过滤掉N/A个文件 还剩N/A个文件",
                     "dropped 002-(notes.txt)", "dropped 003-(gone.wma)", "dropped 004-(fake.mp3)",
                     "status 文件过滤完毕。", "counters 过滤掉 3个文件 还剩 3个文件", "close"}));
    EXPECT_EQ(fs.wholeReads, 0);
    EXPECT_LE(fs.largestPart, kMpegProbeBytes);
    fs.files["E:\\x.wma"] = "";
    EXPECT_EQ(FilterNames(fs, "E:\\", {"x.wma"}).kept, Lines{"x.wma"});  // no second "\" after a drive root
    progress.allowed = progress.asked + 1;
    EXPECT_TRUE(FilterNames(fs, "D:\\m", {"a.mp3", "a.mp3", "a.mp3"}, &progress, "t").cancelled);
}

class ListFileControllerTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"D:\\m\\a.wma", "D:\\m\\b.wma", "D:\\m\\c.wma", "G:\\a.wma", "G:\\b.wma"}) {
            fs.files[name] = "";
        }
    }
    void OpenQueue(const std::string& folder, const Lines& names) {
        std::vector<MediaEntry> entries;
        for (const auto& n : names) entries.push_back({JoinPath(folder, n), n});
        ASSERT_TRUE(queue.Queue().Replace(folder, entries));
    }
    Lines Saved() { return ParseListFile(fs.files.at(kDefaultPath)).list.names; }

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

TEST_F(ListFileControllerTest, SavesTheQueueFilteredOrAsItStands) {
    OpenQueue("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    prompts.saveAnswer = "C:\\lists\\我的";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at("C:\\lists\\我的.QLB"), ListBytes(kMain, "2*1", "D:\\m*a.wma*b.wma"));
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"列表文件已保存完毕，路径为 C:\\lists\\我的.QLB",
                                                       std::string(kFileSavedTitle)}}));
    settings.SetText(opt::kFilterLists, "0");  // not filtered: every name as it stands, flag "0"
    prompts.saveAnswer = "C:\\lists\\all.qlb";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at("C:\\lists\\all.qlb"), ListBytes(kMain, "3*0", "D:\\m*a.wma*gone.wma*b.wma"));
    EXPECT_EQ(WithListExtension("C:\\c.txt"), "C:\\c.txt.QLB");
}

TEST_F(ListFileControllerTest, SaveWritesNothingWhenFewerThanTwoRemainOrTheWriteFails) {
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);  // empty queue
    OpenQueue("D:\\m", {"a.wma", "x.txt"});
    prompts.saveAnswer = "C:\\l";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
    EXPECT_EQ(prompts.messages.back().title, kNothingLeftTitle);
    fs.failWrites = true;
    OpenQueue("D:\\m", {"a.wma", "b.wma"});
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
    EXPECT_EQ(prompts.messages.front(), prompts.messages.back());  // the same error, empty queue or failed write
    EXPECT_EQ(fs.files.count("C:\\l.QLB"), 0u);
}

// A fixed disk saves and loads without a question; the other known kinds ask first, unknown kinds refuse.
TEST_F(ListFileControllerTest, DriveKindsAskOrRefuse) {
    fs.files["C:\\g.qlb"] = ListBytes(kMain, "2*1", "G:\\*a.wma*b.wma");
    const std::pair<DriveKind, const char*> rows[] = {{DriveKind::Fixed, ""},
                                                      {DriveKind::Removable, "可移动的驱动器"},
                                                      {DriveKind::RamDisk, "RAM驱动器"},
                                                      {static_cast<DriveKind>(7), "无法识别"}};
    for (const auto& [kind, named] : rows) {
        SCOPED_TRACE(named);
        fs.drives['G'] = kind;
        fs.files.erase("C:\\saved.QLB");
        OpenQueue("G:\\", {"a.wma", "b.wma"});
        prompts = {};
        prompts.yesNoAnswer = false;  // "no" stops both before anything happens
        prompts.saveAnswer = "C:\\saved";
        const SaveOutcome saved = lists.SaveListFile();
        queue.Queue().Clear();
        const AddOutcome loaded = lists.LoadListFile("C:\\g.qlb");
        const bool fixed = *named == '\0', unknown = std::string(named) == "无法识别";
        EXPECT_EQ(saved, fixed ? SaveOutcome::Saved : unknown ? SaveOutcome::Refused : SaveOutcome::Cancelled);
        EXPECT_EQ(loaded, fixed ? AddOutcome::Playing : unknown ? AddOutcome::Refused : AddOutcome::Cancelled);
        EXPECT_EQ(queue.Queue().Count(), fixed ? 2 : 0);
        const std::vector<Message>& asked = unknown ? prompts.messages : prompts.questions;
        ASSERT_EQ(asked.size(), fixed ? 0u : 2u);
        for (const Message& m : asked) {
            EXPECT_NE(m.text.find("G盘"), std::string::npos) << m.text;
            EXPECT_NE(m.text.find(named), std::string::npos) << m.text;
        }
    }
    fs.drives['G'] = DriveKind::CdRom;
    prompts = {};
    EXPECT_EQ(lists.LoadListFile("C:\\g.qlb"), AddOutcome::Playing);  // "yes" loads
}

TEST_F(ListFileControllerTest, LoadReplacesTheQueueAndOffersToFilterAnUnfilteredList) {
    fs.files["C:\\l.qlb"] = ListBytes(kMain, "9*1", "D:\\m*c.wma*gone.wma*a.wma");
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);  // fixed disk, filtered: names as they stand
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(gone.wma)", "003-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\m\\c.wma"});
    EXPECT_TRUE(prompts.questions.empty());
    fs.files["C:\\l.qlb"] = ListBytes(kMain, "3*0", "D:\\m*c.wma*gone.wma*a.wma");
    for (const auto& [answer, skipOption, shown, asked] :
         {std::tuple{true, "0", 2u, 1u}, {false, "0", 3u, 1u}, {true, "1", 3u, 0u}}) {
        prompts = {};
        prompts.yesNoAnswer = answer;
        settings.SetText(opt::kSkipListFilterQuestion, skipOption);
        EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
        EXPECT_EQ(view.lines.size(), shown);
        EXPECT_EQ(prompts.questions.size(), asked);
    }
}

TEST_F(ListFileControllerTest, RefusedLoadsKeepTheQueue) {
    OpenQueue("D:\\m", {"b.wma", "c.wma"});
    fs.drives['K'] = DriveKind::CdRom;  // filtered after the drive question
    fs.files["K:\\only.wma"] = "";
    fs.files["C:\\one.qlb"] = ListBytes(kMain, "2*1", "K:\\*only.wma*gone.wma");
    fs.files["C:\\bad.qlb"] = ListBytes("这是ZEV-正式版-的", "2*1", "D:\\m*a.wma*b.wma");
    for (const char* path : {"C:\\one.qlb", "C:\\bad.qlb", "C:\\missing.qlb"}) {
        EXPECT_EQ(lists.LoadListFile(path), AddOutcome::Refused) << path;
    }
    ASSERT_EQ(prompts.messages.size(), 3u);
    EXPECT_EQ(prompts.messages[0].title, "“过滤”错误");
    EXPECT_EQ(prompts.messages[1], (Message{"这不是“测试版”或者“正式版”的的列表文件，请重新选择。", "错误"}));
    EXPECT_EQ(prompts.messages[2], (Message{"无法读取列表文件：C:\\missing.qlb", "错误"}));
    EXPECT_EQ(queue.Queue().EntryAt(1)->name, "b.wma");
    EXPECT_EQ(queue.Queue().Count(), 2);
    EXPECT_TRUE(view.played.empty());
}

TEST_F(ListFileControllerTest, DefaultListSavesTheQueueAlwaysFilteredOnlyFromFixedDisks) {
    settings.SetText(opt::kFilterLists, "0");  // the filter option does not apply to the default list
    OpenQueue("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at(kDefaultPath), EncodeListFile(ListKind::Default, true, "D:\\m", {"a.wma", "b.wma"}));
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{"列表默认文件已保存完毕。", std::string(kFileSavedTitle)}}));
    EXPECT_EQ(progress.events.front(), "open 保存默认列表文件");

    fs.drives['N'] = DriveKind::Network;
    OpenQueue("N:\\share", {"a.wma", "b.wma"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_NE(prompts.messages.back().text.find("N盘，不是固定硬盘"), std::string::npos);
    OpenQueue("D:\\m", {"a.wma", "x.txt"});
    EXPECT_EQ(defaults.SaveDefaultList(), SaveOutcome::Refused);
    EXPECT_EQ(prompts.messages.back().title, kNothingLeftTitle);
    EXPECT_EQ(Saved(), (Lines{"a.wma", "b.wma"}));
}

TEST_F(ListFileControllerTest, DefaultListStartUpPlaysAtOnceOrWaits) {
    fs.files[kDefaultPath] = EncodeListFile(ListKind::Default, true, "D:\\m", {"c.wma", "gone.wma", "a.wma"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\m\\c.wma"});
    view = {};
    settings.SetText(opt::kDefaultListPlays, "0");
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Waiting);
    EXPECT_EQ(view.lines.size(), 2u);
    EXPECT_TRUE(view.played.empty());
    EXPECT_TRUE(progress.events.empty());  // no window at start-up
}

TEST_F(ListFileControllerTest, DefaultListDamagedListIsReportedAndDeletedMissingOneIsNot) {
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::None);
    fs.files[kDefaultPath] = EncodeListFile(ListKind::Default, true, "D:\\m", {"gone.wma", "x.txt"});
    EXPECT_EQ(defaults.LoadDefaultList(), DefaultListLoad::Damaged);
    EXPECT_EQ(fs.files.count(kDefaultPath), 0u);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{
        "默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。", "默认列表文件错误"}}));
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::NotSet);
    fs.files[kDefaultPath] = "x";
    fs.failRemoves = true;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Failed);
    fs.failRemoves = false;
    EXPECT_EQ(defaults.DeleteDefaultList(), DefaultListDelete::Deleted);
}

TEST_F(ListFileControllerTest, DefaultListExitSavesQuietlyOnlyWhenAskedTo) {
    OpenQueue("D:\\m", {"a.wma", "b.wma"});
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(fs.files.count(kDefaultPath), 0u);
    settings.SetText(opt::kSaveListOnExit, "1");
    EXPECT_TRUE(defaults.SaveDefaultListOnExit());
    OpenQueue("D:\\m", {"a.wma"});  // cannot make a list: the last one stays
    EXPECT_FALSE(defaults.SaveDefaultListOnExit());
    EXPECT_EQ(Saved(), (Lines{"a.wma", "b.wma"}));
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(progress.events.empty());
}

}  // namespace
}  // namespace lumora
