#pragma once
// The balloons Lumora raises by itself, and when and where they appear: the start-up information
// ("启动提示软件信息(气泡提示)"), the playing file ("播放信息(气泡提示)") and the time signal at each full
// hour ("整点报时(气泡提示)"); and the text of the notification-area icon.
#include <string>
#include <string_view>

namespace lumora {

struct BalloonText {
    std::string title;
    std::string text;
    bool operator==(const BalloonText&) const = default;
};

// How long a balloon stays, and how long after the main window first shows the start-up one comes.
inline constexpr unsigned kBalloonShowMs = 6000;
inline constexpr unsigned kStartupBalloonDelayMs = 1500;
// A balloon that comes while the start-up one is still due waits this long after it.
inline constexpr unsigned kNextBalloonDelayMs = 3000;

BalloonText StartupBalloon(std::string_view programName, std::string_view version);
// `tagTitle` and `tagArtist` from the file's information, empty when it has none; `lengthMs` <= 0 when
// the length is unknown.
BalloonText PlayingBalloon(std::string_view fileName, std::string_view tagTitle, std::string_view tagArtist,
                           long long lengthMs);
BalloonText ChimeBalloon(int hour);

// The local time of day.
struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};
// Milliseconds from `now` to the next full hour (a whole hour when `now` is one): the chime's one timer.
// `justChimed`: the chime has just been given, maybe a moment before its hour, which is not given again.
unsigned MsToNextHour(const TimeOfDay& now, bool justChimed = false);
// The full hour the chime announces at `now`: a timer that comes a moment early still names the hour it
// was set for.
int ChimeHour(const TimeOfDay& now);

// Where a balloon points: at the notification-area icon while the main window hides behind it, at the
// main window's display while it shows, and at the screen's corner above the taskbar while it is only
// minimised.
enum class BalloonPlace { TrayIcon, MainWindow, ScreenCorner };
BalloonPlace PlaceBalloon(bool trayIconShown, bool mainVisible, bool mainMinimised);

// The notification-area icon's tip: the program and the playing file, cut to what the icon holds
// (`maxChars` UTF-16 units including the terminator).
std::string TrayTipText(std::string_view programName, std::string_view playingName, size_t maxChars = 128);

// The list window's classic tip of an entry: its whole line (the list may cut it) and the file's path.
std::string ClassicListTip(std::string_view line, std::string_view path);

// The position (0 … 1000) of the progress track under the pointer at `x`, the track running from `left`
// to `right` (the thumb's centre at the ends).
int PermilleAt(int x, int left, int right);

}  // namespace lumora
