#include "platform/FileSystem_win.h"

#include <shlobj.h>
#include <windows.h>

#include "platform/WinText_win.h"

namespace lumora {
namespace {

class File {
public:
    explicit File(HANDLE h) : handle_(h) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { Close(); }
    // Closes now (a file must be closed before it can be deleted); the destructor then has nothing left.
    void Close() {
        if (ok()) CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }
    bool ok() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

// A drive root ("C:\\") keeps its slash.
std::wstring WithoutTrailingSlash(std::wstring dir) {
    while (dir.size() > 3 && (dir.back() == L'\\' || dir.back() == L'/')) dir.pop_back();
    return dir;
}

std::string StripTrailingSlash(std::wstring dir) { return Narrow(WithoutTrailingSlash(std::move(dir))); }

bool WriteAll(HANDLE h, std::string_view bytes) {
    while (!bytes.empty()) {
        const DWORD chunk = bytes.size() > (1u << 30) ? (1u << 30) : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!::WriteFile(h, bytes.data(), chunk, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

HANDLE OpenForReading(const std::string& path) {
    return CreateFileW(FilePathArg(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Why the last open failed, as the port tells it.
FileRead::Status ReadFailure() {
    const DWORD err = GetLastError();
    return err == ERROR_FILE_NOT_FOUND || err == ERROR_PATH_NOT_FOUND ? FileRead::Status::Missing
                                                                      : FileRead::Status::Failed;
}

// Up to `size` bytes from the handle's position; fewer at the file's end.
FileRead ReadUpTo(HANDLE h, size_t size) {
    std::string bytes(size, '\0');
    size_t have = 0;
    while (have < bytes.size()) {
        DWORD got = 0;
        if (!::ReadFile(h, bytes.data() + have, static_cast<DWORD>(bytes.size() - have), &got, nullptr)) {
            return {FileRead::Status::Failed, {}};
        }
        if (got == 0) break;
        have += got;
    }
    bytes.resize(have);
    return {FileRead::Status::Ok, std::move(bytes)};
}

}  // namespace

FileRead WinFileSystem::ReadFile(const std::string& path) {
    File f(OpenForReading(path));
    if (!f.ok()) return {ReadFailure(), {}};
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(f.get(), &size) || size.QuadPart > (1LL << 30)) return {FileRead::Status::Failed, {}};
    return ReadUpTo(f.get(), static_cast<size_t>(size.QuadPart));
}

bool WinFileSystem::WriteFileAtomic(const std::string& path, std::string_view bytes) {
    const std::wstring target = FilePathArg(path);
    const std::wstring temp = target + L".lumora-tmp";
    {
        File f(CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!f.ok()) return false;
        if (!WriteAll(f.get(), bytes) || !FlushFileBuffers(f.get())) {
            f.Close();
            DeleteFileW(temp.c_str());
            return false;
        }
    }
    const bool exists = GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES;
    const bool placed = exists ? ReplaceFileW(target.c_str(), temp.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                              nullptr, nullptr) != 0
                               : MoveFileExW(temp.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    if (!placed) DeleteFileW(temp.c_str());
    return placed;
}

bool WinFileSystem::CreateEmptyFile(const std::string& path) {
    File f(CreateFileW(FilePathArg(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return f.ok();
}

bool WinFileSystem::FileExists(const std::string& path) {
    const DWORD attrs = GetFileAttributesW(FilePathArg(path).c_str());
    return attrs != INVALID_FILE_ATTRIBUTES && (attrs & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool WinFileSystem::FolderExists(const std::string& path) {
    std::wstring wide = FilePathArg(path);
    // "D:" alone means the current folder of drive D; a root is "D:\".
    if (wide.size() == 2 && wide[1] == L':') wide += L'\\';
    const DWORD attrs = GetFileAttributesW(wide.c_str());
    return attrs != INVALID_FILE_ATTRIBUTES && (attrs & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::string> WinFileSystem::ListFiles(const std::string& folder) {
    std::wstring pattern = FilePathArg(folder);
    if (!pattern.empty() && pattern.back() != L'\\' && pattern.back() != L'/') pattern += L'\\';
    pattern += L'*';
    std::vector<std::string> names;
    WIN32_FIND_DATAW found;
    const HANDLE h = FindFirstFileW(pattern.c_str(), &found);
    if (h == INVALID_HANDLE_VALUE) return names;
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.push_back(Narrow(found.cFileName));
    } while (FindNextFileW(h, &found));
    FindClose(h);
    return names;
}

long long WinFileSystem::FileSize(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(FilePathArg(path).c_str(), GetFileExInfoStandard, &data)) return -1;
    return (static_cast<long long>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::string WinFileSystem::WindowsDirectory() {
    wchar_t buf[MAX_PATH + 1] = {};
    const UINT n = GetWindowsDirectoryW(buf, MAX_PATH);
    return StripTrailingSlash(std::wstring(buf, n <= MAX_PATH ? n : 0));
}

DriveKind WinFileSystem::DriveType(const std::string& path) {
    if (path.size() < 2 || path[1] != ':') return DriveKind::Unknown;
    const wchar_t root[] = {static_cast<wchar_t>(static_cast<unsigned char>(path[0])), L':', L'\\', 0};
    switch (GetDriveTypeW(root)) {
        case DRIVE_REMOVABLE:
            return DriveKind::Removable;
        case DRIVE_FIXED:
            return DriveKind::Fixed;
        case DRIVE_REMOTE:
            return DriveKind::Network;
        case DRIVE_CDROM:
            return DriveKind::CdRom;
        case DRIVE_RAMDISK:
            return DriveKind::RamDisk;
        default:
            return DriveKind::Unknown;
    }
}

FileRead WinFileSystem::ReadFilePart(const std::string& path, long long offset, size_t maxBytes) {
    File f(OpenForReading(path));
    if (!f.ok()) return {ReadFailure(), {}};
    LARGE_INTEGER at{};
    at.QuadPart = offset;
    if (offset < 0 || !SetFilePointerEx(f.get(), at, nullptr, FILE_BEGIN)) return {FileRead::Status::Failed, {}};
    return ReadUpTo(f.get(), maxBytes > (1u << 30) ? size_t{1} << 30 : maxBytes);
}

bool WinFileSystem::WriteFilePart(const std::string& path, long long offset, std::string_view bytes) {
    File f(CreateFileW(FilePathArg(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!f.ok() || offset < 0) return false;
    LARGE_INTEGER at{};
    at.QuadPart = offset;
    if (!SetFilePointerEx(f.get(), at, nullptr, FILE_BEGIN)) return false;
    return WriteAll(f.get(), bytes) && FlushFileBuffers(f.get());
}

bool WinFileSystem::CopyNewFile(const std::string& from, const std::string& to) {
    return CopyFileW(FilePathArg(from).c_str(), FilePathArg(to).c_str(), TRUE) != 0;
}

bool WinFileSystem::RemoveFile(const std::string& path) { return DeleteFileW(FilePathArg(path).c_str()) != 0; }

bool WinFileSystem::ClearAttributes(const std::string& path) {
    return SetFileAttributesW(FilePathArg(path).c_str(), FILE_ATTRIBUTE_NORMAL) != 0;
}

bool WinFileSystem::CanOpenForWriting(const std::string& path) {
    File f(CreateFileW(FilePathArg(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr));
    return f.ok();
}

bool WinFileSystem::CreateFolder(const std::string& path) {
    const std::wstring wide = WithoutTrailingSlash(FilePathArg(path));
    // Parents are made one by one after the root ("C:\\", or "\\\\?\\C:\\" for a long path).
    for (size_t i = wide.rfind(L"\\\\?\\", 0) == 0 ? 7 : 3; i <= wide.size(); ++i) {
        if (i == wide.size() || wide[i] == L'\\' || wide[i] == L'/') {
            const std::wstring part = wide.substr(0, i);
            if (GetFileAttributesW(part.c_str()) == INVALID_FILE_ATTRIBUTES) CreateDirectoryW(part.c_str(), nullptr);
        }
    }
    const DWORD attrs = GetFileAttributesW(wide.c_str());
    return attrs != INVALID_FILE_ATTRIBUTES && (attrs & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::string WinFileSystem::UserDataFolder() {
    if (!dataFolder_.empty()) return CreateFolder(dataFolder_) ? dataFolder_ : std::string();
    // The roaming application-data folder: the user's own, kept across machines in a domain,
    // and present on every Windows from 98 on.
    wchar_t buf[MAX_PATH + 1] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, buf))) {
        return {};
    }
    const std::string folder = StripTrailingSlash(buf) + "\\Lumora";
    return CreateFolder(folder) ? folder : std::string();
}

namespace {

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (n < path.size()) {
            path.resize(n);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace

std::string ProgramPath() { return Narrow(ModulePath()); }

std::string ProgramFolder() {
    const std::wstring path = ModulePath();
    const size_t slash = path.find_last_of(L"\\/");
    return StripTrailingSlash(slash == std::wstring::npos ? std::wstring() : path.substr(0, slash));
}

}  // namespace lumora
