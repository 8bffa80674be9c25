#!/usr/bin/env python3
"""Fails when a file includes from a folder above its own: the layers run one way."""
import pathlib
import re
import sys

ORDER = ["platform", "array", "image", "color", "measure", "match", "steps", "interface", "tools",
         "view", "app", "cli"]
TOP = {"app", "cli"}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"/]+)/')


def main() -> int:
    root = pathlib.Path(__file__).resolve().parent.parent
    wrong = []
    for folder in ORDER:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in {".h", ".cpp"}:
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                found = INCLUDE.match(line)
                if not found or found[1] not in ORDER:
                    continue
                above = ORDER.index(found[1]) > ORDER.index(folder)
                beside = found[1] in TOP and found[1] != folder
                if above or beside:
                    wrong.append(f"{path.relative_to(root)}:{number}: {folder} must not include {found[1]}")
    print("\n".join(wrong) if wrong else "every include points down the layers")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
