#pragma once
#include <optional>
#include <string>

namespace lumora {

// Port: the file system's own spelling of a path.
class PathLookup {
public:
    virtual ~PathLookup() = default;
    // The existing file or folder's path as it stands on disk (letter case and long names);
    // empty optional when nothing is there.
    virtual std::optional<std::string> NameOnDisk(const std::string& path) = 0;
};

}  // namespace lumora
