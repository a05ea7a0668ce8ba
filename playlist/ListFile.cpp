#include "playlist/ListFile.h"

#include <algorithm>
#include <array>
#include <optional>

#include "common/Text.h"
#include "mediainfo/MpegAudioParser.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"
#include "playlist/MediaTest.h"

namespace lumora {
namespace {

constexpr std::string_view kMainHeader = "这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。";
constexpr std::string_view kEditorHeader = "这是ZEV-MP3播放器-正式版-的列表文件请不要修改以下参数，以免造成错误。";
constexpr std::string_view kDefaultHeader = "这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。";
constexpr std::string_view kLibraryHeader =
    "这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。";
constexpr std::array<std::string_view, 2> kEditionMarkers = {"正式版", "测试版"};
constexpr std::string_view kLineEnd = "\r\n";
constexpr char kSeparator = '*';

constexpr std::string_view kFilteringText = "正在过滤文件...";
constexpr std::string_view kFilteredDoneText = "文件过滤完毕。";
constexpr std::string_view kFilteredUnknown = "过滤掉N/A个文件";
constexpr std::string_view kRemainingUnknown = "还剩N/A个文件";
constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

// The largest folder Windows can name (32767 UTF-16 units), in UTF-8 bytes at worst.
constexpr std::size_t kMaxFolderBytes = 32767 * 3;

// The next line of `rest`, which moves past it and its line end. Empty optional when nothing is left.
std::optional<std::string_view> NextLine(std::string_view& rest) {
    if (rest.empty()) return std::nullopt;
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (end == std::string_view::npos) {
        rest = {};
    } else {
        rest.remove_prefix(end + (rest[end] == '\r' && end + 1 < rest.size() && rest[end + 1] == '\n' ? 2 : 1));
    }
    return line;
}

bool HasControlCharacter(std::string_view s) {
    return std::any_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

// Characters no Windows path holds anywhere (":" and "\" are legal in a folder).
bool IsSafeFolder(std::string_view folder) {
    return !folder.empty() && folder.size() <= kMaxFolderBytes && !HasControlCharacter(folder) &&
           folder.find_first_of("*<>\"|?") == std::string_view::npos;
}

// Text that came out of a CP936 decode holds U+FFFD only where the bytes were not CP936.
bool DecodedCleanly(std::string_view utf8) { return utf8.find(kReplacementUtf8) == std::string_view::npos; }

// The size of the ID3v2 tag that starts `bytes` (header and footer included), or 0 when there is none. The size
// is four 7-bit bytes; a byte with its top bit set means this is not a tag.
std::size_t Id3v2TagSize(std::string_view bytes) {
    if (bytes.size() < 10 || bytes.substr(0, 3) != "ID3") return 0;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (byte(3) == 0xFF || byte(4) == 0xFF) return 0;
    std::size_t size = 0;
    for (std::size_t i = 6; i < 10; ++i) {
        if (byte(i) & 0x80) return 0;
        size = size << 7 | byte(i);
    }
    const bool footer = byte(3) >= 4 && (byte(5) & 0x10) != 0;
    return 10 + size + (footer ? 10 : 0);
}

}  // namespace

std::string_view ListHeader(ListKind kind) {
    switch (kind) {
        case ListKind::Main:
            return kMainHeader;
        case ListKind::Editor:
            return kEditorHeader;
        case ListKind::Default:
            return kDefaultHeader;
        case ListKind::Library:
            return kLibraryHeader;
    }
    return kMainHeader;
}

bool HasEditionMarker(std::string_view header) {
    // Only the third piece counts: "a-b" has none, "a-b-正式版" has one.
    for (int piece = 0; piece < 2; ++piece) {
        const std::size_t dash = header.find('-');
        if (dash == std::string_view::npos) return false;
        header.remove_prefix(dash + 1);
    }
    const std::string_view marker = header.substr(0, header.find('-'));
    return std::find(kEditionMarkers.begin(), kEditionMarkers.end(), marker) != kEditionMarkers.end();
}

bool IsSafeListName(std::string_view name) {
    if (name.empty() || HasControlCharacter(name)) return false;
    if (name.find_first_of("\\/:*<>\"|?") != std::string_view::npos) return false;
    if (name.find_first_not_of('.') == std::string_view::npos) return false;
    // Bytes bound the units from above, so the conversion runs only for names that might be too long.
    return name.size() <= kMaxListNameUnits || Utf8ToUtf16(name).size() <= kMaxListNameUnits;
}

ListFileRead ParseListFile(std::string_view bytes) {
    if (bytes.size() > kMaxListFileBytes) return {ListReadStatus::TooLarge, {}};
    std::string_view rest = bytes;
    const auto line1 = NextLine(rest);
    const auto line2 = NextLine(rest);
    const auto line3 = NextLine(rest);
    if (!line3) return {ListReadStatus::NotAListFile, {}};

    ListFileData list;
    list.header = Cp936ToUtf8(*line1);
    if (!HasEditionMarker(list.header)) return {ListReadStatus::NotAListFile, {}};

    const std::string counts = Cp936ToUtf8(*line2);
    const std::string files = Cp936ToUtf8(*line3);
    if (!DecodedCleanly(counts) || !DecodedCleanly(files)) return {ListReadStatus::BadText, {}};

    const std::string_view countLine = counts;
    const std::size_t star = countLine.find(kSeparator);
    list.countText = std::string(Trim(countLine.substr(0, star)));
    if (star != std::string_view::npos) {
        const std::string_view afterStar = countLine.substr(star + 1);
        list.flag = std::string(Trim(afterStar.substr(0, afterStar.find(kSeparator))));
    }

    std::string_view pieces = files;
    const std::size_t folderEnd = pieces.find(kSeparator);
    list.folder = std::string(pieces.substr(0, folderEnd));
    if (list.folder.empty()) return {ListReadStatus::NotAListFile, {}};
    if (!IsSafeFolder(list.folder)) return {ListReadStatus::BadName, {}};
    pieces = folderEnd == std::string_view::npos ? std::string_view() : pieces.substr(folderEnd + 1);
    while (!pieces.empty()) {
        const std::size_t end = pieces.find(kSeparator);
        const std::string_view name = pieces.substr(0, end);
        pieces = end == std::string_view::npos ? std::string_view() : pieces.substr(end + 1);
        if (name.empty()) continue;  // "**" or a trailing "*": nothing between the separators
        if (!IsSafeListName(name)) return {ListReadStatus::BadName, {}};
        if (list.names.size() == kMaxListNames) return {ListReadStatus::TooManyNames, {}};
        list.names.emplace_back(name);
    }
    return {ListReadStatus::Ok, std::move(list)};
}

ListFileRead ReadListFile(FileSystem& fs, const std::string& path) {
    FileRead read = fs.ReadFilePart(path, 0, kMaxListFileBytes + 1);
    if (read.status != FileRead::Status::Ok) return {ListReadStatus::Unreadable, {}};
    return ParseListFile(read.bytes);
}

std::string FirstUnstorableText(std::string_view folder, const std::vector<std::string>& names) {
    if (!IsSafeFolder(folder) || !Utf8ToCp936(folder)) return std::string(folder);
    for (const std::string& name : names) {
        if (!IsSafeListName(name) || !Utf8ToCp936(name)) return name;
    }
    return {};
}

std::string EncodeListFile(ListKind kind, bool filtered, std::string_view folder,
                           const std::vector<std::string>& names) {
    std::string text(ListHeader(kind));
    text += kLineEnd;
    text += std::to_string(names.size());
    text += kSeparator;
    text += filtered ? '1' : '0';
    text += kLineEnd;
    text += folder;
    for (const std::string& name : names) {
        if (!IsSafeListName(name)) return {};
        text += kSeparator;
        text += name;
    }
    text += kLineEnd;
    if (!IsSafeFolder(folder)) return {};
    return Utf8ToCp936(text).value_or(std::string());
}

std::vector<std::string> QueueListNames(const PlayQueue& queue) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(queue.Count()));
    for (int i = 1; i <= queue.Count(); ++i) {
        const MediaEntry* entry = queue.EntryAt(i);
        if (entry->path == JoinPath(queue.Folder(), entry->name)) names.push_back(entry->name);
    }
    return names;
}

