// Any names: the media test judges a list line as it judges the name inside it; the queue keeps its numbering
// and its playing entry through any removes, moves and searches; the controller takes any dropped or pending
// paths. Input: names separated by "\n", then a zero byte, then operation bytes.

#include "FuzzChecks.h"
#include "playlist/MediaTest.h"
#include "playlist/QueueController.h"

LUMORA_FUZZ(input) {
    const size_t split = std::min(input.find('\0'), input.size());
    const std::string_view ops = input.substr(std::min(split + 1, input.size()));
    std::vector<std::string> names;
    std::vector<MediaEntry> entries;
    for (size_t from = 0, end = 0; end < split; from = end + 1) {
        end = std::min(input.find('\n', from), split);
        const std::string& name = names.emplace_back(input.substr(from, end - from));
        // A list line keeps the blanks and ")" at the end of the name inside, which the bare test trims or reads.
        if (!name.empty() && name.back() != ' ' && name.back() != ')') Check(IsMediaFile(ListLine(7, name)) == IsMediaFile(name));
        entries.push_back({"C:\\f\\" + name, name});
    }
    if (names.empty()) names.emplace_back();
    PlayQueue queue;
    Check(queue.Replace("C:\\f", entries) == (entries.size() <= static_cast<size_t>(kMaxQueueNames)));
    for (size_t i = 0; i + 2 < ops.size(); i += 3) {
        const int a = static_cast<std::int8_t>(ops[i + 1]), b = static_cast<std::int8_t>(ops[i + 2]);
        const std::string playing = queue.CurrentEntry() ? queue.CurrentEntry()->path : std::string();
        const int op = static_cast<unsigned char>(ops[i]) % 3, found = queue.FindFrom(a, names[static_cast<size_t>(b & 0x7f) % names.size()]);
        Check(found == 0 || (found >= a && found <= queue.Count()));
        if (op == 0) (void)queue.SetCurrent(a);
        if (op == 1) Check(queue.Remove(a) != RemoveOutcome::IsPlaying || a == queue.Current());
        if (op == 2) (void)queue.Move(a, b);
        if (op != 0 && queue.CurrentEntry()) Check(queue.CurrentEntry()->path == playing);
        CheckQueue(queue);
    }
    Ports p;
    for (const auto& name : names) p.fs.files["C:\\f\\" + name] = "";
    (void)(p.queue.AddDropped(names), p.queue.AddPending({"C:\\f"}));
    CheckQueue(p.queue.Queue());
}
