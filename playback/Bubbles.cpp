#include "playback/Bubbles.h"

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

constexpr double kPi = 3.14159265358979323846;

BubbleColour FromHue(int hue) {
    // Full saturation, light: pastel colours that read on the dark display.
    const double h = static_cast<double>(((hue % 360) + 360) % 360) / 60.0;
    const double x = 1.0 - std::fabs(std::fmod(h, 2.0) - 1.0);
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(h)) {
        case 0:
            r = 1, g = x;
            break;
        case 1:
            r = x, g = 1;
            break;
        case 2:
            g = 1, b = x;
            break;
        case 3:
            g = x, b = 1;
            break;
        case 4:
            r = x, b = 1;
            break;
        default:
            r = 1, b = x;
            break;
    }
    const auto light = [](double c) { return static_cast<std::uint8_t>(std::lround(110 + c * 145)); };
    return {light(r), light(g), light(b)};
}

}  // namespace

bool BubblesShown(bool bubblesOption, bool noBubblesInWindow, bool decoder2Plays) {
    return bubblesOption && !noBubblesInWindow && decoder2Plays;
}

BubbleField::BubbleField(std::uint32_t seed) : state_(seed ? seed : 0x9E3779B9u) {}

std::uint32_t BubbleField::Next() {
    // xorshift32: the same bubbles for the same seed on every compiler.
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_;
}

double BubbleField::Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(Next()) / 4294967296.0);
}

Bubble BubbleField::NewBubble(bool anywhere) {
    Bubble b;
    const double size = std::min(width_, height_);
    b.radius = Uniform(std::max(2.0, size / 40), std::max(3.0, size / 12));
    b.x = Uniform(b.radius, std::max(b.radius, width_ - b.radius));
    b.y = anywhere ? Uniform(b.radius, height_ + b.radius) : height_ + b.radius;
    // Small bubbles rise faster, as they seem to.
    b.speed = Uniform(0.8, 1.6) * std::max(1.0, height_ / 90.0) * (1.5 - b.radius / std::max(3.0, size / 12));
    b.speed = std::max(0.5, b.speed);
    b.phase = Uniform(0, 2 * kPi);
    b.hue = static_cast<int>(Next() % 360);
    return b;
}

void BubbleField::SetArea(int width, int height) {
    width_ = std::max(0, width);
    height_ = std::max(0, height);
    steps_ = 0;
    bubbles_.clear();
    if (width_ < 8 || height_ < 8) return;
    // A display that opens already full, not one that slowly fills.
    for (size_t i = 0; i < kMaxBubbles / 2; ++i) bubbles_.push_back(NewBubble(true));
}

void BubbleField::Step() {
    if (width_ < 8 || height_ < 8) return;
    ++steps_;
    for (Bubble& b : bubbles_) {
        b.y -= b.speed;
        b.phase += 0.15;
        b.x = std::clamp(b.x + std::sin(b.phase) * b.radius * 0.12, b.radius, std::max(b.radius, width_ - b.radius));
    }
    std::erase_if(bubbles_, [](const Bubble& b) { return b.y + b.radius < 0; });
    if (bubbles_.size() < kMaxBubbles && Next() % 3 == 0) bubbles_.push_back(NewBubble(false));
}

BubbleColour BubbleField::ColourOf(const Bubble& bubble, bool changing) const {
    if (!changing) return {150, 220, 255};
    return FromHue(bubble.hue + static_cast<int>(steps_ * 4));
}

}  // namespace lumora
