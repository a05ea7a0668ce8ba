#pragma once
// Test audio: MPEG-1 layer III frames at 128 kbit/s, 44.1 kHz, stereo, no padding (417 bytes and
// 1152 samples each), silent. Enough for the frame walker and the players built on it.
#include <string>

namespace lumora::test {

inline std::string MpegFrames(int count) {
    std::string frame(417, '\0');
    frame[0] = '\xFF';
    frame[1] = '\xFB';
    frame[2] = '\x90';
    frame[3] = '\x64';
    std::string out;
    for (int i = 0; i < count; ++i) out += frame;
    return out;
}

}  // namespace lumora::test
