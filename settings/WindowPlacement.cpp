#include "settings/WindowPlacement.h"

namespace lumora {
namespace {

constexpr long long kTwipsPerInch = 1440;

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

bool IsOnScreen(const WindowRect& place, std::span<const WindowRect> monitors) {
    for (const WindowRect& m : monitors) {
        if (place.left < m.right && m.left < place.right && place.top < m.bottom && m.top < place.bottom) return true;
    }
    return false;
}

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
    if (!IsOnScreen(r, monitors)) return std::nullopt;
    return r;
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
