#include "mediainfo/ListInfo.h"

#include <array>

#include "mediainfo/Id3v1.h"

namespace lumora {
namespace {
constexpr std::string_view kFileLabel = "文件：";
}  // namespace

std::string ListInfoTip(std::string_view name, std::string_view record) {
    static constexpr std::array<std::string_view, 5> kLabels = {"标题：", "歌手：", "专集：", "年代：", "其他："};
    std::string tip = std::string(kFileLabel) + std::string(name);
    size_t start = 0;
    for (size_t i = 0; i < kLabels.size(); ++i) {
        // The comment is the last item and may itself hold "@".
        const size_t at = i + 1 < kLabels.size() ? record.find('@', start) : std::string_view::npos;
        const std::string_view item =
            start <= record.size() ? record.substr(start, at == std::string_view::npos ? at : at - start) : "";
        tip += "\r\n";
        tip += kLabels[i];
        tip += item.empty() ? kNoItemText : item;
        if (at == std::string_view::npos) {
            start = record.size() + 1;
        } else {
            start = at + 1;
        }
    }
    return tip;
}

std::string ListInfoTipFor(FileSystem& fs, const std::string& path, std::string_view name, bool readTags, bool repair) {
    if (!readTags) return std::string(kFileLabel) + std::string(name);
    Id3v1Tag tag;
    const bool found = ReadId3v1Tag(fs, path, tag, repair);
    return ListInfoTip(name, FileListRecord(found ? std::optional<Id3v1Tag>(tag) : std::nullopt));
}

}  // namespace lumora
