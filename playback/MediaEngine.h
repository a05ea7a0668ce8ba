#pragma once
// The media engine: MCI string commands for one movie device under the alias "movie1". The
// command layer answers "Success" or the system's error text (numeric queries -1 on failure);
// the device layer keeps the engine state and answers true or false.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/ControlPort.h"
#include "ports/MciPort.h"

namespace lumora {

inline constexpr std::string_view kSuccess = "Success";
inline constexpr std::string_view kMovieAlias = "movie1";
// WS_CHILD, written in decimal: the picture is drawn inside the parent window.
inline constexpr std::string_view kChildStyle = "1073741824";

// What holds the current file.
enum class MediaKind { None = 0, Mci = 2, MediaPlayer = 3, Flash = 4, Picture = 5, CdTrack = 6 };

// One operation per MCI command.
class MciCommands {
public:
    explicit MciCommands(MciPort& port) : port_(port) {}

    std::string OpenDevice(WindowId parent, std::string_view alias, std::string_view deviceType,
                           const std::string& path);
    std::string PlaySegment(std::string_view alias, std::string_view from, std::string_view to);
    std::string Pause(std::string_view alias);
    std::string Stop(std::string_view alias);
    long long LengthFrames(std::string_view alias);
    long long LengthMs(std::string_view alias);
    long long Position(std::string_view alias);
    std::string PlacePicture(WindowId window, std::string_view alias, long left, long top, long width, long height);
    // Shows the device's picture window: opened as a child it starts hidden.
    std::string ShowPicture(std::string_view alias);
    // "cx": the destination's width, "cy": its height; -1 when the device does not say.
    long long PictureSize(std::string_view alias, std::string_view key);
    long long FrameRate(std::string_view alias);
    std::string SetSpeed(std::string_view alias, long long percent);
    // The device's own sound level, 0 … 1000.
    std::string SetVolume(std::string_view alias, int permille);
    std::string CloseAll();
    // A query whose reply is wanted; the reply, or empty optional on failure.
    std::optional<std::string> Query(const std::string& command);

private:
    std::string Run(const std::string& command);
    MciPort& port_;
};

// "AviVideo", "Sequencer" or "MPEGVideo", from the last four characters of the path.
std::string DeviceTypeFor(std::string_view path);

// The engine state, one for the program.
struct EngineState {
    std::string alias;           // "movie1" while a file is open through the engine
    long long segmentStart = 0;  // frames: the `from` of the last play sent to the movie alias
    long long segmentEnd = 0;    // frames: its `to`
    long long resumePosition = 0;
    bool paused = false;
    long long positionStep = 1;
    long long currentSpeed = 100;
    // A file without pictures has no frames (its length in frames is 0): its positions are then
    // kept in milliseconds, the device left in that time format, so that it still plays.
    bool unitIsMs = false;
    long long length = 0;  // in the unit above, read at open
};

// What the open dispatch did with a file.
enum class OpenResult {
    Playing,      // the engine plays it
    Picture,      // a still picture is shown
    Control,      // a hosted control (Flash) shows and plays it
    ForDecoder1,  // an MPEG audio file the audio player takes
    CdTrack,      // handed to CD audio
    CannotPlay,   // open or play failed: the caller shows the messages
};

// The video window's information lines.
struct VideoInfo {
    std::vector<std::string> lines;
};

class MediaEngine {
public:
    explicit MediaEngine(MciPort& port) : commands_(port) {}
    // The hosted controls; without them, Flash movies cannot be played.
    void SetControls(ControlPort* controls) { controls_ = controls; }

    MciCommands& Commands() { return commands_; }
    const EngineState& State() const { return state_; }
    MediaKind Kind() const { return kind_; }

    // Device layer for the movie device: the device type by the ending. `filtersFirst`: see OpenDispatch.
    bool OpenMovie(const std::string& path, WindowId parent, bool filtersFirst = false);
    bool OpenMedia(const std::string& path, WindowId parent, std::string_view deviceType);
    bool Play(std::string_view from, std::string_view to);
    bool Pause();
    // Drops the remembered pause position, so the next play starts where it is told to (a seek).
    void ForgetPause() {
        state_.paused = false;
        state_.resumePosition = 0;
    }
    bool Stop();
    long long Position();
    // The open file's length in the engine's unit.
    long long Length() const { return state_.length; }
    // The mode the device reports ("playing", "paused", "stopped"...); empty on failure.
    std::string Mode();
    // Whether the Flash control says its movie plays; empty when it does not say (or for other kinds).
    std::optional<bool> Playing();
    bool PlacePicture(WindowId window, std::optional<PixelRect> at = std::nullopt);
    // Acts only when `allowed`; an unchanged speed is not sent again. True when the device took it.
    bool SetSpeed(long long percent, bool allowed);
    void CloseAll();

    // The open dispatch: closes everything, then gives the file to the player its extension calls
    // for. `decoder1` says whether MPEG audio goes to the audio player.
    // `filtersFirst` is "解码倒制" (opt::kDecoderWorkaround): the players of a video file are tried the other
    // way round, the MPEG device first. That device goes through DirectShow, where the system's own filters
    // decode the sound (AC3, DTS...) and draw external subtitles: an AVI tries it before the AVI device
    // (Video for Windows, which knows only ACM sound and no subtitles), Windows Media video before the
    // Media Player control (Media Foundation on newer systems, which loads no DirectShow filters). The
    // usual player remains the fallback. Other files open as always.
    OpenResult OpenDispatch(const std::string& path, WindowId videoWindow, bool decoder1, bool filtersFirst = false);

    // The picture's own size as the device reported it at open; 0 x 0 for audio.
    PixelRect Picture() const { return picture_; }
    const VideoInfo& Info() const { return info_; }

    // CD audio stops and closes its device here (set by the CD module).
    std::function<void()> onCloseCd;

private:
    bool OpenInMediaPlayer(const std::string& path, WindowId videoWindow);
    bool PlayControl(std::string_view from, std::string_view to);

    MciCommands commands_;
    ControlPort* controls_ = nullptr;
    EngineState state_;
    MediaKind kind_ = MediaKind::None;
    PixelRect picture_;
    VideoInfo info_;
};

}  // namespace lumora
