"""Images, arrays and records: who owns the pixels, what is shared, what is refused."""
import concurrent.futures
import copy
import gc
import pathlib
import pickle
import subprocess
import sys
import tempfile
import time
import unittest
import weakref

import numpy as np

import ormalux
from support import CLI, noise, parts, save_bmp


class Pixels(unittest.TestCase):
    def test_image_and_array_share_pixels_and_outlive_each_other(self):
        array = noise((23, 31))
        image = ormalux.Image(array)
        expected = 255 - array
        image.invert()
        np.testing.assert_array_equal(array, expected)
        view = np.asarray(image)
        self.assertTrue(np.shares_memory(view, array))
        array[0, 0] = 7
        self.assertEqual(image.get_pixel(0, 0), 7)
        expected[0, 0] = 7
        for gone in ("array", "image"):
            del locals()[gone]
        del array, image
        gc.collect()
        noise((500, 500))
        np.testing.assert_array_equal(view, expected)

    def test_arrays_stay_when_the_image_takes_other_pixels(self):
        for change in (lambda i: i.set_roi_placement(1, 1, 4, 4), lambda i: i.set_empty(), lambda i: i.offset(3, 2),
                       lambda i: i.set_image_ptr(300, 300), lambda i: i.assign(ormalux.Image(2, 2)),
                       lambda i: i.rotate90_l()):
            for take in (np.asarray, memoryview, np.array):
                image = ormalux.Image(90, 80)
                image.marking(0, 0, 89, 79, 9)
                view = take(image)
                change(image)
                noise((400, 400))
                self.assertEqual(np.asarray(view).shape, (80, 90))
                if take is np.array:
                    self.assertEqual(set(np.asarray(view).ravel()), {9})
                del image
                gc.collect()
                self.assertEqual(int(np.asarray(view)[79, 89]) in (0, 9), True)
        array = noise((5, 5))
        gone = weakref.ref(array)
        image = ormalux.Image(array)
        del array
        self.assertIsNotNone(gone())
        image.set_image_ptr(3, 3)
        self.assertIsNone(gone())

    def test_in_place_refuses_read_only_and_strided_arrays_and_reads_them(self):
        array = parts()
        locked = array.copy()
        locked.setflags(write=False)
        wide = np.zeros((41, 200), np.uint8)
        wide[:, 3:100] = array
        for given in (locked, wide[:, 3:100], array[::-1].copy()[::-1], array[:, ::-1].copy()[:, ::-1], array.tobytes()):
            if isinstance(given, bytes):
                image = ormalux.Image()
                image.set_image_ptr_link(97, 41, given)
            else:
                image = ormalux.Image(given)
            found = ormalux.BlobRectArray()
            self.assertEqual(image.get_blob_list(100, 255, 2, 99, 2, 99, found), 3)
            np.testing.assert_array_equal(image, array)
            for change in ("invert", "erode"):
                with self.assertRaises(ValueError):
                    getattr(image, change)()
            with self.assertRaises(ValueError):
                image += ormalux.Image(97, 41)
            with self.assertRaises(ValueError):
                np.asarray(image)[0, 0] = 1
            other = copy.copy(image)
            other.invert()
            image.set_image_ptr(2, 2)
            image.invert()

    def test_colors(self):
        array = noise((11, 13, 3))
        image = ormalux.Image24(array)
        np.testing.assert_array_equal(image, array)
        np.testing.assert_array_equal(ormalux.Image24(array[:, :, ::-1], order="bgr"), array)
        np.testing.assert_array_equal(image.get_red_space(), array[:, :, 0])
        np.testing.assert_array_equal(image.get_image_ptr(2, 3, 6, 9)[:-1], array[3:9, 2:7])
        view = np.asarray(image)
        image.invert()
        np.testing.assert_array_equal(view, 255 - array)
        del image
        gc.collect()
        np.testing.assert_array_equal(view, 255 - array)
        for wrong, error in ((array[:, :, 0], ValueError), (array.astype(float), TypeError), ("x", TypeError)):
            with self.assertRaises(error):
                ormalux.Image24(wrong)
        with self.assertRaises(ValueError):
            ormalux.Image24(array, order="grb")

    def test_pixels_that_are_too_few(self):
        for make in (lambda: ormalux.Image(10, 10, b"abc"), lambda: ormalux.Image24(3, 3, bytes(35)),
                     lambda: ormalux.Image(4, 4, 24, bytes(47), "R"),
                     lambda: ormalux.Image().set_image_ptr_link(3, 3, bytearray(8)),
                     lambda: ormalux.Image(2, 2, noise((4, 4))[:, ::2]), lambda: ormalux.Image(np.zeros(3, np.uint8))):
            with self.assertRaises(ValueError):
                make()
        for wrong in (np.zeros((3, 3)), None, "text", [[1, 2]]):
            with self.assertRaises(TypeError):
                ormalux.Image(wrong)
        borrowed = bytearray(9)
        ormalux.Image(2, 2).set_image_ptr_link(3, 3, borrowed)
        image = ormalux.Image()
        image.set_image_ptr_link(3, 3, borrowed)
        with self.assertRaises(BufferError):
            borrowed.clear()
        image.invert()
        self.assertEqual(borrowed, b"\xff" * 9)

    def test_png(self):
        import struct
        import zlib
        for picture in (noise((7, 5)), noise((7, 5, 3))):
            image = (ormalux.Image if picture.ndim == 2 else ormalux.Image24)(picture)
            data = image._repr_png_()
            self.assertEqual(struct.unpack(">II", data[16:24]), (5, 7))
            length = struct.unpack(">I", data[33:37])[0]
            rows = np.frombuffer(zlib.decompress(data[41:41 + length]), np.uint8).reshape(7, -1)
            np.testing.assert_array_equal(rows[:, 1:].reshape(picture.shape), picture)
        self.assertIsNone(ormalux.Image()._repr_png_())


