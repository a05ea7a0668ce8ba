#include "mediainfo/LyricsLook.h"

#include <utility>

#include "mediainfo/LyricsTiming.h"
#include "ports/Prompts.h"
#include "settings/OptionNames.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"

namespace lumora {

namespace {

constexpr std::string_view kPictureDialogTitle = "选择歌词窗口的背景图片";
// What the window's picture loader reads.
constexpr std::string_view kPictureFilter = "图片文件 (*.bmp;*.jpg;*.gif)|*.bmp;*.dib;*.jpg;*.jpeg;*.gif;*.ico;*.wmf;*.emf";

}  // namespace

bool ChooseLyricsPicture(Prompts& prompts, LyricsLook& look) {
    const auto chosen = prompts.AskOpenFileName(kPictureDialogTitle, kPictureFilter);
    if (!chosen || chosen->empty()) return false;
    look.picturePath = *chosen;
    look.usePicture = true;
    return true;
}

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
    colour(opt::kLyricsBackColour, look.background);
    colour(opt::kLyricsCurrentColour, look.current);
    colour(opt::kLyricsNextColour, look.next);
    points(opt::kLyricsCurrentPoints, look.currentPoints);
    points(opt::kLyricsNextPoints, look.nextPoints);
    look.usePicture = read(opt::kLyricsUsePicture) == "1";
    look.stretchPicture = read(opt::kLyricsStretchPicture) != "0";
    look.picturePath = read(opt::kLyricsPicture);
    return s;
}

bool SaveLyricsDisplaySettings(RegistryWrapper& registry, const LyricsDisplaySettings& s) {
    const LyricsLook& look = s.look;
    const std::pair<std::string_view, std::string> values[] = {
        {kLineByteLimitValueName, std::to_string(s.lineByteLimit)},
        {opt::kLyricsBackColour, std::to_string(look.background)},
        {opt::kLyricsCurrentColour, std::to_string(look.current)},
        {opt::kLyricsNextColour, std::to_string(look.next)},
        {opt::kLyricsCurrentPoints, std::to_string(look.currentPoints)},
        {opt::kLyricsNextPoints, std::to_string(look.nextPoints)},
        {opt::kLyricsUsePicture, look.usePicture ? "1" : "0"},
        {opt::kLyricsStretchPicture, look.stretchPicture ? "1" : "0"},
        {opt::kLyricsPicture, look.picturePath},
    };
    if (!registry.CreateKey(kSetupKeyPath)) return false;
    for (const auto& [name, value] : values) {
        if (!registry.WriteValue(kSetupKeyPath, name, value)) return false;
    }
    return true;
}

}  // namespace lumora
