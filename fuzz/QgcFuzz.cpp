// Any bytes as a QGC file: import and the lookup's reading stay within the line limit, and what is imported
// exports and imports back the same.
#include "FuzzChecks.h"
#include "mediainfo/QgcFile.h"

LUMORA_FUZZ(bytes) {
    // The profile functions trim blanks and one pair of quotes, and a line break starts a new line: such values
    // do not come back as they were.
    const auto PlainValue = [](std::string_view s) {
        if (s.find_first_of("\r\n") != s.npos || s.empty()) return s.empty();
        if (s.front() == ' ' || s.front() == '\t' || s.back() == ' ' || s.back() == '\t') return false;
        return !(s.size() >= 2 && (s.front() == '"' || s.front() == '\'') && s.back() == s.front());
    };
    const MediaInfoRecord record = ParseQgcFile(bytes);
    Check(SplitLyricsLines(record.lyrics).size() <= static_cast<std::size_t>(kMaxQgcLines));
    const std::string text = QgcLyricsText(bytes);
    Check(text.find("\r\n\r\n") == std::string::npos && text.rfind("\r\n", 0) != 0);  // empty lines left out
    const auto exported = BuildQgcFile(record, "1.0");
    if (!exported) return;  // damaged bytes read as U+FFFD, which code page 936 has no code for
    bool plain = PlainValue(record.title) && PlainValue(record.artist) && PlainValue(record.album) && PlainValue(record.year) && PlainValue(record.comment);
    std::string lyrics = record.lyrics;
    for (std::size_t at; (at = lyrics.find("\r\n")) != std::string::npos;) lyrics.replace(at, 2, "|");
    plain = plain && lyrics.find_first_of("\r\n") == std::string::npos;  // lone CR or LF: more lines
    for (const auto line : SplitLyricsLines(record.lyrics)) plain = plain && PlainValue(line);
    if (plain) Check(ParseQgcFile(*exported) == record);
}
