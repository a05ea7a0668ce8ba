#include "common/SkinDescription.h"

#include <algorithm>
#include <array>
#include <variant>

#include "common/Text.h"
#include "mediainfo/LyricsLook.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

struct NumberField {
    int SkinLook::*member;
    int low;
    int high;
};
using Target = std::variant<SkinColour SkinLook::*, SkinGradient SkinLook::*, NumberField>;

struct Field {
    std::string_view key;
    Target target;
};

const std::array kFields = std::to_array<Field>({
    {"background", &SkinLook::background},
    {"panel", &SkinLook::panel},
    {"text", &SkinLook::text},
    {"display", &SkinLook::display},
    {"display.edge", &SkinLook::displayEdge},
    {"display.text", &SkinLook::displayText},
    {"display.radius", NumberField{&SkinLook::displayRadius, 0, 30}},
    {"accent", &SkinLook::accent},
    {"selection", &SkinLook::selection},
    {"selection.text", &SkinLook::selectionText},
    {"button.face", &SkinLook::buttonFace},
    {"button.hot", &SkinLook::buttonHot},
    {"button.pressed", &SkinLook::buttonPressed},
    {"button.edge", &SkinLook::buttonEdge},
    {"button.text", &SkinLook::buttonText},
    {"button.disabled", &SkinLook::buttonDisabledText},
    {"button.radius", NumberField{&SkinLook::buttonRadius, 0, 20}},
    {"button.gloss", NumberField{&SkinLook::buttonGloss, 0, 100}},
    {"button.edgewidth", NumberField{&SkinLook::buttonEdgeWidth, 0, 3}},
    {"track", &SkinLook::track},
    {"track.done", &SkinLook::trackDone},
    {"thumb", &SkinLook::thumb},
    {"tab.face", &SkinLook::tabFace},
    {"tab.active", &SkinLook::tabActive},
    {"font.title", NumberField{&SkinLook::titleWeight, 100, 900}},
    {"font.text", NumberField{&SkinLook::textWeight, 100, 900}},
});

std::optional<int> HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return std::nullopt;
}

std::optional<SkinColour> ParseColour(std::string_view text) {
    text = Trim(text, kBlanks);
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    int rgb[3] = {};
    for (int i = 0; i < 3; ++i) {
        const auto high = HexDigit(text[static_cast<size_t>(1 + 2 * i)]);
        const auto low = HexDigit(text[static_cast<size_t>(2 + 2 * i)]);
        if (!high || !low) return std::nullopt;
        rgb[i] = *high * 16 + *low;
    }
    return SkinRgb(rgb[0], rgb[1], rgb[2]);
}

std::optional<SkinGradient> ParseGradient(std::string_view text) {
    const size_t arrow = text.find('>');
    const auto from = ParseColour(text.substr(0, arrow));
    if (arrow == std::string_view::npos) return from ? std::optional(SkinGradient{*from, *from}) : std::nullopt;
    const auto to = ParseColour(text.substr(arrow + 1));
    if (!from || !to) return std::nullopt;
    return SkinGradient{*from, *to};
}

// True when `value` was good and is now in `look`.
bool Set(SkinLook& look, const Target& target, std::string_view value) {
    if (const auto* colour = std::get_if<SkinColour SkinLook::*>(&target)) {
        const auto c = ParseColour(value);
        if (c) look.*(*colour) = *c;
        return c.has_value();
    }
    if (const auto* gradient = std::get_if<SkinGradient SkinLook::*>(&target)) {
        const auto g = ParseGradient(value);
        if (g) look.*(*gradient) = *g;
        return g.has_value();
    }
    const auto& number = std::get<NumberField>(target);
    const auto n = ParseDecimal(Trim(value, kBlanks));
    if (!n || *n < number.low || *n > number.high) return false;
    look.*(number.member) = static_cast<int>(*n);
    return true;
}

constexpr SkinChoice kSkins[] = {
    {0, "界面1：黄色旋风", 200}, {1, "界面2：蓝色海洋", 201}, {2, "界面3：夜空", 202},
    {5, "界面4：青竹", 205},     {6, "界面5：银灰", 206},
};
constexpr size_t kDefaultSkin = 2;

SkinColour Shade(SkinColour c, int permille) { return BlendColour(c, SkinRgb(0, 0, 0), permille); }

