#pragma once
// The four-byte header that starts every MPEG audio frame (MPEG-1, MPEG-2 and the MPEG-2.5 extension;
// layers I, II and III). Everything the stream panel shows about a file comes from these bits.
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumora {

enum class MpegVersion : std::uint8_t { Mpeg1, Mpeg2, Mpeg25 };

// The header's two mode bits, in their coded order; the panel shows this number.
enum class ChannelMode : std::uint8_t { Stereo = 0, JointStereo = 1, DualChannel = 2, Mono = 3 };

struct MpegFrameHeader {
    MpegVersion version = MpegVersion::Mpeg1;
    int layer = 3;         // 1, 2 or 3
    bool crc = false;      // a CRC-16 follows the header (protection bit clear)
    int bitRateIndex = 0;  // 0 is free format: the bit rate is whatever the frame size gives
    int bitRate = 0;       // bits per second; 0 in free format
    int frequency = 0;     // samples per second
    bool padding = false;
    bool privateBit = false;
    ChannelMode mode = ChannelMode::Stereo;
    int modeExtension = 0;
    bool copyright = false;
    bool original = false;
    int emphasis = 0;

    bool FreeFormat() const { return bitRateIndex == 0; }
    int SamplesPerFrame() const;
    // Bytes in one padding slot: 4 for layer I, 1 otherwise.
    int SlotSize() const { return layer == 1 ? 4 : 1; }
    // Whole frame in bytes, header included; 0 in free format, where only the distance to the next
    // header tells.
    int FrameSize() const;
    // Bytes of layer III side information that follow the header (and its CRC).
    int SideInfoSize() const;
    // Two headers belong to one stream when version, layer and the free-format choice agree; the bit rate,
    // mode and CRC flag may change from frame to frame.
    bool SameStreamAs(const MpegFrameHeader& other) const {
        return version == other.version && layer == other.layer && FreeFormat() == other.FreeFormat();
    }
};

// Decodes a header from the first four bytes of `bytes`. Empty when there are fewer, when the sync bits are
// missing or when any field holds a reserved value (version 01, layer 00, bit rate index 15, frequency
// index 3, emphasis 10): random data then rarely passes for a frame.
std::optional<MpegFrameHeader> DecodeMpegFrameHeader(std::string_view bytes);

// Bit rate in bits per second that a free-format frame of `frameSize` bytes (padding slot excluded)
// stands for.
int FreeFormatBitRate(const MpegFrameHeader& header, int frameSize);

}  // namespace lumora
