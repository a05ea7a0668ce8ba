#pragma once
// The system's MPEG audio decoder (ACM) and the sound card (waveOut), for decoder 1.
#include <windows.h>
#include <mmsystem.h>
#include <mmreg.h>
#include <msacm.h>

#include <array>
#include <string>

#include "ports/AudioPorts.h"

namespace lumora {

class AcmMp3Decoder final : public Mp3Decoder {
public:
    ~AcmMp3Decoder() override { Close(); }
    bool Open(const MpegFrameHeader& first) override;
    bool Decode(std::string_view frames, std::string& pcm) override;
    void Reset() override;
    void Close() override;

private:
    HACMSTREAM stream_ = nullptr;
    MpegFrameHeader header_;
    std::string pending_;  // bytes the decoder did not take yet
};

// waveOut with CALLBACK_WINDOW: finished buffers come back as MM_WOM_DONE to a message-only
// window of ours, on the user-interface thread.
class WaveOut final : public AudioOut {
public:
    WaveOut();
    ~WaveOut() override;
    WaveOut(const WaveOut&) = delete;
    WaveOut& operator=(const WaveOut&) = delete;

    bool Open(int sampleRate, int channels) override;
    bool Write(int id, std::string_view pcm) override;
    void Pause() override;
    void Restart() override;
    void Reset() override;
    long long PlayedSamples() override;
    void Close() override;

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void Unprepare(int id);

    HWND window_ = nullptr;
    HWAVEOUT device_ = nullptr;
    int blockAlign_ = 4;
    // A Reset makes every queued buffer's MM_WOM_DONE stale; the generation tells them apart.
    DWORD generation_ = 0;
    std::array<WAVEHDR, AudioOut::kBuffers> headers_{};
    std::array<std::string, AudioOut::kBuffers> data_;
    std::array<bool, AudioOut::kBuffers> prepared_{};
};

}  // namespace lumora
