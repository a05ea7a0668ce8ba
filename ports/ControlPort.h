#pragma once
// Port: the player controls Lumora hosts in its video window where the system has them. They are
// called late-bound, by dispatch identifier, as the controls document them.
#include <optional>
#include <string>

#include "ports/MciPort.h"

namespace lumora {

enum class HostedControl { MediaPlayer = 3, Flash = 4 };

// The Flash control's method that stops the movie; pausing uses it too.
inline constexpr int kFlashStopMethod = 113;
// The Media Player control's play, pause and stop methods and its current position (seconds).
inline constexpr int kPlayerPlayMethod = 2001;
inline constexpr int kPlayerPauseMethod = 2002;
inline constexpr int kPlayerStopMethod = 2003;
inline constexpr int kPlayerPositionProperty = 1027;

class ControlPort {
public:
    virtual ~ControlPort() = default;
    // True when the control is installed on this system.
    virtual bool Available(HostedControl control) = 0;
    // Puts the control into `window`, filling it, and gives it the file, which it starts by
    // itself. False when any step fails; nothing is left behind then.
    virtual bool Open(HostedControl control, const std::string& path, WindowId window) = 0;
    // Calls a method without arguments by its dispatch identifier.
    virtual bool Call(int dispatchId) = 0;
    // Reads a numeric property by its dispatch identifier; empty when the control refuses.
    virtual std::optional<double> Number(int dispatchId) = 0;
    virtual bool SetNumber(int dispatchId, double value) = 0;
    // A numeric property the control names but whose identifier Lumora does not fix ("Duration").
    virtual std::optional<double> NumberByName(const std::string& name) = 0;
    // Removes the control, if one is there.
    virtual void Close() = 0;
};

}  // namespace lumora
