#include "app/Notices.h"

#include <algorithm>

#include "playback/PlaybackController.h"

namespace lumora {
namespace {

constexpr int kMsPerHour = 3600 * 1000;

// A timer set for a full hour is not early by more than this; later than that, the next hour is meant.
constexpr int kEarlyMs = 60 * 1000;

int MsIntoHour(const TimeOfDay& now) { return (now.minute * 60 + now.second) * 1000 + now.millisecond; }

// The number of UTF-16 units a UTF-8 text takes.
size_t Utf16Units(std::string_view utf8) {
    size_t units = 0;
    for (unsigned char c : utf8) {
        if ((c & 0xC0) != 0x80) units += c >= 0xF0 ? 2 : 1;
    }
    return units;
}

}  // namespace

BalloonText StartupBalloon(std::string_view programName, std::string_view version) {
    return {std::string(programName), std::string(programName) + " 版本：" + std::string(version)};
}

BalloonText PlayingBalloon(std::string_view fileName, std::string_view tagTitle, std::string_view tagArtist,
                           long long lengthMs) {
    std::string what = tagTitle.empty() ? std::string(fileName) : std::string(tagTitle);
    if (!tagTitle.empty() && !tagArtist.empty()) what += " - " + std::string(tagArtist);
    if (lengthMs > 0) what += "\r\n长度：" + PlaybackController::FormatTime(lengthMs);
    return {"正在播放", what};
}

BalloonText ChimeBalloon(int hour) {
    const std::string hh = (hour < 10 ? "0" : "") + std::to_string(hour);
    return {"整点报时", "现在时间：" + hh + ":00"};
}

unsigned MsToNextHour(const TimeOfDay& now, bool justChimed) {
    const int left = kMsPerHour - MsIntoHour(now);
    return static_cast<unsigned>(justChimed && left <= kEarlyMs ? left + kMsPerHour : left);
}

int ChimeHour(const TimeOfDay& now) {
    return MsIntoHour(now) >= kMsPerHour - kEarlyMs ? (now.hour + 1) % 24 : now.hour;
}

BalloonPlace PlaceBalloon(bool trayIconShown, bool mainVisible, bool mainMinimised) {
    if (!mainVisible && trayIconShown) return BalloonPlace::TrayIcon;
    if (mainVisible && !mainMinimised) return BalloonPlace::MainWindow;
    return BalloonPlace::ScreenCorner;
}

std::string TrayTipText(std::string_view programName, std::string_view playingName, size_t maxChars) {
    std::string tip(programName);
    if (!playingName.empty()) tip += " - " + std::string(playingName);
    // Cut whole characters only, leaving room for "…" and the terminator.
    if (maxChars < 3 || Utf16Units(tip) < maxChars) return tip;
    std::string cut;
    for (size_t i = 0; i < tip.size();) {
        size_t next = i + 1;
        while (next < tip.size() && (static_cast<unsigned char>(tip[next]) & 0xC0) == 0x80) ++next;
        if (Utf16Units(cut) + Utf16Units(std::string_view(tip).substr(i, next - i)) > maxChars - 2) break;
        cut.append(tip, i, next - i);
        i = next;
    }
    return cut + "…";
}

std::string ClassicListTip(std::string_view line, std::string_view path) {
    return std::string(line) + "\r\n" + std::string(path);
}

int PermilleAt(int x, int left, int right) {
    if (right <= left) return 0;
    return std::clamp(static_cast<int>((static_cast<long long>(x - left) * 1000) / (right - left)), 0, 1000);
}

}  // namespace lumora
