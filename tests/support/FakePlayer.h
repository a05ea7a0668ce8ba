#pragma once
// A decoder tests drive by hand (position and the end of the file are set, never waited for), and a view that
// keeps what the playback controller shows.
#include <string>
#include <utility>
#include <vector>

#include "playback/PlaybackController.h"

namespace lumora::test {

struct FakeDecoder : Decoder {
    bool Open(const std::string& path) override {
        opened.push_back(path);
        position = 0;
        finished = paused = false;
        return opens && path.find("bad") == std::string::npos;
    }
    bool Pause() override { return paused = true; }
    bool Resume() override { return !(paused = false); }
    void Stop() override { finished = true; }
    void Close() override { ++closes; }
    long long PositionMs() override { return position; }
    long long LengthMs() override { return length; }
    bool Seek(long long ms) override { return seeks.push_back(position = ms), true; }
    bool PlayRange(long long from, long long to) override {
        ranges.emplace_back(position = from, to);
        return rangeWorks && !(finished = false);
    }
    bool SetSpeed(int percent) override { return speeds.push_back(percent), speedWorks; }
    bool Finished() override { return finished; }

    std::vector<std::string> opened;
    std::vector<long long> seeks;
    std::vector<std::pair<long long, long long>> ranges;
    std::vector<int> speeds;
    long long position = 0, length = 200000;
    int closes = 0;
    bool finished = false, paused = false, speedWorks = true, rangeWorks = true, opens = true;
};

struct RecordingPlayerView : PlaybackView, VolumeControl {
    void ShowPlayback(const PlaybackTexts& t) override { last = t; }
    void FileOpened(const std::string&) override { fileShown = true; }
    void FileClosed() override { fileShown = false; }
    void SetLevel(int level) override { levels.push_back(level); }
    PlaybackTexts last;
    std::vector<int> levels;
    bool fileShown = false;  // the panels describe an open file
};

}  // namespace lumora::test
