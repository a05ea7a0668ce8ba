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
    if (AudioStatusOf(rc) != AudioStatus::Ok) {
        stream_ = nullptr;
        return false;
    }
    return true;
}

// Converts `src` (possibly nothing, to collect what the decoder still holds) and appends all the PCM it
// gives. The system's decoder takes every byte it is handed but returns only what fits the output
// buffer, keeping the rest for later calls; that rest is collected here until it has none left.
bool AcmMp3Decoder::Convert(std::string_view src, DWORD flags, std::string& pcm, DWORD& used) {
    // Room for the lowest bit rate the stream's version allows (VBR frames go down to it), not for the
    // first frame's bit rate.
    const int channels = header_.mode == ChannelMode::Mono ? 1 : 2;
    const long long lowestRate = header_.version == MpegVersion::Mpeg1 ? 32000 : 8000;
    const long long room = static_cast<long long>(src.size()) * 16 * channels * header_.frequency / lowestRate +
                           4LL * 1152 * 2 * channels;
    std::string out(static_cast<size_t>(room), '\0');
    char none = 0;
    used = 0;
    for (int round = 0; round < 64; ++round) {
        const std::string_view in = round == 0 ? src : std::string_view();
        ACMSTREAMHEADER h{};
        h.cbStruct = sizeof h;
        h.pbSrc = reinterpret_cast<BYTE*>(in.empty() ? &none : const_cast<char*>(in.data()));
        h.cbSrcLength = static_cast<DWORD>(in.size());
        h.pbDst = reinterpret_cast<BYTE*>(out.data());
        h.cbDstLength = static_cast<DWORD>(out.size());
        if (AudioStatusOf(acmStreamPrepareHeader(stream_, &h, 0)) != AudioStatus::Ok) return false;
        const AudioStatus status = AudioStatusOf(acmStreamConvert(stream_, &h, flags));
        const DWORD produced = h.cbDstLengthUsed;
        if (round == 0) used = h.cbSrcLengthUsed;
        h.cbSrcLength = static_cast<DWORD>(in.size());
        h.cbDstLength = static_cast<DWORD>(out.size());
        (void)AudioStatusOf(acmStreamUnprepareHeader(stream_, &h, 0));
        if (status != AudioStatus::Ok) return false;
        pcm.append(out.data(), produced);
        if (produced < out.size()) return true;
    }
    return true;
}

bool AcmMp3Decoder::Decode(std::string_view frames, std::string& pcm) {
    if (!stream_) return false;
    pending_.append(frames.data(), frames.size());
    DWORD used = 0;
    if (!Convert(pending_, ACM_STREAMCONVERTF_BLOCKALIGN, pcm, used)) {
        pending_.clear();
        return false;
    }
    pending_.erase(0, used <= pending_.size() ? used : pending_.size());
    return true;
}

bool AcmMp3Decoder::Drain(std::string& pcm) {
    if (!stream_) return false;
    DWORD used = 0;
    const bool ok = Convert(pending_, ACM_STREAMCONVERTF_END, pcm, used);
    pending_.clear();
    return ok;
}

void AcmMp3Decoder::Reset() {
    pending_.clear();
    if (stream_) (void)AudioStatusOf(acmStreamReset(stream_, 0));
}

void AcmMp3Decoder::Close() {
    if (stream_) (void)AudioStatusOf(acmStreamClose(stream_, 0));
    stream_ = nullptr;
    pending_.clear();
}

// ---- waveOut --------------------------------------------------------------------------------

AudioStatus AudioStatusOf(MMRESULT rc) {
    switch (rc) {
        case MMSYSERR_NOERROR: return AudioStatus::Ok;
        case MMSYSERR_BADDEVICEID:
        case MMSYSERR_NODRIVER:
        case MMSYSERR_ALLOCATED:
        case MMSYSERR_INVALHANDLE: return AudioStatus::NoDevice;
        case WAVERR_BADFORMAT:
        case ACMERR_NOTPOSSIBLE:
        case MMSYSERR_NOTSUPPORTED: return AudioStatus::Unsupported;
        case WAVERR_STILLPLAYING: return AudioStatus::StillPlaying;
        case MMSYSERR_NOMEM: return AudioStatus::NoMemory;
        default: return AudioStatus::Failed;
    }
}

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
        if (self && reinterpret_cast<HWAVEOUT>(wp) == self->device_) self->OnDone(reinterpret_cast<const WAVEHDR*>(lp));
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

