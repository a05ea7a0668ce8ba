#include "support/Fakes.h"

#include <algorithm>
#include <cctype>

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

long FakeRegistry::WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                             std::string_view utf8) {
    log.push_back("write text " + name);
    if (failWith) return failWith;
    const auto it = keys.find({root, subKey});
    if (it == keys.end()) return regerr::kFileNotFound;
    it->second[name] = {RegistryValue::Kind::Text, std::string(utf8)};
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
        return k.first.first == root && (k.first.second == subKey || k.first.second.rfind(subKey + "\\", 0) == 0);
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

namespace {
std::string ParentOf(const std::string& path) {
    const size_t slash = path.find_last_of('\\');
    if (slash == std::string::npos) return {};
    // "D:\\x" has the drive root "D:\\" as its folder.
    return slash == 2 && path[1] == ':' ? path.substr(0, 3) : path.substr(0, slash);
}
std::string WithoutTrailingSlash(std::string folder) {
    if (folder.size() > 3 && folder.back() == '\\') folder.pop_back();
    return folder;
}
}  // namespace

bool FakeFileSystem::FolderExists(const std::string& path) {
    const std::string folder = WithoutTrailingSlash(path);
    if (std::find(folders.begin(), folders.end(), folder) != folders.end()) return true;
    for (const auto& [file, bytes] : files) {
        for (std::string p = ParentOf(file); !p.empty(); p = p.size() > 3 ? ParentOf(p) : std::string()) {
            if (p == folder) return true;
        }
    }
    return false;
}

std::vector<std::string> FakeFileSystem::ListFiles(const std::string& folder) {
    const std::string f = WithoutTrailingSlash(folder);
    if (const auto it = listingOrder.find(f); it != listingOrder.end()) return it->second;
    std::vector<std::string> names;
    for (const auto& [file, bytes] : files) {
        if (ParentOf(file) == f) names.push_back(file.substr(file.find_last_of('\\') + 1));
    }
    return names;
}

bool FakeFileSystem::CreateEmptyFile(const std::string& path) { return WriteFileAtomic(path, {}); }

DriveKind FakeFileSystem::DriveType(const std::string& path) {
    if (path.size() < 2 || path[1] != ':' || !std::isalpha(static_cast<unsigned char>(path[0]))) {
        return DriveKind::Unknown;
    }
    const auto it = drives.find(static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
    return it == drives.end() ? DriveKind::Fixed : it->second;
}

FileRead FakeFileSystem::ReadFilePart(const std::string& path, long long offset, size_t maxBytes) {
    FileRead whole = ReadFile(path);
    if (whole.status != FileRead::Status::Ok) return whole;
    if (offset < 0) return {FileRead::Status::Failed, {}};
    const size_t from = std::min(whole.bytes.size(), static_cast<size_t>(offset));
    return {FileRead::Status::Ok, whole.bytes.substr(from, maxBytes)};
}

bool FakeFileSystem::WriteFilePart(const std::string& path, long long offset, std::string_view bytes) {
    const auto it = files.find(path);
    if (failWrites || it == files.end() || offset < 0 || !CanOpenForWriting(path)) return false;
    std::string& data = it->second;
    const size_t at = static_cast<size_t>(offset);
    if (data.size() < at + bytes.size()) data.resize(at + bytes.size(), '\0');
    data.replace(at, bytes.size(), bytes);
    return true;
}

bool FakeFileSystem::CopyNewFile(const std::string& from, const std::string& to) {
    const auto it = files.find(from);
    if (failCopies || it == files.end() || files.count(to) != 0) return false;
    const std::string bytes = it->second;
    files[to] = bytes;
    return true;
}

bool FakeFileSystem::RemoveFile(const std::string& path) {
    if (failRemoves) return false;
    return files.erase(path) != 0;
}

bool FakeFileSystem::ClearAttributes(const std::string& path) {
    if (files.count(path) == 0) return false;
    readOnly.erase(std::remove(readOnly.begin(), readOnly.end(), path), readOnly.end());
    return true;
}

bool FakeFileSystem::CanOpenForWriting(const std::string& path) {
    return files.count(path) != 0 && std::find(readOnly.begin(), readOnly.end(), path) == readOnly.end();
}

bool FakeFileSystem::CreateFolder(const std::string& path) {
    if (!FolderExists(path)) folders.push_back(WithoutTrailingSlash(path));
    return true;
}

long long FakeFileSystem::FileSize(const std::string& path) {
    const auto it = files.find(path);
    return it == files.end() ? -1 : static_cast<long long>(it->second.size());
}

}  // namespace lumora::test
