#include <gtest/gtest.h>

#include "settings/SettingsBackup.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakeFileSystem;
using test::FakeProcessRunner;
using test::FakePrompts;
using test::Message;

TEST(SettingsBackup, CommandLinesQuoteTheFileName) {
    EXPECT_EQ(BackupCommandLine("C:\\My Backups\\设置.reg"),
              "regedit.exe /e \"C:\\My Backups\\设置.reg\" HKEY_LOCAL_MACHINE\\SOFTWARE\\Tavrinsoft\\TavrinPlayer");
    EXPECT_EQ(RestoreCommandLine("D:\\a b.reg"), "regedit.exe /s \"D:\\a b.reg\"");
}

TEST(SettingsBackup, BackupRunsTheEditorMinimisedAndSaysDone) {
    FakePrompts prompts;
    FakeFileSystem fs;
    FakeProcessRunner runner;
    prompts.saveAnswer = "C:\\b.reg";
    runner.onRun = [&](const std::string&) { fs.files["C:\\b.reg"] = "REGEDIT4"; };
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Done);
    ASSERT_EQ(runner.runs.size(), 1u);
    EXPECT_EQ(runner.runs[0].first, BackupCommandLine("C:\\b.reg"));
    EXPECT_TRUE(runner.runs[0].second);
    EXPECT_EQ(prompts.messages,
              (std::vector<Message>{{"备份完毕（备份的设置文件就是“注册表”双击可恢复“设置”）。", "完毕"}}));
}

TEST(SettingsBackup, FileThatCannotBeCreatedIsReportedAndNothingRuns) {
    FakePrompts prompts;
    FakeFileSystem fs;
    FakeProcessRunner runner;
    prompts.saveAnswer = "C:\\locked.reg";
    fs.failWrites = true;
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    EXPECT_TRUE(runner.runs.empty());
    const std::vector<Message> failed = {{"建立文件失败！请确认此路径是否有文件正在使用。", "失败"}};
    EXPECT_EQ(prompts.messages, failed);
}

TEST(SettingsBackup, EditorThatWroteNothingIsAFailure) {
    FakePrompts prompts;
    FakeFileSystem fs;
    FakeProcessRunner runner;
    prompts.saveAnswer = "C:\\b.reg";
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    runner.exitCode = std::nullopt;  // the editor could not be started at all
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    EXPECT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1].title, "失败");
}

TEST(SettingsBackup, CancelledDialogsDoNothing) {
    FakePrompts prompts;
    FakeFileSystem fs;
    FakeProcessRunner runner;
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Cancelled);
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Cancelled);
    EXPECT_TRUE(runner.runs.empty());
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(fs.files.empty());
}

TEST(SettingsBackup, RestoreImportsSilentlyAndAsksForARestart) {
    FakePrompts prompts;
    FakeProcessRunner runner;
    prompts.openAnswer = "E:\\old settings.reg";
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Done);
    ASSERT_EQ(runner.runs.size(), 1u);
    EXPECT_EQ(runner.runs[0].first, "regedit.exe /s \"E:\\old settings.reg\"");
    EXPECT_EQ(prompts.messages,
              (std::vector<Message>{{"恢复完毕，如果导入成功，请重新启动《Lumora》。", "完毕"}}));
}

}  // namespace
}  // namespace lumora
