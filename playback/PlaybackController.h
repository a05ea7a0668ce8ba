#pragma once
// The playback controller: what plays and how. Transport commands, the four play modes, the A-B
// segment, speed and volume, the advance at the end of a file and the handling of a file that
// cannot be played. Its state is the texts the main window shows, and its decisions compare them.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "mediainfo/InfoEditor.h"
#include "playback/Decoder.h"
#include "playlist/PlayQueue.h"
#include "ports/VolumeControl.h"

namespace lumora {

class Prompts;
class QueueController;
class SettingsStore;

inline constexpr std::string_view kModePrefix = "播放方式";
inline constexpr std::string_view kSegmentPrefix = "选段播放";
inline constexpr std::string_view kSuffixNormal = "：正常";
inline constexpr std::string_view kSuffixRepeatOne = "：单曲循环";
inline constexpr std::string_view kSuffixRepeatAll = "：全部循环";
inline constexpr std::string_view kSuffixRandom = "：随机";
// The status line when a command needs a file and the queue is empty; also the neighbour buttons' tips then.
inline constexpr std::string_view kNoFileToPlay = "现在无文件播放";
inline constexpr std::string_view kSegmentIdleTip = "当前没有选段播放。\r\n选择文件的一段进行循环播放。选择A点的位置。";

enum class PlayMode { Normal, RepeatOne, RepeatAll, Random };
enum class TimeMode { Elapsed, Remaining };

// The texts the states show, one function each.
std::string_view ModeSuffix(PlayMode mode);
// kModePrefix and the mode's suffix; kSegmentPrefix alone while a segment is being chosen.
std::string ModeLabel(PlayMode mode, bool choosingSegment);
std::string_view PlayCaption(bool playing);
std::string_view TimeModeArrow(TimeMode mode);
std::string_view SegmentButtonText(bool choosingSegment);

// The status line's volume report, "当前音量为：100%" for level 20; also what it shows at start.
std::string VolumeStatusText(int level);
// A notice on the status line (the speed a format refuses, the volume) outlives this many progress ticks, a
// few seconds, before the progress report takes the line back.
inline constexpr int kNoticeTicks = 12;

struct PlaybackTexts {
    std::string playCaption{PlayCaption(false)};
    std::string modeLabel = ModeLabel(PlayMode::Normal, false);
    std::string modeSuffix{ModeSuffix(PlayMode::Normal)};
    std::string segmentButton{SegmentButtonText(false)};
    std::string segmentA = "A=N/A";
    std::string segmentB = "B=N/A";
    std::string segmentTip{kSegmentIdleTip};
    std::string timeMode{TimeModeArrow(TimeMode::Elapsed)};
    std::string time = "00:00:00";
    std::string percent = "0%";
    std::string progressLine;                  // "播放的进度为：…  时间为：…"
    std::string totalTime;                     // TotalTimeText of the length
    std::string statusLine = VolumeStatusText(20);
    std::string title{kNoFileTitle};
    std::string speedTip;
    std::string volumeTip;
    int progress = 0;                          // the slider, 0 … 1000
    int speed = 100;
    int volume = 20;
    bool backForwardEnabled = true;
    bool operator==(const PlaybackTexts&) const = default;
};

class PlaybackView {
public:
    virtual ~PlaybackView() = default;
    virtual void ShowPlayback(const PlaybackTexts& texts) = 0;
    // A file has just been opened and plays (the video window and the stream panel follow it).
    virtual void FileOpened(const std::string& path) = 0;
    // Playback stopped, or a file could not be played: the tag line and the stream panel go back
    // to their empty texts.
    virtual void FileClosed() = 0;
};

// Uniform draws in [0, 1) from a generator seeded once: every draw is new, however close together
// they come (the clock's tick would repeat itself within one tick).
std::function<double()> SeededDraws(std::uint64_t seed);

struct PlaybackDeps {
    QueueController& queue;
    const SettingsStore& settings;
    Prompts& prompts;
    Decoder& decoder2;
    Decoder* decoder1;  // null until the audio player exists on this system
    VolumeControl& volume;
    PlaybackView& view;
    std::function<double()> random;  // uniform in [0, 1)
};

class PlaybackController final : public FileHolder {
public:
    explicit PlaybackController(PlaybackDeps deps);

