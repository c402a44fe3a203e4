#!/usr/bin/env python3
"""Tests of the twin itself: its sums against real ones, and small cases worked out by hand."""
import math
import os
import random
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
from arithmetic import CELL_UNITS, divide, fixed, mean_in_order, mean_of_units  # noqa: E402
from merging import combine, draw                                               # noqa: E402
from records import ORIGINAL, REVERSE, consensus_letter, reverse_complement     # noqa: E402
from scanning import PairScan, Side                                             # noqa: E402
from text_reports import drawing                                                # noqa: E402


class Plain:
    """A record of named values."""
    def __init__(self, **values):
        self.__dict__.update(values)


class ExtendedSumTest(unittest.TestCase):
    """The twin's extended sums are those of the processor."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.program = os.path.join(cls.folder.name, "extended_sums")
        source = os.path.join(HERE, "extended_sums.cpp")
        subprocess.run([os.environ.get("CXX", "c++"), "-O1", "-o", cls.program, source], check=True, timeout=120)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def means(self, lists):
        text = "".join(" ".join(map(repr, cells)) + "\n" for cells in lists)
        done = subprocess.run([self.program], input=text, capture_output=True, text=True, check=True, timeout=60)
        return done.stdout.splitlines()

    def test_means_are_those_of_extended_precision(self):
        rng = random.Random(8)
        plain = [[1.0 - abs(rng.random() - rng.random()) for _ in range(4 * rng.randint(1, 40))] for _ in range(300)]
        wide = [[rng.uniform(-3, 3) * 10.0 ** rng.randint(-4, 4) for _ in range(4 * rng.randint(1, 300))]
                for _ in range(100)]
        for cells, text in zip(plain + wide, self.means(plain + wide)):
            self.assertEqual(mean_in_order(cells, len(cells)), float.fromhex(text))
        for cells, text in zip(plain, self.means(plain)):
            units = sum(int(cell * CELL_UNITS) for cell in cells)
            self.assertEqual(mean_of_units(units, len(cells)), float.fromhex(text))


class NumberTest(unittest.TestCase):
    def test_zero_by_zero_is_a_negative_not_a_number(self):
        self.assertEqual(fixed(divide(0.0, 0.0)), "-nan")
        self.assertEqual(fixed(divide(1.0, -0.0)), "-inf")
        self.assertEqual(fixed(divide(math.nan, 0.0)), "nan")


class MotifTest(unittest.TestCase):
    def test_consensus_letters(self):
        for column, letter in (((.25, .25, .25, .25), "N"), ((.6, .3, .1, 0.), "A"), ((.55, .3, .1, .05), "M"),
                               ((.5, .5, 0., 0.), "M"), ((.4, .3, .2, .1), "V"), ((0., .5, .5, 0.), "S"),
                               ((.3, .3, .2, .2), "H"), ((.6, .5, 0., 0.), "")):
            self.assertEqual(consensus_letter(column), letter, column)

    def test_reverse_complement_swaps_one_pair(self):
        self.assertEqual(reverse_complement([[.7, .2, .1, 0.], [.1, .2, .3, .4]]), [[.4, .2, .3, .1], [0., .2, .1, .7]])
        self.assertEqual(reverse_complement([[.1, .2, .5, .2]]), [[.1, .5, .2, .2]])


class ScanTest(unittest.TestCase):
    def found(self, one, two, forward):
        sides = [Side(matrix, reverse_complement(matrix)) for matrix in (one, two)]
        return [entry[:3] for entry in PairScan(*sides, 0.0).run(forward)]

    def test_overlaps_of_all_regions(self):
        five, seven = [[1., 0., 0., 0.]] * 5, [[1., 0., 0., 0.]] * 7
        first, second = [(True, 1, 5), (True, 2, 5), (True, 3, 5), (True, 4, 4)], [(False, 1, 5), (False, 2, 4)]
        for forward in (True, False):
            self.assertEqual(self.found(five, seven, forward), first + second)
            turned = [(not region, position, overlap) for region, position, overlap in second + first]
            self.assertEqual(self.found(seven, five, forward), turned)


class DrawingTest(unittest.TestCase):
    B = Plain(consensus="BBBBBBBB", reverse_consensus="bbbbbbbb")
    A = Plain(consensus="AAAAAA", reverse_consensus="aaaaaa")

    def test_offset_stands_at_the_end_that_the_direction_names(self):
        record = Plain(direction="Forward", position=6, overlap=3, format1=ORIGINAL)
        self.assertEqual(drawing(self.B, self.A, record, ORIGINAL), ("BBBBBBBB---", "-----AAAAAA"))
        record.direction = "Backward"
        self.assertEqual(drawing(self.B, self.A, record, ORIGINAL), ("---BBBBBBBB", "AAAAAA-----"))

    def test_longer_offset_is_not_cut(self):
        record = Plain(direction="Forward", position=4, overlap=6, format1=REVERSE)
        self.assertEqual(drawing(self.B, self.A, record, REVERSE), ("bbbbbbbb", "---aaaaaa"))


class MergingTest(unittest.TestCase):
    A, C = [1., 0., 0., 0.], [0., 1., 0., 0.]

    def record(self, direction, position, overlap, primary):
        return Plain(direction=direction, position=position, overlap=overlap, primary=primary)

    def test_equal_matrices_merge_to_themselves(self):
        self.assertEqual(combine([self.A] * 4, [self.A] * 4, self.record("Forward", 1, 4, True)), [self.A] * 4)

    def test_first_matrix_is_shifted_when_primary(self):
        record = self.record("Forward", 2, 4, True)
        half = [.5, .5, 0., 0.]
        self.assertEqual(combine([self.A] * 5, [self.C] * 5, record), [self.C] + [half] * 4 + [self.A])
        self.assertEqual(draw([self.A] * 5, [self.C] * 5, record), ["-AAAAA", "CCCCC-"])
        record.direction = "Backward"
        self.assertEqual(combine([self.A] * 5, [self.C] * 5, record), [self.A] + [half] * 4 + [self.C])
        self.assertEqual(draw([self.A] * 5, [self.C] * 5, record), ["AAAAA-", "-CCCCC"])

    def test_lengthened_lines(self):
        record = self.record("Forward", 3, 4, False)
        self.assertEqual(draw([self.A] * 5, [self.C] * 6, record), ["AAAAA" + "-" * 10, "--CCCCCC" + "-" * 7])
        record.direction = "Backward"
        self.assertEqual(draw([self.A] * 5, [self.C] * 6, record), ["-" * 10 + "AAAAA", "-" * 7 + "CCCCCC--"])


if __name__ == "__main__":
    unittest.main()
