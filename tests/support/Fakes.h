#pragma once
// In-memory stand-ins for the ports, for unit tests of the portable code.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/FileSystem.h"
#include "ports/Prompts.h"
#include "ports/Registry.h"
#include "ports/TextCodec.h"

namespace lumora::test {

using Lines = std::vector<std::string>;

// Code page 936 bytes of a text that has them.
inline std::string Gbk(std::string_view utf8) { return Utf8ToCp936(utf8).value(); }

struct Message {
    std::string text, title;
    bool operator==(const Message&) const = default;
};

class FakePrompts : public Prompts {
public:
    void ShowMessage(std::string_view text, std::string_view title) override {
        messages.push_back({std::string(text), std::string(title)});
    }
    std::optional<std::string> AskSaveFileName(std::string_view, std::string_view, std::string_view) override {
        return saveAnswer;
    }
    std::optional<std::string> AskOpenFileName(std::string_view, std::string_view) override { return openAnswer; }
    std::optional<std::vector<std::string>> AskOpenFileNames(std::string_view title, std::string_view filter) override {
        openDialogs.push_back({std::string(filter), std::string(title)});
        return openManyAnswer;
    }
    std::optional<std::string> AskFolder(std::string_view prompt) override {
        return Answer(folderScript, {}, prompt, "");
    }
    std::optional<std::string> AskText(std::string_view prompt, std::string_view title, std::string_view) override {
        return Answer(textScript, textAnswer, prompt, title);
    }
    bool AskYesNo(std::string_view text, std::string_view title) override {
        return questions.push_back({std::string(text), std::string(title)}), yesNoAnswer;
    }
    // Notes the question and takes the next scripted answer, or the fixed one when the script has run out.
    template <typename T>
    T Answer(std::deque<T>& script, const T& fixed, std::string_view text, std::string_view title) {
        questions.push_back({std::string(text), std::string(title)});
        if (script.empty()) return fixed;
        T answer = script.front();
        script.pop_front();
        return answer;
    }

    std::vector<Message> messages;     // boxes shown
    std::vector<Message> questions;    // folder prompts, input boxes and yes/no questions asked
    std::vector<Message> openDialogs;  // multi-file open dialogs shown: the filter as text, and the title
    std::optional<std::string> saveAnswer, openAnswer, textAnswer;
    std::optional<std::vector<std::string>> openManyAnswer;
    bool yesNoAnswer = true;
    // Scripted answers, taken in order before the fixed ones above are used.
    std::deque<std::optional<std::string>> textScript, folderScript;
};

// Keys are (root, sub-key) with case kept; values are what the real registry would hold. Like a limited
// Windows account, it refuses every change under HKEY_LOCAL_MACHINE.
class FakeRegistry : public Registry {
public:
    long CreateKey(RegistryRoot root, const std::string& subKey) override {
        log.push_back("create " + subKey);
        if (root == RegistryRoot::LocalMachine) return regerr::kAccessDenied;
        return failWith ? failWith : (keys[{root, subKey}], regerr::kSuccess);
    }
    long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name, std::string_view bytes) override {
        return Write(root, subKey, name, {RegistryValue::Kind::Binary, std::string(bytes)});
    }
    long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name, std::string_view utf8) override {
        return Write(root, subKey, name, {RegistryValue::Kind::Text, std::string(utf8)});
    }
    long WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name, std::uint32_t n) override {
        return Write(root, subKey, name, {RegistryValue::Kind::Number, std::to_string(n)});
    }
    long Write(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value) {
        log.push_back("write " + name);
        if (root == RegistryRoot::LocalMachine) return regerr::kAccessDenied;
        const auto it = keys.find({root, subKey});
        if (failWith || it == keys.end()) return failWith ? failWith : regerr::kFileNotFound;
        it->second[name] = std::move(value);
        return regerr::kSuccess;
    }
    long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) override {
        log.push_back("read " + name);
        if (failWith) return failWith;
        const RegistryValue* found = Find(root, subKey, name);
        if (!found) return regerr::kFileNotFound;
        value = *found;
        return regerr::kSuccess;
    }
    // A key made as "A\B" holds "A" too, as in the registry.
    long ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) override {
        listing = {};
        bool found = false;
        for (const auto& [key, values] : keys) {
            const std::string& path = key.second;
            if (key.first != root || path.rfind(subKey, 0) != 0 ||
                (path.size() > subKey.size() && path[subKey.size()] != '\\'))
                continue;
            found = true;
            for (const auto& v : values)
                if (path.size() == subKey.size()) listing.values.push_back(v.first);
            if (path.size() > subKey.size())
                listing.subKeys.push_back(
                    path.substr(subKey.size() + 1, path.find('\\', subKey.size() + 1) - subKey.size() - 1));
        }
        std::sort(listing.subKeys.begin(), listing.subKeys.end());
        listing.subKeys.erase(std::unique(listing.subKeys.begin(), listing.subKeys.end()), listing.subKeys.end());
        return failWith ? failWith : found ? regerr::kSuccess : regerr::kFileNotFound;
    }
    long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) override {
        log.push_back("delete " + name);
        if (root == RegistryRoot::LocalMachine) return regerr::kAccessDenied;
        if (failWith) return failWith;
        const auto it = keys.find({root, subKey});
        return it == keys.end() || !it->second.erase(name) ? regerr::kFileNotFound : regerr::kSuccess;
    }
    long DeleteKey(RegistryRoot root, const std::string& subKey) override {
        log.push_back("delete key " + subKey);
        if (root == RegistryRoot::LocalMachine) return regerr::kAccessDenied;
        if (failWith) return failWith;
        if (!keys.count({root, subKey})) return regerr::kFileNotFound;
        std::erase_if(keys, [&](const auto& k) {
            return k.first.first == root && (k.first.second == subKey || k.first.second.rfind(subKey + "\\", 0) == 0);
        });
        return regerr::kSuccess;
    }

    // Test set-up: a raw CP936 (or other) value as another tool would have left it.
    void Put(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value) {
        keys[{root, subKey}][name] = std::move(value);
    }
    const RegistryValue* Find(RegistryRoot root, const std::string& subKey, const std::string& name) const {
        const auto it = keys.find({root, subKey});
        return it == keys.end() || !it->second.count(name) ? nullptr : &it->second.at(name);
    }

    std::map<std::pair<RegistryRoot, std::string>, std::map<std::string, RegistryValue>> keys;
    std::vector<std::string> log;  // "create <sub-key>", "write <name>", "read <name>", ...
    long failWith = 0;             // when set, every call answers this error
};

