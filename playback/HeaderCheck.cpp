#include "playback/HeaderCheck.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "common/Text.h"
#include "mediainfo/MpegAudioParser.h"
#include "ports/FileSystem.h"

namespace lumora {
namespace {

std::uint32_t Le(std::string_view b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i) v = v << 8 | static_cast<unsigned char>(b[at + static_cast<std::size_t>(i)]);
    return v;
}

std::uint32_t Be(std::string_view b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = 0; i < bytes; ++i) v = v << 8 | static_cast<unsigned char>(b[at + static_cast<std::size_t>(i)]);
    return v;
}

// Sizes a real picture has: no side of 0 and no frame of more than 2^26 pixels.
bool SaneSize(std::uint32_t width, std::uint32_t height) {
    return width >= 1 && height >= 1 && width <= 65536 && height <= 65536 &&
           static_cast<unsigned long long>(width) * height <= 1ULL << 26;
}

// Walks the blocks of a RIFF or IFF file from `at` (an id, a size, a body padded to an even length), calling
// `visit(id, bodyAt, size)` until it returns true. A block that runs past what was read ends the walk before
// its size is added, which would wrap a 32-bit size_t.
template <class Visit>
void WalkBlocks(std::string_view head, std::size_t at, bool bigEndian, Visit visit) {
    while (at + 8 <= head.size()) {
        const std::uint32_t size = bigEndian ? Be(head, at + 4, 4) : Le(head, at + 4, 4);
        if (visit(head.substr(at, 4), at + 8, size) || size >= head.size() - (at + 8)) return;
        at += 8 + static_cast<std::size_t>(size) + (size & 1);
    }
}

// A RIFF WAVE file's "fmt " block: counts a real format can have. Not a RIFF WAVE at all passes: the
// system decides by content.
bool WaveLooksSound(std::string_view head) {
    if (head.size() < 12 || head.substr(0, 4) != "RIFF" || head.substr(8, 4) != "WAVE") return true;
    bool sound = false;  // no format block where every WAVE has it
    WalkBlocks(head, 12, false, [&](std::string_view id, std::size_t f, std::uint32_t size) {
        if (id != "fmt ") return false;
        if (size < 16 || f + 16 > head.size()) return true;
        const std::uint32_t tag = Le(head, f, 2), channels = Le(head, f + 2, 2), rate = Le(head, f + 4, 4);
        const std::uint32_t bytesPerSecond = Le(head, f + 8, 4), align = Le(head, f + 12, 2);
        const std::uint32_t maxChannels = tag == 0xFFFE ? 18 : 8;  // WAVE_FORMAT_EXTENSIBLE names its speakers
        sound = channels >= 1 && channels <= maxChannels && rate >= 1000 && rate <= 768000 && bytesPerSecond > 0 &&
                align > 0;
        return true;
    });
    return sound;
}

// An icon or cursor directory: every image it lists lies inside the file.
bool IconLooksSound(std::string_view head, long long size) {
    if (head.size() < 6 || Le(head, 0, 2) != 0) return false;
    const std::uint32_t count = Le(head, 4, 2);
    if (count == 0 || 6 + 16LL * count > size || 6 + 16 * static_cast<std::size_t>(count) > head.size()) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t entry = 6 + 16 * static_cast<std::size_t>(i);
        if (static_cast<long long>(Le(head, entry + 12, 4)) + Le(head, entry + 8, 4) > size) return false;
    }
    return true;
}

