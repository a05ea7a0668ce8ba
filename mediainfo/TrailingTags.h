#pragma once
// The tags players keep behind the audio: the 128-byte ID3v1 "TAG", Lumora's own information block
// (a "LYRICS" start mark before that tag), standard Lyrics3 blocks and APEv2 tags. The tag reader takes
// the "TAG" from here, and the frame parser stops the audio where the first of them begins.
#include <cstddef>
#include <optional>
#include <string_view>

namespace lumora {

inline constexpr std::size_t kId3v1Size = 128;

// How far from the end the "TAG" is looked for. Saving an information block never shortens the file, so a
// block that replaces a longer one of ours can leave the new tag up to a whole old block (3700 bytes at
// most) before the end, with zeros behind it; the writer never puts a tag further back than this.
inline constexpr std::size_t kId3v1SearchSpan = 4096;

// Where our writer puts its block: within this many bytes of the end (6 + 23 + 3555 fit in it).
inline constexpr std::size_t kInfoBlockSpan = 3700;

// The "TAG" that starts the file's ID3v1 tag, searched backwards from the end: the match nearest the end
// that leaves room for a whole tag and has nothing but zeros behind the longest tag our writer makes (132
// bytes), so "TAG" in the audio is not taken. A match inside the text of an earlier match (a title that
// says "TAG") gives way to the earlier one.
std::optional<std::size_t> FindId3v1Tag(std::string_view file);

struct TrailingTags {
    std::size_t audioEnd = 0;           // the first byte after the audio (the file size when no tag)
    std::optional<std::size_t> id3v1;   // offset of "TAG"
    std::optional<std::size_t> lyrics;  // offset of the "LYRICS" mark: our block or a Lyrics3 block
    std::optional<std::size_t> ape;     // offset of the APEv2 tag (its header when it has one)
};

TrailingTags LocateTrailingTags(std::string_view file);

}  // namespace lumora