    const PlaybackTexts& Texts() const { return texts_; }
    bool IsPlaying() const { return playing_; }
    // A file is open and neither stopped nor at its end (playing or paused).
    bool FilePlays() { return decoder_ != nullptr && !stopped_ && (playing_ || !decoder_->Finished()); }
    // Decoder 1 (the audio player, with the audio display) holds the current file.
    // The current position, -1 when nothing is open.
    long long PositionMs() const { return decoder_ ? decoder_->PositionMs() : -1; }
    long long LengthMs() const { return decoder_ ? decoder_->LengthMs() : -1; }
    bool UsingDecoder1() const { return decoder_ != nullptr && decoder_ == deps_.decoder1; }

    // Opens the queue's current entry (its full path) and plays it.
    void OpenAndPlay(const std::string& path);
    void PlayPause();
    void Stop();
    void Previous();
    void Next();
    void Back();
    void Forward();
    void JumpToTime();
    // The progress slider was dropped at `permille` of the file.
    void SeekToPermille(int permille);
    void PlayEntry(int index);

    void SetNormal();
    void ToggleLoop();
    void SetRandom();
    void ToggleTimeMode();
    // The time label's mode kept between runs (opt::kTimeLabelMode, "1" remaining), applied at start.
    void RestoreTimeMode();
    bool ShowsRemaining() const { return timeMode_ == TimeMode::Remaining; }

    void SegmentCommand();  // start choosing, or cancel
    void SetA();
    void SetB();

    void SetSpeed(int percent);
    void ResetSpeed();
    void SetVolume(int level);
    // The level kept from the last run, applied at once at start.
    void RestoreVolume(int level);
    // One step of the gradual volume change; false once the target is reached.
    bool VolumeTick();
    bool VolumeChanging() const { return mixerLevel_ != texts_.volume; }

    // The progress timer: position, texts, the A-B loop and, for decoder 2, the end of the file.
    void ProgressTick();
    // The end-of-file event of a decoder (decoder 2's twin comes from ProgressTick).
    void OnEndOfFile();

    // The open file's device closes for another writer and opens again where it was.
    bool LetGo(const std::string& path) override;
    void TakeBack() override;

    // Seconds from a typed time: "12345", "01:20:15"; anything else 0. Within ±kMaxTypedSeconds.
    static long long ParseTypedTime(std::string_view text);
    static constexpr double kMaxTypedSeconds = 1e12;
    static std::string FormatTime(long long ms);

private:
    Decoder& ChosenDecoder(const std::string& path);
    void ChooseAndPlay(QueueDirection direction);
    bool PlayIndex(int index);
    void CannotPlay(const std::string& name);
    // The position's texts (slider, time, percent, status line); nothing when either is unknown.
    void ShowPosition(long long pos, long long length);
    // Each state change goes through one of these, which also sets the texts that show it.
    void SetMode(PlayMode mode);
    void SetPlaying(bool playing);
    void SetTimeMode(TimeMode mode);
    void SetChoosingSegment(bool choosing);
    void RefreshModeLabel();
    void Show();

    PlaybackDeps deps_;
    PlaybackTexts texts_;
    Decoder* decoder_ = nullptr;
    PlayMode mode_ = PlayMode::Normal;
    TimeMode timeMode_ = TimeMode::Elapsed;
    bool playing_ = false;
    bool choosingSegment_ = false;
    bool stopped_ = false;  // the stop command ran: play starts again from the beginning
    long long pointA_ = -1;
    long long pointB_ = -1;
    int rememberedIndex_ = 0;
    std::string openPath_;  // the file decoder_ holds
    // While the file is let go: where it was and how.
    struct Held {
        long long positionMs;
        bool playing;
        bool stopped;
    };
    std::optional<Held> held_;
    int mixerLevel_ = 20;
    int noticeTicks_ = 0;  // progress ticks the status line's notice still stays
};

}  // namespace lumora
