#pragma once
// Test media for the media information tests: the shared corpus of real-world files and the files the build
// makes with lame and ffmpeg. A test that needs them fails when they are missing.
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace lumora::test {

#ifdef LUMORA_CORPUS_DIR
inline const std::string kCorpusDir = LUMORA_CORPUS_DIR;
#else
inline const std::string kCorpusDir;
#endif
#ifdef LUMORA_MPEG_FIXTURES_DIR
inline const std::string kMpegFixturesDir = LUMORA_MPEG_FIXTURES_DIR;
#else
inline const std::string kMpegFixturesDir;
#endif

inline std::optional<std::string> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return in ? std::optional(std::string(std::istreambuf_iterator<char>(in), {})) : std::nullopt;
}

}  // namespace lumora::test

namespace lumora::test {

// The fields of an MPEG audio frame header as coded. Defaults: MPEG-1 layer III, 128 kbit/s, 44.1 kHz,
// stereo, no CRC.
struct HeaderBits {
    unsigned version = 3, layer = 1;  // version 3 MPEG-1, 2 MPEG-2, 0 MPEG-2.5; layer 3 I, 2 II, 1 III
    unsigned protection = 1;          // 0: a CRC follows the header
    unsigned bitRate = 9, frequency = 0, padding = 0, privateBit = 0, mode = 0, modeExtension = 0;  // bitRate 0: free
    unsigned copyright = 0, original = 0, emphasis = 0;
};

inline std::string HeaderBytes(const HeaderBits& b) {
    const unsigned word = 0xFFE00000u | b.version << 19 | b.layer << 17 | b.protection << 16 | b.bitRate << 12 |
                          b.frequency << 10 | b.padding << 9 | b.privateBit << 8 | b.mode << 6 | b.modeExtension << 4 |
                          b.copyright << 3 | b.original << 2 | b.emphasis;
    return {static_cast<char>(word >> 24), static_cast<char>(word >> 16 & 0xFF), static_cast<char>(word >> 8 & 0xFF),
            static_cast<char>(word & 0xFF)};
}

}  // namespace lumora::test
