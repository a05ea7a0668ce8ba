#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

#include "playback/FrequencyBands.h"

namespace lumora {
namespace {

std::string Sine(double hz, int rate, int channels, double amplitude, int frames = 4096) {
    std::string pcm;
    for (int i = 0; i < frames; ++i) {
        const auto v = static_cast<std::int16_t>(amplitude * 32767 * std::sin(2 * std::numbers::pi * hz * i / rate));
        for (int c = 0; c < channels; ++c) pcm += {static_cast<char>(v & 0xFF), static_cast<char>((v >> 8) & 0xFF)};
    }
    return pcm;
}

size_t Loudest(const std::array<float, kSpectrumBands>& bands) {
    return static_cast<size_t>(std::max_element(bands.begin(), bands.end()) - bands.begin());
}

// A pitch lights its own band, louder is higher; silence and too little audio show nothing.
TEST(Spectrum, BandsFollowPitchAndLoudness) {
    const auto mid = SpectrumBands(Sine(1000, 44100, 2, 0.8), 2, 44100);
    EXPECT_LT(Loudest(SpectrumBands(Sine(100, 44100, 2, 0.8), 2, 44100)), Loudest(mid));
    EXPECT_LT(Loudest(mid), Loudest(SpectrumBands(Sine(8000, 44100, 1, 0.8), 1, 44100)));
    for (const auto& none : {SpectrumBands(std::string(8192, '\0'), 2, 44100),
                             SpectrumBands(Sine(1000, 44100, 2, 0.8, 100), 2, 44100),
                             SpectrumBands(Sine(1000, 44100, 2, 0.8), 0, 44100)}) {
        for (float v : none) EXPECT_EQ(v, 0.0f);
    }
}

}  // namespace
}  // namespace lumora
