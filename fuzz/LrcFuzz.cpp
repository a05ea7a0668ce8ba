// Any bytes as an LRC file: the lists come in time order within the limits, and the same bytes as lyrics
// typed into the editor go through the shift and the display's choice.
#include "FuzzChecks.h"
#include "mediainfo/LyricsLookup.h"

LUMORA_FUZZ(input) {
    for (const bool correct : {false, true}) CheckLyricLists(ParseLrc(input, correct), true);
    const std::string text = DecodeLyricsFileText(input.substr(0, 4096));
    (void)ShiftTimeTrack(text, -5);
    (void)OneStampPerLine(text);
    const TimedLyrics timed = BuildTimedLyrics(text);
    Check(timed.times.size() == timed.texts.size() && (ChooseDisplayLines(timed, 10, 2), true));
}
