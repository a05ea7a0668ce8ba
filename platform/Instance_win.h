#pragma once
// The Windows service that start-up asks about: a running instance.
#include <windows.h>

#include "ports/InstanceProbe.h"

namespace lumora {

// Holds a named mutex for the life of the program; a second Lumora finds it taken.
class WinInstanceProbe final : public InstanceProbe {
public:
    WinInstanceProbe();
    ~WinInstanceProbe() override;
    WinInstanceProbe(const WinInstanceProbe&) = delete;
    WinInstanceProbe& operator=(const WinInstanceProbe&) = delete;
    bool AnotherInstanceRuns() override { return another_; }
    bool HandOver(std::string_view argument) override;
    void PointToSlot() override;
    // A second start that hands nothing over after all tells the running instance, which waits for the
    // starts made together with the ones it has heard from.
    void Withdraw();

private:
    HANDLE mutex_ = nullptr;
    bool another_ = false;
};

}  // namespace lumora
