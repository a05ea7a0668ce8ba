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
};

}  // namespace lumora
