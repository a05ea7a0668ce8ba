#include "playback/MediaEngine.h"

#include <charconv>
#include <cmath>

#include "common/Text.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

// The last four characters (bytes: every ending we compare is ASCII), lower case.
std::string Ending(std::string_view path) { return LowerAscii(path.size() < 4 ? path : path.substr(path.size() - 4)); }

std::optional<long long> Number(const std::optional<std::string>& reply) {
    if (!reply) return std::nullopt;
    return ParseDecimal(Trim(*reply, " ", std::string_view(" \0\r\n", 4)));
}

}  // namespace

std::string MciCommands::Run(const std::string& command) {
    const unsigned long rc = port_.Send(command, nullptr);
    return rc == 0 ? std::string(kSuccess) : port_.ErrorText(rc);
}

std::optional<std::string> MciCommands::Query(const std::string& command) {
    std::string reply;
    if (port_.Send(command, &reply) != 0) return std::nullopt;
    return reply;
}

std::string MciCommands::OpenDevice(WindowId parent, std::string_view alias, std::string_view deviceType,
                                    const std::string& path) {
    // The short form needs no quoting; a volume without short names keeps the long path, which
    // then is quoted when it holds a blank so that the device still gets one argument.
    std::string name = port_.ShortPath(path).value_or(std::string());
    if (name.find(' ') != std::string::npos) name = "\"" + name + "\"";
    return Run("open " + name + " type " + std::string(deviceType) + " Alias " + std::string(alias) + " parent " +
               std::to_string(parent) + " Style " + std::string(kChildStyle));
}

std::string MciCommands::PlaySegment(std::string_view alias, std::string_view from, std::string_view to) {
    std::string f(from.empty() ? "0" : from);
    std::string t(to);
    if (t.empty()) t = std::to_string(LengthFrames(alias));
    return Run("play " + std::string(alias) + " from " + f + " to " + t);
}

std::string MciCommands::Pause(std::string_view alias) { return Run("Pause " + std::string(alias)); }

std::string MciCommands::Stop(std::string_view alias) { return Run("Stop " + std::string(alias)); }

long long MciCommands::LengthFrames(std::string_view alias) {
    const std::string a(alias);
    if (port_.Send("set " + a + " time format frames", nullptr) != 0) return -1;
    return Number(Query("status " + a + " length")).value_or(-1);
}

long long MciCommands::LengthMs(std::string_view alias) {
    const std::string a(alias);
    if (port_.Send("set " + a + " time format ms", nullptr) != 0) return -1;
    const long long ms = Number(Query("status " + a + " length")).value_or(-1);
    port_.Send("set " + a + " time format frames", nullptr);
    return ms;
}

long long MciCommands::Position(std::string_view alias) {
    return Number(Query("status " + std::string(alias) + " position")).value_or(-1);
}

std::string MciCommands::PlacePicture(WindowId window, std::string_view alias, long left, long top, long width,
                                      long height) {
    if (width == 0 || height == 0) {
        const PixelRect r = port_.WindowRect(window);
        width = r.width;
        height = r.height;
    }
    return Run("put " + std::string(alias) + " window at " + std::to_string(left) + " " + std::to_string(top) + " " +
               std::to_string(width) + " " + std::to_string(height));
}

std::string MciCommands::ShowPicture(std::string_view alias) {
    return Run("window " + std::string(alias) + " state show");
}

long long MciCommands::PictureSize(std::string_view alias, std::string_view key) {
    const auto reply = Query("Where " + std::string(alias) + " destination");
    if (!reply) return -1;
    // "left top width height", spaces between. (A string stream here would pull the whole C++ locale
    // machinery into the program.)
    long long values[4] = {-1, -1, -1, -1};
    const char* at = reply->data();
    const char* const end = at + reply->size();
    for (auto& v : values) {
        while (at != end && (*at == ' ' || *at == '\t')) ++at;
        const auto [next, error] = std::from_chars(at, end, v);
        if (error != std::errc()) return -1;
        at = next;
    }
    const std::string k = LowerAscii(key);
    return k == "cx" ? values[2] : k == "cy" ? values[3] : -1;
}

