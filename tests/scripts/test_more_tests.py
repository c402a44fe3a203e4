"""more-tests.sh with stand-ins for what its jobs start: which of them run, and what it says of them."""
import os
import shutil
import unittest

from script_project import ScriptTest, read, write

NEEDED = ("basename", "bash", "dirname", "env", "mkdir", "sed", "tail", "tee")


class MoreTests(ScriptTest):

    def setUp(self):
        super().setUp()
        self.log = self.path("log")
        write(self.log, "")
        self.bin = self.path("bin")
        os.makedirs(self.bin)
        for tool in NEEDED:
            os.symlink(shutil.which(tool), os.path.join(self.bin, tool))
        for name in ("setup.sh", "check.sh"):
            self.stand_in(self.path("project", "scripts", name))
        for name in ("cmake", "ctest"):
            self.stand_in(os.path.join(self.bin, name))

    def stand_in(self, path, failing="nothing at all"):
        """A command that logs how it is called and fails where its arguments hold the word."""
        write(path, f"#!/usr/bin/env bash\necho \"{os.path.basename(path)} $*\" | tee -a '{self.log}'\n"
                    f"[[ \"$*\" != *'{failing}'* ]]\n", executable=True)

    def run_jobs(self, *jobs):
        """Runs the script; answers the finished process and the lines of the log."""
        done = self.script("more-tests.sh", *jobs, env={"PATH": self.bin})
        return done, read(self.log).splitlines()

    def test_all_jobs_run_with_their_presets(self):
        done, lines = self.run_jobs()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual([line.split(" ")[0] for line in lines],
                         ["setup.sh"] + ["cmake", "cmake", "ctest"] * 2 + ["check.sh"])
        self.assertIn("--checks", lines[0])
        for line, preset in zip(lines[1:7], ["clang"] * 3 + ["asan"] * 3):
            self.assertIn(f"--preset {preset}", line)
        for job in ("clang", "asan", "checks"):
            self.assertRegex(done.stdout, f"(?m)^== {job}: passed after [0-9]+ s$")
        self.assertTrue(done.stdout.endswith("\n3 passed, 0 failed\n"))

    def test_a_named_job_runs_alone(self):
        done, lines = self.run_jobs("checks")
        self.assertEqual((done.returncode, lines[1:]), (0, ["check.sh "]))

    def test_a_job_that_fails_is_named_and_the_others_run(self):
        self.stand_in(os.path.join(self.bin, "ctest"), failing="preset clang")
        done, _ = self.run_jobs()
        self.assertEqual((done.returncode, done.stderr), (1, "more-tests.sh: failed: clang\n"))
        self.assertRegex(done.stdout, r"(?m)^ctest --preset clang")     # the end of its log
        self.assertRegex(done.stdout, "(?m)^== clang: FAILED after")
        self.assertRegex(done.stdout, "(?m)^== checks: passed after")
        self.assertTrue(done.stdout.endswith("\n2 passed, 1 failed\n"))

    def test_no_test_runs_where_the_build_fails(self):
        self.stand_in(os.path.join(self.bin, "cmake"), failing="--build --preset asan")
        done, lines = self.run_jobs("asan")
        self.assertEqual(done.returncode, 1)
        self.assertNotIn("ctest", " ".join(lines))

    def test_unknown_jobs_are_refused(self):
        done, lines = self.run_jobs("clang", "nonsense")
        self.assertEqual((done.returncode, lines), (2, []))
        self.assertIn("no job is named nonsense", done.stderr)


if __name__ == "__main__":
    unittest.main()
