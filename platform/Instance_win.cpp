#include "platform/Instance_win.h"

namespace lumora {

WinInstanceProbe::WinInstanceProbe() {
    // One name for every session of the machine's user; "Local\" keeps users apart on a
    // terminal server while two starts from the same desktop still meet.
    mutex_ = CreateMutexW(nullptr, FALSE, L"Local\\Lumora.Player.Instance");
    another_ = mutex_ != nullptr && GetLastError() == ERROR_ALREADY_EXISTS;
}

WinInstanceProbe::~WinInstanceProbe() {
    if (mutex_) CloseHandle(mutex_);
}

}  // namespace lumora
