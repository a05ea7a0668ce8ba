#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <tuple>
#include <vector>

#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/TestMedia.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::HeaderBits;
using test::HeaderBytes;

// A frame with a zero body, so nothing inside it looks like a header; `size` only for free format.
std::string Frame(const HeaderBits& bits, std::string_view body = {}, int size = 0) {
    std::string frame = HeaderBytes(bits) + std::string(body);
    frame.resize(static_cast<std::size_t>(size ? size : DecodeMpegFrameHeader(frame)->FrameSize()), '\0');
    return frame;
}

std::string Frames(int count, const HeaderBits& bits = {}) {
    std::string out;
    for (int i = 0; i < count; ++i) out += Frame(bits);
    return out;
}

std::string BigEndian(std::uint32_t v) {
    return {static_cast<char>(v >> 24), static_cast<char>(v >> 16 & 0xFF), static_cast<char>(v >> 8 & 0xFF),
            static_cast<char>(v & 0xFF)};
}

std::uint32_t Count(std::string_view file) {
    const auto facts = ScanMpegAudio(file);
    return facts ? facts->totalFrames : 0;
}

TEST(MpegFrameWalker, GivesEveryFrameAfterId3v2AndJunkWithOffsetSizeAndSamples) {
    // ID3v2.4 with a footer (10 + 20 + 10 bytes), then junk holding one lone header, then the stream.
    const std::string id3 = std::string("ID3\x04\x00\x10\x00\x00\x00\x14", 10) + std::string(30, 'x');
    const std::string junk = "junk" + HeaderBytes({}) + "more junk";
    const std::string file = id3 + junk + Frame({}) + Frame({.bitRate = 9, .padding = 1}) + Frame({.bitRate = 14}) +
                             Frame({.bitRate = 1}) + Frame({});
    MpegFrameWalker walker(file);
    std::string walked;
    while (const auto frame = walker.Next()) {
        walked += std::to_string(frame->offset) + "+" + std::to_string(frame->size) + "/" +
                  std::to_string(frame->samples) + " ";
    }
    EXPECT_EQ(walked, "57+417/1152 474+418/1152 892+1044/1152 1936+104/1152 2040+417/1152 ");
    EXPECT_EQ(walker.AudioStart(), id3.size());
    const auto facts = ScanMpegAudio(file);
    ASSERT_TRUE(facts);
    EXPECT_EQ(std::tuple(facts->totalFrames, facts->firstFrameOffset, facts->variableBitRate), std::tuple(5u, 57u, true));
    EXPECT_EQ(facts->bitRate, std::lround(static_cast<double>(file.size() - 57) * 8 / (5 * 1152 / 44100.0)));
}

// Random bytes pass for a header every few thousand bytes; a stream needs four in a row, or fewer that end
// exactly at the end of the audio (or with a frame the end cuts off). After a gap only the same stream is taken
// up again; tags at the end are never audio, even when they hold frames.
TEST(MpegFrameWalker, WhatCountsAsTheStream) {
    const std::string junk(700, 'j');
    const std::string gap(333, '\x55');
    const std::string frame = Frame({});
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
    for (const auto& c : cases) EXPECT_EQ(Count(c.file), c.frames) << c.file.size();
    std::mt19937 random(1234);
    std::string noise(256 * 1024, '\0');
    for (char& c : noise) c = static_cast<char>(random() & 0xFF);
    EXPECT_FALSE(ScanMpegAudio(noise));
}

TEST(MpegFrameHeader, SizesFlagsAndReservedValues) {
    const std::pair<HeaderBits, int> sizes[] = {
        {{.layer = 3, .bitRate = 12, .frequency = 2}, 576},                // layer I counts 4-byte slots
        {{.layer = 3, .bitRate = 12, .frequency = 0, .padding = 1}, 420},  // its padding slot is 4 bytes
        {{.layer = 2, .bitRate = 14, .frequency = 1}, 1152},
        {{.version = 2, .layer = 2, .bitRate = 14, .frequency = 2}, 1440},
        {{.version = 2, .bitRate = 4}, 104},                 // MPEG-2 layer III: 72 bytes a kbit
        {{.version = 0, .bitRate = 1, .frequency = 2}, 72},  // the smallest frame there is
    };
    for (const auto& [bits, size] : sizes) EXPECT_EQ(DecodeMpegFrameHeader(HeaderBytes(bits))->FrameSize(), size);
    for (const HeaderBits& bits :
         {HeaderBits{.version = 1}, HeaderBits{.layer = 0}, HeaderBits{.bitRate = 15}, HeaderBits{.frequency = 3},
          HeaderBits{.emphasis = 2}}) {
        EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes(bits)));
    }
    std::string noSync = HeaderBytes({});
    noSync[1] = static_cast<char>(noSync[1] & 0xDF);
    EXPECT_FALSE(DecodeMpegFrameHeader(noSync));
    EXPECT_FALSE(DecodeMpegFrameHeader(HeaderBytes({}).substr(0, 3)));
    const auto set = DecodeMpegFrameHeader(
        HeaderBytes({.protection = 0, .padding = 1, .mode = 3, .copyright = 1, .original = 1, .emphasis = 1}));
    EXPECT_TRUE(set->crc && set->padding && set->copyright && set->original);
    const auto clear = DecodeMpegFrameHeader(HeaderBytes({.mode = 1}));
    EXPECT_FALSE(clear->crc || clear->padding || clear->copyright || clear->original);
    const auto free = DecodeMpegFrameHeader(HeaderBytes({.bitRate = 0}));
    EXPECT_EQ(FreeFormatBitRate(*free, 391), 119743);
    EXPECT_EQ(FreeFormatBitRate(*free, 0), 0);
}

