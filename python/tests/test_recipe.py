"""Recipes: the same bytes as the command line, every kind of array, errors, threads, processes."""
import concurrent.futures
import gc
import json
import multiprocessing
import pathlib
import pickle
import subprocess
import tempfile
import unittest
import weakref

import numpy as np

import ormalux
from support import CLI, RECIPE, noise, parts, save_bmp


def inspect(arguments):
    recipe, array = arguments
    return recipe.run(array).json


class Runs(unittest.TestCase):
    def setUp(self):
        self.recipe = ormalux.Recipe.parse(RECIPE)

    def test_json_is_that_of_the_command_line(self):
        if not CLI:
            self.skipTest("the command line is not built")
        with tempfile.TemporaryDirectory() as folder:
            folder = pathlib.Path(folder)
            (folder / "r.json").write_text(RECIPE)
            recipe = ormalux.Recipe(folder / "r.json")
            pictures = {"a.bmp": parts(), "b.bmp": noise((33, 57)), "c.bmp": noise((31, 45, 3))}
            for name, picture in pictures.items():
                save_bmp(folder / name, picture)
            lines = subprocess.run([CLI, "run", "r.json", *pictures, "--jobs", "1"], cwd=folder, capture_output=True,
                                   check=False, env={"QT_QPA_PLATFORM": "offscreen"}).stdout.decode().splitlines()
            self.assertEqual(len(lines), 3)
            for line, (name, picture) in zip(lines, pictures.items()):
                self.assertEqual(line, '{"file":"%s",' % name + recipe.run(picture).json[1:])

    def test_result(self):
        result = self.recipe.run(parts())
        self.assertEqual((result.verdict, result.ok, result.failed, result.error), ("pass", True, [], ""))
        self.assertEqual(result.warned, [{"of": "part.width", "value": 10, "expected": 99}])
        table = result["part"]
        self.assertEqual([list(table[name]) for name in ("left", "top", "width", "height")],
                         [[5, 70, 40], [6, 8, 20], [10, 16, 10], [10, 12, 10]])
        self.assertEqual(table["left"].dtype, np.int64)
        np.testing.assert_array_equal(table, result[2])
        self.assertEqual(result.value("part", "threshold"), 120)
        self.assertEqual((result.keys(), "part" in result, "lid" in result), (["part"], True, False))
        for wrong in ("lid", "1", "3", ""):
            with self.assertRaises(KeyError):
                result[wrong]
        with self.assertRaises(KeyError):
            result.text("part")
        with self.assertRaises(TypeError):
            result[1.0]
        self.assertEqual(result.image.shape, (41, 97))
        self.assertEqual(self.recipe.run(np.full((9, 9), 3, np.uint8)).failed,
                         [{"of": "part.count", "value": 0, "low": 2.0}])

    def test_values(self):
        self.recipe.set("level", np.int64(220))
        self.assertEqual(self.recipe.run(parts()).verdict, "fail")
        for name, value in (("level", "high"), ("lvel", 3)):
            with self.assertRaisesRegex(ormalux.Error, name):
                self.recipe.set(name, value)
        with self.assertRaises(TypeError):
            self.recipe.set("level", object())
        copy = pickle.loads(pickle.dumps(self.recipe))
        self.assertEqual(copy.run(parts()).json, self.recipe.run(parts()).json)

    def test_errors_name_file_and_reason(self):
        with tempfile.TemporaryDirectory() as folder:
            wrong = pathlib.Path(folder) / "wrong.json"
            wrong.write_text('{"steps": [{"step": "blbs"}]}')
            with self.assertRaises(ormalux.Error) as caught:
                ormalux.Recipe(wrong)
            self.assertRegex(str(caught.exception), "wrong.json:1: step 1, step: unknown step \"blbs\"")
            self.assertEqual((caught.exception.file, pickle.loads(pickle.dumps(caught.exception)).reason),
                             (str(wrong), caught.exception.reason))
            with self.assertRaisesRegex(ormalux.Error, "nowhere.json"):
                ormalux.Recipe(wrong.with_name("nowhere.json"))
        for given in (3, None, 1.5):
            with self.assertRaises(TypeError):
                ormalux.Recipe(given)
            with self.assertRaises(TypeError):
                ormalux.Recipe.parse(given)

    def test_arrays_of_every_kind_are_read_alike(self):
        gray, color = noise((37, 53)), noise((37, 53, 3), 2)
        alpha = np.dstack([color, noise((37, 53), 3)])
        expected_gray = self.recipe.run(gray).json
        padded = np.zeros((37, 64), np.uint8)
        padded[:, 5:58] = gray
        wide = np.zeros((74, 106), np.uint8)
        wide[::2, ::2] = gray
        for same in (padded[:, 5:58], wide[::2, ::2], np.asfortranarray(gray), gray[::-1][::-1], memoryview(gray),
                     gray[::-1].copy()[::-1], gray[:, ::-1].copy()[:, ::-1], ormalux.Image(gray)):
            self.assertEqual(self.recipe.run(same).json, expected_gray)
        expected = self.recipe.run(((color.astype(int).sum(axis=2)) // 3).astype(np.uint8)).json
        bgr = np.ascontiguousarray(color[:, :, ::-1])
        for same, order in ((color, "rgb"), (bgr, "bgr"), (bgr[:, :, ::-1], "rgb"), (alpha, "rgb"),
                            (alpha[:, :, [2, 1, 0, 3]], "bgr"), (color[::-1].copy()[::-1], "rgb"),
                            (np.asfortranarray(color), "rgb"), (ormalux.Image24(color), "rgb"),
                            (ormalux.Image24(bgr, order="bgr"), "rgb")):
            self.assertEqual(self.recipe.run(same, order=order).json, expected)
        colored = ormalux.Recipe.parse('{"steps":[{"step":"light","brightness":0,"contrast":0,"on":"color"}]}')
        for same, order in ((color, "rgb"), (bgr, "bgr"), (alpha, "rgb")):
            np.testing.assert_array_equal(colored.run(same, order=order).image, color)
        self.assertEqual(self.recipe.run(np.broadcast_to(np.uint8(7), (5, 5))).error, "")

    def test_deep_pictures(self):
        deep = noise((20, 30), 4, np.uint16, 4096)
        self.assertEqual(self.recipe.run(deep, bits=12).json, self.recipe.run((deep >> 4).astype(np.uint8)).json)
        said = ormalux.Recipe.parse(json.dumps({**json.loads(RECIPE), "bits": 12}))
        self.assertEqual(said.run(deep).json, self.recipe.run(deep, bits=12).json)
        self.assertIn("bits", self.recipe.run(deep).warning)
        self.assertEqual(self.recipe.run(deep * 16).warning, "")

    def test_wrong_arrays(self):
        for wrong in (None, "x", b"abc", 3, [[1]], np.zeros((3, 3)), np.zeros((3, 3), np.int8), np.zeros((3, 3, 3), np.uint16),
                      np.zeros((3, 3), bool), np.zeros((3, 3), ">u2")):
            with self.assertRaises(TypeError):
                self.recipe.run(wrong)
        for wrong in (np.zeros(3, np.uint8), np.zeros((3, 3, 2), np.uint8), np.zeros((1, 3, 3, 3), np.uint8),
                      bytearray(3)):
            with self.assertRaises(ValueError):
                self.recipe.run(wrong)
        for keywords in ({"order": "gbr"}, {"bits": 7}, {"bits": 17}):
            with self.assertRaises(ValueError):
                self.recipe.run(parts(), **keywords)
        empty = self.recipe.run(np.zeros((0, 5), np.uint8))
        self.assertEqual((empty.verdict, empty.ok, empty.image), ("error", False, None))
        self.assertIn(empty.error, empty.json)

    def test_the_result_keeps_its_array_and_a_used_one_lets_go(self):
        class Watched(np.ndarray):
            pass
        recipe = ormalux.Recipe.parse('{"steps":[{"step":"blobs","threshold":100}]}')
        array = parts().view(Watched)
        gone = weakref.ref(array)
        result = recipe.run(array)
        del array, recipe
        gc.collect()
        self.assertIsNotNone(gone())
        np.testing.assert_array_equal(result.image, parts())
        self.recipe.run(noise((9, 9)), result=result)
        gc.collect()
        self.assertIsNone(gone())
        result = ormalux.Recipe.parse('{"steps":[{"step":"blobs","threshold":100}]}').run(ormalux.Image(parts()))
        np.testing.assert_array_equal(result.image, parts())


class Together(unittest.TestCase):
    def test_threads_with_values_set_meanwhile(self):
        recipe = ormalux.Recipe.parse(RECIPE)
        pictures = [noise((64, 80), seed) for seed in range(8)]
        expected = [recipe.run(picture).json for picture in pictures]
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            found = pool.map(lambda i: recipe.run(pictures[i % 8]).json, range(200))
            for _ in range(50):
                recipe.set("level", 120)
            self.assertEqual(list(found), expected * 25)

    def test_one_result_from_two_threads(self):
        recipe, result = ormalux.Recipe.parse(RECIPE), ormalux.Result()
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            list(pool.map(lambda seed: recipe.run(noise((30 + seed, 40)), result=result).image, range(100)))
        seeds = [30 + seed for seed in range(100)]
        self.assertIn(result.json, {recipe.run(noise((height, 40))).json for height in seeds})

    def test_processes(self):
        recipe = ormalux.Recipe.parse(RECIPE)
        recipe.set("level", 99)
        pictures = [noise((40, 40), seed) for seed in range(4)]
        expected = [recipe.run(picture).json for picture in pictures]
        for start in ("fork", "spawn"):
            with multiprocessing.get_context(start).Pool(2) as pool:
                self.assertEqual(pool.map(inspect, [(recipe, picture) for picture in pictures]), expected)


if __name__ == "__main__":
    unittest.main()
