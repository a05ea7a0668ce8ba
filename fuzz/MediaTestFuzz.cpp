// Any names: the media test never fails and judges a list line as it judges the name inside it; the queue
// keeps its numbering and its playing entry through any removes, moves and searches; the controller takes
// any dropped or pending paths without crashing.
// Input: names separated by "\n", then a zero byte, then operation bytes.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "playlist/MediaTest.h"
#include "playlist/PlayQueue.h"
#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

using namespace lumora;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

void CheckQueue(const PlayQueue& queue) {
    Check((queue.Current() == 0) == (queue.Count() == 0));
    Check(queue.Current() >= 0 && queue.Current() <= queue.Count());
    Check(queue.Count() <= kMaxQueueNames);
    const auto lines = queue.Lines();
    Check(lines.size() == static_cast<size_t>(queue.Count()));
    for (int i = 1; i <= queue.Count(); ++i) {
        Check(lines[static_cast<size_t>(i - 1)] == ListLine(i, queue.EntryAt(i)->name));
    }
    Check(!queue.Texts().playingPanel.empty());
}

void CheckMediaTest(const std::string& name) {
    const bool media = IsMediaFile(name);
    std::string upper = name;
    for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    Check(IsMediaFile(upper) == media);
    // A list line keeps the blanks and ")" at the end of the name inside, which the bare test trims or reads.
    if (!name.empty() && name.back() != ' ' && name.back() != ')') Check(IsMediaFile(ListLine(7, name)) == media);
    (void)IsRegularPath(name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const size_t split = input.find('\0');
    std::string_view namesText = input.substr(0, split);
    const std::string_view ops = split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    std::vector<std::string> names;
    while (true) {
        const size_t end = namesText.find('\n');
        names.emplace_back(namesText.substr(0, end));
        if (end == std::string_view::npos) break;
        namesText.remove_prefix(end + 1);
    }
    std::vector<MediaEntry> entries;
    for (const auto& name : names) {
        CheckMediaTest(name);
        entries.push_back({"C:\\f\\" + name, name});
    }

    PlayQueue queue;
    Check(queue.Replace("C:\\f", entries) == (entries.size() <= static_cast<size_t>(kMaxQueueNames)));
    CheckQueue(queue);
    for (size_t i = 0; i + 2 < ops.size(); i += 3) {
        const int a = static_cast<std::int8_t>(ops[i + 1]);
        const int b = static_cast<std::int8_t>(ops[i + 2]);
        const MediaEntry* playing = queue.CurrentEntry();
        const std::string playingPath = playing ? playing->path : std::string();
        switch (static_cast<unsigned char>(ops[i]) % 4) {
            case 0:
                (void)queue.SetCurrent(a);
                break;
            case 1:
                Check(queue.Remove(a) != RemoveOutcome::IsPlaying || a == queue.Current());
                break;
            case 2:
                (void)queue.Move(a, b);
                break;
            default: {
                const int found = queue.FindFrom(a, names[static_cast<size_t>(b & 0x7f) % names.size()]);
                Check(found == 0 || (found >= a && found <= queue.Count()));
                break;
            }
        }
        if (static_cast<unsigned char>(ops[i]) % 4 != 0 && queue.CurrentEntry()) {
            Check(queue.CurrentEntry()->path == playingPath);
        }
        CheckQueue(queue);
    }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView view;
    QueueController controller(prompts, fs, view, view);
    std::vector<std::string> paths;
    for (const auto& name : names) {
        fs.files["C:\\f\\" + name] = "";
        paths.push_back(name);
    }
    (void)controller.AddDropped(paths);
    (void)controller.AddPending(paths);
    (void)controller.AddPending({"C:\\f"});
    CheckQueue(controller.Queue());
    prompts.textAnswer = names.front();
    (void)controller.MoveEntry(1);
    (void)controller.FindFromCurrent();
    (void)controller.RemoveEntry(2);
    CheckQueue(controller.Queue());
    return 0;
}
