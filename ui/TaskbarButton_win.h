#pragma once
// The main window's taskbar button on Windows 7 and later: the playing file's progress, and the
// thumbnail buttons previous, play/pause and next, which click the main window's own buttons.
// Where the taskbar has no such interface (XP, Wine) nothing is shown and nothing fails.
#include <windows.h>

struct ITaskbarList3;

namespace lumora {

class TaskbarButton {
public:
    TaskbarButton() = default;
    ~TaskbarButton();
    TaskbarButton(const TaskbarButton&) = delete;
    TaskbarButton& operator=(const TaskbarButton&) = delete;

    // The taskbar made the window's button ("TaskbarButtonCreated"), or Explorer started again
    // ("TaskbarCreated"): the interface is taken afresh and the buttons and progress are put back.
    void Attach(HWND window);
    enum class State { Idle, Playing, Paused };
    // `permille` of the file played.
    void Show(State state, int permille);

private:
    void Release();
    void PutButtons(bool add);
    void PutProgress();

    HWND window_ = nullptr;
    ITaskbarList3* list_ = nullptr;
    HICON icons_[4] = {};  // previous, play, pause, next; drawn once, at the small icon size
    State state_ = State::Idle;
    int permille_ = 0;
};

}  // namespace lumora
