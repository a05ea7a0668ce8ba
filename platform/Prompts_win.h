#pragma once
#include <windows.h>

#include "platform/Prompts.h"

namespace lumora {

// Boxes and dialogs owned by `owner` (may be null before the main window exists).
class WinPrompts final : public Prompts {
public:
    explicit WinPrompts(HWND owner = nullptr) : owner_(owner) {}
    void SetOwner(HWND owner) { owner_ = owner; }

    void ShowMessage(std::string_view text, std::string_view title) override;
    std::optional<std::string> AskSaveFileName(std::string_view title, std::string_view filter,
                                               std::string_view defaultExtension) override;
    std::optional<std::string> AskOpenFileName(std::string_view title, std::string_view filter) override;

private:
    HWND owner_;
};

}  // namespace lumora
