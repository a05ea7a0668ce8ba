#pragma once
// Lumora's own message box and input box: modal dialogs in the program's look, with stable
// control IDs so that the end-to-end driver can read and answer them.
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace lumora {

inline constexpr WORD IDC_BOX_TEXT = 3001;
inline constexpr WORD IDC_BOX_EDIT = 3002;

enum class BoxButtons { Ok, YesNo };

// IDOK, IDYES or IDNO (closing the box counts as No).
int ShowBox(HWND owner, std::string_view text, std::string_view title, BoxButtons buttons);

// The typed text; empty optional when cancelled.
std::optional<std::string> ShowInputBox(HWND owner, std::string_view prompt, std::string_view title,
                                        std::string_view initial);

}  // namespace lumora
