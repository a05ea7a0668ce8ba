#pragma once
#include "platform/FileSystem.h"

namespace lumora {

class WinFileSystem final : public FileSystem {
public:
    FileRead ReadFile(const std::string& path) override;
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override;
    bool CreateEmptyFile(const std::string& path) override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    std::vector<std::string> ListFiles(const std::string& folder) override;
    long long FileSize(const std::string& path) override;
    std::string WindowsDirectory() override;
};

// The folder of the running program, without a trailing "\".
std::string ProgramFolder();

}  // namespace lumora
