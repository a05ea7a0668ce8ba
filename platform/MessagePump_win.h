#pragma once
// The one nested message pump and the one busy state. Work that runs long on the UI thread (a list
// filter, a library copy, waiting for another program) lets messages through it, so windows repaint
// and Cancel works; while it runs, the program is busy, and the main window's commands and its
// hand-off poll wait until it is done rather than start something inside it.
#include <windows.h>

#include <functional>

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

// Sees every message of the main loop and of the nested pump before it is translated, and answers
// true for one it took (a key the program runs a command for). Empty: none is taken.
void SetMessageFilter(std::function<bool(MSG&)> filter);
// Translates and dispatches one message the filter did not take.
void DispatchOne(MSG& msg);

}  // namespace lumora
