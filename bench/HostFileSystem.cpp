#include "HostFileSystem.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace lumora::test {
namespace {

namespace fsys = std::filesystem;

std::error_code ec;  // every call below sets it; the tests are single-threaded

fsys::path PathOf(const std::string& utf8) { return fsys::path(std::u8string(utf8.begin(), utf8.end())); }

bool IsFile(const std::string& path) { return fsys::is_regular_file(PathOf(path), ec); }

}  // namespace

FileRead HostFileSystem::ReadFile(const std::string& path) { return ReadFilePart(path, 0, static_cast<size_t>(FileSize(path))); }

bool HostFileSystem::WriteFileAtomic(const std::string& path, std::string_view bytes) {
    const std::string temporary = path + ".tmp";
    {
        std::ofstream out(PathOf(temporary), std::ios::binary | std::ios::trunc);
        if (!out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) return false;
    }
    fsys::rename(PathOf(temporary), PathOf(path), ec);
    return !ec;
}

bool HostFileSystem::FolderExists(const std::string& path) { return fsys::is_directory(PathOf(path), ec); }

std::vector<std::string> HostFileSystem::ListFiles(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fsys::directory_iterator(PathOf(folder), ec)) {
        if (!entry.is_regular_file()) continue;
        const std::u8string name = entry.path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    return names;
}

long long HostFileSystem::FileSize(const std::string& path) {
    const auto size = fsys::file_size(PathOf(path), ec);
    return ec ? -1 : static_cast<long long>(size);
}

FileRead HostFileSystem::ReadFilePart(const std::string& path, long long offset, size_t maxBytes) {
    if (!IsFile(path)) return {FileRead::Status::Missing, {}};
    std::ifstream in(PathOf(path), std::ios::binary);
    if (!in || offset < 0) return {FileRead::Status::Failed, {}};
    const long long size = FileSize(path);
    const long long available = offset < size ? size - offset : 0;
    std::string bytes(static_cast<size_t>(std::min<long long>(available, static_cast<long long>(maxBytes))), '\0');
    in.seekg(offset);
    if (!in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) return {FileRead::Status::Failed, {}};
    return {FileRead::Status::Ok, std::move(bytes)};
}

bool HostFileSystem::WriteFilePart(const std::string& path, long long offset, std::string_view bytes) {
    std::fstream out(PathOf(path), std::ios::binary | std::ios::in | std::ios::out);
    return IsFile(path) && offset >= 0 && out.seekp(offset) && out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
}

bool HostFileSystem::CopyNewFile(const std::string& from, const std::string& to) {
    return fsys::copy_file(PathOf(from), PathOf(to), fsys::copy_options::none, ec) && !ec;
}

bool HostFileSystem::RemoveFile(const std::string& path) { return fsys::remove(PathOf(path), ec); }

bool HostFileSystem::ClearAttributes(const std::string& path) {
    return fsys::permissions(PathOf(path), fsys::perms::owner_read | fsys::perms::owner_write, fsys::perm_options::add, ec), !ec;
}

bool HostFileSystem::CanOpenForWriting(const std::string& path) {
    return IsFile(path) && std::fstream(PathOf(path), std::ios::binary | std::ios::in | std::ios::out).is_open();
}

bool HostFileSystem::CreateFolder(const std::string& path) { return fsys::create_directories(PathOf(path), ec), FolderExists(path); }

}  // namespace lumora::test
