#include "mediainfo/InfoBlock.h"

#include <algorithm>
#include <vector>

#include "common/Text.h"
#include "mediainfo/LyricsTiming.h"
#include "mediainfo/TrailingTags.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

constexpr std::string_view kCrLf = "\r\n";
constexpr std::string_view kBlockMark = "LYRICS";
constexpr std::string_view kFieldHeader = "BEGININD0000211LYR";
constexpr std::size_t kFieldHeaderSize = 23;  // "BEGININD0000211LYR" and five digits
constexpr std::size_t kMinFieldSize = 24;

constexpr std::string_view kTitleTooLong = "“标题”内容大于最大值，请删去一些内容再继续。";
constexpr std::string_view kArtistTooLong = "“歌手”内容大于最大值，请删去一些内容再继续。";
constexpr std::string_view kAlbumTooLong = "“专集”内容大于最大值，请删去一些内容再继续。";
constexpr std::string_view kYearInvalid = "“年代”内容不合法。";
constexpr std::string_view kCommentTooLong = "“其他”内容大于最大值，请删去一些内容再继续。";
constexpr std::string_view kLyricsTooLong = "“歌词”内容大于最大值，请删去一些内容再继续。";
constexpr std::string_view kLyricsHint1 = "提示：您可以将其直接导出“QGC”文件，放在此媒体文件同一目录下，";
constexpr std::string_view kLyricsHint2 = "并且文件名与媒体名相同（不包括“后缀名”），也可以“动态显示歌词”。";
// Our own wording: the file keeps code page 936 and the field holds a character it lacks.
constexpr std::string_view kUnstorableSuffix = "”中有无法保存的字符（只能保存简体中文GBK字符），请删去或替换后再继续。";

// Where the writer looks. A tag is searched in the last 256 bytes; a block in the 3700 bytes (the largest
// block: 6 + 23 + 3555) before the tag, or before the last non-zero byte when zero bytes follow the tag.
constexpr long long kTagSearchSpan = 256;
constexpr long long kBlockSearchSpan = 3700;
constexpr long long kTagSize = 128;
// The longest tag the writer makes: a full title group and a 33-byte year and comment group each get one
// zero byte instead of padding (31 + 3 + 30 + 30 + 34 + 5).
constexpr long long kLongestTag = 133;
// How much of the tail is read: enough for a tag, the largest block and the zero bytes a shorter block
// leaves behind a longer one. A Lyrics3 block of another program may need more, up to the most its
// six-digit size can say.
constexpr long long kTailRead = 8192;
constexpr long long kMaxTailRead = 1024 * 1024 + 1024;
// Lyrics3 v1 keeps at most 5100 bytes of lyrics between "LYRICSBEGIN" and "LYRICSEND".
constexpr long long kLyrics3v1MaxText = 5100;

std::string Zeros(std::size_t n) { return std::string(n, '\0'); }

// A group of the tag: zero-padded to 30 bytes, or followed by one zero byte when it has 30 or more.
std::string Group(std::string bytes) {
    if (bytes.size() < 30) {
        bytes.resize(30, '\0');
    } else {
        bytes.push_back('\0');
    }
    return bytes;
}

// The end of a file held in memory from `offset` on.
struct Tail {
    long long offset = 0;
    long long fileSize = 0;
    std::string_view bytes;

    bool Holds(long long from, long long size) const {
        return from >= offset && size >= 0 && from + size <= offset + static_cast<long long>(bytes.size());
    }
    std::string_view At(long long from, long long size) const {
        if (!Holds(from, size)) return {};
        return bytes.substr(static_cast<std::size_t>(from - offset), static_cast<std::size_t>(size));
    }
    bool Is(long long from, std::string_view text) const {
        return Holds(from, static_cast<long long>(text.size())) &&
               At(from, static_cast<long long>(text.size())) == text;
    }
};

struct Placement {
    long long tagStart = 0;             // the file's end when it has no tag
    long long writeAt = 0;              // where "LYRICS" goes
    bool oldBlock = false;              // writeAt is the start of a block found in the file
    std::optional<long long> blockTag;  // the tag behind our own block, where it has one
    long long contentEnd = 0;           // one past the last non-zero byte of the tail
    long long needFrom = -1;            // >= 0: the tail must reach back to here first
};

// Our own block's declared extent from its "LYRICS": 6 + 23 + the LYR size, or 6 for "LYRICSTAG".
std::optional<long long> OwnBlockLength(const Tail& t, long long at) {
    if (t.Is(at + 6, "TAG")) return 6;
    if (!t.Is(at + 6, kFieldHeader)) return std::nullopt;
    const std::string_view digits = t.At(at + 6 + 18, 5);
    if (!IsDigits(digits)) return std::nullopt;
    return 6 + static_cast<long long>(kFieldHeaderSize) + std::stoll(std::string(digits));
}

