// Any bytes as a list file: the reader refuses or returns only names that stay inside the list's folder, what
// it returns writes back and reads again unchanged, and loading it (filtered: every name holds the input's
// first bytes, so ".mp3" names are probed) keeps the queue whole and numbered.
#include "FuzzChecks.h"
#include "playlist/ListFile.h"
#include "playlist/ListFileController.h"

LUMORA_FUZZ(bytes) {
    const ListFileRead read = ParseListFile(bytes);
    const ListFileData& list = read.list;
    Ports p;
    if (read.status == ListReadStatus::Ok) {
        Check(HasEditionMarker(list.header) && !list.folder.empty() && list.names.size() <= kMaxListNames);
        for (const std::string& name : list.names) Check(IsSafeListName(name) && name.find_first_of("\\/") == name.npos);
        const std::string again = EncodeListFile(ListKind::Main, list.flag == "1", list.folder, list.names);
        const ListFileRead back = ParseListFile(again);
        Check(again.empty() ? !FirstUnstorableText(list.folder, list.names).empty()
                            : back.status == ListReadStatus::Ok && back.list.folder == list.folder && back.list.names == list.names);
        const std::string head(bytes.substr(0, 2 * kMpegProbeBytes));
        for (size_t i = 0; i < list.names.size() && i < 64; ++i) p.fs.files[JoinPath(list.folder, list.names[i])] = head;
    }
    p.fs.files["C:\\l.qlb"] = std::string(bytes);
    p.fs.drives['D'] = DriveKind::Removable;  // every list on D: is filtered
    ListFileController lists(p.prompts, p.fs, p.settings, p.queue, p.progress);
    Check((lists.LoadListFile("C:\\l.qlb") == AddOutcome::Playing) == (p.queue.Queue().Count() > 0));
    CheckQueue(p.queue.Queue());
}
