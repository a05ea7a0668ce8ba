#pragma once
// The QGC file: Lumora's own media information file, an INI file in code page 936 that the information
// editor exports and imports, and that the lyrics lookup reads when it lies beside a media file.
//
//   [文件信息]  说明 = "这是“Lumora”的媒体信息文件", 版本 = the program's version text
//   [媒体信息]  标题, 歌手, 专集, 年代, 其他
//   [媒体歌词]  行数 = N, then 歌词1 ... 歌词N, one lyrics line each
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/InfoBlock.h"

namespace lumora {

class FileSystem;

// The most lyrics lines read from a QGC file, whatever its line count says.
inline constexpr long kMaxQgcLines = 20000;

// The file's bytes for a record. The lyrics lines are the CR LF lines of the lyrics box, so an empty
// box still gives one empty line, as the edit box counts it. A line break inside one of the five single
// items would end the INI line early and becomes a blank. Empty when a text cannot be stored in code
// page 936.
std::optional<std::string> BuildQgcFile(const MediaInfoRecord& record, std::string_view versionText);

// The record a QGC file holds, read as the profile functions read it (values trimmed, surrounding
// quotes removed, missing keys empty): the five items, and lyrics lines 1 to 行数 joined with CR LF, a
// missing line as an empty one.
MediaInfoRecord ParseQgcFile(std::string_view bytes);

// The lyrics of a QGC file for the lyrics window: lines 1 to 行数 with empty ones left out, joined with
// CR LF.
std::string QgcLyricsText(std::string_view bytes);

// An existing file's bytes with the record's keys set in it and every other key kept. Empty when a text
// cannot be stored in code page 936.
std::optional<std::string> UpdateQgcFile(std::string_view existing, const MediaInfoRecord& record,
                                         std::string_view versionText);

// Writes the file whole (temporary file put in place). False when it cannot be written or a text cannot
// be stored in code page 936 (the caller checks that first with UnstorableFieldMessage).
bool WriteQgcFile(FileSystem& fs, const std::string& path, const MediaInfoRecord& record, std::string_view versionText);
// Empty optional when the file is missing or unreadable.
std::optional<MediaInfoRecord> ReadQgcFile(FileSystem& fs, const std::string& path);
std::optional<std::string> LoadQgcLyrics(FileSystem& fs, const std::string& path);

}  // namespace lumora
