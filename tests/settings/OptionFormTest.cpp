#include <gtest/gtest.h>

#include <set>

#include "ports/ProcessRunner.h"
#include "settings/FileRegistry.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"
#include "settings/SettingsBackup.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

// The dialog shows a stored text as a control's number, and "确定" stores that number back.
TEST(OptionForm, StoredTextToControlAndBack) {
    struct Case {
        std::string_view name, stored;
        long long shown;
        std::string_view saved;
    };
    const Case cases[] = {
        {opt::kBackSeconds, "05", 5, "5"},  // sliders take the number, written plainly
        {opt::kBackSeconds, "500", 120, "120"},
        {opt::kLyricsOffset, "-9", -9, "-9"},
        {opt::kDecoder, "0", 0, "0"},  // radio pairs: the first button only for "0"
        {opt::kDecoder, "2", 1, "1"},
        {opt::kDecoder, "", 1, "1"},
        {opt::kAskOnUnplayable, "1", 1, "1"},
        {opt::kLibraryNameIsTitle, " 0", 0, "0"},
        {opt::kFilterLists, "1", 1, "1"},  // check boxes take the number as their state
        {opt::kFilterLists, "0", 0, "0"},
        {opt::kSongMenuLayout, "07", 7, "7"},  // lists select the entry of the index
        {opt::kSongMenuLayout, "100", 0, "0"},
        {opt::kSkin, "6", 6, "6"},
        {opt::kVolumeFadeDelay, "006", 6, "6"},
        {opt::kBalloonBackColour, "-2147483643", 0x80000005, "-2147483643"},  // a system colour
        {opt::kMenuBackColour, "16777215", 0xFFFFFF, "16777215"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + "=" + std::string(c.stored));
        SettingsStore store;
        ASSERT_TRUE(store.SetText(c.name, c.stored));
        const FormItem* item = FindFormItem(c.name);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(ShownValue(*item, store), c.shown);
        EXPECT_EQ(StoredText(*item, c.shown), c.saved);
    }
}

// Every option the registry keeps has its control, except the time label's mode, which the main
// window's own button sets; every control is the store's, with an id of its own.
TEST(OptionForm, EveryOptionHasOneControlWithItsOwnId) {
    SettingsStore store;
    std::set<int> ids;
    for (const FormItem& item : FormItems()) {
        EXPECT_TRUE(store.Holds(item.name)) << item.name;
        for (int part = 0; part < 4; ++part) EXPECT_TRUE(ids.insert(FormControlId(item.name, part)).second);
    }
    for (const std::string_view name : SettingsStore::SavedNames()) {
        EXPECT_TRUE(name == opt::kTimeLabelMode || FindFormItem(name)) << name;
    }
    EXPECT_EQ(FormControlId("L3"), -1);
}

TEST(OptionForm, TypedNumbersAndTheSongMenuWarning) {
    const FormItem& upper = *FindFormItem(opt::kSongMenuUpperBound);
    const FormItem& lower = *FindFormItem(opt::kSongMenuLowerBound);
    EXPECT_EQ(TypedNumber(upper, "998"), 998);
    EXPECT_EQ(TypedNumber(upper, " 05 "), 5);
    for (const char* refused : {"999", "-1", "", "1.5", "abc"}) EXPECT_FALSE(TypedNumber(upper, refused)) << refused;
    // The lower bound must lie above the upper one.
    EXPECT_FALSE(TypedNumber(lower, "32", 32));
    EXPECT_EQ(TypedNumber(lower, "33", 32), 33);
    EXPECT_EQ(NumberRangeMessage(33, 999), "请输入33至999之间的整数。");

    // 38 lines of 20 pixels fit a screen of 768; 39 do not, and only a chosen layout can overflow.
    EXPECT_FALSE(SongMenuOverflows(38, true, 768, 20));
    EXPECT_TRUE(SongMenuOverflows(39, true, 768, 20));
    EXPECT_FALSE(SongMenuOverflows(39, false, 768, 20));
    EXPECT_FALSE(SongMenuOverflows(0, true, 768, 20));
    EXPECT_EQ(SongMenuLayoutEntry(0), "自动调节");
    EXPECT_EQ(SongMenuLayoutEntry(99), "每列显示99个文件");
}

