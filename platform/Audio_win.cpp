#include "platform/Audio_win.h"

#include <cstring>

namespace lumora {
namespace {

constexpr wchar_t kWaveWindowClass[] = L"LumoraWaveOut";

}  // namespace

// ---- ACM ------------------------------------------------------------------------------------

bool AcmMp3Decoder::Open(const MpegFrameHeader& first) {
    Close();
    header_ = first;
    const WORD channels = first.mode == ChannelMode::Mono ? 1 : 2;
    WAVEFORMATEX pcm{};
    pcm.wFormatTag = WAVE_FORMAT_PCM;
    pcm.nChannels = channels;
    pcm.nSamplesPerSec = static_cast<DWORD>(first.frequency);
    pcm.wBitsPerSample = 16;
    pcm.nBlockAlign = static_cast<WORD>(channels * 2);
    pcm.nAvgBytesPerSec = pcm.nSamplesPerSec * pcm.nBlockAlign;

    const DWORD bytesPerSec = first.bitRate > 0 ? static_cast<DWORD>(first.bitRate / 8) : 16000;
    MMRESULT rc;
    if (first.layer == 3) {
        MPEGLAYER3WAVEFORMAT mp3{};
        mp3.wfx.wFormatTag = WAVE_FORMAT_MPEGLAYER3;
        mp3.wfx.nChannels = channels;
        mp3.wfx.nSamplesPerSec = static_cast<DWORD>(first.frequency);
        mp3.wfx.nAvgBytesPerSec = bytesPerSec;
        mp3.wfx.nBlockAlign = 1;
        mp3.wfx.cbSize = MPEGLAYER3_WFX_EXTRA_BYTES;
        mp3.wID = MPEGLAYER3_ID_MPEG;
        mp3.fdwFlags = MPEGLAYER3_FLAG_PADDING_OFF;
        mp3.nBlockSize = static_cast<WORD>(first.FrameSize() > 0 ? first.FrameSize() : 418);
        mp3.nFramesPerBlock = 1;
        mp3.nCodecDelay = 0;
        rc = acmStreamOpen(&stream_, nullptr, &mp3.wfx, &pcm, nullptr, 0, 0, ACM_STREAMOPENF_NONREALTIME);
    } else {
        MPEG1WAVEFORMAT mp2{};
        mp2.wfx.wFormatTag = WAVE_FORMAT_MPEG;
        mp2.wfx.nChannels = channels;
        mp2.wfx.nSamplesPerSec = static_cast<DWORD>(first.frequency);
        mp2.wfx.nAvgBytesPerSec = bytesPerSec;
        mp2.wfx.nBlockAlign = static_cast<WORD>(first.FrameSize() > 0 ? first.FrameSize() : 1);
        mp2.wfx.cbSize = sizeof(MPEG1WAVEFORMAT) - sizeof(WAVEFORMATEX);
        mp2.fwHeadLayer = static_cast<WORD>(first.layer == 1 ? ACM_MPEG_LAYER1 : ACM_MPEG_LAYER2);
        mp2.dwHeadBitrate = static_cast<DWORD>(first.bitRate);
        mp2.fwHeadMode = static_cast<WORD>(channels == 1 ? ACM_MPEG_SINGLECHANNEL : ACM_MPEG_STEREO);
        mp2.fwHeadFlags = ACM_MPEG_ID_MPEG1;
        rc = acmStreamOpen(&stream_, nullptr, &mp2.wfx, &pcm, nullptr, 0, 0, ACM_STREAMOPENF_NONREALTIME);
    }
    if (rc != MMSYSERR_NOERROR) {
        stream_ = nullptr;
        return false;
    }
    return true;
}

bool AcmMp3Decoder::Decode(std::string_view frames, std::string& pcm) {
    if (!stream_) return false;
    pending_.append(frames.data(), frames.size());
    DWORD outSize = 0;
    if (acmStreamSize(stream_, static_cast<DWORD>(pending_.size()), &outSize, ACM_STREAMSIZEF_SOURCE) != 0 ||
        outSize == 0) {
        outSize = static_cast<DWORD>(pending_.size() * 24 + 65536);
    }
    std::string out(outSize, '\0');
    ACMSTREAMHEADER h{};
    h.cbStruct = sizeof h;
    h.pbSrc = reinterpret_cast<BYTE*>(pending_.data());
    h.cbSrcLength = static_cast<DWORD>(pending_.size());
    h.pbDst = reinterpret_cast<BYTE*>(out.data());
    h.cbDstLength = outSize;
    if (acmStreamPrepareHeader(stream_, &h, 0) != 0) return false;
    const MMRESULT rc = acmStreamConvert(stream_, &h, ACM_STREAMCONVERTF_BLOCKALIGN);
    const DWORD used = h.cbSrcLengthUsed;
    const DWORD produced = h.cbDstLengthUsed;
    h.cbSrcLength = static_cast<DWORD>(pending_.size());
    h.cbDstLength = outSize;
    acmStreamUnprepareHeader(stream_, &h, 0);
    if (rc != 0) {
        pending_.clear();
        return false;
    }
    pcm.append(out.data(), produced);
    pending_.erase(0, used <= pending_.size() ? used : pending_.size());
    return true;
}

void AcmMp3Decoder::Reset() {
    pending_.clear();
    if (stream_) acmStreamReset(stream_, 0);
}

void AcmMp3Decoder::Close() {
    if (stream_) acmStreamClose(stream_, 0);
    stream_ = nullptr;
    pending_.clear();
}

// ---- waveOut --------------------------------------------------------------------------------

WaveOut::WaveOut() {
    static bool registered = false;
    if (!registered) {
        WNDCLASSW wc{};
        wc.lpfnWndProc = WndProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = kWaveWindowClass;
        RegisterClassW(&wc);
        registered = true;
    }
    window_ = CreateWindowExW(0, kWaveWindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr),
                              nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

WaveOut::~WaveOut() {
    Close();
    if (window_) DestroyWindow(window_);
}

LRESULT CALLBACK WaveOut::WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == MM_WOM_DONE) {
        auto* self = reinterpret_cast<WaveOut*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
        auto* header = reinterpret_cast<WAVEHDR*>(lp);
        if (!self || reinterpret_cast<HWAVEOUT>(wp) != self->device_) return 0;
        for (int id = 0; id < AudioOut::kBuffers; ++id) {
            // A buffer returned by a Reset (an older generation) is not reported.
            if (header == &self->headers_[id] && header->dwUser == self->generation_) {
                self->Unprepare(id);
                if (self->onDone) self->onDone(id);
                break;
            }
        }
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

bool WaveOut::Open(int sampleRate, int channels) {
    Close();
    WAVEFORMATEX f{};
    f.wFormatTag = WAVE_FORMAT_PCM;
    f.nChannels = static_cast<WORD>(channels);
    f.nSamplesPerSec = static_cast<DWORD>(sampleRate);
    f.wBitsPerSample = 16;
    f.nBlockAlign = static_cast<WORD>(channels * 2);
    f.nAvgBytesPerSec = f.nSamplesPerSec * f.nBlockAlign;
    blockAlign_ = f.nBlockAlign;
    if (waveOutOpen(&device_, WAVE_MAPPER, &f, reinterpret_cast<DWORD_PTR>(window_), 0, CALLBACK_WINDOW) != 0) {
        device_ = nullptr;
        return false;
    }
    return true;
}

void WaveOut::Unprepare(int id) {
    if (prepared_[id] && device_) waveOutUnprepareHeader(device_, &headers_[id], sizeof(WAVEHDR));
    prepared_[id] = false;
}

bool WaveOut::Write(int id, std::string_view pcm) {
    if (!device_ || id < 0 || id >= AudioOut::kBuffers) return false;
    Unprepare(id);
    data_[id].assign(pcm.data(), pcm.size());
    WAVEHDR& h = headers_[id];
    h = WAVEHDR{};
    h.lpData = data_[id].data();
    h.dwBufferLength = static_cast<DWORD>(data_[id].size());
    h.dwUser = generation_;
    if (waveOutPrepareHeader(device_, &h, sizeof h) != 0) return false;
    prepared_[id] = true;
    return waveOutWrite(device_, &h, sizeof h) == 0;
}

void WaveOut::Pause() {
    if (device_) waveOutPause(device_);
}

void WaveOut::Restart() {
    if (device_) waveOutRestart(device_);
}

void WaveOut::Reset() {
    if (!device_) return;
    ++generation_;
    waveOutReset(device_);
    for (int id = 0; id < AudioOut::kBuffers; ++id) Unprepare(id);
}

long long WaveOut::PlayedSamples() {
    if (!device_) return 0;
    MMTIME t{};
    t.wType = TIME_SAMPLES;
    if (waveOutGetPosition(device_, &t, sizeof t) != 0) return 0;
    if (t.wType == TIME_SAMPLES) return t.u.sample;
    if (t.wType == TIME_BYTES) return t.u.cb / static_cast<DWORD>(blockAlign_);
    return 0;
}

void WaveOut::Close() {
    if (!device_) return;
    Reset();
    waveOutClose(device_);
    device_ = nullptr;
}

}  // namespace lumora
