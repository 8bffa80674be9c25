"""Single steps as functions. Keywords are the fields of the step in a recipe; one that is None takes its default."""
from __future__ import annotations

import functools
import json
from typing import Any

import numpy as np

from ._recipe import Error, Recipe, Result, _plain


@functools.lru_cache(maxsize=256)
def _kept(text: str) -> Recipe:
    return Recipe.parse(text)


def _run(step: str, array: Any, order: str, bits: int, fields: dict) -> Result:
    given = {name: value for name, value in fields.items() if value is not None}
    for name in ("min_size", "max_size"):
        if isinstance(given.get(name), (tuple, list)):
            given[name] = "x".join(str(length) for length in given[name])
    text = json.dumps({"steps": [{"step": step, "name": "found", **given}]}, default=_plain)
    # Steps with sources are bound anew: their files may have changed.
    recipe = Recipe.parse(text) if "source" in given else _kept(text)
    result = recipe.run(array, bits=bits, order=order)
    if result.error:
        raise Error(result.error)
    return result


def threshold(array: Any, threshold: Any = None, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """A new gray array: 255 above the threshold, else 0. threshold: "auto", 0 to 255, or a range "90..200" that becomes
    white. Also: value, auto_step, roi."""
    image = _run("threshold", array, order, bits, {"threshold": threshold, **fields}).image
    if image is None:
        raise Error("too little memory")
    return image


def blobs(array: Any, threshold: Any = None, object: Any = None, *, order: str = "rgb", bits: int = 8,
          **fields: Any) -> np.ndarray:
    """The connected regions brighter ("white") or not brighter ("black") than a threshold, by their boxes. Also: roi,
    min_size, max_size, sort."""
    return _run("blobs", array, order, bits, {"threshold": threshold, "object": object, **fields})["found"]


def features(array: Any, threshold: Any = None, object: Any = None, *, order: str = "rgb", bits: int = 8,
             **fields: Any) -> np.ndarray:
    """Regions with area, centroid, outline, axes and holes. Also: connectivity, border, where, sort, roi."""
    return _run("features", array, order, bits, {"threshold": threshold, "object": object, **fields})["found"]


def match(array: Any, source: Any, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """The parts that look like a template, an .mcs file. Also: threshold, roi, min_yield, best, ties, sort, list."""
    return _run("match", array, order, bits, {"source": source, **fields})["found"]


def read(array: Any, source: Any, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """Characters, read by the .ocs files of a list or folder. Also: threshold, object, shift, reject, roi."""
    return _run("read", array, order, bits, {"source": source, **fields})["found"]


def edges(array: Any, line: Any, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """Sub-pixel edges along the line (x1, y1, x2, y2). Also: width, polarity, select, contrast, sigma."""
    return _run("edges", array, order, bits, {"line": line, **fields})["found"]


def line(array: Any, box: Any, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """A straight edge in the box (x, y, length, width, angle). Also: scans, polarity, select, contrast, sigma."""
    return _run("line", array, order, bits, {"box": box, **fields})["found"]


def circle(array: Any, center: Any, radii: Any, *, order: str = "rgb", bits: int = 8, **fields: Any) -> np.ndarray:
    """A circular edge round the centre, between two radii. Also: scans, polarity, select, contrast, sigma."""
    return _run("circle", array, order, bits, {"center": center, "radii": radii, **fields})["found"]
