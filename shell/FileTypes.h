#pragma once
// File types, their icon and the folder and drive verbs, as Lumora registers them for the user.
//
// Everything goes under HKEY_CURRENT_USER\Software\Classes, which HKEY_CLASSES_ROOT merges: a limited
// Windows account cannot write the machine's classes, and removing the user's keys brings back whatever
// the machine had. Lumora also registers itself as a capable application, so that it is listed in the
// system's Default Apps, where Windows 8 and later let only the user choose the default program.
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class RegistryWrapper;

// The description of a media file's kind ("MP3 压缩为三层的音频文件"), by its name; empty when unknown.
std::string_view FileTypeDescription(std::string_view fileName);

// The extensions the file-type page lists, each with its dot: the playable media extensions in the order
// of the media test's list (those kept there without their dot get it back, so ".mpeg" is a real
// extension), then Lumora's own list files ".qlb".
std::vector<std::string> FileTypeItems();

struct IconChoice {
    std::string file;
    int index = 0;
    bool operator==(const IconChoice&) const = default;
};
// A DefaultIcon text split at its last ","; a text without one is a file with index 0.
IconChoice ParseIconText(std::string_view text);

// What the registry says about one extension.
struct FileTypeState {
    bool handled = false;  // its handler opens it with this copy of Lumora
    IconChoice icon;
};

struct FileTypeChoice {
    std::string extension;
    bool wanted = false;
};

// Failures are shown by the wrapper's boxes; an operation stops at its first failure and answers false.
class FileTypeRegistrar {
public:
    // `programPath`: the full path of Lumora.exe (UTF-8), which every command names.
    FileTypeRegistrar(RegistryWrapper& registry, std::string programPath);

    // The command the shell runs: the quoted program path and " %1".
    std::string Command() const;
    // The program's own first icon: what a type shows when no icon was chosen.
    IconChoice ProgramIcon() const;

    bool RegisterFileType(std::string_view extension, const IconChoice& icon);
    // Puts back the handler the extension had before the first registration, and removes every key and
    // value the registrations added.
    bool RemoveFileType(std::string_view extension);
    FileTypeState RefreshFileTypeItem(std::string_view extension);
    bool SetIcon(std::string_view extension, const IconChoice& icon);

    bool SetFolderVerb(bool on);
    bool SetDriveVerb(bool on);
    // The check boxes' state: the verb's command is exactly this program's.
    bool FolderVerbSet();
    bool DriveVerbSet();

    // The icon the handled types show (the first one's), else the program's.
    IconChoice CurrentIcon(const std::vector<std::string>& extensions);
    // Registers the wanted types this program does not handle yet, with `icon`, and removes the unwanted ones
    // it handles. `changed` tells whether anything changed (the shell must then be told); false on a failure.
    bool Apply(const std::vector<FileTypeChoice>& choices, const IconChoice& icon, bool& changed);

private:
    bool SetVerb(std::string_view owner, bool on);
    bool VerbSet(std::string_view owner);
    bool AddCapability(const std::string& extension, const std::string& handler);
    bool RemoveCapability(const std::string& extension);
    // Deletes `key` when it holds nothing (no sub-key and no value, or only an empty default).
    bool DeleteIfBare(const std::string& key, bool emptyDefault = false);

    RegistryWrapper& registry_;
    std::string programPath_;
};

}  // namespace lumora
