#include "platform/MessagePump_win.h"

#include <windows.h>

#include <utility>

namespace lumora {
namespace {

int gBusyDepth = 0;  // one UI thread: no lock
std::function<bool(MSG&)> gFilter;

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
        DispatchOne(msg);
    }
    return true;
}

void SetMessageFilter(std::function<bool(MSG&)> filter) { gFilter = std::move(filter); }

void DispatchOne(MSG& msg) {
    if (gFilter && gFilter(msg)) return;
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
}

}  // namespace lumora
