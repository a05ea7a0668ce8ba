#pragma once
// Decoder 1, our MPEG audio player: our frame walker finds the frames, the system's MPEG decoder
// turns them into PCM, and the sound card plays it from a ring of buffers that come back one by
// one as window messages. Portable: the decoder and the sound card are ports.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mediainfo/MpegFrameHeader.h"
#include "playback/Decoder.h"

namespace lumora {

class FileSystem;

// Port: the system's MPEG audio decoder (ACM).
class Mp3Decoder {
public:
    virtual ~Mp3Decoder() = default;
    // Prepares for a stream whose first frame has this header; false when the system cannot
    // decode it (the file then goes to the media engine).
    virtual bool Open(const MpegFrameHeader& first) = 0;
    // Decodes whole frames and appends 16-bit interleaved PCM to `pcm`.
    virtual bool Decode(std::string_view frames, std::string& pcm) = 0;
    // Forgets what earlier frames left behind (after a seek).
    virtual void Reset() = 0;
    virtual void Close() = 0;
};

// Port: the sound card.
class AudioOut {
public:
    virtual ~AudioOut() = default;
    virtual bool Open(int sampleRate, int channels) = 0;
    // Queues buffer `id` (0 … kBuffers-1) with `pcm`; it comes back through the done callback.
    virtual bool Write(int id, std::string_view pcm) = 0;
    virtual void Pause() = 0;
    virtual void Restart() = 0;
    // Returns every queued buffer at once, without done callbacks, and sets the played count to 0.
    virtual void Reset() = 0;
    // Samples per channel played since Open or the last Reset.
    virtual long long PlayedSamples() = 0;
    virtual void Close() = 0;
    // Called (from the window procedure) when a queued buffer has been played.
    std::function<void(int id)> onDone;
};

class Mp3Player final : public Decoder {
public:
    static constexpr int kBuffers = 4;
    static constexpr int kFramesPerBuffer = 8;

    Mp3Player(FileSystem& fs, Mp3Decoder& decoder, AudioOut& out);
    ~Mp3Player() override;

    bool Open(const std::string& path) override;
    bool Pause() override;
    bool Resume() override;
    void Stop() override;
    void Close() override;
    long long PositionMs() override;
    long long LengthMs() override;
    bool Seek(long long ms) override;
    // With an end (toMs >= 0) the range repeats until another range, open or seek.
    bool PlayRange(long long fromMs, long long toMs) override;
    bool SetSpeed(int percent) override { return percent == 100; }
    bool Finished() override;

    // The PCM of the buffer now sounding (for the audio display); empty when nothing plays.
    std::string_view SoundingPcm() const;
    int Channels() const { return channels_; }
    int SampleRate() const { return sampleRate_; }

private:
    struct FrameRef {
        std::size_t offset;
        int size;
        long long startSample;  // per channel, from the start of the file
    };

    void OnDone(int id);
    // Decodes the next frames into buffer `id` and queues it; false when there is nothing left.
    bool Fill(int id);
    bool StartAt(long long sample);
    std::size_t FrameAtSample(long long sample) const;

    FileSystem& fs_;
    Mp3Decoder& decoder_;
    AudioOut& out_;
    std::string file_;
    std::vector<FrameRef> frames_;
    long long totalSamples_ = 0;
    int sampleRate_ = 0;
    int channels_ = 0;
    bool open_ = false;
    bool paused_ = false;
    std::size_t nextFrame_ = 0;
    std::size_t endFrame_ = 0;       // one past the last frame to play (the play range's end)
    long long startSample_ = 0;      // where playing began after the last open, seek or range
    long long playedBase_ = 0;       // the sound card's count at that moment (a reset need not zero it)
    long long writtenSamples_ = 0;   // handed to the sound card since then
    long long lastPolled_ = -1;      // the card's count at the last Finished() question
    int stalledPolls_ = 0;           // questions since which that count has not moved
    // A play range loops by itself, without a gap: after its last frame come its first again.
    bool looping_ = false;
    std::size_t loopStartFrame_ = 0;
    int queued_ = 0;                 // buffers at the sound card
    bool queuedIds_[kBuffers] = {};
    std::string pcm_[kBuffers];
    std::vector<int> order_;         // queued buffer ids, oldest first
};

}  // namespace lumora
