#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/TextCodec.h"
#include "playlist/ListFile.h"
#include "playlist/MusicLibrary.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using test::Message;
using Lines = std::vector<std::string>;
using Messages = std::vector<Message>;

// Also keeps what each input box proposed.
class ProposalPrompts : public test::FakePrompts {
public:
    std::optional<std::string> AskText(std::string_view prompt, std::string_view title,
                                       std::string_view initial) override {
        proposed.emplace_back(initial);
        return FakePrompts::AskText(prompt, title, initial);
    }
    Lines proposed;
};

class RecordingView : public QueueView, public QueuePlayer {
public:
    void ShowLines(const std::vector<std::string>& shown) override { lines = shown; }
    void ShowTexts(const QueueTexts&) override {}
    void SelectLine(int) override {}
    void Play(const std::string&) override {}
    Lines lines;
};

class CopyLog : public LibraryCopyView {
public:
    void Open(std::string_view header) override { lines.emplace_back(header); }
    void AddLine(std::string_view line) override { lines.emplace_back(line); }
    bool KeepGoing() override { return ++asked <= allowed; }
    void Close() override { lines.emplace_back("close"); }
    Lines lines;
    int asked = 0;
    int allowed = 1 << 30;
};

const std::string kSubKey = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
const std::string kLib = "D:\\库\\";
const std::string kList = "D:\\库\\我的音乐库.qlb";
const Message kAdded{"文件已成功的加入“我的音乐库”。", "文件加入成功"};
const Message kFailed{"文件加入“我的音乐库”失败。", "文件加入失败"};
const Message kSameName{
    "程序发现您所要加入的文件与“我的音乐库”中的某一个文件重名，但程序断定这两个是不同的文件，是否对你要加入的文件重新命"
    "名？",
    "文件重名"};

std::string Id3v1(std::string_view title) {
    std::string tag = "TAG" + Utf8ToCp936(title).value();
    tag.resize(128, '\0');
    return tag;
}

class MusicLibraryTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files["E:\\in\\a.mp3"] = "aaaa";
        fs.files["E:\\in\\b.wma"] = "bb";
        fs.files["E:\\in\\c.wma"] = "ccc";
        fs.folders.push_back("D:\\库");
        registry.Put(RegistryRoot::LocalMachine, kSubKey, "我的音乐库", {RegistryValue::Kind::Text, kLib});
        Open({"a.mp3", "b.wma", "c.wma"});
        settings.SetText("L32", "0");
    }
    void Open(const Lines& names) {
        std::vector<MediaEntry> entries;
        for (const auto& n : names) entries.push_back({"E:\\in\\" + n, n});
        ASSERT_TRUE(queue.Queue().Replace("E:\\in", entries));
    }
    Lines Listed() { return ParseListFile(fs.files.at(kList)).list.names; }

    ProposalPrompts prompts;
    test::FakeFileSystem fs;
    test::FakeRegistry registry;
    SettingsStore settings;
    RecordingView view;
    test::NullFilterProgress progress;
    CopyLog copyLog;
    QueueController queue{prompts, fs, view, view};
    ListFileController lists{prompts, fs, settings, queue, progress};
    MusicLibrary library{prompts, fs, registry, settings, queue, lists, copyLog};
};

TEST_F(MusicLibraryTest, FolderMustBeOnAFixedDiskAndIsKeptWithAFinalBackslash) {
    registry.keys.clear();
    fs.drives['G'] = DriveKind::Removable;
    fs.folders.push_back("C:\\新库");
    prompts.folderScript = {"G:\\music", "C:\\新库"};
    EXPECT_TRUE(library.ChooseLibraryFolder());
    EXPECT_EQ(prompts.questions, Messages(2, {"您想把“我的音乐库”放在哪个文件夹里？", ""}));
    EXPECT_EQ(prompts.messages, (Messages{{"您选择的不是本地磁盘，请重新选择。", "请重新选择"}}));
    const RegistryValue* value = registry.Find(RegistryRoot::LocalMachine, kSubKey, "我的音乐库");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->kind, RegistryValue::Kind::Text);
    EXPECT_EQ(value->data, "C:\\新库\\");

    prompts = {};
    prompts.yesNoAnswer = false;
    EXPECT_FALSE(library.ChangeLibraryFolder());
    EXPECT_EQ(prompts.questions, (Messages{{"是否更改“我的音乐库”的路径", "更改路径"}}));
    EXPECT_EQ(library.Folder(), "C:\\新库\\");
}