long long MciCommands::FrameRate(std::string_view alias) {
    const long long frames = LengthFrames(alias);
    const long long ms = LengthMs(alias);
    if (frames == -1 || ms == -1 || ms == 0) return -1;
    return std::llround(static_cast<double>(frames) / (static_cast<double>(ms) / 1000.0));
}

std::string MciCommands::SetSpeed(std::string_view alias, long long percent) {
    return Run("set " + std::string(alias) + " speed " + std::to_string(percent * 10));
}

std::string MciCommands::SetVolume(std::string_view alias, int permille) {
    return Run("setaudio " + std::string(alias) + " volume to " + std::to_string(permille));
}

std::string MciCommands::CloseAll() { return Run("Close All"); }

std::string DeviceTypeFor(std::string_view path) {
    const std::string ending = Ending(path);
    if (ending == ".avi") return "AviVideo";
    if (ending == ".mid") return "Sequencer";
    // DVD files get the MPEG device as well; the comparison is kept apart so that the three
    // outcomes stay visible.
    if (ending == ".vob") return "MPEGVideo";
    return "MPEGVideo";
}

bool MediaEngine::OpenMovie(const std::string& path, WindowId parent, bool filtersFirst) {
    const std::string type = DeviceTypeFor(path);
    // The AVI device decodes only the codecs of Video for Windows; the MPEG device goes through the
    // system's media filters, which play every AVI the system's own player plays.
    if (type == "AviVideo" && filtersFirst) {
        return OpenMedia(path, parent, "MPEGVideo") || OpenMedia(path, parent, type);
    }
    if (OpenMedia(path, parent, type)) return true;
    return type == "AviVideo" && OpenMedia(path, parent, "MPEGVideo");
}

bool MediaEngine::OpenMedia(const std::string& path, WindowId parent, std::string_view deviceType) {
    if (commands_.OpenDevice(parent, kMovieAlias, deviceType, path) != kSuccess) return false;
    state_.alias = std::string(kMovieAlias);
    const long long frames = commands_.LengthFrames(kMovieAlias);
    state_.positionStep = frames >= 5000 ? frames / 5000 : 1;
    state_.unitIsMs = frames <= 0;
    state_.length = frames;
    if (state_.unitIsMs) {
        state_.length = commands_.LengthMs(kMovieAlias);
        commands_.Query("set " + std::string(kMovieAlias) + " time format ms");
    }
    state_.paused = false;
    state_.resumePosition = 0;
    kind_ = MediaKind::Mci;
    return true;
}

bool MediaEngine::PlayControl(std::string_view from, std::string_view to) {
    // The control keeps its own pause position: continuing is its play method; a new start is
    // its position set first. Units are milliseconds.
    if (!state_.paused || state_.resumePosition <= 0) {
        const long long start = ParseDecimal(from).value_or(0);
        if (!controls_->SetNumber(kPlayerPositionProperty, static_cast<double>(start) / 1000.0)) return false;
        state_.segmentStart = start;
    }
    if (!controls_->Call(kPlayerPlayMethod)) return false;
    state_.segmentEnd = to.empty() ? state_.length : ParseDecimal(to).value_or(state_.length);
    state_.paused = false;
    return true;
}

bool MediaEngine::Play(std::string_view from, std::string_view to) {
    if (kind_ == MediaKind::MediaPlayer) return PlayControl(from, to);
    std::string start(from);
    // No resume command exists: continuing is a new play from the frame read at the pause.
    if (state_.paused && state_.resumePosition > 0) start = std::to_string(state_.resumePosition);
    std::string end(to);
    if (start.empty()) start = "0";
    if (end.empty()) end = std::to_string(state_.unitIsMs ? state_.length : commands_.LengthFrames(kMovieAlias));
    if (commands_.PlaySegment(kMovieAlias, start, end) != kSuccess) return false;
    state_.segmentStart = ParseDecimal(start).value_or(0);
    state_.segmentEnd = ParseDecimal(end).value_or(0);
    state_.paused = false;
    return true;
}

