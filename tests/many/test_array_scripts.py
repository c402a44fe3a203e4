"""The scripts of arrays for Slurm, which is not needed here."""
import os
import re
import subprocess
import unittest

from many import ManyTest, read, script_of, table, write


class Scripts(ManyTest):

    def test_the_command_and_the_needs(self):
        self.list(("one", "a.txt"), ("two's", "b.txt"))
        out, _ = self.many("--slurm", "jobs.tsv", "-o", "my jobs", "--threads=3", "--jobs=5")
        work = self.path("my jobs", "many")
        self.assertIn(f"sbatch --chdir='{work}' '{work}/array-1.sh'\n", out)
        script = script_of(self.path("my jobs"))
        for line in ("array=1-2%5", "cpus-per-task=3", "time=15", "output=slurm-1-%a.txt"):
            self.assertIn(f"#SBATCH --{line}\n", script)
        self.assertRegex(script, r"#SBATCH --mem=\d+M\n")
        self.assertEqual(subprocess.run(["bash", "-n"], input=script.encode(), check=True).returncode, 0)
        self.assertEqual(self.statuses("my jobs"), {"one": "missing", "two's": "missing"})
        self.many("--slurm", "jobs.tsv", "-o", "my jobs", "--time=2-0", "--memory=7G")
        self.assertRegex(script_of(self.path("my jobs")), r"--array=1-2\n[^%]*--mem=7G\n#SBATCH --time=2-0\n")

    def test_the_memory_is_more_than_the_jobs_took(self):
        motifs = b"".join(read(self.path(name)) for name in ("a.txt", "b.txt"))
        write(self.path("large.txt"), motifs * 20)
        self.list(("small", "a.txt", "", ""), ("large", "large.txt", "50", "0.5"),
                  header=("name", "files", "best", "cutoff"))
        self.many("--slurm", "jobs.tsv")
        given = int(re.search(r"--mem=(\d+)M", script_of(self.path("jobs")))[1]) * 2 ** 20
        self.many("jobs.tsv")
        most = max(int(row["peak_memory_bytes"]) for row in table(self.path("jobs", "summary.tsv")))
        self.assertGreater(given, most)
        self.assertLess(given, 20 * most)

    def test_more_jobs_than_slurm_takes_in_an_array(self):
        self.list(*[(f"job{number}", "a.txt") for number in range(1, 2006)])
        out, _ = self.many("--slurm", "jobs.tsv", "--time=5", "--memory=1G")
        self.assertEqual(len(re.findall("^sbatch ", out, re.MULTILINE)), 3)
        for number, tasks in ((1, "1-1000"), (2, "1-1000"), (3, "1-5")):
            self.assertIn(f"--array={tasks}\n", script_of(self.path("jobs"), number))
        self.assertIn("\n5)\n    log='" + self.path("jobs", "many", "logs", "job2005.txt"),
                      script_of(self.path("jobs"), 3))

    def test_without_slurm(self):
        self.list(("one", "a.txt"))
        _, errors = self.many("--slurm", "--submit", "jobs.tsv", status=1, env={"PATH": self.path("bin")})
        self.assertIn("package slurm-client", errors)
        write(self.path("bin", "sbatch"), "#!/bin/sh\necho no partition >&2\nexit 1\n")
        os.chmod(self.path("bin", "sbatch"), 0o755)
        _, errors = self.many("--slurm", "--submit", "jobs.tsv", status=1,
                              env={"PATH": self.path("bin") + ":" + os.environ["PATH"]})
        self.assertRegex(errors, "no partition\nvarnolix-job: Slurm did not take the array")


if __name__ == "__main__":
    unittest.main()