TEST(MpegFrameWalker, FreeFormatFrameSizeIsTheDistanceToTheNextHeader) {
    const HeaderBits free{.bitRate = 0};
    // The first frame's data holds a header look-alike of the same stream, which a plain search would take.
    std::string file = Frame(free, std::string(100, '\0') + HeaderBytes(free), 300);
    for (int i = 0; i < 5; ++i) file += Frame(free, {}, 300);
    file += Frame({.bitRate = 0, .padding = 1}, {}, 301) + Frame(free, {}, 300);
    MpegFrameWalker walker(file);
    std::string sizes;
    while (const auto frame = walker.Next()) sizes += std::to_string(frame->size) + " ";
    EXPECT_EQ(sizes, "300 300 300 300 300 300 301 300 ");
    const auto facts = ScanMpegAudio(file);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->bitRate, std::lround((7 * 300 + 301) * 8 * 44100 / (8 * 1152.0)));  // the average
    std::string padded = Frame({.bitRate = 0, .padding = 1}, {}, 301);  // a stream that starts with a padded frame
    for (int i = 0; i < 5; ++i) padded += Frame(free, {}, 300);
    EXPECT_EQ(Count(padded), 6u);
}

TEST(MpegFrameWalker, TheEncodersSummaryFrameIsNotAudioAndItsCountIsNotTrusted) {
    // Xing/Info sit after the side information (32 bytes for MPEG-1 stereo, 17 for mono); VBRI at 36.
    const auto summary = [](const HeaderBits& bits, std::size_t at, std::string_view id, std::uint32_t frames) {
        return Frame(bits, std::string(at - 4, '\0') + std::string(id) + BigEndian(3) + BigEndian(frames));
    };
    const struct {
        std::string file;
        std::uint32_t frames;
        VbrHeader::Kind kind;
        std::uint32_t claimed;
    } cases[] = {
        {summary({}, 36, "Xing", 7) + Frames(3) + Frames(4, {.bitRate = 11}), 7, VbrHeader::Kind::Xing, 7},
        {summary({.mode = 3}, 21, "Info", 1000) + Frames(4, {.mode = 3}), 4, VbrHeader::Kind::Info, 1000},
        // With a CRC some encoders put the summary two bytes later.
        {summary({.protection = 0}, 38, "Info", 5) + Frames(5, {.protection = 0}), 5, VbrHeader::Kind::Info, 5},
        {Frame({}, std::string(32, '\0') + "VBRI" + std::string(6, '\0') + BigEndian(9999) + BigEndian(8506)) +
             Frames(4), 4, VbrHeader::Kind::Vbri, 8506},
    };
    for (const auto& c : cases) {
        const auto facts = ScanMpegAudio(c.file);
        ASSERT_TRUE(facts && facts->vbr);
        EXPECT_EQ(std::tuple(facts->totalFrames, facts->vbr->kind, facts->vbr->frames),
                  std::tuple(c.frames, c.kind, std::optional(c.claimed)));
    }
    MpegFrameWalker walker(cases[0].file);
    EXPECT_EQ(walker.Next()->offset, 417u);  // the walk starts after the summary
    EXPECT_EQ(walker.TagFrame()->offset, 0u);
}

