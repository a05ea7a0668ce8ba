#include "settings/SettingsStore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "common/Text.h"
#include "settings/RegistryWrapper.h"
#include "settings/OptionNames.h"

namespace lumora {
namespace {

enum class Rule {
    Range,   // kept when within [low, high]
    Flag,    // kept when 0 or 1
    Choice,  // kept when one of the values in `choices`
    Colour,  // a colour value: 0..0xFFFFFF, or a system colour (0x80000000 + index) as a signed number
    Raw,     // not validated; an empty value keeps the slot
    Top,     // main window top: greater than 0 and less than the screen height
    Left,    // main window left: greater than -1 and less than the screen width
    Y,       // video window top: greater than -1 and less than the screen height
    X,       // video window left: greater than -1 and less than the screen width
    Height,  // video window height: greater than 800 and less than the screen height
    Width,   // video window width: greater than 800 and less than the screen width
};

// `hasDefault`: an invalid stored value is replaced by `initial`. Without it the slot keeps
// what it holds, which at start-up is `initial` too.
struct Option {
    std::string_view name;
    Rule rule;
    std::string_view initial;
    bool hasDefault;
    long long low = 0;
    long long high = 0;
    std::uint64_t choices = 0;  // bit n set: n is a valid choice
};

constexpr std::uint64_t Bits(std::initializer_list<int> values) {
    std::uint64_t mask = 0;
    for (int v : values) mask |= std::uint64_t{1} << v;
    return mask;
}

constexpr bool kDefault = true;
constexpr bool kNone = false;

// Choices for the options that have no default of their own:
//  L34B/L34F  balloon tips: the usual pale yellow (RGB 255,255,225) with black text.
//  L1B/L1F    menus: white background, black text.
//  L45        video window size when a video starts: 0 full screen, 1 sized automatically,
//             2 the video window's own size. Initially 1.
//  L46        scale of the automatic size, index into the scale list: 0 "原始大小".
//  L47        when the video is smaller than that: 0 full screen, 1 original size,
//             2 leave the window alone. Initially 1.
//  L53        volume fade delay, in steps of 50 ms, beside "关闭音量渐变功能。延时:". Initially 6.
//  L58        the time label's mode, kept between runs: 0 elapsed, 1 remaining. Its button writes it at
//             once; the stop command's return to elapsed is not written (it is no choice of the user's).
//  L61        lyrics display offset, in half seconds (the fourth slider), -9..9. Initially 0. The lyrics
//             show the line for the played time + offset x 0.5 s: a positive offset brings them earlier.
//  L50        while a file plays (not paused), the display stays on: no screen saver, no display power-off.
//             Through the thread's execution state (ended with the process, so a crash leaves nothing
//             behind) and the refusal of the screen saver's system command; the user's screen saver
//             setting is never changed.
//  L52        the video window opens (empty, at its kept place) at start.
//  L54        the "纠错" text correction of tag fields and embedded lyrics: RepairInfoText in Id3v1.h.
//  L55        "解码倒制": video files try the system's DirectShow filters first (see
//             MediaEngine::OpenDispatch); from the next file on. The main window's "倒制" button writes
//             it at once.
//  L48..L72   the check-box array: the choices a first-time user is best served by.
//  L25        decoder 2 (stable) until the user picks decoder 1.
//  TOP..MovW  empty: the window places itself until it has been moved once.
//  Vol        empty: full volume until the user has set one.
constexpr std::array kOptions = std::to_array<Option>({
    {opt::kBackSeconds, Rule::Range, "5", kDefault, 1, 120},
    {opt::kForwardSeconds, Rule::Range, "5", kDefault, 1, 120},
    {opt::kBackgroundColours, Rule::Flag, "0", kDefault},
    {opt::kPanelTextColours, Rule::Flag, "0", kDefault},
    {opt::kTrayIcon, Rule::Flag, "0", kDefault},
    {opt::kFilterLists, Rule::Flag, "1", kDefault},
    {opt::kDefaultListPlays, Rule::Flag, "1", kDefault},
    {opt::kAskOnUnplayable, Rule::Flag, "0", kDefault},
    {opt::kClassicListTips, Rule::Flag, "1", kDefault},
    {opt::kMenuColours, Rule::Flag, "0", kDefault},
    {opt::kDecoder, Rule::Raw, "1", kNone},
    {opt::kMainWindowTopmost, Rule::Flag, "0", kDefault},
    {opt::kBubbles, Rule::Flag, "0", kDefault},
    {opt::kListWindowTopmost, Rule::Flag, "0", kDefault},
    {opt::kListReadsMediaInfo, Rule::Flag, "1", kDefault},
    {opt::kRunningTextSpeed, Rule::Range, "15", kDefault, 1, 100},
    {opt::kBalloonHelp, Rule::Flag, "1", kDefault},
    {opt::kLibraryRenameBox, Rule::Flag, "1", kDefault},
    {opt::kLibraryNameIsTitle, Rule::Flag, "0", kDefault},
    {opt::kDefaultBalloonColours, Rule::Flag, "1", kDefault},
    {opt::kBalloonBackColour, Rule::Colour, "14811135", kNone},
    {opt::kBalloonTextColour, Rule::Colour, "0", kNone},
    {opt::kSkin, Rule::Choice, "2", kDefault, 0, 0, Bits({0, 1, 2, 5, 6})},
    {opt::kFlatSongMenu, Rule::Flag, "0", kDefault},
    {opt::kColouredBubbles, Rule::Flag, "1", kDefault},
    {opt::kInfoBalloons, Rule::Flag, "1", kDefault},
    {opt::kSongMenuLayout, Rule::Range, "0", kDefault, 0, 99},
    {opt::kAutoSongMenuType, Rule::Flag, "1", kDefault},
    {opt::kSongMenuUpperBound, Rule::Range, "32", kDefault, 0, 998},
    {opt::kSongMenuLowerBound, Rule::Range, "130", kDefault, 33,
     999},  // and above opt::kSongMenuUpperBound: see LoadSettings
    {opt::kColouredProgress, Rule::Flag, "0", kDefault},
    {opt::kSamePlayer, Rule::Flag, "1", kDefault},
    {opt::kVideoStartSize, Rule::Choice, "1", kNone, 0, 0, Bits({0, 1, 2})},
    {opt::kVideoScale, Rule::Range, "0", kNone, 0, 19},
    {opt::kSmallVideoSize, Rule::Choice, "1", kNone, 0, 0, Bits({0, 1, 2})},
    {opt::kAutoOpenLyricsWindow, Rule::Flag, "1", kNone},
    {opt::kAutoCloseLyricsWindow, Rule::Flag, "0", kNone},
    {opt::kStopScreenSaver, Rule::Flag, "1", kNone},
    {opt::kCloseVideoForAudio, Rule::Flag, "1", kNone},
    {opt::kVideoWindowAtStart, Rule::Flag, "0", kNone},
    {opt::kVolumeFadeDelay, Rule::Range, "6", kNone, 0, 999},
    {opt::kRepairMediaInfo, Rule::Flag, "0", kNone},
    {opt::kDecoderWorkaround, Rule::Flag, "0", kNone},
    {opt::kSaveListOnExit, Rule::Flag, "0", kNone},
    {opt::kListWindowAtStart, Rule::Flag, "1", kNone},
    {opt::kTimeLabelMode, Rule::Range, "0", kNone, 0, 1},
    {opt::kShortcutButtons, Rule::Flag, "1", kNone},
    {opt::kNoVolumeFade, Rule::Flag, "0", kNone},
    {opt::kLyricsOffset, Rule::Range, "0", kNone, -9, 9},
    {opt::kModuleSongMenu, Rule::Flag, "0", kNone},
    {opt::kSkipListFilterQuestion, Rule::Flag, "0", kNone},
    {opt::kNoLyricsWindowBubbles, Rule::Flag, "0", kNone},
    {opt::kXpMenus, Rule::Flag, "1", kNone},
    {opt::kSamePlayerShowsMain, Rule::Flag, "0", kNone},
    {opt::kNoVideoWindowForVideo, Rule::Flag, "0", kNone},
    {opt::kLyricsWhileSeeking, Rule::Flag, "1", kNone},
    {opt::kNoWindowFades, Rule::Flag, "0", kNone},
    {opt::kStartupInfoBalloon, Rule::Flag, "1", kNone},
    {opt::kPlayInfoBalloon, Rule::Flag, "1", kNone},
    {opt::kHourlyChime, Rule::Flag, "0", kNone},
    {opt::kMenuBackColour, Rule::Colour, "16777215", kNone},
    {opt::kMenuTextColour, Rule::Colour, "0", kNone},
    // Beside the dialog's options, with names of their own.
    {opt::kMediaKeysAlways, Rule::Flag, "0", kDefault},
    {opt::kListWindowPlace, Rule::Choice, "0", kDefault, 0, 0, Bits({0, 1, 2})},
    {opt::kLyricsTimingCorrection, Rule::Flag, "0", kDefault},
    {opt::kBackColour, Rule::Colour, "4733972", kDefault},        // a deep teal, RGB 20,60,72
    {opt::kPanelTextColour, Rule::Colour, "15790320", kDefault},  // a soft white
    // Loaded at start-up but written by the windows that own them.
    {opt::kMainTop, Rule::Top, "", kNone},
    {opt::kMainLeft, Rule::Left, "", kNone},
    {opt::kVideoTop, Rule::Y, "", kNone},
    {opt::kVideoLeft, Rule::X, "", kNone},
    {opt::kVideoHeight, Rule::Height, "", kNone},
    {opt::kVideoWidth, Rule::Width, "", kNone},
    {opt::kVolume, Rule::Raw, "", kNone},
});

constexpr size_t kSavedCount = kOptions.size() - 7;

constexpr auto MakeNames(size_t from, size_t count) {
    std::array<std::string_view, kOptions.size()> names{};
    for (size_t i = 0; i < count; ++i) names[i] = kOptions[from + i].name;
    return names;
}
constexpr auto kSavedNames = MakeNames(0, kSavedCount);

// A value written with a terminator by another tool still reads as its text.
std::string_view TrimBlanks(std::string_view s) { return Trim(s, kBlanks, std::string_view(" \t\0", 3)); }

bool HasControlCharacter(std::string_view s) {
    for (char c : s) {
        if (static_cast<unsigned char>(c) < 0x20) return true;
    }
    return false;
}

bool IsValid(const Option& o, std::string_view text, ScreenExtent screen) {
    // Bytes that are not code page 936 text could not be written back.
    if (o.rule == Rule::Raw) {
        return !text.empty() && !HasControlCharacter(text) && text.find("\xEF\xBF\xBD") == std::string_view::npos;
    }
    const auto n = ParseDecimal(text);
    if (!n) return false;
    const long long v = *n;
    switch (o.rule) {
        case Rule::Range: return v >= o.low && v <= o.high;
        case Rule::Flag: return v == 0 || v == 1;
        case Rule::Choice: return v >= 0 && v < 64 && ((o.choices >> v) & 1U) != 0;
        case Rule::Colour:
            return (v >= 0 && v <= 0xFFFFFF) ||
                   (v >= std::numeric_limits<std::int32_t>::min() && v <= std::numeric_limits<std::int32_t>::min() + 0xFF);
        case Rule::Top: return v > 0 && v < screen.heightTwips;
        case Rule::Left: return v > -1 && v < screen.widthTwips;
        case Rule::Y: return v > -1 && v < screen.heightTwips;
        case Rule::X: return v > -1 && v < screen.widthTwips;
        case Rule::Height: return v > 800 && v < screen.heightTwips;
        case Rule::Width: return v > 800 && v < screen.widthTwips;
        case Rule::Raw: break;
    }
    return false;
}

// The plain decimal form of a numeric text; other texts unchanged.
std::string Normalised(std::string_view text) {
    const auto n = ParseDecimal(TrimBlanks(text));
    return n ? std::to_string(*n) : std::string(TrimBlanks(text));
}

const std::string kEmpty;

}  // namespace

std::optional<long long> ParseDecimal(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty() || text.size() > 18) {
        // 18 digits always fit; longer texts are valid only with leading zeros.
        while (text.size() > 1 && text.front() == '0') text.remove_prefix(1);
        if (text.empty() || text.size() > 18) return std::nullopt;
    }
    long long value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return negative ? -value : value;
}

