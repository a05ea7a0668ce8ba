#pragma once
#include <windows.h>

#include <string>

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
    std::optional<std::wstring> RunFileDialog(std::string_view title, std::string_view filter,
                                              std::string_view defaultExtension, bool save, bool many);
    std::optional<std::string> AskFileName(std::string_view title, std::string_view filter,
                                           std::string_view defaultExtension, bool save);

    HWND owner_;
    // Where the last file or folder dialog ended: the next one starts there (for this run of the
    // program; before any, in the user's music folder).
    std::wstring lastFolder_;
};

}  // namespace lumora
