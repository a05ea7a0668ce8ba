#pragma once
#include "ports/ShellNotifier.h"

namespace lumora {

class WinShellNotifier final : public ShellNotifier {
public:
    void AssociationsChanged() override;
};

}  // namespace lumora