SettingsStore::SettingsStore() {
    for (const auto& o : kOptions) slots_.emplace(std::string(o.name), std::string(o.initial));
}

const std::string& SettingsStore::Text(std::string_view name) const {
    const auto it = slots_.find(name);
    return it == slots_.end() ? kEmpty : it->second;
}

bool SettingsStore::SetText(std::string_view name, std::string_view text) {
    const auto it = slots_.find(name);
    if (it == slots_.end()) return false;
    it->second = std::string(text);
    return true;
}

std::optional<long long> SettingsStore::Number(std::string_view name) const {
    return ParseDecimal(TrimBlanks(Text(name)));
}

bool SettingsStore::IsOn(std::string_view name) const { return Number(name) == 1; }

bool SettingsStore::Holds(std::string_view name) const { return slots_.find(name) != slots_.end(); }

std::span<const std::string_view> SettingsStore::SavedNames() { return {kSavedNames.data(), kSavedCount}; }

std::optional<SettingsStore::Bounds> SettingsStore::OptionBounds(std::string_view name) {
    const auto it = std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& o) { return o.name == name; });
    if (it == kOptions.end()) return std::nullopt;
    switch (it->rule) {
        case Rule::Range:
            return Bounds{it->low, it->high};
        case Rule::Flag:
            return Bounds{0, 1};
        case Rule::Choice:
            return Bounds{std::countr_zero(it->choices), 63 - std::countl_zero(it->choices)};
        default:
            return std::nullopt;
    }
}

