"""The type stubs of the extension module, from the same declarations."""
from headers import plain, snake

NUMBERS = {"int", "long", "long long", "unsigned int", "unsigned char", "unsigned short", "unsigned long", "COLORREF",
           "LONG", "std::uint8_t", "std::uint16_t", "std::uint32_t"}
HEAD = '''"""Made by generate.py from the library's headers."""
from typing import Any, Iterator, Optional, Sequence, Tuple, Union, overload
import os
import numpy as np
from numpy.typing import ArrayLike, NDArray

PathLike = Union[str, bytes, "os.PathLike[str]"]

'''
IMAGES = '''    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, other: {own}) -> None: ...
    @overload
    def __init__(self, array: ArrayLike{order}) -> None: ...
    @overload
    def __init__(self, width: int, height: int, *rest: Any) -> None: ...
    def __array__(self, dtype: Any = None) -> NDArray[np.uint8]: ...
    def __copy__(self) -> {own}: ...
    def __deepcopy__(self, memo: Any) -> {own}: ...
    def assign(self, other: {own}) -> {own}: ...
    def set_image_ptr(self, width: int, height: int, *rest: Any) -> None: ...
    def set_image_ptr_link(self, width: int, height: int, pixels: Any) -> None: ...
    def set_empty(self) -> None: ...
    def get_image_ptr(self, x1: int, y1: int, x2: int, y2: int) -> Optional[NDArray[np.uint8]]: ...
    def load_image(self, path: PathLike) -> int: ...
    def paint_image(self, dc: Any, rect: Any) -> None: ...
'''
ARRAYS = '''    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, capacity: int) -> None: ...
    @overload
    def __init__(self, records: Any) -> None: ...
    def __len__(self) -> int: ...
    def __getitem__(self, index: int) -> {record}: ...
    def __setitem__(self, index: int, record: {record}) -> None: ...
    def __iter__(self) -> Iterator[{record}]: ...
    def __array__(self, dtype: Any = None) -> NDArray[Any]: ...
    def assign(self, other: {own}) -> {own}: ...
    def get_count(self) -> int: ...
    def set_count(self, n: int) -> None: ...
    def remove(self, index: int) -> None: ...
    def remove_all(self) -> None: ...
'''


def type_of(kind, records, output=False):
    kind = kind.replace("const ", "").rstrip("&*")
    if "vector" in kind:
        return "NDArray[Any]" if output else "Any"
    if kind in NUMBERS:
        return "int"
    if kind in ("double", "float"):
        return "float"
    if kind in ("bool", "BOOL"):
        return "bool"
    if kind in ("char", "CString", "std::string"):
        return "str"
    kind = {"CPoint": "POINT", "CSize": "SIZE", "CRect": "RECT"}.get(kind, kind)
    if kind in records and not output:
        return f"Union[{plain(kind)}, Sequence[Any]]"
    return "None" if kind == "void" else plain(kind)


def signature(member, records, owner):
    takes, outputs, skipped = [] if member.static or not owner else ["self"], [], False
    for kind, name in member.parameters:
        constant = kind.startswith("const ")
        core = kind.replace("const ", "").rstrip("&*")
        if skipped or kind == "void*":
            skipped = False
        elif kind == "const char*":
            takes.append(f"{name}: {'PathLike' if name == 'path' else 'str'}")
        elif kind == "const POINT*" or name == "kernel" or "vector<CPlanePair>" in kind:
            takes.append(f"{name}: Any")
            skipped = name == "points"
        elif name == "histogram":
            outputs.append("NDArray[np.int64]")
        elif member.name == "Swap":
            takes.append(f"{name}: int")
            outputs.append("int")
        elif (kind.endswith("*") or kind.endswith("&")) and not constant and not (
                core.startswith("CKest") or core.endswith("Array")):
            outputs.append(type_of(kind, records, True))
        else:
            takes.append(f"{name}: {type_of(kind, records)}")
    result = type_of(member.result, records, True)
    if member.result == "const char*":
        result = "str"
    outputs = ([] if member.result == "void" else [result]) + outputs
    given = "None" if not outputs else outputs[0] if len(outputs) == 1 else f"Tuple[{', '.join(outputs)}]"
    return f"({', '.join(takes)}) -> {given}: ..."


def functions(members, records, owner, indent):
    names = {"operator+": "__iadd__", "operator-": "__isub__"}
    lines, made = [], {}
    for member in members:
        name = names.get(member.name) or snake(member.name)
        text = signature(member, records, owner)
        if text not in made.setdefault(name, []):
            made[name].append(text)
    static = {snake(member.name) for member in members if member.static}
    for name, texts in made.items():
        for text in texts:
            lines += [indent + "@overload"] * (len(texts) > 1) + [indent + "@staticmethod"] * (name in static)
            lines.append(f"{indent}def {name}{text}")
    return "\n".join(lines) + "\n"


def array_record(name, members):
    kind = next((kind for member in members if member.name in ("Add", "GetAt")
                 for kind in [each for each, _ in member.parameters if len(member.parameters) == 1] if "char*" not in kind), "")
    return kind


def text(classes, records, constants, conversions, by_hand):
    by_name = {record.name for record in records}
    out = HEAD + "__version__: str\n\ndef require_main_interpreter() -> None: ...\n\n" + "".join(f"{name}: int\n" for name in constants)
    for name, values in (("EdgePolarity", "DARK_BRIGHT BRIGHT_DARK ANY"), ("EdgeSelect", "ALL FIRST LAST STRONGEST")):
        out += f"\nclass {name}:\n    def __init__(self, value: int) -> None: ...\n"
        out += "".join(f"    {value}: {name}\n" for value in values.split())
    for record in records:
        fields = [(kind, name) for kind, name, length in record.fields if not length and not kind.endswith("*")]
        out += f"\nclass {plain(record.name)}:\n"
        out += "".join(f"    {name}: {type_of(kind, by_name, True)}\n" for kind, name in fields)
        out += f"    def __init__(self, *values: Any, **fields: Any) -> None: ...\n    def __iter__(self) -> Iterator[Any]: ...\n"
        if record.name == "_stMatchSource":
            out += "    @property\n    def data(self) -> Optional[NDArray[np.uint8]]: ...\n"
    for each in classes:
        own, skipped = plain(each.name), by_hand.get(each.name, set())
        out += f"\nclass {own}:\n"
        if own.startswith("Image"):
            out += IMAGES.format(own=own, order=', order: str = "rgb"' if own == "Image24" else "")
        elif own.endswith("Array"):
            kind = array_record(each.name, each.members)
            record = type_of(kind, by_name, True) if kind else {"MatchSrcArray": "MatchSource"}.get(own, "MatchResult")
            out += ARRAYS.format(own=own, record=record)
        elif own == "Recipe":
            out += "    def assign(self, other: Recipe) -> Recipe: ...\n"
            out += "    def run(self, image: Union[Image, Image24], result: Inspection) -> int: ...\n"
            out += "    def run_array(self, array: Any, bits: int, bgr: bool, result: Inspection) -> int: ...\n"
        elif own == "Inspection":
            out += "    def assign(self, other: Inspection) -> Inspection: ...\n"
        members = [member for member in each.members if member.name not in skipped]
        if own in ("Recipe", "PlaneScale", "Inspection"):
            out += "    def __init__(self) -> None: ...\n"
        out += functions(members, by_name, each.name, "    ")
    out += "\nclass color:\n" + functions([_static(member) for member in conversions], by_name, "", "    ")
    return out


def _static(member):
    import dataclasses
    return dataclasses.replace(member, static=True)
