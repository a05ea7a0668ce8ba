#pragma once
// Port: starting another program (the system's registry editor, helper tools).
#include <optional>
#include <string>

namespace lumora {

class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    // Runs the command line and waits for it to end; its exit code, or empty when it could not start.
    virtual std::optional<unsigned long> RunAndWait(const std::string& commandLine, bool minimised) = 0;
};

}  // namespace lumora
