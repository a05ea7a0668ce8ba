#pragma once
// Views that take what the controllers show and drop it: for tests, fuzz targets and benchmarks
// that drive the playlist code without looking at its windows.
#include <string>
#include <string_view>
#include <vector>

#include "playlist/ListFile.h"
#include "playlist/MusicLibrary.h"
#include "playlist/QueueController.h"

namespace lumora::test {

class NullQueueView : public QueueView, public QueuePlayer {
public:
    void ShowLines(const std::vector<std::string>&) override {}
    void ShowTexts(const QueueTexts&) override {}
    void SelectLine(int) override {}
    void Play(const std::string&) override {}
};

class NullFilterProgress : public FilterProgress {
public:
    void Open(std::string_view) override {}
    void ShowStatus(std::string_view) override {}
    void ShowCounters(std::string_view, std::string_view) override {}
    void AddDroppedLine(std::string_view) override {}
    bool KeepGoing() override { return true; }
    void Close() override {}
};

class NullCopyView : public LibraryCopyView {
public:
    void Open(std::string_view) override {}
    void AddLine(std::string_view) override {}
    bool KeepGoing() override { return true; }
    void Close() override {}
};

}  // namespace lumora::test
