#include "settings/SongMenu.h"

#include <algorithm>
#include <cstdio>

#include "common/SkinDescription.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

// Blocks hold about this many entries: a sub-menu that is quick to scan.
constexpr int kBlockTarget = 50;

int CeilDiv(int a, int b) { return (a + b - 1) / b; }

// Entries first..last, a new column every `perColumn`.
void AddEntries(std::vector<SongMenuItem>& items, int first, int last, int perColumn) {
    for (int n = first; n <= last; ++n) items.push_back({false, n, n, n > first && (n - first) % perColumn == 0});
}

}  // namespace

SongMenuOptions SongMenuOptionsFrom(const SettingsStore& settings) {
    const auto number = [&](std::string_view name, long long fallback) {
        return static_cast<int>(settings.Number(name).value_or(fallback));
    };
    SongMenuOptions o;
    o.filesPerColumn = number(opt::kSongMenuLayout, 0);
    o.autoType = settings.IsOn(opt::kAutoSongMenuType);
    o.upperBound = number(opt::kSongMenuUpperBound, o.upperBound);
    o.lowerBound = number(opt::kSongMenuLowerBound, o.lowerBound);
    o.flat = settings.IsOn(opt::kFlatSongMenu);
    return o;
}

SongMenuLayout LayOutSongMenu(int entries, const SongMenuOptions& options, SongMenuScreen screen) {
    screen.lines = std::max(screen.lines, 1);
    screen.columns = std::max(screen.columns, 1);
    SongMenuLayout layout;
    layout.barBreaks = !options.flat;
    layout.type = !options.autoType               ? SongMenuType::Columns
                  : entries <= options.upperBound ? SongMenuType::Plain
                  : entries <= options.lowerBound ? SongMenuType::Columns
                                                  : SongMenuType::Blocks;
    const int asked = std::max(options.filesPerColumn, 0);
    layout.cut = asked > screen.lines;
    layout.perColumn = layout.type == SongMenuType::Plain || asked == 0 ? screen.lines : std::min(asked, screen.lines);
    if (entries <= 0) return layout;
    if (layout.type != SongMenuType::Blocks && CeilDiv(entries, layout.perColumn) > screen.columns) {
        layout.type = SongMenuType::Blocks;  // too wide for the work area
    }
    if (layout.type != SongMenuType::Blocks) {
        AddEntries(layout.items, 1, entries, layout.perColumn);
        return layout;
    }
    // Blocks of whole columns, and never so small that their own lines outgrow the work area.
    layout.blockSize = layout.perColumn * std::clamp(kBlockTarget / layout.perColumn, 1, screen.columns);
    if (const int fewest = CeilDiv(entries, screen.lines * screen.columns); layout.blockSize < fewest) {
        layout.perColumn = std::min(screen.lines, CeilDiv(fewest, screen.columns));
        layout.blockSize = layout.perColumn * screen.columns;
    }
    for (int first = 1, line = 0; first <= entries; first += layout.blockSize, ++line) {
        layout.items.push_back(
            {true, first, std::min(first + layout.blockSize - 1, entries), line > 0 && line % screen.lines == 0});
    }
    return layout;
}

std::vector<SongMenuItem> BlockLines(const SongMenuLayout& layout, const SongMenuItem& block) {
    std::vector<SongMenuItem> items;
    if (block.block) AddEntries(items, block.first, block.last, std::max(layout.perColumn, 1));
    return items;
}

std::string BlockCaption(const SongMenuItem& block) {
    char text[16];
    std::snprintf(text, sizeof text, "%03d-%03d", block.first, block.last);
    return text;
}

MenuColours ChooseMenuColours(const SettingsStore& settings, std::uint32_t skinBackground, std::uint32_t skinText,
                              std::uint32_t skinHighlight) {
    MenuColours c{skinBackground, skinText, skinHighlight, 0};
    if (settings.IsOn(opt::kMenuColours)) {
        // Kept as the signed decimal of a COLORREF; only plain RGB values are the user's colours.
        const auto colour = [&](std::string_view name, std::uint32_t fallback) {
            const auto n = settings.Number(name);
            return n && *n >= 0 && *n <= 0xFFFFFF ? static_cast<std::uint32_t>(*n) : fallback;
        };
        c.background = colour(opt::kMenuBackColour, skinBackground);
        c.text = colour(opt::kMenuTextColour, skinText);
        c.highlight = BlendColour(c.background, c.text, 250);
    }
    c.grey = BlendColour(c.background, c.text, 450);
    return c;
}

int RowToShow(int current, int perRow, int visibleRows, int topRow) {
    if (current <= 0 || perRow <= 0 || visibleRows <= 0) return topRow;
    const int row = (current - 1) / perRow;
    if (row < topRow) return row;
    if (row >= topRow + visibleRows) return row - visibleRows + 1;
    return topRow;
}

std::optional<int> BlockAt(int row, int column, int perRow, int entries) {
    if (row < 0 || column < 0 || column >= perRow) return std::nullopt;
    const int entry = row * perRow + column + 1;
    if (entry > entries) return std::nullopt;
    return entry;
}

}  // namespace lumora