// A RIFF AVI file's main header: at least one stream, a sane frame. The AVI reader of Wine dies on a
// header that counts no streams.
bool AviLooksSound(std::string_view head, long long size) {
    if (head.size() < 12 || head.substr(0, 4) != "RIFF" || head.substr(8, 4) != "AVI ") return true;
    if (head.size() < 32 + 56 || head.substr(12, 4) != "LIST" || head.substr(20, 4) != "hdrl" ||
        head.substr(24, 4) != "avih" || Le(head, 28, 4) < 56) {
        return false;
    }
    const std::uint32_t streams = Le(head, 32 + 24, 4), width = Le(head, 32 + 32, 4), height = Le(head, 32 + 36, 4);
    // A file of sound alone gives no frame size.
    if (streams < 1 || streams > 64 || !((width == 0 && height == 0) || SaneSize(width, height))) return false;
    // The frames' list ends inside the file: Wine's reader dies on one that claims more.
    bool fits = true;
    WalkBlocks(head, 12, false, [&](std::string_view id, std::size_t body, std::uint32_t chunk) {
        if (id != "LIST" || head.substr(body, 4) != "movi") return false;
        fits = static_cast<long long>(body) + chunk <= size;
        return true;
    });
    return fits;
}

// The codings of AIFF-C files that exist: uncompressed in either byte order, floats, the telephone
// laws and the compressed ones of the Macintosh and QuickTime.
bool KnownAifcCoding(std::string_view coding) {
    static constexpr std::string_view kCodings[] = {
        "NONE", "sowt", "twos", "raw ", "in24", "in32", "42ni", "23ni", "fl32", "FL32", "fl64", "FL64", "alaw",
        "ALAW", "ulaw", "ULAW", "ima4", "MAC3", "MAC6", "GSM ", "Qclp", "QDMC", "QDM2", "ACE2", "ACE8"};
    return std::find(std::begin(kCodings), std::end(kCodings), coding) != std::end(kCodings);
}

// An AIFF or AIFF-C file: channels, sample size and rate (an 80-bit float) a sound can have, and sound
// data that starts inside its block. Wine's reader never returns from some others.
bool AiffLooksSound(std::string_view head) {
    if (head.size() < 12 || head.substr(0, 4) != "FORM" ||
        (head.substr(8, 4) != "AIFF" && head.substr(8, 4) != "AIFC")) {
        return true;
    }
    const bool aifc = head.substr(8, 4) == "AIFC";
    bool comm = false, bad = false;
    WalkBlocks(head, 12, true, [&](std::string_view id, std::size_t body, std::uint32_t size) {
        if (id == "COMM") {
            if (size < 18 || body + 18 > head.size()) return bad = true;
            const std::uint32_t channels = Be(head, body, 2), bits = Be(head, body + 6, 2);
            const std::uint32_t exponent = Be(head, body + 8, 2), mantissaTop = Be(head, body + 10, 4);
            // 1000 to 768000 Hz: exponents 16383+9 to 16383+19, the mantissa's top bit set.
            bad = channels < 1 || channels > 18 || bits < 1 || bits > 32 || exponent < 16392 || exponent > 16402 ||
                  (mantissaTop & 0x80000000u) == 0;
            comm = true;
            // AIFF-C names its coding; Wine's reader never returns from one that no codec knows.
            if (aifc && !bad) bad = size < 22 || body + 22 > head.size() || !KnownAifcCoding(head.substr(body + 18, 4));
        } else if (id == "SSND") {
            bad = size < 8 || (body + 8 <= head.size() && 8ULL + Be(head, body, 4) > size);
        }
        return bad;
    });
    return comm && !bad;
}

