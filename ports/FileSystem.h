#pragma once
// Port: the files Lumora reads and writes. Paths are UTF-8.
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

struct FileRead {
    enum class Status { Ok, Missing, Failed };
    Status status = Status::Missing;
    std::string bytes;  // the whole file when status is Ok
};

// What kind of drive a path lies on, numbered as the shell's scripting objects number them.
enum class DriveKind { Unknown = 0, Removable = 1, Fixed = 2, Network = 3, CdRom = 4, RamDisk = 5 };

class FileSystem {
public:
    virtual ~FileSystem() = default;
    virtual FileRead ReadFile(const std::string& path) = 0;
    // Writes to a temporary file in the same folder and puts it in place, so a crash or a
    // full disk never leaves half a file behind.
    virtual bool WriteFileAtomic(const std::string& path, std::string_view bytes) = 0;
    // Creates the file empty (replacing one that is there); false when it cannot be created.
    virtual bool CreateEmptyFile(const std::string& path) = 0;
    virtual bool FileExists(const std::string& path) = 0;
    // True for an existing folder, drive roots ("C:\\") included.
    virtual bool FolderExists(const std::string& path) = 0;
    // The names of the files (not folders) directly in `folder`, in the order the listing gives.
    virtual std::vector<std::string> ListFiles(const std::string& folder) = 0;
    // -1 when the file is missing.
    virtual long long FileSize(const std::string& path) = 0;
    // Where private-profile files named without a folder live, without a trailing "\".
    virtual std::string WindowsDirectory() = 0;

    // The kind of the drive that `path` starts with ("D:..." or "D:\\..."); Unknown for
    // anything that does not start with a drive letter and a colon.
    virtual DriveKind DriveType(const std::string& path) = 0;
    // Up to `maxBytes` bytes from `offset` on (fewer at the file's end).
    virtual FileRead ReadFilePart(const std::string& path, long long offset, size_t maxBytes) = 0;
    // Writes `bytes` at `offset` in one call, extending the file where needed and never
    // shortening it. False when the file cannot be opened for writing or the write fails.
    virtual bool WriteFilePart(const std::string& path, long long offset, std::string_view bytes) = 0;
    // Copies a file to a path where nothing exists yet; false (and nothing touched) otherwise.
    virtual bool CopyNewFile(const std::string& from, const std::string& to) = 0;
    virtual bool RemoveFile(const std::string& path) = 0;
    // Resets the file's attributes to normal (read-only, hidden and system cleared).
    virtual bool ClearAttributes(const std::string& path) = 0;
    // True when the file can be opened for writing right now (opened and closed again, untouched).
    virtual bool CanOpenForWriting(const std::string& path) = 0;
    // Creates the folder and its missing parents; true when it exists afterwards.
    virtual bool CreateFolder(const std::string& path) = 0;
    // The per-user folder where Lumora keeps its own files (the default list), without a
    // trailing "\"; created when missing. Empty when the system has none.
    virtual std::string UserDataFolder() = 0;
};

}  // namespace lumora
