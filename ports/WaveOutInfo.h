#pragma once
// Port: what the system says about its wave-output devices.
#include <array>
#include <cstdint>

namespace lumora {

// The capability record of one wave-output device, as the system fills it.
struct WaveOutCaps {
    std::uint16_t manufacturerId = 0;
    std::uint16_t productId = 0;
    std::uint32_t driverVersion = 0;     // major in the high byte of the low word, minor in the low byte
    std::array<char, 32> productName{};  // code page 936 bytes, up to the first NUL (or all 32)
    std::uint32_t formats = 0;           // the standard PCM format bits
    std::uint16_t channels = 0;
    std::uint32_t functions = 0;  // the extra output capability bits
};

class WaveOutInfo {
public:
    virtual ~WaveOutInfo() = default;
    virtual unsigned DeviceCount() = 0;
    // The record of device 0; all zero when the system refuses it.
    virtual WaveOutCaps FirstDeviceCaps() = 0;
};

}  // namespace lumora