// A GIF: a sane screen and images, and a block structure that reaches an image before the file ends.
bool GifLooksSound(std::string_view head, long long size) {
    if (head.size() < 6 || (head.substr(0, 6) != "GIF87a" && head.substr(0, 6) != "GIF89a")) return true;
    if (head.size() < 13 || !SaneSize(Le(head, 6, 2), Le(head, 8, 2))) return false;
    const auto table = [&](unsigned flags) { return (flags & 0x80) ? std::size_t{3} << ((flags & 7) + 1) : 0; };
    std::size_t at = 13 + table(static_cast<unsigned char>(head[10]));
    const auto blocks = [&] {  // data sub-blocks up to their empty terminator
        while (at < head.size() && head[at] != 0) at += 1 + static_cast<unsigned char>(head[at]);
        return at++ < head.size();
    };
    while (at < head.size()) {
        const char kind = head[at];
        if (kind == '!') {
            at += 2;
            if (!blocks()) break;
        } else if (kind == ',') {
            if (at + 11 > head.size()) break;
            const unsigned flags = static_cast<unsigned char>(head[at + 9]);
            if (!SaneSize(Le(head, at + 5, 2), Le(head, at + 7, 2))) return false;
            at += 10 + table(flags);
            if (at >= head.size()) break;
            const unsigned codeSize = static_cast<unsigned char>(head[at]);
            return codeSize >= 2 && codeSize <= 8;
        } else {
            return false;  // a trailer or anything else before the first image
        }
    }
    return static_cast<long long>(head.size()) < size;  // the head ended first: the rest decides
}

// A video CD's RIFF CDXA file: every block lies inside the file (Wine's reader never returns from a
// sector block that claims more).
bool CdxaLooksSound(std::string_view head, long long size) {
    if (head.size() < 12 || head.substr(0, 4) != "RIFF" || head.substr(8, 4) != "CDXA") return true;
    bool fits = true;
    WalkBlocks(head, 12, false, [&](std::string_view, std::size_t body, std::uint32_t block) {
        fits = static_cast<long long>(body) + block <= size;
        return !fits;
    });
    return fits;
}

// A RealMedia file's first header: its own size and a count of headers a file can hold. A RealAudio
// file of the older kind names one of its three versions right after its mark.
bool RealLooksSound(std::string_view head, long long size) {
    if (head.size() >= 4 && head.substr(0, 4) == ".ra\xFD") {
        return head.size() >= 6 && Be(head, 4, 2) >= 3 && Be(head, 4, 2) <= 5;
    }
    if (head.size() < 4 || head.substr(0, 4) != ".RMF") return true;
    if (head.size() < 18) return false;
    const std::uint32_t own = Be(head, 4, 4);
    return own >= 18 && own <= size && Be(head, 14, 4) <= 1000;
}

// MPEG audio under ID3v2 tags: the system's MPEG device never returns from a head of many stacked tags.
bool MpegHeadLooksSound(std::string_view head) {
    int tags = 0;
    for (std::size_t at = 0, tag; at < head.size() && (tag = Id3v2Size(head.substr(at))) != 0; at += tag) ++tags;
    return tags <= 2;
}

unsigned long long Le64(std::string_view b, std::size_t at) {
    return static_cast<unsigned long long>(Le(b, at + 4, 4)) << 32 | Le(b, at, 4);
}

// An ASF (Windows Media) file: the header object and each object in it fit their container, the file
// properties give no more packets than the file has bytes, and the data object after the header fits
// the file.
bool AsfLooksSound(std::string_view head, long long size) {
    static constexpr std::string_view kHeader("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);
    static constexpr std::string_view kFileProperties(
        "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65", 16);
    static constexpr std::string_view kStreamProperties(
        "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65", 16);
    if (head.size() < 16 || head.substr(0, 16) != kHeader) return true;
    if (head.size() < 30) return false;
    const auto fileSize = static_cast<unsigned long long>(size);
    const unsigned long long headerSize = Le64(head, 16);
    const std::uint32_t count = Le(head, 24, 4);
    if (headerSize < 30 || headerSize > fileSize || count == 0 || count > (headerSize - 30) / 24) return false;
    std::size_t at = 30;
    bool fileProperties = false;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (at + 24 > head.size()) return true;  // the head ended first: the rest decides
        const unsigned long long objectSize = Le64(head, at + 16);
        if (objectSize < 24 || objectSize > headerSize - at) return false;
        const std::string_view guid = head.substr(at, 16);
        if (guid == kFileProperties) {
            if (objectSize < 104 || at + 104 > head.size()) return false;
            fileProperties = Le64(head, at + 56) <= fileSize;  // data packets
            if (!fileProperties) return false;
        }
        if (guid == kStreamProperties && at + 78 <= head.size() &&
            78ULL + Le(head, at + 64, 4) + Le(head, at + 68, 4) > objectSize) {
            return false;  // type-specific and error-correction data past the object
        }
        at += static_cast<std::size_t>(objectSize);
    }
    if (!fileProperties) return false;
    if (headerSize + 24 <= head.size()) {
        const unsigned long long dataSize = Le64(head, static_cast<std::size_t>(headerSize) + 16);
        if (dataSize < 50 || dataSize > fileSize - headerSize) return false;
    }
    return true;
}

