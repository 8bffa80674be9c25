"""Recipes and what they find."""
from __future__ import annotations

import json
import os
from typing import Any, Dict, Iterator, List, Optional, Tuple, Union

import numpy as np

from . import _core
from ._png import png

PathLike = Union[str, bytes, "os.PathLike[str]"]


class Error(Exception):
    """What could not be done: `file` and `reason`, one line a fault."""

    def __init__(self, reason: str, file: Optional[str] = None):
        super().__init__(reason if not file or file in reason else f"{file}: {reason}")
        self.reason = reason
        self.file = file

    def __reduce__(self) -> Tuple[Any, ...]:
        return type(self), (self.reason, self.file)


def _plain(value: Any) -> Any:
    """What JSON has no form of: NumPy's numbers and arrays, paths."""
    if isinstance(value, (np.generic, np.ndarray)):
        return value.tolist()
    if isinstance(value, os.PathLike):
        return os.fspath(value)
    raise TypeError(f"a value of type {type(value).__name__} has no form in a recipe")


class Recipe(_core.Recipe):
    """A recipe file, read and checked; run it on any number of arrays, from any number of threads.

    Raises Error with all that is wrong. It is pickled by its path or text and the values that were set."""

    def __init__(self, path: PathLike):
        super().__init__()
        self.load(path)

    def load(self, path: PathLike) -> int:  # type: ignore[override]
        """Reads another recipe file. Raises Error, with the recipe as it was, when it is wrong."""
        name = os.fsdecode(path)
        if not super().load(name):
            raise Error(super().get_error(), name)
        self._origin: Tuple[str, ...] = (os.path.abspath(name),)
        self._values: Dict[str, str] = {}
        return 1

    @classmethod
    def parse(cls, text: str, folder: Optional[PathLike] = None) -> "Recipe":  # type: ignore[override]
        """A recipe from its text; names in it are relative to the folder, or to the working folder."""
        if not isinstance(text, str):
            raise TypeError(f"the text of a recipe is a str, not {type(text).__name__}")
        recipe = cls.__new__(cls)
        _core.Recipe.__init__(recipe)
        place = os.fsdecode(folder) if folder else ""
        if not _core.Recipe.parse(recipe, text, place):
            raise Error(recipe.get_error())
        recipe._origin = (text, os.path.abspath(place or os.curdir))
        recipe._values = {}
        return recipe

    def set(self, name: str, value: Any) -> None:  # type: ignore[override]
        """Gives a named value another one, of the kind of its default; waits for runs in other threads to end."""
        text = json.dumps(value, default=_plain)
        if not super().set(name, text):
            raise Error(super().get_error(), self._origin[0] if len(self._origin) == 1 else None)
        self._values[name] = text

    def assign(self, other: "Recipe") -> "Recipe":  # type: ignore[override]
        """Takes over the other recipe, which is then without steps."""
        if not isinstance(other, Recipe):
            raise TypeError(f"expected a Recipe, not {type(other).__name__}")
        super().assign(other)
        self._origin, self._values = other._origin, dict(other._values)
        return self

    def run(self, array: Any, bits: int = 8, order: str = "rgb",  # type: ignore[override]
            result: Optional["Result"] = None) -> "Result":
        """Inspects a picture.

        array: uint8 of height x width, x 3 (colours) or x 4 (with alpha), uint16 of height x width, an Image or an
        Image24; order "bgr" when the blue channel comes first. bits are the significant bits of uint16; left at 8, the
        recipe's "bits" hold, else all 16. Rows that are contiguous are read in place, others copied.

        A given result is taken into use again, which saves its memory from being asked for anew."""
        if order not in ("rgb", "bgr"):
            raise ValueError(f"order {order!r}: expected 'rgb' or 'bgr'")
        if result is None:
            result = Result()
        if isinstance(array, (_core.Image, _core.Image24)):
            super().run(array, result)
        else:
            super().run_array(array, bits, order == "bgr", result)
        return result

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restore, (type(self), self._origin, self._values)

    def __repr__(self) -> str:
        return f"<Recipe {self.get_name() or self._origin[0][:60]!r} of {self.get_step_count()} steps>"


def _restore(cls: type, origin: Tuple[str, ...], values: Dict[str, str]) -> Recipe:
    recipe: Recipe = cls(*origin) if len(origin) == 1 else cls.parse(*origin)  # type: ignore[attr-defined]
    for name, text in values.items():
        recipe.set(name, json.loads(text))
    return recipe


