#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/TextCodec.h"
#include "playlist/ListFile.h"
#include "playlist/MusicLibrary.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using test::Lines;

const std::string kSubKey = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
const std::string kLib = "D:\\库\\";
const std::string kList = kLib + std::string(kLibraryListName);

class MusicLibraryTest : public testing::Test {
protected:
    void SetUp() override {
        fs.files = {{"E:\\in\\a.mp3", "aaaa"}, {"E:\\in\\b.wma", "bb"}, {"E:\\in\\c.wma", "ccc"}};
        fs.folders.push_back("D:\\库");
        registry.Put(RegistryRoot::LocalMachine, kSubKey, std::string(kLibraryValueName), {RegistryValue::Kind::Text, kLib});
        Open({"a.mp3", "b.wma", "c.wma"});
        settings.SetText(opt::kLibraryRenameBox, "0");
    }
    void Open(const Lines& names) {
        ASSERT_TRUE(queue.Queue().Replace("E:\\in", test::Entries("E:\\in", names)));
    }
    Lines Listed() { return ParseListFile(fs.files.at(kList)).list.names; }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::FakeRegistry registry;
    SettingsStore settings;
    test::RecordingQueueView view;
    test::NullFilterProgress progress;
    test::RecordingCopyView copyLog;
    QueueController queue{prompts, fs, view, view};
    ListFileController lists{prompts, fs, settings, queue, progress};
    MusicLibrary library{prompts, fs, registry, settings, queue, lists, copyLog};
};

TEST_F(MusicLibraryTest, FolderMustBeOnAFixedDiskAndIsKeptWithAFinalBackslash) {
    registry.keys.clear();
    fs.drives['G'] = DriveKind::Removable;
    fs.folders.push_back("C:\\新库");
    prompts.folderScript = {"G:\\music", "C:\\新库"};
    EXPECT_TRUE(library.ChangeLibraryFolder());  // after "yes"
    EXPECT_EQ(prompts.messages.size(), 1u);
    const RegistryValue* value = registry.Find(RegistryRoot::LocalMachine, kSubKey, std::string(kLibraryValueName));
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
    fs.files["E:\\in\\a.mp3"] = std::string(5000, 'x') + "TAG" + Utf8ToCp936("晴天").value() + std::string(121, '\0');
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
    Open({"a.mp3", "b.wma", "gone.wma", "c.wma", "d.wma"});
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
