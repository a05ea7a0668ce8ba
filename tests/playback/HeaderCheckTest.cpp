#include "playback/HeaderCheck.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

std::string Le(unsigned v, int bytes) {
    std::string s;
    for (int i = 0; i < bytes; ++i) s += static_cast<char>(v >> (8 * i) & 0xFF);
    return s;
}

std::string Wave(unsigned tag, unsigned channels, unsigned rate, unsigned align) {
    const std::string fmt = Le(tag, 2) + Le(channels, 2) + Le(rate, 4) + Le(rate * align, 4) + Le(align, 2) + Le(16, 2);
    return "RIFF" + Le(36, 4) + "WAVE" + "LIST" + Le(3, 4) + "abc" + '\0' + "fmt " + Le(16, 4) + fmt + "data" + Le(0, 4);
}

std::string Icon(unsigned count, unsigned bytes, unsigned offset) {
    std::string s = Le(0, 2) + Le(1, 2) + Le(count, 2);
    for (unsigned i = 0; i < count; ++i) s += std::string(4, '\x10') + Le(1, 2) + Le(32, 2) + Le(bytes, 4) + Le(offset, 4);
    return s + std::string(64, '\0');
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
        {"a.wav", "RIFF" + Le(36, 4) + "WAVE" + "JUNK" + Le(0xFFFFFFF7, 4) + std::string(16, '\0'), false},  // 4 GB block
        {"a.wav", "ID3 an MP3 by another name", true},
        {"a.ico", Icon(1, 40, 22), true},
        {"a.cur", Icon(2, 50, 60), false},  // its images end past the file
        {"a.ico", Icon(0xFFFF, 40, 22).substr(0, 80), false},
        {"a.mp3", std::string(10, '\0'), true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(HeadLooksSound(c.name, c.head, static_cast<long long>(c.head.size())), c.sound) << c.name << " #"
                                                                                                    << (&c - cases);
    }
}

// An ".mp3" must hold frames our walker confirms; other names are judged by their head alone.
TEST(HeaderCheck, MpegNamesNeedFrames) {
    test::FakeFileSystem fs;
    fs.files = {{"a.mp3", test::MpegFrames(8)}, {"b.mp3", std::string(4096, '\xFF')}, {"c.mp3", "ID3" + std::string(60, '\0')},
                {"d.wav", Wave(0x55, 9, 1, 0)}, {"e.avi", std::string(4096, '\xFF')}};
    std::string sound;
    for (const auto& [name, bytes] : fs.files) sound += FileHeadLooksSound(fs, name) ? name[0] : '-';
    EXPECT_EQ(sound, "a---e");
}

}  // namespace
}  // namespace lumora