bool IsBlockStart(const Tail& t, long long at) {
    return t.Is(at, kBlockMark) && (t.Is(at + 6, "BEGIN") || t.Is(at + 6, "TAG"));
}

// The "TAG" nearest `end` within the 256 bytes before it that leaves room for a whole tag and has nothing
// but zero bytes behind the longest tag the writer makes.
std::optional<long long> TagBefore(const Tail& t, long long end) {
    const long long size = t.fileSize;
    for (long long at = std::min(end - 3, size - kTagSize); at >= std::max(0LL, end - kTagSearchSpan); --at) {
        if (!t.Is(at, "TAG")) continue;
        const long long behind = std::min(at + kLongestTag, size);
        if (t.At(behind, size - behind).find_first_not_of('\0') == std::string_view::npos) return at;
    }
    return std::nullopt;
}

Placement Place(const Tail& t) {
    Placement p;
    const long long size = t.fileSize;
    p.tagStart = p.writeAt = size;

    // Zero bytes at the end are what earlier saves left behind a shorter block. A tail of nothing but
    // zeros (a silent end of a WAVE file) holds neither tag nor block.
    const std::size_t last = t.bytes.find_last_not_of('\0');
    if (last == std::string_view::npos) return p;
    p.contentEnd = t.offset + static_cast<long long>(last) + 1;

    const long long tag = p.tagStart = p.writeAt = TagBefore(t, size).value_or(size);

    // A Lyrics3 v2.00 block of another program: six-digit size and "LYRICS200" right before the tag.
    if (tag >= 15 && t.Is(tag - 9, "LYRICS200") && IsDigits(t.At(tag - 15, 6))) {
        const long long start = tag - 15 - std::stoll(std::string(t.At(tag - 15, 6)));
        if (start >= 0 && !t.Holds(start, 11) && size - start <= kMaxTailRead) {
            p.needFrom = start;
            return p;
        }
        if (start >= 0 && t.Is(start, "LYRICSBEGIN")) {
            p.writeAt = start;
            p.oldBlock = true;
            return p;
        }
    }
    // Lyrics3 v1: "LYRICSBEGIN", at most 5100 bytes, "LYRICSEND" right before the tag.
    if (tag >= 20 && t.Is(tag - 9, "LYRICSEND")) {
        for (long long at = tag - 9 - 11; at >= std::max(0LL, tag - 9 - 11 - kLyrics3v1MaxText); --at) {
            if (t.Is(at, "LYRICSBEGIN")) {
                p.writeAt = at;
                p.oldBlock = true;
                return p;
            }
        }
    }

    // Our own block: it ends where its tag begins, and that tag is the last one before the zero bytes an
    // earlier, longer block left. Any other "LYRICS" between them lies in the lyrics the user typed.
    p.blockTag = TagBefore(t, p.contentEnd);
    const long long anchor = p.blockTag.value_or(p.contentEnd);
    const long long lowest = std::max(0LL, anchor - kBlockSearchSpan - kTagSize);
    if (!t.Holds(lowest, anchor - lowest)) {
        p.needFrom = lowest;
        return p;
    }
    std::optional<long long> nearest;
    for (long long at = anchor - 6; at >= lowest; --at) {
        if (!IsBlockStart(t, at)) continue;
        const auto length = OwnBlockLength(t, at);
        if (p.blockTag && length && at + *length == *p.blockTag) {
            nearest = at;
            break;
        }
        if (!nearest) nearest = at;  // another program's block start, or ours without its tag
    }
    if (nearest) {
        p.writeAt = *nearest;
        p.oldBlock = true;
    }
    return p;
}

// Reads the tail and places the block, reading further back where the place needs it.
struct PlacedTail {
    long long fileSize = -1;
    long long offset = 0;
    std::string bytes;
    Placement place;
};

std::optional<PlacedTail> ReadAndPlace(FileSystem& fs, const std::string& path) {
    PlacedTail r;
    r.fileSize = fs.FileSize(path);
    if (r.fileSize < 0) return std::nullopt;
    long long from = std::max(0LL, r.fileSize - kTailRead);
    for (int round = 0; round < 4; ++round) {
        const FileRead read = fs.ReadFilePart(path, from, static_cast<std::size_t>(r.fileSize - from));
        if (read.status != FileRead::Status::Ok || static_cast<long long>(read.bytes.size()) != r.fileSize - from) {
            return std::nullopt;
        }
        r.offset = from;
        r.bytes = read.bytes;
        r.place = Place(Tail{r.offset, r.fileSize, r.bytes});
        if (r.place.needFrom < 0 || r.place.needFrom >= from) break;
        from = r.place.needFrom;
    }
    if (r.place.needFrom >= 0 && r.place.needFrom < r.offset) {
        // Beyond what is read at most: place as if nothing were there.
        r.place = Placement{};
        r.place.tagStart = r.place.writeAt = r.fileSize;
    }
    return r;
}

