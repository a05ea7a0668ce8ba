#include <gtest/gtest.h>

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

// Frame sizes as they occur in the reference streams of the corpus.
TEST(MpegFrameHeader, FrameSizeCountsLayerOneInFourByteSlots) {
    const struct {
        HeaderBits bits;
        int size;
    } cases[] = {
        {{.layer = 3, .bitRate = 12, .frequency = 2}, 576},                // layer I 384k 32 kHz
        {{.layer = 3, .bitRate = 12, .frequency = 0, .padding = 1}, 420},  // its padding slot is 4 bytes
        {{.layer = 3, .bitRate = 7, .frequency = 1}, 224},
        {{.layer = 2, .bitRate = 10, .frequency = 2}, 864},
        {{.layer = 2, .bitRate = 14, .frequency = 1}, 1152},
        {{.version = 2, .layer = 2, .bitRate = 14, .frequency = 2}, 1440},
        {{.bitRate = 9}, 417},
        {{.bitRate = 9, .padding = 1}, 418},
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
    EXPECT_EQ(FreeFormatBitRate(Decode({.bitRate = 0}), 0), 0);
}

}  // namespace
}  // namespace lumora
