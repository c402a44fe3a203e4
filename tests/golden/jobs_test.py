#!/usr/bin/env python3
"""Tests of the golden runner: what it masks, what it must not mask, and that a wrong program fails."""
import os
import re
import subprocess
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import jobs                                                                     # noqa: E402

RUN = os.path.join(HERE, "run.py")


def console(run_time):
    return b"\nRuntime: " + run_time + b" seconds.\n"


class MaskTest(unittest.TestCase):
    def setUp(self):
        self.now = time.time()
        self.mask = jobs.Mask("/tmp/x/job", self.now, self.now, console(b"0.0123457"))

    def test_root_number_date(self):
        moment = time.gmtime(self.now)
        day, second = time.strftime("%Y-%m-%d", moment), time.strftime("%m-%d-%Y %H:%M:%S", moment)
        text = "/tmp/x/job/result/J_%s_1000_a Results created by VARNOLIX on %s\n" % (day, second)
        self.assertEqual(self.mask(text.encode()),
                         b"@ROOT@/result/J_DATE_NUMBER_a Results created by VARNOLIX on MOMENT\n")

    def test_other_days_and_numbers_stay(self):
        for text in (b"J_2001-01-01_1000_", b"J_%s_0999_" % time.strftime("%Y-%m-%d").encode(),
                     b"Results created by VARNOLIX on 01-01-2001 00:00:00"):
            self.assertEqual(self.mask(text), text)

    def test_run_time_keeps_its_notation(self):
        for text, mark in ((b"0.0123457", b"GENERAL"), (b"0.012346", b"SIX_DECIMALS"), (b"0.912346", b"0.912346"),
                           (b"0.01235", b"0.01235"), (b"fast", b"fast")):
            self.assertEqual(self.mask(b"Runtime: " + text + b" seconds"), b"Runtime: " + mark + b" seconds")

    def test_run_time_that_looks_alike_stands_for_both(self):
        mask = jobs.Mask("/r", self.now, self.now, console(b"0.123457"))
        found = mask(b"Runtime: 0.123457 seconds")
        self.assertEqual(found, b"Runtime: EITHER seconds")
        for mark in (b"GENERAL", b"SIX_DECIMALS"):
            self.assertTrue(jobs.same(b"Runtime: " + mark + b" seconds", found))
        self.assertFalse(jobs.same(b"Runtime: GENERAL seconds", b"Runtime: SIX_DECIMALS seconds"))


class DifferencesTest(unittest.TestCase):
    def test_changed_missing_and_added_files(self):
        wanted = {"status": b"exit 0\n", "a": b"1\n", "b": b"2\n"}
        found = {"status": b"exit 0\n", "a": b"1 \n", "c": b"3\n"}
        self.assertEqual(sorted(jobs.differences(wanted, found)), ["a", "b", "c"])
        self.assertEqual(jobs.differences(wanted, dict(wanted)), [])


class CallsTest(unittest.TestCase):
    """Calls in the order of one thread: the file on standard input, tool and arguments, lines that were read."""
    M1 = [b"\t/r/J_1_M1.txt\nweblogo [a]\n    PO\n    1\n", b"\t/r/J_1_M1.txt\nweblogo [b]\n    PO\n    1\n"]
    M2 = [b"\t/r/J_1_M2.txt\nweblogo [a]\n    PO\n    2\n", b"\t/r/J_1_M2.txt\nweblogo [b]\n    PO\n    2\n"]
    M10 = [b"\t/r/J_1_M10.txt\nweblogo [a]\n", b"\t/r/J_1_M10.txt\nweblogo [b]\n"]
    D1 = [b"\t/r/J_1_D1.txt\nweblogo [a]\n"]
    GLOBAL = [b"\t/r/answers\nphp5 [/r/J_2026-01-31_1234_HTML_Global_Matching_Results.php]\n    <?php\n"]
    FULL = [b"\t/r/answers\nphp5 [/r/J_2026-01-31_1234_HTML_Results.php]\n    <?php\n    ?>\n"]
    TREE = [b"\t/r/answers\nRscript [/r/Plot_File.R]\n    png()\n"]

    def check(self, wanted, found, may_overlap):
        plain = re.sub(rb"(?m)^\t.*\n", b"", b"".join(wanted))
        self.assertEqual(jobs.ordered_calls(b"".join(found), may_overlap), plain)

    def test_every_order_is_kept_where_calls_may_not_overlap(self):
        for calls in (self.M1 + self.M2, self.M2 + self.M1, self.M1[::-1], self.FULL + self.GLOBAL):
            self.check(calls, calls, False)

    def test_motifs_may_overlap(self):
        wanted = self.M1 + self.M2 + self.M10
        for found in (self.M10 + self.M2 + self.M1, self.M1[:1] + self.M10[:1] + self.M2 + self.M1[1:] + self.M10[1:]):
            self.check(wanted, found, True)

    def test_calls_for_a_motif_may_not(self):
        found = self.M2[::-1] + self.M1
        self.check(self.M1 + self.M2[::-1], found, True)

    def test_pages_may_overlap(self):
        self.check(self.GLOBAL + self.FULL, self.FULL + self.GLOBAL, True)

    def test_stages_may_not(self):
        for found in (self.TREE + self.M1, self.D1 + self.M1, self.GLOBAL + self.TREE, self.M2 + self.TREE + self.M1):
            self.check(found, found, True)

    def test_a_torn_record_is_refused(self):
        torn = self.M1[0].replace(b"    PO\n", b"    P\t/r/J_1_M2.txt\nweblogo [a]\nO\n")
        for may_overlap in (False, True):
            with self.assertRaises(ValueError):
                jobs.ordered_calls(torn, may_overlap)


class RunTest(unittest.TestCase):
    def run_on(self, script, *options):
        with tempfile.TemporaryDirectory() as folder:
            program = os.path.join(folder, "program")
            jobs.write(program, b"#!/bin/sh\n" + script, 0o755)
            return subprocess.run([sys.executable, RUN, program, "one-motif", *options], capture_output=True,
                                  text=True, timeout=60, env=dict(os.environ, TMPDIR=folder))

    def test_a_program_that_says_nothing_fails(self):
        done = self.run_on(b"exit 1\n")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines()[-1], "0 passed, 2 failed")
        self.assertIn("stdout: missing", done.stdout)

    def test_an_endless_program_is_stopped(self):
        done = self.run_on(b"while :; do sleep 1; done\n", "--threads", "1", "--limit", "0.5")
        self.assertIn("stopped after 0.5 seconds", done.stdout)

    def test_endless_output_is_bounded(self):
        done = self.run_on(b"yes\n", "--threads", "1", "--limit", "20")
        self.assertEqual(done.stdout.splitlines()[-1], "0 passed, 1 failed")


if __name__ == "__main__":
    unittest.main()
