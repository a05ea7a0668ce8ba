#pragma once
// Every registry access of Lumora goes through this wrapper: operations on a full key path
// text such as "HKEY_LOCAL_MACHINE\SOFTWARE\Tavrinsoft", values kept as REG_BINARY holding
// the text's code page 936 bytes with no terminator. Failures are shown to the user in a
// message box and the operation is abandoned.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ports/Registry.h"

namespace lumora {

class Prompts;

struct KeyPath {
    RegistryRoot root;
    std::string subKey;  // may be empty: the root itself
};

// Splits at the first "\"; the root must be one of the seven root names.
std::optional<KeyPath> SplitKeyPath(std::string_view fullPath);

// The text the user sees for a registry error number.
std::string RegistryErrorText(long error);

// Title of the boxes of the key operations (create and delete key).
inline constexpr std::string_view kKeyErrorTitle = "Error";
// Title of the boxes of the value operations.
inline constexpr std::string_view kValueErrorTitle = "Lumora";

struct RegistryReadResult {
    long error = regerr::kSuccess;  // kSuccess also when the key or value is missing
    std::string text;               // empty when missing
};

class RegistryWrapper {
public:
    RegistryWrapper(Registry& registry, Prompts& prompts) : registry_(registry), prompts_(prompts) {}

    bool CreateKey(std::string_view fullPath);
    // As CreateKey, but answers the error number instead of showing it.
    long CreateKeyQuietly(std::string_view fullPath);
    bool WriteValue(std::string_view fullPath, std::string_view name, std::string_view text);
    // A string value (REG_SZ) instead of the options' binary text: COM and the shell read these.
    bool WriteString(std::string_view fullPath, std::string_view name, std::string_view text);
    // A number value (REG_DWORD): the shell's flags.
    bool WriteNumber(std::string_view fullPath, std::string_view name, std::uint32_t number);
    // The value's text; empty when the key or the value is missing, or on a failure (reported).
    std::string ReadValue(std::string_view fullPath, std::string_view name);
    // As ReadValue, but tells the caller about a failure instead of showing it.
    RegistryReadResult ReadValueQuietly(std::string_view fullPath, std::string_view name);
    // What the key holds; empty optional, quietly, when it is missing or cannot be read.
    std::optional<KeyListing> ListKey(std::string_view fullPath);
    bool DeleteValue(std::string_view fullPath, std::string_view name);
    bool DeleteKey(std::string_view fullPath);

    // Shows the box for an error number with the value operations' title.
    void Report(long error);

private:
    bool Fail(long error, std::string_view title);

    Registry& registry_;
    Prompts& prompts_;
};

}  // namespace lumora
