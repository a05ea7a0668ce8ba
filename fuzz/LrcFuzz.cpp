// Any bytes as an LRC file: the two lists have one entry each per timed line, within the limits, in time
// order, and the lyrics text they make goes through the display's choice and the time-track shift.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsLookup.h"
#include "mediainfo/LyricsTiming.h"

using namespace lumora;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const bool correct : {false, true}) {
        const LyricLists lists = ParseLrc(bytes, correct);
        if (lists.times.empty()) {
            Check(lists.texts.empty());
            continue;
        }
        const auto times = SplitLyricsList(lists.times);
        Check(times.size() == SplitLyricsList(lists.texts).size() && times.size() <= kMaxLyricsEntries);
        long long previous = 0;
        for (const auto& t : times) {
            const auto seconds = StampSeconds(t);
            Check(seconds.has_value() && *seconds >= previous);
            previous = *seconds;
        }
        const std::string text = LyricListsToText(lists);
        const TimedLyrics timed = BuildTimedLyrics(text);
        Check(timed.times.size() == times.size());
        for (long long p : {0LL, 30LL, previous}) Check(ChooseDisplayLines(timed, p, 6).has_value());
    }
    // The same bytes as lyrics typed into the editor.
    const std::string text = DecodeLyricsFileText(bytes.substr(0, 4096));
    (void)ShiftTimeTrack(text, -5);
    (void)OneStampPerLine(text);
    const TimedLyrics timed = BuildTimedLyrics(text);
    Check(timed.times.size() == timed.texts.size());
    (void)ChooseDisplayLines(timed, 10, 2);
    return 0;
}
