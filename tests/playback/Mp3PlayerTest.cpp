#include <gtest/gtest.h>

#include <algorithm>

#include "playback/Mp3Player.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

// "Decodes" every frame into 1152 stereo samples.
struct FakeMp3Decoder : Mp3Decoder {
    bool Open(const MpegFrameHeader& h) override { return h.layer == 3; }
    bool Decode(std::string_view frames, std::string& pcm) override {
        decoded += static_cast<int>(frames.size() / 417);
        pcm.append(frames.size() / 417 * 1152 * 4, '\x11');
        return true;
    }
    bool Drain(std::string& pcm) override {  // the decoder's delay: one frame comes out at the end
        pcm.append(std::exchange(held, 0) * 1152 * 4, '\x22');
        return true;
    }
    void Reset() override { ++resets, held = 1; }
    void Close() override {}
    int held = 1;
    int decoded = 0;
    int resets = 0;
};

// The sound card as the system's behaves: a buffer comes back once when it has been played; a reset
// returns the queued ones at once and their completions still arrive later (stale), which must not
// be taken for the buffers written after it; a buffer still queued is not written again.
struct FakeAudioOut : AudioOut {
    AudioStatus Open(int rate, int ch) override {
        format = {rate, ch};
        return AudioStatus::Ok;
    }
    AudioStatus Write(int id, std::string_view) override {
        if (std::count(queue.begin(), queue.end(), id)) return ++writesRefused, AudioStatus::StillPlaying;
        queue.push_back(id);
        return AudioStatus::Ok;
    }
    AudioStatus Pause() override { return paused = true, AudioStatus::Ok; }
    AudioStatus Restart() override { return paused = false, AudioStatus::Ok; }
    AudioStatus Reset() override {
        stale.insert(stale.end(), queue.begin(), queue.end());
        queue.clear();
        played = 0;
        return AudioStatus::Ok;
    }
    AudioStatus SetVolume(int level) override { return volume = level, AudioStatus::Ok; }
    long long PlayedSamples() override { return played; }
    void Close() override { ++closes; }
    // The card finishes the oldest buffer, a full one.
    void FinishOne() {
        const int id = queue.front();
        queue.erase(queue.begin());
        played += 1152 * Mp3Player::kFramesPerBuffer;
        onDone(id);
    }
    // The completions a reset left behind arrive late; one whose buffer was written again meanwhile is dropped.
    void DeliverStale() {
        for (const int id : std::exchange(stale, {})) {
            if (!std::count(queue.begin(), queue.end(), id)) onDone(id);
        }
    }

    std::vector<int> queue;  // ids at the card, oldest first
    std::vector<int> stale;  // completions of buffers a reset returned, not yet arrived
    long long played = 0;
    std::pair<int, int> format;
    bool paused = false;
    int closes = 0, writesRefused = 0, volume = 20;
};

struct Rig {
    test::FakeFileSystem fs;
    FakeMp3Decoder decoder;
    FakeAudioOut out;
    Mp3Player player{fs, decoder, out};
    explicit Rig(int frames) { fs.files["D:\\a.mp3"] = test::MpegFrames(frames); }
};

TEST(Mp3Player, KeepsFourBuffersQueuedAndEndsOnceEveryBufferCameBack) {
    Rig r(20);  // 3 buffers of 8, 8 and 4 frames, and the decoder's rest
    ASSERT_TRUE(r.player.Open("D:\\a.mp3"));
    EXPECT_EQ(r.out.format, std::pair(44100, 2));
    EXPECT_EQ(r.player.LengthMs(), 20LL * 1152 * 1000 / 44100);
    r.out.FinishOne();
    EXPECT_EQ(r.player.PositionMs(), 8LL * 1152 * 1000 / 44100);
    r.out.FinishOne();
    EXPECT_FALSE(r.player.SoundingPcm().empty());  // what the audio display's spectrum shows
    ASSERT_TRUE(r.player.Pause());  // the card holds; the end is not reported while paused
    r.out.FinishOne();
    EXPECT_FALSE(r.player.Finished());
    ASSERT_TRUE(r.player.Resume());
    r.out.onDone(0);  // a buffer handed back twice counts once
    EXPECT_FALSE(r.player.Finished());
    r.out.FinishOne();  // the decoder's rest, drained at the end of the stream
    EXPECT_TRUE(r.player.Finished());
    EXPECT_EQ(r.player.PositionMs(), r.player.LengthMs());
    EXPECT_EQ(r.decoder.decoded, 20);

    Rig big(1000);
    ASSERT_TRUE(big.player.Open("D:\\a.mp3"));
    big.out.FinishOne();
    EXPECT_EQ(big.out.queue.size(), 4u);  // refilled at once
    big.decoder.resets = 0;
    ASSERT_TRUE(big.player.Seek(10005));  // frame 383 starts at 10004.9 ms
    EXPECT_EQ(big.decoder.resets, 1);
    big.player.SetVolume(7);  // the player's own sound
    EXPECT_EQ(big.out.volume, 7);
    big.out.DeliverStale();  // late completions of what the seek threw away change nothing
    EXPECT_EQ(big.out.queue, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(big.out.writesRefused, 0);
    EXPECT_EQ(big.player.PositionMs(), 383LL * 1152 * 1000 / 44100);
    for (const auto& [asked, same] :
         {std::pair{9'000'000'000'000'000'000LL, big.player.LengthMs()}, {-9'000'000'000'000'000'000LL, 0LL}}) {
        ASSERT_TRUE(big.player.Seek(same));
        const long long expected = big.player.PositionMs();
        ASSERT_TRUE(big.player.Seek(asked));  // no overflow: the end, or the start
        EXPECT_EQ(big.player.PositionMs(), expected);
    }
}

}  // namespace
}  // namespace lumora