// Like a limited Windows account, it refuses to write into the Windows directory.
class FakeFileSystem : public FileSystem {
public:
    FileRead ReadFile(const std::string& path) override {
        if (std::count(unreadable.begin(), unreadable.end(), path)) return {FileRead::Status::Failed, {}};
        const auto it = files.find(path);
        if (it == files.end()) return {FileRead::Status::Missing, {}};
        return {FileRead::Status::Ok, it->second};
    }
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override {
        return !failWrites && path.rfind(WindowsDirectory() + "\\", 0) != 0 && (files[path] = std::string(bytes), true);
    }
    bool CreateEmptyFile(const std::string& path) override { return WriteFileAtomic(path, {}); }
    bool FileExists(const std::string& path) override { return files.count(path) != 0; }
    bool FolderExists(const std::string& path) override;
    std::vector<std::string> ListFiles(const std::string& folder) override;
    long long FileSize(const std::string& path) override {
        return files.count(path) ? static_cast<long long>(files[path].size()) : -1;
    }
    std::string WindowsDirectory() override { return "C:\\WINDOWS"; }
    DriveKind DriveType(const std::string& path) override {
        if (path.size() < 2 || path[1] != ':' || !std::isalpha(static_cast<unsigned char>(path[0]))) return DriveKind::Unknown;
        const auto it = drives.find(static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
        return it == drives.end() ? DriveKind::Fixed : it->second;
    }
    FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) override {
        FileRead whole = ReadFile(path);
        if (whole.status != FileRead::Status::Ok || offset < 0) return {offset < 0 ? FileRead::Status::Failed : whole.status, {}};
        return {FileRead::Status::Ok, whole.bytes.substr(std::min(whole.bytes.size(), static_cast<size_t>(offset)), maxBytes)};
    }
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override {
        const auto it = files.find(path);
        if (failWrites || it == files.end() || offset < 0 || !CanOpenForWriting(path)) return false;
        std::string& data = it->second;
        const size_t at = static_cast<size_t>(offset);
        if (data.size() < at + bytes.size()) data.resize(at + bytes.size(), '\0');
        data.replace(at, bytes.size(), bytes);
        return true;
    }
    bool CopyNewFile(const std::string& from, const std::string& to) override {
        return files.count(from) && !files.count(to) && (files[to] = std::string(files[from]), true);
    }
    bool RemoveFile(const std::string& path) override { return files.erase(path) != 0; }
    bool ClearAttributes(const std::string& path) override {
        std::erase(readOnly, path);
        return files.count(path) != 0;
    }
    bool CanOpenForWriting(const std::string& path) override { return files.count(path) && !std::count(readOnly.begin(), readOnly.end(), path); }
    bool CreateFolder(const std::string& path) override;
    std::string UserDataFolder() override { return userDataFolder; }

    std::map<std::string, std::string> files;  // full path -> bytes
    std::vector<std::string> folders;          // folders that exist (files imply their folder too)
    // Listing order of a folder's files, where a caller cares; otherwise the map's order.
    std::map<std::string, std::vector<std::string>> listingOrder;
    std::vector<std::string> unreadable;  // paths that exist but cannot be read
    std::vector<std::string> readOnly;    // paths that refuse writing until their attributes are cleared
    std::map<char, DriveKind> drives;     // by upper-case letter; a letter not listed is a fixed disk
    std::string userDataFolder = "C:\\Users\\u\\AppData\\Roaming\\Lumora";
    bool failWrites = false;
};

}  // namespace lumora::test
