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

// The settings dialog's backup and restore buttons are the users of these (the dialog is still to come).
BackupOutcome BackupSettings(Prompts& prompts, FileSystem& fs, ProcessRunner& runner);
BackupOutcome RestoreSettings(Prompts& prompts, ProcessRunner& runner);

}  // namespace lumora
