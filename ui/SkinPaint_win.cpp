#include "ui/SkinPaint_win.h"

#include <algorithm>

namespace lumora {
namespace {

TRIVERTEX Vertex(LONG x, LONG y, COLORREF c) {
    TRIVERTEX v{};
    v.x = x;
    v.y = y;
    v.Red = static_cast<COLOR16>(GetRValue(c) << 8);
    v.Green = static_cast<COLOR16>(GetGValue(c) << 8);
    v.Blue = static_cast<COLOR16>(GetBValue(c) << 8);
    return v;
}

}  // namespace

void FillGradient(HDC dc, const RECT& r, const SkinGradient& g, bool vertical) {
    if (r.right <= r.left || r.bottom <= r.top) return;
    TRIVERTEX v[2] = {Vertex(r.left, r.top, g.from), Vertex(r.right, r.bottom, g.to)};
    GRADIENT_RECT rect{0, 1};
    GradientFill(dc, v, 2, &rect, 1, vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

void FillRounded(HDC dc, const RECT& r, int radius, const SkinGradient& fill, int gloss, COLORREF edge, int edgeWidth) {
    if (r.right <= r.left || r.bottom <= r.top) return;
    const int d = std::max(0, 2 * radius);
    // The region leaves out its right and bottom edge: one more pixel each.
    HRGN shape = CreateRoundRectRgn(r.left, r.top, r.right + 1, r.bottom + 1, d, d);
    const int saved = SaveDC(dc);
    ExtSelectClipRgn(dc, shape, RGN_AND);
    FillGradient(dc, r, fill);
    if (gloss > 0) {
        // Light from above: the upper half fades from a brighter edge into the face.
        const SkinColour white = SkinRgb(255, 255, 255);
        const SkinColour middle = BlendColour(fill.from, fill.to, 500);
        RECT upper = r;
        upper.bottom = r.top + (r.bottom - r.top) / 2;
        FillGradient(dc, upper, {BlendColour(fill.from, white, gloss * 5), BlendColour(middle, white, gloss * 2)});
    }
    RestoreDC(dc, saved);
    if (edgeWidth > 0) {
        HBRUSH brush = CreateSolidBrush(edge);
        FrameRgn(dc, shape, brush, edgeWidth, edgeWidth);
        DeleteObject(brush);
    }
    DeleteObject(shape);
}

void Backdrop::Clear() {
    if (brush_) DeleteObject(brush_);
    if (bitmap_) DeleteObject(bitmap_);
    brush_ = nullptr;
    bitmap_ = nullptr;
}

void Backdrop::Make(HWND window, const std::function<void(HDC, const RECT&)>& paint) {
    Clear();
    window_ = window;
    RECT client;
    GetClientRect(window, &client);
    if (client.right <= 0 || client.bottom <= 0) return;
    HDC screen = GetDC(window);
    bitmap_ = CreateCompatibleBitmap(screen, client.right, client.bottom);
    HDC dc = CreateCompatibleDC(screen);
    HGDIOBJ old = SelectObject(dc, bitmap_);
    paint(dc, client);
    SelectObject(dc, old);
    DeleteDC(dc);
    ReleaseDC(window, screen);
    brush_ = CreatePatternBrush(bitmap_);
}

void Backdrop::Draw(HDC dc, const RECT& r) const {
    if (!bitmap_) return;
    HDC mem = CreateCompatibleDC(dc);
    HGDIOBJ old = SelectObject(mem, bitmap_);
    BitBlt(dc, r.left, r.top, r.right - r.left, r.bottom - r.top, mem, r.left, r.top, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
}

HBRUSH Backdrop::BrushFor(HDC dc, HWND child) const {
    if (!brush_) return nullptr;
    POINT at{0, 0};
    MapWindowPoints(child, window_, &at, 1);
    SetBrushOrgEx(dc, -at.x, -at.y, nullptr);
    return brush_;
}

BufferedDc::BufferedDc(HDC target, const RECT& r)
    : target_(target),
      r_(r),
      dc_(CreateCompatibleDC(target)),
      bitmap_(CreateCompatibleBitmap(target, std::max(1L, r.right - r.left), std::max(1L, r.bottom - r.top))),
      old_(SelectObject(dc_, bitmap_)) {}

BufferedDc::~BufferedDc() {
    BitBlt(target_, r_.left, r_.top, r_.right - r_.left, r_.bottom - r_.top, dc_, 0, 0, SRCCOPY);
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

}  // namespace lumora
