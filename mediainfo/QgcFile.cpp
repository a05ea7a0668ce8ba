#include "mediainfo/QgcFile.h"

#include <algorithm>
#include <vector>

#include "common/Text.h"
#include "mediainfo/LyricsTiming.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"
#include "settings/IniDocument.h"

namespace lumora {
namespace {

constexpr std::string_view kFileSection = "文件信息";
constexpr std::string_view kDescriptionKey = "说明";
constexpr std::string_view kDescription = "这是“Lumora”的媒体信息文件";
constexpr std::string_view kVersionKey = "版本";
constexpr std::string_view kInfoSection = "媒体信息";
constexpr std::string_view kTitleKey = kTitleLabel;
constexpr std::string_view kArtistKey = kArtistLabel;
constexpr std::string_view kAlbumKey = kAlbumLabel;
constexpr std::string_view kYearKey = kYearLabel;
constexpr std::string_view kCommentKey = kCommentLabel;
constexpr std::string_view kLyricsSection = "媒体歌词";
constexpr std::string_view kLineCountKey = "行数";
constexpr std::string_view kLineKeyPrefix = kLyricsLabel;
constexpr std::string_view kCrLf = "\r\n";
// A QGC file larger than this is read only so far.
constexpr std::size_t kMaxQgcBytes = 4 * 1024 * 1024;

std::string SingleLine(std::string_view value) {
    std::string out(value);
    std::replace_if(
        out.begin(), out.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return out;
}

// A value as the INI reader gives it: one pair of matching quotes removed, codes 0 and 1 dropped.
std::string ValueText(std::string_view raw) {
    raw = Trim(raw);
    if (raw.size() >= 2 && (raw.front() == '"' || raw.front() == '\'') && raw.back() == raw.front()) {
        raw = raw.substr(1, raw.size() - 2);
    }
    std::string value = Cp936ToUtf8(raw);
    std::erase_if(value, [](char c) { return c == '\0' || c == '\x01'; });
    return value;
}

long LineCount(const IniDocument& doc) {
    const std::string text = doc.Get(kLyricsSection, kLineCountKey).value_or(std::string());
    const std::string_view digits = Trim(text);
    if (!IsDigits(digits) || digits.size() > 9) {
        return 0;
    }
    return std::min(std::stol(std::string(digits)), kMaxQgcLines);
}

// The lyrics lines 1 to `count` of the lyrics section, in one pass over the file: looking each key up
// in IniDocument would read the whole file again for every line. Same rules as IniDocument: the first
// section of that name, the first key of each name, names exactly "歌词" and the number.
std::vector<std::optional<std::string>> LyricsLines(std::string_view normalized, long count) {
    std::vector<std::optional<std::string>> lines(static_cast<std::size_t>(count));
    if (count == 0) return lines;
    const std::string section = Utf8ToCp936(kLyricsSection).value();
    const std::string prefix = Utf8ToCp936(kLineKeyPrefix).value();
    bool inSection = false;
    bool seenSection = false;
    std::size_t start = 0;
    while (start < normalized.size()) {
        std::size_t end = normalized.find('\n', start);
        if (end == std::string_view::npos) end = normalized.size();
        std::string_view line = normalized.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        const std::string_view trimmed = Trim(line);
        if (!trimmed.empty() && trimmed.front() == '[') {
            if (inSection) break;
            const std::size_t close = trimmed.find(']');
            const std::string_view name =
                Trim(trimmed.substr(1, close == std::string_view::npos ? trimmed.npos : close - 1));
            inSection = !seenSection && name == section;
            seenSection = seenSection || inSection;
            continue;
        }
        if (!inSection) continue;
        const std::size_t eq = line.find('=');
        if (eq == std::string_view::npos) continue;
        const std::string_view key = Trim(line.substr(0, eq));
        if (key.size() <= prefix.size() || key.substr(0, prefix.size()) != prefix) continue;
        const std::string_view number = key.substr(prefix.size());
        if (number.size() > 9 || number.front() == '0' || !AllDigits(number)) {
            continue;
        }
        const long n = std::stol(std::string(number));
        if (n < 1 || n > count || lines[static_cast<std::size_t>(n - 1)]) continue;
        // A lone CR inside a line is no line break here, and must not become one in the text that is
        // exported or looked up: a full file would grow past its line limit.
        std::string value = ValueText(line.substr(eq + 1));
        std::replace(value.begin(), value.end(), '\r', ' ');
        lines[static_cast<std::size_t>(n - 1)] = std::move(value);
    }
    return lines;
}

std::optional<std::string> ReadBounded(FileSystem& fs, const std::string& path) {
    FileRead read = fs.ReadFilePart(path, 0, kMaxQgcBytes);
    if (read.status != FileRead::Status::Ok) return std::nullopt;
    return std::move(read.bytes);
}

}  // namespace

std::optional<std::string> BuildQgcFile(const MediaInfoRecord& record, std::string_view versionText) {
    std::string text;
    const auto key = [&](std::string_view name, std::string_view value) {
        text.append(name).append("=").append(SingleLine(value)).append(kCrLf);
    };
    text.append("[").append(kFileSection).append("]").append(kCrLf);
    key(kDescriptionKey, kDescription);
    key(kVersionKey, versionText);
    text.append(kCrLf).append("[").append(kInfoSection).append("]").append(kCrLf);
    key(kTitleKey, record.title);
    key(kArtistKey, record.artist);
    key(kAlbumKey, record.album);
    key(kYearKey, record.year);
    key(kCommentKey, record.comment);
    const auto lines = SplitLyricsLines(record.lyrics);
    text.append(kCrLf).append("[").append(kLyricsSection).append("]").append(kCrLf);
    key(kLineCountKey, std::to_string(lines.size()));
    for (std::size_t i = 0; i < lines.size(); ++i) key(std::string(kLineKeyPrefix) + std::to_string(i + 1), lines[i]);
    return Utf8ToCp936(text);
}

MediaInfoRecord ParseQgcFile(std::string_view bytes) {
    const IniDocument doc(bytes);
    const auto get = [&](std::string_view k) { return doc.Get(kInfoSection, k).value_or(std::string()); };
    MediaInfoRecord record{get(kTitleKey), get(kArtistKey), get(kAlbumKey), get(kYearKey), get(kCommentKey), {}};
    const auto lines = LyricsLines(doc.Bytes(), LineCount(doc));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) record.lyrics += kCrLf;
        record.lyrics += lines[i].value_or(std::string());
    }
    return record;
}

