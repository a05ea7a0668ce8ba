#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ports/TextCodec.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

using test::Message;
using Lines = std::vector<std::string>;
using Messages = std::vector<Message>;

class RecordingProgress : public FilterProgress {
public:
    void Open(std::string_view title) override { events.push_back("open " + std::string(title)); }
    void ShowStatus(std::string_view text) override { events.push_back("status " + std::string(text)); }
    void ShowCounters(std::string_view filtered, std::string_view remaining) override {
        events.push_back("counters " + std::string(filtered) + " " + std::string(remaining));
    }
    void AddDroppedLine(std::string_view line) override { events.push_back("dropped " + std::string(line)); }
    bool KeepGoing() override { return ++asked <= allowed; }
    void Close() override { events.push_back("close"); }

    Lines events;
    int asked = 0;
    int allowed = 1 << 30;
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

// Counts what is read, to show that filtering never reads a whole file.
class ReadCountingFileSystem : public test::FakeFileSystem {
public:
    FileRead ReadFile(const std::string& path) override {
        wholeReads += inPart ? 0 : 1;  // the fake reads parts through ReadFile
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

std::string ListBytes(std::string_view header, std::string_view counts, std::string_view files) {
    return Gbk(header) + "\r\n" + Gbk(counts) + "\r\n" + Gbk(files) + "\r\n";
}

// An ID3v2 tag of `size` bytes after its header, as players write them before the audio.
std::string Id3v2(size_t size) {
    std::string tag = "ID3\x03";
    tag += '\0';
    tag += '\0';
    for (int shift = 21; shift >= 0; shift -= 7) tag += static_cast<char>((size >> shift) & 0x7F);
    return tag + std::string(size, '\0');
}

constexpr std::string_view kMain = "这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。";

TEST(ListFileCodec, EncodesEachKindInCp936WithCrLfAndReadsItBack) {
    const std::string bytes = EncodeListFile(ListKind::Library, true, "D:\\音乐", {"晴天.mp3", "b.wma"});
    EXPECT_EQ(bytes, ListBytes("这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。", "2*1",
                               "D:\\音乐*晴天.mp3*b.wma"));
    EXPECT_NE(bytes.find("\xC7\xE7\xCC\xEC"), std::string::npos);  // 晴天 in GBK, not UTF-8
    for (const ListKind kind : {ListKind::Main, ListKind::Editor, ListKind::Default, ListKind::Library}) {
        const ListFileRead read = ParseListFile(EncodeListFile(kind, false, "E:\\", {"a.mp3"}));
        ASSERT_EQ(read.status, ListReadStatus::Ok);
        EXPECT_EQ(read.list, (ListFileData{std::string(ListHeader(kind)), "1", "0", "E:\\", {"a.mp3"}}));
    }
    EXPECT_EQ(ListHeader(ListKind::Editor), "这是ZEV-MP3播放器-正式版-的列表文件请不要修改以下参数，以免造成错误。");
    EXPECT_EQ(ListHeader(ListKind::Default), "这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。");
}

TEST(ListFileCodec, LineThreeNamesWinOverTheCountAndAnyLineEndReads) {
    const ListFileRead read = ParseListFile(Gbk(std::string(kMain)) + "\n 7 * 1 \rD:\\m*a.mp3**b.mp3*\r\nextra");
    ASSERT_EQ(read.status, ListReadStatus::Ok);
    EXPECT_EQ(read.list.countText, "7");
    EXPECT_EQ(read.list.flag, "1");
    EXPECT_EQ(read.list.folder, "D:\\m");
    EXPECT_EQ(read.list.names, (Lines{"a.mp3", "b.mp3"}));
}

TEST(ListFileCodec, OnlyTheThirdDashPieceIsTheMarker) {
    for (const char* header : {"这是ZEV-Lumora-正式版-的", "x-y-测试版-z", "a-b-正式版"}) {
        EXPECT_TRUE(HasEditionMarker(header)) << header;
    }
    for (const char* header : {"a-正式版", "正式版", "a-b-c-正式版", "a-b-正式版x", ""}) {
        EXPECT_FALSE(HasEditionMarker(header)) << header;
    }
}

TEST(ListFileCodec, RefusesWhatIsNotOneOfOurListsWhole) {
    const std::string names1001 = [] {
        std::string s = "D:\\m";
        for (int i = 0; i < 1001; ++i) s += "*" + std::to_string(i) + ".mp3";
        return s;
    }();
    const struct {
        std::string bytes;
        ListReadStatus status;
    } cases[] = {
        {Gbk(kMain) + "\r\n2*1\r\n", ListReadStatus::NotAListFile},  // line 3 missing
        {"", ListReadStatus::NotAListFile},
        {ListBytes("这是ZEV-Lumora版-的", "2*1", "D:\\m*a.mp3"), ListReadStatus::NotAListFile},
        {ListBytes(kMain, "0*1", ""), ListReadStatus::NotAListFile},
        {ListBytes(kMain, "2*1", "D:\\m*a.mp3") + "", ListReadStatus::Ok},
        {Gbk(kMain) + "\r\n2*1\r\nD:\\m*\x81\x20.mp3\r\n", ListReadStatus::BadText},
        {ListBytes(kMain, "1*1", "D:\\m*..\\..\\boot.ini"), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*sub/a.mp3"), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*.."), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*C:a.mp3"), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*a\x01.mp3"), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m*" + std::string(256, 'a')), ListReadStatus::BadName},
        {ListBytes(kMain, "1*1", "D:\\m?*a.mp3"), ListReadStatus::BadName},
        {ListBytes(kMain, "1001*1", names1001), ListReadStatus::TooManyNames},
        {ListBytes(kMain, "1*1", "D:\\m*" + std::string(kMaxListFileBytes, 'a')), ListReadStatus::TooLarge},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseListFile(c.bytes).status, c.status) << c.bytes.substr(0, 120);
    EXPECT_EQ(ParseListFile(ListBytes(kMain, "1*1", "D:\\m*" + std::string(255, 'a'))).status, ListReadStatus::Ok);
}

TEST(ListFileCodec, WritesNothingItCouldNotReadBack) {
    EXPECT_EQ(EncodeListFile(ListKind::Main, true, "D:\\m", {"a.mp3", "笑\xF0\x9F\x98\x80.mp3"}), "");
    EXPECT_EQ(FirstUnstorableText("D:\\m", {"a.mp3", "笑\xF0\x9F\x98\x80.mp3"}), "笑\xF0\x9F\x98\x80.mp3");
    EXPECT_EQ(EncodeListFile(ListKind::Main, true, "D:\\m", {"a*b.mp3"}), "");
    EXPECT_EQ(FirstUnstorableText("D:\\m", {"a.mp3"}), "");
}

class FilterNamesTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files["D:\\m\\a.mp3"] = test::MpegFrames(8);
        fs.files["D:\\m\\notes.txt"] = "";
        fs.files["D:\\m\\fake.mp3"] = std::string(5000, 'x');
        fs.files["D:\\m\\b.wma"] = "";
        fs.files["D:\\m\\art.MP3"] = Id3v2(40000) + test::MpegFrames(8);  // the tag runs past the first read
        fs.files["D:\\m\\short.mp2"] = test::MpegFrames(1);               // one frame running to the end
    }
    ReadCountingFileSystem fs;
    RecordingProgress progress;
};

