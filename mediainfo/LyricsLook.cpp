#include "mediainfo/LyricsLook.h"

#include <utility>

#include "mediainfo/LyricsTiming.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

constexpr std::string_view kBackground = "F8_BC";
constexpr std::string_view kCurrentColour = "F8_1_YY";
constexpr std::string_view kNextColour = "F8_2_YY";
constexpr std::string_view kCurrentPoints = "F8_GcLab1";
constexpr std::string_view kNextPoints = "F8_GcLab2";
constexpr std::string_view kUsePicture = "F8_PicYN";
constexpr std::string_view kStretchPicture = "F8_PicMi";
constexpr std::string_view kPicturePath = "F8_BPic";

}  // namespace

bool IsLyricsPointSize(long long points) { return points >= kMinLyricsPoints && points <= kMaxLyricsPoints; }

LyricsDisplaySettings LoadLyricsDisplaySettings(RegistryWrapper& registry) {
    auto read = [&](std::string_view name) { return registry.ReadValueQuietly(kSetupKeyPath, name).text; };
    LyricsDisplaySettings s;
    s.lineByteLimit = ParseLineByteLimit(read(kLineByteLimitValueName));
    LyricsLook& look = s.look;
    auto colour = [&](std::string_view name, std::uint32_t& into) {
        const auto n = ParseDecimal(read(name));
        if (n && *n >= 0 && *n <= 0xFFFFFF) into = static_cast<std::uint32_t>(*n);
    };
    auto points = [&](std::string_view name, int& into) {
        const auto n = ParseDecimal(read(name));
        if (n && IsLyricsPointSize(*n)) into = static_cast<int>(*n);
    };
    colour(kBackground, look.background);
    colour(kCurrentColour, look.current);
    colour(kNextColour, look.next);
    points(kCurrentPoints, look.currentPoints);
    points(kNextPoints, look.nextPoints);
    look.usePicture = read(kUsePicture) == "1";
    look.stretchPicture = read(kStretchPicture) != "0";
    look.picturePath = read(kPicturePath);
    return s;
}

bool SaveLyricsDisplaySettings(RegistryWrapper& registry, const LyricsDisplaySettings& s) {
    const LyricsLook& look = s.look;
    const std::pair<std::string_view, std::string> values[] = {
        {kLineByteLimitValueName, std::to_string(s.lineByteLimit)},
        {kBackground, std::to_string(look.background)},
        {kCurrentColour, std::to_string(look.current)},
        {kNextColour, std::to_string(look.next)},
        {kCurrentPoints, std::to_string(look.currentPoints)},
        {kNextPoints, std::to_string(look.nextPoints)},
        {kUsePicture, look.usePicture ? "1" : "0"},
        {kStretchPicture, look.stretchPicture ? "1" : "0"},
        {kPicturePath, look.picturePath},
    };
    if (!registry.CreateKey(kSetupKeyPath)) return false;
    for (const auto& [name, value] : values) {
        if (!registry.WriteValue(kSetupKeyPath, name, value)) return false;
    }
    return true;
}

}  // namespace lumora
