#include "playback/FrequencyBands.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <vector>

namespace lumora {
namespace {

constexpr int kPoints = 1024;

void Fft(std::vector<std::complex<float>>& a) {
    const size_t n = a.size();
    for (size_t i = 1, j = 0; i < n; ++i) {
        size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(a[i], a[j]);
    }
    for (size_t len = 2; len <= n; len <<= 1) {
        const float angle = -2.0f * std::numbers::pi_v<float> / static_cast<float>(len);
        const std::complex<float> step(std::cos(angle), std::sin(angle));
        for (size_t i = 0; i < n; i += len) {
            std::complex<float> w(1.0f, 0.0f);
            for (size_t k = 0; k < len / 2; ++k) {
                const auto u = a[i + k];
                const auto v = a[i + k + len / 2] * w;
                a[i + k] = u + v;
                a[i + k + len / 2] = u - v;
                w *= step;
            }
        }
    }
}

}  // namespace

std::array<float, kSpectrumBands> SpectrumBands(std::string_view pcm, int channels, int sampleRate) {
    std::array<float, kSpectrumBands> bands{};
    if (channels < 1 || sampleRate <= 0) return bands;
    const size_t frameBytes = static_cast<size_t>(channels) * 2;
    const size_t frames = pcm.size() / frameBytes;
    if (frames < kPoints) return bands;
    // The middle of the buffer, mixed to mono, under a Hann window.
    const size_t start = (frames - kPoints) / 2;
    std::vector<std::complex<float>> a(kPoints);
    for (int i = 0; i < kPoints; ++i) {
        float sum = 0;
        for (int c = 0; c < channels; ++c) {
            const size_t at = (start + static_cast<size_t>(i)) * frameBytes + static_cast<size_t>(c) * 2;
            const auto lo = static_cast<std::uint8_t>(pcm[at]);
            const auto hi = static_cast<std::uint8_t>(pcm[at + 1]);
            sum += static_cast<float>(static_cast<std::int16_t>(static_cast<std::uint16_t>(lo | (hi << 8))));
        }
        const float hann = 0.5f - 0.5f * std::cos(2.0f * std::numbers::pi_v<float> * static_cast<float>(i) /
                                                   static_cast<float>(kPoints - 1));
        a[static_cast<size_t>(i)] = {sum / (32768.0f * static_cast<float>(channels)) * hann, 0.0f};
    }
    Fft(a);
    const float binHz = static_cast<float>(sampleRate) / kPoints;
    const float low = 60.0f;
    const float high = std::min(16000.0f, static_cast<float>(sampleRate) / 2);
    for (int b = 0; b < kSpectrumBands; ++b) {
        const float f0 = low * std::pow(high / low, static_cast<float>(b) / kSpectrumBands);
        const float f1 = low * std::pow(high / low, static_cast<float>(b + 1) / kSpectrumBands);
        float peak = 0;
        for (int k = std::max(1, static_cast<int>(f0 / binHz)); k <= static_cast<int>(f1 / binHz) && k < kPoints / 2;
             ++k) {
            peak = std::max(peak, std::abs(a[static_cast<size_t>(k)]) * 4.0f / kPoints);
        }
        // -60 dB … 0 dB onto 0 … 1.
        const float db = peak > 0 ? 20.0f * std::log10(peak) : -120.0f;
        bands[static_cast<size_t>(b)] = std::clamp((db + 60.0f) / 60.0f, 0.0f, 1.0f);
    }
    return bands;
}

}  // namespace lumora
