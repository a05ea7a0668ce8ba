// Any typed jump time: the parser's seconds stay within their bound, and the jump lands inside the file,
// whatever the number's size. The first byte sets the file's length in seconds; the rest is the answer.

#include "FuzzChecks.h"
#include "playback/PlaybackController.h"

namespace lumora::fuzz {
struct SeekRecorder : Decoder, PlaybackView, VolumeControl {
    bool Open(const std::string&) override { return true; }
    bool Pause() override { return true; }
    bool Resume() override { return true; }
    void Stop() override {}
    void Close() override {}
    long long PositionMs() override { return 0; }
    long long LengthMs() override { return length; }
    bool Seek(long long ms) override { return seeks.push_back(ms), true; }
    bool PlayRange(long long, long long) override { return true; }
    bool SetSpeed(int) override { return true; }
    bool Finished() override { return false; }
    void ShowPlayback(const PlaybackTexts&) override {}
    void FileOpened(const std::string&) override {}
    void FileClosed() override {}
    void SetLevel(int) override {}
    long long length = 0;
    std::vector<long long> seeks;
};
}  // namespace lumora::fuzz

LUMORA_FUZZ(input) {
    if (input.empty()) return;
    const std::string answer(input.substr(1));
    const long long seconds = PlaybackController::ParseTypedTime(answer);
    Check(std::abs(static_cast<double>(seconds)) <= PlaybackController::kMaxTypedSeconds);
    Ports p;
    QueueController queue(p.prompts, p.fs, p.view, p.view);
    queue.Queue().Replace("D:\\m", {{"D:\\m\\a.wma", "a.wma"}});
    SeekRecorder d;
    d.length = static_cast<unsigned char>(input[0]) * 1000LL;
    PlaybackController player({queue, p.settings, p.prompts, d, nullptr, d, d, [] { return 0.0; }});
    player.PlayEntry(1);
    p.prompts.textAnswer = answer;
    player.JumpToTime();
    for (const long long ms : d.seeks) Check(ms >= 0 && ms <= d.length);
}
