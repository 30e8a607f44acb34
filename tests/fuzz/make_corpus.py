#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_spath_read: a few valid path streams of formats 1 and 2.

Layout: string (int32 length + bytes), version byte, closed byte, int32 vertex count, then records.
Format 2 records: code byte (mode code Smooth 2, Cusp 3, Symmetric 1, plus 4 for a short record holding
the anchor only) and doubles. Format 1 records: six coordinates and a mode byte.
"""
import os
import struct

HERE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus", "fuzz_spath_read")


def header(version, closed, count):
    return struct.pack("<iBBi", 0, version, closed, count)


def v2(closed, records):
    out = header(2, closed, len(records))
    for code, points in records:
        out += struct.pack("<B", code) + struct.pack("<%dd" % len(points), *points)
    return out


def v1(closed, records):
    out = header(1, closed, len(records))
    for mode, points in records:
        out += struct.pack("<6dB", *points, mode)
    return out


SEEDS = {
    "v2_empty": v2(0, []),
    "v2_single_retracted": v2(0, [(7, (1.0, 2.0))]),
    "v2_closed_mixed": v2(1, [
        (2, (0.0, 1.0, 1.0, 1.0, 2.0, 1.0)),
        (5, (5.0, 5.0)),
        (1, (3.0, 3.0, 4.0, 4.0, 5.0, 5.0)),
        (6, (-1.5, 1e300)),
    ]),
    "v1_open": v1(0, [
        (2, (0.0, 0.0, 1.0, 1.0, 2.0, 2.0)),
        (1, (3.0, 3.0, 4.0, 4.0, 5.0, 5.0)),
    ]),
    "v1_closed": v1(1, [(0, (1.0, 0.0, 1.0, 0.0, 1.0, 0.0))]),
}

if __name__ == "__main__":
    os.makedirs(HERE, exist_ok=True)
    for name, data in SEEDS.items():
        with open(os.path.join(HERE, name), "wb") as f:
            f.write(data)
