#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <tuple>
#include <vector>

#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/StreamPanel.h"

namespace lumora {
namespace {

// The shared corpus of real-world files and the files the build makes with lame and ffmpeg (the build names both
// folders); a test that needs them fails when they are missing.
const std::string kCorpusDir = LUMORA_CORPUS_DIR, kMpegFixturesDir = LUMORA_MPEG_FIXTURES_DIR;

std::optional<std::string> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return in ? std::optional(std::string(std::istreambuf_iterator<char>(in), {})) : std::nullopt;
}

// The fields of an MPEG audio frame header that the tests vary, as coded. Defaults: MPEG-1 layer III,
// 128 kbit/s, 44.1 kHz, stereo, no CRC.
struct HeaderBits {
    unsigned version = 3, layer = 1;  // version 3 MPEG-1, 2 MPEG-2, 0 MPEG-2.5; layer 3 I, 2 II, 1 III
    unsigned bitRate = 9, frequency = 0, emphasis = 0;  // bitRate 0: free format
};

std::string HeaderBytes(const HeaderBits& b) {
    const unsigned word =
        0xFFE10000u | b.version << 19 | b.layer << 17 | b.bitRate << 12 | b.frequency << 10 | b.emphasis;
    return {static_cast<char>(word >> 24), static_cast<char>(word >> 16 & 0xFF), static_cast<char>(word >> 8 & 0xFF),
            static_cast<char>(word & 0xFF)};
}

// Frames with a zero body, so nothing inside them looks like a header.
std::string Frames(int count, const HeaderBits& bits = {}) {
    std::string frame = HeaderBytes(bits), out;
    frame.resize(static_cast<std::size_t>(DecodeMpegFrameHeader(frame)->FrameSize()), '\0');
    for (int i = 0; i < count; ++i) out += frame;
    return out;
}

// Random bytes pass for a header every few thousand bytes; a stream needs four in a row, or fewer that end
// exactly at the end of the audio (or with a frame the end cuts off). After a gap only the same stream is taken
// up again; tags at the end are never audio, even when they hold frames.
TEST(MpegFrameWalker, WhatCountsAsTheStreamAndWhatNoHeaderHolds) {
    const std::string junk(700, 'j');
    const std::string gap(333, '\x55');
    const std::string frame = Frames(1);
    const std::string lyrics = "[00:01]" + Frames(5);
    const std::string block = "LYRICSBEGININD0000211LYR" + std::to_string(10000 + lyrics.size()).substr(1) + lyrics;
    const std::string tag = "TAG" + std::string(125, '\0');
    const struct {
        std::string file;
        std::uint32_t frames;
    } cases[] = {
        {junk + Frames(4) + junk, 4},
        {junk + Frames(3) + junk + Frames(4), 4},
        {frame, 1},
        {junk + Frames(2) + frame.substr(0, 200), 2},  // the cut-off third frame is not audio
        {frame.substr(0, 416), 0},
        {Frames(5) + gap + Frames(6, {.version = 2}) + gap + Frames(4), 9},  // MPEG-2 after the gap: another stream
        {Frames(4) + Frames(4, {.frequency = 1}), 8},  // within a run the frequency may change
        {Frames(5) + Frames(5, {.layer = 2}), 5},
        {Frames(6) + block + tag, 6},
        {Frames(6) + frame.substr(0, 300) + tag, 6},  // a last frame that runs into the tag is cut off
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ScanMpegAudio(c.file).value_or(MpegStreamFacts{}).totalFrames, c.frames) << c.file.size();
    }
    std::mt19937 random(1234);
    std::string noise(256 * 1024, '\0');
    for (char& c : noise) c = static_cast<char>(random() & 0xFF);
    EXPECT_FALSE(ScanMpegAudio(noise));
    // Frame sizes are checked against real files below; here, what no real header holds.
    for (const HeaderBits& bits :
         {HeaderBits{.version = 1}, HeaderBits{.layer = 0}, HeaderBits{.bitRate = 15}, HeaderBits{.frequency = 3},
          HeaderBits{.emphasis = 2}}) {
        EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes(bits)));
    }
    EXPECT_FALSE(DecodeMpegFrameHeader(std::string("\xFF\xDB\x90\x00", 4)));  // a sync bit clear
    EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes({}).substr(0, 3)));
    const auto free = DecodeMpegFrameHeader(HeaderBytes({.bitRate = 0}));
    EXPECT_EQ(FreeFormatBitRate(*free, 391), 119743);
    EXPECT_EQ(FreeFormatBitRate(*free, 0), 0);
}

