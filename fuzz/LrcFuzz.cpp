// Any bytes as an LRC file: the lists come in time order within the limits, and the same bytes as lyrics
// typed into the editor go through the shift and the display's choice.
#include "FuzzChecks.h"
#include "mediainfo/LyricsLookup.h"

using namespace lumora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes = fuzz::Bytes(data, size);
    for (const bool correct : {false, true}) fuzz::CheckLyricLists(ParseLrc(bytes, correct), true);
    const std::string text = DecodeLyricsFileText(bytes.substr(0, 4096));
    (void)ShiftTimeTrack(text, -5);
    (void)OneStampPerLine(text);
    const TimedLyrics timed = BuildTimedLyrics(text);
    fuzz::Check(timed.times.size() == timed.texts.size());
    (void)ChooseDisplayLines(timed, 10, 2);
    return 0;
}
