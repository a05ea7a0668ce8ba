#pragma once
// The bubble display that stands in for the spectrum while decoder 2 plays (it gives no sound data to
// draw): bubbles rise from the bottom of the display area, sway a little and burst at the top. The
// motion is here, seeded and stepped by hand; the window draws what it holds.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora {

struct Bubble {
    double x = 0;  // centre, in the area's pixels
    double y = 0;
    double radius = 0;
    double speed = 0;  // pixels risen in one step
    double phase = 0;  // where it is in its sway
    int hue = 0;       // 0-359, its own colour while colours change
    bool operator==(const Bubble&) const = default;
};

struct BubbleColour {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const BubbleColour&) const = default;
};

// Bubbles stand in for the spectrum of the audio display while decoder 2 plays with "L27" on, unless
// "L64" keeps them out of the audio\lyrics window.
bool BubblesShown(bool bubblesOption, bool noBubblesInWindow, bool decoder2Plays);

class BubbleField {
public:
    // At most this many bubbles at a time; about one step each 40 ms looks calm.
    static constexpr std::size_t kMaxBubbles = 28;
    static constexpr unsigned kStepMs = 40;

    explicit BubbleField(std::uint32_t seed);

    // The area the bubbles rise in, in pixels (with the window's DPI in it); every bubble starts anew.
    void SetArea(int width, int height);
    // One step: each bubble rises by its speed and sways; one whose top passed the area's top bursts;
    // a new one may come up from below the bottom.
    void Step();
    const std::vector<Bubble>& Bubbles() const { return bubbles_; }
    // A bubble's colour: one calm colour, or, when the colours change, its own hue moving on with every step.
    BubbleColour ColourOf(const Bubble& bubble, bool changing) const;

private:
    std::uint32_t Next();
    double Uniform(double low, double high);
    Bubble NewBubble(bool anywhere);

    std::uint32_t state_;
    int width_ = 0;
    int height_ = 0;
    unsigned steps_ = 0;  // taken since the area was set; turns the hues
    std::vector<Bubble> bubbles_;
};

}  // namespace lumora
