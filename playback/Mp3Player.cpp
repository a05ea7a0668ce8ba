#include "playback/Mp3Player.h"

#include <algorithm>

#include "mediainfo/MpegAudioParser.h"
#include "ports/FileSystem.h"

namespace lumora {

Mp3Player::Mp3Player(FileSystem& fs, Mp3Decoder& decoder, AudioOut& out) : fs_(fs), decoder_(decoder), out_(out) {
    out_.onDone = [this](int id) { OnDone(id); };
}

Mp3Player::~Mp3Player() {
    Close();
    out_.onDone = nullptr;
}

bool Mp3Player::Open(const std::string& path) {
    Close();
    FileRead read = fs_.ReadFile(path);
    if (read.status != FileRead::Status::Ok) return false;
    file_ = std::move(read.bytes);
    MpegFrameWalker walker(file_);
    std::optional<MpegFrameHeader> first;
    long long sample = 0;
    while (auto frame = walker.Next()) {
        if (!first) first = frame->header;
        // One stream at one rate: a frame of another rate or channel count ends what we play.
        if (frame->header.frequency != first->frequency ||
            (frame->header.mode == ChannelMode::Mono) != (first->mode == ChannelMode::Mono)) {
            break;
        }
        frames_.push_back({frame->offset, frame->size, sample});
        sample += frame->samples;
    }
    if (!first || frames_.empty()) {
        Close();
        return false;
    }
    totalSamples_ = sample;
    sampleRate_ = first->frequency;
    channels_ = first->mode == ChannelMode::Mono ? 1 : 2;
    if (!decoder_.Open(*first)) {
        Close();
        return false;
    }
    if (out_.Open(sampleRate_, channels_) != AudioStatus::Ok) {
        decoder_.Close();
        Close();
        return false;
    }
    open_ = true;
    looping_ = false;
    endFrame_ = frames_.size();
    if (!StartAt(0)) {
        Close();
        return false;
    }
    return true;
}

std::size_t Mp3Player::FrameAtSample(long long sample) const {
    const auto it = std::upper_bound(frames_.begin(), frames_.end(), sample,
                                     [](long long s, const FrameRef& f) { return s < f.startSample; });
    return it == frames_.begin() ? 0 : static_cast<std::size_t>(it - frames_.begin() - 1);
}

bool Mp3Player::StartAt(long long sample) {
    out_.Reset();
    playedBase_ = out_.PlayedSamples();
    writtenSamples_ = 0;
    decoder_.Reset();
    queued_ = 0;
    order_.clear();
    std::fill(std::begin(queuedIds_), std::end(queuedIds_), false);
    drained_ = false;
    finished_ = false;
    nextFrame_ = FrameAtSample(std::clamp<long long>(sample, 0, totalSamples_));
    startSample_ = nextFrame_ < frames_.size() ? frames_[nextFrame_].startSample : totalSamples_;
    if (paused_) out_.Pause();
    bool any = false;
    for (int id = 0; id < kBuffers; ++id) any = Fill(id) || any;
    return any;
}

bool Mp3Player::Fill(int id) {
    if (nextFrame_ >= endFrame_ && looping_ && loopStartFrame_ < endFrame_) {
        nextFrame_ = loopStartFrame_;
        decoder_.Reset();
    }
    if (nextFrame_ >= endFrame_) {
        // The end of the stream: what the decoder still holds is played too.
        if (drained_ || looping_) return false;
        drained_ = true;
        pcm_[id].clear();
        return decoder_.Drain(pcm_[id]) && !pcm_[id].empty() && Queue(id);
    }
    const std::size_t last = std::min(endFrame_, nextFrame_ + kFramesPerBuffer);
    const std::size_t from = frames_[nextFrame_].offset;
    const std::size_t to = frames_[last - 1].offset + static_cast<std::size_t>(frames_[last - 1].size);
    pcm_[id].clear();
    const bool decoded = decoder_.Decode(std::string_view(file_).substr(from, to - from), pcm_[id]);
    nextFrame_ = last;
    if (!decoded || pcm_[id].empty()) return Fill(id);
    return Queue(id);
}

bool Mp3Player::Queue(int id) {
    if (out_.Write(id, pcm_[id]) != AudioStatus::Ok) return false;
    writtenSamples_ += static_cast<long long>(pcm_[id].size()) / (2LL * std::max(1, channels_));
    queuedIds_[id] = true;
    order_.push_back(id);
    ++queued_;
    return true;
}

void Mp3Player::OnDone(int id) {
    if (id < 0 || id >= kBuffers || !queuedIds_[id]) return;
    queuedIds_[id] = false;
    --queued_;
    order_.erase(std::remove(order_.begin(), order_.end(), id), order_.end());
    Fill(id);
}

bool Mp3Player::Pause() {
    if (!open_) return false;
    out_.Pause();
    paused_ = true;
    return true;
}

bool Mp3Player::Resume() {
    if (!open_) return false;
    out_.Restart();
    paused_ = false;
    return true;
}

void Mp3Player::Stop() {
    if (!open_) return;
    out_.Reset();
    queued_ = 0;
    order_.clear();
    std::fill(std::begin(queuedIds_), std::end(queuedIds_), false);
    nextFrame_ = endFrame_;
    drained_ = true;
    startSample_ = totalSamples_;
}

void Mp3Player::SetVolume(int level) { out_.SetVolume(level); }

void Mp3Player::Close() {
    if (open_) {
        out_.Reset();
        out_.Close();
        decoder_.Close();
    }
    open_ = false;
    paused_ = false;
    frames_.clear();
    file_.clear();
    queued_ = 0;
    order_.clear();
    std::fill(std::begin(queuedIds_), std::end(queuedIds_), false);
    totalSamples_ = 0;
}

long long Mp3Player::LengthMs() {
    return open_ && sampleRate_ > 0 ? totalSamples_ * 1000 / sampleRate_ : -1;
}

long long Mp3Player::PositionMs() {
    if (!open_ || sampleRate_ <= 0) return -1;
    if (finished_) return LengthMs();  // the end shows the end, whatever the card counted
    const long long sinceStart = std::max(0LL, out_.PlayedSamples() - playedBase_);
    long long played = std::min(totalSamples_, startSample_ + sinceStart);
    if (looping_ && loopStartFrame_ < endFrame_) {
        const long long from = frames_[loopStartFrame_].startSample;
        const long long to = endFrame_ < frames_.size() ? frames_[endFrame_].startSample : totalSamples_;
        if (played >= to && to > from) played = from + (played - from) % (to - from);
    }
    return played * 1000 / sampleRate_;
}

bool Mp3Player::Seek(long long ms) {
    if (!open_) return false;
    // Clamped before it is scaled: a typed time of any size stays a place in the file.
    const long long sample = std::clamp(ms, 0LL, LengthMs()) * sampleRate_ / 1000;
    return StartAt(sample) || sample >= totalSamples_;
}

bool Mp3Player::PlayRange(long long fromMs, long long toMs) {
    if (!open_) return false;
    if (paused_) out_.Restart();
    paused_ = false;
    endFrame_ = toMs < 0 ? frames_.size()
                         : std::min(frames_.size(), FrameAtSample(toMs * sampleRate_ / 1000) + 1);
    looping_ = toMs >= 0;
    loopStartFrame_ = FrameAtSample(std::max(0LL, fromMs) * sampleRate_ / 1000);
    return StartAt(fromMs * sampleRate_ / 1000);
}

// The sound card hands buffers back as soon as the sound server has taken them, which can be a good
// while before they are heard: the end counts once the card's own count has passed what we wrote.
bool Mp3Player::Finished() {
    if (!open_ || paused_ || looping_ || queued_ != 0 || nextFrame_ < endFrame_) {
        stalledPolls_ = 0;
        return false;
    }
    const long long played = out_.PlayedSamples();
    // Some cards stop counting a little short of the end: a count that no longer moves is the end too.
    stalledPolls_ = played == lastPolled_ ? stalledPolls_ + 1 : 0;
    lastPolled_ = played;
    finished_ = played - playedBase_ >= writtenSamples_ || stalledPolls_ >= 2;
    return finished_;
}

std::string_view Mp3Player::SoundingPcm() const {
    if (order_.empty() || paused_) return {};
    return pcm_[order_.front()];
}

}  // namespace lumora
