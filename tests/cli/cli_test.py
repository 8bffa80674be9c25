#!/usr/bin/env python3
"""cli_test.py [EMULATOR] ORMALUX: runs the command line as an operator does, on pictures drawn here."""
import json
import os
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv[1:]
ONLY_BMP = "BMP only" in subprocess.run([*PROGRAM, "--version"], capture_output=True, text=True, timeout=120,
                                        check=False).stdout
needs_pictures = unittest.skipIf(ONLY_BMP, "this build reads and writes BMP only")


def bmp(width, height, pixel, bits=8, rows_top_down=False):
    """A BMP file; pixel(x, y) gives a gray level or (blue, green, red)."""
    row_bytes = (width * bits // 8 + 3) // 4 * 4
    body = bytearray()
    for y in range(height) if rows_top_down else range(height - 1, -1, -1):
        row = bytearray()
        for x in range(width):
            value = pixel(x, y)
            row += bytes([value]) if bits == 8 else bytes(value)
        body += row.ljust(row_bytes, b"\0")
    palette = b"".join(bytes([i, i, i, 0]) for i in range(256)) if bits == 8 else b""
    offset = 54 + len(palette)
    head = b"BM" + struct.pack("<IHHI", offset + len(body), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, width, -height if rows_top_down else height, 1, bits, 0, len(body), 0, 0,
                       256 if bits == 8 else 0, 0)
    return head + info + palette + bytes(body)


def parts(x, y):
    """Two bright squares of 10 x 10 and one of 16 x 12 on a dark ground."""
    for left, top, width, height in ((5, 6, 10, 10), (40, 20, 10, 10), (70, 8, 16, 12)):
        if left <= x < left + width and top <= y < top + height:
            return 210
    return 30


# Digits as a label printer sets them, 5 x 7 dots.
FONT = {
    "0": "01110 10001 10011 10101 11001 10001 01110", "1": "00100 01100 00100 00100 00100 00100 01110",
    "2": "01110 10001 00001 00010 00100 01000 11111", "3": "11111 00010 00100 00010 00001 10001 01110",
    "4": "00010 00110 01010 10010 11111 00010 00010", "5": "11111 10000 11110 00001 00001 10001 01110",
    "6": "00110 01000 10000 11110 10001 10001 01110", "7": "11111 00001 00010 00100 01000 01000 01000",
    "8": "01110 10001 10001 01110 10001 10001 01110", "9": "01110 10001 10001 01111 00001 00010 01100",
}


def label(lines, ink, paper, dot=4, change=lambda level: level):
    """A picture of printed lines; dots overlap at their corners, so that a digit is one blob."""
    width, height = 10 + 6 * dot * max(map(len, lines)), 10 + 9 * dot * len(lines)
    dark = set()
    for row, line in enumerate(lines):
        for column, character in enumerate(line):
            for v, bits in enumerate(FONT[character].split()):
                for u in (i for i, bit in enumerate(bits) if bit == "1"):
                    x0, y0 = 5 + (6 * column + u) * dot, 5 + (9 * row + v) * dot
                    dark.update((x, y) for x in range(x0 - 1, x0 + dot + 1) for y in range(y0 - 1, y0 + dot + 1))
    return bmp(width, height, lambda x, y: change(ink if (x, y) in dark else paper))


class Runs(unittest.TestCase):
    """What every test of the program needs: a folder of its own, a picture, a call."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="ormalux-cli-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.picture = self.write("parts.bmp", bmp(101, 47, parts))  # a width that needs padding

    def write(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        return str(path)

    def run_program(self, *arguments, code=0):
        done = subprocess.run([*PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=120,
                              encoding="utf-8", cwd=self.folder, check=False)
        self.assertEqual(done.returncode, code, f"{arguments}\n{done.stdout}\n{done.stderr}")
        return done


class CommandLine(Runs):
    def blobs(self, picture, *options, code=0):
        return json.loads(self.run_program("blobs", picture, "--json", *options, code=code).stdout)

    def boxes(self, picture, *options):
        return [(b["left"], b["top"], b["right"], b["bottom"]) for b in self.blobs(picture, *options)["blobs"]]

    expected = [(5, 6, 14, 15), (70, 8, 85, 19), (40, 20, 49, 29)]

    def test_every_kind_of_bmp_is_read_right(self):
        self.assertEqual(self.boxes(self.picture, "-t", "100"), self.expected)
        top_down = self.write("top.bmp", bmp(101, 47, parts, rows_top_down=True))
        color = self.write("color.bmp", bmp(101, 47, lambda x, y: (parts(x, y),) * 3, bits=24))
        korean = self.write("검사 부품.bmp", bmp(101, 47, parts))
        for picture in (top_down, color, korean):
            self.assertEqual(self.boxes(picture, "-t", "100"), self.expected, picture)

    def test_options_are_what_they_say(self):
        self.assertEqual(self.boxes(self.picture, "-t", "100", "--min-size", "11x11"), [(70, 8, 85, 19)])
        self.assertEqual(self.boxes(self.picture, "-t", "100", "--max-size", "12x12", "--roi", "60,46,0,0"),
                         [(5, 6, 14, 15), (40, 20, 49, 29)])
        self.assertEqual(self.boxes(self.picture, "-t", "100", "--sort", "left"), sorted(self.expected))
        self.assertEqual(self.boxes(self.picture, "-t", "100", "--object", "black"), [(0, 0, 100, 46)])
        # The region's last column and row belong to it.
        self.assertEqual(self.boxes(self.picture, "-t", "100", "--roi", "5,6,14,15"), [(5, 6, 14, 15)])

    def test_output_forms(self):
        table = self.run_program("blobs", self.picture, "-t", "100").stdout.splitlines()
        self.assertEqual(table[0], "threshold 100, count 3")
        self.assertEqual(table[1].split(), ["number", "left", "top", "right", "bottom", "width", "height", "pixels"])
        self.assertEqual(table[2].split(), ["1", "5", "6", "14", "15", "10", "10", "100"])
        self.assertEqual(len({len(line) for line in table[1:]}), 1, "the columns are not aligned")
        csv = self.run_program("blobs", self.picture, self.picture, "-t", "100", "--csv").stdout.splitlines()
        self.assertEqual(len(csv), 7)
        self.assertTrue(csv[0].startswith("file,number,left"))
        lines = self.run_program("blobs", self.picture, self.picture, "-t", "100", "--json").stdout.splitlines()
        self.assertEqual([json.loads(line)["count"] for line in lines], [3, 3])

    def test_exit_codes_and_messages(self):
        self.assertEqual(self.blobs(self.picture, "-t", "250", code=1)["count"], 0)
        whole = bmp(101, 47, parts)
        bad = {
            "missing.bmp": None,
            "cut.bmp": whole[:-100],
            "head.bmp": whole[:30],
            "text.bmp": b"not a picture at all",
            "empty.png": b"",
            "wild.bmp": whole[:18] + struct.pack("<ii", 2**31 - 1, 2**31 - 1) + whole[26:],
            "negative.bmp": whole[:18] + struct.pack("<i", -5) + whole[22:],
        }
        for name, data in bad.items():
            if data is not None:
                self.write(name, data)
            error = self.run_program("info", name, code=2).stderr
            self.assertIn(name, error)
            self.assertEqual(error.count("\n"), 1, error)
        (self.folder / "none").mkdir()
        (self.folder / "none.png").mkdir()
        self.assertIn("no pictures", self.run_program("info", "none", code=2).stderr)
        self.assertIn("none.png", self.run_program("threshold", self.picture, "-t", "100", "-o", "none.png", code=2).stderr)
        # Two flat levels have no rising edges to set a threshold by.
        self.assertIn("threshold", self.run_program("blobs", self.picture, code=2).stderr)
        # A picture that cannot be read does not stop the others.
        done = self.run_program("blobs", "missing.bmp", self.picture, "-t", "100", "--json", code=2)
        self.assertEqual(json.loads(done.stdout)["count"], 3)
        for usage in (["blobs"], ["blobs", self.picture, "-t", "300"], ["blobs", self.picture, "--roi", "1,2,3"],
                      ["nothing"], ["blobs", self.picture, "--roi", "0,0,500,500"], [],
                      ["blobs", self.picture, "--min-size", "0x2"], ["match", self.picture, "-s", "none.mcs"]):
            self.assertTrue(self.run_program(*usage, code=2).stderr, usage)

    @needs_pictures
    def test_outputs_are_written_whole_or_not_at_all(self):
        self.run_program("threshold", self.picture, "-t", "100", "-o", "검사.png")
        self.assertEqual(self.boxes("검사.png", "-t", "100"), self.expected)
        self.run_program("threshold", self.picture, "-t", "100", "-o", "a.bmp")
        self.assertEqual(self.boxes("a.bmp", "-t", "100"), self.expected)
        before = sorted(os.listdir(self.folder))
        for target in ("no/such/folder/a.png", ".", "a.unknown"):
            error = self.run_program("threshold", self.picture, "-t", "100", "-o", target, code=2).stderr
            self.assertIn(target, error)
        self.run_program("threshold", self.picture, self.picture, "-t", "100", "-o", "one.png", code=2)
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    @needs_pictures
    def test_cut_show_match_and_annotate(self):
        self.run_program("source", "cut", self.picture, "--roi", "5,6,14,15", "-t", "100", "--object", "white", "-o", "p.mcs")
        self.assertEqual((self.folder / "p.mcs").read_bytes(), b"\xff" + struct.pack("<5i", 0, 100, 100, 10, 10) + b"\xff" * 100)
        shown = self.run_program("source", "show", "p.mcs").stdout
        self.assertIn("#" * 10, shown)
        found = json.loads(self.run_program("match", self.picture, "-s", "p.mcs", "-t", "90..110", "--min-yield", "0.9",
                                            "--annotate", "m.png", "--json").stdout)
        self.assertEqual([(p["left"], p["top"]) for p in found["parts"]], [(5, 6), (40, 20)])
        self.assertTrue(all(p["yield"] == 1.0 for p in found["parts"]))
        self.assertGreater((self.folder / "m.png").stat().st_size, 200)
        for ties, left in (((), 5), (("--ties", "last"), 40)):  # both agree fully
            best = json.loads(self.run_program("match", self.picture, "-s", "p.mcs", "-t", "100", "--best", "1", *ties,
                                               "--json").stdout)
            self.assertEqual([p["left"] for p in best["parts"]], [left])
        per_level = json.loads(self.run_program("match", self.picture, "-s", "p.mcs", "-t", "90..110", "--list", "thresholds",
                                                "--json").stdout)
        self.assertEqual(sorted(p["threshold"] for p in per_level["parts"]), list(range(90, 111)))
        for bad in (b"", b"\xff" * 20, b"\xff" + struct.pack("<5i", 0, 0, 0, -3, 10), b"\xff" + struct.pack("<5i", 0, 0, 0, 9, 9)):
            self.write("bad.mcs", bad)
            self.assertIn("bad.mcs", self.run_program("match", self.picture, "-s", "bad.mcs", code=2).stderr)
            self.assertIn("bad.mcs", self.run_program("source", "show", "bad.mcs", code=2).stderr)

    def test_a_chain_and_a_plane(self):
        self.run_program("process", self.picture, "-o", "out.bmp", "light:20,10", "gassian3x3", "threshold:120", "crop:0,0,59,46")
        self.assertEqual(len(self.boxes("out.bmp", "-t", "100")), 2)
        for chain, named in ((["light:20"], "contrast"), (["light:999,0"], "brightness"), (["nosuch"], "nosuch"),
                             (["blobs"], "blobs"), (["invert:1"], "step 1 (invert)"), (["crop:0,0,500,5"], "leaves")):
            self.assertIn(named, self.run_program("process", self.picture, "-o", "x.bmp", *chain, code=2).stderr)
        color = self.write("c.bmp", bmp(7, 3, lambda x, y: (10, 20, 30 + x), bits=24))
        self.run_program("plane", color, "-c", "R", "-o", "r.bmp")
        levels = json.loads(self.run_program("histogram", "r.bmp", "--json").stdout)["levels"]
        self.assertEqual([(level["level"], level["count"]) for level in levels], [(30 + x, 3) for x in range(7)])

    def test_gauges_and_samples(self):
        point = json.loads(self.run_program("gauge", "point", self.picture, "--line", "0,10,30,10", "-t", "100", "--json").stdout)
        self.assertEqual([(e["x"], e["contrast"]) for e in point["edges"]], [(5, 180.0)])
        line = json.loads(self.run_program("gauge", "line", self.picture, "--box", "0,7,12,14", "-t", "100", "--json").stdout)
        self.assertEqual(line["lines"][0]["center_x"], 5)
        sample = json.loads(self.run_program("sample", self.picture, "--at", "0,10,9,10", "--levels", "100..255", "--json").stdout)
        self.assertEqual([p["x"] for p in sample["pixels"]], list(range(5, 10)))

    def test_a_stepping_gauge_measures_the_same_on_every_machine(self):
        ragged = self.write("s.bmp", bmp(80, 60, lambda x, y: 200 if y > 40 - x // 4 + x % 3 else 10))
        options = ["gauge", "line", ragged, "--direction", "horizontal", "-t", "100", "--json"]
        lines = lambda *more: json.loads(self.run_program(*options, "--box", "5,3,75,57", *more).stdout)["lines"]
        three = lines("--step", "7", "--bands", "3")
        self.assertNotEqual(three, lines("--spacing", "7"))
        step = {"step": "gauge-line", "box": [5, 3, 75, 57], "direction": "horizontal", "threshold": 100, "spacing": 7, "bands": 3}
        recipe = self.write("gauge.json", json.dumps({"steps": [step]}).encode())
        self.assertEqual(json.loads(self.run_program("run", recipe, ragged).stdout)["steps"][0]["lines"], three)
        # One column has no direction: nothing is found, rather than ends far outside the picture.
        self.assertEqual(json.loads(self.run_program(*options, "--box", "30,3,30,57", code=1).stdout)["lines"], [])

    def test_a_printed_label_is_read_in_shifted_light(self):
        taught = self.write("taught.bmp", label(["0123456789"], 60, 180))
        (self.folder / "digits").mkdir()
        found = self.boxes(taught, "-t", "120", "--object", "black", "--min-size", "8x20", "--max-size", "40x40", "--sort", "left")
        self.assertEqual(len(found), 10)
        for digit, box in enumerate(found):
            self.run_program("source", "cut", taught, "--roi", ",".join(map(str, box)), "-t", "120", "--key", digit,
                             "-o", f"digits/{digit}.ocs")
        lines = ["7035916248", "0987654321", "1122334455"]
        for shift in (-20, 0, 20):
            picture = self.write("label.bmp", label(lines, 60 + shift, 180 + shift))
            read = json.loads(self.run_program("ocr", picture, "-s", "digits", "-t", "120", "--min-size", "8x20", "--max-size",
                                               "40x40", "--json").stdout)
            self.assertEqual(read["text"].split("\n"), lines, f"light shifted by {shift}")
        # In noise and other light still, and by a recipe; a font that was not taught is rejected, not guessed.
        rng = random.Random(3)
        picture = self.write("noisy.bmp", label(lines, 90, 210, change=lambda v: min(255, max(0, round(rng.gauss(v, 15))))))
        step = {"step": "read", "source": "digits", "min_size": "8x20", "max_size": "40x40",
                "reject": {"yield": 0.6}}
        recipe = self.write("read.json", json.dumps({"steps": [step]}).encode())
        read = json.loads(self.run_program("run", recipe, picture).stdout)["steps"][0]
        self.assertEqual(read["text"].split("\n"), lines)
        first = read["characters"][0]
        self.assertEqual(list(first), ["char", "second", "yield", "margin", "left", "top", "right", "bottom"])
        self.assertEqual(first["char"], "7")
        only = ["-s", "digits/1.ocs", "--min-size", "8x20", "--json"]
        read = json.loads(self.run_program("read", taught, *only).stdout)
        self.assertEqual((read["text"], read["characters"][3]["second"]), ("?1????????", None))

    def test_recipes(self):
        self.run_program("recipe", "init", "r.json")
        self.run_program("recipe", "init", "r.json", code=2)
        self.run_program("recipe", "check", "r.json")
        self.assertTrue(json.loads(self.run_program("recipe", "schema").stdout)["properties"]["steps"])
        self.run_program("source", "cut", self.picture, "--roi", "5,6,14,15", "-t", "100", "--object", "white", "-o", "p.mcs")
        steps = [{"step": "blobs", "threshold": 100}, {"step": "match", "source": "p.mcs", "threshold": "90..99", "min_yield": 0.9}]
        recipe = self.write("two.json", json.dumps({"steps": steps}).encode())
        pictures = self.folder / "pictures"
        pictures.mkdir()
        for i in range(7):
            shutil.copy(self.picture, pictures / f"{i}.bmp")
        one = self.run_program("run", recipe, pictures, "-j", "1").stdout
        self.assertEqual(len(one.splitlines()), 7)
        self.assertEqual(one, self.run_program("run", recipe, pictures, "-j", "3").stdout)
        shards = [self.run_program("run", recipe, pictures, "--shard", f"{i}/3").stdout.splitlines() for i in range(3)]
        self.assertEqual(sorted(one.splitlines()), sorted(line for shard in shards for line in shard))
        first = json.loads(one.splitlines()[0])
        self.assertEqual([step["count"] for step in first["steps"]], [3, 2])
        self.write("pictures/zz.bmp", b"broken")
        done = self.run_program("run", recipe, pictures, code=2)
        self.assertEqual(len(done.stdout.splitlines()), 8)
        for text, named in ((b"{", "JSON"), (b"[]", "steps"), (b'{"steps":[]}', "at least one"),
                            (b'{"steps":[{"step":"nosuch"}]}', "nosuch"),
                            (b'{"steps":[{"step":"invert"},{"step":"blobs","min_size":"0x1"}]}', ":1: step 2, min_size: "),
                            (b'{"steps":[{"step":"blobs","colour":1}]}', "colour"),
                            (b'{"steps":[{"step":"light","brightness":1.5,"contrast":0}]}', "brightness")):
            self.assertIn(named, self.run_program("recipe", "check", self.write("bad.json", text), code=2).stderr)

    def test_effects_stay_in_their_region_and_in_colour(self):
        shade = lambda x, y: 40 + 3 * x + (y % 5)
        self.write("g.bmp", bmp(43, 21, shade))
        self.write("c.bmp", bmp(43, 21, lambda x, y: (shade(x, y), x, 255 - x), bits=24))

        def replayed(picture, *steps):
            recipe = self.write("r.json", json.dumps({"steps": steps}).encode())
            self.run_program("run", recipe, picture, "--output", "out.bmp")
            data = (self.folder / "out.bmp").read_bytes()
            offset, size = struct.unpack_from("<I", data, 10)[0], data[28] // 8
            rows = [data[offset + y * ((43 * size + 3) // 4 * 4):][:43 * size] for y in range(21)][::-1]
            return [[row[x * size:(x + 1) * size] for x in range(43)] for row in rows]

        roi = [5, 3, 20, 11]
        before = replayed("g.bmp", {"step": "light", "brightness": 0, "contrast": 0})
        for step in ("invert", "emboss", "rotate180", "erode", "stretch"):
            after = replayed("g.bmp", {"step": step, "roi": roi})
            changed = {(x, y) for y in range(21) for x in range(43) if after[y][x] != before[y][x]}
            self.assertTrue(changed and all(5 <= x <= 20 and 3 <= y <= 11 for x, y in changed), step)
        ranged = replayed("g.bmp", {"step": "threshold", "threshold": "70..70", "value": 9})
        self.assertEqual([[p[0] for p in row] for row in ranged], [[9 if shade(x, y) == 70 else 255 for x in range(43)] for y in range(21)])
        box = replayed("g.bmp", {"step": "filter", "kernel": [0, 0, 0, 0, 0, 2, 0, 0, 0], "divisor": 4, "offset": 7, "roi": roi})
        self.assertEqual([p[0] for p in box[4][5:21]], [min(shade(x + 1, 4), shade(20, 4)) // 2 + 7 for x in range(5, 21)])
        light = replayed("c.bmp", {"step": "light", "brightness": 11, "contrast": 0, "on": "color"})
        self.assertEqual(light[2][7], bytes([shade(7, 2) + 11, 18, 255]))
        self.assertEqual(len(replayed("c.bmp", {"step": "light", "brightness": 11, "contrast": 0, "on": "color"}, {"step": "invert"})[0][0]), 1)
        turned = replayed("g.bmp", {"step": "rotate", "angle": -180, "center": [0, 0]})
        self.assertEqual(turned, [row[::-1] for row in before[::-1]])
        self.run_program("process", "g.bmp", "filter:1 1 1 1 1 1 1 1 1,9", "-o", "p.bmp")
        self.run_program("process", "g.bmp", "blur", "-o", "q.bmp")
        self.assertEqual((self.folder / "p.bmp").read_bytes(), (self.folder / "q.bmp").read_bytes())
        for kernel in ([1, 2], [1.5], [], "1 x", [1] * 1024, [2**40]):
            recipe = self.write("bad.json", json.dumps({"steps": [{"step": "filter", "kernel": kernel}]}).encode())
            self.assertIn("kernel", self.run_program("recipe", "check", recipe, code=2).stderr)
        self.run_program("run", self.write("r.json", b'{"steps":[{"step":"blur","roi":[0,0,43,5]}]}'), "g.bmp", code=2)

    def test_the_shell_or_the_program_expands_wildcards(self):
        for name in ("나사 2.bmp", "나사 1.bmp", "a.bmp"):
            self.write(name, bmp(101, 47, parts))
        windows = PROGRAM[-1].endswith(".exe")  # whose shells leave it to the program
        names = ["나사*.bmp"] if windows else ["나사 1.bmp", "나사 2.bmp"]
        lines = self.run_program("info", *names, "--json").stdout.splitlines()
        self.assertEqual([json.loads(line)["file"] for line in lines], ["나사 1.bmp", "나사 2.bmp"])
        self.assertIn("nothing*.bmp", self.run_program("info", "nothing*.bmp", code=2).stderr)

    def test_alone_it_is_for_bmp_and_says_so(self):
        whole = pathlib.Path(PROGRAM[-1])
        program = pathlib.Path(shutil.copy(whole, self.folder / whole.name))
        for library in (b"Qt6", b"libGL.so"):
            self.assertNotIn(library, program.read_bytes(), "it loads the toolkit whenever it starts")
        wide = self.write("wide.bmp", bmp(101, 47, lambda x, y: (parts(x, y),) * 3 + (9,), bits=32))
        other = self.write("other.bmp", bmp(101, 47, parts).replace(struct.pack("<HI", 8, 0), struct.pack("<HI", 8, 1), 1))
        text = self.write("text.png", b"no picture")
        recipe = self.write("r.json", b'{"steps":[{"step":"blobs","threshold":"100"}]}')
        plain = [["info", self.picture, wide], ["threshold", wide, "-t", "100", "-o", "a.BMP"],
                 ["run", recipe, self.picture, wide, "-j", "2", "-o", "{}_o.bmp"]]
        more = [["info", text], ["info", other], ["threshold", wide, "-t", "100", "-o", "a.png"],
                ["blobs", wide, "-t", "100", "--annotate", "a.bmp"], ["histogram", wide, "--plot", "a.bmp"],
                ["run", recipe, text, wide, "-j", "2"]]
        expected = [self.run_program(*call).stdout for call in plain]

        def refusals(why):
            self.assertEqual([self.run_alone(program, *call).stdout for call in plain], expected)
            before = sorted(os.listdir(self.folder))
            for call in more:
                done = self.run_alone(program, *call, code=2)
                self.assertIn(why, done.stderr, call)
                self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
            self.assertEqual(sorted(os.listdir(self.folder)), before)

        if ONLY_BMP:
            return refusals("this build reads and writes BMP only")
        refusals("is missing")
        module = next(whole.parent.glob("libormalux-pictures.*"))
        self.write(module.name, b"no library")
        refusals("cannot be loaded")
        (self.folder / module.name).write_bytes(module.read_bytes())
        self.assertEqual(self.run_alone(program, "threshold", wide, "-t", "100", "-o", "a.png").returncode, 0)
        self.assertEqual(self.boxes("a.png", "-t", "100"), self.expected)

    def run_alone(self, program, *arguments, code=0):
        done = subprocess.run([*PROGRAM[:-1], program, *map(str, arguments)], capture_output=True, text=True, timeout=120,
                              encoding="utf-8", cwd=self.folder, check=False)
        self.assertEqual(done.returncode, code, f"{arguments}\n{done.stdout}\n{done.stderr}")
        return done

    def test_help_is_enough(self):
        for words in ([], ["blobs"], ["match"], ["source", "cut"], ["process"], ["run"], ["recipe"], ["gauge", "line"], ["ocr"]):
            text = self.run_program(*words, "--help").stdout
            self.assertIn("--help", text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
