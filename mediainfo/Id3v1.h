#pragma once
// The ID3v1 tag reader: the main window's tag line and the file list's information column both come from
// here. It reads the tags our information block writer leaves as well as those of other programs.
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

class FileSystem;

// UTF-8 texts, blanks trimmed; an item the tag leaves empty is empty here.
struct Id3v1Tag {
    std::string title;
    std::string artist;
    std::string album;
    std::string year;
    std::string comment;
    bool operator==(const Id3v1Tag&) const = default;
};

// Reads the tag at the "TAG" FindId3v1Tag gives. Fields are code page 936 and zero-padded: title, artist
// and album are 30 bytes each; the fourth group holds the year immediately followed by the comment (our
// writer's layout, with a year of 4, 2 or no digits), up to the genre byte, or up to the track number of
// an ID3v1.1 tag. Empty when the file has no tag. `repair`: each field goes through RepairInfoText, after
// it was cut at its first zero byte.
std::optional<Id3v1Tag> ParseId3v1Tag(std::string_view file, bool repair = false);

// "纠错" (opt::kRepairMediaInfo) for a text read from a media file (UTF-8, as decoded from code page 936):
// what other programs leave behind and shows as garbage goes. Control characters (zero bytes among them;
// CR and LF stay when `lines`), the replacement character that stands for a byte starting no character
// (the first half of a Chinese character cut by the 30-byte field, a stray byte), and blanks, also
// full-width ones, around a field (not around `lines`).
std::string RepairInfoText(std::string_view utf8, bool lines);

// What the tag line and the file list's tips show for an empty item.
inline constexpr std::string_view kNoItemText = "无";

// The tag reader as the windows call it: false when the file is missing or unreadable or has no tag.
bool ReadId3v1Tag(FileSystem& fs, const std::string& path, Id3v1Tag& tag, bool repair = false);

// The main window's tag line; an empty item shows "无", and every item shows "N/A" without a tag.
std::string BuildTagLine(const std::optional<Id3v1Tag>& tag);

// The file list's information record: the five items joined by "@", "无" for each one missing.
std::string FileListRecord(const std::optional<Id3v1Tag>& tag);

}  // namespace lumora
