"""Runs lists of jobs for tests, each in a folder of its own."""
import contextlib
import glob
import os
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "job"))
from companion import COMPANION, LIMIT, ROOT, CompanionTest, read, table, write      # noqa: E402,F401

PROMOTERS, ENHANCERS = (read(os.path.join(ROOT, "examples", "motifs", name))
                        for name in ("promoters.txt", "enhancers.txt"))


def list_of(*rows, header=("name", "files"), end="\n"):
    """The text of a list."""
    return "".join("\t".join(row) + end for row in (header, *rows))


def alive(folder):
    """The processes, other than this one, that name the folder in their command line."""
    found = []
    for path in glob.glob("/proc/[0-9]*/cmdline"):
        number = int(path.split("/")[2])
        try:
            words = read(path)
        except OSError:
            continue
        if os.fsencode(folder) in words and number != os.getpid():
            found.append(number)
    return found


class ManyTest(CompanionTest):
    """Gives each test a folder with two motif files."""

    def setUp(self):
        super().setUp()
        write(self.path("a.txt"), PROMOTERS)
        write(self.path("b.txt"), ENHANCERS)

    def list(self, *rows, name="jobs.tsv", **options):
        """Writes a list."""
        write(self.path(name), list_of(*rows, **options))

    def many(self, *arguments, status=0, env=None):
        """Runs `many`, which must end with the status; answers what it printed on both streams."""
        done = self.companion("many", *arguments, env=env)
        self.assertEqual(done.returncode, status, done.stderr.decode())
        return done.stdout.decode(), done.stderr.decode()

    def start(self, *arguments):
        """Starts `many` and answers the process, which leads a group and is ended with the test."""
        started = subprocess.Popen([COMPANION, "many", *arguments], cwd=self.top, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, start_new_session=True)
        self.addCleanup(started.wait)
        self.addCleanup(started.stderr.close)
        self.addCleanup(started.kill)
        return started

    def wait_until(self, condition, what):
        """Waits for a condition."""
        limit = time.monotonic() + 60
        while not condition():
            self.assertLess(time.monotonic(), limit, what)
            time.sleep(0.002)

    def kill_all(self):
        """Kills every process that works for the test's folder, at one go as far as that is possible."""
        def none_is_left():
            found = alive(self.top)
            for number in found:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(number, signal.SIGKILL)
            return not found
        self.wait_until(none_is_left, "still alive")

    def statuses(self, folder="jobs"):
        """The status of each job."""
        return {row["job"]: row["status"] for row in table(self.path(folder, "summary.tsv"))}

    def collected(self, folder="jobs"):
        """The collected table."""
        return read(self.path(folder, "all_matches.tsv"))

    def records(self, folder="jobs"):
        """When the record of each job that has one was written, in nanoseconds."""
        return {os.path.basename(os.path.dirname(path)): os.stat(path).st_mtime_ns
                for path in glob.glob(self.path(folder, "*", "job.json"))}


def script_of(folder, number=1):
    """The script of an array."""
    return read(os.path.join(folder, "many", f"array-{number}.sh")).decode()
