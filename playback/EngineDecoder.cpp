#include "playback/EngineDecoder.h"

#include <algorithm>
#include <utility>

namespace lumora {

long long EngineDecoder::ShownMs() const {
    if (shownPaused_ || !clockMs_) return shownBeforeMs_;
    return shownBeforeMs_ + static_cast<std::uint32_t>(clockMs_() - shownSince_);
}

void EngineDecoder::ShowFrom(long long ms) {
    shownBeforeMs_ = std::clamp(ms, 0LL, kPictureShowMs);
    shownSince_ = clockMs_ ? clockMs_() : 0;
    shownPaused_ = false;
}

long long EngineDecoder::ToUnits(long long ms) const {
    const auto& s = engine_.State();
    if (s.unitIsMs || s.length <= 0 || lengthMs_ <= 0) return ms;
    return ms * s.length / lengthMs_;
}

long long EngineDecoder::ToMs(long long units) const {
    const auto& s = engine_.State();
    if (units < 0) return -1;
    if (s.unitIsMs || s.length <= 0 || lengthMs_ <= 0) return units;
    return units * lengthMs_ / s.length;
}

bool EngineDecoder::Open(const std::string& path) {
    rangeEndUnits_ = -1;
    lengthMs_ = -1;
    noTimeline_ = false;
    ended_ = false;
    path_ = path;
    if (headCheck_ && !headCheck_(path)) return false;
    openedFiltersFirst_ = filtersFirst_ && filtersFirst_();
    switch (engine_.OpenDispatch(path, videoWindow_, false, openedFiltersFirst_)) {
        case OpenResult::Playing:
            lengthMs_ = engine_.State().unitIsMs ? engine_.Length() : engine_.Commands().LengthMs(kMovieAlias);
            // The MPEG device takes some files it finds nothing in and "plays" them silently.
            if (lengthMs_ == 0) {
                engine_.CloseAll();
                lengthMs_ = -1;
                return false;
            }
            if (volume_ != 20) SetVolume(volume_);
            return true;
        case OpenResult::Picture:
            // A picture has no time line of its own: it gets one of kPictureShowMs, so that the
            // queue goes on after it by the play mode.
            noTimeline_ = true;
            lengthMs_ = kPictureShowMs;
            ShowFrom(0);
            return true;
        case OpenResult::Control:
            // A movie in its control ends when the control says it no longer plays.
            noTimeline_ = true;
            lengthMs_ = 0;
            ShowFrom(0);
            return true;
        default:
            return false;
    }
}

void EngineDecoder::SetVolume(int level) {
    volume_ = level;
    // A device without sound of its own refuses; nothing else to do about it.
    if (lengthMs_ >= 0 && !noTimeline_) engine_.Commands().SetVolume(kMovieAlias, level * 50);
}

bool EngineDecoder::Pause() {
    if (!engine_.Pause()) return false;
    if (noTimeline_) {
        shownBeforeMs_ = ShownMs();
        shownPaused_ = true;
    }
    return true;
}

bool EngineDecoder::Resume() {
    if (noTimeline_) {
        engine_.ForgetPause();
        if (shownPaused_) ShowFrom(shownBeforeMs_);
        return true;
    }
    return engine_.Play("", rangeEndUnits_ >= 0 ? std::to_string(rangeEndUnits_) : std::string());
}

void EngineDecoder::Stop() {
    engine_.Stop();
    if (noTimeline_) {
        shownBeforeMs_ = lengthMs_;
        shownPaused_ = true;
    }
}

void EngineDecoder::Close() { engine_.CloseAll(); }

long long EngineDecoder::PositionMs() {
    if (noTimeline_) return lengthMs_ > 0 ? std::min(ShownMs(), lengthMs_) : 0;
    return ToMs(engine_.Position());
}

bool EngineDecoder::Seek(long long ms) {
    if (noTimeline_) {
        if (lengthMs_ <= 0) return false;
        const bool paused = shownPaused_;
        ShowFrom(ms);
        shownPaused_ = paused;
        return true;
    }
    // Clamped before it is scaled: a typed time of any size stays a place in the file.
    if (lengthMs_ > 0 && ms > lengthMs_) ms = lengthMs_;
    const bool wasPaused = engine_.State().paused;
    engine_.ForgetPause();
    if (!engine_.Play(std::to_string(ToUnits(ms < 0 ? 0 : ms)),
                      rangeEndUnits_ >= 0 ? std::to_string(rangeEndUnits_) : std::string())) {
        return false;
    }
    return !wasPaused || engine_.Pause();
}

bool EngineDecoder::PlayRange(long long fromMs, long long toMs) {
    if (noTimeline_) {
        // Shown again from the start (after a stop); a picture has no range to loop.
        if (lengthMs_ <= 0 || toMs >= 0) return false;
        engine_.ForgetPause();
        ShowFrom(fromMs);
        return true;
    }
    // The MPEG device under Wine does not play reliably again once it has reached the end of a range
    // or file (it stands still, sounding): a range played again starts on the file opened anew.
    if (std::exchange(ended_, false)) {
        if (engine_.OpenDispatch(path_, videoWindow_, false, openedFiltersFirst_) != OpenResult::Playing) return false;
        if (volume_ != 20) SetVolume(volume_);
    }
    rangeEndUnits_ = toMs < 0 ? -1 : ToUnits(toMs);
    lastPosition_ = -1;
    stalledPolls_ = 0;
    engine_.ForgetPause();
    return engine_.Play(std::to_string(ToUnits(fromMs)),
                        rangeEndUnits_ >= 0 ? std::to_string(rangeEndUnits_) : std::string());
}

bool EngineDecoder::SetSpeed(int percent) {
    if (noTimeline_) return false;
    if (percent == engine_.State().currentSpeed) return true;
    return engine_.SetSpeed(percent, true);
}

bool EngineDecoder::Finished() {
    if (engine_.State().paused) return false;
    if (noTimeline_) {
        if (lengthMs_ > 0) return !shownPaused_ && ShownMs() >= lengthMs_;
        // The Flash control's "Playing" turns false at the movie's end (unless it loops); a control
        // that does not say is given a picture's time.
        if (const auto playing = engine_.Playing()) return !*playing;
        return ShownMs() >= kPictureShowMs;
    }
    if (engine_.Mode() == "stopped") return ended_ = true;
    if (rangeEndUnits_ < 0) return false;
    // The MPEG device under Wine does not always stop at the end of a range it plays again: it
    // stays "playing" at B. Reaching B, or standing still in the range's second half, is its end.
    const long long pos = engine_.Position();
    stalledPolls_ = pos == lastPosition_ ? stalledPolls_ + 1 : 0;
    lastPosition_ = pos;
    const long long from = engine_.State().segmentStart;
    ended_ = pos >= rangeEndUnits_ || (stalledPolls_ >= 2 && pos > from + (rangeEndUnits_ - from) / 2);
    return ended_;
}

}  // namespace lumora
