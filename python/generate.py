"""generate.py FOLDER: writes the bindings of every public class, record and constant, and their type stubs."""
import pathlib
import sys

import headers
import stubs
from headers import plain, snake

# Bound by hand: what takes or gives pixels by pointer, and what would leave pixels to nobody.
BY_HAND = {"CKestImage": {"SetImagePtr", "SetImagePtrLink", "SetEmpty", "GetImagePtr", "LoadImage", "PaintImage",
                          "operator="},
           "CKestImage24": {"SetImagePtr", "SetImagePtrLink", "SetEmpty", "GetImagePtr", "LoadImage", "PaintImage",
                            "operator="},
           "CRectArray": {"operator="}, "CKestRecipe": {"operator=", "Run"}, "CKestInspection": {"operator="}}
OPERATORS = {"operator+": "__iadd__", "operator-": "__isub__"}
RECORDS = {record.name: record for record in headers.records()}
CLASSES = {each.name: each for each in headers.classes()}
ALIASES = {"CPoint": "POINT", "CSize": "SIZE", "CRect": "RECT"}


def held(name):
    return {"CKestImage": "Gray", "CKestImage24": "Color", "CKestInspection": "Inspection"}.get(name, f"Held<{name}>")


def raw(doc):
    return f'R"doc({doc})doc"'


class Call:
    """How a member's parameters come from Python, reach the library, and go back."""

    def __init__(self, owner, member):
        self.owner, self.member = owner, member
        self.takes, self.names, self.before, self.uses, self.passed, self.outputs = [], [], [], [], [], []
        if owner and not member.static:
            changing = not member.const
            self.takes.append(("" if changing else "const ") + held(owner) + "& self")
            self.uses.append(("changes" if changing else "reads") + "(self)")
            if changing and "Image" in owner:
                self.before.append("refuseFrozen(self);")
        skipped = False
        for kind, name in member.parameters:
            if skipped:
                skipped = False
                continue
            skipped = (kind, name) == ("const POINT*", "points")
            self.parameter(kind, name)

    def take(self, kind, name, passed=None):
        self.takes.append(f"{kind} {name}")
        self.names.append(name)
        self.passed.append(passed or name)

    def parameter(self, kind, name):
        constant = kind.startswith("const ")
        core = kind.removeprefix("const ").rstrip("&*")
        core = ALIASES.get(core, core)
        if kind == "const char*" and name == "path":
            self.take("const py::object&", name, "path_.c_str()")
            self.before.append("const std::string path_ = pathText(path);")
        elif kind in ("const char*", "const CString&"):
            self.take("const std::string&", name, name + (".c_str()" if kind.endswith("*") else ""))
        elif core in CLASSES:
            self.take(("const " if constant or core == "CMatchSrcArray" else "") + held(core) + "&", name,
                      f"{name}.unguarded()" if core == "CMatchSrcArray" else f"*{name}")
            self.uses.append(f"{'reads' if constant or core == 'CMatchSrcArray' else 'changes'}({name})")
            if not constant and "Image" in core:
                self.before.append(f"refuseFrozen({name});")
        elif kind == "void*":
            self.passed.append("nullptr")
        elif kind == "const POINT*":
            self.take("const py::object&", name, "points_.data(), unsigned(points_.size())")
            self.before.append("const std::vector<POINT> points_ = pointsOf(points);")
        elif kind == "const std::vector<CPlanePair>&":
            self.take("const py::object&", name, "pairs_")
            self.before.append(f"const std::vector<CPlanePair> pairs_ = pairsOf({name});")
        elif name == "kernel":
            self.take("const py::object&", name, "kernel_.data()")
            self.before.append("std::vector<long> kernel_ = kernelOf(kernel, size);")
        elif name == "histogram":
            self.before.append("std::vector<long> histogram(256);")
            self.passed.append("histogram.data()")
            self.outputs.append("arrayOf(histogram)")
        elif self.member.name == "Swap":
            self.take(core, name, "&" + name)
            self.outputs.append(name)
        elif kind.endswith("*") or (kind.endswith("&") and not constant):
            self.before.append(f"{core} {name}{{}};")
            self.passed.append(("&" if kind.endswith("*") else "") + name)
            self.outputs.append(f"arrayOf({name})" if "vector" in core else
                                f"textOf({name})" if core == "std::string" else name)
        elif core in RECORDS:
            self.take(f"const {core}&", name)
        else:
            self.take(core, name)

    def code(self):
        member = self.member
        target = f"{self.owner}::" if member.static else "(*self)." if self.owner else "color::"
        name = member.name if member.name[-1] not in "+-" else f"operator{member.name[-1]}"
        call = f"{target}{name}({', '.join(self.passed)})"
        use = f"std::array<Use, {len(self.uses)}>{{{', '.join(self.uses)}}}"
        run = f"operate({use}, [&] {{ %s; }})"
        kind = member.result
        lines = list(self.before)
        if name.startswith("operator"):
            return lines + [run % call + ";", "return &self;"]
        if kind in ("const char*", "CString"):
            given = "textOf(" + run % f"return std::string({call})" + ")"
        elif kind.endswith("Image*") or kind.endswith("Image24*"):
            given = "adopt(" + run % f"return {call}" + ")"
        elif kind == "_stMatchSource&":
            given = run % f"return _stMatchSource({call})"
        else:
            given = run % (call if kind == "void" else f"return {call}")
            given = f"bool({given})" if kind == "BOOL" else given
        if not self.outputs:
            return lines + [f"{'' if kind == 'void' else 'return '}{given};"]
        if kind == "void":
            lines.append(given + ";")
            first = []
        else:
            lines.append(f"const auto returned = {given};")
            first = ["returned"]
        outputs = first + self.outputs
        return lines + [f"return {outputs[0]};" if len(outputs) == 1 else f"return py::make_tuple({', '.join(outputs)});"]

    def binding(self, variable):
        name = OPERATORS.get(self.member.name) or snake(self.member.name)
        if not self.owner:
            name = name.replace("rgbto", "rgb_to_")
        result = f" -> {held(self.owner)}*" if name.startswith("__") else ""
        arguments = "".join(f', py::arg("{each}")' for each in self.names)
        define = "def_static" if self.member.static else "def"
        inside = "\n        ".join(self.code())
        return (f'    {variable}.{define}("{name}", []({", ".join(self.takes)}){result} {{\n        {inside}\n    }}'
                f'{arguments}, {raw(self.member.doc)});\n')


