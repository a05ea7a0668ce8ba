#pragma once
// The media information editor: the queue's files on the left, the six items of the chosen one on
// the right, with save, QGC export and import, the read-only check box and the time-track shift.
// It shows and forwards; InfoEditor decides and says everything.
#include <windows.h>

#include <string>
#include <vector>

namespace lumora {

class FileHolder;
class FileSystem;

struct InfoEditorFile {
    std::string line;  // as the playlist shows it: "001-(name)"
    std::string path;
};

class InfoEditorDialog {
public:
    // Fields in: the files to offer and the one to take first (-1: none).
    std::vector<InfoEditorFile> files;
    int first = -1;
    // Lumora's hold on the files (the playing device); null: none.
    FileHolder* holder = nullptr;

    // Modal over `owner`.
    void Run(HWND owner, FileSystem& fs);
};

}  // namespace lumora
