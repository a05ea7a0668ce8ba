#include "settings/UserFirstRegistry.h"

namespace lumora {

long UserFirstRegistry::Read(RegistryRoot root, const std::string& subKey, const std::string& name,
                             RegistryValue& value) {
    const long rc = system_.Read(root, subKey, name, value);
    const bool missing = rc == regerr::kFileNotFound || rc == regerr::kPathNotFound;
    if (root != RegistryRoot::CurrentUser || !missing) return rc;
    return system_.Read(RegistryRoot::LocalMachine, subKey, name, value);
}

}  // namespace lumora
