#pragma once
#include "ports/ProcessRunner.h"

namespace lumora {

// Runs the registry editor for the settings backup and restore (their user, the settings dialog, is still
// to come).
class WinProcessRunner final : public ProcessRunner {
public:
    std::optional<unsigned long> RunAndWait(const std::string& commandLine, bool minimised) override;
};

}  // namespace lumora
