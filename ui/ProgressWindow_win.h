#pragma once
// The work window of long list operations: filtering a list (its counters and the lines it drops)
// and copying files into the music library (one log line a file). It stays responsive while the
// work runs on the one UI thread: the work calls Pump() between two files, which also tells it
// whether the user pressed Cancel.
#include <windows.h>

#include <string>

namespace lumora {

class ProgressWindow {
public:
    ProgressWindow() = default;
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    // Opens the window over `owner` with `title`; the owner is disabled while it is open.
    bool Open(HWND owner, const std::string& title);
    void SetStatus(const std::string& text);
    void SetCounters(const std::string& filtered, const std::string& remaining);
    void AddLine(const std::string& line);
    // Handles waiting messages; false once the user has cancelled (or closed the window).
    bool Pump();
    bool Cancelled() const { return cancelled_; }
    // Work done: Cancel becomes Close, and the window stays until the user closes it or the
    // owner closes it with Close().
    void Finish();
    void Close();
    HWND Handle() const { return hwnd_; }

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
    void SetItem(int id, const std::string& text);

    HWND hwnd_ = nullptr;
    HWND owner_ = nullptr;
    bool cancelled_ = false;
    bool finished_ = false;
};

}  // namespace lumora
