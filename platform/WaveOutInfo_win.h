#pragma once
// The system's wave-output devices (winmm).
#include "ports/WaveOutInfo.h"

namespace lumora {

class WinWaveOutInfo final : public WaveOutInfo {
public:
    unsigned DeviceCount() override;
    WaveOutCaps FirstDeviceCaps() override;
};

}  // namespace lumora