class Records(unittest.TestCase):
    def test_arrays_become_structured_arrays_and_back(self):
        for name, records in (("BlobRectArray", [(1, 2, 3, 4, 5)]), ("PointArray", [(1, 2), (3, -4)]),
                              ("PixelArray", [(1, 2, 3, 0.5)]), ("RectArray", [(1, 2, 3, 4)]), ("SizeArray", [(5, 6)]),
                              ("MatchResultArray", [(65, 1, 2, 3, 4, 5, 0.5, 0.25)]), ("LongArray", [(-5,), (7,)]),
                              ("CSortByteArray"[1:], [(9,)]), ("DoubleArray", [(0.5,)]), ("UShortArray", [(65535,)]),
                              ("PixelBunchArray", [(1, 2, 0.5)]), ("ColorPixelArray", [(1, 2, 0xFF0000)])):
            kind = getattr(ormalux, name)
            made = kind()
            for record in records:
                made.add(*record)
            array = np.asarray(made)
            self.assertEqual(len(array), len(records))
            again = kind(array)
            np.testing.assert_array_equal(np.asarray(again), array, name)
            self.assertEqual([str(record) for record in again], [str(record) for record in made])
            array[:] = 0
            self.assertNotEqual(str(again[0]), str(kind(array)[0]))
            with self.assertRaises(TypeError):
                kind(np.array(["x"]))
            with self.assertRaises(IndexError):
                made[len(records)]
        words = ormalux.SortStringArray(["b", "A", "\u00e4"])
        words.sort()
        self.assertEqual(list(words), ["A", "b", "\u00e4"])
        with self.assertRaises(TypeError):
            ormalux.MatchSrcArray(np.zeros(1, np.asarray(ormalux.MatchSrcArray()).dtype))

    def test_records(self):
        rect = ormalux.Rect(1, 2, right=3, bottom=4)
        self.assertEqual((tuple(rect), rect == (1, 2, 3, 4), pickle.loads(pickle.dumps(rect)) == rect),
                         ((1, 2, 3, 4), True, True))
        self.assertEqual(ormalux.EdgeSettings().contrast, 20)
        for wrong in ((1,), "ab", (1, "x")):
            with self.assertRaises(TypeError):
                ormalux.Point(*wrong) if len(wrong) > 1 and wrong != "ab" else ormalux.Point(wrong)

    def test_a_million_records(self):
        array = np.zeros(10 ** 6, np.asarray(ormalux.BlobRectArray()).dtype)
        array["left"] = np.arange(10 ** 6)
        boxes = ormalux.BlobRectArray(array)
        boxes += boxes
        self.assertEqual((len(boxes), boxes[-1].left), (2 * 10 ** 6, 999999))

    def test_one_array_from_many_threads(self):
        points = ormalux.PointArray()
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            list(pool.map(lambda i: [points.add(i, j) for j in range(500)], range(20)))
        self.assertEqual(len(points), 10000)
        a, b = ormalux.Image(300, 300), ormalux.Image(300, 300)
        with concurrent.futures.ThreadPoolExecutor(4) as pool:  # each waits for both, in one order
            list(pool.map(lambda i: a.__iadd__(b) if i % 2 else b.__iadd__(a), range(400)))


