#pragma once
// What other starts hand to the running Lumora. Selecting twenty files in Explorer and pressing Enter
// starts twenty Lumoras at once, each with one file: the starts made together (each within half a
// second of another) are one open, so the queue is replaced once, by all of their files, and nothing is
// lost to a start that came second.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class SettingsStore;

enum class HandOffKind : unsigned {
    Argument = 2,  // a start's command tail ("*" for none)
    Withdraw = 3,  // a start that hands nothing over after all (it runs on its own, or showed help)
};

// Times are milliseconds on the system clock, as process start times are given.
struct HandOffMessage {
    HandOffKind kind = HandOffKind::Argument;
    unsigned long process = 0;
    long long startedMs = 0;  // when the sending process started
    std::string argument;     // UTF-8
};

// A message's bytes: the process id (4 bytes) and start time (8 bytes), little-endian, then the argument.
std::string EncodeHandOff(const HandOffMessage& message);
// Nothing for an unknown kind or a message too short for its fixed fields.
std::optional<HandOffMessage> DecodeHandOff(unsigned kind, std::string_view bytes);

// Another Lumora process that runs now.
struct StartedProcess {
    unsigned long id = 0;
    long long startedMs = 0;
};

struct HandOffAction {
    std::vector<std::string> open;  // the arguments to open as one, as they were handed over
    bool bringToFront = false;
};

class HandOffBatch {
public:
    // Starts this close together are one open.
    static constexpr long long kTogetherMs = 500;
    // No batch waits longer than this after its last message for a start that has not spoken yet and
    // still runs (one that shows a box, say); slow starts that keep arriving keep it open.
    static constexpr long long kLongestWaitMs = 5000;

    void Receive(const HandOffMessage& message, long long nowMs);
    // While true the caller asks Ready again a little later.
    bool Collecting() const { return !heard_.empty(); }
    // Whether any of `running` started together with a start made at `startedMs`: one that may still
    // hand something over.
    static bool StartedTogether(long long startedMs, const std::vector<StartedProcess>& running);
    // The batch, once no process of `running` that started together with its starts is still to be heard
    // from and no further start can join it; the next batch then starts empty. Taken only while
    // "使用同一播放器" is on; "L66" also brings the window back for files.
    std::optional<HandOffAction> Ready(long long nowMs, const SettingsStore& settings,
                                       const std::vector<StartedProcess>& running);

private:
    std::vector<HandOffMessage> heard_;  // every message of this batch, in arrival order
    long long lastHeardMs_ = 0;
};

}  // namespace lumora
