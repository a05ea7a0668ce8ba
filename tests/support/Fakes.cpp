#include "support/Fakes.h"

#include <algorithm>

namespace lumora::test {

long FakeRegistry::CreateKey(RegistryRoot root, const std::string& subKey) {
    log.push_back("create " + subKey);
    if (failWith) return failWith;
    keys[{root, subKey}];
    return regerr::kSuccess;
}

long FakeRegistry::WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                               std::string_view bytes) {
    log.push_back("write " + name);
    if (failWith) return failWith;
    const auto it = keys.find({root, subKey});
    if (it == keys.end()) return regerr::kFileNotFound;
    it->second[name] = {RegistryValue::Kind::Binary, std::string(bytes)};
    return regerr::kSuccess;
}

long FakeRegistry::Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) {
    log.push_back("read " + name);
    if (failWith) return failWith;
    const RegistryValue* found = Find(root, subKey, name);
    if (!keys.count({root, subKey})) return regerr::kFileNotFound;
    if (!found) return regerr::kFileNotFound;
    value = *found;
    return regerr::kSuccess;
}

long FakeRegistry::DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) {
    log.push_back("delete " + name);
    if (failWith) return failWith;
    const auto it = keys.find({root, subKey});
    if (it == keys.end() || !it->second.erase(name)) return regerr::kFileNotFound;
    return regerr::kSuccess;
}

long FakeRegistry::DeleteKey(RegistryRoot root, const std::string& subKey) {
    log.push_back("delete key " + subKey);
    if (failWith) return failWith;
    if (!keys.count({root, subKey})) return regerr::kFileNotFound;
    std::erase_if(keys, [&](const auto& k) {
        return k.first.first == root &&
               (k.first.second == subKey || k.first.second.rfind(subKey + "\\", 0) == 0);
    });
    return regerr::kSuccess;
}

void FakeRegistry::Put(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value) {
    keys[{root, subKey}][name] = std::move(value);
}

const RegistryValue* FakeRegistry::Find(RegistryRoot root, const std::string& subKey, const std::string& name) const {
    const auto it = keys.find({root, subKey});
    if (it == keys.end()) return nullptr;
    const auto v = it->second.find(name);
    return v == it->second.end() ? nullptr : &v->second;
}

FileRead FakeFileSystem::ReadFile(const std::string& path) {
    if (std::find(unreadable.begin(), unreadable.end(), path) != unreadable.end()) {
        return {FileRead::Status::Failed, {}};
    }
    const auto it = files.find(path);
    if (it == files.end()) return {FileRead::Status::Missing, {}};
    return {FileRead::Status::Ok, it->second};
}

bool FakeFileSystem::WriteFileAtomic(const std::string& path, std::string_view bytes) {
    if (failWrites) return false;
    files[path] = std::string(bytes);
    return true;
}

bool FakeFileSystem::CreateEmptyFile(const std::string& path) { return WriteFileAtomic(path, {}); }

long long FakeFileSystem::FileSize(const std::string& path) {
    const auto it = files.find(path);
    return it == files.end() ? -1 : static_cast<long long>(it->second.size());
}

}  // namespace lumora::test
