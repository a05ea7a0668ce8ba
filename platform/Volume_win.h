#pragma once
#include "ports/VolumeControl.h"

namespace lumora {

// The wave output volume of the default device, 0 to 20 mapped onto the full range. On Vista and
// later this is Lumora's own volume in the system mixer; on XP the device's wave volume.
class WinVolume final : public VolumeControl {
public:
    void SetLevel(int level) override;
};

}  // namespace lumora
