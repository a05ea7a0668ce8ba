#pragma once
// Finds the time-stamped lyrics of a media file when it starts playing, trying in this order:
//   1. the lyrics block embedded in the file (its tail only is read);
//   2. the lyrics file assigned to it in zvplaygc.ini [歌词记录] (in the user's data folder), when that
//      file still exists and is a QGC, LRC or SMI file;
//   3. beside it, the same name with "qgc", "lrc", then "smi" in place of its extension.
// The first source found gives the lyrics, even when they turn out empty.
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

class FileSystem;

inline constexpr std::string_view kLyricsRecordFile = "zvplaygc.ini";
inline constexpr std::string_view kLyricsRecordSection = "歌词记录";

enum class LyricsOrigin { None, Embedded, Assigned, Beside };

struct FoundLyrics {
    LyricsOrigin origin = LyricsOrigin::None;
    std::string source;  // the lyrics file; the media file itself for embedded lyrics; empty for none
    std::string text;    // CR LF lines in the "[mm:ss]text" form
    bool operator==(const FoundLyrics&) const = default;
};

// The zvplaygc.ini key of a media file: its name after the last "\" (or "/"), so one record serves a
// file wherever it is moved. Blanks around it are dropped, and the two characters an INI key line cannot
// hold as they are become their full-width forms: "=" anywhere, and "[" at the start (it would read as a
// section). Both the lookup and AssignLyricsFile use it.
std::string LyricsRecordKey(std::string_view mediaPath);

// The media path up to and including the last "." of its file name; empty when the name has no ".",
// which gets no lookup beside it.
std::string SiblingBase(std::string_view mediaPath);

// The lyrics text of a QGC, LRC or SMI file, chosen by the last three characters of its name (any
// case). Empty optional for another kind or a file that cannot be read.
std::optional<std::string> LoadLyricsFile(FileSystem& fs, const std::string& path, bool correctTiming);

// Lyrics typed or imported with several stamps on one line ("[00:10][01:10]text") are brought into one
// stamp per line: such a text is read as an LRC file (one entry per stamp, sorted by time, unstamped
// lines left out). A text without such lines comes back as it is.
std::string OneStampPerLine(std::string_view text);

// The lookup. `correctTiming` is the lyrics file readers' timing correction; `repair` puts embedded lyrics
// through RepairInfoText (opt::kRepairMediaInfo).
FoundLyrics LookupLyrics(FileSystem& fs, const std::string& mediaPath, bool correctTiming = false, bool repair = false);

enum class AssignResult {
    Assigned,
    NotStorable,  // the key or the path holds a character code page 936 cannot store
    Failed,       // zvplaygc.ini could not be read or written
};

// Records `lyricsPath` as the lyrics of `mediaPath` in zvplaygc.ini [歌词记录].
AssignResult AssignLyricsFile(FileSystem& fs, const std::string& mediaPath, const std::string& lyricsPath);

}  // namespace lumora
