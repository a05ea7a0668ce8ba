#pragma once
// The "音频\歌词显示" window's lyrics: loads the lyrics of the file that starts playing through the
// lyrics lookup, and on every progress tick hands the two lines for the elapsed time to the window. The
// window (ui/) only sets its two labels and lays them out again.
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/LyricsLookup.h"
#include "mediainfo/LyricsTiming.h"

namespace lumora {

class FileSystem;
class SettingsStore;

class LyricsView {
public:
    virtual ~LyricsView() = default;
    // The two lyrics labels: the line reached and the next one. Either may hold several lines joined
    // with CR LF (lines with the same stamp, or a line wrapped at the Gc1Long limit), or be empty.
    // Called only when the texts change.
    virtual void ShowLyricsLines(std::string_view first, std::string_view second) = 0;
};

class LyricsDisplay {
public:
    // Reads its options at every load and tick: the timing correction and "纠错" (opt::kLyricsTimingCorrection,
    // opt::kRepairMediaInfo) for the lookup, the display offset (opt::kLyricsOffset) for the lines.
    LyricsDisplay(FileSystem& fs, LyricsView& view, const SettingsStore& settings)
        : fs_(fs), view_(view), settings_(settings) {}

    // A file starts: finds its lyrics and builds the timed list, replacing the last file's. The labels
    // are emptied. True when the file has lyrics (the opt::kAutoOpenLyricsWindow/opt::kAutoCloseLyricsWindow options
    // open or close the window by it).
    bool Load(const std::string& mediaPath);
    // No file any more: lists dropped, labels emptied.
    void Clear();
    bool HasLyrics() const { return !lyrics_.Empty(); }
    // Where the lyrics came from, for the window's caption or a menu.

    // The progress tick or the decoder's position event: `elapsedMs` played. The lines are those of the
    // whole seconds of the played time plus the offset (half seconds; positive shows them earlier), not
    // below 0. Shows the two lines when they differ from what is shown; otherwise does nothing.
    void Tick(long long elapsedMs);

    // Gc1Long (ParseLineByteLimit of the stored value). Takes effect at the next tick.
    void SetLineByteLimit(int bytes);

private:
    void Show(const DisplayLines& lines);

    FileSystem& fs_;
    LyricsView& view_;
    const SettingsStore& settings_;
    TimedLyrics lyrics_;
    std::optional<DisplayLines> shown_;  // what the labels hold; empty before anything was shown
    int lineByteLimit_ = 0;
};

}  // namespace lumora
