#pragma once

namespace lumora {

// Port: keeps the display on (no screen saver, no display power-off) while `on`; off gives the system its
// idle timers back.
class DisplayPower {
public:
    virtual ~DisplayPower() = default;
    virtual void KeepDisplayOn(bool on) = 0;
};

}  // namespace lumora
