"""Pictures as PNG files, for notebooks."""
import struct
import zlib
from typing import Any

import numpy as np


def png(picture: Any) -> bytes:
    """The bytes of a file with 8 gray bits, or 24 colour bits, a pixel."""
    array = np.ascontiguousarray(picture)
    height, width = array.shape[:2]
    rows = np.zeros((height, 1 + array[0].size), np.uint8)  # each begins with its filter: none
    rows[:, 1:] = array.reshape(height, -1)

    def chunk(kind: bytes, data: bytes) -> bytes:
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    head = struct.pack(">IIBBBBB", width, height, 8, 2 if array.ndim == 3 else 0, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows.tobytes(), 3)) +
            chunk(b"IEND", b""))
