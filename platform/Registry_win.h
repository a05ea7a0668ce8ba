#pragma once
#include "ports/Registry.h"

namespace lumora {

// The real registry. Each build uses its own registry view, the same one the registry
// editor it starts sees, so a backup holds what this build wrote.
class WinRegistry final : public Registry {
public:
    long CreateKey(RegistryRoot root, const std::string& subKey) override;
    long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::string_view bytes) override;
    long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                   std::string_view utf8) override;
    long WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::uint32_t number) override;
    long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) override;
    long ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) override;
    long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) override;
    long DeleteKey(RegistryRoot root, const std::string& subKey) override;
};

}  // namespace lumora
