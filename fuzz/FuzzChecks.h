#pragma once
// What every fuzz target shares: a failed check aborts, so libFuzzer keeps the input.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsTiming.h"
#include "playlist/PlayQueue.h"

namespace lumora::fuzz {

inline void Check(bool ok) {
    if (!ok) std::abort();
}

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Text a reader trimmed: no zero bytes, no blanks at either end.
inline void CheckTrimmed(const std::string& text) {
    Check(text.find('\0') == std::string::npos);
    Check(text.empty() || (text.front() != ' ' && text.back() != ' '));
}

// A lyrics reader's lists: one time per text, within the limit, every stamp readable by the lyrics window.
// `lrc`: the LRC reader also sorts by time and leaves no line break in a text, so its text reads back whole.
inline void CheckLyricLists(const LyricLists& lists, bool lrc) {
    if (lists.times.empty()) return Check(lists.texts.empty() || !lrc);
    const auto times = SplitLyricsList(lists.times);
    Check(times.size() == SplitLyricsList(lists.texts).size() && times.size() <= kMaxLyricsEntries);
    long long previous = 0;
    for (const auto& t : times) {
        const auto seconds = StampSeconds(t);
        Check(seconds.has_value() && (!lrc || *seconds >= previous));
        previous = *seconds;
    }
    const TimedLyrics timed = BuildTimedLyrics(LyricListsToText(lists));
    for (long long p : {0LL, 30LL, previous}) Check(ChooseDisplayLines(timed, p, 6).has_value() || !lrc);
    Check(timed.times.size() == times.size() || !lrc);
}

// The queue stays numbered, within its limit, and has a playing entry exactly when it is not empty.
inline void CheckQueue(const PlayQueue& queue) {
    Check((queue.Current() == 0) == (queue.Count() == 0));
    Check(queue.Current() >= 0 && queue.Current() <= queue.Count() && queue.Count() <= kMaxQueueNames);
    const auto lines = queue.Lines();
    Check(lines.size() == static_cast<std::size_t>(queue.Count()));
    for (int i = 1; i <= queue.Count(); ++i) {
        Check(lines[static_cast<std::size_t>(i - 1)] == ListLine(i, queue.EntryAt(i)->name));
    }
    Check(!queue.Texts().playingPanel.empty());
}

}  // namespace lumora::fuzz
