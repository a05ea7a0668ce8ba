#pragma once
// Decoder 2: the media engine, with its frames turned into milliseconds.
#include <cstdint>
#include <functional>
#include <string>

#include "playback/Decoder.h"
#include "playback/MediaEngine.h"

namespace lumora {

// How long a still picture stays before the queue goes on, as a file of that length would: five
// seconds, long enough to look at a photo, short enough for a slide show.
inline constexpr long long kPictureShowMs = 5000;

class EngineDecoder final : public Decoder {
public:
    // `clockMs` is a millisecond counter that may wrap (the system's tick count).
    EngineDecoder(MediaEngine& engine, WindowId videoWindow, std::function<std::uint32_t()> clockMs = {})
        : engine_(engine), videoWindow_(videoWindow), clockMs_(std::move(clockMs)) {}
    void SetVideoWindow(WindowId window) { videoWindow_ = window; }
    // Asked before a file goes to the system: false keeps it from there (see HeaderCheck.h).
    void SetHeadCheck(std::function<bool(const std::string&)> check) { headCheck_ = std::move(check); }
    // Asked at every open: "解码倒制" (MediaEngine::OpenDispatch's `filtersFirst`), so a change counts from the
    // next file on.
    void SetFiltersFirst(std::function<bool()> on) { filtersFirst_ = std::move(on); }

    bool Open(const std::string& path) override;
    bool Pause() override;
    bool Resume() override;
    void Stop() override;
    void Close() override;
    long long PositionMs() override;
    long long LengthMs() override { return lengthMs_; }
    bool Seek(long long ms) override;
    bool PlayRange(long long fromMs, long long toMs) override;
    bool SetSpeed(int percent) override;
    bool Finished() override;
    // The level of the device's own sound, 0 … 20; kept for the files opened later.
    void SetVolume(int level);

private:
    long long ToUnits(long long ms) const;
    long long ToMs(long long units) const;

    // The shown time of a picture (or of a movie whose control says nothing): kept while paused.
    long long ShownMs() const;
    void ShowFrom(long long ms);

    MediaEngine& engine_;
    WindowId videoWindow_;
    std::function<std::uint32_t()> clockMs_;
    long long shownBeforeMs_ = 0;   // shown time up to the last pause or seek
    std::uint32_t shownSince_ = 0;  // the clock when it last went on
    bool shownPaused_ = false;
    long long lengthMs_ = -1;
    long long rangeEndUnits_ = -1;  // the end of the play range, -1 for the file's end
    bool noTimeline_ = false;  // a still picture or a Flash movie: shown, not played on a time line
    int volume_ = 20;
    std::string path_;   // the open file, opened again to play a range once more
    bool ended_ = false;  // Finished() said so: the device is at the end of the file or range
    long long lastPosition_ = -1;  // at the last Finished() question, in a range
    int stalledPolls_ = 0;         // questions since which it has not moved
    std::function<bool(const std::string&)> headCheck_;
    std::function<bool()> filtersFirst_;
    bool openedFiltersFirst_ = false;  // how the open file was opened: opened again the same way
};

}  // namespace lumora
