"""Pictures and recipes that the tests share."""
import json
import os
import pathlib
import struct

import numpy as np

CLI = os.environ.get("ORMALUX_CLI", "")
LIBRARY = os.environ.get("ORMALUX_LIBRARY", "")
PARTS = ((5, 6, 10, 10), (40, 20, 10, 10), (70, 8, 16, 12))  # left, top, width, height

RECIPE = json.dumps({
    "name": "station", "values": {"level": 120, "least": 2},
    "steps": [{"step": "gassian3x3"}, {"step": "blobs", "name": "part", "threshold": "$level", "min_size": "3x3"}],
    "limits": [{"of": "part.count", "at_least": "$least"}, {"of": "part.width", "equals": 99, "severity": "warn"}]})


def parts(width=97, height=41):
    """Bright rectangles on a dark ground."""
    picture = np.full((height, width), 30, np.uint8)
    for left, top, w, h in PARTS:
        picture[top:top + h, left:left + w] = 210
    return picture


def noise(shape, seed=1, dtype=np.uint8, high=256):
    return np.random.default_rng(seed).integers(0, high, shape).astype(dtype)


def save_bmp(path, picture):
    """An 8-bit or, from red, green, blue, a 24-bit BMP file."""
    height, width = picture.shape[:2]
    bits = 8 if picture.ndim == 2 else 24
    row = (width * bits // 8 + 3) // 4 * 4
    body = b"".join(np.ascontiguousarray(line if bits == 8 else line[:, ::-1]).tobytes().ljust(row, b"\0")
                    for line in picture[::-1])
    palette = b"".join(bytes([i, i, i, 0]) for i in range(256)) if bits == 8 else b""
    offset = 54 + len(palette)
    pathlib.Path(path).write_bytes(
        b"BM" + struct.pack("<IHHI", offset + len(body), 0, 0, offset) +
        struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, len(body), 0, 0, 256 if bits == 8 else 0, 0) +
        palette + body)
