#pragma once
// The LRC lyrics file reader: "[mm:ss.xx]text" lines as other players and download sites write them,
// turned into the two list strings of the lyrics window (LyricLists), as the SMI reader does.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/LyricsTiming.h"

namespace lumora {

class FileSystem;

// Limits of the lyrics file readers: a file is read only so far, at most this many timed entries come
// out, and at most this many stamps of one line are expanded.
inline constexpr std::size_t kMaxLyricsFileBytes = 2 * 1024 * 1024;
inline constexpr std::size_t kMaxLyricsEntries = 10000;
inline constexpr std::size_t kMaxStampsPerLine = 64;

// A lyrics file's text as UTF-8: a byte-order mark says UTF-8 or UTF-16 (little or big endian); without
// one, text that is valid UTF-8 and not plain ASCII is UTF-8, anything else is code page 936 (GBK).
std::string DecodeLyricsFileText(std::string_view bytes);

// Reads an LRC file's bytes:
// - Each line may start with blanks, then one or more stamps "[mm:ss]", "[mm:ss.xx]" or "[mm:ss:xx]";
//   a line with several stamps gives one entry per stamp. Lines without a stamp and ID tags ("[ti:...]")
//   give nothing.
// - "[offset:N]" (milliseconds, anywhere in the file, the first valid one) moves every stamp N ms
//   earlier; a value that is no whole number is ignored.
// - The fraction of a second is dropped after the offset is applied; a stamp that ends up below 0 (or
//   was written negative) becomes 0.
// - Word stamps "<mm:ss.xx>" of enhanced LRC are taken out of the text.
// - With `correctTiming`, each time goes through CorrectLyricsSeconds.
// - Entries come out sorted by time (stable), so that expanded lines fall into place: the lyrics window
//   walks its list in order and takes the first later stamp as the next line.
LyricLists ParseLrc(std::string_view bytes, bool correctTiming);

// The file read and parsed; empty optional when it does not exist or cannot be read.
std::optional<LyricLists> ReadLrcFile(FileSystem& fs, const std::string& path, bool correctTiming);

}  // namespace lumora
