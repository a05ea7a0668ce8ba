#include "mediainfo/MpegFrameHeader.h"

namespace lumora {
namespace {

// Kilobits per second by bit rate index; index 0 is free format, 15 is reserved.
constexpr int kBitRates[5][15] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},  // MPEG-1 layer I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},     // MPEG-1 layer II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},      // MPEG-1 layer III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},     // MPEG-2 and 2.5 layer I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},          // MPEG-2 and 2.5 layers II, III
};

constexpr int kFrequencies[3][3] = {
    {44100, 48000, 32000},  // MPEG-1
    {22050, 24000, 16000},  // MPEG-2
    {11025, 12000, 8000},   // MPEG-2.5
};

int BitRateRow(MpegVersion version, int layer) {
    if (version == MpegVersion::Mpeg1) return layer - 1;
    return layer == 1 ? 3 : 4;
}

}  // namespace

int MpegFrameHeader::SamplesPerFrame() const {
    if (layer == 1) return 384;
    if (layer == 2 || version == MpegVersion::Mpeg1) return 1152;
    return 576;
}

int MpegFrameHeader::FrameSize() const {
    if (FreeFormat() || frequency <= 0) return 0;
    const int pad = padding ? 1 : 0;
    // Layer I counts in four-byte slots, so its quotient is taken before the slots are multiplied out.
    if (layer == 1) return (12 * bitRate / frequency + pad) * 4;
    return SamplesPerFrame() / 8 * bitRate / frequency + pad;
}

int MpegFrameHeader::SideInfoSize() const {
    const bool mono = mode == ChannelMode::Mono;
    if (version == MpegVersion::Mpeg1) return mono ? 17 : 32;
    return mono ? 9 : 17;
}

std::optional<MpegFrameHeader> DecodeMpegFrameHeader(std::string_view bytes) {
    if (bytes.size() < 4) return std::nullopt;
    const std::uint32_t word = static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[0])) << 24 |
                               static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[1])) << 16 |
                               static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[2])) << 8 |
                               static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[3]));
    if ((word & 0xFFE00000u) != 0xFFE00000u) return std::nullopt;
    const unsigned versionBits = (word >> 19) & 3;
    const unsigned layerBits = (word >> 17) & 3;
    const unsigned bitRateIndex = (word >> 12) & 15;
    const unsigned frequencyIndex = (word >> 10) & 3;
    const unsigned emphasis = word & 3;
    if (versionBits == 1 || layerBits == 0 || bitRateIndex == 15 || frequencyIndex == 3 || emphasis == 2) {
        return std::nullopt;
    }

    MpegFrameHeader h;
    h.version = versionBits == 3 ? MpegVersion::Mpeg1 : versionBits == 2 ? MpegVersion::Mpeg2 : MpegVersion::Mpeg25;
    h.layer = static_cast<int>(4 - layerBits);
    h.crc = ((word >> 16) & 1) == 0;
    h.bitRateIndex = static_cast<int>(bitRateIndex);
    h.bitRate = kBitRates[BitRateRow(h.version, h.layer)][bitRateIndex] * 1000;
    h.frequency = kFrequencies[static_cast<int>(h.version)][frequencyIndex];
    h.padding = ((word >> 9) & 1) != 0;
    h.privateBit = ((word >> 8) & 1) != 0;
    h.mode = static_cast<ChannelMode>((word >> 6) & 3);
    h.modeExtension = static_cast<int>((word >> 4) & 3);
    h.copyright = ((word >> 3) & 1) != 0;
    h.original = ((word >> 2) & 1) != 0;
    h.emphasis = static_cast<int>(emphasis);
    return h;
}

int FreeFormatBitRate(const MpegFrameHeader& header, int frameSize) {
    if (header.frequency <= 0 || frameSize <= 0) return 0;
    const long long bits = static_cast<long long>(frameSize) * 8;
    return static_cast<int>(bits * header.frequency / header.SamplesPerFrame());
}

}  // namespace lumora
