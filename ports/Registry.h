#pragma once
// Port: the raw registry, one call per Win32 operation. Results are Win32 error numbers
// (0 = success), the same numbers on every Windows version, so the texts the user sees
// are chosen in portable code.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

enum class RegistryRoot { ClassesRoot, CurrentUser, LocalMachine, Users, PerformanceData, CurrentConfig, DynData };

namespace regerr {
inline constexpr long kSuccess = 0;
inline constexpr long kFileNotFound = 2;
inline constexpr long kPathNotFound = 3;
inline constexpr long kAccessDenied = 5;
inline constexpr long kInvalidHandle = 6;
inline constexpr long kNotEnoughMemory = 8;
inline constexpr long kOutOfMemory = 14;
inline constexpr long kInvalidParameter = 87;
inline constexpr long kMoreData = 234;
inline constexpr long kBadDb = 1009;
inline constexpr long kBadKey = 1010;
inline constexpr long kCantOpen = 1011;
inline constexpr long kCantRead = 1012;
inline constexpr long kCantWrite = 1013;
inline constexpr long kRegistryCorrupt = 1015;
}  // namespace regerr

struct RegistryValue {
    enum class Kind { Binary, Text, Number, Other };
    Kind kind = Kind::Binary;
    // Binary and Other: the stored bytes. Text: UTF-8. Number: decimal text of a DWORD.
    std::string data;
    bool operator==(const RegistryValue&) const = default;
};

// What a key holds: the names of its direct sub-keys and of its values (the default value as "").
struct KeyListing {
    std::vector<std::string> subKeys;
    std::vector<std::string> values;
};

class Registry {
public:
    virtual ~Registry() = default;
    // Names and sub-key paths are UTF-8.
    virtual long CreateKey(RegistryRoot root, const std::string& subKey) = 0;
    virtual long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                             std::string_view bytes) = 0;
    // A string value (REG_SZ), for registrations that other programs read as text.
    virtual long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                           std::string_view utf8) = 0;
    // A number value (REG_DWORD), for registrations the shell reads as flags.
    virtual long WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                             std::uint32_t number) = 0;
    virtual long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) = 0;
    // What the key holds, so that a caller can remove a key it emptied and keep one that holds more.
    virtual long ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) = 0;
    virtual long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) = 0;
    // Deletes the key with everything below it, children first.
    virtual long DeleteKey(RegistryRoot root, const std::string& subKey) = 0;
};

}  // namespace lumora