bool IsYear(std::string_view year) {
    return year.empty() || ((year.size() == 4 || year.size() == 2) && IsDigits(year));
}

std::string JoinedLines(std::string_view lyrics) {
    std::string out;
    bool first = true;
    for (const std::string_view line : SplitLyricsLines(lyrics)) {
        if (!first) out += kCrLf;
        first = false;
        out += line;
    }
    return out;
}

}  // namespace

TextCharacter CharacterAt(std::string_view utf8, std::size_t at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead < 0x80) return {1, 1};
    std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    for (std::size_t k = 1; k < length; ++k) {
        if (at + k >= utf8.size() || (static_cast<unsigned char>(utf8[at + k]) & 0xC0) != 0x80) {
            length = k;  // a broken sequence: its bytes go one by one
            break;
        }
    }
    // The euro sign (E2 82 AC) is the single byte 0x80 in code page 936.
    const bool euro = length == 3 && utf8.substr(at, 3) == "\xE2\x82\xAC";
    return {length, euro ? 1u : 2u};
}

std::size_t InfoByteLength(std::string_view utf8) {
    std::size_t bytes = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        const TextCharacter c = CharacterAt(utf8, at);
        bytes += c.cp936Bytes;
        at += c.utf8Bytes;
    }
    return bytes;
}

std::size_t LyricsByteSize(std::string_view lyrics) {
    const auto lines = SplitLyricsLines(lyrics);
    std::size_t size = 2 * (lines.size() - 1);
    for (const std::string_view line : lines) size += InfoByteLength(line);
    return size;
}

std::optional<std::string> UnstorableFieldMessage(const MediaInfoRecord& record) {
    const std::pair<std::string_view, const std::string*> fields[] = {
        {kTitleLabel, &record.title}, {kArtistLabel, &record.artist},   {kAlbumLabel, &record.album},
        {kYearLabel, &record.year},   {kCommentLabel, &record.comment}, {kLyricsLabel, &record.lyrics},
    };
    for (const auto& [label, text] : fields) {
        if (!Utf8ToCp936(*text)) return "“" + std::string(label) + std::string(kUnstorableSuffix);
    }
    return std::nullopt;
}

std::optional<std::string> ValidateMediaInfo(const MediaInfoRecord& record) {
    if (InfoByteLength(record.title) > kMaxTitleBytes) return std::string(kTitleTooLong);
    if (InfoByteLength(record.artist) > kMaxArtistBytes) return std::string(kArtistTooLong);
    if (InfoByteLength(record.album) > kMaxAlbumBytes) return std::string(kAlbumTooLong);
    if (!IsYear(record.year)) return std::string(kYearInvalid);
    if (InfoByteLength(record.comment) > kMaxCommentBytes) return std::string(kCommentTooLong);
    if (LyricsByteSize(record.lyrics) > kMaxLyricsBytes) {
        std::string text(kLyricsTooLong);
        text.append(kCrLf).append(kCrLf).append(kLyricsHint1).append(kCrLf).append(kCrLf).append(kLyricsHint2);
        return text;
    }
    return UnstorableFieldMessage(record);
}

std::string BuildLyricsField(std::string_view lyrics) {
    if (lyrics.empty()) return {};
    std::string size = std::to_string(LyricsByteSize(lyrics));
    if (size.size() < 5) size.insert(0, 5 - size.size(), '0');
    return std::string(kFieldHeader) + size + JoinedLines(lyrics);
}

bool IsEmbeddedLyricsField(std::string_view field) {
    if (field.substr(0, 8) != "BEGININD") return false;
    std::size_t characters = 0;
    for (std::size_t at = 0; at < field.size() && characters < kMinFieldSize; ++characters) {
        at += CharacterAt(field, at).utf8Bytes;
    }
    return characters >= kMinFieldSize;
}

std::string EmbeddedLyricsText(std::string_view field) {
    if (!IsEmbeddedLyricsField(field) || field.substr(15, 3) != "LYR") return {};
    std::string_view text = field.substr(kFieldHeaderSize);
    const std::string_view digits = field.substr(18, 5);
    if (!IsDigits(digits)) return std::string(text);
    // The declared size counts code page 936 bytes: cut there, never inside a character.
    const auto declared = static_cast<std::size_t>(std::stoul(std::string(digits)));
    std::size_t bytes = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const TextCharacter c = CharacterAt(text, at);
        if (bytes + c.cp936Bytes > declared) break;
        bytes += c.cp936Bytes;
        at += c.utf8Bytes;
    }
    return std::string(text.substr(0, at));
}

