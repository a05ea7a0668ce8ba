#pragma once
// The registry as Lumora sees it: every key it writes is the user's own, and a value the user has
// not written yet is looked up in the same path under HKEY_LOCAL_MACHINE, where an installer or an
// older Lumora may have left it. Nothing is ever written there.
#include "ports/Registry.h"

namespace lumora {

class UserFirstRegistry final : public Registry {
public:
    explicit UserFirstRegistry(Registry& system) : system_(system) {}

    long CreateKey(RegistryRoot root, const std::string& subKey) override { return system_.CreateKey(root, subKey); }
    long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::string_view bytes) override {
        return system_.WriteBinary(root, subKey, name, bytes);
    }
    long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                   std::string_view utf8) override {
        return system_.WriteText(root, subKey, name, utf8);
    }
    long WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::uint32_t number) override {
        return system_.WriteNumber(root, subKey, name, number);
    }
    long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) override;
    long ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) override {
        return system_.ListKey(root, subKey, listing);
    }
    long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) override {
        return system_.DeleteValue(root, subKey, name);
    }
    long DeleteKey(RegistryRoot root, const std::string& subKey) override { return system_.DeleteKey(root, subKey); }

private:
    Registry& system_;
};

}  // namespace lumora
