// Any file head under any name the check knows: it answers without reading past the bytes it was given,
// whatever sizes the head declares, and the name's case does not change the answer.
// Input: one byte that picks the name and how much larger the whole file is, then the head.

#include "FuzzChecks.h"
#include "playback/HeaderCheck.h"

LUMORA_FUZZ(input) {
    if (input.empty()) return;
    static constexpr std::string_view kNames[] = {"a.wav", "a.ico", "a.cur", "a.avi", "a.mp3", "a.aif", "a.txt"};
    static constexpr std::string_view kUpper[] = {"A.WAV", "A.ICO", "A.CUR", "A.AVI", "A.MP3", "A.AIF", "A.TXT"};
    const auto pick = static_cast<unsigned char>(input[0]);
    const std::string_view head = input.substr(1);
    const long long size = static_cast<long long>(head.size()) + (pick / 16) * 1000000LL;
    const std::size_t name = pick % std::size(kNames);
    Check(HeadLooksSound(kUpper[name], head, size) == HeadLooksSound(kNames[name], head, size));
}
