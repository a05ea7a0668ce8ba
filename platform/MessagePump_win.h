#pragma once
// The one nested message pump and the one busy state. Work that runs long on the UI thread (a list
// filter, a library copy, waiting for another program) lets messages through it, so windows repaint
// and Cancel works; while it runs, the program is busy, and the main window's commands and its
// hand-off poll wait until it is done rather than start something inside it.

namespace lumora {

// Marks the program busy for its lifetime; scopes nest.
class BusyScope {
public:
    BusyScope();
    ~BusyScope();
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
};

bool IsBusy();

// Dispatches the messages waiting. A quit message ends the pump and is posted again, so that the
// main loop still sees it: false then.
bool PumpWaitingMessages();

}  // namespace lumora
