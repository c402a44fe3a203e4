"""Runs whole dialogues on generated motif files, each with a time limit, and takes apart what the console says."""
import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import unittest
from typing import NamedTuple

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.environ.get("VARNOLIX_PROGRAM", os.path.join(ROOT, "build", "release", "varnolix"))
SIZE = float(os.environ.get("VARNOLIX_NASTY_SIZE", "1"))        # 5 makes the great files five times as great
PATIENCE = float(os.environ.get("VARNOLIX_NASTY_PATIENCE", "1"))    # for slow machines and sanitizers
MEGABYTE = 1 << 20
MOST_WRITTEN = 512 * MEGABYTE           # bytes of one file: the dialogue repeats for ever at the end of its answers
GOOD = b">good1\nACGTTGCA\n\n>good2\nTTTTGGGG\n\n"      # no alignment of theirs reaches 0.9

COUNTS = re.compile(r"Your input files, types, and counts are:\n\n.*\n((?:.+\n)*)\n")


class Outcome(NamedTuple):
    """What a run left: status (negative for a signal), console, motifs by file, text of the reports by name."""
    status: int
    console: str
    counts: dict
    reports: dict

    def report(self, ending):
        """The text of the one report whose name ends so, as bytes."""
        [text] = [text for name, text in self.reports.items() if name.endswith(ending)]
        return text


def sized(count):
    """The count of a great input: as it stands, or times VARNOLIX_NASTY_SIZE."""
    return int(count * SIZE)


def answers(folder, names, cutoff, tree):
    """The dialogue for these files: two threads, ten best matches, text reports, no collection."""
    files = "".join("%s\n10\n" % name for name in names)
    return "%d\n10\n10\n%s\n2\n%s/motifs/\n%s14\n%s\nN\nAll\nText\n%s/result/\n" % (
        len(names), cutoff, folder, files, tree, folder)


def counts_of(console):
    """Motifs by file, from the table on the console; empty where there is none."""
    table = COUNTS.search(console)
    rows = table.group(1).splitlines() if table else []
    width = len("Count of Motifs     ") + len("Dataset #      ")
    return {row[:-width].rstrip(): int(row[-width:].split()[0]) for row in rows}


def confine(bounds):
    """In the child: a process group of its own, a bound on what it can write, and these (bytes by resource)."""
    os.setpgid(0, 0)
    for limited, most in {resource.RLIMIT_FSIZE: MOST_WRITTEN, **bounds}.items():
        resource.setrlimit(limited, (most, most))


def wait_or_stop(process, limit):
    """The status of the process; one that takes longer than the limit is stopped."""
    try:
        return process.wait(limit)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        raise AssertionError("not done after %g seconds" % limit) from None


class NastyTest(unittest.TestCase):
    """Gives each test a job folder of its own."""

    def setUp(self):
        self.folder = os.path.realpath(tempfile.mkdtemp(prefix="varnolix-nasty-"))
        self.addCleanup(shutil.rmtree, self.folder)
        os.mkdir(self.path("motifs"))

    def path(self, *parts):
        """A path below the job folder."""
        return os.path.join(self.folder, *parts)

    def write(self, name, *parts):
        """Writes a motif file of the parts, one after the other."""
        with open(self.path("motifs", name), "wb") as file:
            file.writelines(parts)

    def run_on(self, *names, limit=10, cutoff="0.9", tree="N", bounds=None, environment=None):
        """Runs the program on motif files that stand already; bounds and environment are added to those it has."""
        shutil.rmtree(self.path("result"), ignore_errors=True)
        os.mkdir(self.path("result"))
        with open(self.path("answers"), "w", encoding="utf-8") as file:
            file.write(answers(self.folder, names, cutoff, tree))
        with open(self.path("answers"), "rb") as asked, open(self.path("console"), "wb") as console:
            process = subprocess.Popen([PROGRAM], stdin=asked, stdout=console, stderr=subprocess.STDOUT,
                                       cwd=self.folder, preexec_fn=lambda: confine(bounds or {}),
                                       env={**os.environ, **(environment or {})})
            status = wait_or_stop(process, limit * PATIENCE)
        with open(self.path("console"), encoding="latin-1", newline="") as file:
            console = file.read()
        return Outcome(status, console, counts_of(console), self.reports())

    def reports(self):
        """The files of the result folder by name."""
        found = {}
        for name in os.listdir(self.path("result")):
            with open(self.path("result", name), "rb") as file:
                found[name] = file.read()
        return found

    def check_count(self, motifs, *parts, **options):
        """Runs on a file of the parts beside a good one: it gives so many motifs, and the run ends well."""
        self.write("nasty.txt", *parts)
        self.write("good.txt", GOOD)
        outcome = self.run_on("nasty.txt", "good.txt", **options)
        self.assertEqual(outcome.status, 0, outcome.console[-2000:])
        self.assertEqual(outcome.counts, {"nasty.txt": motifs, "good.txt": 2})
        self.assertRegex(outcome.console, r"\nRuntime: \S+ seconds\.\n\Z")
        listing = outcome.report("input_motifs.txt")
        self.assertIn(b"\nTotal number of motifs: %d\n" % (motifs + 2), listing)
        self.assertEqual(listing.count(b"\tMotif name: "), motifs + 2)
        return outcome

    def check_refused(self, message, *names, **options):
        """Runs on files that stand already: the run ends with this message and status 1, and no report is written."""
        outcome = self.run_on(*names, **options)
        self.assertEqual(outcome.status, 1, outcome.console[-2000:])
        self.assertTrue(outcome.console.endswith("\nReading input ...\n" + message), outcome.console[-2000:])
        self.assertEqual(outcome.reports, {})
