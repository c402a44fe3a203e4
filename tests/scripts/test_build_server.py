""".ci/run with stand-ins for the scripts that it starts."""
import os
import shutil
import subprocess
import unittest

from script_project import LIMIT, ROOT, ScriptTest, write


class BuildServer(ScriptTest):

    def run_ci(self, failing=""):
        """Runs the script; answers its exit status and what the stand-ins printed."""
        for name in ("test.sh", "more-tests.sh"):
            write(self.path("project", "scripts", name),
                  f"#!/bin/sh\ncat\necho {name} $*\n[ {name} != '{failing}' ]\n", executable=True)
        os.makedirs(self.path("project", ".ci"), exist_ok=True)
        shutil.copy(os.path.join(ROOT, ".ci", "run"), self.path("project", ".ci"))
        done = subprocess.run([self.path("project", ".ci", "run")], cwd=self.top, input="input\n", text=True,
                              stdout=subprocess.PIPE, timeout=LIMIT, check=False)
        return done.returncode, done.stdout

    def test_all_tests_run_without_input_and_with_firefox(self):
        self.assertEqual(self.run_ci(), (0, "test.sh --firefox\nmore-tests.sh\n"))

    def test_a_failure_of_the_tests_ends_it(self):
        self.assertEqual(self.run_ci(failing="test.sh"), (1, "test.sh --firefox\n"))

    def test_a_failure_of_the_other_jobs_fails(self):
        self.assertEqual(self.run_ci(failing="more-tests.sh"), (1, "test.sh --firefox\nmore-tests.sh\n"))


if __name__ == "__main__":
    unittest.main()