TEST_F(MusicLibraryTest, DeletingForgetsTheFolderButKeepsEveryFile) {
    fs.files[kList] = EncodeListFile(ListKind::Library, true, kLib, {"x.mp3"});
    fs.files[kLib + "x.mp3"] = "x";
    prompts.yesNoScript = {false, true};
    EXPECT_FALSE(library.DeleteLibrary());
    EXPECT_TRUE(library.DeleteLibrary());
    EXPECT_FALSE(library.DeleteLibrary());
    EXPECT_EQ(prompts.questions, Messages(2, {"是否删除“我的音乐库”", "删除"}));
    EXPECT_EQ(prompts.messages, (Messages{{"删除完毕！程序只是删除“我的音乐库”的设置项，并没有删除文件。", "删除完毕"},
                                          {"您还没有设置“我的音乐库”因此无法删除", "无法删除"}}));
    EXPECT_EQ(fs.files.count(kList), 1u);
    EXPECT_EQ(fs.files.count(kLib + "x.mp3"), 1u);
}

TEST_F(MusicLibraryTest, AddsThePlayingFileToANewListThenKnowsItIsThere) {
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Added);
    EXPECT_EQ(fs.files.at(kLib + "a.mp3"), "aaaa");
    EXPECT_EQ(
        Cp936ToUtf8(fs.files.at(kList)),
        "这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。\r\n1*1\r\nD:\\库\\*a.mp3\r\n");
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AlreadyThere);

    fs.files[kLib + "b.wma"] = "bb";  // same name and length, but not listed
    ASSERT_TRUE(queue.Queue().SetCurrent(2));
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedExisting);
    EXPECT_EQ(Listed(), (Lines{"a.mp3", "b.wma"}));
    EXPECT_EQ(prompts.messages, (Messages{kAdded,
                                          {"在“我的音乐库”中该文件已存在。", "文件已存在"},
                                          {"文件已存在，并且成功的加入“我的音乐库”。", "文件已存在"}}));
    EXPECT_TRUE(prompts.questions.empty());
}

TEST_F(MusicLibraryTest, SameNameOtherLengthAsksThenRenamesWithTheFilesExtension) {
    fs.files[kLib + "a.mp3"] = "different";
    prompts.yesNoAnswer = false;
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::SkippedByUser);
    prompts.yesNoAnswer = true;
    prompts.textAnswer = " 新歌 ";
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedRenamed);
    EXPECT_EQ(fs.files.at(kLib + "新歌.mp3"), "aaaa");
    EXPECT_EQ(fs.files.at(kLib + "a.mp3"), "different");
    EXPECT_EQ(Listed(), Lines{"新歌.mp3"});
    EXPECT_EQ(
        prompts.questions,
        (Messages{kSameName,
                  kSameName,
                  {"请重新为 a.mp3 命名。(请不要加后缀名)\r\n提示：单击“取消”停止加入该文件。\r\n注意：文件名不能有以"
                   "下字符：\r\n    \\ / : * ? < > | \r\n     否则添加会失败！！",
                   "文件重新命名框"}}));
    EXPECT_EQ(prompts.proposed, Lines{"a"});
    EXPECT_EQ(prompts.messages, Messages{kAdded});
}

TEST_F(MusicLibraryTest, L32AsksForEveryNameAndL33ProposesTheTitle) {
    settings.SetText("L32", "1");
    settings.SetText("L33", "1");
    fs.files["E:\\in\\a.mp3"] = std::string(5000, 'x') + Id3v1("晴天");
    prompts.textScript = {std::nullopt, "..\\..\\Windows\\evil", "晴天"};
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::SkippedByUser);
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Failed);
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AddedRenamed);
    EXPECT_EQ(prompts.proposed, Lines(3, "晴天"));
    EXPECT_EQ(Listed(), Lines{"晴天.mp3"});
    EXPECT_EQ(prompts.messages, (Messages{kFailed, kAdded}));
    for (const auto& [path, bytes] : fs.files) EXPECT_EQ(path.find("evil"), std::string::npos) << path;

    ASSERT_TRUE(queue.Queue().SetCurrent(2));  // no tag: the name without its extension
    prompts.textAnswer.reset();
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::SkippedByUser);
    EXPECT_EQ(prompts.proposed.back(), "b");
}