bool HoldsMpegAudio(FileSystem& fs, const std::string& path) {
    long long offset = 0;
    FileRead read = fs.ReadFilePart(path, 0, kMpegProbeBytes);
    if (read.status != FileRead::Status::Ok) return false;
    std::string_view window = read.bytes;
    // Tags may follow each other; a large one (cover art) ends beyond the window, so read again where it ends.
    // The bound only stops a file made of nothing but tags from being walked forever.
    for (int tags = 0; tags < 16; ++tags) {
        const std::size_t size = Id3v2TagSize(window);
        if (size == 0) break;
        if (size < window.size()) {
            window.remove_prefix(size);
            offset += static_cast<long long>(size);
            continue;
        }
        offset += static_cast<long long>(size);
        read = fs.ReadFilePart(path, offset, kMpegProbeBytes);
        if (read.status != FileRead::Status::Ok) return false;
        window = read.bytes;
    }
    // The walker proves a frame by the ones that follow it, so a stray 0xFF in other data is not taken for audio.
    MpegFrameWalker walker(window);
    return walker.Next().has_value() || walker.TagFrame().has_value();
}

FilterResult FilterNames(FileSystem& fs, std::string_view folder, const std::vector<std::string>& names,
                         FilterProgress* progress, std::string_view title) {
    FilterResult result;
    result.remaining = static_cast<int>(names.size());
    if (progress) {
        progress->Open(title);
        progress->ShowStatus(kFilteringText);
        progress->ShowCounters(kFilteredUnknown, kRemainingUnknown);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (progress && !progress->KeepGoing()) {
            result.cancelled = true;
            break;
        }
        const std::string& name = names[i];
        bool keep = IsMediaFile(name);
        if (keep) {
            const std::string path = JoinPath(folder, name);
            keep = fs.FileExists(path) && (!IsMpegAudioName(name) || HoldsMpegAudio(fs, path));
        }
        if (keep) {
            result.kept.push_back(name);
            continue;
        }
        ++result.filtered;
        --result.remaining;
        if (progress) progress->AddDroppedLine(ListLine(static_cast<int>(i) + 1, name));
    }
    if (progress) {
        if (!result.cancelled) {
            progress->ShowStatus(kFilteredDoneText);
            progress->ShowCounters("过滤掉" + NumberText(result.filtered) + "个文件",
                                   "还剩" + NumberText(result.remaining) + "个文件");
        }
        progress->Close();
    }
    return result;
}

}  // namespace lumora
