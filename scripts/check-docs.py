#!/usr/bin/env python3
"""Fails when a document names a path that the tree does not have, or a header's heading names a file that does not
define the members below it.

A heading is a comment in a public header such as "// Files (image/VisionImageFile.cpp)"; it holds until the next one
or the class's next access label, and names all the files between its brackets when there are several."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DOCUMENTS = ["README.md", "HACKING.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs/*.md"]
HEADERS = ["platform/Stdlib.h", "array/*Array.h", "image/VisionImage.h", "color/VisionImage24.h", "view/DrawObjArray.h",
           "view/ImageView.h", "view/ImageViewWnd.h", "view/Language.h"]
FOLDERS = sorted(entry.name for entry in ROOT.iterdir() if entry.is_dir() and entry.name not in {"build", ".git"})

QUOTED = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
CPP = re.compile(r"\b[a-z]+(?:/[A-Za-z0-9]+)+\.cpp\b")
COMMENT = re.compile(r"^    //(?!/)")
LABEL = re.compile(r"^\s*(?:public|private|protected|Q_SIGNALS|signals)\b[^:]*:(?!:)")
MEMBER = re.compile(r"(?<![\w:~.>])(operator\s*(?:\(\)|\[\]|[^\s\w(]+)|[A-Za-z_]\w*)\s*\(")
NOT_MEMBERS = {"noexcept", "alignas", "decltype", "sizeof", "defined", "void", "long", "int", "Q_ENUM"}


def missing_path(document, name):
    """Whether the name looks like a path of the tree and leads nowhere."""
    name = name.split("#")[0].rstrip("/")
    if not name or "://" in name or re.search(r"[\s*<>{}$=,|:…]", name):
        return False
    first = name.split("/")[0]
    if "/" not in name or first not in FOLDERS or "Xxx" in name:  # a name to fill in
        return False
    return not (ROOT / name).exists() and not (document.parent / name).exists()


def wrong_documents():
    for pattern in DOCUMENTS:
        for document in sorted(ROOT.glob(pattern)):
            text = document.read_text(encoding="utf-8")
            for target in LINK.findall(text):
                plain = target.split("#")[0]
                if plain and "://" not in plain and not (document.parent / plain).exists():
                    yield f"{document.relative_to(ROOT)}: the link {target} leads nowhere"
            for quoted in QUOTED.findall(FENCE.sub("", text)):
                for word in quoted.split():
                    if missing_path(document, word):
                        yield f"{document.relative_to(ROOT)}: there is no {word}"


def declared(lines):
    """The (line number, class, name) of the member functions that the header leaves to be defined elsewhere."""
    depth, classes, pending, statement, start = 0, [], None, "", 0
    for number, line in enumerate(lines, 1):
        code = line.split("//")[0]
        if code.lstrip().startswith("#"):
            continue
        found = re.match(r"\s*(?:class|struct)\s+(?:\w+_API\s+)?(\w+)(?:\s+final)?[^;]*$", code)
        if found and (not classes or depth == classes[-1][1]):
            pending = found[1]
        for character in code:
            if character == "{":
                if pending:
                    classes.append((pending, depth + 1))
                    pending = None
                depth += 1
                statement = ""
            elif character == "}":
                if classes and classes[-1][1] == depth:
                    classes.pop()
                depth -= 1
                statement = ""
            elif character == ";":
                name = MEMBER.search(statement)
                if name and classes and classes[-1][1] == depth and not re.search(
                        r"=\s*(default|delete|0)\s*$|\bfriend\b|\busing\b|\btypedef\b|^\s*Q_", statement):
                    yield start, classes[-1][0], name[1].replace(" ", "")
                statement = ""
            else:
                if not statement.strip():
                    start = number
                statement += character
        statement += " "
        statement = LABEL.sub("", statement)


def headings(lines):
    """The (line number, files) of the headings; no files for an access label."""
    for number, line in enumerate(lines, 1):
        if LABEL.match(line):
            yield number, []
        if not COMMENT.match(line) or COMMENT.match(lines[number - 2]):
            continue
        first = re.match(r"[^.(]*\(([^)]*)\)", line + " ".join(lines[number : number + 2]))
        files = CPP.findall(first[1]) if first else []
        if files:
            yield number, files


def wrong_headings():
    for pattern in HEADERS:
        for header in sorted(ROOT.glob(pattern)):
            lines = header.read_text(encoding="utf-8").splitlines()
            members = list(declared(lines))
            sections = list(headings(lines))
            for index, (begin, files) in enumerate(sections):
                end = sections[index + 1][0] if index + 1 < len(sections) else len(lines) + 1
                where = f"{header.relative_to(ROOT)}:{begin}"
                absent = [name for name in files if not (ROOT / name).exists()]
                yield from (f"{where}: there is no {name}" for name in absent)
                if not files or absent:
                    continue
                sources = [(ROOT / name).read_text(encoding="utf-8") for name in files]
                for number, owner, name in members:
                    pattern_of = rf"\b{owner}::{re.escape(name)}\s*\("
                    if begin < number < end and not any(re.search(pattern_of, source) for source in sources):
                        yield f"{header.relative_to(ROOT)}:{number}: {owner}::{name} is not in {', '.join(files)}"


def main() -> int:
    wrong = list(wrong_documents()) + list(wrong_headings())
    print("\n".join(wrong) if wrong else "documents and headings name what is there")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
