#!/usr/bin/env python3
"""hostile_test.py [EMULATOR] ORMALUX: the command line on full disks, strange names and odd picture files."""
import json
import os
import shutil
import signal
import struct
import subprocess
import sys
import unittest

import cli_test
from cli_test import bmp, needs_pictures, parts


def tiff(samples, bits=8, sample_format=1, pages=1):
    """A gray TIFF of 4 x 4 pixels, every page with the same samples."""
    file = bytearray(b"II*\0" + struct.pack("<I", 8))
    for page in range(1, pages + 1):
        data = len(file) + 2 + 9 * 12 + 4
        fields = [(256, 4), (257, 4), (258, bits), (259, 1), (262, 1), (273, data), (278, 4), (279, len(samples)), (339, sample_format)]
        file += struct.pack("<H", 9) + b"".join(struct.pack("<HHII", tag, 4 if tag in (273, 279) else 3, 1, value) for tag, value in fields)
        file += struct.pack("<I", data + len(samples) if page < pages else 0) + samples
    return bytes(file)


class Hostile(cli_test.Runs):
    def complaint(self, *arguments):
        """The one line that a refused call prints."""
        error = self.run_program(*arguments, code=2).stderr
        self.assertTrue(error.startswith("ormalux: ") and error.count("\n") == 1, error)
        self.assertLess(len(error), 500)
        return error

    def on_posix(self):
        if cli_test.PROGRAM[-1].endswith(".exe"):
            self.skipTest("devices, pipes and names that this system does not know")

    def test_output_that_is_lost_is_told(self):
        self.on_posix()
        self.run_program("source", "cut", self.picture, "--roi", "5,6,14,15", "-t", "100", "-o", "p.mcs")
        self.write("r.json", b'{"steps":[{"step":"blobs","threshold":100}]}')
        shutil.copy(self.picture, self.folder / "other.bmp")
        ignored = lambda: signal.signal(signal.SIGPIPE, signal.SIG_IGN)
        for command in (["--help"], ["--version"], ["blobs", "--help"], ["recipe", "schema"], ["recipe", "check", "r.json"],
                        ["source", "show", "p.mcs"], ["info", self.picture], ["blobs", self.picture, "-t", "100", "--csv"],
                        ["run", "r.json", self.picture, "other.bmp", "-j", "2"]):
            call = [*cli_test.PROGRAM, *command]
            with open("/dev/full", "wb") as full:
                lost = subprocess.run(call, stdout=full, stderr=subprocess.PIPE, cwd=self.folder, check=False, timeout=60)
            ends = os.pipe()
            os.close(ends[0])
            gone = subprocess.run(call, stdout=ends[1], stderr=subprocess.PIPE, cwd=self.folder, check=False, timeout=60,
                                  preexec_fn=ignored, restore_signals=False)
            os.close(ends[1])
            closed = subprocess.run(call, stderr=subprocess.PIPE, cwd=self.folder, check=False, timeout=60,
                                    preexec_fn=lambda: os.close(1))
            for done in (lost, gone, closed):
                self.assertEqual(done.returncode, 2, command)
                self.assertEqual(done.stderr.count(b"\n"), 1, done.stderr)
                self.assertIn(b"standard output", done.stderr)

    @needs_pictures
    def test_outputs_of_one_name_are_refused_before_the_first_picture(self):
        self.on_posix()
        for folder in ("a", "b", "out"):
            (self.folder / folder).mkdir()
        for name in ("a/x.bmp", "b/x.bmp"):
            shutil.copy(self.picture, self.folder / name)
        (self.folder / "here").symlink_to("out")
        (self.folder / "link.bmp").symlink_to(self.picture)
        self.write("r.json", b'{"steps":[{"step":"blobs","threshold":100}]}')
        self.run_program("source", "cut", self.picture, "--roi", "5,6,14,15", "-t", "100", "-o", "p.mcs")
        before = {name: (self.folder / name).read_bytes() for name in ("a/x.bmp", "parts.bmp", "p.mcs")}
        both = ["a/x.bmp", "b/x.bmp"]
        for named, call in (
                (both, ["blobs", *both, "-t", "100", "--annotate", "out/{}.png"]),
                (both, ["threshold", *both, "-t", "100", "-o", "out/{}.png"]),
                (both, ["plane", "a", "b", "-c", "R", "-o", "out/{}.png"]),
                (both, ["histogram", *both, "--plot", "out/{}.png"]),
                (both, ["run", "r.json", *both, "--shard", "0/2", "--annotate", "out/{}.png"]),
                (["out/m.png", "here/m.png"], ["run", "r.json", "a/x.bmp", "--annotate", "out/m.png", "-o", "here/m.png"]),
                (["parts.bmp"], ["process", self.picture, "invert", "-o", "./parts.bmp"]),
                (["link.bmp", "parts.bmp"], ["threshold", self.picture, "-t", "100", "-o", "link.bmp"]),
                (["b/x.bmp"], ["run", "r.json", *both, "-o", "a/../b/{}.bmp"]),
                (["p.mcs"], ["match", self.picture, "-s", "p.mcs", "--annotate", "p.mcs"]),
                (["parts.bmp"], ["source", "show", "p.mcs", "parts.bmp", "--picture", "{}.bmp"])):
            error = self.complaint(*call)
            for name in named:
                self.assertIn(name, error)
        self.assertEqual(os.listdir(self.folder / "out"), [])
        self.assertEqual(before, {name: (self.folder / name).read_bytes() for name in before})
        # An output of an earlier call is replaced, and one folder's outputs do not clash with another's inputs.
        for _ in range(2):
            self.run_program("run", "r.json", "a/x.bmp", "parts.bmp", "--annotate", "out/{}.bmp", "-o", "out/{}.png")

    def test_a_source_of_any_size_prints_little(self):
        self.write("flat.mcs", b"\xff" + struct.pack("<5i", 0, 0, 0, 0, 50_000_000))
        self.write("tall.mcs", b"\xff" + struct.pack("<5i", 0, 0, 0, 1, 5000) + b"\xff" * 5000)
        flat, tall = (self.run_program("source", "show", name).stdout for name in ("flat.mcs", "tall.mcs"))
        self.assertIn("no pixels", flat)
        self.assertIn("height 50000000", flat)
        self.assertIn("4800 more rows", tall)
        self.assertLess(max(len(flat), len(tall)), 1000)
        self.assertIn("no pixels", self.complaint("source", "show", "flat.mcs", "--json", "--picture", "flat.bmp"))

    def test_names_from_files_are_safe_to_look_at(self):
        self.on_posix()
        name, other = "a\x1b[31m\nb\x9b\u202e.bmp", b"\xff.bmp"
        safe = "a\\x1b[31m\\nb\\x9b\\u202e.bmp"
        self.write(name, bmp(101, 47, parts))
        shutil.copy(self.picture, os.fsencode(self.folder) + b"/" + other)
        table = self.run_program("info", name, other.decode("utf-8", "surrogateescape")).stdout.splitlines()
        self.assertEqual([table[0], table[3]], [safe, "\\xff.bmp"])
        self.assertIn(safe + ".none", self.complaint("info", name + ".none"))
        self.assertIn("\\x1b", self.complaint("info", self.picture, "--\x1b[31m"))
        self.assertEqual(json.loads(self.run_program("info", name, "--json").stdout)["file"], name)
        for formula in ("=1+2", "+a", "-a", "@a"):
            self.write(formula + ".bmp", bmp(101, 47, parts))
            lines = self.run_program("info", "--csv", "--", formula + ".bmp").stdout.splitlines()
            self.assertTrue(lines[1].startswith(f"'{formula}.bmp,101,47,gray"), lines[1])
        edge = self.run_program("gauge", "point", self.picture, "--line", "30,10,0,10", "-t", "100", "--csv").stdout
        self.assertNotIn("'", edge)

    def test_a_message_is_one_short_line(self):
        long = "x" * 100_000
        for call in (["info", long + ".bmp"], ["blobs", self.picture, "-t", long], ["process", self.picture, long, "-o", "a.bmp"],
                     ["info", self.picture, "--" + long], ["process", self.picture, "invert", "-o", "a." + long]):
            self.assertIn("…", self.complaint(*call))
        self.assertIn("no such file", self.complaint("info", "한" * 40_000 + ".bmp"))

    @needs_pictures
    def test_only_regular_files_are_read_as_pictures(self):
        self.on_posix()
        folder = self.folder / "pictures"
        folder.mkdir()
        shutil.copy(self.picture, folder / "good.bmp")
        os.mkfifo(folder / "pipe.bmp")
        (folder / "zero.png").symlink_to("/dev/zero")
        for name in ("pictures/pipe.bmp", "pictures/zero.png", "/dev/random"):
            self.assertIn("not a regular file", self.complaint("info", name))
        done = self.run_program("info", "pictures", "--json", code=2)
        self.assertEqual(len(done.stdout.splitlines()), 1)
        self.assertEqual(done.stderr.count("not a regular file"), 2)
        with open(self.folder / "huge.png", "wb") as huge:
            huge.truncate(1 << 40)
        self.assertIn("known kind", self.complaint("info", "huge.png"))

    @needs_pictures
    def test_what_is_cut_of_a_picture_is_told(self):
        deep = struct.pack("<16H", *range(0, 4096, 256))
        pgm = b"P5\n# levels\n4 4 4095\n" + struct.pack(">16H", *range(0, 4096, 256))
        for name, data, bits, pages, told in (
                ("deep.tif", tiff(deep, 16), 16, 1, "12 of 16 bits"), ("deep.pgm", pgm, 12, 1, "12 bits a sample are cut to 8"),
                ("three.tif", tiff(bytes(16), pages=3), 8, 3, "only the first of 3 pages"), ("plain.tif", tiff(bytes(16)), 8, 1, "")):
            done = self.run_program("info", self.write(name, data), "--json")
            facts = json.loads(done.stdout)
            self.assertEqual((facts["bits"], facts["pages"]), (bits, pages), name)
            self.assertEqual(done.stderr.count("\n"), 1 if told else 0, done.stderr)
            self.assertIn(told, done.stderr)
        for name, data, told in (
                ("real.tif", tiff(struct.pack("<16f", *range(16)), 32, 3), "floating-point"), ("signed.tif", tiff(deep, 16, 2), "signed"),
                ("odd.tif", tiff(bytes(24), 12), "12-bit samples are not supported"), ("cut.tif", tiff(bytes(16))[:-1], "truncated"),
                ("chatty.tif", tiff(b"xyz" * 9, 8)[:30] + struct.pack("<HHII", 4, 3, 1, 9) * 3 + b"x" * 80, "damaged"),
                ("loop.tif", tiff(bytes(16))[:118] + struct.pack("<I", 8), "truncated")):
            self.assertIn(told, self.complaint("info", self.write(name, data)))

    def test_a_hostile_recipe_is_refused_in_a_line(self):
        step = '{"steps":[{"step":"blobs","name":"lid","threshold":%s}]}'
        limit = step[:-1] % 100 + ',\n"limits":[{"of":"lid.count","matches":"%s"}]}'
        self.write("bad.mcs", b"\xff\x01")
        for text, told in (
                ("", "1: not JSON: the text ends too early"), (step % 100 + "x", "1: not JSON at"), ("[" * 100_000, "1: nested more than 64 deep"),
                (step % ("[" * 100_000), "1: nested more than 64 deep"), (step % ("9" * 100_000), "1: a number out of range"),
                (step % ('"' + "x" * 70_000 + '"'), "1: a text of more than 65535 bytes"), (step % "1e999", "1: a number out of range"),
                (step % '100,\n"threshold":101', "2: step 1, threshold: the field stands twice"),
                ("\n" + step % '1,"min_size":"9x9","max_size":"8x9"', "2: step lid, min_size: 9x9 is above max_size 8x9"),
                ('{"steps":[{"step":"match","threshold":1,\n"source":"bad.mcs"}]}', "2: step 1, source: bad.mcs: not a match source"),
                ('{"steps":[{"step":"match","threshold":1,\n"source":"none.mcs"}]}', "2: step 1, source: none.mcs: not a match source"),
                (limit % ("(" * 30_000), "2: limit 1, matches: "), (limit % ("a?" * 600), "2: limit 1, matches: "),
                ('{"include":["r.json"],"steps":[]}', "1: include: the recipe includes itself")):
            self.write("r.json", text.encode())
            error = self.run_program("recipe", "check", "r.json", code=2).stderr
            self.assertTrue(error.startswith("r.json" + ("" if told[0] == ":" else ":") + told), error)
            self.assertEqual(error.count("\n"), 1, error)
            self.assertLess(len(error), 500)

    def test_a_pattern_ends_however_many_ways_it_can_try(self):
        many = self.write("many.bmp", bmp(200 * 8, 20, lambda x, y: 20 if 1 <= x % 8 < 6 and 4 <= y < 14 else 200))
        self.run_program("source", "cut", many, "--roi", "1,4,5,13", "-t", "100", "--key", "a", "-o", "a.ocs")
        step = '{"step":"ocr","name":"lot","source":"a.ocs","threshold":100,"min_size":"2x2"}'
        self.write("r.json", ('{"steps":[%s],"limits":[{"of":"lot.text","matches":"(a+)+!"}]}' % step).encode())
        done = self.run_program("run", "r.json", many, code=1)
        self.assertIn('"text":"' + 200 * "a", done.stdout)
        self.assertIn('"verdict":"fail"', done.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