// A stored colour: a plain colour, or a system colour's index above 0x80000000 (as a signed 32-bit number).
std::optional<SkinColour> StoredColour(const SettingsStore& store, std::string_view name,
                                       const std::function<SkinColour(int)>& systemColour) {
    const auto n = store.Number(name);
    if (!n) return std::nullopt;
    if (*n >= 0 && *n <= 0xFFFFFF) return static_cast<SkinColour>(*n);
    if (*n >= -0x80000000LL && *n <= -0x80000000LL + 0xFF) return systemColour(static_cast<int>(*n + 0x80000000LL));
    return std::nullopt;
}

}  // namespace

ParsedSkin ParseSkin(std::string_view bytes) {
    ParsedSkin parsed;
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    while (!bytes.empty()) {
        const size_t end = bytes.find('\n');
        std::string_view line = Trim(bytes.substr(0, end), std::string_view(" \t\r"));
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (line.empty() || line.front() == ';') continue;
        const size_t equals = line.find('=');
        bool taken = false;
        if (equals != std::string_view::npos) {
            const std::string_view key = Trim(line.substr(0, equals), std::string_view(" \t"));
            const auto field =
                std::find_if(kFields.begin(), kFields.end(), [&](const Field& f) { return f.key == key; });
            taken = field != kFields.end() && Set(parsed.look, field->target, line.substr(equals + 1));
        }
        if (!taken) parsed.ignored.emplace_back(line);
    }
    return parsed;
}

std::span<const SkinChoice> SkinChoices() { return kSkins; }

const SkinChoice& SkinFor(std::optional<long long> value) {
    for (const SkinChoice& s : kSkins) {
        if (value == s.value) return s;
    }
    return kSkins[kDefaultSkin];
}

SkinLook LookWithUserColours(SkinLook look, const SettingsStore& store,
                             const std::function<SkinColour(int index)>& systemColour) {
    if (store.IsOn(opt::kBackgroundColours)) {
        if (const auto back = StoredColour(store, opt::kBackColour, systemColour)) {
            // The user's colour at the top, a little deeper at the bottom: the skin's depth stays.
            look.background = {*back, Shade(*back, 250)};
            look.panel = *back;
            look.tabActive = *back;
            look.tabFace = Shade(*back, 150);
        }
    }
    if (store.IsOn(opt::kPanelTextColours)) {
        if (const auto text = StoredColour(store, opt::kPanelTextColour, systemColour)) look.text = *text;
    }
    return look;
}

LyricsColours LyricsColoursFor(const LyricsLook& lyrics, const SkinLook& skin) {
    const LyricsLook defaults;
    const auto own = [](SkinColour user, SkinColour byDefault, SkinColour skins) {
        return user == byDefault ? skins : user;
    };
    return {own(lyrics.background, defaults.background, skin.display.to),
            own(lyrics.current, defaults.current, skin.accent), own(lyrics.next, defaults.next, skin.displayText)};
}

SkinColour BlendColour(SkinColour a, SkinColour b, int permille) {
    permille = std::clamp(permille, 0, 1000);
    SkinColour out = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const int x = static_cast<int>((a >> shift) & 0xFF);
        const int y = static_cast<int>((b >> shift) & 0xFF);
        out |= static_cast<SkinColour>(x + ((y - x) * permille + (y >= x ? 500 : -500)) / 1000) << shift;
    }
    return out;
}

SkinColour ProgressTrackColour(const SkinLook& look, int permille, bool changesWithProgress) {
    return changesWithProgress ? BlendColour(look.trackDone.from, look.trackDone.to, permille) : look.trackDone.from;
}

ScrollPace RunningTextPace(std::optional<long long> speed) {
    const long long s = std::clamp(speed.value_or(15), 1LL, 100LL);
    // From 8 pixels a second at 1 to 160 at 100; a step of one pixel as long as the timer can keep up
    // (about 60 steps a second), larger steps beyond.
    const int perSecond = static_cast<int>(8 + (s - 1) * 152 / 99);
    const int pixels = (perSecond + 59) / 60;
    return {static_cast<unsigned>(1000 * pixels / perSecond), pixels};
}

void RunningText::Measure(int textWidth, int boxWidth, bool newText) {
    textWidth_ = std::max(0, textWidth);
    boxWidth_ = std::max(0, boxWidth);
    offset_ = newText || !Moves() ? 0 : offset_ % Period();
}

void RunningText::Step(int pixels) {
    if (Moves()) offset_ = (offset_ + std::max(0, pixels)) % Period();
}

}  // namespace lumora