// QuickTime atoms from `at` to `end`: each at least a header long and inside its parent, and so are the
// atoms inside the containers among them. What lies past the head is left to the system.
bool AtomsFit(std::string_view head, unsigned long long at, unsigned long long end, int depth) {
    static constexpr std::string_view kContainers[] = {"moov", "trak", "mdia", "minf", "stbl", "edts", "dinf", "udta"};
    while (at + 8 <= end && at + 8 <= head.size()) {
        const auto here = static_cast<std::size_t>(at);
        unsigned long long atomSize = Be(head, here, 4), headerSize = 8;
        if (atomSize == 0) atomSize = end - at;  // runs to its parent's end
        if (atomSize == 1) {
            if (here + 16 > head.size()) return true;
            atomSize = static_cast<unsigned long long>(Be(head, here + 8, 4)) << 32 | Be(head, here + 12, 4);
            headerSize = 16;
        }
        if (atomSize < headerSize || atomSize > end - at) return false;
        const std::string_view type = head.substr(here + 4, 4);
        const bool container = std::find(std::begin(kContainers), std::end(kContainers), type) != std::end(kContainers);
        if (container && (depth >= 8 || !AtomsFit(head, at + headerSize, at + atomSize, depth + 1))) return false;
        at += atomSize;
    }
    return true;
}

bool QuickTimeLooksSound(std::string_view head, long long size) {
    return AtomsFit(head, 0, static_cast<unsigned long long>(size), 0);
}

}  // namespace

bool HeadLooksSound(std::string_view name, std::string_view head, long long size) {
    const std::size_t dot = name.rfind('.');
    const std::string ext = dot == std::string_view::npos ? std::string() : LowerAscii(name.substr(dot));
    if (IsMpegAudioName(name)) return MpegHeadLooksSound(head);
    if (ext == ".wav") return WaveLooksSound(head);
    if (ext == ".ico" || ext == ".cur") return IconLooksSound(head, size);
    if (ext == ".avi") return AviLooksSound(head, size);
    if (ext == ".aif" || ext == ".aiff" || ext == ".aifc") return AiffLooksSound(head);
    if (ext == ".gif") return GifLooksSound(head, size);
    if (ext == ".rm" || ext == ".ra" || ext == ".rmvb") return RealLooksSound(head, size);
    if (ext == ".asf" || ext == ".wma" || ext == ".wmv") return AsfLooksSound(head, size);
    if (ext == ".mov" || ext == ".qt") return QuickTimeLooksSound(head, size);
    if (ext == ".dat") return CdxaLooksSound(head, size);
    return true;
}

bool FileHeadLooksSound(FileSystem& fs, const std::string& path) {
    // MPEG audio is confirmed by our own frame walker: the system's MPEG device can sit for ever on an
    // ".mp3" of tags or 0xFF bytes alone.
    if (IsMpegAudioName(path) && !ReadMpegStreamFacts(fs, path)) return false;
    const FileRead head = fs.ReadFilePart(path, 0, 64 * 1024);
    if (head.status != FileRead::Status::Ok) return true;  // unreadable: the system says so itself
    return HeadLooksSound(path, head.bytes, fs.FileSize(path));
}

}  // namespace lumora
