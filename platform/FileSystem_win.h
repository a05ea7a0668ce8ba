#pragma once
#include "ports/FileSystem.h"

namespace lumora {

class WinFileSystem final : public FileSystem {
public:
    // `dataFolder`, when given, is the folder of a portable copy, used instead of the user's profile.
    explicit WinFileSystem(std::string dataFolder = {}) : dataFolder_(std::move(dataFolder)) {}
    FileRead ReadFile(const std::string& path) override;
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override;
    bool CreateEmptyFile(const std::string& path) override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    std::vector<std::string> ListFiles(const std::string& folder) override;
    long long FileSize(const std::string& path) override;
    std::string WindowsDirectory() override;
    DriveKind DriveType(const std::string& path) override;
    FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) override;
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override;
    bool CopyNewFile(const std::string& from, const std::string& to) override;
    bool RemoveFile(const std::string& path) override;
    bool ClearAttributes(const std::string& path) override;
    bool CanOpenForWriting(const std::string& path) override;
    bool CreateFolder(const std::string& path) override;
    std::string UserDataFolder() override;

private:
    std::string dataFolder_;
};

// The folder of the running program, without a trailing "\".
std::string ProgramFolder();
// Lumora.exe's full path.
std::string ProgramPath();

}  // namespace lumora
