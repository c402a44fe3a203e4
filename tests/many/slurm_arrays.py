"""Whole arrays in a real Slurm of one node. Where Slurm is not installed it says so, and ends with status 77."""
import os
import sys
import unittest

import slurm
from many import ManyTest, alive, script_of, write

SKIPPED = 77                    # what the test driver takes for left out
ONE_MOTIF = b">M1\nA 9 0 0 0\nC 0 9 0 0\nG 0 0 9 0\nT 0 0 0 9\n"


class Arrays(ManyTest):

    @classmethod
    def setUpClass(cls):
        cls.cluster = slurm.Slurm()
        cls.addClassCleanup(cls.cluster.stop)
        cls.cluster.start()

    def submit(self):
        """Submits the array of the list and waits for its end; answers what was printed."""
        out, _ = self.many("--slurm", "--submit", "--memory=100M", "jobs.tsv", env=self.cluster.env)
        self.wait_until(lambda: self.cluster.run("squeue", "-h") == b"", "the array does not end")
        return out

    def collect(self, status):
        done = self.companion("collect", "jobs")
        self.assertEqual(done.returncode, status, done.stderr.decode() + self.cluster.logs())
        return done.stderr.decode()

    def test_an_array_gives_the_same_and_is_submitted_again_for_what_failed(self):
        write(self.path("it's bad.txt"), ONE_MOTIF)
        self.list(("one", "a.txt", "0.75"), ("it's bad", "'it'\\''s bad.txt'", ""), ("three", "b.txt a.txt", ""),
                  header=("name", "files", "cutoff"))
        self.assertRegex(self.submit(), r"3 jobs, 0 done before\nsbatch .*array-1.sh'\nSubmitted batch job \d+\n")
        self.assertEqual(self.collect(1), "varnolix-job: job it's bad failed: a job needs at least two motifs\n")
        self.assertEqual(self.statuses(), {"one": "done", "it's bad": "failed", "three": "done"})
        before = self.records()
        write(self.path("it's bad.txt"), ONE_MOTIF + ONE_MOTIF.replace(b"M1", b"M2"))
        self.submit()
        self.assertIn("--array=2\n", script_of(self.path("jobs")))
        self.collect(0)
        after = self.records()
        self.assertEqual({name: after[name] for name in before}, before)
        self.assertEqual(len(after), 3)
        self.assertNotIn("sbatch", self.submit())
        self.many("jobs.tsv", "-o", "parallel")
        self.assertEqual(self.collected(), self.collected("parallel"))

    def test_fifty_jobs_give_the_table_of_parallel(self):
        cutoffs = ("0.5", "0.6", "0.75", "0.85", "0.9")
        self.list(*((f"job{n}", ("a.txt", "b.txt", "a.txt b.txt")[n % 3], cutoffs[n % 5], str(n % 7 + 1))
                    for n in range(50)), header=("name", "files", "cutoff", "best"))
        self.submit()
        self.collect(0)
        self.assertEqual(list(self.statuses().values()), ["done"] * 50)
        self.many("jobs.tsv", "-o", "parallel")
        self.assertEqual(self.collected(), self.collected("parallel"))

    def test_a_task_that_is_ended_is_told_and_done_again(self):
        # It cannot read its list of motifs before somebody writes to it.
        os.mkfifo(self.path("pipe.txt"))
        self.list(("waits", "pipe.txt"))
        self.many("--slurm", "--submit", "--memory=100M", "--time=5", "jobs.tsv", env=self.cluster.env)
        self.wait_until(lambda: os.path.exists(self.path("jobs", "many", "logs", "waits.txt")) and
                        alive(self.path("jobs", "waits")), "the array does not start")
        self.assertIn("waits is missing", self.collect(1))
        self.cluster.run("scancel", "--user", str(os.getuid()))
        self.wait_until(lambda: self.cluster.run("squeue", "-h") == b"", "the array does not end")
        self.assertRegex(self.collect(1), "waits failed: .*CANCELLED")
        os.remove(self.path("pipe.txt"))
        os.symlink("a.txt", self.path("pipe.txt"))
        self.submit()
        self.collect(0)


if __name__ == "__main__":
    if slurm.missing():
        print("left out, as these are not installed:", *slurm.missing(), "(packages slurm-wlm and munge)")
        sys.exit(SKIPPED)
    unittest.main()
