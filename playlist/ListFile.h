#pragma once
// Lumora's list files (".QLB"): one folder and the names of media files in it, with a count and a flag telling
// whether the names were filtered when the list was saved. The saved lists, the default list and the music
// library's list share the layout and differ only in their first line:
//
//   line 1  a header whose third "-" piece is the edition marker, "正式版" or "测试版"
//   line 2  the number of names, "*", the filter flag ("1" filtered, "0" not)
//   line 3  the folder (a drive root ends in "\", other folders don't), then "*" and a bare name for each file
//
// Files are code page 936 with CR LF line ends. This module holds the codec, which takes bytes so that it can be
// tested and fuzzed, a bounded reader, and the filter that keeps the names whose files can be played.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "playlist/PlayQueue.h"

namespace lumora {

class FileSystem;

// Which program part writes a list: each has its own first line. Only the marker is compared on reading, so a
// list written by any of them reads back in all of them.
enum class ListKind {
    Main,     // saved from the main window
    Editor,   // the list editor's variant
    Default,  // the default list played at start
    Library,  // the music library's own list
};

std::string_view ListHeader(ListKind kind);

// Limits of what the reader accepts. Every list Lumora writes stays well inside them; a file beyond them is not
// one of ours and is refused as a whole instead of being cut short.
// - The queue takes kMaxQueueNames entries, so a list with more could not be loaded whole.
inline constexpr std::size_t kMaxListNames = kMaxQueueNames;
// - 1000 names of 255 characters (two bytes each in CP936) and a long folder fit in about 512 KiB.
inline constexpr std::size_t kMaxListFileBytes = 1024 * 1024;
// - A file name has at most 255 UTF-16 units on every Windows file system.
inline constexpr std::size_t kMaxListNameUnits = 255;

struct ListFileData {
    std::string header;              // line 1 as read, UTF-8
    std::string countText;           // line 2 before "*", blanks trimmed: informative only, the names on line 3 count
    std::string flag;                // line 2 after "*", blanks trimmed: "1" when the list was filtered
    std::string folder;              // as saved: "D:\" for a drive root, "D:\music" otherwise
    std::vector<std::string> names;  // bare names in list order, each passing IsSafeListName; empty pieces skipped
    bool operator==(const ListFileData&) const = default;
};

enum class ListReadStatus {
    Ok,
    Unreadable,    // missing, or the system refused to read it
    TooLarge,      // more than kMaxListFileBytes
    NotAListFile,  // fewer than three lines, no edition marker, or no folder on line 3
    BadText,       // line 2 or 3 holds bytes that are not CP936
    BadName,       // a name that is not a bare file name, or a folder with characters no path holds
    TooManyNames,  // more than kMaxListNames names
};

struct ListFileRead {
    ListReadStatus status = ListReadStatus::Unreadable;
    ListFileData list;  // filled when status is Ok
};

// True for a header whose third "-" piece is "正式版" or "测试版".
bool HasEditionMarker(std::string_view header);

// A bare file name that stays inside the list's folder: not empty, at most kMaxListNameUnits long, no "\", "/",
// ":" (a drive or a stream), no "*" (the separator), none of < > " | ? or control characters, and not made of
// dots alone ("." and ".." would name the folder or its parent).
bool IsSafeListName(std::string_view name);

// Reads the three lines. Lines end in CR LF, LF or CR; anything after line 3 is ignored.
ListFileRead ParseListFile(std::string_view bytes);

// Reads at most kMaxListFileBytes + 1 bytes of the file and parses them: a huge file is never read whole.
ListFileRead ReadListFile(FileSystem& fs, const std::string& path);

// The file's bytes: the header of `kind`, the number of names and the flag, the folder and the names, each line
// ended by CR LF, in CP936. Empty when the folder or a name is not safe to store (IsSafeListName, a folder with
// "*" or control characters) or CP936 cannot hold it; FirstUnstorableText then says which.
std::string EncodeListFile(ListKind kind, bool filtered, std::string_view folder,
                           const std::vector<std::string>& names);
// The folder or the first name that EncodeListFile cannot store; empty when all can be stored.
std::string FirstUnstorableText(std::string_view folder, const std::vector<std::string>& names);

// The names of the queue that a one-folder list can hold: those of the entries that lie in the queue's folder.
// Entries added from another folder would be joined to the wrong folder on loading, so they are left out.
std::vector<std::string> QueueListNames(const PlayQueue& queue);

// The progress window of a filtering run, one per operation (its title says which). The window shows a status
// line, two counters and the lines of the names dropped. Everything runs on the one UI thread: the window pumps
// its messages inside KeepGoing, so its Cancel button can be pressed while the names are checked.
class FilterProgress {
public:
    virtual ~FilterProgress() = default;
    // Opens the window titled "保存列表文件", "加载列表文件" or "保存默认列表文件"; the cancel flag is set.
    virtual void Open(std::string_view title) = 0;
    // The status line: "正在过滤文件..." before the first name, "文件过滤完毕。" at the end.
    virtual void ShowStatus(std::string_view text) = 0;
    // The two counters: "过滤掉N/A个文件" and "还剩N/A个文件" before the first name, then at the end the counts
    // written as the status texts write numbers ("过滤掉 3个文件", "还剩0个文件").
    virtual void ShowCounters(std::string_view filtered, std::string_view remaining) = 0;
    // One more dropped name, as its list line: the name's position in the list, "-(", the name, ")".
    virtual void AddDroppedLine(std::string_view line) = 0;
    // Asked before each name: pump pending messages, then answer false once Cancel was pressed.
    virtual bool KeepGoing() = 0;
    // The run is over, finished or cancelled; the window may close.
    virtual void Close() = 0;
};

struct FilterResult {
    std::vector<std::string> kept;  // in list order
    int filtered = 0;               // names dropped
    int remaining = 0;              // names kept: kept.size() once the run has finished
    bool cancelled = false;         // the user stopped the run: callers abandon their operation
};

// How much of an MPEG audio file is read to find its first frame, after any ID3v2 tag: four frames of the largest
// layer I-III frames (1728 bytes) with room for junk before them. Filtering reads this much of every ".mp1",
// ".mp2" and ".mp3" file, never the whole file.
inline constexpr std::size_t kMpegProbeBytes = 16 * 1024;

// True when the file starts, after its ID3v2 tags, with MPEG audio frames the frame parser accepts.
bool HoldsMpegAudio(FileSystem& fs, const std::string& path);

// Keeps, in order, the names that pass the media test and whose file exists (`folder` joined with the name);
// ".mp1", ".mp2" and ".mp3" files must also hold MPEG audio (HoldsMpegAudio). With a progress port the run opens
// its window titled `title`, reports to it and closes it; with none it runs without a window.
FilterResult FilterNames(FileSystem& fs, std::string_view folder, const std::vector<std::string>& names,
                         FilterProgress* progress = nullptr, std::string_view title = {});

}  // namespace lumora
