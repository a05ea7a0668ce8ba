#pragma once
// Port: the modal boxes and file dialogs through which Lumora talks to the user.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class Prompts {
public:
    virtual ~Prompts() = default;
    virtual void ShowMessage(std::string_view text, std::string_view title) = 0;
    // `filter` pairs a description and a pattern with "|": "注册表文件 (*.reg)|*.reg".
    // Empty optional when the user cancels.
    virtual std::optional<std::string> AskSaveFileName(std::string_view title, std::string_view filter,
                                                       std::string_view defaultExtension) = 0;
    virtual std::optional<std::string> AskOpenFileName(std::string_view title, std::string_view filter) = 0;
    // Open dialog with several files allowed. The result as the dialog gives it: one element,
    // the full path, for a single file; otherwise the folder first, then the bare names.
    virtual std::optional<std::vector<std::string>> AskOpenFileNames(std::string_view title,
                                                                     std::string_view filter) = 0;
    // Folder (or drive root) chooser with `prompt` above the tree; empty optional on cancel.
    virtual std::optional<std::string> AskFolder(std::string_view prompt) = 0;
    // Lumora's input box. Empty optional when cancelled; an empty text when OK was pressed on nothing.
    virtual std::optional<std::string> AskText(std::string_view prompt, std::string_view title,
                                               std::string_view initial) = 0;
    // A question with Yes and No; true for Yes.
    virtual bool AskYesNo(std::string_view text, std::string_view title) = 0;
};

}  // namespace lumora
