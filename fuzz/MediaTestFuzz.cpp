// Any names: the media test judges a list line as it judges the name inside it; the queue keeps its numbering
// and its playing entry through any removes, moves and searches; the controller takes any dropped or pending
// paths. Input: names separated by "\n", then a zero byte, then operation bytes.
#include <vector>

#include "FuzzChecks.h"
#include "playlist/MediaTest.h"
#include "playlist/QueueController.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

using namespace lumora;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view input = fuzz::Bytes(data, size);
    const size_t split = input.find('\0');
    std::string_view namesText = input.substr(0, split);
    const std::string_view ops = split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    std::vector<std::string> names;
    std::vector<MediaEntry> entries;
    for (bool more = true; more;) {
        const size_t end = namesText.find('\n');
        const std::string& name = names.emplace_back(namesText.substr(0, end));
        more = end != std::string_view::npos;
        if (more) namesText.remove_prefix(end + 1);
        std::string upper = name;
        for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        Check(IsMediaFile(upper) == IsMediaFile(name));
        // A list line keeps the blanks and ")" at the end of the name inside, which the bare test trims or reads.
        if (!name.empty() && name.back() != ' ' && name.back() != ')') {
            Check(IsMediaFile(ListLine(7, name)) == IsMediaFile(name));
        }
        (void)IsRegularPath(name);
        entries.push_back({"C:\\f\\" + name, name});
    }

    PlayQueue queue;
    Check(queue.Replace("C:\\f", entries) == (entries.size() <= static_cast<size_t>(kMaxQueueNames)));
    fuzz::CheckQueue(queue);
    for (size_t i = 0; i + 2 < ops.size(); i += 3) {
        const int a = static_cast<std::int8_t>(ops[i + 1]);
        const int b = static_cast<std::int8_t>(ops[i + 2]);
        const std::string playing = queue.CurrentEntry() ? queue.CurrentEntry()->path : std::string();
        const int op = static_cast<unsigned char>(ops[i]) % 4;
        if (op == 0) (void)queue.SetCurrent(a);
        if (op == 1) Check(queue.Remove(a) != RemoveOutcome::IsPlaying || a == queue.Current());
        if (op == 2) (void)queue.Move(a, b);
        if (op == 3) {
            const int found = queue.FindFrom(a, names[static_cast<size_t>(b & 0x7f) % names.size()]);
            Check(found == 0 || (found >= a && found <= queue.Count()));
        }
        if (op != 0 && queue.CurrentEntry()) Check(queue.CurrentEntry()->path == playing);
        fuzz::CheckQueue(queue);
    }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView view;
    QueueController controller(prompts, fs, view, view);
    for (const auto& name : names) fs.files["C:\\f\\" + name] = "";
    (void)controller.AddDropped(names);
    (void)controller.AddPending(names);
    (void)controller.AddPending({"C:\\f"});
    fuzz::CheckQueue(controller.Queue());
    prompts.textAnswer = names.front();
    (void)controller.MoveEntry(1);
    (void)controller.FindFromCurrent();
    (void)controller.RemoveEntry(2);
    fuzz::CheckQueue(controller.Queue());
    return 0;
}
