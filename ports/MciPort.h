#pragma once
// Port: the Media Control Interface and the few window facts the media engine needs.
#include <cstdint>
#include <optional>
#include <string>

namespace lumora {

// A window handle as the number MCI commands carry in decimal.
using WindowId = std::uint64_t;

struct PixelRect {
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
};

class MciPort {
public:
    virtual ~MciPort() = default;
    // Sends one command string; 0 on success, otherwise the MCI error code. `reply` (when given)
    // receives the device's answer.
    virtual unsigned long Send(const std::string& command, std::string* reply) = 0;
    // The system's text for an MCI error code.
    virtual std::string ErrorText(unsigned long error) = 0;
    // The 8.3 form of an existing path; empty optional when it cannot be formed.
    virtual std::optional<std::string> ShortPath(const std::string& path) = 0;
    // The window's rectangle (its size is what a picture fills).
    virtual PixelRect WindowRect(WindowId window) = 0;
};

}  // namespace lumora