bool LoadSettings(SettingsStore& store, RegistryWrapper& registry, ScreenExtent screen) {
    SettingsStore loaded = store;
    for (const auto& o : kOptions) {
        const RegistryReadResult read = registry.ReadValueQuietly(kSetupKeyPath, o.name);
        if (read.error != regerr::kSuccess) {
            registry.Report(read.error);
            return false;
        }
        const std::string_view text = TrimBlanks(read.text);
        bool valid = IsValid(o, text, screen);
        // The song-menu bounds go together: the lower bound must lie above the upper one.
        if (valid && o.name == opt::kSongMenuLowerBound) valid = ParseDecimal(text) > loaded.Number(opt::kSongMenuUpperBound);
        if (valid) {
            loaded.SetText(o.name, text);
        } else if (o.hasDefault) {
            loaded.SetText(o.name, o.initial);
        }
    }
    store = std::move(loaded);
    return true;
}

bool SaveSettings(const SettingsStore& store, RegistryWrapper& registry, std::string_view versionText,
                  std::string_view programFolder) {
    for (const auto key : kSetupKeyLevels) {
        if (!registry.CreateKey(key)) return false;
    }
    if (!registry.WriteValue(kPlayerKeyPath, "TavrinPlayer", "")) return false;
    if (!registry.WriteValue(kPlayerKeyPath, "VER", versionText)) return false;
    if (!registry.WriteValue(kPlayerKeyPath, "路径", programFolder)) return false;
    for (const auto name : SettingsStore::SavedNames()) {
        if (!registry.WriteValue(kSetupKeyPath, name, Normalised(store.Text(name)))) return false;
    }
    return true;
}

bool WriteOptionNow(SettingsStore& store, RegistryWrapper& registry, std::string_view name, std::string_view text) {
    if (!store.Holds(name)) return false;
    for (const auto key : kSetupKeyLevels) {
        if (!registry.CreateKey(key)) return false;
    }
    if (!registry.WriteValue(kSetupKeyPath, name, text)) return false;
    return store.SetText(name, text);
}

}  // namespace lumora
