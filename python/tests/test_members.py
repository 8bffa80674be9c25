"""Every exported member of the library is bound, under its name and in all its forms."""
import ast
import inspect
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
from collections import Counter

import numpy as np

import ormalux
from ormalux import _core
from support import LIBRARY

# The library's own: private members, and what its modules call in each other.
OWN = {"CKestImage::adopt", "CKestImage::resize", "CKestImage::release", "CKestImage24::adopt", "CKestImage24::release",
       "CKestImage::SetSizeForOverwrite", "CKestInspection::reserve", "CKestRecipe::bind",
       "CKestRecipe::Run(ormalux::FrameSource"}
OPERATORS = {"operator=": "assign", "operator+": "__iadd__", "operator-": "__isub__"}


def snake(name):
    name = re.sub(r"(.)([A-Z][a-z]+)", r"\1_\2", name)
    return re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name).lower()


def exported():
    """(class without prefix, member as bound) -> number of forms."""
    text = subprocess.run(["nm", "-DC", "--defined-only", LIBRARY], capture_output=True, check=True).stdout.decode()
    found = Counter()
    for line in text.splitlines():
        match = re.match(r"\w+ [TW] ((?:ormalux::color|C\w+)::(~?\w+|operator\S)(?:\[abi:\w+\])?\(.*)", line)
        if not match or any(match[1].startswith(own) for own in OWN):
            continue
        owner, member = match[1].split("::")[-2 if match[1].startswith("ormalux") else 0], match[2]
        owner = "color" if match[1].startswith("ormalux::color") else re.sub("^(CKest|C)", "", match[1].split("::")[0])
        if member in (owner, "~" + owner) or re.sub("^~?(CKest|C)", "", member) == owner:
            continue
        found[owner, OPERATORS.get(member) or snake(member)] += 1
    return found


def forms(function):
    """The number of overloads that the text of a bound function lists."""
    return max(1, len(re.findall(r"^\d+\. \w+\(", function.__doc__ or "", re.MULTILINE)))


@unittest.skipUnless(LIBRARY, "the library's file is not known")
class Members(unittest.TestCase):
    def test_all_exported_members_are_bound(self):
        listed = exported()
        self.assertGreater(len(listed), 200)
        missing = []
        for (owner, name), count in listed.items():
            bound = getattr(getattr(_core, owner, None), name, None)
            if bound is None or (name != "assign" and forms(bound) < count):
                missing.append(f"{owner}.{name}: {count} exported, {forms(bound) if bound else 0} bound")
        self.assertEqual(missing, [])

    def test_the_stubs_name_what_is_bound(self):
        stubs = ast.parse(pathlib.Path(_core.__file__).with_name("_core.pyi").read_text())
        declared = {each.name: {member.name for member in each.body if isinstance(member, ast.FunctionDef)}
                    for each in stubs.body if isinstance(each, ast.ClassDef)}
        for owner, kind in inspect.getmembers(_core, inspect.isclass):
            members = {name for name, member in inspect.getmembers(kind, callable) if not name.startswith("_")}
            if owner not in ("EdgePolarity", "EdgeSelect"):
                self.assertEqual(members - declared.get(owner, set()), set(), owner)

    @unittest.skipUnless(shutil.which("mypy"), "mypy is not installed")
    def test_the_package_and_its_stubs_agree(self):
        folder = pathlib.Path(ormalux.__file__).parent.parent
        with tempfile.TemporaryDirectory() as cache:
            checked = subprocess.run(["mypy", "--python-version", "3.9", "--cache-dir", cache, "-p", "ormalux"],
                                     cwd=folder, capture_output=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout.decode())

    def test_bound_members_say_what_they_do(self):
        self.assertIn("Every pixel greater than t becomes 255", ormalux.Image.threshold.__doc__)
        self.assertIn("Bresenham", ormalux.Image.get_line_segment.__doc__)


