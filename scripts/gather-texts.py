#!/usr/bin/env python3
"""gather-texts.py LUPDATE FILE.ts FOLDER...: updates a translation file from the folders' sources and forms, in place,
and prints what still lacks a translation and which Korean literals no translation can reach. Fails when there are any.
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree

# A file's own short form of the marking macro, which lupdate does not look through.
MACRO = re.compile(r'#define (\w+)\(text\) QT_TRANSLATE_NOOP\(("[^"]+"), text\)\n')
# Or its own function for the same purpose.
FUNCTION = re.compile(r'QString (\w+)\(const char\* \w+\)\n\{\n\s*return QCoreApplication::translate\(("[^"]+"),')
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*[가-힣](?:[^"\\\n]|\\.)*)"')
KOREAN = re.compile("[가-힣]")
# What is no visible text of ours: example programs, a font's name, a language in its own words.
OTHER = {"tools/Script.cpp", "tools/Program.cpp"}
NAMES = {"굴림", "한국어"}


def expanded(text: str) -> str:
    for name, context in MACRO.findall(text):
        text = MACRO.sub("", text, count=1)
        text = re.sub(rf"\b{name}\(", f"QT_TRANSLATE_NOOP({context}, ", text)
    for name, context in FUNCTION.findall(text):
        text = re.sub(rf'(?<![\w.>]){name}\("', f'QCoreApplication::translate({context}, "', text)
    return text


def main() -> int:
    lupdate, translations, folders = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    sources = [p for f in folders for p in sorted(pathlib.Path(f).rglob("*")) if p.suffix in {".cpp", ".h", ".ui"}]
    with tempfile.TemporaryDirectory() as work:
        for source in sources:
            copy = pathlib.Path(work) / source
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_text(expanded(source.read_text(encoding="utf-8")), encoding="utf-8")
        subprocess.run([lupdate, "-silent", "-locations", "none", "-no-obsolete", "-source-language", "ko",
                        "-target-language", "en", "-I", work, *(str(pathlib.Path(work) / f) for f in folders),
                        "-extensions", "cpp,h,ui", "-ts", str(translations.resolve())],
                       check=True, stderr=subprocess.DEVNULL)
    problems, known = [], set()
    for context in tree.parse(translations).getroot().iter("context"):
        for message in context.iter("message"):
            source, translation = message.findtext("source"), message.find("translation")
            known.add(source)
            # A text that is English as written stands for itself.
            if KOREAN.search(source) and (translation.get("type") == "unfinished" or not translation.text):
                problems.append(f"{translations}: {context.findtext('name')}: {source!r} is not translated")
    joined = "".join(known)
    for source in sources:
        if source.suffix == ".ui" or str(source) in OTHER:
            continue
        code = re.sub(r"//.*", "", source.read_text(encoding="utf-8"))
        for text in LITERAL.findall(code):
            plain = text.replace('\\"', '"').replace("\\n", "\n")
            if plain not in joined and plain not in NAMES:
                problems.append(f"{source}: {text!r} is not marked for translation")
    print("\n".join(problems) if problems else f"{translations}: every text is translated")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