std::optional<std::string> BuildInfoBlockBytes(const Id3v1Tag& tag, std::string_view lyricsField) {
    const auto field = Utf8ToCp936(lyricsField);
    const auto title = Utf8ToCp936(tag.title);
    const auto artist = Utf8ToCp936(tag.artist);
    const auto album = Utf8ToCp936(tag.album);
    const auto year = Utf8ToCp936(tag.year);
    const auto comment = Utf8ToCp936(tag.comment);
    if (!field || !title || !artist || !album || !year || !comment) return std::nullopt;
    std::string bytes(kBlockMark);
    bytes += *field;
    bytes += Group("TAG" + *title);
    bytes += Zeros(3);
    bytes += Group(*artist);
    bytes += Group(*album);
    bytes += Group(*year + *comment);
    bytes += Zeros(5);
    return bytes;
}

InfoWriteResult WriteInfoBlock(FileSystem& fs, const std::string& path, const Id3v1Tag& tag,
                               std::string_view lyricsField) {
    const auto block = BuildInfoBlockBytes(tag, lyricsField);
    if (!block) return InfoWriteResult::NotEncodable;
    const auto tail = ReadAndPlace(fs, path);
    if (!tail) return InfoWriteResult::FileError;

    const long long at = tail->place.writeAt;
    const std::string old = tail->bytes.substr(static_cast<std::size_t>(at - tail->offset));
    std::string bytes = *block;
    if (bytes.size() + kId3v1SearchSpan - static_cast<std::size_t>(kLongestTag) < old.size()) {
        // Written from the old start, the tag would sit beyond where readers look (another program's long
        // lyrics block, or zeros an earlier save left): zeros first, so the block ends at the file's end.
        bytes.insert(0, old.size() - bytes.size(), '\0');
    } else if (bytes.size() < old.size()) {
        bytes.resize(old.size(), '\0');
    }
    if (fs.WriteFilePart(path, at, bytes)) return InfoWriteResult::Written;

    // Put back what was there; what a failed write added beyond the old end can only be zeroed.
    std::string restore = old;
    const long long grown = fs.FileSize(path);
    if (grown > tail->fileSize) restore.resize(static_cast<std::size_t>(grown - at), '\0');
    fs.WriteFilePart(path, at, restore);
    return InfoWriteResult::FileError;
}

std::optional<std::string> FindEmbeddedLyricsField(std::string_view tail, long long fileSize) {
    const Tail t{fileSize - static_cast<long long>(tail.size()), fileSize, tail};
    const Placement p = Place(t);
    if (!p.oldBlock) return std::nullopt;
    // Up to the tag; without one, up to the last non-zero byte.
    const long long end = p.blockTag && *p.blockTag > p.writeAt ? *p.blockTag : p.contentEnd;
    const long long from = p.writeAt + static_cast<long long>(kBlockMark.size());
    if (end <= from || !t.Holds(from, end - from)) return std::nullopt;
    std::string_view bytes = t.At(from, end - from);
    // The declared size counts code page 936 bytes: what lies behind it is no lyrics.
    if (bytes.size() >= kFieldHeaderSize && bytes.substr(15, 3) == "LYR" && IsDigits(bytes.substr(18, 5))) {
        bytes = bytes.substr(0, kFieldHeaderSize + std::stoul(std::string(bytes.substr(18, 5))));
    }
    std::string field = Cp936ToUtf8(bytes);
    if (!IsEmbeddedLyricsField(field) || field.substr(15, 3) != "LYR") return std::nullopt;
    return field;
}

namespace {

std::string LyricsOfField(std::string_view field, bool repair) {
    return repair ? RepairInfoText(EmbeddedLyricsText(field), true) : EmbeddedLyricsText(field);
}

}  // namespace

std::optional<std::string> ReadEmbeddedLyrics(FileSystem& fs, const std::string& path, bool repair) {
    const auto tail = ReadAndPlace(fs, path);
    if (!tail) return std::nullopt;
    const auto field = FindEmbeddedLyricsField(std::string_view(tail->bytes), tail->fileSize);
    if (!field) return std::nullopt;
    return LyricsOfField(*field, repair);
}

std::optional<MediaInfoRecord> ReadMediaInfo(FileSystem& fs, const std::string& path, bool repair) {
    const auto tail = ReadAndPlace(fs, path);
    if (!tail) return std::nullopt;
    MediaInfoRecord record;
    if (const auto tag = ParseId3v1Tag(tail->bytes, repair)) {
        record.title = tag->title;
        record.artist = tag->artist;
        record.album = tag->album;
        record.year = tag->year;
        record.comment = tag->comment;
    }
    if (const auto field = FindEmbeddedLyricsField(std::string_view(tail->bytes), tail->fileSize)) {
        record.lyrics = LyricsOfField(*field, repair);
    }
    return record;
}

}  // namespace lumora
