#pragma once
// The work window of long list operations: filtering a list (its counters and the lines it drops)
// and copying files into the music library (one log line a file). It stays responsive while the
// work runs on the one UI thread: the work calls Pump() between two files, which also tells it
// whether the user pressed Cancel.
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "playlist/ListFile.h"
#include "playlist/MusicLibrary.h"

#include "platform/MessagePump_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

class ProgressWindow final : public WindowBase<ProgressWindow> {
public:
    ProgressWindow() = default;
    ~ProgressWindow();

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

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void SetItem(int id, const std::string& text);
    // Places the controls and sets their font for `dpi_`.
    void Layout();

    HWND owner_ = nullptr;
    int dpi_ = 96;
    bool cancelled_ = false;
    bool finished_ = false;
    std::optional<BusyScope> busy_;  // from Open until the work is finished
};

// The progress window of a list filtering run.
class FilterWindow final : public FilterProgress {
public:
    explicit FilterWindow(std::function<HWND()> owner) : owner_(std::move(owner)) {}
    void Open(std::string_view title) override { window_.Open(owner_(), std::string(title)); }
    void ShowStatus(std::string_view text) override { window_.SetStatus(std::string(text)); }
    void ShowCounters(std::string_view filtered, std::string_view remaining) override {
        window_.SetCounters(std::string(filtered), std::string(remaining));
    }
    void AddDroppedLine(std::string_view line) override { window_.AddLine(std::string(line)); }
    bool KeepGoing() override { return window_.Pump(); }
    void Close() override { window_.Close(); }

private:
    std::function<HWND()> owner_;
    ProgressWindow window_;
};

// The copy window of adding every file to the music library: a log the user reads afterwards.
class CopyLogWindow final : public LibraryCopyView {
public:
    explicit CopyLogWindow(std::function<HWND()> owner) : owner_(std::move(owner)) {}
    void Open(std::string_view header) override;
    void AddLine(std::string_view line) override { window_.AddLine(std::string(line)); }
    bool KeepGoing() override { return window_.Pump(); }
    void Close() override { window_.Finish(); }

private:
    std::function<HWND()> owner_;
    ProgressWindow window_;
};

}  // namespace lumora
