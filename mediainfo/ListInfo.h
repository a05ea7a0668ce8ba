#pragma once
// The playlist window's information tip for an entry: the file's tag items, joined as the "@"
// record and laid out one to a line.
#include <string>
#include <string_view>

namespace lumora {

class FileSystem;

// From a "title@artist@album@year@comment" record ("无" for a missing item).
std::string ListInfoTip(std::string_view name, std::string_view record);

// Reads the entry's ID3v1 tag when `readTags` (opt::kListReadsMediaInfo: take the information
// straight from the file); otherwise only the name is shown. `repair`: opt::kRepairMediaInfo.
std::string ListInfoTipFor(FileSystem& fs, const std::string& path, std::string_view name, bool readTags,
                           bool repair = false);

}  // namespace lumora
