#pragma once
// The play queue's operations as the user starts them: open dialog, folder, dropped files, the command line
// and the hand-off, and the playlist window's remove, move and search. Decisions and texts live here; the
// windows only show what QueueView is told.
#include <string>
#include <string_view>
#include <vector>

#include "playlist/PlayQueue.h"

namespace lumora {

class Prompts;
class FileSystem;

class QueueView {
public:
    virtual ~QueueView() = default;
    // The playlist window's lines, always rebuilt whole, so that an entry's number equals its position.
    virtual void ShowLines(const std::vector<std::string>& lines) = 0;
    virtual void ShowTexts(const QueueTexts& texts) = 0;
    // Highlights an entry's line (1-based) in the playlist window.
    virtual void SelectLine(int index) = 0;
};

// Port: the player the queue hands the entry that is to play now (the playback controller).
class QueuePlayer {
public:
    virtual ~QueuePlayer() = default;
    // Opens the entry's full path and plays it.
    virtual void Play(const std::string& path) = 0;
};

enum class AddOutcome {
    Cancelled,  // nothing chosen or nothing usable; the queue is as it was
    Playing,    // the queue was replaced and its first entry handed to the player
    TooMany,    // more than kMaxQueueNames: the user was told, and the queue is now empty
    Refused,    // the user was told why; the queue is as it was
    ListFile,   // a list file was named: AddResult::listFile is for the list-file reader; the queue is as it was
};

struct AddResult {
    AddOutcome outcome = AddOutcome::Cancelled;
    std::string listFile;  // set with AddOutcome::ListFile
    bool operator==(const AddResult&) const = default;
};

// Whether a dropped path has the shape of a path Lumora can keep, before asking whether it exists: an
// absolute path (drive letter, ":" and "\", or a "\\server\share" path) without the characters Windows
// refuses in names (< > " | ? * and control characters) and without a ":" after the drive's. "*" also
// separates the fields of list files, so a path holding it could not be saved in one.
bool IsRegularPath(std::string_view path);

class QueueController {
public:
    QueueController(Prompts& prompts, FileSystem& fs, QueueView& view, QueuePlayer& player)
        : prompts_(prompts), fs_(fs), view_(view), player_(player) {}

    PlayQueue& Queue() { return queue_; }
    const PlayQueue& Queue() const { return queue_; }

    // Shows the lines and texts of the queue as it stands (after another module changed the current entry).
    void Refresh();
    // Empties the queue and resets every text.
    void Clear();
    // Hands the current entry, if there is one, to the player.
    void PlayCurrent();

    // The open dialog, several files allowed; the chosen files replace the queue as they are.
    AddResult AddFromOpenDialog();
    // A folder or drive root; its media files, in listing order, replace the queue.
    AddResult AddFromFolder();
    // Files and folders dragged onto the playlist window: refused whole when any path is irregular or does not
    // exist; otherwise they are added as AddPending does.
    AddResult AddDropped(const std::vector<std::string>& paths);
    // The main window's pending drop list (the command line's argument, a second instance's hand-off and the
    // main window's drops), given as paths: media files as they are, folders and
    // drive roots as the media files directly in them, in the order given; whatever names nothing, or nothing
    // playable, is skipped silently. The first list file (".qlb") among the paths is returned for the
    // list-file reader and everything else is left alone, since loading the list replaces the queue anyway.
    AddResult AddPending(const std::vector<std::string>& paths);

    // The playlist window's delete: refused for the entry that plays.
    bool RemoveEntry(int index);
    // The playlist window's move: asks for the new position of entry `index`.
    bool MoveEntry(int index);
    // The playlist window's search: refused while no file plays (`filePlays`: open and neither stopped nor
    // ended); otherwise asks for a keyword and looks from the playing entry down (never above) for the first
    // name that holds it. Another entry found plays; the playing one found is only selected. Nothing found
    // changes nothing, without a box of its own.
    bool FindFromCurrent(bool filePlays);

private:
    AddResult RefuseTooMany();
    AddResult ReplaceAndPlay(std::string folder, std::vector<MediaEntry> entries);
    std::vector<MediaEntry> MediaFilesIn(const std::string& folder);

    Prompts& prompts_;
    FileSystem& fs_;
    QueueView& view_;
    QueuePlayer& player_;
    PlayQueue queue_;
};

}  // namespace lumora
