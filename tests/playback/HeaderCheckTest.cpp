#include "playback/HeaderCheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

std::string Le(unsigned long long v, int bytes) {
    std::string s;
    for (int i = 0; i < bytes; ++i) s += static_cast<char>(v >> (8 * i) & 0xFF);
    return s;
}

std::string Wave(unsigned tag, unsigned channels, unsigned rate, unsigned align) {
    const std::string fmt = Le(tag, 2) + Le(channels, 2) + Le(rate, 4) + Le(rate * align, 4) + Le(align, 2) + Le(16, 2);
    return "RIFF" + Le(36, 4) + "WAVE" + "LIST" + Le(3, 4) + "abc" + '\0' + "fmt " + Le(16, 4) + fmt + "data" +
           Le(0, 4);
}

std::string Icon(unsigned count, unsigned bytes, unsigned offset) {
    std::string s = Le(0, 2) + Le(1, 2) + Le(count, 2);
    for (unsigned i = 0; i < count; ++i)
        s += std::string(4, '\x10') + Le(1, 2) + Le(32, 2) + Le(bytes, 4) + Le(offset, 4);
    return s + std::string(64, '\0');
}

std::string Be(unsigned v, int bytes) {
    std::string s = Le(v, bytes);
    return {s.rbegin(), s.rend()};
}

std::string Avi(unsigned streams, unsigned width, unsigned height) {
    const std::string avih = Le(66666, 4) + std::string(20, '\0') + Le(streams, 4) + Le(0, 4) + Le(width, 4) +
                             Le(height, 4) + std::string(16, '\0');
    return "RIFF" + Le(400, 4) + "AVI LIST" + Le(4 + 8 + 56, 4) + "hdrlavih" + Le(56, 4) + avih;
}

// An AIFF of 8000 Hz unless `exponent` says otherwise, its sound data `offset` bytes into its block.
std::string Aiff(unsigned channels, unsigned bits, unsigned exponent = 0x400B, unsigned offset = 0) {
    const std::string comm = "COMM" + Be(18, 4) + Be(channels, 2) + Be(800, 4) + Be(bits, 2) + Be(exponent, 2) +
                             Be(0xFA000000, 4) + Be(0, 4);
    return "FORM" + Be(846, 4) + "AIFF" + comm + "SSND" + Be(808, 4) + Be(offset, 4) + Be(0, 4) +
           std::string(800, '\0');
}

// An AIFF-C of the given coding.
std::string Aifc(const std::string& coding) {
    const std::string comm = "COMM" + Be(24, 4) + Be(1, 2) + Be(800, 4) + Be(8, 2) + Be(0x400B, 2) + Be(0xFA000000, 4) +
                             Be(0, 4) + coding + std::string(2, '\0');
    return "FORM" + Be(852, 4) + "AIFC" + comm + "SSND" + Be(808, 4) + Be(0, 8) + std::string(800, '\0');
}

// A video CD file whose sector block claims `sectorBytes`, holding 16.
std::string Cdxa(unsigned sectorBytes) {
    return "RIFF" + Le(60, 4) + "CDXA" + "fmt " + Le(16, 4) + std::string(16, '\0') + "data" + Le(sectorBytes, 4) +
           std::string(16, '\xFF');
}

// A GIF of one image with no colour tables, after an extension.
std::string Gif(unsigned width, unsigned height, char codeSize = 2) {
    const std::string screen = Le(width, 2) + Le(height, 2) + std::string(3, '\0');
    return "GIF89a" + screen + "!\xF9\x04" + std::string(4, '\0') + '\0' + "," + Le(0, 4) + Le(width, 2) +
           Le(height, 2) + '\0' + codeSize + "\x02\x4C\x01" + '\0' + ";";
}

// Empty ID3v2 tags, one after another.
std::string Tags(int count) {
    std::string s;
    for (int i = 0; i < count; ++i) s += std::string("ID3\3\0\0", 6) + std::string(4, '\0');
    return s;
}

std::string Real(unsigned ownSize, unsigned headers) { return ".RMF" + Be(ownSize, 4) + Le(0, 6) + Be(headers, 4); }

