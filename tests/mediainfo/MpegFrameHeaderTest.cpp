#include <gtest/gtest.h>

#include <vector>

#include "mediainfo/MpegFrameHeader.h"
#include "mediainfo/TestMedia.h"

namespace lumora {
namespace {

using test::HeaderBits;
using test::HeaderBytes;

MpegFrameHeader Decode(const HeaderBits& bits) {
    const auto header = DecodeMpegFrameHeader(HeaderBytes(bits));
    EXPECT_TRUE(header.has_value());
    return header.value_or(MpegFrameHeader{});
}

TEST(MpegFrameHeader, BitRateTableOfEveryVersionAndLayer) {
    const std::vector<int> mpeg2Layer1{32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
    const std::vector<int> mpeg2Layers23{8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    const struct {
        unsigned version, layer;
        std::vector<int> kbps;  // indexes 1 to 14
    } rows[] = {
        {3, 3, {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448}},
        {3, 2, {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384}},
        {3, 1, {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
        {2, 3, mpeg2Layer1},
        {2, 2, mpeg2Layers23},
        {2, 1, mpeg2Layers23},
        {0, 3, mpeg2Layer1},  // MPEG-2.5 shares MPEG-2's table
        {0, 2, mpeg2Layers23},
        {0, 1, mpeg2Layers23},
    };
    for (const auto& row : rows) {
        for (unsigned index = 1; index <= 14; ++index) {
            const auto header = Decode({.version = row.version, .layer = row.layer, .bitRate = index});
            EXPECT_EQ(header.bitRate, row.kbps[index - 1] * 1000) << row.version << "/" << row.layer << "/" << index;
            EXPECT_EQ(header.layer, static_cast<int>(4 - row.layer));
        }
        const auto free = Decode({.version = row.version, .layer = row.layer, .bitRate = 0});
        EXPECT_TRUE(free.FreeFormat());
        EXPECT_EQ(free.FrameSize(), 0);
    }
}

TEST(MpegFrameHeader, FrequencyAndSamplesPerFrameByVersion) {
    const struct {
        unsigned version;
        MpegVersion expected;
        int hertz[3];
        int samples[3];  // layers I, II, III
    } rows[] = {
        {3, MpegVersion::Mpeg1, {44100, 48000, 32000}, {384, 1152, 1152}},
        {2, MpegVersion::Mpeg2, {22050, 24000, 16000}, {384, 1152, 576}},
        {0, MpegVersion::Mpeg25, {11025, 12000, 8000}, {384, 1152, 576}},
    };
    for (const auto& row : rows) {
        for (unsigned index = 0; index < 3; ++index) {
            const auto header = Decode({.version = row.version, .frequency = index});
            EXPECT_EQ(header.version, row.expected);
            EXPECT_EQ(header.frequency, row.hertz[index]);
        }
        for (unsigned layer = 1; layer <= 3; ++layer) {
            EXPECT_EQ(Decode({.version = row.version, .layer = 4 - layer}).SamplesPerFrame(), row.samples[layer - 1]);
        }
    }
}

// Frame sizes as they occur in the reference streams of the corpus.
TEST(MpegFrameHeader, FrameSizeCountsLayerOneInFourByteSlots) {
    const struct {
        HeaderBits bits;
        int size;
    } cases[] = {
        {{.layer = 3, .bitRate = 12, .frequency = 2}, 576},                // layer I 384k 32 kHz
        {{.layer = 3, .bitRate = 12, .frequency = 0}, 416},                // layer I 384k 44.1 kHz
        {{.layer = 3, .bitRate = 12, .frequency = 0, .padding = 1}, 420},  // its padding slot is 4 bytes
        {{.layer = 3, .bitRate = 1, .frequency = 2}, 48},
        {{.layer = 3, .bitRate = 7, .frequency = 1}, 224},
        {{.layer = 2, .bitRate = 10, .frequency = 2}, 864},
        {{.layer = 2, .bitRate = 14, .frequency = 1}, 1152},
        {{.version = 2, .layer = 2, .bitRate = 14, .frequency = 2}, 1440},
        {{.version = 2, .layer = 2, .bitRate = 12, .frequency = 1}, 768},
        {{.bitRate = 9}, 417},
        {{.bitRate = 9, .padding = 1}, 418},
        {{.bitRate = 5, .frequency = 1}, 192},
        {{.version = 2, .bitRate = 4}, 104},                 // MPEG-2 layer III 32k 22.05 kHz: 72 bytes a kbit
        {{.version = 0, .bitRate = 1, .frequency = 2}, 72},  // the smallest frame there is
    };
    for (const auto& c : cases) EXPECT_EQ(Decode(c.bits).FrameSize(), c.size) << c.size;
}

TEST(MpegFrameHeader, ReservedValuesMissingSyncAndShortInputAreNoHeader) {
    const HeaderBits reserved[] = {{.version = 1}, {.layer = 0}, {.bitRate = 15}, {.frequency = 3}, {.emphasis = 2}};
    for (const auto& bits : reserved) EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes(bits)));
    EXPECT_TRUE(DecodeMpegFrameHeader(HeaderBytes({.emphasis = 1})));
    std::string noSync = HeaderBytes({});
    noSync[1] = static_cast<char>(noSync[1] & 0xDF);
    EXPECT_FALSE(DecodeMpegFrameHeader(noSync));
    EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes({}).substr(0, 3)));
    EXPECT_FALSE(DecodeMpegFrameHeader(""));
}

TEST(MpegFrameHeader, FlagsAndMode) {
    const auto set = Decode({.protection = 0, .padding = 1, .mode = 3, .copyright = 1, .original = 1, .emphasis = 1});
    EXPECT_TRUE(set.crc && set.padding && set.copyright && set.original);
    EXPECT_EQ(set.mode, ChannelMode::Mono);
    const auto clear = Decode({.mode = 1});
    EXPECT_FALSE(clear.crc || clear.padding || clear.copyright || clear.original);
    EXPECT_EQ(clear.mode, ChannelMode::JointStereo);
    EXPECT_EQ(Decode({.mode = 2}).mode, ChannelMode::DualChannel);
}

TEST(MpegFrameHeader, FreeFormatBitRateFromTheFrameSize) {
    // The corpus's free-format streams: 864-byte layer II frames at 32 kHz, 391-byte layer III ones at 44.1.
    EXPECT_EQ(FreeFormatBitRate(Decode({.layer = 2, .bitRate = 0, .frequency = 2}), 864), 192000);
    EXPECT_EQ(FreeFormatBitRate(Decode({.bitRate = 0}), 391), 119743);
    EXPECT_EQ(FreeFormatBitRate(Decode({.layer = 3, .bitRate = 0, .frequency = 2}), 576), 384000);
}

}  // namespace
}  // namespace lumora