void WaveOut::OnDone(const WAVEHDR* header) {
    for (int id = 0; id < AudioOut::kBuffers; ++id) {
        if (header != &headers_[id]) continue;
        // The message of a buffer a reset returned, or of the header's earlier use, can arrive after
        // the header has been written again: only a header that is done now and in flight counts.
        if (!inFlight_[id] || (headers_[id].dwFlags & WHDR_DONE) == 0) return;
        inFlight_[id] = false;
        Unprepare(id);
        if (onDone) onDone(id);
        return;
    }
}

AudioStatus WaveOut::Open(int sampleRate, int channels) {
    Close();
    WAVEFORMATEX f{};
    f.wFormatTag = WAVE_FORMAT_PCM;
    f.nChannels = static_cast<WORD>(channels);
    f.nSamplesPerSec = static_cast<DWORD>(sampleRate);
    f.wBitsPerSample = 16;
    f.nBlockAlign = static_cast<WORD>(channels * 2);
    f.nAvgBytesPerSec = f.nSamplesPerSec * f.nBlockAlign;
    blockAlign_ = f.nBlockAlign;
    const AudioStatus status = AudioStatusOf(
        waveOutOpen(&device_, WAVE_MAPPER, &f, reinterpret_cast<DWORD_PTR>(window_), 0, CALLBACK_WINDOW));
    if (status != AudioStatus::Ok) {
        device_ = nullptr;
        return status;
    }
    // A new device starts at the level the user chose.
    SetVolume(volume_);
    return AudioStatus::Ok;
}

void WaveOut::Unprepare(int id) {
    if (prepared_[id] && device_ &&
        AudioStatusOf(waveOutUnprepareHeader(device_, &headers_[id], sizeof(WAVEHDR))) == AudioStatus::StillPlaying) {
        return;  // still the system's: kept prepared
    }
    prepared_[id] = false;
}

AudioStatus WaveOut::Write(int id, std::string_view pcm) {
    if (!device_ || id < 0 || id >= AudioOut::kBuffers) return AudioStatus::NoDevice;
    // Rewriting a header the system still holds would queue it twice.
    if (inFlight_[id] && (headers_[id].dwFlags & WHDR_DONE) == 0) return AudioStatus::StillPlaying;
    inFlight_[id] = false;
    Unprepare(id);
    if (prepared_[id]) return AudioStatus::StillPlaying;
    data_[id].assign(pcm.data(), pcm.size());
    WAVEHDR& h = headers_[id];
    h = WAVEHDR{};
    h.lpData = data_[id].data();
    h.dwBufferLength = static_cast<DWORD>(data_[id].size());
    AudioStatus status = AudioStatusOf(waveOutPrepareHeader(device_, &h, sizeof h));
    if (status != AudioStatus::Ok) return status;
    prepared_[id] = true;
    status = AudioStatusOf(waveOutWrite(device_, &h, sizeof h));
    inFlight_[id] = status == AudioStatus::Ok;
    return status;
}

AudioStatus WaveOut::Pause() { return device_ ? AudioStatusOf(waveOutPause(device_)) : AudioStatus::NoDevice; }

AudioStatus WaveOut::Restart() { return device_ ? AudioStatusOf(waveOutRestart(device_)) : AudioStatus::NoDevice; }

AudioStatus WaveOut::Reset() {
    if (!device_) return AudioStatus::NoDevice;
    const AudioStatus status = AudioStatusOf(waveOutReset(device_));
    // The reset marks every queued buffer done and posts its MM_WOM_DONE: those are dropped here, so
    // that none of them is taken for the buffer written next in its place.
    MSG m;
    while (PeekMessageW(&m, window_, MM_WOM_DONE, MM_WOM_DONE, PM_REMOVE)) {
    }
    inFlight_.fill(false);
    for (int id = 0; id < AudioOut::kBuffers; ++id) Unprepare(id);
    return status;
}

AudioStatus WaveOut::SetVolume(int level) {
    volume_ = level < 0 ? 0 : level > 20 ? 20 : level;
    if (!device_) return AudioStatus::Ok;  // applied when the device opens
    // The level of our own device: what every system, Wine included, applies to this sound.
    const DWORD channel = static_cast<DWORD>(volume_) * 0xFFFF / 20;
    return AudioStatusOf(waveOutSetVolume(device_, channel | (channel << 16)));
}

long long WaveOut::PlayedSamples() {
    if (!device_) return 0;
    MMTIME t{};
    t.wType = TIME_SAMPLES;
    if (AudioStatusOf(waveOutGetPosition(device_, &t, sizeof t)) != AudioStatus::Ok) return 0;
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
