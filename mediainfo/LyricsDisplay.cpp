#include "mediainfo/LyricsDisplay.h"

namespace lumora {

bool LyricsDisplay::Load(const std::string& mediaPath) {
    const FoundLyrics found = LookupLyrics(fs_, mediaPath);
    lyrics_ = found.text.empty() ? TimedLyrics{} : BuildTimedLyrics(found.text);
    Show({});
    return HasLyrics();
}

void LyricsDisplay::Clear() {
    lyrics_ = {};
    Show({});
}

void LyricsDisplay::Tick(long long elapsedSeconds) {
    if (const auto lines = ChooseDisplayLines(lyrics_, elapsedSeconds, lineByteLimit_)) Show(*lines);
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
