#!/usr/bin/env python3
"""Draws Lumora's icon and writes it as a Windows .ico (or, with --png SIZE, one size as PNG).

The design: a disc lit from its upper left, amber through coral to violet, with a soft glow and a
white play sign; from 32 pixels up a small four-pointed spark. Each size is drawn from the shapes'
distance fields, one sample a pixel, so edges stay crisp at 16 pixels and smooth at 256.

Usage: make-icon.py OUT.ico          16, 24, 32, 48, 64 (32-bit with alpha) and 256 (PNG)
       make-icon.py --png SIZE OUT.png
       make-icon.py --wizard OUT.bmp     the installer's welcome picture, 164 x 314
"""
import math
import struct
import sys
import zlib

SIZES = (16, 24, 32, 48, 64, 256)

DISC_CENTRE = (0.5, 0.5)
DISC_RADIUS = 0.46
# Gradient stops along the diagonal from the upper left: amber, coral, violet.
STOPS = ((0.0, (255, 184, 76)), (0.5, (250, 92, 112)), (1.0, (112, 52, 214)))
# The play sign, shifted right of centre so that it looks centred; its corners rounded by PLAY_ROUND.
PLAY = ((0.405, 0.315), (0.405, 0.685), (0.725, 0.5))
PLAY_ROUND = 0.035
SPARK_CENTRE = (0.735, 0.265)


def clamp(v, lo=0.0, hi=1.0):
    return lo if v < lo else hi if v > hi else v


def sd_circle(x, y, c, r):
    return math.hypot(x - c[0], y - c[1]) - r


def sd_triangle(x, y, a, b, c):
    """Signed distance to a triangle: negative inside."""
    best = float("inf")
    sign = 1.0
    inside = True
    orient = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])
    for p, q in ((a, b), (b, c), (c, a)):
        ex, ey = q[0] - p[0], q[1] - p[1]
        vx, vy = x - p[0], y - p[1]
        t = clamp((vx * ex + vy * ey) / (ex * ex + ey * ey))
        best = min(best, math.hypot(vx - ex * t, vy - ey * t))
        if (ex * vy - ey * vx) * orient < 0:
            inside = False
    if inside:
        sign = -1.0
    return sign * best


def sd_spark(x, y, c, r):
    """A four-pointed star: the union of two thin diamonds, slightly concave."""
    dx, dy = abs(x - c[0]), abs(y - c[1])
    # |dx|^k + |dy|^k = r^k with k < 1 gives the pinched star shape.
    k = 0.55
    if dx == 0 and dy == 0:
        return -r
    v = (dx**k + dy**k) ** (1 / k)
    return (v - r) * 0.6


def gradient(t):
    for (t0, c0), (t1, c1) in zip(STOPS, STOPS[1:]):
        if t <= t1:
            f = clamp((t - t0) / (t1 - t0))
            # Smooth the transition so the middle band does not look banded.
            f = f * f * (3 - 2 * f)
            return tuple(c0[i] + (c1[i] - c0[i]) * f for i in range(3))
    return STOPS[-1][1]


def over(dst, rgb, alpha):
    """Composites `rgb` at `alpha` over the premultiplied pixel `dst`."""
    r, g, b, a = dst
    return (rgb[0] * alpha + r * (1 - alpha), rgb[1] * alpha + g * (1 - alpha), rgb[2] * alpha + b * (1 - alpha),
            alpha + a * (1 - alpha))