TEST_F(FilterNamesTest, KeepsExistingMediaAndMpegFilesThatHoldFrames) {
    const Lines names{"a.mp3", "notes.txt", "gone.wma", "fake.mp3", "b.wma", "art.MP3", "short.mp2"};
    const FilterResult result = FilterNames(fs, "D:\\m", names, &progress, "加载列表文件");
    EXPECT_EQ(result.kept, (Lines{"a.mp3", "b.wma", "art.MP3", "short.mp2"}));
    EXPECT_EQ(result.filtered, 3);
    EXPECT_EQ(result.remaining, 4);
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(progress.events,
              (Lines{"open 加载列表文件", "status 正在过滤文件...", "counters 过滤掉N/A个文件 还剩N/A个文件",
                     "dropped 002-(notes.txt)", "dropped 003-(gone.wma)", "dropped 004-(fake.mp3)",
                     "status 文件过滤完毕。", "counters 过滤掉 3个文件 还剩 4个文件", "close"}));
    EXPECT_EQ(fs.wholeReads, 0);
    EXPECT_LE(fs.largestPart, kMpegProbeBytes);
}

TEST_F(FilterNamesTest, JoinsADriveRootWithoutASecondBackslashAndStopsOnCancel) {
    fs.files["E:\\x.wma"] = "";
    EXPECT_EQ(FilterNames(fs, "E:\\", {"x.wma"}).kept, Lines{"x.wma"});

    progress.allowed = 1;
    const FilterResult result = FilterNames(fs, "D:\\m", {"a.mp3", "b.wma"}, &progress, "t");
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(progress.events.back(), "close");
}

class ListFileControllerTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files["D:\\m\\a.wma"] = "";
        fs.files["D:\\m\\b.wma"] = "";
        fs.files["D:\\m\\c.wma"] = "";
    }
    void OpenQueue(const std::string& folder, const Lines& names) {
        std::vector<MediaEntry> entries;
        for (const auto& n : names) entries.push_back({JoinPath(folder, n), n});
        ASSERT_TRUE(queue.Queue().Replace(folder, entries));
    }
    void PutList(const std::string& path, std::string_view counts, std::string_view files) {
        fs.files[path] = ListBytes(kMain, counts, files);
    }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    SettingsStore settings;
    RecordingView view;
    RecordingProgress progress;
    QueueController queue{prompts, fs, view, view};
    ListFileController lists{prompts, fs, settings, queue, progress};
};

TEST_F(ListFileControllerTest, SavesTheFilteredQueueWhereTheDialogPoints) {
    OpenQueue("D:\\m", {"a.wma", "gone.wma", "b.wma"});
    prompts.saveAnswer = "C:\\lists\\我的";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at("C:\\lists\\我的.QLB"), ListBytes(kMain, "2*1", "D:\\m*a.wma*b.wma"));
    EXPECT_EQ(prompts.messages, (Messages{{"列表文件已保存完毕，路径为 C:\\lists\\我的.QLB", "文件保存完毕"}}));
    EXPECT_EQ(progress.events.front(), "open 保存列表文件");

    settings.SetText("L13", "0");  // not filtered: every name as it stands, flag "0"
    prompts.saveAnswer = "C:\\lists\\all.qlb";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Saved);
    EXPECT_EQ(fs.files.at("C:\\lists\\all.qlb"), ListBytes(kMain, "3*0", "D:\\m*a.wma*gone.wma*b.wma"));
}

TEST(WithListExtension, AddsQlbUnlessTheNameHasIt) {
    EXPECT_EQ(WithListExtension("C:\\a"), "C:\\a.QLB");
    EXPECT_EQ(WithListExtension("C:\\a.qlb"), "C:\\a.qlb");
    EXPECT_EQ(WithListExtension("C:\\a.QlB"), "C:\\a.QlB");
    EXPECT_EQ(WithListExtension("C:\\a.txt"), "C:\\a.txt.QLB");
}

TEST_F(ListFileControllerTest, SaveWritesNothingWhenFewerThanTwoRemainOrTheWriteFails) {
    const Message nothingLeft{
        "没有一个文件剩下来，原因有三个：1、只选择一个文件，程序不会保存只有一个文件的列表文件。2、没有一个是媒体文件，"
        "程序不会保存没有文件的列表文件。3、文件根本不存在。单击“确定”退出",
        "没有文件剩下"};
    const Message error{"错误请重新操作，保存列表文件操作。", "错误"};
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);  // empty queue
    OpenQueue("D:\\m", {"a.wma", "x.txt"});
    prompts.saveAnswer = "C:\\l";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
    fs.failWrites = true;
    OpenQueue("D:\\m", {"a.wma", "b.wma"});
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
    prompts.saveAnswer = "";
    EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Cancelled);
    EXPECT_EQ(prompts.messages, (Messages{error, nothingLeft, error}));
    EXPECT_EQ(fs.files.count("C:\\l.QLB"), 0u);
}