class Calls(unittest.TestCase):
    """What C++ writes through pointers comes back; what is not of the declared type is refused."""

    def test_outputs(self):
        image = ormalux.Image(np.pad(np.full((4, 6), 200, np.uint8), 10))
        self.assertEqual(image.get_gravity_center(100, 255), (12, 11))
        self.assertEqual(ormalux.Image.rotate_point(1, 0, 90.0, 0, 0), (0, 1))
        self.assertEqual(ormalux.Image.get_cross_point(0, 0, 10, 10, 0, 10, 10, 0), (1, 5, 5))
        self.assertEqual(ormalux.Stdlib.swap(3, 4), (4, 3))
        self.assertEqual(ormalux.color.rgb_to_cmyk(255, 0, 0), (0, 255, 255, 0))
        self.assertAlmostEqual(ormalux.color.rgb_to_hsi(0, 255, 0)[0], 120)
        self.assertEqual(image.histogram()[[0, 200]].tolist(), [24 * 26 - 24, 24])
        scale = ormalux.PlaneScale()
        self.assertEqual(scale.set_points([(0, 0, 0, 0), (10, 0, 5, 0), (10, 10, 5, 5), (0, 10, 0, 5)]), 1)
        known, place = scale.map((4, 6))
        self.assertEqual((known, round(place.x, 9), round(place.y, 9)), (1, 2, 3))
        count, edges = ormalux.Image(np.repeat(np.uint8([[20] * 10 + [200] * 10]), 9, 0)).get_edges(
            0, 4, 19, 4, ormalux.EdgeSettings(contrast=50))
        self.assertEqual((count, edges.dtype.names), (1, ("x", "y", "position", "contrast", "polarity")))
        self.assertAlmostEqual(edges["x"][0], 9.5, 2)

    def test_lists_and_overloads(self):
        image, found = ormalux.Image(np.pad(np.full((4, 6), 200, np.uint8), 10)), ormalux.BlobRectArray()
        self.assertEqual(image.get_blob_list(100, 255, 2, 99, 2, 99, found), 1)
        self.assertEqual(image.get_blob_list(0, 0, 26, 24, 200, 2, 99, 2, 99, found), 2)
        outlines = ormalux.PointArrayArray()
        image.get_blob_list(0, 0, 26, 24, 200, 2, 99, 2, 99, outlines)
        self.assertEqual((len(outlines), len(outlines[0])), (1, 24))
        self.assertEqual((found[0].left, found[-1].bottom, tuple(found.get_bounds())), (10, 13, (10, 10, 15, 13)))
        self.assertEqual(ormalux.PointArray([(0, 0), (9, 0), (9, 9), (0, 9)]).pt_in_polygon(3, 3), 1)
        self.assertEqual(ormalux.Image.pt_in_polygon(np.array([(0, 0), (9, 0), (9, 9), (0, 9)]), (3, 3)), 1)

    def test_wrong_types(self):
        image = ormalux.Image(5, 5)
        for wrong in ("threshold", ("a",)), ("threshold", (1.5,)), ("threshold", ()), ("set_pixel", (1, 1, 300)), \
                ("match", (3, None, None)), ("set_roi_placement", ((1, 2, 3),)), ("filter", ("abc", 3, 1, 0, 0)), \
                ("load_image", (3,)), ("threshold", (2 ** 40,)):
            with self.assertRaises(TypeError, msg=wrong):
                getattr(image, wrong[0])(*wrong[1])
        for kernel, size in (([1] * 8, 3), ([1], 0), ([], -1)):
            with self.assertRaises(ValueError):
                image.filter(kernel, size, 1, 0, 0)
        with self.assertRaises(NotImplementedError):
            image.paint_image(None, None)

    def test_every_member_survives_arguments_of_every_type(self):
        values = [0, -1, 7, 2 ** 31 - 1, -2 ** 31, 1e300, float("nan"), "A", "", None, b"x", (1, 2, 3, 4), [],
                  np.zeros(3, np.uint8), ormalux.Image(4, 4), ormalux.BlobRectArray(), ormalux.PointArray()]
        random = np.random.default_rng(5)
        members = [(owner, name) for owner, kind in inspect.getmembers(_core, inspect.isclass)
                   for name, member in inspect.getmembers(kind, callable)
                   if not name.startswith("__") and name not in ("save_image", "load_image")
                   and owner not in ("Error", "EdgePolarity", "EdgeSelect")]
        for number in range(10000):
            owner, name = members[number % len(members)]
            try:
                subject = getattr(_core, owner)()
            except TypeError:
                subject = getattr(_core, owner)
            arguments = [values[i] for i in random.integers(0, len(values), random.integers(0, 8))]
            try:
                getattr(subject, name)(*arguments)
            except (TypeError, ValueError, IndexError, ormalux.Error, NotImplementedError, MemoryError):
                pass


if __name__ == "__main__":
    unittest.main()
