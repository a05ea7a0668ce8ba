// Any bytes as a list file: the reader refuses or returns only names that stay inside the list's folder, what
// it returns writes back and reads again unchanged, and loading it (filtered: every name holds the input's
// first bytes, so ".mp3" names are probed) keeps the queue whole and numbered.
#include "FuzzChecks.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

using namespace lumora;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view bytes = fuzz::Bytes(data, size);
    const ListFileRead read = ParseListFile(bytes);
    test::FakeFileSystem fs;
    if (read.status == ListReadStatus::Ok) {
        const ListFileData& list = read.list;
        Check(HasEditionMarker(list.header) && !list.folder.empty() && list.names.size() <= kMaxListNames);
        for (const std::string& name : list.names) {
            Check(IsSafeListName(name) && name.find_first_of("\\/") == std::string::npos);
        }
        const std::string again = EncodeListFile(ListKind::Main, list.flag == "1", list.folder, list.names);
        const ListFileRead back = ParseListFile(again);
        Check(again.empty() ? !FirstUnstorableText(list.folder, list.names).empty()
                            : back.status == ListReadStatus::Ok && back.list.folder == list.folder &&
                                  back.list.names == list.names &&
                                  back.list.countText == std::to_string(list.names.size()));
        const std::string contents(bytes.substr(0, 2 * kMpegProbeBytes));
        for (size_t i = 0; i < list.names.size() && i < 64; ++i) fs.files[JoinPath(list.folder, list.names[i])] = contents;
    }
    test::FakePrompts prompts;
    SettingsStore settings;
    test::NullQueueView view;
    test::NullFilterProgress progress;
    fs.files["C:\\l.qlb"] = std::string(bytes);
    fs.drives['D'] = DriveKind::Removable;  // every list on D: is filtered
    QueueController queue(prompts, fs, view, view);
    ListFileController lists(prompts, fs, settings, queue, progress);
    const AddOutcome outcome = lists.LoadListFile("C:\\l.qlb");
    const PlayQueue& q = queue.Queue();
    fuzz::CheckQueue(q);
    Check((outcome == AddOutcome::Playing) == (q.Count() > 0));
    for (int i = 1; i <= q.Count(); ++i) Check(q.EntryAt(i)->path == JoinPath(q.Folder(), q.EntryAt(i)->name));
    return 0;
}