// What the corpus manifest states about each file (frames counted without the summary frame, as decoders do):
// frames, version (0 MPEG-1, 1 MPEG-2, 2 MPEG-2.5), layer, hertz, mode, flags (c CRC, p copyright, o original),
// bit rate (V variable, F free format), first frame, summary frames (- none, ? no count).
TEST(MpegStreamFactsOnCorpus, MatchTheManifest) {
    const char* rows[] = {
        "mpeg/garbage_before_first_frame.mp3 18 0 3 44100 3 o 64000 2255 72243",
        "mpeg/id3v2_gbk_text_wmp_truncated.mp3 0 0 3 44100 1 o 128000 512 10104",
        "mpeg/iso11172_l1_fl1_32k_modecycle_crc.mp1 49 0 1 32000 0 co 384000 0 -",
        "mpeg/junk_between_id3v2_and_audio_mpeg25.mp3 2 2 3 8000 1 o 8000 25 2",
        "mpeg/l2_free_format_32k_modecycle_crc.mp2 49 0 2 32000 0 c F 0 -",
        "mpeg/l3_all_bitrates_44k_then_48k.mp3 560 0 3 44100 3 - V 0 -",
        "mpeg/l3_free_format_44k_stereo.mp3 68 0 3 44100 0 - F 0 -",
        "mpeg/l3_vbri_header_private_bit.mp3 16 0 3 44100 1 co V 1007 8506",
        "mpeg/l3_xingtag_without_frames_field.mp3 0 0 3 44100 1 o 128000 0 ?",
        "lyrics3/l3v2_ind_eal_ear_ett_apev2_id3v1.mp3 75 0 3 44100 1 cpo 192000 2491 -",
    };
    ASSERT_TRUE(ReadBytes(kCorpusDir + "/MANIFEST.md")) << "no corpus at " << kCorpusDir;
    for (const std::string row : rows) {
        const std::string file = row.substr(0, row.find(' '));
        const auto facts = ScanMpegAudio(ReadBytes(kCorpusDir + "/" + file).value_or(""));
        ASSERT_TRUE(facts) << file;
        const MpegFrameHeader& h = facts->header;
        const std::string flags = std::string(h.crc ? "c" : "") + (h.copyright ? "p" : "") + (h.original ? "o" : "");
        std::ostringstream got;
        got << file << ' ' << facts->totalFrames << ' ' << int(h.version) << ' ' << h.layer << ' ' << h.frequency
            << ' ' << int(h.mode) << ' ' << (flags.empty() ? "-" : flags) << ' '
            << (h.FreeFormat() ? "F" : facts->variableBitRate ? "V" : std::to_string(facts->bitRate)) << ' '
            << facts->firstFrameOffset << ' '
            << (!facts->vbr ? "-" : facts->vbr->frames ? std::to_string(*facts->vbr->frames) : "?");
        EXPECT_EQ(got.str(), row);
    }
    EXPECT_FALSE(ScanMpegAudio(ReadBytes(kCorpusDir + "/mpeg/id3v2_only_no_audio.mp3").value()));
}

// Files made by lame and ffmpeg at build time, against what ffprobe reports for the same files. ffprobe's
// packets are the frames in the file; its decoded frames may leave out a last frame of encoder padding.
TEST(MpegStreamFactsOnGeneratedFiles, AgreeWithFfprobeAndShowInTheStreamPanel) {
    std::ifstream expectations(kMpegFixturesDir + "/expectations.txt");
    ASSERT_TRUE(expectations) << "no generated files in " << kMpegFixturesDir;
    int files = 0;
    for (std::string line; std::getline(expectations, line); ++files) {
        ASSERT_NE(line.rfind("missing ", 0), 0u) << line;
        std::map<std::string, std::string> p;
        std::istringstream words(line);
        for (std::string word; words >> word;) p[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
        const auto facts = ScanMpegAudio(ReadBytes(kMpegFixturesDir + "/" + p["file"]).value_or(""));
        ASSERT_TRUE(facts) << line;
        const MpegFrameHeader& h = facts->header;
        EXPECT_EQ(std::tuple(facts->totalFrames, h.frequency, int(h.mode), h.crc, h.layer, facts->bitRate),
                  std::tuple(std::stoul(p["nb_read_packets"]), std::stoi(p["sample_rate"]), std::stoi(p["mode"]),
                             p["crc"] == "1", p["codec_name"] == "mp3" ? 3 : 2, std::stoi(p["bit_rate"])))
            << line;
        EXPECT_LE(std::stoul(p["nb_read_frames"]), facts->totalFrames) << line;
        EXPECT_NEAR(facts->durationMs, std::stod(p["duration"]) * 1000, 0.5) << line;
    }
    EXPECT_GE(files, 11);
    // What the frame parser finds in a file lame made at 64 kbit/s and 22.05 kHz, as the stream panel shows it:
    // an MP3 PRO file, by the only test there is.
    const auto facts = ScanMpegAudio(ReadBytes(kMpegFixturesDir + "/l3_mpeg2_22k_stereo_64.mp3").value_or(""));
    ASSERT_TRUE(facts);
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, PropertiesOf(*facts, 3));
    ShowTagLine(panel, std::nullopt);
    using Texts = std::vector<std::string>;
    EXPECT_EQ((Texts{panel.bitRate, panel.frequency, panel.layer, panel.totalFrames, panel.framesRead, panel.flags,
                     panel.mpeg, panel.msPerFrame}),
              (Texts{"声音位率：64千位/秒", "声音频率：22.05KHz", "压缩层次：III ", "总帧：79", "读取帧：3",
                     "效验：否版权：没有原文：是", "MPEG方式：0  MPEG版本：2", "每毫秒：26"}));
    EXPECT_EQ(panel.title, "  标题：N/A  歌手：N/A  专集：N/A  年代：N/A  其他：N/A（MP3 PRO文件）");
}

}  // namespace
}  // namespace lumora