constexpr auto V1 = MpegVersion::Mpeg1;
constexpr auto V2 = MpegVersion::Mpeg2;
constexpr auto V25 = MpegVersion::Mpeg25;
constexpr auto Stereo = ChannelMode::Stereo;
constexpr auto Joint = ChannelMode::JointStereo;
constexpr auto Dual = ChannelMode::DualChannel;
constexpr auto Mono = ChannelMode::Mono;
constexpr int kVaries = 0;  // bit rate column: variable rate
constexpr int kFree = -1;   // free format
constexpr long kNoSummary = -1;
constexpr long kNoCount = -2;  // a summary frame without a frame count

// What the corpus manifest states about each file (frames counted without the summary frame, as decoders do).
TEST(MpegStreamFactsOnCorpus, MatchTheManifest) {
    const struct {
        const char* file;
        std::uint32_t frames;
        MpegVersion version;
        int layer, hertz;
        ChannelMode mode;
        const char* flags;  // c CRC, p copyright, o original
        int bitRate;
        std::size_t first;
        long summaryFrames;
    } rows[] = {
        {"mpeg/garbage_before_first_frame.mp3", 18, V1, 3, 44100, Mono, "o", 64000, 2255, 72243},
        {"mpeg/id3v2_gbk_text_wmp_truncated.mp3", 0, V1, 3, 44100, Joint, "o", 128000, 512, 10104},
        {"mpeg/id3v2_size_off_by_one.mp3", 20, V1, 3, 44100, Joint, "o", 320000, 89624, kNoSummary},
        {"mpeg/iso11172_l1_fl1_32k_modecycle_crc.mp1", 49, V1, 1, 32000, Stereo, "co", 384000, 0, kNoSummary},
        {"mpeg/iso11172_l1_fl2_44k_modecycle_pad_crc.mp1", 49, V1, 1, 44100, Joint, "co", 384000, 0, kNoSummary},
        {"mpeg/iso11172_l1_fl4_32k_mono_nocrc.mp1", 49, V1, 1, 32000, Mono, "o", 32000, 0, kNoSummary},
        {"mpeg/iso11172_l1_fl5_48k_dual_crc.mp1", 49, V1, 1, 48000, Dual, "co", 448000, 0, kNoSummary},
        {"mpeg/iso11172_l2_fl10_32k_modecycle_crc.mp2", 49, V1, 2, 32000, Stereo, "c", 192000, 0, kNoSummary},
        {"mpeg/iso11172_l2_fl14_48k_dual_crc.mp2", 16, V1, 2, 48000, Dual, "c", 384000, 0, kNoSummary},
        {"mpeg/iso11172_l3_compl_48k_mono.mp3", 216, V1, 3, 48000, Mono, "o", 64000, 0, kNoSummary},
        {"mpeg/junk_between_id3v2_and_audio_mpeg25.mp3", 2, V25, 3, 8000, Joint, "o", 8000, 25, 2},
        {"mpeg/l1_48k_stereo_modern_encoder.mp1", 12, V1, 1, 48000, Stereo, "", 224000, 0, kNoSummary},
        {"mpeg/l2_free_format_32k_modecycle_crc.mp2", 49, V1, 2, 32000, Stereo, "c", kFree, 0, kNoSummary},
        {"mpeg/l2_mpeg2_lsf_24k_test32.mp2", 63, V2, 2, 24000, Stereo, "", 128000, 0, kNoSummary},
        {"mpeg/l3_all_bitrates_44k_then_48k.mp3", 560, V1, 3, 44100, Mono, "", kVaries, 0, kNoSummary},
        {"mpeg/l3_cbr_lame_info_truncated.mp3", 17, V1, 3, 44100, Mono, "o", 64000, 208, 72243},
        {"mpeg/l3_free_format_44k_stereo.mp3", 68, V1, 3, 44100, Stereo, "", kFree, 0, kNoSummary},
        {"mpeg/l3_infotag_corrupted_single_frame.mp3", 0, V1, 3, 44100, Joint, "o", 128000, 0, 316},
        {"mpeg/l3_mpeg2_16k_vbr_xing.mp3", 58, V2, 3, 16000, Joint, "o", kVaries, 0, 58},
        {"mpeg/l3_mpeg2_22k_all_bitrates_mono.mp3", 476, V2, 3, 22050, Mono, "o", kVaries, 0, kNoSummary},
        {"mpeg/l3_vbr_xing_lame_mono_complete.mp3", 151, V1, 3, 44100, Mono, "o", kVaries, 0, 151},
        {"mpeg/l3_vbri_header_private_bit.mp3", 16, V1, 3, 44100, Joint, "co", kVaries, 1007, 8506},
        {"mpeg/l3_xingtag_without_frames_field.mp3", 0, V1, 3, 44100, Joint, "o", 128000, 0, kNoCount},
        {"mpeg/mpeg25_11k_mono_cbr_ffe3.mp3", 19, V25, 3, 11025, Mono, "o", 16000, 0, kNoSummary},
        {"mpeg/mpeg25_12k_vbr_xing_silence.mp3", 80, V25, 3, 12000, Joint, "o", kVaries, 0, 80},
        {"id3v1/id3v10_title_exactly_30_chars.mp3", 24, V1, 3, 44100, Joint, "", kVaries, 0, 1278},
        {"id3v1/id3v11_on_layer2_with_id3v23.mp2", 20, V1, 2, 44100, Stereo, "o", 128000, 654, kNoSummary},
        {"lyrics3/l3v2_ind_eal_ear_ett_apev2_id3v1.mp3", 75, V1, 3, 44100, Joint, "cpo", 192000, 2491, kNoSummary},
        {"lyrics3/l3v2_ind_ett_apev2_id3v1.mp3", 9, V1, 3, 44100, Joint, "o", kVaries, 50330, 7397},
        {"lyrics3/l3v2_after_apev2_no_id3v1.mp3", 4, V1, 3, 44100, Joint, "o", kVaries, 213, 4},
    };
    ASSERT_TRUE(test::ReadBytes(test::kCorpusDir + "/MANIFEST.md")) << "no corpus at " << test::kCorpusDir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        const auto bytes = test::ReadBytes(test::kCorpusDir + "/" + row.file);
        ASSERT_TRUE(bytes);
        const auto facts = ScanMpegAudio(*bytes);
        ASSERT_TRUE(facts);
        const MpegFrameHeader& h = facts->header;
        const std::string flags = std::string(h.crc ? "c" : "") + (h.copyright ? "p" : "") + (h.original ? "o" : "");
        const int bitRate = h.FreeFormat() ? kFree : facts->variableBitRate ? kVaries : facts->bitRate;
        const long summary = !facts->vbr ? kNoSummary : facts->vbr->frames ? long(*facts->vbr->frames) : kNoCount;
        EXPECT_EQ(std::tuple(facts->totalFrames, h.version, h.layer, h.frequency, h.mode, flags, bitRate,
                             facts->firstFrameOffset, summary),
                  std::tuple(row.frames, row.version, row.layer, row.hertz, row.mode, std::string(row.flags),
                             row.bitRate, row.first, row.summaryFrames));
    }
    for (const char* none : {"mpeg/not_mpeg_5_ascii_bytes.mp3", "mpeg/id3v2_only_no_audio.mp3",
                             "id3v1/id3v11_latin1_track12_no_audio.mp3"}) {
        EXPECT_FALSE(ScanMpegAudio(test::ReadBytes(test::kCorpusDir + "/" + none).value_or(""))) << none;
    }
}