class Functions(unittest.TestCase):
    def known(self, step, **fields):
        try:
            ormalux.Recipe.parse(ormalux._recipe.json.dumps({"steps": [{"step": step, **fields}]}))
        except ormalux.Error as error:
            if "unknown step" in str(error):
                self.skipTest(f"there is no step {step} yet")

    def test_threshold_and_blobs(self):
        picture = parts()
        np.testing.assert_array_equal(ormalux.threshold(picture, 100), np.where(picture > 100, 255, 0))
        self.assertEqual(picture.max(), 210)
        self.assertEqual(list(ormalux.blobs(picture, 100, min_size=(3, 3), sort="left")["left"]), [5, 40, 70])
        self.assertEqual(len(ormalux.blobs(picture, 100, "black", roi=(0, 0, 50, 40))), 1)
        with self.assertRaisesRegex(ormalux.Error, "treshold"):
            ormalux.blobs(picture, treshold=3)
        with self.assertRaisesRegex(ormalux.Error, "nowhere.mcs"):
            ormalux.match(picture, "nowhere.mcs")

    @unittest.skipUnless(CLI, "the command line, which cuts the template, is not built")
    def test_match_and_texts(self):
        with tempfile.TemporaryDirectory() as folder:
            folder = pathlib.Path(folder)
            save_bmp(folder / "a.bmp", parts())
            subprocess.run([CLI, "source", "cut", "a.bmp", "--roi", "70,8,85,19", "--threshold", "100", "--object", "white",
                            "-o", "lid.mcs"], cwd=folder, check=True, capture_output=True,
                           env={"QT_QPA_PLATFORM": "offscreen"})
            found = ormalux.match(parts(), folder / "lid.mcs", threshold=100, min_yield=0.9, sort="left")
            self.assertEqual([found["left"].tolist(), found["yield"].tolist()], [[70], [1.0]])
            (folder / "lid.mcs").write_bytes(b"damaged")
            with self.assertRaisesRegex(ormalux.Error, "lid.mcs"):
                ormalux.match(parts(), folder / "lid.mcs", threshold=100)
            with self.assertRaisesRegex(ormalux.Error, "nowhere"):
                ormalux.Recipe.parse('{"steps":[{"step":"ocr","source":"nowhere"}]}', folder)

    def test_edges_line_circle(self):
        self.known("edges", line=[0, 0, 1, 1])
        y, x = np.mgrid[:120, :120]
        disc = np.clip(30 - np.hypot(x - 60, y - 58) + 0.5, 0, 1) * 180 + 30
        disc = np.rint(disc).astype(np.uint8)
        found = ormalux.circle(disc, (59, 59), (15, 45))
        self.assertAlmostEqual(found["x"][0], 60, 1)
        self.assertAlmostEqual(found["radius"][0], 30, 1)
        self.assertEqual(len(ormalux.edges(disc, (0, 58, 119, 58))), 2)
        step = np.repeat(np.uint8([[20] * 40 + [200] * 40]), 80, 0)
        self.assertAlmostEqual(ormalux.line(step, (40, 40, 60, 30, 90))["x"][0], 39.5, 1)

    def test_features(self):
        self.known("features")
        self.assertEqual(sorted(ormalux.features(parts(), 100)["area"]), [100, 100, 192])

    def test_draw(self):
        picture = parts()
        result = ormalux.Recipe.parse('{"steps":[{"step":"blobs","threshold":100,"min_size":"3x3"}]}').run(picture)
        drawn = ormalux.draw(picture, result)
        self.assertEqual((drawn.shape, picture.max()), ((41, 97, 3), 210))
        outline = np.zeros((41, 97), bool)
        for left, top, width, height in ((5, 6, 10, 10), (40, 20, 10, 10), (70, 8, 16, 12)):
            outline[top:top + height, left:left + width] = True
            outline[top + 1:top + height - 1, left + 1:left + width - 1] = False
        np.testing.assert_array_equal((drawn == (0, 255, 0)).all(axis=2), outline)
        self.assertTrue(result._repr_png_().startswith(b"\x89PNG"))


class Interpreter(unittest.TestCase):
    def test_the_lock_is_released_while_an_operation_runs(self):
        image = ormalux.Image(noise((3000, 3000)))
        ticks = []
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            running = pool.submit(lambda: [image.median5x5() for _ in range(3)])
            while not running.done():
                ticks.append(time.perf_counter())
                time.sleep(0.0005)
        self.assertGreater(len(ticks), 20)

    def test_memory_is_flat(self):
        code = ("import resource, numpy as np, ormalux\n"
                "array = np.zeros((200, 200), np.uint8)\n"
                "recipe = ormalux.Recipe.parse('{\"steps\":[{\"step\":\"blobs\",\"threshold\":9}]}')\n"
                "def once():\n"
                "    image = ormalux.Image(array); np.asarray(image); memoryview(image); ormalux.Image(200, 200)\n"
                "    np.asarray(ormalux.Image(60, 60)); recipe.run(array)['1']; image.get_image_ptr(0, 0, 99, 99)\n"
                "    try: image.threshold('x')\n"
                "    except TypeError: pass\n"
                "def used(n):\n"
                "    for _ in range(n): once()\n"
                "    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss\n"
                "used(3000); before = used(1); print(used(20000) - before)\n")
        grown = int(subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout)
        self.assertLess(grown, 3000)

    def test_sub_interpreters_are_refused(self):
        code = ("import ormalux, _xxsubinterpreters as subs\n"
                "try: subs.run_string(subs.create(), 'import ormalux')\n"
                "except Exception as error: print(error)\n")
        done = subprocess.run([sys.executable, "-c", code], capture_output=True, check=False)
        self.assertIn(b"main interpreter", done.stdout)


if __name__ == "__main__":
    unittest.main()
