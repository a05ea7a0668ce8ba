#pragma once
// The splash window start-up runs in: the program's name and the operating system's label.
#include <windows.h>

#include <functional>
#include <string>

#include "ui/WindowBase_win.h"

namespace lumora {

class SplashWindow final : public WindowBase<SplashWindow> {
public:
    SplashWindow() = default;
    ~SplashWindow();

    bool Create();
    void SetOsLabel(const std::string& label);
    // Calls `done` once `ms` milliseconds have passed (the splash's display time).
    void StartTimer(unsigned ms, std::function<void()> done);
    void StopTimer();
    void Close();

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    std::function<void()> done_;
    int dpi_ = 96;
};

}  // namespace lumora
