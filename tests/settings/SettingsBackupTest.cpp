#include <gtest/gtest.h>

#include "settings/SettingsBackup.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

// The backup runs the registry editor minimised and checks what it wrote; the restore imports silently.
TEST(SettingsBackup, BackupAndRestoreRunTheRegistryEditor) {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::FakeProcessRunner runner;
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Cancelled);
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Cancelled);
    prompts.saveAnswer = "C:\\My Backups\\设置.reg";
    runner.onRun = [&](const std::string&) { fs.files["C:\\My Backups\\设置.reg"] = "REGEDIT4"; };
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Done);
    runner.onRun = nullptr;  // the editor wrote nothing
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    fs.failWrites = true;  // the file cannot even be created: nothing runs
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    EXPECT_EQ(prompts.messages.size(), 3u);
    prompts.openAnswer = "E:\\old settings.reg";
    EXPECT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Done);
    const std::string backup = "regedit.exe /e \"C:\\My Backups\\设置.reg\" HKEY_LOCAL_MACHINE\\SOFTWARE\\Tavrinsoft\\TavrinPlayer";
    EXPECT_EQ(runner.runs, (std::vector<std::pair<std::string, bool>>{
                               {backup, true}, {backup, true}, {"regedit.exe /s \"E:\\old settings.reg\"", true}}));
    EXPECT_EQ(prompts.messages.back(), (test::Message{"恢复完毕，如果导入成功，请重新启动《Lumora》。", "完毕"}));
}

}  // namespace
}  // namespace lumora
