#include <gtest/gtest.h>

#include "playback/Mp3Player.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

using test::MpegFrames;

// "Decodes" every frame into 1152 stereo samples whose value is the frame's number.
class FakeMp3Decoder : public Mp3Decoder {
public:
    bool Open(const MpegFrameHeader& h) override {
        opened = true;
        return h.layer == 3 && accept;
    }
    bool Decode(std::string_view frames, std::string& pcm) override {
        const size_t count = frames.size() / 417;
        for (size_t i = 0; i < count; ++i) pcm.append(1152 * 4, static_cast<char>(decoded++ & 0x7F));
        return true;
    }
    void Reset() override { ++resets; }
    void Close() override { opened = false; }
    bool accept = true;
    bool opened = false;
    int decoded = 0;
    int resets = 0;
};

class FakeAudioOut : public AudioOut {
public:
    bool Open(int rate, int ch) override {
        sampleRate = rate;
        channels = ch;
        return true;
    }
    bool Write(int id, std::string_view pcm) override {
        queue.push_back(id);
        bytes += pcm.size();
        return true;
    }
    void Pause() override { paused = true; }
    void Restart() override { paused = false; }
    void Reset() override {
        queue.clear();
        played = 0;
    }
    long long PlayedSamples() override { return played; }
    void Close() override { ++closes; }
    // The sound card finishes the oldest buffer.
    void FinishOne() {
        ASSERT_FALSE(queue.empty());
        const int id = queue.front();
        queue.erase(queue.begin());
        played += 1152 * Mp3Player::kFramesPerBuffer;
        onDone(id);
    }
    std::vector<int> queue;
    size_t bytes = 0;
    long long played = 0;
    int sampleRate = 0;
    int channels = 0;
    bool paused = false;
    int closes = 0;
};

struct Rig {
    test::FakeFileSystem fs;
    FakeMp3Decoder decoder;
    FakeAudioOut out;
    Mp3Player player{fs, decoder, out};
    explicit Rig(int frames) { fs.files["D:\\a.mp3"] = MpegFrames(frames); }
};

TEST(Mp3Player, KeepsFourBuffersQueuedAndEndsOnceEveryBufferCameBack) {
    Rig r(20);  // 3 buffers of 8, 8 and 4 frames
    EXPECT_EQ(r.player.PositionMs(), -1);
    EXPECT_EQ(r.player.LengthMs(), -1);
    ASSERT_TRUE(r.player.Open("D:\\a.mp3"));
    EXPECT_EQ(r.out.sampleRate, 44100);
    EXPECT_EQ(r.out.channels, 2);
    EXPECT_EQ(r.out.queue.size(), 3u);
    EXPECT_EQ(r.player.LengthMs(), 20LL * 1152 * 1000 / 44100);
    r.out.FinishOne();
    EXPECT_EQ(r.player.PositionMs(), 8LL * 1152 * 1000 / 44100);
    r.out.FinishOne();
    EXPECT_FALSE(r.player.Finished());
    EXPECT_FALSE(r.player.SoundingPcm().empty());  // what the spectrum shows
    ASSERT_TRUE(r.player.Pause());  // the card holds; the end is not reported while paused
    EXPECT_TRUE(r.out.paused);
    EXPECT_TRUE(r.player.SoundingPcm().empty());
    r.out.FinishOne();
    EXPECT_FALSE(r.player.Finished());
    ASSERT_TRUE(r.player.Resume());
    EXPECT_FALSE(r.out.paused);
    r.out.onDone(0);  // a buffer handed back twice counts once
    EXPECT_TRUE(r.player.Finished());
    EXPECT_EQ(r.decoder.decoded, 20);
    ASSERT_TRUE(r.player.Open("D:\\a.mp3"));  // opening again closes the card first
    EXPECT_EQ(r.out.closes, 1);

    Rig big(100);
    ASSERT_TRUE(big.player.Open("D:\\a.mp3"));
    EXPECT_EQ(big.out.queue.size(), 4u);
    big.out.FinishOne();
    EXPECT_EQ(big.out.queue.size(), 4u);  // refilled at once
}

TEST(Mp3Player, SeekStartsAtTheFrameOfThatTime) {
    Rig r(1000);
    ASSERT_TRUE(r.player.Open("D:\\a.mp3"));
    const int resets = r.decoder.resets;
    ASSERT_TRUE(r.player.Seek(10005));  // frame 383 starts at 10004.9 ms
    EXPECT_EQ(r.decoder.resets, resets + 1);
    EXPECT_EQ(r.player.PositionMs(), 383LL * 1152 * 1000 / 44100);
    EXPECT_EQ(r.out.queue.size(), 4u);
    EXPECT_TRUE(r.player.Seek(60000));  // past the end
}

TEST(Mp3Player, PlayRangeRepeatsWithoutAGap) {
    Rig r(1000);
    ASSERT_TRUE(r.player.Open("D:\\a.mp3"));
    r.decoder.decoded = 0;
    ASSERT_TRUE(r.player.PlayRange(1000, 1500));  // frames 38 to 58
    for (int i = 0; i < 12; ++i) {
        r.out.FinishOne();
        const long long pos = r.player.PositionMs();
        EXPECT_GE(pos, 992);
        EXPECT_LE(pos, 1530);
    }
    EXPECT_FALSE(r.player.Finished());
    EXPECT_EQ(r.out.queue.size(), 4u);  // still playing: back at A after B
    EXPECT_GT(r.decoder.decoded, 60);
    ASSERT_TRUE(r.player.PlayRange(0, -1));  // the whole file again, once
    EXPECT_FALSE(r.player.Finished());
}

// A buffer can come back before it was heard: the end waits for the card's count, or for three asks when the
// count stops short.
TEST(Mp3Player, TheEndWaitsForTheCardToHaveSoundedEverything) {
    for (const long long played : {8LL * 1152, 8LL * 1152 - 100}) {
        Rig r(8);
        ASSERT_TRUE(r.player.Open("D:\\a.mp3"));
        r.out.queue.clear();
        r.out.onDone(0);
        EXPECT_FALSE(r.player.Finished());
        r.out.played = played;
        const bool whole = played % 1152 == 0;
        EXPECT_EQ(r.player.Finished(), whole);
        EXPECT_EQ(r.player.Finished(), whole);
        EXPECT_TRUE(r.player.Finished());
    }
}

TEST(Mp3Player, WhatIsNotMpegAudioIsRefused) {
    Rig r(0);
    r.fs.files["D:\\text.mp3"] = "this is not audio at all, just words";
    EXPECT_FALSE(r.player.Open("D:\\text.mp3"));
    EXPECT_FALSE(r.player.Open("D:\\missing.mp3"));
    r.fs.files["D:\\ok.mp3"] = MpegFrames(10);
    r.decoder.accept = false;  // the system has no decoder for it
    EXPECT_FALSE(r.player.Open("D:\\ok.mp3"));
    EXPECT_EQ(r.player.LengthMs(), -1);
    EXPECT_FALSE(r.player.Seek(0));
    EXPECT_FALSE(r.player.PlayRange(0, -1));
}

}  // namespace
}  // namespace lumora
