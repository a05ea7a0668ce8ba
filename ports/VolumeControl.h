#pragma once

namespace lumora {

// Port: the system mixer's volume, 0 (silent) to 20 (full).
class VolumeControl {
public:
    virtual ~VolumeControl() = default;
    virtual void SetLevel(int level) = 0;
};

}  // namespace lumora
