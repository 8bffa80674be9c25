"""Results over pictures."""
from typing import Any, Tuple

import numpy as np

from ._recipe import Result

COLORS = {"blobs": (0, 255, 0), "color-blobs": (0, 255, 0), "features": (0, 255, 0), "compare": (255, 64, 64),
          "match": (255, 230, 0), "ocr": (64, 160, 255), "read": (64, 160, 255)}
Color = Tuple[int, int, int]


def _line(picture: np.ndarray, x1: float, y1: float, x2: float, y2: float, color: Color) -> None:
    if not np.isfinite([x1, y1, x2, y2]).all():
        return
    height, width = picture.shape[:2]
    # Only the part near the picture is walked, however far away the ends are.
    low, high = 0.0, 1.0
    for start, end, size in ((x1, x2, width), (y1, y2, height)):
        if start == end:
            if not -1 <= start <= size:
                return
            continue
        near, far = sorted(((-1 - start) / (end - start), (size - start) / (end - start)))
        low, high = max(low, near), min(high, far)
    if low > high:
        return
    ends = np.array([[x1, y1]]) + np.array([[low], [high]]) * np.array([[x2 - x1, y2 - y1]])
    count = int(np.abs(ends[1] - ends[0]).max()) + 2
    x, y = np.rint(np.linspace(ends[0], ends[1], count)).astype(int).T
    inside = (x >= 0) & (x < width) & (y >= 0) & (y < height)
    picture[y[inside], x[inside]] = color


def _box(picture: np.ndarray, left: float, top: float, right: float, bottom: float, color: Color) -> None:
    for ends in ((left, top, right, top), (left, bottom, right, bottom), (left, top, left, bottom),
                 (right, top, right, bottom)):
        _line(picture, *ends, color)


def _circle(picture: np.ndarray, x: float, y: float, radius: float, color: Color) -> None:
    if not np.isfinite([x, y, radius]).all() or radius <= 0:
        return
    angles = np.linspace(0, 2 * np.pi, int(min(max(16, 7 * radius), 1e5)))
    columns, rows = np.rint(x + radius * np.cos(angles)), np.rint(y + radius * np.sin(angles))
    inside = (columns >= 0) & (columns < picture.shape[1]) & (rows >= 0) & (rows < picture.shape[0])
    picture[rows[inside].astype(int), columns[inside].astype(int)] = color


def draw(array: Any, result: Result) -> np.ndarray:
    """A copy of the picture, in red, green, blue, with boxes, lines, circles and crosses where the result has them."""
    source = np.asarray(array)
    if source.dtype != np.uint8:
        raise TypeError(f"an array of {source.dtype}: expected uint8")
    if source.ndim not in (2, 3) or (source.ndim == 3 and source.shape[2] not in (3, 4)):
        raise ValueError("a picture is an array of height x width, or x 3 or 4 for colours")
    picture = np.repeat(source[:, :, None], 3, axis=2) if source.ndim == 2 else source[:, :, :3].copy()
    kinds = {result.get_step_name(i) or str(i + 1): result.get_step_kind(i) for i in range(result.get_step_count())}
    for step in result.keys():
        color = COLORS.get(kinds[step], (255, 0, 255))
        table = result[step]
        names = set(table.dtype.names or ())
        for row in table:
            if {"left", "top", "right", "bottom"} <= names:
                _box(picture, row["left"], row["top"], row["right"], row["bottom"], color)
            if {"x1", "y1", "x2", "y2"} <= names:
                _line(picture, row["x1"], row["y1"], row["x2"], row["y2"], color)
            if {"x", "y", "radius"} <= names:
                _circle(picture, row["x"], row["y"], row["radius"], color)
            center = ("x", "y") if {"x", "y"} <= names else ("centroid_x", "centroid_y")
            if set(center) <= names:
                x, y = row[center[0]], row[center[1]]
                _line(picture, x - 4, y, x + 4, y, color)
                _line(picture, x, y - 4, x, y + 4, color)
    return picture