class Result(_core.Inspection):
    """What a recipe found in a picture, and how it was judged. It stays readable when the recipe is gone.

    result["lid"] is the table of a step by its own name or, where it has none, by its number from 1: a structured
    array with a row a finding. What is null is nan; a column of whole numbers with a null among them has real ones."""

    @property
    def ok(self) -> bool:
        """Whether the verdict is "pass"."""
        return self.get_verdict() == 1

    @property
    def verdict(self) -> str:
        """"pass", "fail" or "error"; of a recipe without limits "pass" when something was found."""
        return ("fail", "pass", "error")[self.get_verdict()]

    @property
    def error(self) -> str:
        """Why the recipe could not be run, empty when it could."""
        return self.get_error()

    @property
    def warning(self) -> str:
        """What should be known of the picture, empty as a rule."""
        return self.get_warning()

    @property
    def json(self) -> str:
        """The line that the command line prints, without the file's name and the line end."""
        return self.get_json()

    @property
    def failed(self) -> List[Dict[str, Any]]:
        """The limits that do not hold, with "of", "value" and their ends; frames that were not found."""
        return json.loads(self.get_json())["failed"] if self.get_failed_count() else []

    @property
    def warned(self) -> List[Dict[str, Any]]:
        """The same of limits that only warn."""
        return json.loads(self.get_json())["warned"] if self.get_warned_count() else []

    @property
    def image(self) -> Optional[np.ndarray]:
        """A new array of what the steps made of the picture, in red, green, blue when that is in colour. A gray
        picture that no step has changed is read from the array that was run, as it is now."""
        color = _core.Image24()
        if self.get_image(color):
            return np.ascontiguousarray(color)
        gray = _core.Image()
        return np.asarray(gray) if self.get_image(gray) else None

    def keys(self) -> List[str]:
        """The steps that list something, by name or number."""
        names = (self.get_step_name(i) or str(i + 1) for i in range(self.get_step_count()))
        return [name for name in names if self.get_column_count(name) >= 0]

    def __iter__(self) -> Iterator[str]:
        return iter(self.keys())

    def __contains__(self, step: object) -> bool:
        return isinstance(step, (str, int)) and self.get_column_count(str(step)) >= 0

    def __getitem__(self, step: Union[str, int]) -> np.ndarray:
        if isinstance(step, bool) or not isinstance(step, (str, int)):
            raise TypeError(f"a step has a name or a number, not {type(step).__name__}")
        name = str(step)
        columns = self.get_column_count(name)
        if columns < 0:
            raise KeyError(f"{name}: {self.error or 'no step of that name lists anything'}")
        read = [self._column(name, i) for i in range(columns)]
        table = np.empty(max(self.get_count(name), 0), [(column, values.dtype) for column, values in read])
        for column, values in read:
            table[column] = values
        return table

    def _column(self, step: str, index: int) -> Tuple[str, np.ndarray]:
        column, kind = self.get_column_name(step, index), self.get_column_type(step, index)
        if kind == _core.COLUMN_TEXT:
            return column, np.array([self.get_text(step, column, row)[1] for row in range(self.get_count(step))], "U")
        values = self.get_column(step, index)[1]
        whole = kind == _core.COLUMN_INTEGER and not np.isnan(values).any()
        return column, values.astype(np.int64) if whole else values

    def text(self, step: str) -> str:
        """The text that a reading step read. KeyError when there is none."""
        known, text = self.get_text(str(step))
        if not known:
            raise KeyError(f"{step}: {self.error or 'no step of that name reads a text'}")
        return text

    def value(self, step: str, fact: str) -> float:
        """What a step says of the whole: its "threshold", "mean" and the like. KeyError when there is none."""
        known, value = self.get_value(str(step), fact)
        if not known:
            raise KeyError(f"{step}.{fact}: {self.error or 'there is no such value'}")
        return value

    def _repr_png_(self) -> Optional[bytes]:
        from ._draw import draw
        picture = self.image
        return None if picture is None else png(draw(picture, self))

    def __repr__(self) -> str:
        found = ", ".join(f"{name}: {self.get_count(name)}" for name in self.keys())
        return f"<Result {self.verdict}{'; ' + (self.error or found) if self.error or found else ''}>"
