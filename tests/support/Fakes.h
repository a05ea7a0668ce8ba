#pragma once
// In-memory stand-ins for the ports, for unit tests of the portable code.
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "ports/FileSystem.h"
#include "ports/ProcessRunner.h"
#include "ports/Prompts.h"
#include "ports/Registry.h"

namespace lumora::test {

struct Message {
    std::string text;
    std::string title;
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
        questions.push_back({std::string(prompt), ""});
        if (!folderScript.empty()) {
            auto answer = folderScript.front();
            folderScript.pop_front();
            return answer;
        }
        return folderAnswer;
    }
    std::optional<std::string> AskText(std::string_view prompt, std::string_view title, std::string_view) override {
        questions.push_back({std::string(prompt), std::string(title)});
        if (!textScript.empty()) {
            auto answer = textScript.front();
            textScript.pop_front();
            return answer;
        }
        return textAnswer;
    }
    bool AskYesNo(std::string_view text, std::string_view title) override {
        questions.push_back({std::string(text), std::string(title)});
        if (!yesNoScript.empty()) {
            const bool answer = yesNoScript.front();
            yesNoScript.pop_front();
            return answer;
        }
        return yesNoAnswer;
    }

    std::vector<Message> messages;     // boxes shown
    std::vector<Message> questions;    // folder prompts, input boxes and yes/no questions asked
    std::vector<Message> openDialogs;  // multi-file open dialogs shown: the filter as text, and the title
    std::optional<std::string> saveAnswer;
    std::optional<std::string> openAnswer;
    std::optional<std::vector<std::string>> openManyAnswer;
    std::optional<std::string> folderAnswer;
    std::optional<std::string> textAnswer;
    bool yesNoAnswer = true;
    // Scripted answers, taken in order before the fixed ones above are used.
    std::deque<bool> yesNoScript;
    std::deque<std::optional<std::string>> textScript;
    std::deque<std::optional<std::string>> folderScript;
};

// Keys are (root, sub-key) with case kept; values are what the real registry would hold.
class FakeRegistry : public Registry {
public:
    using KeyId = std::pair<RegistryRoot, std::string>;

    long CreateKey(RegistryRoot root, const std::string& subKey) override;
    long WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                     std::string_view bytes) override;
    long WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                   std::string_view utf8) override;
    long Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) override;
    long DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) override;
    long DeleteKey(RegistryRoot root, const std::string& subKey) override;

    // Test set-up: a raw CP936 (or other) value as another tool would have left it.
    void Put(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue value);
    const RegistryValue* Find(RegistryRoot root, const std::string& subKey, const std::string& name) const;

    std::map<KeyId, std::map<std::string, RegistryValue>> keys;
    std::vector<std::string> log;  // "create <sub-key>", "write <name>", "read <name>", ...
    long failWith = 0;             // when set, every call answers this error
};

class FakeFileSystem : public FileSystem {
public:
    FileRead ReadFile(const std::string& path) override;
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override;
    bool CreateEmptyFile(const std::string& path) override;
    bool FileExists(const std::string& path) override { return files.count(path) != 0; }
    bool FolderExists(const std::string& path) override;
    std::vector<std::string> ListFiles(const std::string& folder) override;
    long long FileSize(const std::string& path) override;
    std::string WindowsDirectory() override { return "C:\\WINDOWS"; }
    DriveKind DriveType(const std::string& path) override;
    FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) override;
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override;
    bool CopyNewFile(const std::string& from, const std::string& to) override;
    bool RemoveFile(const std::string& path) override;
    bool ClearAttributes(const std::string& path) override;
    bool CanOpenForWriting(const std::string& path) override;
    bool CreateFolder(const std::string& path) override;
    std::string UserDataFolder() override { return userDataFolder; }

    std::map<std::string, std::string> files;  // full path -> bytes
    std::vector<std::string> folders;          // folders that exist (files imply their folder too)
    // Listing order of a folder's files, where a test cares; otherwise the map's order.
    std::map<std::string, std::vector<std::string>> listingOrder;
    std::vector<std::string> unreadable;  // paths that exist but cannot be read
    std::vector<std::string> readOnly;    // paths that refuse writing until their attributes are cleared
    std::map<char, DriveKind> drives;     // by upper-case letter; a letter not listed is a fixed disk
    std::string userDataFolder = "C:\\Users\\u\\AppData\\Roaming\\Lumora";
    bool failWrites = false;
    bool failCopies = false;
    bool failRemoves = false;
};

class FakeProcessRunner : public ProcessRunner {
public:
    std::optional<unsigned long> RunAndWait(const std::string& commandLine, bool minimised) override {
        runs.emplace_back(commandLine, minimised);
        if (onRun) onRun(commandLine);
        return exitCode;
    }
    std::vector<std::pair<std::string, bool>> runs;
    std::optional<unsigned long> exitCode = 0;
    std::function<void(const std::string&)> onRun;
};

}  // namespace lumora::test
