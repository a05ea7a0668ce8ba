#pragma once
#include <windows.h>

#include "ports/Prompts.h"

namespace lumora {

// Lumora's own boxes and the system's file and folder dialogs, owned by `owner` (null before
// the main window exists).
class WinPrompts final : public Prompts {
public:
    explicit WinPrompts(HWND owner = nullptr) : owner_(owner) {}
    void SetOwner(HWND owner) { owner_ = owner; }

    void ShowMessage(std::string_view text, std::string_view title) override;
    std::optional<std::string> AskSaveFileName(std::string_view title, std::string_view filter,
                                               std::string_view defaultExtension) override;
    std::optional<std::string> AskOpenFileName(std::string_view title, std::string_view filter) override;
    std::optional<std::vector<std::string>> AskOpenFileNames(std::string_view title, std::string_view filter) override;
    std::optional<std::string> AskFolder(std::string_view prompt) override;
    std::optional<std::string> AskText(std::string_view prompt, std::string_view title,
                                       std::string_view initial) override;
    bool AskYesNo(std::string_view text, std::string_view title) override;

private:
    HWND owner_;
};

}  // namespace lumora