// The registry editor exports the user's key; it says nothing when it cannot write, so the file tells.
struct FakeRegedit : ProcessRunner {
    test::FakeFileSystem& fs;
    std::string exported;  // what an export writes
    std::vector<std::string> run;
    explicit FakeRegedit(test::FakeFileSystem& f) : fs(f) {}
    std::optional<unsigned long> RunAndWait(const std::string& commandLine, bool minimised) override {
        run.push_back(commandLine + (minimised ? "" : " (shown)"));
        if (commandLine.find(" /e ") != std::string::npos) fs.files["C:\\my settings.reg"] = exported;
        return 0;
    }
};

TEST(SettingsBackup, TheRegistryEditorExportsAndImportsTheUsersKey) {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    FakeRegedit regedit(fs);
    prompts.saveAnswer = prompts.openAnswer = "C:\\my settings.reg";
    regedit.exported = "REGEDIT4";
    EXPECT_EQ(BackupSettings(prompts, fs, regedit), BackupOutcome::Done);
    regedit.exported.clear();
    EXPECT_EQ(BackupSettings(prompts, fs, regedit), BackupOutcome::Failed);
    EXPECT_EQ(RestoreSettings(prompts, regedit), BackupOutcome::Done);
    EXPECT_EQ(regedit.run,
              (std::vector<std::string>{
                  "regedit.exe /e \"C:\\my settings.reg\" HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer",
                  "regedit.exe /e \"C:\\my settings.reg\" HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer",
                  "regedit.exe /s \"C:\\my settings.reg\""}));
    ASSERT_EQ(prompts.messages.size(), 3u);
    EXPECT_EQ(prompts.messages[1], (test::Message{"建立文件失败！请确认此路径是否有文件正在使用。", "失败"}));
    prompts.saveAnswer = prompts.openAnswer = std::nullopt;
    EXPECT_EQ(BackupSettings(prompts, fs, regedit), BackupOutcome::Cancelled);
    EXPECT_EQ(RestoreSettings(prompts, regedit), BackupOutcome::Cancelled);
    EXPECT_EQ(regedit.run.size(), 3u);
}

// A portable copy backs up and restores its registry file; a file that holds no options of Lumora's is
// never put in its place.
TEST(SettingsBackup, APortableCopyBacksUpAndRestoresItsRegistryFile) {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    const std::string kept = "E:\\Lumora\\Data\\registry.txt";
    const std::string options =
        FileRegistry::Format({{std::string(kSetupKeyPath), {{"L1", {RegistryValue::Kind::Binary, "7"}}}}});
    fs.files[kept] = options;

    prompts.saveAnswer = "E:\\backup.txt";
    EXPECT_EQ(BackupSettingsFile(prompts, fs, kept), BackupOutcome::Done);
    EXPECT_EQ(fs.files["E:\\backup.txt"], options);

    fs.files["E:\\other.txt"] = "[HKEY_CURRENT_USER\\Software\\Other]\r\nx=b:31\r\n";
    fs.files[kept] = "changed";
    prompts.openAnswer = "E:\\other.txt";
    EXPECT_EQ(RestoreSettingsFile(prompts, fs, kept), BackupOutcome::Failed);
    EXPECT_EQ(fs.files[kept], "changed");
    prompts.openAnswer = "E:\\backup.txt";
    EXPECT_EQ(RestoreSettingsFile(prompts, fs, kept), BackupOutcome::Done);
    EXPECT_EQ(fs.files[kept], options);

    prompts.saveAnswer.reset();
    EXPECT_EQ(BackupSettingsFile(prompts, fs, kept), BackupOutcome::Cancelled);
    ASSERT_EQ(prompts.messages.size(), 3u);
    EXPECT_EQ(prompts.messages[1].title, "失败");
}

}  // namespace
}  // namespace lumora
