#pragma once
#include "ports/ProcessRunner.h"

namespace lumora {

class WinProcessRunner final : public ProcessRunner {
public:
    std::optional<unsigned long> RunAndWait(const std::string& commandLine, bool minimised) override;
};

}  // namespace lumora