def class_binding(each, variable="bound"):
    code = f"void bind{each.name}(py::class_<{held(each.name)}>& {variable})\n{{\n"
    skipped = BY_HAND.get(each.name, set())
    code += "".join(Call(each.name, member).binding(variable) for member in each.members if member.name not in skipped)
    return code + "}\n\n"


def record_binding(record):
    fields = [(kind, name) for kind, name, length in record.fields if not length and not kind.endswith("*")]
    name, own = record.name, plain(record.name)
    values = ", ".join("r." + field for _, field in fields)
    arguments = "".join(f', py::arg("{field}") = {name}{{}}.{field}' for _, field in fields)
    code = f'    PYBIND11_NUMPY_DTYPE({name}, {", ".join(field for _, field in fields)});\n    {{\n'
    code += f'    py::class_<{name}> record(module, "{own}", {raw(record.doc)});\n'
    code += f'    record.def(py::init([]({", ".join(kind + " " + field for kind, field in fields)}) {{\n'
    code += f'        {name} r{{}};\n'
    code += "".join(f"        r.{field} = {field};\n" for _, field in fields)
    code += f"        return r;\n    }}){arguments});\n"
    code += "".join(f'    record.def_readwrite("{field}", &{name}::{field});\n' for _, field in fields)
    code += (f'    completeRecord<{name}>(record, "{own}", {{{", ".join(chr(34) + field + chr(34) for _, field in fields)}}}, '
             f"[](const {name}& r) {{ return py::make_tuple({values}); }});\n    }}\n")
    return code


def write(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    top = '#include "Held.h"\n#include "Engine.h"\n#include "color/ColorConversion.h"\n#include "platform/Stdlib.h"\n\n' \
          "namespace ormalux::python {\n\n"
    for name, wanted in (("Image", ["CKestImage"]), ("Image24", ["CKestImage24"]),
                         ("Others", [each for each in CLASSES if not each.startswith("CKestImage")])):
        write(folder / f"Bind{name}.cpp",
              top + "".join(class_binding(CLASSES[each]) for each in wanted) + "} // namespace ormalux::python\n")
    code = top.replace('"Held.h"\n', '"Held.h"\n#include "RecordClass.h"\n') + "void bindRecords(py::module_& module)\n{\n"
    code += "    bindEnumerations(module);\n"
    code += "".join(record_binding(record) for record in RECORDS.values())
    code += "".join(f'    module.attr("{name}") = int({name});\n' for name in headers.constants())
    code += '    py::module_ color = module.def_submodule("color", "Conversions of single colours. Channels are 0 .. 255.");\n'
    code += "".join(Call("", member).binding("color") for member in headers.conversions())
    write(folder / "BindRecords.cpp", code + "}\n\n} // namespace ormalux::python\n")
    write(folder / "_core.pyi", stubs.text(CLASSES.values(), RECORDS.values(), list(headers.constants()),
                                           headers.conversions(), BY_HAND))


if __name__ == "__main__":
    main()
