#include "mediainfo/MpegAudioParser.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "mediainfo/TrailingTags.h"
#include "ports/FileSystem.h"

namespace lumora {
namespace {

// How much of a large file the stream facts read: the head of its audio and the tail with the tags behind it.
constexpr std::size_t kStreamHeadBytes = 256 * 1024;
constexpr std::size_t kStreamTailBytes = 8 * 1024;
// Free format allows any bit rate, but no real stream has frames longer than this.
constexpr std::size_t kMaxFreeFormatFrame = 4096;
// Distances tried for the size of a free-format frame before its header is given up: real frames rarely
// hold even one look-alike header, and crafted data must not make the search quadratic.
constexpr int kFreeFormatTries = 64;

unsigned Byte(std::string_view s, std::size_t i) { return static_cast<unsigned char>(s[i]); }

std::uint32_t BigEndian32(std::string_view s, std::size_t at) {
    return Byte(s, at) << 24 | Byte(s, at + 1) << 16 | Byte(s, at + 2) << 8 | Byte(s, at + 3);
}

}  // namespace

std::size_t Id3v2Size(std::string_view h) {
    if (h.size() < 10 || h.substr(0, 3) != "ID3" || Byte(h, 3) == 0xFF || Byte(h, 4) == 0xFF) return 0;
    std::size_t size = 0;
    for (std::size_t i = 6; i < 10; ++i) {
        if (Byte(h, i) & 0x80) return 0;
        size = size << 7 | Byte(h, i);
    }
    const bool footer = Byte(h, 3) >= 4 && (Byte(h, 5) & 0x10) != 0;
    return 10 + size + (footer ? 10 : 0);
}

namespace {

// ID3v2 tags at the start. A size that runs past the end leaves no audio; one that ends too early leaves
// junk, which the frame search passes over.
std::size_t SkipId3v2(std::string_view file) {
    std::size_t pos = 0;
    while (const std::size_t size = Id3v2Size(file.substr(pos))) pos += std::min(file.size() - pos, size);
    return pos;
}

std::optional<VbrHeader> ReadVbrHeader(std::string_view frame, const MpegFrameHeader& header) {
    if (header.layer != 3) return std::nullopt;
    // The summary follows the side information; encoders disagree on whether a CRC comes before it.
    const std::size_t plain = 4 + static_cast<std::size_t>(header.SideInfoSize());
    for (const std::size_t at : {plain, plain + 2}) {
        if (at != plain && !header.crc) break;
        if (frame.size() < at + 8) continue;
        const std::string_view id = frame.substr(at, 4);
        if (id != "Xing" && id != "Info") continue;
        VbrHeader vbr;
        vbr.kind = id == "Xing" ? VbrHeader::Kind::Xing : VbrHeader::Kind::Info;
        const std::uint32_t flags = BigEndian32(frame, at + 4);
        std::size_t field = at + 8;
        if ((flags & 1) != 0 && frame.size() >= field + 4) {
            vbr.frames = BigEndian32(frame, field);
            field += 4;
        }
        if ((flags & 2) != 0 && frame.size() >= field + 4) vbr.bytes = BigEndian32(frame, field);
        return vbr;
    }
    // "VBRI" sits 32 bytes after the header whatever the mode: version, delay, quality, bytes, frames.
    if (frame.size() >= 36 + 18 && frame.substr(36, 4) == "VBRI") {
        VbrHeader vbr;
        vbr.kind = VbrHeader::Kind::Vbri;
        vbr.bytes = BigEndian32(frame, 36 + 10);
        vbr.frames = BigEndian32(frame, 36 + 14);
        return vbr;
    }
    return std::nullopt;
}

bool SameRun(const MpegFrameHeader& a, const MpegFrameHeader& b) {
    return a.SameStreamAs(b) && a.frequency == b.frequency;
}

}  // namespace

MpegFrameWalker::MpegFrameWalker(std::string_view file) : file_(file) {
    audioEnd_ = LocateTrailingTags(file).audioEnd;
    file_ = file.substr(0, audioEnd_);  // nothing behind the audio is ever read as a frame
    audioStart_ = std::min(SkipId3v2(file), audioEnd_);
    pos_ = audioStart_;
}

MpegFrameWalker::MpegFrameWalker(std::string_view audioHead, HeadOnly) : file_(audioHead), audioEnd_(audioHead.size()) {}

std::optional<MpegFrame> MpegFrameWalker::Next() {
    std::optional<MpegFrame> frame = NextFrame();
    if (frame && !firstChecked_) {
        firstChecked_ = true;
        if ((vbr_ = ReadVbrHeader(file_.substr(frame->offset, static_cast<std::size_t>(frame->size)), frame->header))) {
            tagFrame_ = frame;
            frame = NextFrame();
        }
    }
    return frame;
}

std::optional<MpegFrame> MpegFrameWalker::FrameAt(std::size_t offset, const MpegFrameHeader& header,
                                                  int freeFormatSize) const {
    int size = header.FrameSize();
    if (header.FreeFormat()) {
        if (freeFormatSize <= 0) return std::nullopt;
        size = freeFormatSize + (header.padding ? header.SlotSize() : 0);
    }
    if (size <= 4) return std::nullopt;
    return MpegFrame{offset, size, header.SamplesPerFrame(), header};
}

std::optional<MpegFrame> MpegFrameWalker::NextFrame() {
    if (inStream_) {
        const auto header = DecodeMpegFrameHeader(file_.substr(pos_, 4));
        if (header && header->SameStreamAs(*stream_)) {
            if (const auto frame = FrameAt(pos_, *header, freeFormatSize_)) {
                if (pos_ + static_cast<std::size_t>(frame->size) > audioEnd_) {
                    pos_ = audioEnd_;  // the end of the audio cuts this frame off
                    return std::nullopt;
                }
                pos_ += static_cast<std::size_t>(frame->size);
                stream_ = frame->header;
                return frame;
            }
        }
        inStream_ = false;
    }
    return Resync();
}

std::optional<MpegFrame> MpegFrameWalker::Resync() {
    for (std::size_t at = file_.find('\xFF', pos_); at != std::string_view::npos; at = file_.find('\xFF', at + 1)) {
        const auto header = DecodeMpegFrameHeader(file_.substr(at, 4));
        if (!header || (stream_ && !SameRun(*header, *stream_))) continue;
        const int freeSize = header->FreeFormat() ? FreeFormatSize(at, *header) : 0;
        const auto frame = FrameAt(at, *header, freeSize);
        if (!frame || !ProvesStream(*frame, freeSize)) continue;
        stream_ = header;
        freeFormatSize_ = freeSize;
        inStream_ = true;
        pos_ = at + static_cast<std::size_t>(frame->size);
        return frame;
    }
    pos_ = audioEnd_;
    return std::nullopt;
}

bool MpegFrameWalker::ProvesStream(const MpegFrame& first, int freeFormatSize) const {
    std::optional<MpegFrame> frame = first;
    for (int count = 1;; ++count) {
        const std::size_t end = frame->offset + static_cast<std::size_t>(frame->size);
        if (end > audioEnd_) return count > 1;  // cut off by the end after a whole frame: still a stream
        if (count == kFramesToSync || end == audioEnd_) return true;
        const auto header = DecodeMpegFrameHeader(file_.substr(end, 4));
        if (!header || !SameRun(*header, first.header)) return false;
        frame = FrameAt(end, *header, freeFormatSize);
        if (!frame) return false;
    }
}

int MpegFrameWalker::FreeFormatSize(std::size_t offset, const MpegFrameHeader& header) const {
    // The frame size is the distance to the next free-format header of the stream that starts a proven run;
    // nearer 0xFF bytes inside the frame's own data are passed over.
    const std::size_t padding = header.padding ? static_cast<std::size_t>(header.SlotSize()) : 0;
    const std::size_t shortest = 4 + (header.crc ? 2 : 0) + static_cast<std::size_t>(header.SideInfoSize());
    int tries = 0;
    for (std::size_t at = file_.find('\xFF', offset + shortest);
         at != std::string_view::npos && at - offset <= kMaxFreeFormatFrame && tries < kFreeFormatTries;
         at = file_.find('\xFF', at + 1)) {
        const auto next = DecodeMpegFrameHeader(file_.substr(at, 4));
        if (!next || !next->FreeFormat() || !SameRun(*next, header) || at - offset <= padding) continue;
        ++tries;
        const int size = static_cast<int>(at - offset - padding);
        if (const auto frame = FrameAt(offset, header, size); frame && ProvesStream(*frame, size)) return size;
    }
    return 0;
}

namespace {

// The facts of a walk. `audioBytes`: the size of all the audio the walk starts in, when the walk covers only
// its head; the totals are then the encoder's summary, or extrapolated from the frames walked.
std::optional<MpegStreamFacts> Summarize(MpegFrameWalker& walker, std::optional<std::uint64_t> audioBytes) {
    std::optional<MpegFrame> first;
    MpegStreamFacts facts;
    std::uint64_t bytes = 0;
    std::size_t walkedEnd = 0;
    bool oneRate = true;
    while (const auto frame = walker.Next()) {
        if (!first) first = frame;
        oneRate = oneRate && frame->header.bitRateIndex == first->header.bitRateIndex;
        ++facts.totalFrames;
        facts.durationMs += frame->samples * 1000.0 / frame->header.frequency;
        bytes += static_cast<std::uint64_t>(frame->size);
        walkedEnd = frame->offset + static_cast<std::size_t>(frame->size);
    }
    const std::optional<MpegFrame>& tag = walker.TagFrame();
    const std::optional<MpegFrame>& shown = first ? first : tag;
    if (!shown) return std::nullopt;

    facts.header = shown->header;
    facts.firstFrameOffset = tag ? tag->offset : first->offset;
    facts.audioEnd = walker.AudioEnd();
    facts.vbr = walker.Vbr();
    facts.msPerFrame = shown->samples * 1000.0 / shown->header.frequency;
    facts.variableBitRate = !oneRate;
    if (audioBytes && facts.totalFrames > 0 && *audioBytes > walkedEnd) {
        facts.variableBitRate = !oneRate || (facts.vbr && facts.vbr->kind != VbrHeader::Kind::Info);
        if (facts.vbr && facts.vbr->frames && *facts.vbr->frames >= facts.totalFrames) {
            facts.totalFrames = *facts.vbr->frames;
        } else {
            const double average = static_cast<double>(bytes) / facts.totalFrames;
            facts.totalFrames += static_cast<std::uint32_t>(
                std::min(static_cast<double>(*audioBytes - walkedEnd) / average, static_cast<double>(UINT32_MAX - facts.totalFrames)));
        }
        facts.durationMs = facts.totalFrames * facts.msPerFrame;
        bytes = *audioBytes - facts.firstFrameOffset;
        oneRate = !facts.variableBitRate;
    }
    if (facts.totalFrames > 0 && (!oneRate || facts.header.FreeFormat())) {
        // Like other players, the summary frame's bytes count towards the average though it holds no audio.
        if (tag && !audioBytes) bytes += static_cast<std::uint64_t>(tag->size);
        // A summary can claim far fewer frames than the file holds: the average stays within an int.
        facts.bitRate = static_cast<int>(
            std::lround(std::min(static_cast<double>(bytes) * 8000.0 / facts.durationMs, double{INT32_MAX})));
    } else if (facts.header.FreeFormat()) {
        const int padding = shown->header.padding ? shown->header.SlotSize() : 0;
        facts.bitRate = FreeFormatBitRate(facts.header, shown->size - padding);
    } else {
        facts.bitRate = facts.header.bitRate;
    }
    return facts;
}

}  // namespace

std::optional<MpegStreamFacts> ScanMpegAudio(std::string_view file) {
    MpegFrameWalker walker(file);
    return Summarize(walker, std::nullopt);
}

std::optional<MpegStreamFacts> ReadMpegStreamFacts(FileSystem& fs, const std::string& path) {
    const long long size = fs.FileSize(path);
    if (size < 0) return std::nullopt;
    const auto read = [&](long long from, std::size_t bytes) -> std::optional<std::string> {
        FileRead part = fs.ReadFilePart(path, from, bytes);
        if (part.status != FileRead::Status::Ok) return std::nullopt;
        return std::move(part.bytes);
    };
    if (size <= static_cast<long long>(kStreamHeadBytes + kStreamTailBytes)) {
        const auto whole = read(0, static_cast<std::size_t>(size));
        return whole ? ScanMpegAudio(*whole) : std::nullopt;
    }
    // The ID3v2 tags in front (cover pictures can be large), each known from its header alone.
    long long start = 0;
    for (int tags = 0; tags < 16 && start < size; ++tags) {
        const auto header = read(start, 10);
        if (!header || Id3v2Size(*header) == 0) break;
        start += static_cast<long long>(Id3v2Size(*header));
    }
    const auto tail = read(size - static_cast<long long>(kStreamTailBytes), kStreamTailBytes);
    if (!tail || start >= size) return std::nullopt;
    const long long audioEnd = size - static_cast<long long>(kStreamTailBytes) +
                               static_cast<long long>(LocateTrailingTags(*tail).audioEnd);
    if (audioEnd <= start) return std::nullopt;
    const auto head = read(start, static_cast<std::size_t>(std::min<long long>(kStreamHeadBytes, audioEnd - start)));
    if (!head) return std::nullopt;
    MpegFrameWalker walker(*head, MpegFrameWalker::HeadOnly{});
    auto facts = Summarize(walker, static_cast<std::uint64_t>(audioEnd - start));
    if (facts) {
        facts->firstFrameOffset += static_cast<std::size_t>(start);
        facts->audioEnd = static_cast<std::size_t>(audioEnd);
    }
    return facts;
}

}  // namespace lumora
