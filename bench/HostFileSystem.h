#pragma once
// The FileSystem port over real files with the standard library only, for benchmarks on the
// build machine that need files other programs read too (ffprobe, ffmpeg). Paths are UTF-8 and used as
// the host spells them; drive kinds are unknown and attributes are the owner's write permission.
#include <string>
#include <utility>

#include "ports/FileSystem.h"

namespace lumora::test {

class HostFileSystem : public FileSystem {
public:
    // `windowsDirectory` stands in for the Windows directory (where zvplaygc.ini lives).
    explicit HostFileSystem(std::string windowsDirectory = {}) : windowsDirectory_(std::move(windowsDirectory)) {}

    FileRead ReadFile(const std::string& path) override;
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override;
    bool CreateEmptyFile(const std::string& path) override { return WriteFileAtomic(path, {}); }
    bool FileExists(const std::string& path) override { return FileSize(path) >= 0 && !FolderExists(path); }
    bool FolderExists(const std::string& path) override;
    std::vector<std::string> ListFiles(const std::string& folder) override;
    long long FileSize(const std::string& path) override;
    std::string WindowsDirectory() override { return windowsDirectory_; }
    DriveKind DriveType(const std::string&) override { return DriveKind::Unknown; }
    FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) override;
    bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) override;
    bool CopyNewFile(const std::string& from, const std::string& to) override;
    bool RemoveFile(const std::string& path) override;
    bool ClearAttributes(const std::string& path) override;
    bool CanOpenForWriting(const std::string& path) override;
    bool CreateFolder(const std::string& path) override;
    std::string UserDataFolder() override { return windowsDirectory_; }

private:
    std::string windowsDirectory_;
};

}  // namespace lumora::test
