// Any typed jump time: the parser's seconds stay within their bound, and the jump lands inside the file,
// whatever the number's size. The first byte sets the file's length in seconds; the rest is the answer.

#include "FuzzChecks.h"
#include "support/FakePlayer.h"

LUMORA_FUZZ(input) {
    if (input.empty()) return;
    const std::string answer(input.substr(1));
    const long long seconds = PlaybackController::ParseTypedTime(answer);
    Check(std::abs(static_cast<double>(seconds)) <= PlaybackController::kMaxTypedSeconds);
    Ports p;
    p.queue.Queue().Replace("D:\\m", {{"D:\\m\\a.wma", "a.wma"}});
    test::FakeDecoder d;
    d.length = static_cast<unsigned char>(input[0]) * 1000LL;
    test::RecordingPlayerView view;
    PlaybackController player({p.queue, p.settings, p.prompts, d, nullptr, view, view, [] { return 0.0; }});
    player.PlayEntry(1);
    p.prompts.textAnswer = answer;
    player.JumpToTime();
    for (const long long ms : d.seeks) Check(ms >= 0 && ms <= d.length);
}
