#pragma once
#include "ports/MciPort.h"

namespace lumora {

// The system's Media Control Interface (winmm), through its wide-character string commands.
class WinMci final : public MciPort {
public:
    unsigned long Send(const std::string& command, std::string* reply) override;
    std::string ErrorText(unsigned long error) override;
    std::optional<std::string> ShortPath(const std::string& path) override;
    PixelRect WindowRect(WindowId window) override;
};

}  // namespace lumora
