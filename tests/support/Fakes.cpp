#include "support/Fakes.h"

#include <algorithm>

namespace lumora::test {

namespace {
std::string ParentOf(const std::string& path) {
    const size_t slash = path.find_last_of('\\');  // "D:\\x" has the drive root "D:\\" as its folder
    return slash == std::string::npos ? std::string() : slash == 2 && path[1] == ':' ? path.substr(0, 3) : path.substr(0, slash);
}
std::string WithoutTrailingSlash(const std::string& folder) {
    return folder.size() > 3 && folder.back() == '\\' ? folder.substr(0, folder.size() - 1) : folder;
}
}  // namespace

bool FakeFileSystem::FolderExists(const std::string& path) {
    const std::string folder = WithoutTrailingSlash(path);
    if (std::count(folders.begin(), folders.end(), folder)) return true;
    const std::string inside = folder.ends_with('\\') ? folder : folder + '\\';
    return std::any_of(files.begin(), files.end(), [&](const auto& file) { return file.first.rfind(inside, 0) == 0; });
}

std::vector<std::string> FakeFileSystem::ListFiles(const std::string& folder) {
    const std::string f = WithoutTrailingSlash(folder);
    if (const auto it = listingOrder.find(f); it != listingOrder.end()) return it->second;
    std::vector<std::string> names;
    for (const auto& [file, bytes] : files) {
        if (ParentOf(file) == f) names.push_back(file.substr(file.find_last_of('\\') + 1));
    }
    return names;
}

bool FakeFileSystem::CreateFolder(const std::string& path) {
    return FolderExists(path) || (folders.push_back(WithoutTrailingSlash(path)), true);
}

}  // namespace lumora::test
