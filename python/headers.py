"""Reads the declarations of the public headers: classes with their members, records with their fields, constants."""
import dataclasses
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent
CLASS_HEADERS = ["image/VisionImage.h", "color/VisionImage24.h", "array/BlobRectArray.h", "array/MatchArray.h",
                 "array/PixelArray.h", "array/PointArray.h", "array/RectArray.h", "array/ValueArray.h",
                 "platform/Stdlib.h", "measure/PlaneMeasure.h", "steps/Inspection.h", "steps/Recipe.h"]
RECORD_HEADERS = ["platform/Types.h", "array/Records.h", "image/VisionImage.h", "measure/PlaneMeasure.h",
                  "measure/EdgeMeasure.h", "measure/BlobFeature.h", "measure/Alignment.h",
                  "match/CharacterReading.h"]
OWN = "For the library's own modules"  # what follows is not for hosts


@dataclasses.dataclass
class Member:
    name: str
    result: str
    parameters: list  # of (type, name)
    static: bool
    const: bool
    doc: str


@dataclasses.dataclass
class Class:
    name: str
    doc: str
    members: list


@dataclasses.dataclass
class Record:
    name: str
    doc: str
    fields: list  # of (type, name, length or 0)


def snake(name):
    name = re.sub(r"(.)([A-Z][a-z]+)", r"\1_\2", name)
    return re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name).lower()


def plain(name):
    """The name in Python: without the library's prefixes."""
    if name in ("POINT", "SIZE", "RECT"):
        return name.title()
    return re.sub(r"^(CKest|_st|C(?=[A-Z]))", "", name)


def statements(lines):
    """(statement, doc) of a class's or file's level; bodies in braces are left out."""
    doc, code, depth = [], "", 0
    for line in lines:
        text = line.strip()
        if not code and text.startswith("///"):
            doc.append(text[3:].strip())
            continue
        if not code and (text.startswith("//") or not text):
            doc = []
            if OWN in text:
                yield OWN, ""
            continue
        if not code and text.startswith("#"):
            continue
        text = re.sub(r"\s*//.*", "", text)
        for char in text + " ":
            if char == "{":
                depth += 1
            if depth == 0:
                code += char
            if char == "}":
                depth -= 1
            done = (char == ";" and depth == 0) or (char == "}" and depth == 0 and "(" in code)
            if done or (depth == 0 and re.fullmatch(r"\s*(public|private|protected):\s*", code)):
                yield " ".join(code.rstrip("; ").split()), "\n".join(doc)
                doc, code = [], ""
        code = "" if not code.strip() else code


def split(parameters):
    found, depth, part = [], 0, ""
    for char in parameters + ",":
        depth += (char in "<(") - (char in ">)")
        if char == "," and depth == 0:
            if part.strip():
                found.append(part.strip())
            part = ""
        else:
            part += char
    return found


def member(statement, doc):
    match = re.match(r"(?P<head>.*?)(?P<name>operator\s*\S+?|~?\w+)\((?P<parameters>.*?)\)(?P<tail>[^()]*)$", statement)
    if not match or not match["head"] or "delete" in match["tail"] or "ORMALUXVIEW_API" in statement:
        return None  # constructors and destructors, what is deleted, what the display module exports
    head = match["head"].replace("ORMALUX_API", "").split()
    parameters = []
    for each in split(match["parameters"]):
        kind, name = re.match(r"(.*?[\s&*])(\w+)$", each).groups()
        parameters.append((" ".join(kind.replace("&", " &").replace("*", " *").split()).replace(" &", "&")
                           .replace(" *", "*"), name))
    kind = " ".join(word for word in head if word not in ("virtual", "static", "explicit", "constexpr"))
    return Member(match["name"].replace(" ", ""), kind.replace(" &", "&").replace(" *", "*"), parameters,
                  "static" in head, match["tail"].strip().startswith("const"), doc)


def body(lines, start):
    """The lines between a class's braces."""
    depth, found = 0, []
    for line in lines[start:]:
        code = line.split("//")[0]
        depth += code.count("{") - code.count("}")
        if depth == 0 and "}" in code:
            return found
        if depth > 0:
            found.append(line)
    return found


def documented(lines, start):
    doc = []
    while start > 0 and lines[start - 1].lstrip().startswith("///"):
        start -= 1
        doc.insert(0, lines[start].strip()[3:].strip())
    return "\n".join(doc)


def classes():
    for header in CLASS_HEADERS:
        lines = (ROOT / header).read_text(encoding="utf-8").splitlines()
        for number, line in enumerate(lines):
            found = re.match(r"class (?:ORMALUX_API )?(C\w+)(?: : public .*)?$", line)
            if not found:
                continue
            members, shown = [], False
            for statement, doc in statements(body(lines, number)[1:]):
                label = re.fullmatch(r"(public|private|protected):", statement)
                shown = label[1] == "public" if label else shown and statement != OWN
                made = member(statement, doc) if shown and "(" in statement else None
                if made:
                    before = [each for each in members if each.name == made.name and each.doc]
                    made.doc = made.doc or (before[-1].doc if before else "")
                    members.append(made)
            yield Class(found[1], documented(lines, number), members)


def conversions():
    """The functions of ormalux::color."""
    lines = (ROOT / "color/ColorConversion.h").read_text(encoding="utf-8").splitlines()
    start = next(number for number, line in enumerate(lines) if line.startswith("namespace"))
    return [member(statement, doc) for statement, doc in statements(body(lines, start)[1:])]


def records():
    for header in RECORD_HEADERS:
        lines = (ROOT / header).read_text(encoding="utf-8").splitlines()
        for number, line in enumerate(lines):
            found = re.match(r"struct (\w+)$", line)
            if not found or found[1] == "CRect":
                continue
            fields = []
            for statement, _ in statements(body(lines, number)[1:]):
                field = re.match(r"([\w: ]+?\*?) (\w+)(?:\[(\d+)\])?(?: =.*)?$", statement)
                fields.append((field[1], field[2], int(field[3] or 0)))
            yield Record(found[1], documented(lines, number), fields)


def constants():
    for header in ["image/VisionImage.h", "steps/Inspection.h"]:
        text = (ROOT / header).read_text(encoding="utf-8")
        for block in re.findall(r"^enum\n\{(.*?)\n\};", text, re.MULTILINE | re.DOTALL):
            yield from re.findall(r"^    ([A-Z]\w+) =", block, re.MULTILINE)