std::string QgcLyricsText(std::string_view bytes) {
    const IniDocument doc(bytes);
    std::string text;
    bool first = true;
    for (const auto& line : LyricsLines(doc.Bytes(), LineCount(doc))) {
        if (!line || line->empty()) continue;
        if (!first) text += kCrLf;
        first = false;
        text += *line;
    }
    return text;
}

std::optional<std::string> UpdateQgcFile(std::string_view existing, const MediaInfoRecord& record,
                                         std::string_view versionText) {
    // Exported through the profile functions, each key is set on its own: whatever else the file
    // holds (other sections, keys other programs added, lines past the new count) stays.
    IniDocument doc(existing);
    bool ok = true;
    const auto set = [&](std::string_view section, std::string_view key, std::string_view value) {
        ok = ok && doc.Set(section, key, SingleLine(value));
    };
    set(kFileSection, kDescriptionKey, kDescription);
    set(kFileSection, kVersionKey, versionText);
    set(kInfoSection, kTitleKey, record.title);
    set(kInfoSection, kArtistKey, record.artist);
    set(kInfoSection, kAlbumKey, record.album);
    set(kInfoSection, kYearKey, record.year);
    set(kInfoSection, kCommentKey, record.comment);
    const auto lines = SplitLyricsLines(record.lyrics);
    set(kLyricsSection, kLineCountKey, std::to_string(lines.size()));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        set(kLyricsSection, std::string(kLineKeyPrefix) + std::to_string(i + 1), lines[i]);
    }
    if (!ok) return std::nullopt;
    return doc.Bytes();
}

bool WriteQgcFile(FileSystem& fs, const std::string& path, const MediaInfoRecord& record,
                  std::string_view versionText) {
    const FileRead old = fs.ReadFilePart(path, 0, kMaxQgcBytes);
    const auto bytes = old.status == FileRead::Status::Ok && !old.bytes.empty()
                           ? UpdateQgcFile(old.bytes, record, versionText)
                           : BuildQgcFile(record, versionText);
    return bytes && fs.WriteFileAtomic(path, *bytes);
}

std::optional<MediaInfoRecord> ReadQgcFile(FileSystem& fs, const std::string& path) {
    const auto bytes = ReadBounded(fs, path);
    if (!bytes) return std::nullopt;
    return ParseQgcFile(*bytes);
}

std::optional<std::string> LoadQgcLyrics(FileSystem& fs, const std::string& path) {
    const auto bytes = ReadBounded(fs, path);
    if (!bytes) return std::nullopt;
    return QgcLyricsText(*bytes);
}

}  // namespace lumora
