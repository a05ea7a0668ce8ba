#include <gtest/gtest.h>

#include "mediainfo/ListInfo.h"
#include "playback/StreamPanelFeed.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

using test::MpegFrames;

TEST(StreamPanelFeed, OpenFillsFromTheFileAndProgressCountsFrames) {
    test::FakeFileSystem fs;
    fs.files["D:\\a.mp3"] = MpegFrames(100) + "TAGSong" + std::string(121, '\0');
    StreamPanelFeed feed(fs);
    feed.Opened("D:\\a.mp3", 2612);
    const StreamPanelTexts& t = feed.Texts();
    for (const auto& [text, part] : {std::pair{t.bitRate, "128"}, {t.totalFrames, "100"}, {t.title, "Song"}}) {
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    EXPECT_EQ(t.totalTime, "总时：00:00:02");
    feed.Progress(1000);  // about 38 frames of 26.1 ms
    EXPECT_NE(feed.Texts().framesRead.find("38"), std::string::npos) << feed.Texts().framesRead;
    feed.Progress(2612);  // the end of the file: every frame read
    EXPECT_EQ(feed.Texts().framesRead, "读取帧：100");
    fs.files["D:\\v.avi"] = "RIFF....AVI LIST";
    feed.Opened("D:\\v.avi", -1);  // the next file starts from the reset texts
    EXPECT_EQ(feed.Texts().bitRate, StreamPanelTexts().bitRate);
}

// Files of 2 GB made up on the fly: `head`, then MPEG frames, and a tag at the end; every byte read is counted.
class HugeFileSystem : public test::FakeFileSystem {
public:
    static constexpr long long kSize = 2LL << 30;
    explicit HugeFileSystem(std::string head = {}) : head_(std::move(head)) {}
    long long FileSize(const std::string&) override { return kSize; }
    FileRead ReadFile(const std::string&) override { return read += kSize, FileRead{FileRead::Status::Failed, {}}; }
    FileRead ReadFilePart(const std::string&, long long offset, size_t maxBytes) override {
        static const std::string frame = MpegFrames(1), tag = "TAGHuge" + std::string(121, '\0');
        const auto prefix = static_cast<long long>(head_.size());
        std::string bytes;
        for (long long at = offset; at < kSize && bytes.size() < maxBytes; ++at) {
            bytes += at >= kSize - 128 ? tag[static_cast<size_t>(at - (kSize - 128))]
                     : at < prefix   ? head_[static_cast<size_t>(at)]
                                     : frame[static_cast<size_t>((at - prefix) % 417)];
        }
        read += static_cast<long long>(bytes.size());
        return {FileRead::Status::Ok, bytes};
    }
    long long read = 0;

private:
    std::string head_;
};

// The frame count comes from the size of the audio (behind a large ID3v2 tag too) or from an encoder's summary;
// a file that is not MPEG audio is read for its tag only.
TEST(StreamPanelFeed, AHugeFileIsReadAtItsHeadAndTailOnly) {
    const std::string id3v2 = std::string("ID3\x03\0\0\0\x40\0\0", 10) + std::string(1 << 20, 'p');  // 1 MiB
    std::string xing = MpegFrames(1);
    xing.replace(36, 12, std::string("Xing\0\0\0\x01\0\0\x04\xD2", 12));  // 1234 frames
    const struct {
        const char* path;
        std::string head, frames;
        long long bound;
    } cases[] = {
        {"D:\\huge.mp3", "", std::to_string((HugeFileSystem::kSize - 128) / 417), 300 << 10},
        {"D:\\huge.mp3", id3v2, std::to_string((HugeFileSystem::kSize - 128 - id3v2.size()) / 417), 300 << 10},
        {"D:\\huge.mp3", xing, "1234", 300 << 10},
        {"D:\\huge.avi", "", "N/A", 4 << 10},
    };
    for (const auto& c : cases) {
        HugeFileSystem fs(c.head);
        StreamPanelFeed feed(fs);
        feed.Opened(c.path, -1);
        const std::string& frames = feed.Texts().totalFrames;
        EXPECT_EQ(frames.substr(frames.size() - c.frames.size()), c.frames);
        EXPECT_NE(feed.Texts().title.find("Huge"), std::string::npos) << feed.Texts().title;
        EXPECT_NE(ListInfoTipFor(fs, c.path, "huge", true).find("Huge"), std::string::npos);
        EXPECT_LE(fs.read, c.bound + (4 << 10)) << c.path;
    }
}

}  // namespace
}  // namespace lumora