// Files made by lame and ffmpeg at build time, against what ffprobe reports for the same files.
TEST(MpegStreamFactsOnGeneratedFiles, AgreeWithFfprobe) {
    std::ifstream expectations(test::kMpegFixturesDir + "/expectations.txt");
    ASSERT_TRUE(expectations) << "no generated files in " << test::kMpegFixturesDir;
    std::string line;
    int files = 0;
    while (std::getline(expectations, line)) {
        ASSERT_NE(line.rfind("missing ", 0), 0u) << line;
        std::map<std::string, std::string> probe;
        std::istringstream words(line);
        for (std::string word; words >> word;) probe[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
        SCOPED_TRACE(line);
        const auto facts = ScanMpegAudio(test::ReadBytes(test::kMpegFixturesDir + "/" + probe["file"]).value_or(""));
        ASSERT_TRUE(facts);
        // ffprobe's packets are the frames in the file; its decoded frames may leave out a last frame that
        // holds nothing but the encoder's padding.
        EXPECT_EQ(facts->totalFrames, std::stoul(probe["nb_read_packets"]));
        EXPECT_LE(std::stoul(probe["nb_read_frames"]), facts->totalFrames);
        EXPECT_EQ(facts->header.frequency, std::stoi(probe["sample_rate"]));
        EXPECT_EQ(static_cast<int>(facts->header.mode), std::stoi(probe["mode"]));
        EXPECT_EQ(facts->header.crc, probe["crc"] == "1");
        EXPECT_EQ(facts->header.layer, probe["codec_name"] == "mp3" ? 3 : 2);
        EXPECT_EQ(facts->bitRate, std::stoi(probe["bit_rate"]));
        EXPECT_NEAR(facts->durationMs, std::stod(probe["duration"]) * 1000, 0.5);
        ++files;
    }
    EXPECT_GE(files, 15);
}

}  // namespace
}  // namespace lumora
