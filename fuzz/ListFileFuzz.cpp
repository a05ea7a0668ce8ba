// Any bytes as a list file: the reader refuses or returns only names that stay inside the list's folder, what it
// returns writes back and reads again unchanged, and loading it (with filtering, which probes every ".mp3" among
// the names with the same bytes as its contents) keeps the queue whole and numbered.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

using namespace lumora;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const ListFileRead read = ParseListFile(bytes);
    if (read.status == ListReadStatus::Ok) {
        const ListFileData& list = read.list;
        Check(HasEditionMarker(list.header) && !list.folder.empty() && list.names.size() <= kMaxListNames);
        for (const std::string& name : list.names) {
            Check(IsSafeListName(name) && name.find_first_of("\\/") == std::string::npos);
        }
        const std::string again = EncodeListFile(ListKind::Main, list.flag == "1", list.folder, list.names);
        if (!again.empty()) {
            const ListFileRead back = ParseListFile(again);
            Check(back.status == ListReadStatus::Ok && back.list.folder == list.folder &&
                  back.list.names == list.names && back.list.countText == std::to_string(list.names.size()));
        } else {
            Check(!FirstUnstorableText(list.folder, list.names).empty());
        }
    }

    test::FakeFileSystem fs;
    test::FakePrompts prompts;
    SettingsStore settings;
    test::NullQueueView view;
    test::NullFilterProgress progress;
    fs.files["C:\\l.qlb"] = std::string(bytes);
    fs.drives['D'] = DriveKind::Removable;  // every list on D: is filtered
    if (read.status == ListReadStatus::Ok) {
        // Enough files to exercise the probe without holding a copy of a large input per name.
        const std::string contents(bytes.substr(0, 2 * kMpegProbeBytes));
        for (size_t i = 0; i < read.list.names.size() && i < 64; ++i) {
            fs.files[JoinPath(read.list.folder, read.list.names[i])] = contents;
        }
    }
    QueueController queue(prompts, fs, view, view);
    ListFileController lists(prompts, fs, settings, queue, progress);
    const AddOutcome outcome = lists.LoadListFile("C:\\l.qlb");
    const PlayQueue& q = queue.Queue();
    Check((outcome == AddOutcome::Playing) == (q.Count() > 0));
    Check(q.Count() <= kMaxQueueNames && (q.Current() == 0) == (q.Count() == 0));
    for (int i = 1; i <= q.Count(); ++i) Check(q.EntryAt(i)->path == JoinPath(q.Folder(), q.EntryAt(i)->name));
    return 0;
}
