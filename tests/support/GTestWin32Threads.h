// Force-included into GoogleTest and the tests on Windows builds. GoogleTest 1.12 builds its
// Notification on std::mutex, which the win32 thread model of MinGW-w64 lacks; that model is
// the one that keeps Lumora free of winpthread, whose Debian build needs Vista (GetTickCount64).
#pragma once
#ifdef __cplusplus
#define GTEST_HAS_NOTIFICATION_ 1
#include <windows.h>

namespace testing::internal {

class Notification {
public:
    Notification() : event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    ~Notification() { CloseHandle(event_); }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;
    void Notify() { SetEvent(event_); }
    void WaitForNotification() { WaitForSingleObject(event_, INFINITE); }

private:
    HANDLE event_;
};

}  // namespace testing::internal
#endif
