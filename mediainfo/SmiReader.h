#pragma once
// The SMI (SAMI) lyrics file reader: the "<SYNC Start=...>" lines of a Chinese SAMI file, turned into
// the two list strings of the lyrics window (LyricLists). It reads the lines the way Lumora always has,
// leniencies included, so that the files users made for it keep showing the same:
// - A line is a sync line when it holds "<sync start=" anywhere (ASCII case ignored); others give nothing.
// - Positions are counted in characters from 1. The start number is the text from position 13 up to the
//   first "><" when that lies beyond position 13; otherwise the number is the position of "><" itself
//   (0 when there is none). The number's text is read up to its first non-digit, after blanks and one
//   quotation mark (start="9209" reads 9209); a text without digits is 0.
// - The text is everything after the first "ZHCC>" (case kept); without one, the line minus its first
//   four characters. A text that is exactly "&nbsp;" is empty.
// - Seconds are the milliseconds divided by 1000 (whole part); with `correctTiming` they go through
//   CorrectLyricsSeconds. The stamp is FormatStamp's "mm:ss".
// Entries stay in file order.
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/LyricsTiming.h"

namespace lumora {

class FileSystem;

// The file's bytes, decoded as DecodeLyricsFileText does; at most kMaxLyricsEntries entries.
LyricLists ParseSmi(std::string_view bytes, bool correctTiming);

// Empty optional when the file does not exist or cannot be read.
std::optional<LyricLists> ReadSmiFile(FileSystem& fs, const std::string& path, bool correctTiming);

}  // namespace lumora
