#pragma once
// Finds the MPEG audio frames of a file and the stream facts the stream panel shows. Decoder 1 plays the
// frames this walker yields, so what the panel says and what is heard come from the same parse.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/MpegFrameHeader.h"

namespace lumora {


struct MpegFrame {
    std::size_t offset = 0;  // of the header, in the file
    int size = 0;            // bytes, header included
    int samples = 0;         // per channel
    MpegFrameHeader header;
};

// The encoder's summary in the first frame: LAME and Xing write "Xing" (variable rate) or "Info" (constant
// rate), Fraunhofer writes "VBRI". The frame that holds it carries no audio.
struct VbrHeader {
    enum class Kind { Xing, Info, Vbri };
    Kind kind = Kind::Xing;
    std::optional<std::uint32_t> frames;  // audio frames, the header's own frame not counted
    std::optional<std::uint32_t> bytes;
};

// How many headers in a row, each where the one before it ends, prove a stream. Random data passes for one
// header every few thousand bytes, for four in a row practically never.
inline constexpr int kFramesToSync = 4;

// Walks the audio frames of a whole file in order. Leading ID3v2 tags are skipped, and so is junk before,
// between and after the frames: where a frame does not follow the last one, the walker looks for the next
// place where kFramesToSync headers of the same stream follow each other (fewer only when they run exactly
// to the end of the audio). Trailing tags (LocateTrailingTags) are never taken for audio, and a frame cut
// off by the end of the audio ends the walk.
class MpegFrameWalker {
public:
    explicit MpegFrameWalker(std::string_view file);
    // Walks the first bytes of a longer file's audio (ID3v2 tags already passed): no tags are looked for, and
    // the walk ends with the last whole frame of the head.
    struct HeadOnly {};
    MpegFrameWalker(std::string_view audioHead, HeadOnly);

    // The next audio frame; empty at the end. The encoder's Xing/Info/VBRI frame is not returned.
    std::optional<MpegFrame> Next();

    // The Xing/Info/VBRI frame and what it says, once the walk has passed the first frame.
    const std::optional<MpegFrame>& TagFrame() const { return tagFrame_; }
    const std::optional<VbrHeader>& Vbr() const { return vbr_; }
    std::size_t AudioStart() const { return audioStart_; }
    std::size_t AudioEnd() const { return audioEnd_; }

private:
    std::optional<MpegFrame> NextFrame();
    std::optional<MpegFrame> Resync();
    std::optional<MpegFrame> FrameAt(std::size_t offset, const MpegFrameHeader& header, int freeFormatSize) const;
    bool ProvesStream(const MpegFrame& first, int freeFormatSize) const;
    int FreeFormatSize(std::size_t offset, const MpegFrameHeader& header) const;

    std::string_view file_;
    std::size_t audioStart_ = 0;
    std::size_t audioEnd_ = 0;
    std::size_t pos_ = 0;                    // where the next frame is expected or looked for
    bool inStream_ = false;                  // pos_ is where the last frame ended
    std::optional<MpegFrameHeader> stream_;  // the last frame's header: the next must belong to its stream
    int freeFormatSize_ = 0;                 // free format: frame size without padding, from the first frames
    bool firstChecked_ = false;              // the first frame has been looked at for an encoder summary
    std::optional<MpegFrame> tagFrame_;
    std::optional<VbrHeader> vbr_;
};

// What decoder 1 reports about a file: the header of the first audio frame (of the encoder's summary frame
// when the file holds nothing else) and the totals of a full walk.
struct MpegStreamFacts {
    MpegFrameHeader header;
    std::uint32_t totalFrames = 0;     // audio frames actually in the file, whatever a summary frame claims
    int bitRate = 0;                   // bits per second: the header's when every frame has it, else the average
    bool variableBitRate = false;      // the frames' bit rates differ
    double msPerFrame = 0;             // playing time of one frame of the first kind
    double durationMs = 0;             // of all audio frames
    std::size_t firstFrameOffset = 0;  // the first frame of the stream (a summary frame included)
    std::size_t audioEnd = 0;
    std::optional<VbrHeader> vbr;
};

// Empty when the bytes hold no MPEG audio stream.
std::optional<MpegStreamFacts> ScanMpegAudio(std::string_view file);

class FileSystem;

// The facts of a file, reading a few hundred kilobytes at most however large it is: a small file is scanned
// whole; of a large one the head of its audio is walked and the totals come from the encoder's summary
// frame, or from the frames walked and the audio's size. Empty when unreadable or no MPEG audio.
std::optional<MpegStreamFacts> ReadMpegStreamFacts(FileSystem& fs, const std::string& path);

// The whole size of the ID3v2 tag whose 10-byte header starts `h` (header, a 28-bit size in four 7-bit bytes,
// and the footer of version 4); 0 when `h` starts no tag.
std::size_t Id3v2Size(std::string_view h);

}  // namespace lumora