// A header object holding file properties, then a data object.
std::string Asf(unsigned objects, unsigned long long packets, unsigned long long dataSize) {
    const std::string props = std::string("\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65", 16) +
                              Le(104, 8) + std::string(32, '\0') + Le(packets, 8) + std::string(40, '\0');
    return std::string("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16) +
           Le(30 + props.size(), 8) + Le(objects, 4) + "\x01\x02" + props + std::string(16, 'D') + Le(dataSize, 8) +
           std::string(26, '\0');
}

// Headers that crash the system's decoders never reach them; real ones and formats we do not check do.
TEST(HeaderCheck, RefusesOnlyHeadersNoRealFileHas) {
    const struct {
        const char* name;
        std::string head;
        bool sound;
    } cases[] = {
        {"a.wav", Wave(1, 2, 44100, 4), true},  // a block before "fmt " is stepped over
        {"a.WAV", Wave(0xFFFE, 12, 48000, 24), true},
        {"a.wav", Wave(0x55, 9, 1, 0), false},
        {"a.wav", Wave(1, 0, 44100, 4), false},
        {"a.wav", Wave(1, 2, 44100, 0), false},
        {"a.wav", "RIFF" + Le(4, 4) + "WAVE", false},  // no format block
        {"a.wav", "RIFF" + Le(36, 4) + "WAVE" + "JUNK" + Le(0xFFFFFFF7, 4) + std::string(16, '\0'),
         false},  // 4 GB block
        {"a.wav", "ID3 an MP3 by another name", true},
        {"a.ico", Icon(1, 40, 22), true},
        {"a.cur", Icon(2, 50, 60), false},  // its images end past the file
        {"a.ico", Icon(0xFFFF, 40, 22).substr(0, 80), false},
        {"a.mp3", std::string(10, '\0'), true},
        {"a.mp3", Tags(2) + std::string(400, '\xFF'), true},  // a tag twice, as some taggers leave it
        {"a.mp2", Tags(3000), false},
        {"a.avi", Avi(2, 320, 240), true},
        {"a.avi", Avi(1, 0, 0), true},  // sound alone
        {"a.avi", Avi(0, 320, 240), false},
        {"a.avi", Avi(0xFFFFFFFF, 320, 240), false},
        {"a.avi", Avi(1, 0x7FFFFFFF, 0x7FFFFFFF), false},
        {"a.avi", Avi(1, 8, 8) + "LIST" + Le(4 + 8, 4) + "movi00db" + Le(0, 4), true},
        {"a.avi", Avi(1, 8, 8) + "LIST" + Le(0xFFFFFFFF, 4) + "movi", false},  // frames past the file's end
        {"a.avi", "RIFF" + Le(4, 4) + "AVI LISTLISTLISTLIST", false},
        {"a.avi", "RIFF" + Le(4, 4) + "WAVEfmt ", true},  // another content: the system decides
        {"a.aif", Aiff(2, 16), true},
        {"a.aiff", Aiff(0xFFFF, 16), false},
        {"a.aif", Aiff(1, 0), false},
        {"a.aif", Aiff(1, 8, 0x7FFF), false},  // infinite rate
        {"a.aif", Aiff(1, 8, 0), false},
        {"a.aif", Aiff(1, 8, 0x400B, 0xFFFFFFFF), false},
        {"a.aif", "FORM" + Be(4, 4) + "AIFF", false},  // no format block
        {"a.aif", Aifc("sowt"), true},
        {"a.aifc", Aifc("ZZZZ"), false},  // a coding that does not exist
        {"a.dat", Cdxa(16), true},
        {"a.dat", Cdxa(0xFFFFFFFF), false},
        {"a.gif", Gif(64, 48), true},
        {"a.gif", Gif(0xFFFF, 0xFFFF), false},
        {"a.gif", Gif(64, 48, 0), false},
        {"a.gif", Gif(64, 48).substr(0, 20) + std::string(5000, '\x04'), false},  // blocks without an end
        {"a.rm", Real(18, 5), true},
        {"a.rm", Real(0xFFFFFFFF, 0xFFFFFFFF), false},
        {"a.ra", ".ra\xFD" + Be(4, 2) + std::string(100, '\0'), true},
        {"a.ra", ".ra\xFD" + Be(0x1234, 2) + std::string(100, '\0'), false},
        {"a.wma", Asf(1, 1, 50), true},
        {"a.asf", Asf(0, 1, 50), false},
        {"a.wma", Asf(1, ~0ULL, 50), false},  // more packets than bytes
        {"a.wmv", Asf(1, 1, 1ULL << 63), false},
        {"a.wma", Asf(1, 1, 50).substr(0, 40), false},
        {"a.mov", Be(16, 4) + "ftyp" + Le(0, 8) + Be(0, 4) + "mdat", true},  // the last atom runs to the end
        {"a.mov", Be(0xFFFFFFFF, 4) + "moov" + Le(0, 8), false},
        {"a.qt", Be(1, 4) + "mdat" + Be(0xFFFFFFFF, 4) + Be(0xFFFFFFFF, 4), false},
        {"a.qt", Be(0, 4) + "moov" + Be(8, 4) + "trak" + "trak" + "trak", false},  // an atom past its container
    };
    for (const auto& c : cases) {
        EXPECT_EQ(HeadLooksSound(c.name, c.head, static_cast<long long>(c.head.size())), c.sound)
            << c.name << " #" << (&c - cases);
    }
    // Real files: a blocks' walk cut by the end of the head leaves the rest to the system.
    EXPECT_TRUE(HeadLooksSound("a.gif", Gif(64, 48).substr(0, 20) + std::string(5000, '\x04'), 1 << 20));
    int avis = 0;
    for (const auto& e : std::filesystem::directory_iterator(LUMORA_CORPUS_DIR "/video")) {
        if (e.path().extension() != ".avi") continue;
        std::ifstream in(e.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(in), {});
        EXPECT_TRUE(HeadLooksSound("a.avi", bytes, static_cast<long long>(bytes.size()))) << e.path();
        ++avis;
    }
    EXPECT_EQ(avis, 4) << "the corpus's AVI files";
    for (const char* made : {"made.wma", "made.wmv", "made.mov"}) {
        std::ifstream in(std::string(LUMORA_MPEG_FIXTURES_DIR "/") + made, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(in), {});
        EXPECT_TRUE(bytes.size() > 1000 && HeadLooksSound(made, bytes, static_cast<long long>(bytes.size()))) << made;
    }
}

// An ".mp3" must hold frames our walker confirms; other names are judged by their head alone.
TEST(HeaderCheck, MpegNamesNeedFrames) {
    test::FakeFileSystem fs;
    fs.files = {{"a.mp3", test::MpegFrames(8)},
                {"b.mp3", std::string(4096, '\xFF')},
                {"c.mp3", "ID3" + std::string(60, '\0')},
                {"d.wav", Wave(0x55, 9, 1, 0)},
                {"e.avi", std::string(4096, '\xFF')}};
    std::string sound;
    for (const auto& [name, bytes] : fs.files) sound += FileHeadLooksSound(fs, name) ? name[0] : '-';
    EXPECT_EQ(sound, "a---e");
}

}  // namespace
}  // namespace lumora
