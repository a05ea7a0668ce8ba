#pragma once
// What the playback controller asks of a decoder: the media engine (decoder 2) and our MPEG
// audio player (decoder 1) both answer it. Positions are in milliseconds.
#include <string>

namespace lumora {

class Decoder {
public:
    virtual ~Decoder() = default;
    // Opens the file and starts playing it from its start.
    virtual bool Open(const std::string& path) = 0;
    virtual bool Pause() = 0;
    // Continues from where Pause left it.
    virtual bool Resume() = 0;
    virtual void Stop() = 0;
    virtual void Close() = 0;
    // -1 when unknown.
    virtual long long PositionMs() = 0;
    virtual long long LengthMs() = 0;
    // Plays on from `ms` (up to the end of the play range when one is set).
    virtual bool Seek(long long ms) = 0;
    // Plays `fromMs` to `toMs` only; a negative `toMs` means the end of the file.
    virtual bool PlayRange(long long fromMs, long long toMs) = 0;
    // False when the format does not take a speed.
    virtual bool SetSpeed(int percent) = 0;
    // True once playing has reached the end of the file or of the play range.
    virtual bool Finished() = 0;
};

}  // namespace lumora
