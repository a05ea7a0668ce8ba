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

// The one reading of the system's answers.
AudioStatus AudioStatusOf(MMRESULT rc);

class AcmMp3Decoder final : public Mp3Decoder {
public:
    ~AcmMp3Decoder() override { Close(); }
    bool Open(const MpegFrameHeader& first) override;
    bool Decode(std::string_view frames, std::string& pcm) override;
    bool Drain(std::string& pcm) override;
    void Reset() override;
    void Close() override;

private:
    bool Convert(std::string_view src, DWORD flags, std::string& pcm, DWORD& used);

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

    AudioStatus Open(int sampleRate, int channels) override;
    AudioStatus Write(int id, std::string_view pcm) override;
    AudioStatus Pause() override;
    AudioStatus Restart() override;
    AudioStatus Reset() override;
    AudioStatus SetVolume(int level) override;
    long long PlayedSamples() override;
    void Close() override;

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void OnDone(const WAVEHDR* header);
    void Unprepare(int id);

    HWND window_ = nullptr;
    HWAVEOUT device_ = nullptr;
    int blockAlign_ = 4;
    int volume_ = 20;
    std::array<WAVEHDR, AudioOut::kBuffers> headers_{};
    std::array<std::string, AudioOut::kBuffers> data_;
    std::array<bool, AudioOut::kBuffers> prepared_{};
    // Written and not yet reported done. An MM_WOM_DONE counts only for a header in flight that the
    // system has marked WHDR_DONE: one left over from before a reset or rewrite is stale.
    std::array<bool, AudioOut::kBuffers> inFlight_{};
};

}  // namespace lumora
