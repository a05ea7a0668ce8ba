#pragma once
// Windows services that start-up asks about: a running instance and the names on disk.
#include <windows.h>

#include "ports/InstanceProbe.h"
#include "ports/PathLookup.h"

namespace lumora {

// Holds a named mutex for the life of the program; a second Lumora finds it taken.
class WinInstanceProbe final : public InstanceProbe {
public:
    WinInstanceProbe();
    ~WinInstanceProbe() override;
    WinInstanceProbe(const WinInstanceProbe&) = delete;
    WinInstanceProbe& operator=(const WinInstanceProbe&) = delete;
    bool AnotherInstanceRuns() override { return another_; }

private:
    HANDLE mutex_ = nullptr;
    bool another_ = false;
};

class WinPathLookup final : public PathLookup {
public:
    std::optional<std::string> NameOnDisk(const std::string& path) override;
};

}  // namespace lumora
