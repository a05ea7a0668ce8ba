#pragma once
// The default list: the queue saved as "zvp3mr.qlb" in Lumora's per-user data folder, loaded at start when no file
// was given. Made from the menu, or on exit when opt::kSaveListOnExit is "1".
#include <string>
#include <string_view>

#include "playlist/ListFileController.h"

namespace lumora {

inline constexpr std::string_view kDefaultListFileName = "zvp3mr.qlb";

enum class DefaultListLoad {
    None,     // there is no default list (or it could not be read just now); nothing changed
    Playing,  // the queue was replaced and its first entry handed to the player (opt::kDefaultListPlays is "1")
    Waiting,  // the queue was replaced; the player waits for the user to press play
    Damaged,  // the user was told, and the file was deleted
};

enum class DefaultListDelete { NotSet, Deleted, Failed };

class DefaultList {
public:
    DefaultList(Prompts& prompts, FileSystem& fs, const SettingsStore& settings, QueueController& queue,
                ListFileController& lists, FilterProgress& progress)
        : prompts_(prompts), fs_(fs), settings_(settings), queue_(queue), lists_(lists), progress_(progress) {}

    // FileSystem::UserDataFolder() + "\zvp3mr.qlb"; empty when the system gives no such folder.
    std::string Path();

    // The menu command: the queue's folder must be on a fixed disk; the names are always filtered and at least two
    // must remain. Overwrites an older default list.
    SaveOutcome SaveDefaultList();
    // Start-up without a file to open. The names are filtered without a window; a file that is not a list or
    // whose files are all gone is reported and deleted. One surviving name is enough to play.
    DefaultListLoad LoadDefaultList();
    DefaultListDelete DeleteDefaultList();
    // For the main window's close: when opt::kSaveListOnExit is "1", the queue becomes the default list as
    // SaveDefaultList would make it, but without questions, boxes or progress window, since the program is going away.
    // A queue that cannot make a list leaves the old default list alone. True when a list was written.
    bool SaveDefaultListOnExit();

private:
    enum class Built { Ok, NotFixed, Cancelled, TooFew, Unstorable, NoFolder };
    Built Build(FilterProgress* progress, std::string& bytes, std::string& unstorable);

    Prompts& prompts_;
    FileSystem& fs_;
    const SettingsStore& settings_;
    QueueController& queue_;
    ListFileController& lists_;
    FilterProgress& progress_;
};

}  // namespace lumora
