#pragma once
// Time-stamped lyrics: the "[mm:ss]text" line form, the timed list built when a file's lyrics are loaded,
// the choice of the two lines the lyrics window shows for the elapsed time, the per-line byte limit
// ("Gc1Long") with its setting texts, and the information editor's time-track shift.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// Separates the entries of the list strings the lyrics file readers return. The byte 0xFF never occurs
// in UTF-8, so no lyrics text can be taken for it.
inline constexpr char kLyricsListSeparator = '\xFF';

// What the LRC and SMI readers return: one entry per timed line in each string, the stamp ("mm:ss",
// minutes at least two digits) in `times` and the line's text in `texts`, entries joined by
// kLyricsListSeparator (no leading separator). Both strings empty: nothing timed was found.
struct LyricLists {
    std::string times;
    std::string texts;
    bool operator==(const LyricLists&) const = default;
};

std::string JoinLyricsList(const std::vector<std::string>& entries);
// An empty string is one empty entry, as the list strings have always been split.
std::vector<std::string> SplitLyricsList(std::string_view list);
// The reader's lists as lyrics text: "[" stamp "]" text per entry, lines joined with CR LF. Empty when
// the lists are empty or differ in length.
std::string LyricListsToText(const LyricLists& lists);

// The lines of a lyrics text as the multi-line edit box holds them: split at CR LF. A lone LF or CR, as
// other programs leave them, ends a line too. An empty text is one empty line, and a text that ends with
// a line break ends with an empty line (the edit box counts it).
std::vector<std::string_view> SplitLyricsLines(std::string_view text);

// One lyrics line split into its time stamp and its text. The stamp is valid when the line starts with
// "[", holds a "]", and the text between the first character and the LAST "]" splits at ":" into exactly
// two numeric parts (digits with at most one "."); the text is everything after that last "]". A line
// without a valid stamp has no value, and its whole content is its text.
struct StampedLine {
    std::optional<long long> seconds;
    std::string_view text;
};
StampedLine SplitStampedLine(std::string_view line);

// The value of a stamp's inside ("01:02.5"): minutes x 60 + seconds, rounded to whole seconds with halves
// to the even neighbour ([01:02.5] is 62, [01:03.5] is 64). Empty when the text is no valid stamp, or has
// more than nine integer digits in a part.
std::optional<long long> StampSeconds(std::string_view stamp);

// "mm:ss": minutes (at least two digits) and seconds (two digits); negative values as 0.
std::string FormatStamp(long long seconds);

// The timed list of the lyrics window, built when a file's lyrics are loaded: for every line of the text
// (SplitLyricsLines), its stamp value (empty without a valid stamp) and its text. Both lists always have
// the same length; entry 0 is the first line.
struct TimedLyrics {
    std::vector<std::optional<long long>> times;
    std::vector<std::string> texts;
    bool Empty() const { return times.empty(); }
};
TimedLyrics BuildTimedLyrics(std::string_view text);

struct DisplayLines {
    std::string first;   // the line whose stamp has been reached
    std::string second;  // the line that comes next
    bool operator==(const DisplayLines&) const = default;
};

// The two lines for the elapsed time `elapsedSeconds`. Empty (leave the window as it is) when nothing is
// loaded, the time is negative or the lists differ in length. Otherwise, walking entries 1 to the end in
// list order (never sorted): the current stamp is the last value not later than the time, the next stamp
// the first value later than it; without a current stamp entry 0's value is taken, without a next stamp
// the last entry's. Each display line is every entry from 1 on with that value, joined with CR LF, so
// lines with equal stamps show together. Entry 0 only ever serves as that fallback. A fallback without a
// value (entry 0 or the last entry unstamped) matches no line, so that display line is empty.
// `lineByteLimit` (Gc1Long, 0 = none) wraps each shown line as WrapToLineBytes does.
std::optional<DisplayLines> ChooseDisplayLines(const TimedLyrics& lyrics, long long elapsedSeconds,
                                               int lineByteLimit = 0);

// Gc1Long: the setup key's value for the most bytes one shown lyrics line may take (a Chinese character
// counts two); even, 0 for no limit.
inline constexpr std::string_view kLineByteLimitValueName = "Gc1Long";
// The stored text as a limit: a decimal, even, 0 to 9998. Anything else is 0 (no limit).
int ParseLineByteLimit(std::string_view text);

// An over-long line is wrapped, never cut: each line of `text` is broken where the next character would
// take it past `limit` bytes, at the last blank between words when the line holds one (the blank gives
// way to the break), otherwise before that character; no lyrics are lost and no Chinese character is
// split. A single character wider than the limit stands alone on its line. `limit` <= 0 leaves the text
// as it is.
std::string WrapToLineBytes(std::string_view text, int limit);

// The setting dialog's label for a limit: "当前设置每行：N 个字节(一个汉字占两个字节)", or
// "当前设置：不进行调整" for 0.
std::string LineByteLimitLabel(int limit);
// The setting dialog's preview: its sample text as the lyrics window would show it with `limit`.
std::string LineByteLimitPreview(int limit);

// The timing correction of the lyrics file readers: the time track stretched by 22 % (truncated), then
// one second in every ninety taken back.
long long CorrectLyricsSeconds(long long seconds);

// The information editor's time-track shift by `offsetSeconds`; lines come back joined with CR LF.
// - A line whose first bracket group is a valid stamp ("[mm:ss]", seconds may carry a fraction) has every
//   leading stamp shifted; below 0 becomes 0, and stamps are written again as FormatStamp gives them.
// - A line that does not start with "[", has no "]", or whose first bracket group holds no ":" (such as
//   "[副歌]") gets "[00:00]" in front. Empty lines stay empty: there is nothing to time.
// - A first bracket group with ":" that is no valid stamp ("[ab:cd]", "[ti:歌名]") cannot be shifted:
//   empty optional, and the caller reports it.
std::optional<std::string> ShiftTimeTrack(std::string_view text, long long offsetSeconds);

}  // namespace lumora
