#include "mediainfo/LyricsLookup.h"

#include "common/Text.h"
#include "mediainfo/InfoBlock.h"
#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsTiming.h"
#include "mediainfo/QgcFile.h"
#include "mediainfo/SmiReader.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"
#include "settings/IniFiles.h"

namespace lumora {
namespace {

std::size_t NameStart(std::string_view path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string_view::npos ? 0 : slash + 1;
}

// Two stamps in a row at the start of a line.
bool HasSeveralStamps(std::string_view line) {
    if (line.empty() || line.front() != '[') return false;
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos || !StampSeconds(line.substr(1, close - 1))) return false;
    const std::string_view rest = line.substr(close + 1);
    if (rest.empty() || rest.front() != '[') return false;
    const std::size_t next = rest.find(']');
    return next != std::string_view::npos && StampSeconds(rest.substr(1, next - 1)).has_value();
}

}  // namespace

std::string LyricsRecordKey(std::string_view mediaPath) {
    std::string_view name = mediaPath.substr(NameStart(mediaPath));
    name = Trim(name);
    std::string key;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '=') {
            key += "＝";
        } else if (name[i] == '[' && i == 0) {
            key += "［";
        } else {
            key += name[i];
        }
    }
    return key;
}

std::string SiblingBase(std::string_view mediaPath) {
    const std::size_t dot = mediaPath.rfind('.');
    if (dot == std::string_view::npos || dot < NameStart(mediaPath)) return {};
    return std::string(mediaPath.substr(0, dot + 1));
}

std::optional<std::string> LoadLyricsFile(FileSystem& fs, const std::string& path, bool correctTiming) {
    const std::string kind = LowerAscii(path.size() >= 3 ? std::string_view(path).substr(path.size() - 3) : "");
    if (kind == "qgc") return LoadQgcLyrics(fs, path);
    std::optional<LyricLists> lists;
    if (kind == "lrc") lists = ReadLrcFile(fs, path, correctTiming);
    if (kind == "smi") lists = ReadSmiFile(fs, path, correctTiming);
    if (!lists) return std::nullopt;
    return LyricListsToText(*lists);
}

std::string OneStampPerLine(std::string_view text) {
    for (const std::string_view line : SplitLyricsLines(text)) {
        if (HasSeveralStamps(line)) return LyricListsToText(ParseLrc(text, false));
    }
    return std::string(text);
}

FoundLyrics LookupLyrics(FileSystem& fs, const std::string& mediaPath, bool correctTiming, bool repair) {
    if (auto embedded = ReadEmbeddedLyrics(fs, mediaPath, repair)) {
        return {LyricsOrigin::Embedded, mediaPath, OneStampPerLine(*embedded)};
    }

    IniFiles ini(fs);
    const std::string assigned = ini.Read(kLyricsRecordFile, kLyricsRecordSection, LyricsRecordKey(mediaPath));
    if (!assigned.empty() && fs.FileExists(assigned)) {
        // A recorded file of another kind is no source; the files beside the media file still are.
        if (auto text = LoadLyricsFile(fs, assigned, correctTiming)) {
            return {LyricsOrigin::Assigned, assigned, OneStampPerLine(*text)};
        }
    }

    const std::string base = SiblingBase(mediaPath);
    if (base.empty()) return {};
    for (const char* extension : {"qgc", "lrc", "smi"}) {
        const std::string path = base + extension;
        if (!fs.FileExists(path)) continue;
        auto text = LoadLyricsFile(fs, path, correctTiming);
        return {LyricsOrigin::Beside, path, OneStampPerLine(text.value_or(std::string()))};
    }
    return {};
}

AssignResult AssignLyricsFile(FileSystem& fs, const std::string& mediaPath, const std::string& lyricsPath) {
    const std::string key = LyricsRecordKey(mediaPath);
    if (key.empty() || !Utf8ToCp936(key) || !Utf8ToCp936(lyricsPath)) return AssignResult::NotStorable;
    IniFiles ini(fs);
    return ini.Write(kLyricsRecordFile, kLyricsRecordSection, key, lyricsPath) ? AssignResult::Assigned
                                                                               : AssignResult::Failed;
}

}  // namespace lumora