bool MediaEngine::Pause() {
    switch (kind_) {
        case MediaKind::Mci:
            if (commands_.Pause(kMovieAlias) != kSuccess) return false;
            state_.resumePosition = commands_.Position(kMovieAlias);
            state_.paused = true;
            return true;
        case MediaKind::Picture:
            state_.paused = true;
            return true;
        case MediaKind::MediaPlayer:
            if (!controls_->Call(kPlayerPauseMethod)) return false;
            state_.resumePosition = Position();
            state_.paused = true;
            return true;
        case MediaKind::Flash:
            if (!controls_ || !controls_->Call(kFlashStopMethod)) return false;
            state_.paused = true;
            return true;
        default:
            return false;
    }
}

bool MediaEngine::Stop() {
    if (kind_ == MediaKind::Flash) return controls_ && controls_->Call(kFlashStopMethod);
    if (kind_ == MediaKind::MediaPlayer) return controls_->Call(kPlayerStopMethod);
    if (kind_ != MediaKind::Mci) return false;
    return commands_.Stop(kMovieAlias) == kSuccess;
}

long long MediaEngine::Position() {
    if (kind_ == MediaKind::MediaPlayer) {
        const auto seconds = controls_->Number(kPlayerPositionProperty);
        return seconds && *seconds >= 0 ? static_cast<long long>(*seconds * 1000.0 + 0.5) : -1;
    }
    return kind_ == MediaKind::Mci ? commands_.Position(kMovieAlias) : -1;
}

std::string MediaEngine::Mode() {
    if (kind_ == MediaKind::MediaPlayer) {
        // The control stops by itself at the file's end; a play range ends where Lumora says.
        const auto state = controls_->NumberByName("PlayState");
        if (state && *state == 0) return "stopped";
        if (!state_.paused && state_.segmentEnd > 0 && state_.segmentEnd < state_.length &&
            Position() >= state_.segmentEnd) {
            controls_->Call(kPlayerStopMethod);
            return "stopped";
        }
        return state_.paused || (state && *state == 1) ? "paused" : "playing";
    }
    if (kind_ != MediaKind::Mci) return {};
    return commands_.Query("status " + std::string(kMovieAlias) + " mode").value_or(std::string());
}

std::optional<bool> MediaEngine::Playing() {
    if (kind_ != MediaKind::Flash || !controls_) return std::nullopt;
    const auto playing = controls_->NumberByName("Playing");
    if (!playing) return std::nullopt;
    return *playing != 0;
}

bool MediaEngine::PlacePicture(WindowId window, std::optional<PixelRect> at) {
    const PixelRect r = at.value_or(PixelRect{});
    return commands_.PlacePicture(window, kMovieAlias, r.left, r.top, r.width, r.height) == kSuccess;
}

bool MediaEngine::SetSpeed(long long percent, bool allowed) {
    if (!allowed || percent == state_.currentSpeed) return false;
    state_.currentSpeed = percent;
    return commands_.SetSpeed(kMovieAlias, percent) == kSuccess;
}

void MediaEngine::CloseAll() {
    if (onCloseCd) onCloseCd();
    if (controls_) controls_->Close();
    state_ = EngineState{};
    kind_ = MediaKind::None;
    info_ = {};
    picture_ = {};
    commands_.CloseAll();
}

namespace {

// Windows Media files and their play lists, which the Media Player control plays where it is
// installed; elsewhere the movie device takes them like any other file.
bool IsWindowsMediaEnding(const std::string& lowerPath) {
    static constexpr std::string_view kEndings[] = {".wma", ".wax", ".wmv", ".wvx", ".asf",
                                                    ".asx", ".wmx", ".wmp", ".wpl"};
    for (const auto ending : kEndings) {
        if (lowerPath.size() >= ending.size() && lowerPath.ends_with(ending)) return true;
    }
    return false;
}

bool IsWindowsMediaVideo(const std::string& lowerPath) {
    return lowerPath.ends_with(".wmv") || lowerPath.ends_with(".asf");
}

}  // namespace