// Each drive kind, before saving and before loading: the question (none for a fixed disk) or the refusal.
TEST_F(ListFileControllerTest, DriveTablesAskOrRefuse) {
    const struct {
        DriveKind kind;
        const char* onSave;
        const char* onLoad;
    } rows[] = {
        {DriveKind::Removable, "程序检测到G盘是可移动的驱动器。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
         "程序检测到文件列表中的G盘是可移动的驱动器。建议先把移动的驱动器接好再打开列表文件。现在是否继续？"},
        {DriveKind::Fixed, "", ""},
        {DriveKind::Network,
         "程序检测到G盘是网络驱动器（网络硬盘）。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
         "程序检测到文件列表中的G盘是网络驱动器（网络硬盘）。建议先把网络硬盘连接好再打开列表文件。现在是否继续？"},
        {DriveKind::CdRom,
         "程序检测到G盘是光盘驱动器（CD-ROM/DVD-ROM/CD-R）。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
         "程序检测到文件列表中的G盘是光盘驱动器（CD-ROM/DVD-ROM/CD-R）。建议先把光盘放入光驱再打开列表文件。现在是否"
         "继续？"},
        {DriveKind::RamDisk, "程序检测到G盘是RAM驱动器。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
         "程序检测到文件列表中的G盘是RAM驱动器。建议先把RAM驱动器连接好再打开列表文件。现在是否继续？"},
    };
    fs.files["G:\\a.wma"] = "";
    fs.files["G:\\b.wma"] = "";
    PutList("C:\\g.qlb", "2*1", "G:\\*a.wma*b.wma");
    for (const auto& row : rows) {
        fs.drives['G'] = row.kind;
        OpenQueue("G:\\", {"a.wma", "b.wma"});
        prompts = {};
        prompts.yesNoAnswer = false;  // "no" stops both before anything happens
        prompts.saveAnswer = "C:\\saved";
        const SaveOutcome saved = lists.SaveListFile();
        queue.Queue().Clear();
        const AddOutcome loaded = lists.LoadListFile("C:\\g.qlb");
        if (*row.onSave == '\0') {
            EXPECT_TRUE(prompts.questions.empty());
            EXPECT_EQ(saved, SaveOutcome::Saved);
            EXPECT_EQ(loaded, AddOutcome::Playing);
            // A drive root is stored as it is, and its names are joined without a second "\".
            EXPECT_EQ(ParseListFile(fs.files.at("C:\\saved.QLB")).list.folder, "G:\\");
            EXPECT_EQ(queue.Queue().EntryAt(2)->path, "G:\\b.wma");
        } else {
            EXPECT_EQ(prompts.questions, (Messages{{row.onSave, "驱动器对话框"}, {row.onLoad, "驱动器对话框"}}));
            EXPECT_EQ(saved, SaveOutcome::Cancelled);
            EXPECT_EQ(loaded, AddOutcome::Cancelled);
            EXPECT_EQ(queue.Queue().Count(), 0);
        }
    }
    fs.files.erase("C:\\saved.QLB");
    for (const DriveKind kind : {DriveKind::Unknown, static_cast<DriveKind>(7)}) {
        fs.drives['G'] = kind;
        OpenQueue("G:\\", {"a.wma", "b.wma"});
        prompts = {};
        prompts.saveAnswer = "C:\\saved";
        EXPECT_EQ(lists.SaveListFile(), SaveOutcome::Refused);
        EXPECT_EQ(lists.LoadListFile("C:\\g.qlb"), AddOutcome::Refused);
        EXPECT_EQ(prompts.messages,
                  (Messages{{"程序检测到G盘无法识别类型。因此不能制作列表文件", "驱动器对话框"},
                            {"程序检测到文件列表中的G盘在本机中无法识别类型。因此不能打开列表文件，请重新打开文件。",
                             "驱动器对话框"}}));
        EXPECT_EQ(fs.files.count("C:\\saved.QLB"), 0u);
    }
}

