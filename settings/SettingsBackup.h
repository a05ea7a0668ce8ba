#pragma once
// Backup and restore of the player's whole registry key through the system's registry editor.
// A restore takes effect at the next start: nothing is read back while the program runs.
#include <string>
#include <string_view>

namespace lumora {

class Prompts;
class FileSystem;
class ProcessRunner;

enum class BackupOutcome { Cancelled, Done, Failed };

std::string BackupCommandLine(std::string_view fileName);
std::string RestoreCommandLine(std::string_view fileName);

BackupOutcome BackupSettings(Prompts& prompts, FileSystem& fs, ProcessRunner& runner);
BackupOutcome RestoreSettings(Prompts& prompts, ProcessRunner& runner);

// A portable Lumora keeps its registry in a file (settings/FileRegistry.h): the backup is a copy of
// it, and a restore puts a copy back when it holds Lumora's keys (anything else would wipe the options).
BackupOutcome BackupSettingsFile(Prompts& prompts, FileSystem& fs, const std::string& registryFile);
BackupOutcome RestoreSettingsFile(Prompts& prompts, FileSystem& fs, const std::string& registryFile);

}  // namespace lumora
