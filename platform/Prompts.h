#pragma once
// Port: the modal boxes and file dialogs through which Lumora talks to the user.
#include <optional>
#include <string>
#include <string_view>

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
};

}  // namespace lumora
