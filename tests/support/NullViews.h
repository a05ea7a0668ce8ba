#pragma once
// Views that keep what the controllers show, for unit tests, and the ones tests, fuzz targets and benchmarks
// use when they do not look at the windows.
#include <string>
#include <string_view>
#include <vector>

#include "playlist/ListFile.h"
#include "playlist/MusicLibrary.h"
#include "playlist/QueueController.h"

namespace lumora::test {

// Entries of `folder` with these names.
inline std::vector<MediaEntry> Entries(const std::string& folder, const std::vector<std::string>& names) {
    std::vector<MediaEntry> entries;
    for (const auto& name : names) entries.push_back({JoinPath(folder, name), name});
    return entries;
}

// Keeps the copy window's lines ("close" when it closed); cancels after `allowed` questions.
struct RecordingCopyView : LibraryCopyView {
    void Open(std::string_view header) override { lines.emplace_back(header); }
    void AddLine(std::string_view line) override { lines.emplace_back(line); }
    bool KeepGoing() override { return ++asked <= allowed; }
    void Close() override { lines.emplace_back("close"); }
    std::vector<std::string> lines;
    int asked = 0;
    int allowed = 1 << 30;
};

// Keeps the last lines and texts shown, the line selected and every path played.
struct RecordingQueueView : QueueView, QueuePlayer {
    void ShowLines(const std::vector<std::string>& shown) override { lines = shown; }
    void ShowTexts(const QueueTexts& shown) override { texts = shown; }
    void SelectLine(int index) override { selected = index; }
    void Play(const std::string& path) override { played.push_back(path); }
    std::vector<std::string> lines;
    QueueTexts texts;
    int selected = 0;
    std::vector<std::string> played;
};

// Keeps what the filter's progress window showed, as "open <title>", "status <text>"...; cancels after
// `allowed` questions.
struct RecordingProgress : FilterProgress {
    void Open(std::string_view title) override { events.push_back("open " + std::string(title)); }
    void ShowStatus(std::string_view text) override { events.push_back("status " + std::string(text)); }
    void ShowCounters(std::string_view filtered, std::string_view remaining) override {
        events.push_back("counters " + std::string(filtered) + " " + std::string(remaining));
    }
    void AddDroppedLine(std::string_view line) override { events.push_back("dropped " + std::string(line)); }
    bool KeepGoing() override { return ++asked <= allowed; }
    void Close() override { events.push_back("close"); }
    std::vector<std::string> events;
    int asked = 0;
    int allowed = 1 << 30;
};

using NullQueueView = RecordingQueueView;
using NullFilterProgress = RecordingProgress;

}  // namespace lumora::test
