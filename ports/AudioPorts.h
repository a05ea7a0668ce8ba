#pragma once
// Ports: the system's MPEG audio decoder and the sound card, which decoder 1 plays through.
#include <functional>
#include <string>
#include <string_view>

#include "mediainfo/MpegFrameHeader.h"

namespace lumora {

// Port: the system's MPEG audio decoder (ACM).
class Mp3Decoder {
public:
    virtual ~Mp3Decoder() = default;
    // Prepares for a stream whose first frame has this header; false when the system cannot
    // decode it (the file then goes to the media engine).
    virtual bool Open(const MpegFrameHeader& first) = 0;
    // Decodes whole frames and appends 16-bit interleaved PCM to `pcm`.
    virtual bool Decode(std::string_view frames, std::string& pcm) = 0;
    // At the end of the stream: appends what the decoder still holds.
    virtual bool Drain(std::string& pcm) = 0;
    // Forgets what earlier frames left behind (after a seek).
    virtual void Reset() = 0;
    virtual void Close() = 0;
};

// What the sound card answers; every answer of the system maps onto one of these.
enum class AudioStatus { Ok, NoDevice, Unsupported, StillPlaying, NoMemory, Failed };

// Port: the sound card.
class AudioOut {
public:
    // The ring of buffers the player keeps queued.
    static constexpr int kBuffers = 4;

    virtual ~AudioOut() = default;
    virtual AudioStatus Open(int sampleRate, int channels) = 0;
    // Queues buffer `id` (0 … kBuffers-1) with `pcm`; it comes back through the done callback once
    // it has really been played. A buffer still queued is not queued again (StillPlaying).
    virtual AudioStatus Write(int id, std::string_view pcm) = 0;
    virtual AudioStatus Pause() = 0;
    virtual AudioStatus Restart() = 0;
    // Returns every queued buffer at once, without done callbacks (also none that arrive late), and
    // sets the played count to 0.
    virtual AudioStatus Reset() = 0;
    // The level of this output alone, 0 (silent) to 20 (full).
    virtual AudioStatus SetVolume(int level) = 0;
    // Samples per channel played since Open or the last Reset.
    virtual long long PlayedSamples() = 0;
    virtual void Close() = 0;
    // Called (from the window procedure) when a queued buffer has been played.
    std::function<void(int id)> onDone;
};

}  // namespace lumora
