#pragma once
// The audio display's spectrum: the PCM now sounding, folded into a few bands of loudness.
#include <array>
#include <string_view>

namespace lumora {

inline constexpr int kSpectrumBands = 16;

// 16-bit interleaved PCM in, one level per band out (0 silent … 1 full scale), bands spaced
// evenly in pitch from about 60 Hz to the top of the range.
std::array<float, kSpectrumBands> SpectrumBands(std::string_view pcm, int channels, int sampleRate);

}  // namespace lumora
