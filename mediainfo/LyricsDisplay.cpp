#include "mediainfo/LyricsDisplay.h"

#include <algorithm>

#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {

bool LyricsDisplay::Load(const std::string& mediaPath) {
    const FoundLyrics found = LookupLyrics(fs_, mediaPath, settings_.IsOn(opt::kLyricsTimingCorrection),
                                           settings_.IsOn(opt::kRepairMediaInfo));
    lyrics_ = found.text.empty() ? TimedLyrics{} : BuildTimedLyrics(found.text);
    Show({});
    return HasLyrics();
}

void LyricsDisplay::Clear() {
    lyrics_ = {};
    Show({});
}

void LyricsDisplay::Tick(long long elapsedMs) {
    if (elapsedMs < 0) return;
    const long long offsetMs = 500 * std::clamp(settings_.Number(opt::kLyricsOffset).value_or(0), -9LL, 9LL);
    const long long shownSeconds = std::max(0LL, elapsedMs + offsetMs) / 1000;
    if (const auto lines = ChooseDisplayLines(lyrics_, shownSeconds, lineByteLimit_)) Show(*lines);
}

void LyricsDisplay::SetLineByteLimit(int bytes) {
    if (bytes == lineByteLimit_) return;
    lineByteLimit_ = bytes;
    shown_.reset();  // the same lines are laid out anew at the next tick
}

void LyricsDisplay::Show(const DisplayLines& lines) {
    if (shown_ == lines) return;
    shown_ = lines;
    view_.ShowLyricsLines(lines.first, lines.second);
}

}  // namespace lumora
