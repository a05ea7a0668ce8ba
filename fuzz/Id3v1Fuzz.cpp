// Any bytes as the end of a media file: the tags behind the audio are found in order without reading past
// the end, and the ID3v1 reader gives trimmed text, which the tag line and the file list record show.
#include "FuzzChecks.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/TrailingTags.h"

using namespace lumora;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view file = fuzz::Bytes(data, size);
    const TrailingTags tags = LocateTrailingTags(file);
    Check(tags.audioEnd <= file.size());
    if (tags.id3v1) Check(*tags.id3v1 + kId3v1Size <= file.size() && file.substr(*tags.id3v1, 3) == "TAG");
    if (tags.id3v1) Check(tags.audioEnd <= *tags.id3v1);
    if (tags.lyrics) Check(*tags.lyrics >= tags.audioEnd && file.substr(*tags.lyrics, 6) == "LYRICS");
    if (tags.ape) Check(*tags.ape >= tags.audioEnd && file.substr(*tags.ape).find("APETAGEX") != file.npos);

    const auto tag = ParseId3v1Tag(file);
    Check(tag.has_value() == tags.id3v1.has_value());
    if (tag) {
        for (const std::string* field : {&tag->title, &tag->artist, &tag->album}) fuzz::CheckTrimmed(*field);
        Check(tag->comment.find('\0') == std::string::npos && (tag->comment.empty() || tag->comment.back() != ' '));
        Check(tag->year.size() <= 4 && tag->year.find_first_not_of("0123456789") == std::string::npos);
    }
    Check(BuildTagLine(tag).rfind("  标题：", 0) == 0 && !FileListRecord(tag).empty());
    return 0;
}
