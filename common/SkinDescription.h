#pragma once
// Lumora's skins: each look is a small text description of ours (res/skins/*.skin, built into the program),
// read here into the colours and shapes the windows draw with. The drawing itself is in ui/Theme_win.
//
// The format: one "key = value" a line; a line starting with ";" is a comment. A colour is "#RRGGBB", a
// gradient two colours "#RRGGBB > #RRGGBB" (top to bottom, or start to end; one colour is a flat one), a
// number plain decimal. Unknown keys are ignored and a bad value leaves that field at its default (the
// night look), so an old program reads a newer skin and a damaged skin still draws.
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class SettingsStore;
struct LyricsLook;

// A colour as Windows keeps it (COLORREF): red in the low byte, then green, then blue.
using SkinColour = std::uint32_t;
constexpr SkinColour SkinRgb(int r, int g, int b) {
    return static_cast<SkinColour>(r) | (static_cast<SkinColour>(g) << 8) | (static_cast<SkinColour>(b) << 16);
}

struct SkinGradient {
    SkinColour from = 0;
    SkinColour to = 0;
    bool operator==(const SkinGradient&) const = default;
};

// Every field has the night look's value until a description sets it.
struct SkinLook {
    SkinGradient background{SkinRgb(34, 46, 68), SkinRgb(18, 24, 38)};  // the windows, top to bottom
    SkinColour panel = SkinRgb(40, 52, 76);                             // dialog pages, the list
    SkinColour text = SkinRgb(226, 232, 242);                           // on the background and panels
    SkinGradient display{SkinRgb(10, 16, 28), SkinRgb(20, 30, 48)};     // the main window's display
    SkinColour displayEdge = SkinRgb(70, 96, 140);
    SkinColour displayText = SkinRgb(120, 220, 255);
    SkinColour accent = SkinRgb(255, 190, 70);                            // the title, warnings, spectrum peaks, focus
    SkinGradient selection{SkinRgb(60, 110, 180), SkinRgb(40, 78, 140)};  // the list's chosen line
    SkinColour selectionText = SkinRgb(255, 255, 255);
    SkinGradient buttonFace{SkinRgb(66, 86, 122), SkinRgb(44, 58, 86)};
    SkinGradient buttonHot{SkinRgb(88, 116, 160), SkinRgb(58, 78, 114)};
    SkinGradient buttonPressed{SkinRgb(30, 40, 60), SkinRgb(50, 66, 96)};
    SkinColour buttonEdge = SkinRgb(100, 128, 176);
    SkinColour buttonText = SkinRgb(230, 238, 250);
    SkinColour buttonDisabledText = SkinRgb(110, 124, 150);
    int buttonRadius = 8;                    // corner radius at 96 DPI, 0..20
    int buttonGloss = 30;                    // how much lighter the upper half is, 0..100
    int buttonEdgeWidth = 1;                 // 0..3
    SkinColour track = SkinRgb(16, 22, 34);  // a slider's empty track
    SkinGradient trackDone{SkinRgb(70, 170, 255), SkinRgb(150, 230, 255)};  // played part: at start > at end
    SkinGradient thumb{SkinRgb(220, 236, 255), SkinRgb(120, 160, 210)};
    SkinColour tabFace = SkinRgb(30, 40, 60);  // the settings dialog's tab strip
    SkinColour tabActive = SkinRgb(40, 52, 76);
    int displayRadius = 10;  // 0..30
    int titleWeight = 700;   // font weights, 100..900
    int textWeight = 400;
    bool operator==(const SkinLook&) const = default;
};

struct ParsedSkin {
    SkinLook look;
    // Lines that set nothing: an unknown key, a bad value, no "=" (for the skins' own test).
    std::vector<std::string> ignored;
};
ParsedSkin ParseSkin(std::string_view bytes);

// The skins the user chooses from ("L35"): the number kept in the store, the name the lists show, and the
// resource the description is built into.
struct SkinChoice {
    int value;
    std::string_view name;
    int resource;
};
std::span<const SkinChoice> SkinChoices();
// The choice for a stored number; the default skin (2) for any other.
const SkinChoice& SkinFor(std::optional<long long> value);

// The look drawn: the skin's, with the user's own background ("L6" with "BackColour") and panel text
// ("L8" with "PanelTextColour") where those are on. `systemColour` answers a system colour's index
// (a stored 0x80000000 + index).
SkinLook LookWithUserColours(SkinLook look, const SettingsStore& store,
                             const std::function<SkinColour(int index)>& systemColour);

// The lyrics lines' colours: each one the user's own (the lyrics settings), or the skin's while it is still
// the lyrics' default: the display behind, the accent for the line sung, the display's text for the next.
struct LyricsColours {
    SkinColour background = 0;
    SkinColour current = 0;
    SkinColour next = 0;
    bool operator==(const LyricsColours&) const = default;
};
LyricsColours LyricsColoursFor(const LyricsLook& lyrics, const SkinLook& skin);

// `a` to `b` by `permille` (0 = a, 1000 = b).
SkinColour BlendColour(SkinColour a, SkinColour b, int permille);
// The played part of the progress track at `permille` of the file: with "进度滑道变色" on it turns from the
// skin's start colour to its end colour as the file plays; off, it keeps the start colour.
SkinColour ProgressTrackColour(const SkinLook& look, int permille, bool changesWithProgress);

// The main window's running text: it moves only when it does not fit its box, `pixels` every `intervalMs`.
// "L30" 1 is the slowest, 100 the fastest; other numbers are taken as the nearest end.
struct ScrollPace {
    unsigned intervalMs = 0;
    int pixels = 0;
};
ScrollPace RunningTextPace(std::optional<long long> speed);

class RunningText {
public:
    // The text's and the box's width in pixels; a new text starts again at its beginning.
    void Measure(int textWidth, int boxWidth, bool newText);
    bool Moves() const { return textWidth_ > boxWidth_; }
    // One step of the scroll: the text goes round, with a gap, and comes back in from the right.
    void Step(int pixels);
    void Rewind() { offset_ = 0; }
    // Where the text is drawn: at -Offset(), and again at -Offset() + Period() while it moves.
    int Offset() const { return offset_; }
    int Period() const { return textWidth_ + Gap(); }

private:
    int Gap() const { return boxWidth_ / 3 + 1; }
    int textWidth_ = 0;
    int boxWidth_ = 0;
    int offset_ = 0;  // 0 <= offset_ < Period() while the text moves, else 0
};

}  // namespace lumora
