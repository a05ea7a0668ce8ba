#pragma once
// The play queue: the ordered list of media files the player works through, numbered from 1, and the texts
// that report it in the status bar, the neighbour labels and the playlist window.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumora {

struct MediaEntry {
    std::string path;  // full path, as it is opened
    std::string name;  // bare file name, as the playlist shows it
    bool operator==(const MediaEntry&) const = default;
};

// The open dialog's acceptance test refuses only more than this many names, although the message that refuses
// them speaks of 999. Every other way of filling the queue uses the same limit.
inline constexpr int kMaxQueueNames = 1000;

inline constexpr std::string_view kListWindowCaption = "《Lumora》文件列表";
// The title of the main window and the list window's item caption while nothing is open.
inline constexpr std::string_view kNoFileTitle = "无文件";

// folder + name, with "\" between them unless the folder already ends in one (a drive root such as "D:\").
std::string JoinPath(std::string_view folder, std::string_view name);
// The part after the last "\" (or "/").
std::string FileNameOf(std::string_view path);
// The folder as the open dialog gives it: "D:\" for a file in a drive root, "D:\music" (no "\") otherwise.
std::string FolderOf(std::string_view path);
MediaEntry EntryFromPath(std::string_view path);

// A number as the status texts write it: a blank before a positive value (" 3"), none otherwise ("0", "-3").
std::string NumberText(long long value);
// A playlist line: the number in at least three digits with leading zeros, "-(", the name, ")".
std::string ListLine(int number, std::string_view name);

// Every text that reports the queue. Empty and filled queues use deliberately different wordings.
struct QueueTexts {
    std::string playingPanel;   // status bar 1: "正在播放" + the current line
    std::string positionPanel;  // status bar 2: "正在播放第 3个文件"
    std::string totalPanel;     // status bar 3: "共 5个文件"
    std::string selectedText;   // "一共选中 5个文件"
    std::string combinedLabel;  // position and total joined by "-----"
    std::string previousLabel;  // "上一首--" + the previous line, wrapping round to the last entry
    std::string nextLabel;      // "下一首--" + the next line, wrapping round to entry 001
    std::string listCaption;    // the playlist window's caption
    std::string itemCaption;    // the current file's name, "无文件" when there is none
    bool operator==(const QueueTexts&) const = default;
};

QueueTexts EmptyQueueTexts();

// Where the playback controller goes on from the current entry.
enum class QueueDirection { Forward, First, Back, Remembered };

enum class RemoveOutcome { Removed, IsPlaying, NoSuchEntry };

class PlayQueue {
public:
    // Replaces the whole queue and makes entry 1 current. `folder` is the folder of the selection as the
    // dialog returned it (list files store it). More than kMaxQueueNames entries are refused with the queue
    // left untouched; the caller decides what the user sees. No entries at all give an empty queue.
    bool Replace(std::string folder, std::vector<MediaEntry> entries);
    void Clear();

    int Count() const { return static_cast<int>(entries_.size()); }
    int Current() const { return current_; }
    const MediaEntry* CurrentEntry() const { return EntryAt(current_); }
    // nullptr outside 1 … Count().
    const MediaEntry* EntryAt(int index) const;
    const std::string& Folder() const { return folder_; }

    // False, and nothing changes, outside 1 … Count().
    bool SetCurrent(int index);
    // The playing entry stays where it is. Later entries move up one, and the current index follows the
    // playing entry, so that numbers keep equalling positions.
    RemoveOutcome Remove(int index);
    // Takes entry `from` out and puts it back so that it becomes entry `to`; the entries between shift by one.
    // The current index follows the playing entry. False, and nothing changes, when either is out of range.
    bool Move(int from, int to);
    // The first entry at or below `index` whose name contains `keyword`, ignoring ASCII case; 0 when there is
    // none or the keyword is empty. Only the name is searched: the number would make every digit match.
    int FindFrom(int index, std::string_view keyword) const;

    // The playlist line of an entry; empty outside 1 … Count().
    std::string Line(int index) const;
    std::vector<std::string> Lines() const;
    QueueTexts Texts() const;

    // How the end of a file chooses the next entry in the normal modes; Forward once an entry has been chosen.
    QueueDirection PendingDirection() const { return pendingDirection_; }
    void SetPendingDirection(QueueDirection direction) { pendingDirection_ = direction; }

private:
    std::string folder_;
    std::vector<MediaEntry> entries_;  // at most kMaxQueueNames, so the count fits the 16-bit count of old
    int current_ = 0;                  // 1 … Count() while there are entries, 0 exactly when there are none
    QueueDirection pendingDirection_ = QueueDirection::Forward;
};

}  // namespace lumora