TEST_F(ListFileControllerTest, LoadReplacesTheQueueAndPlaysTheFirst) {
    PutList("C:\\l.qlb", "9*1", "D:\\m*c.wma*gone.wma*a.wma");  // fixed disk: names as they stand
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(gone.wma)", "003-(a.wma)"}));
    EXPECT_EQ(view.played, Lines{"D:\\m\\c.wma"});
    EXPECT_TRUE(prompts.questions.empty());
    EXPECT_TRUE(progress.events.empty());
}

TEST_F(ListFileControllerTest, UnfilteredListOffersFilteringUnlessSwitchedOff) {
    const Message question{"程序检测到这个文件列表没有使用“过滤”技术，现在是否进行“过滤”？", "询问“过滤”"};
    PutList("C:\\l.qlb", "3*0", "D:\\m*c.wma*gone.wma*a.wma");
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
    EXPECT_EQ(prompts.questions, Messages{question});
    EXPECT_EQ(view.lines, (Lines{"001-(c.wma)", "002-(a.wma)"}));
    EXPECT_EQ(progress.events.front(), "open 加载列表文件");

    prompts = {};
    prompts.yesNoAnswer = false;
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
    EXPECT_EQ(view.lines.size(), 3u);

    prompts = {};
    settings.SetText("L63", "1");
    EXPECT_EQ(lists.LoadListFile("C:\\l.qlb"), AddOutcome::Playing);
    EXPECT_TRUE(prompts.questions.empty());
}

TEST_F(ListFileControllerTest, RefusedLoadsKeepTheQueue) {
    OpenQueue("D:\\m", {"b.wma", "c.wma"});
    fs.drives['K'] = DriveKind::CdRom;  // filtered after the drive question
    fs.files["K:\\only.wma"] = "";
    PutList("C:\\none.qlb", "2*1", "K:\\*x.txt*gone.wma");
    PutList("C:\\one.qlb", "2*1", "K:\\*only.wma*gone.wma");
    fs.files["C:\\bad.qlb"] = ListBytes("这是ZEV-正式版-的", "2*1", "D:\\m*a.wma*b.wma");
    EXPECT_EQ(lists.LoadListFile("C:\\none.qlb"), AddOutcome::Refused);
    EXPECT_EQ(lists.LoadListFile("C:\\one.qlb"), AddOutcome::Refused);
    EXPECT_EQ(lists.LoadListFile("C:\\bad.qlb"), AddOutcome::Refused);
    EXPECT_EQ(lists.LoadListFile("C:\\missing.qlb"), AddOutcome::Refused);
    EXPECT_EQ(
        prompts.messages,
        (Messages{{"没有一个文件剩下来，原因有三个：1、只列表文件中只有一个文件，程序不会加载只有一个文件的列表文件。"
                   "2、没有一个是媒体文件，程序不会加载没有媒体文件的列表文件。3、文件根本不存在。单击“确定”退出",
                   "没有文件剩下"},
                  {"媒体文件全部“过滤”掉，原因有两个：1、没有一个是媒体文件。2、只有一个文件合法。程序将保持现在的"
                   "播放状态。",
                   "“过滤”错误"},
                  {"这不是“测试版”或者“正式版”的的列表文件，请重新选择。", "错误"},
                  {"无法读取列表文件：C:\\missing.qlb", "错误"}}));
    EXPECT_EQ(queue.Queue().EntryAt(1)->name, "b.wma");
    EXPECT_EQ(queue.Queue().Count(), 2);
    EXPECT_TRUE(view.played.empty());
}

}  // namespace
}  // namespace lumora
