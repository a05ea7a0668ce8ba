#pragma once
// How a second start reaches the running Lumora: a message-only window of the first instance takes
// WM_COPYDATA, so each argument arrives the moment it is sent, without a poll.
#include <windows.h>

#include <functional>
#include <string_view>
#include <vector>

#include "app/HandOff.h"

namespace lumora {

class HandOffReceiver {
public:
    HandOffReceiver() = default;
    ~HandOffReceiver();
    HandOffReceiver(const HandOffReceiver&) = delete;
    HandOffReceiver& operator=(const HandOffReceiver&) = delete;

    // Opens the door; `receive` runs on this thread for every well-formed message, `lookInSlot` when a
    // start that found this instance hung has left its argument in the slot instead.
    bool Open(std::function<void(const HandOffMessage&)> receive, std::function<void()> lookInSlot);

private:
    static LRESULT CALLBACK Proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    std::function<void(const HandOffMessage&)> receive_;
    std::function<void()> lookInSlot_;
};

// Sends one message of this process to the running Lumora, waiting up to `waitMs` for its door to open
// (a first instance that started a moment ago may not have opened it yet). False when none answers.
bool SendHandOff(HandOffKind kind, std::string_view argument, DWORD waitMs);

// Posts the running Lumora a note to read the slot: it is queued, so a hung instance finds it when it
// answers again.
void PointToHandOffSlot();

// The system clock and this process's start, in the hand-off's milliseconds.
long long HandOffNowMs();
long long ThisProcessStartMs();
// The other processes of this program's file name that run now, with their start times.
std::vector<StartedProcess> OtherLumoraStarts();

}  // namespace lumora
