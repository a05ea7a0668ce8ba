#include "playback/HeaderCheck.h"

#include <cstdint>

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

// A RIFF WAVE file's "fmt " block: counts a real format can have. Not a RIFF WAVE at all passes: the
// system decides by content.
bool WaveLooksSound(std::string_view head) {
    if (head.size() < 12 || head.substr(0, 4) != "RIFF" || head.substr(8, 4) != "WAVE") return true;
    for (std::size_t at = 12; at + 8 <= head.size();) {
        const std::uint32_t size = Le(head, at + 4, 4);
        if (head.substr(at, 4) == "fmt ") {
            if (size < 16 || at + 8 + 16 > head.size()) return false;
            const std::size_t f = at + 8;
            const std::uint32_t tag = Le(head, f, 2), channels = Le(head, f + 2, 2), rate = Le(head, f + 4, 4);
            const std::uint32_t bytesPerSecond = Le(head, f + 8, 4), align = Le(head, f + 12, 2);
            const std::uint32_t maxChannels = tag == 0xFFFE ? 18 : 8;  // WAVE_FORMAT_EXTENSIBLE names its speakers
            return channels >= 1 && channels <= maxChannels && rate >= 1000 && rate <= 768000 && bytesPerSecond > 0 &&
                   align > 0;
        }
        // A block that runs past what was read ends the walk; adding first would wrap a 32-bit size_t.
        if (size >= head.size() - (at + 8)) break;
        at += 8 + static_cast<std::size_t>(size) + (size & 1);
    }
    return false;  // no format block where every WAVE has it
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

}  // namespace

bool HeadLooksSound(std::string_view name, std::string_view head, long long size) {
    const std::size_t dot = name.rfind('.');
    const std::string ext = dot == std::string_view::npos ? std::string() : LowerAscii(name.substr(dot));
    if (ext == ".wav") return WaveLooksSound(head);
    if (ext == ".ico" || ext == ".cur") return IconLooksSound(head, size);
    return true;
}

bool FileHeadLooksSound(FileSystem& fs, const std::string& path) {
    // MPEG audio is confirmed by our own frame walker: the system's MPEG device can sit for ever on an
    // ".mp3" of tags or 0xFF bytes alone.
    if (IsMpegAudioName(path)) return ReadMpegStreamFacts(fs, path).has_value();
    const FileRead head = fs.ReadFilePart(path, 0, 64 * 1024);
    if (head.status != FileRead::Status::Ok) return true;  // unreadable: the system says so itself
    return HeadLooksSound(path, head.bytes, fs.FileSize(path));
}

}  // namespace lumora
