// Backup and restore through Wine's real registry editor.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/FileSystem_win.h"
#include "platform/ProcessRunner_win.h"
#include "platform/Registry_win.h"
#include "platform/WinText_win.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsBackup.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakePrompts;
using test::Message;

std::string TempFolder() {
    wchar_t buf[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH, buf);
    return Narrow(std::wstring(buf, n));
}

TEST(BackupPlatform, BackupToAPathWithBlanksThenRestore) {
    WinRegistry reg;
    FakePrompts prompts;
    RegistryWrapper wrapper(reg, prompts);
    WinFileSystem fs;
    WinProcessRunner runner;

    const std::string folder = TempFolder() + "my backups";
    CreateDirectoryW(Widen(folder).c_str(), nullptr);
    const std::string file = folder + "\\lumora settings.reg";
    DeleteFileW(Widen(file).c_str());

    SettingsStore store;
    store.SetText("L30", "42");
    ASSERT_TRUE(SaveSettings(store, wrapper, "0.1.0", "C:\\Lumora"));

    prompts.saveAnswer = file;
    ASSERT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Done);
    EXPECT_GT(fs.FileSize(file), 0);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].title, "完毕");

    // Change the option, then restore: the registry has the backed-up value again.
    ASSERT_TRUE(wrapper.WriteValue(kSetupKeyPath, "L30", "7"));
    prompts.openAnswer = file;
    ASSERT_EQ(RestoreSettings(prompts, runner), BackupOutcome::Done);
    EXPECT_EQ(wrapper.ReadValue(kSetupKeyPath, "L30"), "42");
    EXPECT_EQ(prompts.messages.back(), (Message{"恢复完毕，如果导入成功，请重新启动《Lumora》。", "完毕"}));

    DeleteFileW(Widen(file).c_str());
    RemoveDirectoryW(Widen(folder).c_str());
    reg.DeleteKey(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft");
}

TEST(BackupPlatform, FolderThatDoesNotExistIsReported) {
    FakePrompts prompts;
    WinFileSystem fs;
    WinProcessRunner runner;
    prompts.saveAnswer = TempFolder() + "no such folder\\x.reg";
    EXPECT_EQ(BackupSettings(prompts, fs, runner), BackupOutcome::Failed);
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{"建立文件失败！请确认此路径是否有文件正在使用。", "失败"}}));
}

}  // namespace
}  // namespace lumora
