#include "mediainfo/TrailingTags.h"

#include <cstdint>

namespace lumora {
namespace {

// The longest tag our information block writer makes: a 33-byte year and comment group grows the tag by
// four bytes (one zero byte follows an over-long group instead of the padding).
constexpr std::size_t kLongestWrittenTag = 132;
// Where the text of a tag ends: the last byte before the genre and the track number.
constexpr std::size_t kId3v1TextEnd = 125;

bool AllZero(std::string_view s) {
    for (char c : s) {
        if (c != '\0') return false;
    }
    return true;
}

std::optional<std::size_t> Digits(std::string_view s) {
    std::size_t value = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + static_cast<std::size_t>(c - '0');
    }
    return value;
}

std::uint32_t LittleEndian32(std::string_view s) {
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(s[static_cast<std::size_t>(i)]);
    return value;
}

bool EndsWithAt(std::string_view file, std::size_t end, std::string_view mark) {
    return end >= mark.size() && file.substr(end - mark.size(), mark.size()) == mark;
}

// Lyrics3 v2.00: "LYRICSBEGIN", fields, a six-digit size counted from "LYRICSBEGIN" up to the digits,
// "LYRICS200".
std::optional<std::size_t> Lyrics3v2Start(std::string_view file, std::size_t end) {
    if (!EndsWithAt(file, end, "LYRICS200") || end < 15) return std::nullopt;
    const auto size = Digits(file.substr(end - 15, 6));
    if (!size || *size > end - 15) return std::nullopt;
    const std::size_t start = end - 15 - *size;
    if (file.substr(start, 11) != "LYRICSBEGIN") return std::nullopt;
    return start;
}

// Lyrics3 v1: "LYRICSBEGIN", at most 5100 bytes of lyrics, "LYRICSEND".
std::optional<std::size_t> Lyrics3v1Start(std::string_view file, std::size_t end) {
    if (!EndsWithAt(file, end, "LYRICSEND") || end < 9 + 11) return std::nullopt;
    const std::size_t last = end - 9 - 11;
    const std::size_t start = file.rfind("LYRICSBEGIN", last);
    if (start == std::string_view::npos || last - start > 5100) return std::nullopt;
    return start;
}

// APEv2 footer: "APETAGEX", version, size of items and footer, item count, flags (bit 31: a header of the
// same 32 bytes comes first), 8 reserved bytes.
std::optional<std::size_t> ApeStart(std::string_view file, std::size_t end) {
    if (end < 32 || file.substr(end - 32, 8) != "APETAGEX") return std::nullopt;
    const std::string_view footer = file.substr(end - 32, 32);
    const std::uint64_t size = LittleEndian32(footer.substr(12, 4));
    const std::uint64_t total = size + ((LittleEndian32(footer.substr(20, 4)) & 0x80000000u) != 0 ? 32 : 0);
    if (size < 32 || total > end) return std::nullopt;
    return end - static_cast<std::size_t>(total);
}

// Our own block has a start mark and no end mark: "LYRICS" (and the lyrics field) runs up to the tag. The
// first "LYRICS" of the writer's reach is taken, so an old block the writer wrote over is left out too.
std::optional<std::size_t> InfoBlockStart(std::string_view file, std::size_t tag) {
    const std::size_t lowest = file.size() > kInfoBlockSpan ? file.size() - kInfoBlockSpan : 0;
    if (tag < lowest + 6) return std::nullopt;
    const std::size_t start = file.find("LYRICS", lowest);
    if (start == std::string_view::npos || start + 6 > tag) return std::nullopt;
    return start;
}

}  // namespace

std::optional<std::size_t> FindId3v1Tag(std::string_view file) {
    if (file.size() < kId3v1Size) return std::nullopt;
    const std::size_t lowest = file.size() > kId3v1SearchSpan ? file.size() - kId3v1SearchSpan : 0;
    // A "TAG" that leaves room for a whole tag and has nothing but zeros beyond the longest tag our writer makes.
    const auto nearestBelow = [&](std::size_t from) -> std::optional<std::size_t> {
        for (std::size_t at = from + 1; at-- > lowest;) {
            if (file.substr(at, 3) != "TAG") continue;
            if (at + kLongestWrittenTag >= file.size() || AllZero(file.substr(at + kLongestWrittenTag))) return at;
        }
        return std::nullopt;
    };
    auto at = nearestBelow(file.size() - kId3v1Size);
    // The text of a tag may hold "TAG" itself (a title that begins with it, in a tag our writer grew, or any
    // text when zeros follow the tag). Only our writer's tags are ever followed by anything, and those have
    // three zero bytes after "TAG" and the title: a match in the text of such a tag gives way to it. (An APE
    // footer, "APETAGEX", often ends right before a tag and has no such zeros.)
    while (at && *at >= 3) {
        const auto earlier = nearestBelow(*at - 3);
        if (!earlier || *at - *earlier > kId3v1TextEnd || !AllZero(file.substr(*earlier + 30, 3))) break;
        at = earlier;
    }
    return at;
}

TrailingTags LocateTrailingTags(std::string_view file) {
    TrailingTags tags;
    tags.audioEnd = file.size();
    if (const auto tag = FindId3v1Tag(file)) {
        tags.id3v1 = tag;
        tags.audioEnd = *tag;
    }
    // Each round peels one tag off the end; the bound keeps a file of stacked fake tags cheap.
    for (int round = 0; round < 16; ++round) {
        const std::size_t end = tags.audioEnd;
        std::optional<std::size_t> start;
        if ((start = Lyrics3v2Start(file, end)) || (start = Lyrics3v1Start(file, end))) {
            tags.lyrics = start;
        } else if ((start = ApeStart(file, end))) {
            tags.ape = start;
        } else if (round == 0 && tags.id3v1 && (start = InfoBlockStart(file, end))) {
            tags.lyrics = start;
        } else {
            break;
        }
        tags.audioEnd = *start;
    }
    return tags;
}

}  // namespace lumora
