#include "platform/MessagePump_win.h"

#include <windows.h>

namespace lumora {
namespace {

int gBusyDepth = 0;  // one UI thread: no lock

}  // namespace

BusyScope::BusyScope() { ++gBusyDepth; }
BusyScope::~BusyScope() { --gBusyDepth; }

bool IsBusy() { return gBusyDepth > 0; }

bool PumpWaitingMessages() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(msg.wParam));
            return false;
        }
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return true;
}

}  // namespace lumora
