#include "settings/SettingsBackup.h"

#include <algorithm>

#include "common/Text.h"
#include "common/Titles.h"
#include "ports/FileSystem.h"
#include "ports/ProcessRunner.h"
#include "ports/Prompts.h"
#include "settings/FileRegistry.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

constexpr std::string_view kRegFilter = "注册表文件 (*.reg)|*.reg|所有文件 (*.*)|*.*";
constexpr std::string_view kBackupDialogTitle = "备份设置";
constexpr std::string_view kRestoreDialogTitle = "恢复设置";
constexpr std::string_view kBackupDone = "备份完毕（备份的设置文件就是“注册表”双击可恢复“设置”）。";
constexpr std::string_view kBackupFailed = "建立文件失败！请确认此路径是否有文件正在使用。";
constexpr std::string_view kRestoreDone = "恢复完毕，如果导入成功，请重新启动《Lumora》。";
constexpr std::string_view kFailedTitle = "失败";
constexpr std::string_view kPortableFilter = "Lumora 设置 (*.txt)|*.txt|所有文件 (*.*)|*.*";
constexpr std::string_view kNotABackup = "恢复失败！该文件不是Lumora的设置备份。";

// Quoted, so that a path with blanks reaches the registry editor as one argument.
std::string Quoted(std::string_view fileName) { return "\"" + std::string(fileName) + "\""; }

}  // namespace

std::string BackupCommandLine(std::string_view fileName) {
    return "regedit.exe /e " + Quoted(fileName) + " " + std::string(kPlayerKeyPath);
}

std::string RestoreCommandLine(std::string_view fileName) { return "regedit.exe /s " + Quoted(fileName); }

BackupOutcome BackupSettings(Prompts& prompts, FileSystem& fs, ProcessRunner& runner) {
    const auto file = prompts.AskSaveFileName(kBackupDialogTitle, kRegFilter, "reg");
    if (!file || file->empty()) return BackupOutcome::Cancelled;
    // The editor says nothing when it cannot write; find out first whether the file can be made,
    // and afterwards whether it was.
    if (!fs.CreateEmptyFile(*file) || !runner.RunAndWait(BackupCommandLine(*file), true) || fs.FileSize(*file) <= 0) {
        prompts.ShowMessage(kBackupFailed, kFailedTitle);
        return BackupOutcome::Failed;
    }
    prompts.ShowMessage(kBackupDone, kDoneTitle);
    return BackupOutcome::Done;
}

BackupOutcome RestoreSettings(Prompts& prompts, ProcessRunner& runner) {
    const auto file = prompts.AskOpenFileName(kRestoreDialogTitle, kRegFilter);
    if (!file || file->empty()) return BackupOutcome::Cancelled;
    runner.RunAndWait(RestoreCommandLine(*file), true);
    prompts.ShowMessage(kRestoreDone, kDoneTitle);
    return BackupOutcome::Done;
}

BackupOutcome BackupSettingsFile(Prompts& prompts, FileSystem& fs, const std::string& registryFile) {
    const auto file = prompts.AskSaveFileName(kBackupDialogTitle, kPortableFilter, "txt");
    if (!file || file->empty()) return BackupOutcome::Cancelled;
    const FileRead kept = fs.ReadFile(registryFile);
    if (kept.status == FileRead::Status::Failed || !fs.WriteFileAtomic(*file, kept.bytes)) {
        prompts.ShowMessage(kBackupFailed, kFailedTitle);
        return BackupOutcome::Failed;
    }
    prompts.ShowMessage(kBackupDone, kDoneTitle);
    return BackupOutcome::Done;
}

BackupOutcome RestoreSettingsFile(Prompts& prompts, FileSystem& fs, const std::string& registryFile) {
    const auto file = prompts.AskOpenFileName(kRestoreDialogTitle, kPortableFilter);
    if (!file || file->empty()) return BackupOutcome::Cancelled;
    const FileRead backup = fs.ReadFile(*file);
    const auto keys = FileRegistry::Parse(backup.bytes);
    const bool ours = std::any_of(keys.begin(), keys.end(), [](const FileRegistry::Key& k) {
        return LowerAscii(k.path) == LowerAscii(kSetupKeyPath);
    });
    if (backup.status != FileRead::Status::Ok || !ours || !fs.WriteFileAtomic(registryFile, backup.bytes)) {
        prompts.ShowMessage(kNotABackup, kFailedTitle);
        return BackupOutcome::Failed;
    }
    prompts.ShowMessage(kRestoreDone, kDoneTitle);
    return BackupOutcome::Done;
}

}  // namespace lumora
