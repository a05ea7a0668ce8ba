#pragma once
// Test audio: MPEG-1 layer III frames at 128 kbit/s, 44.1 kHz, stereo, no padding (417 bytes and
// 1152 samples each), silent. Enough for the frame walker and the players built on it.
#include <string>

namespace lumora::test {

inline std::string MpegFrames(int count) {
    const std::string frame = "\xFF\xFB\x90\x64" + std::string(413, '\0');
    std::string out;
    for (int i = 0; i < count; ++i) out += frame;
    return out;
}

}  // namespace lumora::test
