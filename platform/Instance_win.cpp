#include "platform/Instance_win.h"

#include "platform/HandOff_win.h"

namespace lumora {
namespace {

// How long a start waits for the running instance's door; it opens right after the instance's mutex.
constexpr DWORD kDoorWaitMs = 3000;

}  // namespace

WinInstanceProbe::WinInstanceProbe() {
    // One name for every session of the machine's user; "Local\" keeps users apart on a
    // terminal server while two starts from the same desktop still meet.
    mutex_ = CreateMutexW(nullptr, FALSE, L"Local\\Lumora.Player.Instance");
    another_ = mutex_ != nullptr && GetLastError() == ERROR_ALREADY_EXISTS;
}

WinInstanceProbe::~WinInstanceProbe() {
    if (mutex_) CloseHandle(mutex_);
}

bool WinInstanceProbe::HandOver(std::string_view argument) {
    return SendHandOff(HandOffKind::Argument, argument, kDoorWaitMs);
}

void WinInstanceProbe::PointToSlot() { PointToHandOffSlot(); }

void WinInstanceProbe::Withdraw() {
    if (another_) SendHandOff(HandOffKind::Withdraw, {}, 0);
}

}  // namespace lumora