def render(size):
    """Rows of (r, g, b, a) bytes, top row first, straight (not premultiplied) alpha."""
    px = 1.0 / size
    # Below 32 pixels a half-pixel edge weighs much in the shape: keep it a touch sharper.
    edge = px * (0.85 if size < 32 else 1.0)
    cover = lambda d: clamp(0.5 - d / edge)
    rows = []
    for j in range(size):
        row = bytearray()
        y = (j + 0.5) * px
        for i in range(size):
            x = (i + 0.5) * px
            pixel = (0.0, 0.0, 0.0, 0.0)
            disc = cover(sd_circle(x, y, DISC_CENTRE, DISC_RADIUS))
            if disc > 0:
                t = clamp(((x - 0.5) + (y - 0.5)) / (2 * DISC_RADIUS * 0.9) + 0.5)
                pixel = over(pixel, gradient(t), disc)
                # The light: a soft white glow towards the upper left.
                glow = clamp(1 - math.hypot(x - 0.3, y - 0.27) / 0.42) ** 2 * 0.45
                pixel = over(pixel, (255, 255, 255), glow * disc)
                # A darker rim gives the disc its edge against light backgrounds.
                rim = clamp(1 - abs(sd_circle(x, y, DISC_CENTRE, DISC_RADIUS - 1.2 * px)) / (1.2 * px))
                pixel = over(pixel, (70, 30, 120), 0.25 * rim * disc)
                if size >= 32:
                    shadow = sd_triangle(x, y - 0.018, *PLAY) - PLAY_ROUND
                    pixel = over(pixel, (60, 20, 90), 0.22 * clamp(0.5 - shadow / 0.04) * disc)
                    spark = cover(sd_spark(x, y, SPARK_CENTRE, 0.075))
                    pixel = over(pixel, (255, 250, 235), 0.9 * spark * disc)
            play = cover(sd_triangle(x, y, *PLAY) - PLAY_ROUND)
            pixel = over(pixel, (255, 255, 255), play)
            r, g, b, a = pixel
            if a > 0:
                r, g, b = r / a, g / a, b / a
            row += bytes(int(round(clamp(v / 255) * 255)) for v in (r, g, b)) + bytes([int(round(a * 255))])
        rows.append(bytes(row))
    return rows


def png(size, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    raw = b"".join(b"\x00" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def dib(size, rows):
    """A 32-bit BGRA icon image: header, bottom-up pixels, then the (unused, all clear) AND mask."""
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(
        bytes(b for k in range(0, len(row), 4) for b in (row[k + 2], row[k + 1], row[k], row[k + 3]))
        for row in reversed(rows))
    mask_row = ((size + 31) // 32) * 4
    return header + pixels + bytes(mask_row * size)


def ico(sizes):
    images = [png(s, render(s)) if s >= 256 else dib(s, render(s)) for s in sizes]
    out = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for s, data in zip(sizes, images):
        out += struct.pack("<BBBBHHII", s % 256, s % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return out + b"".join(images)


def wizard(width=164, height=314, size=112):
    """The installer's welcome picture: the icon's colours falling from light to deep, the icon on it."""
    mark = render(size)
    left, top = (width - size) // 2, 70
    rows = []
    for j in range(height):
        row = bytearray()
        for i in range(width):
            t = clamp((0.35 * i / width + j / height) / 1.2)
            colour = gradient(t)
            glow = clamp(1 - math.hypot(i - width * 0.3, j - height * 0.15) / (width * 0.9)) ** 2 * 0.35
            colour = tuple(c + (255 - c) * glow for c in colour)
            if left <= i < left + size and top <= j < top + size:
                k = 4 * (i - left)
                r, g, b, a = mark[j - top][k:k + 4]
                colour = tuple(m * a / 255 + c * (1 - a / 255) for m, c in zip((r, g, b), colour))
            row += bytes(int(round(clamp(c / 255) * 255)) for c in reversed(colour))  # BGR
        row += bytes((-len(row)) % 4)
        rows.append(bytes(row))
    pixels = b"".join(reversed(rows))
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 3780, 3780, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(pixels), 0, 0, 14 + len(info)) + info + pixels


def main(argv):
    if len(argv) == 4 and argv[1] == "--png":
        size = int(argv[2])
        data = png(size, render(size))
        path = argv[3]
    elif len(argv) == 3 and argv[1] == "--wizard":
        data = wizard()
        path = argv[2]
    elif len(argv) == 2:
        data = ico(SIZES)
        path = argv[1]
    else:
        sys.exit(__doc__)
    with open(path, "wb") as f:
        f.write(data)


if __name__ == "__main__":
    main(sys.argv)