bool MediaEngine::OpenInMediaPlayer(const std::string& path, WindowId videoWindow) {
    if (!controls_ || !controls_->Available(HostedControl::MediaPlayer) ||
        !controls_->Open(HostedControl::MediaPlayer, path, videoWindow)) {
        return false;
    }
    kind_ = MediaKind::MediaPlayer;
    state_.unitIsMs = true;
    const auto seconds = controls_->NumberByName("Duration");
    state_.length = seconds && *seconds > 0 ? static_cast<long long>(*seconds * 1000.0 + 0.5) : 0;
    state_.segmentStart = 0;
    state_.segmentEnd = state_.length;
    state_.paused = false;
    state_.resumePosition = 0;
    return true;
}

OpenResult MediaEngine::OpenDispatch(const std::string& path, WindowId videoWindow, bool decoder1, bool filtersFirst) {
    CloseAll();
    const std::string ending = Ending(path);
    if (IsMpegAudioName(path) && decoder1) return OpenResult::ForDecoder1;

    if (ending == ".swf" || ending == ".spl") {
        // Only the Flash control plays these; a system without it cannot.
        if (!controls_ || !controls_->Available(HostedControl::Flash) ||
            !controls_->Open(HostedControl::Flash, path, videoWindow)) {
            return OpenResult::CannotPlay;
        }
        kind_ = MediaKind::Flash;
        return OpenResult::Control;
    }
    if (ending == ".cda") return OpenResult::CdTrack;
    const std::string lower = LowerAscii(path);
    const bool playerLast = filtersFirst && IsWindowsMediaVideo(lower);
    if (IsWindowsMediaEnding(lower) && !playerLast && OpenInMediaPlayer(path, videoWindow)) return OpenResult::Playing;
    if (ending == ".bmp" || ending == ".jpg" || ending == ".dib" || ending == ".wmf" || ending == ".emf" ||
        ending == ".ico" || ending == ".cur") {
        kind_ = MediaKind::Picture;
        return OpenResult::Picture;
    }
    if (!OpenMovie(path, videoWindow, filtersFirst)) {
        return playerLast && OpenInMediaPlayer(path, videoWindow) ? OpenResult::Playing : OpenResult::CannotPlay;
    }
    if (ending == ".mid" || ending == ".rmi" || ending == "midi" || ending == ".vob") {
        return Play("", "") ? OpenResult::Playing : OpenResult::CannotPlay;
    }
    const long long cx = commands_.PictureSize(kMovieAlias, "cx");
    const long long cy = commands_.PictureSize(kMovieAlias, "cy");
    const bool video = cx > 0 && cy > 0;
    // The device's window is placed and shown before it plays: Wine's AVI device shows it itself when it
    // starts, and takes a later "show" for a "hide".
    if (video) {
        PlacePicture(videoWindow);
        commands_.ShowPicture(kMovieAlias);
    }
    if (!Play("", "")) return OpenResult::CannotPlay;
    picture_ = video ? PixelRect{0, 0, static_cast<long>(cx), static_cast<long>(cy)} : PixelRect{};
    if (video) {
        const long long frames = commands_.LengthFrames(kMovieAlias);
        const long long rate = commands_.FrameRate(kMovieAlias);
        info_.lines = {
            "该媒体文件为视频",
            "画面原始大小(X)：" + std::to_string(cx) + "  (Y)：" + std::to_string(cy),
            "画面实际大小(X)：" + std::to_string(commands_.PictureSize(kMovieAlias, "cx")) + "  (Y)：" +
                std::to_string(commands_.PictureSize(kMovieAlias, "cy")),
            "总帧数：" + std::to_string(frames) + "  帧速率：" + std::to_string(rate),
        };
    } else {
        info_.lines = {"该媒体文件为音频"};
    }
    return OpenResult::Playing;
}

}  // namespace lumora
