#pragma once
// Where Lumora's windows go between runs. Places are kept in twips (1/1440 inch) as decimal texts in
// the setup key, so they mean the same after the screen's DPI changes: the main window as "LEFT" and
// "TOP", the playlist window as "F4L", "F4T", "F4W" and "F4H", the video window as "MovLEFT",
// "MovTOP", "MovW" and "MovH". A kept place comes back only where it is on a screen.
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/OptionNames.h"

namespace lumora {

struct WindowRect {
    long long left = 0;
    long long top = 0;
    long long right = 0;
    long long bottom = 0;
    long long Width() const { return right - left; }
    long long Height() const { return bottom - top; }
    bool operator==(const WindowRect&) const = default;
};

struct ScreenDpi {
    int x = 96;
    int y = 96;
};

long long PixelsToTwips(long long pixels, int dpi);
long long TwipsToPixels(long long twips, int dpi);

// Lumora's layout is drawn for 96 DPI; at another DPI each length is this much, rounded half away
// from zero as Windows' MulDiv rounds, so that a length and its negative scale alike.
inline constexpr int kBaseDpi = 96;
int ScaleForDpi(int value, int dpi);
// `value` * `numerator` / `denominator`, rounded the same way; `value` when the denominator is not positive.
int ScaleBy(int value, int numerator, int denominator);

// The value names of one window; a window whose size is its own has no width and height names.
struct PlacementNames {
    std::string_view left, top, width, height;
    bool HasSize() const { return !width.empty(); }
};
inline constexpr PlacementNames kMainWindowPlace{opt::kMainLeft, opt::kMainTop, {}, {}};
inline constexpr PlacementNames kPlaylistWindowPlace{opt::kListLeft, opt::kListTop, opt::kListWidth, opt::kListHeight};
inline constexpr PlacementNames kVideoWindowPlace{opt::kVideoLeft, opt::kVideoTop, opt::kVideoWidth, opt::kVideoHeight};
// The "音频\歌词显示" window keeps its last place in the player's INI file, not in the setup key (which
// holds the places of the option table only): section "窗口位置", "FromX" and "FromY", twips as above.
// Its size follows its lyrics, so none is kept.
inline constexpr std::string_view kWindowPlaceSection = "窗口位置";
inline constexpr PlacementNames kLyricsWindowPlace{"FromX", "FromY", {}, {}};

// Never restored off every screen (a monitor unplugged, the resolution lowered): `place` where at least `visible`
// pixels of it show on one of `workAreas` (both ways, or the whole window where it is smaller); otherwise moved, size
// kept, into the work area nearest to it, its top-left corner first when it is larger than that area. Unchanged when
// there is no work area.
WindowRect OntoWorkArea(const WindowRect& place, std::span<const WindowRect> workAreas, int visible = 32);

// The kept place in pixels: every value there and the sizes positive; moved onto the nearest of the
// `monitors` (their work areas) when too little of it shows on any.
// A window without size names keeps `currentSize`'s width and height.
using ReadNumber = std::function<std::optional<long long>(std::string_view name)>;
std::optional<WindowRect> KeptPlace(const PlacementNames& names, const ReadNumber& read, ScreenDpi dpi,
                                    std::span<const WindowRect> monitors, const WindowRect& currentSize = {});

// The values to keep for a window at `place` (pixels): name and decimal twips, in the order written.
std::vector<std::pair<std::string_view, std::string>> PlaceValues(const PlacementNames& names, const WindowRect& place,
                                                                  ScreenDpi dpi);

// The playlist window docks to an edge of the main window and follows it there.
enum class ListDock { None, Right, Below };

// How the playlist window starts, by opt::kListWindowPlace: 1 docked right, 2 docked below; 0 (or
// anything else) where it was last, docked to the edge it was kept at, and docked right when no place
// was kept. `kept` in pixels, `owner` the main window where it now is.
ListDock StartListDock(std::optional<long long> placeOption, const std::optional<WindowRect>& kept,
                       const WindowRect& owner);

// The docked place of a list window of `list`'s size: right of the owner, its height; or under it, its width.
WindowRect DockedListPlace(ListDock dock, const WindowRect& owner, const WindowRect& list);

}  // namespace lumora
