#pragma once
// Decoder 1, our MPEG audio player: our frame walker finds the frames, the system's MPEG decoder
// turns them into PCM, and the sound card plays it from a ring of buffers that come back one by
// one as window messages. Portable: the decoder and the sound card are ports.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "playback/Decoder.h"
#include "ports/AudioPorts.h"

namespace lumora {

class FileSystem;

class Mp3Player final : public Decoder {
public:
    static constexpr int kBuffers = AudioOut::kBuffers;
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
    // The level of this player's own sound, 0 … 20.
    void SetVolume(int level);

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
    // Hands buffer `id`'s PCM to the sound card.
    bool Queue(int id);
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
    bool drained_ = false;   // the decoder's rest has been taken at the end of the stream
    bool finished_ = false;  // Finished() said so: the position is the end
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
