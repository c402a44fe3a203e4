"""check.sh with stand-ins for its checkers: findings and missing checkers both make it fail."""
import os
import shutil
import unittest

from script_project import ScriptTest, write

NEEDED = ("basename", "bash", "cmake", "dirname", "env", "find", "nproc", "xargs")
CHECKERS = ("clang-format", "clang-tidy", "shellcheck")


class Check(ScriptTest):

    def check(self, **checkers):
        """Runs check.sh with the named checkers, each of which ends with its status."""
        folder = self.path("bin")
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        for tool in NEEDED:
            os.symlink(shutil.which(tool), os.path.join(folder, tool))
        for name, status in checkers.items():
            write(os.path.join(folder, name.replace("_", "-")), f"#!/bin/sh\nexit {status}\n", executable=True)
        for source in ("src", "tests", "bench", "fuzz"):
            write(self.path("project", source, "one.cpp"), "")
        write(self.path("project", "build", "tidy", "build.ninja"), "")
        return self.script("check.sh", env={"PATH": folder})

    def test_all_content_is_no_finding(self):
        done = self.check(clang_format=0, clang_tidy=0, shellcheck=0)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.endswith("No findings\n"))

    def test_a_finding_fails_it(self):
        done = self.check(clang_format=0, clang_tidy=1, shellcheck=0)
        self.assertEqual((done.returncode, done.stderr), (1, "check.sh: findings of clang-tidy\n"))

    def test_a_missing_checker_fails_it_and_is_named(self):
        done = self.check(clang_format=0, shellcheck=0)
        self.assertEqual((done.returncode, done.stderr), (1, "check.sh: not installed: clang-tidy\n"))
        self.assertNotIn("No findings", done.stdout)

    def test_without_any_checker_it_fails(self):
        done = self.check()
        self.assertEqual((done.returncode, done.stderr), (1, "check.sh: not installed: " + " ".join(CHECKERS) + "\n"))

    def test_findings_and_missing_checkers_are_both_named(self):
        done = self.check(clang_format=1, shellcheck=1)
        self.assertEqual(done.stderr, "check.sh: findings of clang-format shellcheck; not installed: clang-tidy\n")


if __name__ == "__main__":
    unittest.main()
