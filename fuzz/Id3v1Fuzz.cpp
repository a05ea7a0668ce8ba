// Any bytes as the end of a media file: the tags behind the audio are found in order without reading past
// the end, and the ID3v1 reader gives trimmed text, which the tag line and the file list record show.
#include <algorithm>

#include "FuzzChecks.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/TrailingTags.h"

LUMORA_FUZZ(file) {
    const TrailingTags tags = LocateTrailingTags(file);
    Check(tags.audioEnd <= file.size());
    if (tags.id3v1) Check(tags.audioEnd <= *tags.id3v1 && *tags.id3v1 + kId3v1Size <= file.size());
    if (tags.lyrics) Check(*tags.lyrics >= tags.audioEnd && file.substr(*tags.lyrics, 6) == "LYRICS");
    if (tags.ape) Check(*tags.ape >= tags.audioEnd && file.substr(*tags.ape).find("APETAGEX") != file.npos);
    const auto tag = ParseId3v1Tag(file);
    Check(tag.has_value() == tags.id3v1.has_value());
    for (const std::string& field : tag ? std::vector{tag->title, tag->artist, tag->album, tag->comment} : std::vector<std::string>{}) {
        Check(field.find('\0') == std::string::npos && (field.empty() || field.back() != ' '));
    }
    Check(BuildTagLine(tag).rfind("  标题：", 0) == 0 && !FileListRecord(tag).empty());
    // "纠错" leaves no control character and no undecodable byte.
    if (const auto fixed = ParseId3v1Tag(file, true); fixed) {
        const std::string text = fixed->title + fixed->artist + fixed->album + fixed->comment;
        Check(std::ranges::none_of(text, [](char c) { return c >= 0 && c < 0x20; }) &&
              text.find("\xEF\xBF\xBD") == text.npos);
    }
}
