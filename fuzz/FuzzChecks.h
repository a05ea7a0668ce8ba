#pragma once
// What every fuzz target shares: a failed check aborts, so libFuzzer keeps the input. LUMORA_FUZZ(input)
// opens the body of a target, which runs inside lumora::fuzz on the input's bytes.
#include <cmath>
#include <cstdlib>

#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsTiming.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

#define LUMORA_FUZZ(input)                                                                                \
    namespace lumora::fuzz { void One(std::string_view); }                                                \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {                   \
        return lumora::fuzz::One({reinterpret_cast<const char*>(data), size}), 0;                         \
    }                                                                                                     \
    void lumora::fuzz::One(std::string_view input)

namespace lumora::fuzz {

inline void Check(bool ok) {
    if (!ok) std::abort();
}

// The ports a target's controllers need, in memory.
struct Ports {
    test::FakeFileSystem fs;
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    test::NullQueueView view;
    test::NullFilterProgress progress;
    SettingsStore settings;
    QueueController queue{prompts, fs, view, view};
};

// A lyrics reader's lists: one time per text, within the limit, every stamp readable by the lyrics window.
// `lrc`: the LRC reader also sorts by time and leaves no line break in a text, so its text reads back whole.
inline void CheckLyricLists(const LyricLists& lists, bool lrc) {
    if (lists.times.empty()) return Check(lists.texts.empty() || !lrc);
    const auto times = SplitLyricsList(lists.times);
    Check(times.size() == SplitLyricsList(lists.texts).size() && times.size() <= kMaxLyricsEntries);
    long long previous = 0;
    for (const auto& t : times) {
        Check(StampSeconds(t).has_value() && (!lrc || *StampSeconds(t) >= previous));
        previous = *StampSeconds(t);
    }
    const TimedLyrics timed = BuildTimedLyrics(LyricListsToText(lists));
    Check(!lrc || (timed.times.size() == times.size() && ChooseDisplayLines(timed, previous, 6).has_value()));
}

// The queue stays numbered, within its limit, and has a playing entry exactly when it is not empty.
inline void CheckQueue(const PlayQueue& queue) {
    Check((queue.Current() == 0) == (queue.Count() == 0) && queue.Current() <= queue.Count());
    Check(queue.Count() <= kMaxQueueNames && queue.Lines().size() == static_cast<std::size_t>(queue.Count()));
    for (int i = 1; i <= queue.Count(); ++i) Check(queue.Lines()[i - 1] == ListLine(i, queue.EntryAt(i)->name));
}

}  // namespace lumora::fuzz
