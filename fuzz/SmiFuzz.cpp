// Any bytes as an SMI file: one entry per sync line in both lists, within the limit, every stamp readable
// by the lyrics window.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsTiming.h"
#include "mediainfo/SmiReader.h"

using namespace lumora;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const bool correct : {false, true}) {
        const LyricLists lists = ParseSmi(bytes, correct);
        if (lists.times.empty()) continue;
        const auto times = SplitLyricsList(lists.times);
        Check(times.size() == SplitLyricsList(lists.texts).size() && times.size() <= kMaxLyricsEntries);
        for (const auto& t : times) Check(StampSeconds(t).has_value());
        const TimedLyrics timed = BuildTimedLyrics(LyricListsToText(lists));
        (void)ChooseDisplayLines(timed, 5);
    }
    return 0;
}