TEST_F(MusicLibraryTest, DamagedListIsRecreatedAndAMissingLibraryIsOfferedFirst) {
    fs.files[kList] = EncodeListFile(ListKind::Library, true, "C:\\elsewhere\\", {"z.mp3"});
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Added);
    EXPECT_EQ(Listed(), Lines{"a.mp3"});
    EXPECT_EQ(
        prompts.messages.front(),
        (Message{"您的“我的音乐库”列表已损坏，现在必须删除，然后在新建一个。如想添加同目录里的音乐，请使用“媒体文件"
                 "列表编辑器”。",
                 "文件损坏"}));

    // Same folder in another letter case and without the final "\": not damaged.
    fs.files[kList] = EncodeListFile(ListKind::Library, true, "d:\\库", {"a.mp3"});
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::AlreadyThere);

    prompts = {};
    registry.keys.clear();
    prompts.yesNoAnswer = false;
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::NoLibrary);
    EXPECT_EQ(prompts.questions, (Messages{{"“我的音乐库”不存在或未建立。现在是否建立？", "“我的音乐库”"}}));
    fs.files.erase("E:\\in\\a.mp3");
    EXPECT_EQ(library.AddCurrentToLibrary(), LibraryAdd::Missing);
    EXPECT_EQ(prompts.messages, (Messages{{"当前正在播放的文件不存在。", "当前文件不存在"}}));
}

TEST_F(MusicLibraryTest, AddAllLogsEveryFileWithItsMarker) {
    fs.files["E:\\in\\d.wma"] = "d";
    fs.files[kList] = EncodeListFile(ListKind::Library, true, kLib, {"b.wma"});
    fs.files[kLib + "b.wma"] = "bb";
    fs.files[kLib + "c.wma"] = "other";
    fs.files[kLib + "d.wma"] = "d";
    Open({"a.mp3", "b.wma", "gone.wma", "c.wma", "d.wma"});
    prompts.yesNoAnswer = false;
    EXPECT_TRUE(library.AddAllToLibrary());
    EXPECT_EQ(copyLog.lines,
              (Lines{"<==（重新建立“我的音乐库”文件列表）==>", "a.mp3 <==（文件成功加入）==> ",
                     "b.wma <==（文件已存在）==> ", "gone.wma <==（文件不存在）==> ",
                     "c.wma <==（用户中止复制该文件）==> ", "d.wma <==（文件已存在，并且成功加入）==> ", "close"}));
    EXPECT_EQ(Listed(), (Lines{"b.wma", "a.mp3", "d.wma"}));
    EXPECT_EQ(prompts.questions, Messages{kSameName});
}

TEST_F(MusicLibraryTest, AddAllCancelKeepsWhatWasCopiedAndFailuresAreLogged) {
    copyLog.allowed = 2;
    fs.files[kLib + "b.wma"] = "other";
    prompts.textAnswer = "b2";
    EXPECT_TRUE(library.AddAllToLibrary());
    EXPECT_EQ(copyLog.lines,
              (Lines{"<==（建立“我的音乐库”文件列表）==>", "a.mp3 <==（文件成功加入）==> ",
                     "b.wma <==（文件重新命名，并且成功加入）==> ", "c.wma <==（用户取消复制）==> ", "close"}));
    EXPECT_EQ(Listed(), (Lines{"a.mp3", "b2.wma"}));
    EXPECT_EQ(fs.files.count(kLib + "c.wma"), 0u);

    copyLog = {};
    fs.failCopies = true;
    EXPECT_TRUE(library.AddAllToLibrary());
    EXPECT_EQ(copyLog.lines.at(3), "c.wma <==（文件加入失败）==> ");

    Open({"a.mp3"});
    EXPECT_FALSE(library.AddAllToLibrary());
    EXPECT_EQ(prompts.messages.back(),
              (Message{"当前只有一个文件，请用“添加当前文件到‘我的音乐库’里”选项来添加。", "一个文件文件"}));
}

TEST_F(MusicLibraryTest, LoadsTheLibraryListOrSaysItIsEmpty) {
    const Message empty{"现在“我的音乐库”里没有任何文件，因此无法加载", "无法加载"};
    EXPECT_EQ(library.LoadLibrary(), AddOutcome::Refused);
    fs.files[kList] = EncodeListFile(ListKind::Library, true, kLib, {});
    EXPECT_EQ(library.LoadLibrary(), AddOutcome::Refused);
    EXPECT_EQ(prompts.messages, (Messages{empty, empty}));
    fs.files[kList] = EncodeListFile(ListKind::Library, true, kLib, {"x.mp3", "y.wma"});
    EXPECT_EQ(library.LoadLibrary(), AddOutcome::Playing);
    EXPECT_EQ(view.lines, (Lines{"001-(x.mp3)", "002-(y.wma)"}));
}

}  // namespace
}  // namespace lumora
