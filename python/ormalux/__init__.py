"""Machine vision for industrial inspection: the Ormalux processing library with NumPy arrays.

A recipe finds and judges, as on the command line and on the screen:

    recipe = ormalux.Recipe("station.json")
    result = recipe.run(array)
    print(result.verdict, result["lid"])

The classes of the C++ interface stand here without their prefix, their members in snake_case. Gray pictures are
arrays of height x width, colours of height x width x 3 in red, green, blue. Positions are pixels, the centre of the top
left pixel is (0, 0). The interpreter's lock is released while an operation runs.
"""
from . import _core

_core.require_main_interpreter()

from ._core import *  # noqa: E402,F401,F403
from ._core import __version__  # noqa: E402,F401
from ._draw import draw  # noqa: E402
from ._functions import blobs, circle, edges, features, line, match, read, threshold  # noqa: E402
from ._png import png as _png  # noqa: E402
from ._recipe import Error, Recipe, Result  # type: ignore[assignment] # noqa: E402

for _class in (_core.Image, _core.Image24):
    setattr(_class, "_repr_png_", lambda self: None if self.is_empty() or self.get_width() < 1 else _png(self))
    setattr(_class, "__repr__", lambda self: f"<{type(self).__name__} of {self.get_width()} x {self.get_height()} pixels>")
del _class

__all__ = sorted({name for name in dir(_core) if not name.startswith("_")} - {"require_main_interpreter"} |
                 {"Error", "Recipe", "Result", "draw", "blobs", "circle", "edges", "features", "line", "match", "read",
                  "threshold"})
