"""Runs the companion for tests, each in a folder of its own."""
import glob
import os
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.path.abspath(os.environ.get("VARNOLIX_PROGRAM", os.path.join(ROOT, "build", "release", "varnolix")))
COMPANION = os.path.join(os.path.dirname(PROGRAM), "varnolix-job")
LIMIT = 300                             # seconds for any one job
IDENTITY = re.compile(rb"J_\d{4}-\d\d-\d\d_[1-9]\d{3}_")
MADE = re.compile(rb"(Results created by VARNOLIX on\s+)\d\d-\d\d-\d{4} \d\d:\d\d:\d\d")
RUN_TIME = re.compile(rb"(Runtime:\s+)[\d.e+-]+")


def write(path, text):
    """Writes a file, given as text or bytes, and the folders above it."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(text if isinstance(text, bytes) else text.encode())


def read(path):
    """The bytes of a file."""
    with open(path, "rb") as file:
        return file.read()


def table(path):
    """The rows of a TSV file, each as a dictionary of its columns."""
    lines = read(path).decode().split("\n")
    assert lines.pop() == "", "the last line has no end"
    header = lines[0].split("\t")
    rows = [line.split("\t") for line in lines[1:]]
    assert all(len(row) == len(header) for row in rows), "a row has another number of columns"
    return [dict(zip(header, row)) for row in rows]


def without_identity(data):
    """The text of a report without the job's identity, the date and the run time."""
    return RUN_TIME.sub(rb"\1T", MADE.sub(rb"\1D", IDENTITY.sub(b"J_", data)))


def reports(folder):
    """Every report in a result folder: name without the job's identity -> content without what differs."""
    found = {}
    for path in glob.glob(os.path.join(folder, "**"), recursive=True):
        if os.path.isfile(path):
            name = IDENTITY.sub(b"J_", os.fsencode(os.path.relpath(path, folder))).decode()
            found[name] = without_identity(read(path))
    return found


class CompanionTest(unittest.TestCase):
    """Gives each test an empty working folder."""

    def setUp(self):
        self.top = os.path.realpath(tempfile.mkdtemp(prefix="varnolix-job-"))
        self.addCleanup(shutil.rmtree, self.top)

    def path(self, *parts):
        """A path below the test's folder."""
        return os.path.join(self.top, *parts)

    def companion(self, *arguments, stdin=b"", env=None):
        """Runs the companion; answers the finished process."""
        return subprocess.run([COMPANION, *arguments], cwd=self.top, input=stdin, capture_output=True, timeout=LIMIT,
                              check=False, env={**os.environ, **(env or {})})

    def job(self, *arguments, folder="job", stdin=b"", env=None):
        """Runs a job that must succeed; answers its folder."""
        done = self.companion("run", "-o", folder, *arguments, stdin=stdin, env=env)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return self.path(folder)

    def dialogue(self, job):
        """Repeats a job in the dialogue with its answers; answers the reports that it writes."""
        first, result = os.path.join(job, "result-of-companion"), os.path.join(job, "result")
        os.rename(result, first)
        os.mkdir(result)
        with open(os.path.join(job, "answers.txt"), "rb") as answers:
            done = subprocess.run([PROGRAM], cwd=job, stdin=answers, capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        again = reports(result)
        shutil.rmtree(result)
        os.rename(first, result)
        return again
