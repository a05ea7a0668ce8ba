#pragma once
// Saving the play queue to a list file and loading one back, as the main window's commands, the command line and
// the list editor start them. Every question and box goes through Prompts with its exact text; filtering reports
// to the progress window; loaded names replace the queue through QueueController, so the playlist window's lines
// and the status texts follow.
#include <string>
#include <string_view>
#include <vector>

#include "ports/FileSystem.h"
#include "playlist/QueueController.h"

namespace lumora {

class Prompts;
class SettingsStore;
class FilterProgress;

enum class SaveOutcome {
    Saved,      // written, and the user was told where
    Cancelled,  // the user said no or chose nothing; nothing written
    Refused,    // the user was told why; nothing written
};

// Titles that the list file, the default list and the music library share.
inline constexpr std::string_view kDriveDialogTitle = "驱动器对话框";
inline constexpr std::string_view kNothingLeftTitle = "没有文件剩下";
inline constexpr std::string_view kFileSavedTitle = "文件保存完毕";

// The drive letter of a path for the drive messages: its first character, whatever it is (a UNC path gives "\").
std::string DriveLetterOf(std::string_view path);

// The question asked before saving (`loading` false) or loading a list on a drive of `kind`; empty for a fixed
// disk, which needs none. Kinds without a question of their own are refused (DriveRefusalText).
std::string DriveQuestionText(DriveKind kind, std::string_view letter, bool loading);
std::string DriveRefusalText(std::string_view letter, bool loading);

// The question asked before saving a queue of which `count` entries lie outside the list's `folder`: a list
// file holds one folder, so they cannot go in.
std::string OtherFolderQuestionText(int count, std::string_view folder);

// The box for a folder or name that a list file cannot store (CP936 has no code for one of its characters).
std::string UnstorableNameText(std::string_view text);

// ".QLB" is added to a typed name unless it already ends in ".qlb" in any letter case, so "歌" becomes "歌.QLB"
// and "歌.qlb" stays as it is. The file goes where the save dialog points.
std::string WithListExtension(std::string_view path);

class ListFileController {
public:
    ListFileController(Prompts& prompts, FileSystem& fs, const SettingsStore& settings, QueueController& queue,
                       FilterProgress& progress)
        : prompts_(prompts), fs_(fs), settings_(settings), queue_(queue), progress_(progress) {}

    // The main window's save command: asks about drives that are not fixed disks, asks for a file name, filters
    // when opt::kFilterLists is "1", refuses a list of fewer than two names, writes the file whole and says where it went.
    SaveOutcome SaveListFile();

    // Loads a list file into the queue and plays its first entry. Refused with a box (the queue as it was) when
    // the file is not a list, lies on a drive of unknown kind, or leaves fewer than two names after filtering.
    // Filtering runs when the user accepts it for an unfiltered list, or when the list's folder is not on a fixed
    // disk; lists on fixed disks load their names as they stand.
    AddOutcome LoadListFile(const std::string& path);

    // Loads `names` of `folder` into the queue, plays the first when `play` is set, and shows the queue. False when
    // there are none (nothing changes).
    bool ReplaceQueue(const std::string& folder, const std::vector<std::string>& names, bool play);

private:
    Prompts& prompts_;
    FileSystem& fs_;
    const SettingsStore& settings_;
    QueueController& queue_;
    FilterProgress& progress_;
};

}  // namespace lumora
