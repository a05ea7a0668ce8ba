#include "settings/FileRegistry.h"

#include <algorithm>

#include "ports/FileSystem.h"

namespace lumora {
namespace {

constexpr std::string_view kHex = "0123456789ABCDEF";
constexpr std::string_view kKinds = "btno";  // in the order of RegistryValue::Kind

std::string RootName(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return "HKEY_CLASSES_ROOT";
        case RegistryRoot::CurrentUser:
            return "HKEY_CURRENT_USER";
        case RegistryRoot::LocalMachine:
            return "HKEY_LOCAL_MACHINE";
        case RegistryRoot::Users:
            return "HKEY_USERS";
        case RegistryRoot::PerformanceData:
            return "HKEY_PERFORMANCE_DATA";
        case RegistryRoot::CurrentConfig:
            return "HKEY_CURRENT_CONFIG";
        case RegistryRoot::DynData:
            return "HKEY_DYN_DATA";
    }
    return "";
}

char Fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Fold(x) == Fold(y); });
}

// Inside `key`, or the key itself.
bool Within(std::string_view path, std::string_view key) {
    return SameName(path.substr(0, key.size()), key) && (path.size() == key.size() || path[key.size()] == '\\');
}

bool HasLineBreak(std::string_view text) { return text.find_first_of("\r\n") != std::string_view::npos; }

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

std::string FullPath(RegistryRoot root, const std::string& subKey) { return RootName(root) + "\\" + subKey; }

}  // namespace

FileRegistry::FileRegistry(FileSystem& files, std::string path) : files_(files), path_(std::move(path)) { Reload(); }

std::string FileRegistry::Format(const std::vector<Key>& keys) {
    std::string text;
    for (const auto& key : keys) {
        text += "[" + key.path + "]\r\n";
        for (const auto& [name, value] : key.values) {
            text += name + "=" + kKinds[static_cast<size_t>(value.kind)] + ":";
            for (unsigned char c : value.data) text += {kHex[c >> 4], kHex[c & 15]};
            text += "\r\n";
        }
    }
    return text;
}

std::vector<FileRegistry::Key> FileRegistry::Parse(std::string_view text) {
    std::vector<Key> keys;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            keys.push_back({std::string(line.substr(1, line.size() - 2)), {}});
            continue;
        }
        const size_t equals = line.rfind('=');
        if (keys.empty() || equals == std::string_view::npos || line.size() < equals + 3 || line[equals + 2] != ':')
            continue;
        const size_t kind = kKinds.find(line[equals + 1]);
        const std::string_view hex = line.substr(equals + 3);
        if (kind == std::string_view::npos || hex.size() % 2) continue;
        RegistryValue value{static_cast<RegistryValue::Kind>(kind), {}};
        bool ok = true;
        for (size_t i = 0; ok && i < hex.size(); i += 2) {
            const int high = HexDigit(hex[i]), low = HexDigit(hex[i + 1]);
            ok = high >= 0 && low >= 0;
            value.data += static_cast<char>(high * 16 + low);
        }
        if (ok) keys.back().values.emplace_back(std::string(line.substr(0, equals)), std::move(value));
    }
    return keys;
}

bool FileRegistry::Reload() {
    const FileRead read = files_.ReadFile(path_);
    if (read.status == FileRead::Status::Failed) return false;
    keys_ = read.status == FileRead::Status::Ok ? Parse(read.bytes) : std::vector<Key>{};
    return true;
}

long FileRegistry::Save() {
    return files_.WriteFileAtomic(path_, Format(keys_)) ? regerr::kSuccess : regerr::kCantWrite;
}

FileRegistry::Key* FileRegistry::FindKey(const std::string& path) {
    const auto it = std::find_if(keys_.begin(), keys_.end(), [&](const Key& k) { return SameName(k.path, path); });
    return it == keys_.end() ? nullptr : &*it;
}

long FileRegistry::CreateKey(RegistryRoot root, const std::string& subKey) {
    const std::string path = FullPath(root, subKey);
    if (HasLineBreak(path) || path.back() == '\\') return regerr::kInvalidParameter;
    if (!Reload()) return regerr::kAccessDenied;
    if (FindKey(path)) return regerr::kSuccess;
    keys_.push_back({path, {}});
    return Save();
}

long FileRegistry::WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                               std::string_view bytes) {
    return Write(root, subKey, name, {RegistryValue::Kind::Binary, std::string(bytes)});
}

long FileRegistry::WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                             std::string_view utf8) {
    return Write(root, subKey, name, {RegistryValue::Kind::Text, std::string(utf8)});
}

long FileRegistry::WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                               std::uint32_t number) {
    return Write(root, subKey, name, {RegistryValue::Kind::Number, std::to_string(number)});
}

long FileRegistry::Write(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value) {
    if (HasLineBreak(name)) return regerr::kInvalidParameter;
    if (!Reload()) return regerr::kAccessDenied;
    Key* key = FindKey(FullPath(root, subKey));
    if (!key) return regerr::kFileNotFound;
    auto it =
        std::find_if(key->values.begin(), key->values.end(), [&](const auto& v) { return SameName(v.first, name); });
    if (it == key->values.end()) {
        key->values.emplace_back(name, std::move(value));
    } else if (it->second.kind == value.kind && it->second.data == value.data) {
        return regerr::kSuccess;  // options saved unchanged cost no write
    } else {
        it->second = std::move(value);
    }
    return Save();
}

long FileRegistry::Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) {
    const Key* key = FindKey(FullPath(root, subKey));
    if (!key) return regerr::kFileNotFound;
    for (const auto& [n, v] : key->values) {
        if (SameName(n, name)) return value = v, regerr::kSuccess;
    }
    return regerr::kFileNotFound;
}

long FileRegistry::ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) {
    const std::string path = FullPath(root, subKey);
    listing = {};
    bool found = false;
    for (const Key& key : keys_) {
        if (!Within(key.path, path)) continue;
        found = true;
        if (key.path.size() == path.size()) {
            for (const auto& value : key.values) listing.values.push_back(value.first);
            continue;
        }
        // A key made as "A\B\C" holds "A\B" too: the child is the next name down.
        const std::string_view below = std::string_view(key.path).substr(path.size() + 1);
        const std::string child(below.substr(0, below.find('\\')));
        if (std::none_of(listing.subKeys.begin(), listing.subKeys.end(),
                         [&](const auto& k) { return SameName(k, child); }))
            listing.subKeys.push_back(child);
    }
    return found ? regerr::kSuccess : regerr::kFileNotFound;
}

long FileRegistry::DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) {
    if (!Reload()) return regerr::kAccessDenied;
    Key* key = FindKey(FullPath(root, subKey));
    if (!key) return regerr::kFileNotFound;
    const auto removed =
        std::remove_if(key->values.begin(), key->values.end(), [&](const auto& v) { return SameName(v.first, name); });
    if (removed == key->values.end()) return regerr::kFileNotFound;
    key->values.erase(removed, key->values.end());
    return Save();
}

long FileRegistry::DeleteKey(RegistryRoot root, const std::string& subKey) {
    if (!Reload()) return regerr::kAccessDenied;
    const std::string path = FullPath(root, subKey);
    // A key made as "A\B" holds "A" too: deleting "A" takes "A\B" with it.
    if (!std::erase_if(keys_, [&](const Key& k) { return Within(k.path, path); })) return regerr::kFileNotFound;
    return Save();
}

}  // namespace lumora
