#include "settings/WindowPlacement.h"

#include <algorithm>
#include <limits>

namespace lumora {
namespace {

constexpr long long kTwipsPerInch = 1440;

WindowRect Offset(const WindowRect& r, long long dx, long long dy) {
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

// How far `r` must travel to touch `area` (0 when they overlap): the sum of the gaps on both axes.
long long Distance(const WindowRect& r, const WindowRect& area) {
    const long long dx = std::max({0LL, area.left - r.right, r.left - area.right});
    const long long dy = std::max({0LL, area.top - r.bottom, r.top - area.bottom});
    return dx + dy;
}

// The overlap of two ranges, never negative.
long long Overlap(long long a0, long long a1, long long b0, long long b1) {
    return std::max(0LL, std::min(a1, b1) - std::max(a0, b0));
}

// `place`'s start moved so that [start, start+length) lies in [low, high); the low end wins when it is too long.
long long Into(long long start, long long length, long long low, long long high) {
    return std::max(low, std::min(start, high - length));
}

}  // namespace

long long PixelsToTwips(long long pixels, int dpi) { return pixels * kTwipsPerInch / (dpi > 0 ? dpi : 96); }
long long TwipsToPixels(long long twips, int dpi) { return twips * (dpi > 0 ? dpi : 96) / kTwipsPerInch; }

int ScaleBy(int value, int numerator, int denominator) {
    if (denominator <= 0) return value;
    const long long product = static_cast<long long>(value) * numerator;
    const long long half = denominator / 2;
    return static_cast<int>((product < 0 ? product - half : product + half) / denominator);
}

int ScaleForDpi(int value, int dpi) { return ScaleBy(value, dpi > 0 ? dpi : kBaseDpi, kBaseDpi); }

std::optional<WindowRect> KeptPlace(const PlacementNames& names, const ReadNumber& read, ScreenDpi dpi,
                                    std::span<const WindowRect> monitors, const WindowRect& currentSize) {
    const auto left = read(names.left);
    const auto top = read(names.top);
    if (!left || !top) return std::nullopt;
    WindowRect r;
    r.left = TwipsToPixels(*left, dpi.x);
    r.top = TwipsToPixels(*top, dpi.y);
    if (names.HasSize()) {
        const auto width = read(names.width);
        const auto height = read(names.height);
        if (!width || !height || *width <= 0 || *height <= 0) return std::nullopt;
        r.right = TwipsToPixels(*left + *width, dpi.x);
        r.bottom = TwipsToPixels(*top + *height, dpi.y);
    } else {
        r.right = r.left + currentSize.Width();
        r.bottom = r.top + currentSize.Height();
    }
    return OntoWorkArea(r, monitors);
}

WindowRect OntoWorkArea(const WindowRect& place, std::span<const WindowRect> workAreas, int visible) {
    if (workAreas.empty()) return place;
    const long long needX = std::min<long long>(visible, place.Width());
    const long long needY = std::min<long long>(visible, place.Height());
    const WindowRect* nearest = &workAreas.front();
    long long best = std::numeric_limits<long long>::max();
    for (const WindowRect& area : workAreas) {
        if (Overlap(place.left, place.right, area.left, area.right) >= needX &&
            Overlap(place.top, place.bottom, area.top, area.bottom) >= needY) {
            return place;
        }
        if (const long long d = Distance(place, area); d < best) {
            best = d;
            nearest = &area;
        }
    }
    const long long left = Into(place.left, place.Width(), nearest->left, nearest->right);
    const long long top = Into(place.top, place.Height(), nearest->top, nearest->bottom);
    return Offset(place, left - place.left, top - place.top);
}

std::vector<std::pair<std::string_view, std::string>> PlaceValues(const PlacementNames& names, const WindowRect& place,
                                                                  ScreenDpi dpi) {
    std::vector<std::pair<std::string_view, std::string>> values = {
        {names.left, std::to_string(PixelsToTwips(place.left, dpi.x))},
        {names.top, std::to_string(PixelsToTwips(place.top, dpi.y))},
    };
    if (names.HasSize()) {
        values.emplace_back(names.width, std::to_string(PixelsToTwips(place.Width(), dpi.x)));
        values.emplace_back(names.height, std::to_string(PixelsToTwips(place.Height(), dpi.y)));
    }
    return values;
}

ListDock StartListDock(std::optional<long long> placeOption, const std::optional<WindowRect>& kept,
                       const WindowRect& owner) {
    if (placeOption == 1) return ListDock::Right;
    if (placeOption == 2) return ListDock::Below;
    if (!kept) return ListDock::Right;
    if (kept->left == owner.right && kept->top == owner.top) return ListDock::Right;
    if (kept->left == owner.left && kept->top == owner.bottom) return ListDock::Below;
    return ListDock::None;
}

WindowRect DockedListPlace(ListDock dock, const WindowRect& owner, const WindowRect& list) {
    switch (dock) {
        case ListDock::Right:
            return {owner.right, owner.top, owner.right + list.Width(), owner.bottom};
        case ListDock::Below:
            return {owner.left, owner.bottom, owner.right, owner.bottom + list.Height()};
        case ListDock::None:
            break;
    }
    return list;
}

}  // namespace lumora
