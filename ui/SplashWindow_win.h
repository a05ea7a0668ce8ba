#pragma once
// The splash window start-up runs in: the program's name and the operating system's label.
#include <windows.h>

#include <functional>
#include <string>

namespace lumora {

class SplashWindow {
public:
    SplashWindow() = default;
    ~SplashWindow();
    SplashWindow(const SplashWindow&) = delete;
    SplashWindow& operator=(const SplashWindow&) = delete;

    bool Create();
    void SetOsLabel(const std::string& label);
    // Calls `done` once `ms` milliseconds have passed (the splash's display time).
    void StartTimer(unsigned ms, std::function<void()> done);
    void StopTimer();
    void Close();

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    HWND hwnd_ = nullptr;
    std::function<void()> done_;
};

}  // namespace lumora
