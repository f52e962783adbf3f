#!/usr/bin/env python3
"""Writes the metrics of a TrueType font for the characters of Latin-1 as a header.

usage: fontwidths.py FONT.ttf >netwidth.h
"""
import struct
import sys

data = open(sys.argv[1], "rb").read()
tables = {}
for i in range(struct.unpack_from(">H", data, 4)[0]):
    tag, _, start, _ = struct.unpack_from(">4sIII", data, 12 + 16 * i)
    tables[tag.decode()] = start

(em,) = struct.unpack_from(">H", data, tables["head"] + 18)
ascent, descent = struct.unpack_from(">hh", data, tables["hhea"] + 4)
(long_metrics,) = struct.unpack_from(">H", data, tables["hhea"] + 34)


def glyphs():
    """The glyph of each character below 256, from a segment map (format 4)."""
    cmap = tables["cmap"]
    for i in range(struct.unpack_from(">H", data, cmap + 2)[0]):
        start = cmap + struct.unpack_from(">I", data, cmap + 8 + 8 * i)[0]
        if struct.unpack_from(">H", data, start)[0] == 4:
            break
    count = struct.unpack_from(">H", data, start + 6)[0] // 2
    ends, starts, deltas, offsets = (start + 14, start + 16 + 2 * count,
                                     start + 16 + 4 * count, start + 16 + 6 * count)
    for c in range(256):
        s = next(k for k in range(count) if struct.unpack_from(">H", data, ends + 2 * k)[0] >= c)
        first, delta, offset = (struct.unpack_from(">H", data, t + 2 * s)[0] for t in (starts, deltas, offsets))
        if c < first:
            yield 0
        elif offset == 0:
            yield (c + delta) & 0xFFFF
        else:
            glyph = struct.unpack_from(">H", data, offsets + 2 * s + offset + 2 * (c - first))[0]
            yield (glyph + delta) & 0xFFFF if glyph else 0


widths = [struct.unpack_from(">H", data, tables["hmtx"] + 4 * min(g, long_metrics - 1))[0] for g in glyphs()]
print(f"""// Made from {sys.argv[1]} by fontwidths.py; do not edit.
//
// The size of the letters, the height above and the depth below the line they stand on, and how far the pen
// moves behind each character of Latin-1, all in units of the font.
#ifndef NETDRAW_NETWIDTH_H
#define NETDRAW_NETWIDTH_H

#include <cstdint>

namespace netwidth {{

inline constexpr int32_t EM = {em};
inline constexpr int32_t ASCENT = {ascent};
inline constexpr int32_t DESCENT = {-descent};

// clang-format off
inline constexpr int16_t WIDTHS[256] = {{""")
for row in range(0, 256, 16):
    print("    " + " ".join(f"{w}," for w in widths[row:row + 16]))
print("""};
// clang-format on

}  // namespace netwidth

#endif""")
