#pragma once
// The media information Lumora keeps inside a media file: a "LYRICS" block (Lyrics3 v2.00 field layout,
// start mark only) with the time-stamped lyrics, followed by an ID3v1-style tag, at the file's end. Here
// are the record the editor holds, the byte-length rule of its limits, validation with the editor's
// messages, the lyrics field, the write and the reading of the embedded lyrics.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/Id3v1.h"

namespace lumora {

class FileSystem;

// The six items of the information editor, UTF-8. The lyrics are lines separated by CR LF.
struct MediaInfoRecord {
    std::string title;
    std::string artist;
    std::string album;
    std::string year;
    std::string comment;
    std::string lyrics;
    bool operator==(const MediaInfoRecord&) const = default;
};

// The items' names: the editor's labels and the keys of the .QGC file.
inline constexpr std::string_view kTitleLabel = "标题";
inline constexpr std::string_view kArtistLabel = "歌手";
inline constexpr std::string_view kAlbumLabel = "专集";
inline constexpr std::string_view kYearLabel = "年代";
inline constexpr std::string_view kCommentLabel = "其他";
inline constexpr std::string_view kLyricsLabel = "歌词";

// The largest sizes the editor accepts, in bytes of the byte-length rule.
inline constexpr std::size_t kMaxTitleBytes = 27;
inline constexpr std::size_t kMaxArtistBytes = 29;
inline constexpr std::size_t kMaxAlbumBytes = 29;
inline constexpr std::size_t kMaxCommentBytes = 29;
inline constexpr std::size_t kMaxLyricsBytes = 3555;

// One character of a UTF-8 text at byte `at`: its length in the text, and in code page 936.
struct TextCharacter {
    std::size_t utf8Bytes = 1;
    std::size_t cp936Bytes = 1;
};
TextCharacter CharacterAt(std::string_view utf8, std::size_t at);

// The byte-length rule: 1 for an ASCII character, 2 for any other, so the count is the text's length in
// code page 936. The euro sign, which code page 936 keeps in the one byte 0x80, counts 1. A character
// code page 936 cannot hold counts 2; validation refuses it (UnstorableFieldMessage).
std::size_t InfoByteLength(std::string_view utf8);
// The lyrics' size: the byte lengths of the lines plus 2 for every line break (CR LF).
std::size_t LyricsByteSize(std::string_view lyrics);

// Runs the editor's checks in its order (title, artist, album, year, comment, lyrics) and gives the
// message of the first that fails. A year passes when empty or made of exactly 4 or exactly 2 digits.
// After those checks, a field holding a character code page 936 cannot store fails with
// UnstorableFieldMessage, so no garbage ever reaches the file.
std::optional<std::string> ValidateMediaInfo(const MediaInfoRecord& record);

// The first field (same order) code page 936 cannot store, as its message; empty when all can be stored.
// The export to a QGC file uses it too.
std::optional<std::string> UnstorableFieldMessage(const MediaInfoRecord& record);

// The lyrics field the writer puts behind "LYRICS": "BEGININD0000211LYR", the lyrics' byte size in five
// digits (more when larger), the lyrics with their lines joined by CR LF. Empty for empty lyrics.
std::string BuildLyricsField(std::string_view lyrics);

// A string (the block's text after "LYRICS") is an embedded lyrics field when it has at least 24
// characters and starts with "BEGININD".
bool IsEmbeddedLyricsField(std::string_view field);
// The lyrics after the field's 23-character header, up to the size the header declares ("LYR" and five
// digits at characters 16 to 23) when it declares one; a field whose second item is not "LYR" carries no
// lyrics (a Lyrics3 block of another program with only title or album items). Empty when no field.
std::string EmbeddedLyricsText(std::string_view field);

// The bytes the writer puts at the write position: "LYRICS", the lyrics field, then the tag: "TAG" and the
// title, three zero bytes, artist, album, year immediately followed by comment, five zero bytes. Each of
// the four groups ("TAG"+title, artist, album, year+comment) below 30 bytes is zero-padded to 30; a group
// of 30 bytes or more is followed by one zero byte instead, so a full title or a four-digit year with a
// long comment makes the tag longer than 128 bytes. Older Lumora files are laid out so; keep it.
// Empty when a text cannot be stored in code page 936.
std::optional<std::string> BuildInfoBlockBytes(const Id3v1Tag& tag, std::string_view lyricsField);

enum class InfoWriteResult {
    Written,
    FileError,     // missing, unreadable or unwritable; the file is as it was
    NotEncodable,  // a text code page 936 cannot hold; nothing was touched
};

// Writes the block and the tag at the file's end. Only the tail is read (8 KB, more only for a large
// Lyrics3 block of another program), and everything goes out in one write:
// - The tag: a "TAG" in the last 256 bytes that leaves room for a whole tag, with nothing but zero bytes
//   behind the longest tag the writer makes. Without one, the file's end stands for it.
// - A Lyrics3 v2.00 block ("LYRICS200" end mark right before the tag) or v1 block ("LYRICSEND") of another
//   program is replaced from its start.
// - Otherwise an old block is overwritten in place from its "LYRICS" start mark, searched backwards over
//   the 3700 bytes (the largest block) and a tag before the last tag. Earlier saves may have left zero
//   bytes behind that tag: they are skipped. Our own block is the mark whose LYR size leads exactly to
//   that tag; a "LYRICS" the user typed into the lyrics never does. Without it, the nearest mark where a
//   block can start counts: "LYRICS" followed by "BEGIN" or directly by "TAG".
// - Without an old block the block goes where the tag was.
// - The file never shrinks: where the old tail was longer than the new one, the rest is zero-filled, so
//   the new tag is the last one a backward search finds. Where those zeros would put the tag out of the
//   readers' reach (kId3v1SearchSpan: a long lyrics block of another program, or zeros an older save left),
//   they go in front of the block instead and the block ends at the file's end.
// - The bytes about to be overwritten are read first; when the write fails they are put back (anything
//   the failed write added beyond the old end becomes zero bytes). Audio bytes never change.
InfoWriteResult WriteInfoBlock(FileSystem& fs, const std::string& path, const Id3v1Tag& tag,
                               std::string_view lyricsField);

// The embedded lyrics field of a file's tail (the last bytes of the file, `fileSize` in all), found as
// the writer finds an old block and read up to the tag, converted from code page 936. Empty when there is
// no block, or it is no lyrics field (IsEmbeddedLyricsField) or one without the "LYR" item.
std::optional<std::string> FindEmbeddedLyricsField(std::string_view tail, long long fileSize);

// The embedded lyrics of a file (EmbeddedLyricsText of its field); empty optional when none. Reads only
// the file's tail.
// `repair`: RepairInfoText (opt::kRepairMediaInfo).
std::optional<std::string> ReadEmbeddedLyrics(FileSystem& fs, const std::string& path, bool repair = false);

// What the editor shows for a file: its tag items (as the tag reader gives them) and embedded lyrics.
// Empty items when the file has neither; empty optional when it cannot be read.
std::optional<MediaInfoRecord> ReadMediaInfo(FileSystem& fs, const std::string& path, bool repair = false);

}  // namespace lumora
