#include "mediainfo/Id3v1.h"

#include <algorithm>
#include <utility>

#include "common/Text.h"
#include "mediainfo/TrailingTags.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

constexpr std::string_view kNotAvailable = "N/A";

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

std::string FieldText(std::string_view bytes, bool repair) {
    // Behind the first zero byte lies padding, or the rest of an older, longer text.
    if (repair) return RepairInfoText(Cp936ToUtf8(bytes.substr(0, bytes.find('\0'))), false);
    std::string text = Cp936ToUtf8(bytes);
    std::erase(text, '\0');
    return std::string(Trim(text, " "));
}

std::string_view Item(const std::string& text) { return text.empty() ? kNoItemText : std::string_view(text); }

}  // namespace

std::string RepairInfoText(std::string_view utf8, bool lines) {
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        if (utf8.substr(i, kReplacement.size()) == kReplacement) {
            i += kReplacement.size();
            continue;
        }
        const auto c = static_cast<unsigned char>(utf8[i++]);
        if ((c < 0x20 || c == 0x7F) && !(lines && (c == '\r' || c == '\n'))) continue;
        text += static_cast<char>(c);
    }
    if (lines) return text;
    // Blanks and full-width blanks (U+3000) at either end.
    std::string_view kept = text;
    while (true) {
        const std::string_view before = kept;
        kept = Trim(kept, " ");
        if (kept.starts_with("\xE3\x80\x80")) kept.remove_prefix(3);
        if (kept.ends_with("\xE3\x80\x80")) kept.remove_suffix(3);
        if (kept == before) break;
    }
    return std::string(kept);
}

std::optional<Id3v1Tag> ParseId3v1Tag(std::string_view file, bool repair) {
    const auto at = FindId3v1Tag(file);
    if (!at) return std::nullopt;
    const std::string_view tag = file.substr(*at);  // at least 128 bytes

    Id3v1Tag result;
    result.title = FieldText(tag.substr(3, 30), repair);
    result.artist = FieldText(tag.substr(33, 30), repair);
    result.album = FieldText(tag.substr(63, 30), repair);
    // The year and comment group runs to the genre byte, except for the track number of an ID3v1.1 tag (a
    // zero byte, then a non-zero one). Our writer's tags never look like that: their last five bytes are zero.
    const bool trackNumber = tag[125] == '\0' && tag[126] != '\0';
    const std::string group = FieldText(tag.substr(93, trackNumber ? 32 : 34), repair);

    // A year is four digits or two; "05x" is the year 05 with the comment "x". Digits are single bytes in
    // UTF-8, so counting bytes here counts characters.
    const std::size_t yearLength =
        IsDigits(std::string_view(group).substr(0, 2)) ? (IsDigits(std::string_view(group).substr(0, 4)) ? 4 : 2) : 0;
    result.year = group.substr(0, yearLength);
    result.comment = group.substr(std::min(yearLength, group.size()));
    return result;
}

bool ReadId3v1Tag(FileSystem& fs, const std::string& path, Id3v1Tag& tag, bool repair) {
    // The tag lies within the last kId3v1SearchSpan bytes: the rest of the file is never read.
    const long long size = fs.FileSize(path);
    if (size < 0) return false;
    const long long from = std::max(0LL, size - static_cast<long long>(kId3v1SearchSpan));
    const FileRead read = fs.ReadFilePart(path, from, kId3v1SearchSpan);
    if (read.status != FileRead::Status::Ok) return false;
    auto found = ParseId3v1Tag(read.bytes, repair);
    if (!found) return false;
    tag = std::move(*found);
    return true;
}

std::string BuildTagLine(const std::optional<Id3v1Tag>& tag) {
    const auto item = [&](const std::string Id3v1Tag::*field) { return tag ? Item((*tag).*field) : kNotAvailable; };
    std::string line;
    line.append("  标题：").append(item(&Id3v1Tag::title));
    line.append("  歌手：").append(item(&Id3v1Tag::artist));
    line.append("  专集：").append(item(&Id3v1Tag::album));
    line.append("  年代：").append(item(&Id3v1Tag::year));
    line.append("  其他：").append(item(&Id3v1Tag::comment));
    return line;
}

std::string FileListRecord(const std::optional<Id3v1Tag>& tag) {
    const Id3v1Tag& items = tag ? *tag : Id3v1Tag{};  // no tag: every item is missing
    std::string record;
    record.append(Item(items.title)).append("@").append(Item(items.artist));
    record.append("@").append(Item(items.album)).append("@").append(Item(items.year));
    record.append("@").append(Item(items.comment));
    return record;
}

}  // namespace lumora
