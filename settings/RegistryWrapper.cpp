#include "settings/RegistryWrapper.h"

#include <array>

#include "ports/Prompts.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

struct RootName {
    std::string_view name;
    RegistryRoot root;
};

constexpr std::array<RootName, 7> kRootNames{{
    {"HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
    {"HKEY_CURRENT_USER", RegistryRoot::CurrentUser},
    {"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
    {"HKEY_USERS", RegistryRoot::Users},
    {"HKEY_PERFORMANCE_DATA", RegistryRoot::PerformanceData},
    {"HKEY_CURRENT_CONFIG", RegistryRoot::CurrentConfig},
    {"HKEY_DYN_DATA", RegistryRoot::DynData},
}};

bool IsMissing(long error) { return error == regerr::kFileNotFound || error == regerr::kPathNotFound; }

}  // namespace

std::optional<KeyPath> SplitKeyPath(std::string_view fullPath) {
    const size_t slash = fullPath.find('\\');
    const std::string_view rootName = fullPath.substr(0, slash);
    for (const auto& r : kRootNames) {
        if (r.name == rootName) {
            std::string sub = slash == std::string_view::npos ? std::string() : std::string(fullPath.substr(slash + 1));
            return KeyPath{r.root, std::move(sub)};
        }
    }
    return std::nullopt;
}

std::string RegistryErrorText(long error) {
    switch (error) {
        case regerr::kCantRead: return "Can't Read Key";
        case regerr::kCantOpen:
        case regerr::kFileNotFound:
        case regerr::kPathNotFound: return "Can't Open Key";
        case regerr::kBadDb:
        case regerr::kRegistryCorrupt: return "The Registry Database is corrupt!";
        case regerr::kBadKey:
        case regerr::kInvalidHandle: return "Bad Key Name";
        case regerr::kAccessDenied: return "Access to this key is denied";
        case regerr::kCantWrite: return "Can't Write Key";
        case regerr::kOutOfMemory:
        case regerr::kNotEnoughMemory: return "Out of memory";
        case regerr::kInvalidParameter: return "Invalid Parameter";
        case regerr::kMoreData: return "There is more data than the buffer has been allocated to hold.";
        default: return "Undefined Error Code:  " + std::to_string(error);
    }
}

bool RegistryWrapper::Fail(long error, std::string_view title) {
    prompts_.ShowMessage(RegistryErrorText(error), title);
    return false;
}

void RegistryWrapper::Report(long error) { Fail(error, kValueErrorTitle); }

bool RegistryWrapper::CreateKey(std::string_view fullPath) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return Fail(regerr::kBadKey, kKeyErrorTitle);
    const long rc = registry_.CreateKey(path->root, path->subKey);
    return rc == regerr::kSuccess || Fail(rc, kKeyErrorTitle);
}

long RegistryWrapper::CreateKeyQuietly(std::string_view fullPath) {
    const auto path = SplitKeyPath(fullPath);
    return path ? registry_.CreateKey(path->root, path->subKey) : regerr::kBadKey;
}

bool RegistryWrapper::WriteValue(std::string_view fullPath, std::string_view name, std::string_view text) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return Fail(regerr::kBadKey, kValueErrorTitle);
    const auto bytes = Utf8ToCp936(text);
    if (!bytes) return Fail(regerr::kInvalidParameter, kValueErrorTitle);
    const long rc = registry_.WriteBinary(path->root, path->subKey, std::string(name), *bytes);
    return rc == regerr::kSuccess || Fail(rc, kValueErrorTitle);
}

bool RegistryWrapper::WriteString(std::string_view fullPath, std::string_view name, std::string_view text) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return Fail(regerr::kBadKey, kValueErrorTitle);
    const long rc = registry_.WriteText(path->root, path->subKey, std::string(name), text);
    return rc == regerr::kSuccess || Fail(rc, kValueErrorTitle);
}

bool RegistryWrapper::WriteNumber(std::string_view fullPath, std::string_view name, std::uint32_t number) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return Fail(regerr::kBadKey, kValueErrorTitle);
    const long rc = registry_.WriteNumber(path->root, path->subKey, std::string(name), number);
    return rc == regerr::kSuccess || Fail(rc, kValueErrorTitle);
}

RegistryReadResult RegistryWrapper::ReadValueQuietly(std::string_view fullPath, std::string_view name) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return {regerr::kBadKey, {}};
    RegistryValue value;
    const long rc = registry_.Read(path->root, path->subKey, std::string(name), value);
    if (IsMissing(rc)) return {};
    if (rc != regerr::kSuccess) return {rc, {}};
    switch (value.kind) {
        case RegistryValue::Kind::Binary:
        case RegistryValue::Kind::Other: return {regerr::kSuccess, Cp936ToUtf8(value.data)};
        case RegistryValue::Kind::Text:
        case RegistryValue::Kind::Number: return {regerr::kSuccess, value.data};
    }
    return {};
}

std::string RegistryWrapper::ReadValue(std::string_view fullPath, std::string_view name) {
    auto result = ReadValueQuietly(fullPath, name);
    if (result.error != regerr::kSuccess) Fail(result.error, kValueErrorTitle);
    return std::move(result.text);
}

std::optional<KeyListing> RegistryWrapper::ListKey(std::string_view fullPath) {
    const auto path = SplitKeyPath(fullPath);
    KeyListing listing;
    if (!path || registry_.ListKey(path->root, path->subKey, listing) != regerr::kSuccess) return std::nullopt;
    return listing;
}

bool RegistryWrapper::DeleteValue(std::string_view fullPath, std::string_view name) {
    const auto path = SplitKeyPath(fullPath);
    if (!path) return Fail(regerr::kBadKey, kValueErrorTitle);
    const long rc = registry_.DeleteValue(path->root, path->subKey, std::string(name));
    return rc == regerr::kSuccess || Fail(rc, kValueErrorTitle);
}

bool RegistryWrapper::DeleteKey(std::string_view fullPath) {
    const auto path = SplitKeyPath(fullPath);
    // Deleting a whole root is never what a caller means.
    if (!path || path->subKey.empty()) return Fail(regerr::kBadKey, kKeyErrorTitle);
    const long rc = registry_.DeleteKey(path->root, path->subKey);
    return rc == regerr::kSuccess || Fail(rc, kKeyErrorTitle);
}

}  // namespace lumora
