#include "settings/OptionForm.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "common/Text.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "settings/SongMenu.h"

namespace lumora {
namespace {

using K = FormControl;

// clang-format off
constexpr auto kItems = std::to_array<FormItem>({
    // Playback
    {opt::kBackSeconds, K::Slider},
    {opt::kForwardSeconds, K::Slider},
    {opt::kDecoder, K::RadioPair},
    {opt::kAskOnUnplayable, K::RadioPair},
    {opt::kSamePlayer, K::Check},
    {opt::kSamePlayerShowsMain, K::Check},
    {opt::kMediaKeysAlways, K::Check},
    {opt::kNoVolumeFade, K::Check},
    {opt::kVolumeFadeDelay, K::Number},
    {opt::kStopScreenSaver, K::Check},
    {opt::kDecoderWorkaround, K::Check},
    // Lists and library
    {opt::kFilterLists, K::Check},
    {opt::kSkipListFilterQuestion, K::Check},
    {opt::kDefaultListPlays, K::Check},
    {opt::kSaveListOnExit, K::Check},
    {opt::kListReadsMediaInfo, K::Check},
    {opt::kClassicListTips, K::Check},
    {opt::kListWindowAtStart, K::Check},
    {opt::kListWindowPlace, K::Choice},
    {opt::kLibraryRenameBox, K::Check},
    {opt::kLibraryNameIsTitle, K::RadioPair},
    // Lyrics and display
    {opt::kAutoOpenLyricsWindow, K::Check},
    {opt::kAutoCloseLyricsWindow, K::Check},
    {opt::kLyricsWhileSeeking, K::Check},
    {opt::kLyricsOffset, K::Slider},
    {opt::kLyricsTimingCorrection, K::Check},
    {opt::kRepairMediaInfo, K::Check},
    {opt::kBubbles, K::Check},
    {opt::kColouredBubbles, K::Check},
    {opt::kNoLyricsWindowBubbles, K::Check},
    {opt::kColouredProgress, K::Check},
    {opt::kRunningTextSpeed, K::Slider},
    // Windows
    {opt::kSkin, K::Choice},
    {opt::kMainWindowTopmost, K::Check},
    {opt::kListWindowTopmost, K::Check},
    {opt::kTrayIcon, K::Check},
    {opt::kShortcutButtons, K::Check},
    {opt::kXpMenus, K::Check},
    {opt::kNoWindowFades, K::Check},
    {opt::kBackgroundColours, K::Check},
    {opt::kPanelTextColours, K::Check},
    {opt::kMenuColours, K::Check},
    {opt::kMenuBackColour, K::Colour},
    {opt::kMenuTextColour, K::Colour},
    // Tips
    {opt::kBalloonHelp, K::Check},
    {opt::kInfoBalloons, K::Check},
    {opt::kDefaultBalloonColours, K::Check},
    {opt::kBalloonBackColour, K::Colour},
    {opt::kBalloonTextColour, K::Colour},
    {opt::kStartupInfoBalloon, K::Check},
    {opt::kPlayInfoBalloon, K::Check},
    {opt::kHourlyChime, K::Check},
    // Song menu
    {opt::kFlatSongMenu, K::Check},
    {opt::kSongMenuLayout, K::Choice},
    {opt::kAutoSongMenuType, K::Check},
    {opt::kSongMenuUpperBound, K::Number},
    {opt::kSongMenuLowerBound, K::Number},
    {opt::kModuleSongMenu, K::Check},
    // Video
    {opt::kVideoStartSize, K::Choice},
    {opt::kVideoScale, K::Choice},
    {opt::kSmallVideoSize, K::Choice},
    {opt::kCloseVideoForAudio, K::Check},
    {opt::kVideoWindowAtStart, K::Check},
    {opt::kNoVideoWindowForVideo, K::Check},
    // Windows: the user's own colours (after the rest, so that no other control's id moves)
    {opt::kBackColour, K::Colour},
    {opt::kPanelTextColour, K::Colour},
});
// clang-format on

}  // namespace

std::span<const FormItem> FormItems() { return kItems; }

const FormItem* FindFormItem(std::string_view name) {
    const auto items = FormItems();
    const auto it = std::find_if(items.begin(), items.end(), [&](const FormItem& i) { return i.name == name; });
    return it == items.end() ? nullptr : &*it;
}

SettingsStore::Bounds FormBounds(const FormItem& item) {
    return SettingsStore::OptionBounds(item.name).value_or(SettingsStore::Bounds{});
}

int FormControlId(std::string_view name, int part) {
    const FormItem* item = FindFormItem(name);
    return item ? kFirstFormControlId + 4 * static_cast<int>(item - FormItems().data()) + part : -1;
}

long long ShownValue(const FormItem& item, const SettingsStore& store) {
    const std::optional<long long> n = store.Number(item.name);
    const auto [low, high] = FormBounds(item);
    switch (item.kind) {
        case K::Slider:
            return std::clamp(n.value_or(low), low, high);
        case K::Check:
            return n == 1;
        case K::RadioPair:
            return Trim(store.Text(item.name), " ") != "0";
        case K::Choice:
            return n && *n >= low && *n <= high ? *n : low;
        case K::Number:
            return n.value_or(low);
        case K::Colour:
            break;
    }
    return static_cast<std::uint32_t>(n.value_or(0));
}

std::string StoredText(const FormItem& item, long long value) {
    if (item.kind == K::Colour) return std::to_string(static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
    if (item.kind == K::Check || item.kind == K::RadioPair) return value ? "1" : "0";
    return std::to_string(value);
}

std::optional<long long> TypedNumber(const FormItem& item, std::string_view typed, long long floor) {
    const std::optional<long long> n = ParseDecimal(Trim(typed, " "));
    const auto [low, high] = FormBounds(item);
    if (!n || *n < low || *n > high || *n <= floor) return std::nullopt;
    return n;
}

std::string NumberRangeMessage(long long low, long long high) {
    return "请输入" + std::to_string(low) + "至" + std::to_string(high) + "之间的整数。";
}

bool SongMenuOverflows(int filesPerColumn, bool autoType, int screenHeight, int lineHeight) {
    SongMenuOptions options;
    options.filesPerColumn = filesPerColumn;
    options.autoType = autoType;
    const SongMenuScreen screen{lineHeight > 0 ? screenHeight / lineHeight : 0, 1};
    return autoType && LayOutSongMenu(0, options, screen).cut;
}

std::string SongMenuLayoutEntry(int index) {
    return index == 0 ? "自动调节" : "每列显示" + std::to_string(index) + "个文件";
}

}  // namespace lumora
