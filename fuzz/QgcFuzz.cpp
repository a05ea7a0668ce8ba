// Any bytes as a QGC file: import and the lookup's reading stay within the line limit, and what is imported
// exports and imports back the same.
#include "FuzzChecks.h"
#include "mediainfo/QgcFile.h"

using namespace lumora;
using fuzz::Check;

namespace {

// The profile functions trim blanks and one pair of quotes, and a line break starts a new line: such values
// do not come back as they were.
bool PlainValue(std::string_view s) {
    if (s.find_first_of("\r\n") != s.npos) return false;
    if (s.empty()) return true;
    if (s.front() == ' ' || s.front() == '\t' || s.back() == ' ' || s.back() == '\t') return false;
    return !(s.size() >= 2 && (s.front() == '"' || s.front() == '\'') && s.back() == s.front());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes = fuzz::Bytes(data, size);
    const MediaInfoRecord record = ParseQgcFile(bytes);
    Check(SplitLyricsLines(record.lyrics).size() <= static_cast<std::size_t>(kMaxQgcLines));
    const std::string text = QgcLyricsText(bytes);
    Check(text.find("\r\n\r\n") == std::string::npos && text.rfind("\r\n", 0) != 0);  // empty lines left out

    const auto exported = BuildQgcFile(record, "1.0");
    if (!exported) return 0;  // damaged bytes read as U+FFFD, which code page 936 has no code for
    bool plain = true;
    for (const auto* field : {&record.title, &record.artist, &record.album, &record.year, &record.comment}) {
        plain = plain && PlainValue(*field);
    }
    std::string lyrics = record.lyrics;
    for (std::size_t at; (at = lyrics.find("\r\n")) != std::string::npos;) lyrics.replace(at, 2, "|");
    plain = plain && lyrics.find_first_of("\r\n") == std::string::npos;  // lone CR or LF: more lines
    for (const auto line : SplitLyricsLines(record.lyrics)) plain = plain && PlainValue(line);
    if (plain) Check(ParseQgcFile(*exported) == record);
    return 0;
}
