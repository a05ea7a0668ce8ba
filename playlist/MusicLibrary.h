#pragma once
// "我的音乐库": a folder on a fixed disk into which Lumora copies media files, with a list file of its own
// ("我的音乐库.qlb" in that folder) naming every file copied there. The folder is kept in the registry value
// "我的音乐库" (a string) of the player's key. Files are only ever copied in; nothing here deletes a media file.
#include <string>
#include <string_view>
#include <vector>

#include "playlist/ListFileController.h"

// <windows.h> defines LoadLibrary as a macro; in Windows code that includes this header after it, the
// member below would silently become LoadLibraryW. Windows code calls LoadLibraryW by its own name.
#ifdef LoadLibrary
#undef LoadLibrary
#endif

namespace lumora {

class Registry;

inline constexpr std::string_view kLibraryValueName = "我的音乐库";
inline constexpr std::string_view kLibraryListName = "我的音乐库.qlb";

// What became of one file. Each has its line marker in the add-all log (LibraryMarker).
enum class LibraryAdd {
    Added,            // copied and listed
    AddedExisting,    // the same file was already in the folder; now listed too
    AddedRenamed,     // copied under the name the user gave, and listed
    AlreadyThere,     // the same file was already in the folder and in the list
    Missing,          // the source file does not exist
    SkippedByUser,    // the user said no to renaming, or cancelled the rename box
    CancelledByUser,  // the user cancelled the whole copy (add-all only)
    Failed,           // the copy failed, or the name given cannot hold a file
    NoLibrary,        // stopped before any file: the user chose no library folder, or its list could not be made
};

// " <==（文件成功加入）==> " and the others: the text that follows the file's name in the add-all log.
std::string_view LibraryMarker(LibraryAdd result);

// The copy window of AddAllToLibrary: a log, one line a file. The add runs on the one UI thread; the window pumps
// its messages inside KeepGoing, so its Cancel button stops the whole copy. Rename questions come through Prompts
// while the window is open.
class LibraryCopyView {
public:
    virtual ~LibraryCopyView() = default;
    // Opens the window with its first line: "<==（建立“我的音乐库”文件列表）==>" for a new list file,
    // "<==（重新建立“我的音乐库”文件列表）==>" when an existing one is added to.
    virtual void Open(std::string_view header) = 0;
    // One line a file: its name in the queue followed by its marker (LibraryMarker).
    virtual void AddLine(std::string_view line) = 0;
    // Asked before each file: pump pending messages, then answer false once Cancel was pressed.
    virtual bool KeepGoing() = 0;
    // The copy is over (finished or cancelled); the window stays open for reading until the user closes it.
    virtual void Close() = 0;
};

// The library list is damaged when it is not a list file (ReadListFile) or when its line 3 names another folder
// than the library's, compared ignoring ASCII case and a final "\".
bool SameFolder(std::string_view a, std::string_view b);

class MusicLibrary {
public:
    MusicLibrary(Prompts& prompts, FileSystem& fs, Registry& registry, const SettingsStore& settings,
                 QueueController& queue, ListFileController& lists, LibraryCopyView& copyView)
        : prompts_(prompts),
          fs_(fs),
          registry_(registry),
          settings_(settings),
          queue_(queue),
          lists_(lists),
          copyView_(copyView) {}

    // The library folder as kept in the registry (ending in "\"); empty when not set or unreadable.
    std::string Folder();
    // Folder() + "我的音乐库.qlb"; empty when the library is not set.
    std::string ListPath();

    // Asks for a folder until one on a fixed disk is chosen or the user cancels, then keeps it (with a final "\").
    bool ChooseLibraryFolder();
    // Asks whether to change the folder, then chooses it as above.
    bool ChangeLibraryFolder();
    // Forgets the folder after asking; every copied file and the library's list stay where they are.
    bool DeleteLibrary();
    // Loads the library's list as a list file; refused with a box when the library holds no file.
    AddOutcome LoadLibrary();
    // Copies the playing file in and tells the result in a box. With opt::kLibraryRenameBox at "1" the rename box comes
    // even when no file of that name is in the library.
    LibraryAdd AddCurrentToLibrary();
    // Copies every file of the queue in, logging each to the copy window. False when refused before the window
    // opened, or when the list could not be written afterwards (told in a box).
    bool AddAllToLibrary();

private:
    struct LibraryList {
        std::string folder;  // the library folder, ending in "\"
        std::string path;    // of the list file
        std::vector<std::string> names;
        bool rewritten = false;  // a readable list was there before
    };

    bool PrepareList(LibraryList& list);
    bool WriteList(const LibraryList& list);
    LibraryAdd AddOne(const MediaEntry& source, LibraryList& list, bool renameAlways);
    std::string ProposedName(const MediaEntry& source);

    Prompts& prompts_;
    FileSystem& fs_;
    Registry& registry_;
    const SettingsStore& settings_;
    QueueController& queue_;
    ListFileController& lists_;
    LibraryCopyView& copyView_;
};

}  // namespace lumora
