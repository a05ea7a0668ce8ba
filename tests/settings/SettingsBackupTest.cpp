#include <gtest/gtest.h>

#include "settings/SettingsBackup.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::Message;

TEST(SettingsBackup, BackupRunsTheEditorMinimisedAndChecksWhatItWrote) {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::FakeProcessRunner runner;
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Cancelled);
    EXPECT_TRUE(fs.files.empty());
    prompts.saveAnswer = "C:\\My Backups\\设置.reg";
    runner.onRun = [&](const std::string&) { fs.files["C:\\My Backups\\设置.reg"] = "REGEDIT4"; };
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Done);
    ASSERT_EQ(runner.runs.size(), 1u);
    EXPECT_EQ(runner.runs[0].first,
              "regedit.exe /e \"C:\\My Backups\\设置.reg\" HKEY_LOCAL_MACHINE\\SOFTWARE\\Tavrinsoft\\TavrinPlayer");
    EXPECT_TRUE(runner.runs[0].second);
    EXPECT_EQ(prompts.messages.back().title, "完毕");

    runner.onRun = nullptr;  // the editor wrote nothing
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    fs.failWrites = true;  // the file cannot even be created: nothing runs
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    EXPECT_EQ(runner.runs.size(), 2u);
    EXPECT_EQ(prompts.messages.size(), 3u);
}

TEST(SettingsBackup, RestoreImportsSilentlyAndAsksForARestart) {
    test::FakePrompts prompts;
    test::FakeProcessRunner runner;
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Cancelled);
    EXPECT_TRUE(runner.runs.empty());
    EXPECT_TRUE(prompts.messages.empty());
    prompts.openAnswer = "E:\\old settings.reg";
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Done);
    ASSERT_EQ(runner.runs.size(), 1u);
    EXPECT_EQ(runner.runs[0].first, "regedit.exe /s \"E:\\old settings.reg\"");
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"恢复完毕，如果导入成功，请重新启动《Lumora》。", "完毕"}}));
}

}  // namespace
}  // namespace lumora
