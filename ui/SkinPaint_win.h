#pragma once
// Drawing in the skin with GDI at the window's own DPI: gradients, rounded glossy shapes, and a window's
// background kept as one bitmap whose pieces the child controls paint behind themselves. Nothing is
// stretched, so every DPI is sharp.
#include <windows.h>

#include <functional>

#include "common/SkinDescription.h"

namespace lumora {

void FillGradient(HDC dc, const RECT& r, const SkinGradient& g, bool vertical = true);
// A rounded shape of corner `radius` filled with `fill`, its upper half lit by `gloss` (0..100), and an edge
// `edgeWidth` wide (none at 0).
void FillRounded(HDC dc, const RECT& r, int radius, const SkinGradient& fill, int gloss, COLORREF edge, int edgeWidth);

// A window's whole background as one bitmap. Children that paint their own background (statics, sliders,
// image buttons) take BrushFor as their WM_CTLCOLOR* brush and so paint the piece under them.
class Backdrop {
public:
    Backdrop() = default;
    ~Backdrop() { Clear(); }
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;

    // Paints a new bitmap of the window's client size with `paint`.
    void Make(HWND window, const std::function<void(HDC, const RECT&)>& paint);
    // Copies the part `r` (client coordinates) to `dc`.
    void Draw(HDC dc, const RECT& r) const;
    // The pattern brush, aligned on `dc` for `child` of the backdrop's window; null before Make.
    HBRUSH BrushFor(HDC dc, HWND child) const;

private:
    void Clear();
    HWND window_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HBRUSH brush_ = nullptr;
};

// Paints into a memory bitmap and copies the whole to the target when it ends: no flicker.
class BufferedDc {
public:
    BufferedDc(HDC target, const RECT& r);
    ~BufferedDc();
    BufferedDc(const BufferedDc&) = delete;
    BufferedDc& operator=(const BufferedDc&) = delete;
    HDC Get() const { return dc_; }
    // The area in the buffer's own coordinates (from 0, 0).
    RECT Area() const { return {0, 0, r_.right - r_.left, r_.bottom - r_.top}; }

private:
    HDC target_;
    RECT r_;
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ old_;
};

}  // namespace lumora
