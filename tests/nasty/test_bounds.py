"""Runs under bounds: small stacks, little memory, inputs that do not fit or never end."""
import os
import random
import re
import resource
import socket
import threading
import unittest

from nasty_job import GOOD, MEGABYTE, NastyTest

NOT_OPENED = "Invalid input path or file name.\n"
SECRET = re.compile(rb"\d\d-\d\d-\d{4} [\d:]+|Runtime: \S+|J_[\d-]+_\d+")


def words(count, seed, letters=12):
    """Random consensus motifs."""
    chance = random.Random(seed)
    return "".join(">m%d\n%s\n\n" % (number, "".join(chance.choices("ACGT", k=letters)))
                   for number in range(count)).encode()


class SmallStacks(NastyTest):
    """The work needs little of a thread's stack."""

    def results(self, **options):
        """What the reports say, dates and times aside."""
        outcome = self.run_on("motifs.txt", limit=60, cutoff="0.6", tree="Y", **options)
        self.assertEqual(outcome.status, 0, outcome.console[-2000:])
        return {name.split("_", 3)[-1]: SECRET.sub(b"", text) for name, text in outcome.reports.items()
                if name.endswith((".txt", ".csv"))}

    def test_stacks_of_an_eighth_of_a_megabyte(self):
        """Both the first thread's and those of the workers; the results are the same."""
        long_one = b">long\n" + b"ACGTTGCA" * 40 + b"\n\n"
        self.write("motifs.txt", words(150, 5), long_one, b">longer\n" + b"ACGTTGCA" * 41 + b"\n\n")
        threads = {"OMP_NUM_THREADS": "2"}
        small = self.results(bounds={resource.RLIMIT_STACK: MEGABYTE // 4},
                             environment={"OMP_STACKSIZE": "128k", **threads})
        self.assertEqual(small, self.results(environment=threads))


@unittest.skipIf("asan" in os.environ.get("VARNOLIX_PROGRAM", ""), "the sanitizer maps more than any bound")
class LittleMemory(NastyTest):
    """What does not fit ends in one sentence, not in a signal."""

    def check_words(self, sentence, *names, **options):
        """Status 1 and this sentence at the end."""
        outcome = self.run_on(*names, **options)
        self.assertEqual(outcome.status, 1, outcome.console[-2000:])
        self.assertRegex(outcome.console, "\n" + sentence + "\n\\Z")
        return outcome

    def test_tree_that_cannot_fit(self):
        """12.5 million pairs of 8 bytes: said before anything is written."""
        self.write("motifs.txt", b"".join(b">m%d\nACG\n\n" % number for number in range(5000)))
        sentence = r"Error: this job needs 10\d MB of memory beside its motifs, and there are only \d+ MB\."
        outcome = self.check_words(sentence, "motifs.txt", tree="Y", bounds={resource.RLIMIT_AS: 80 * MEGABYTE})
        self.assertEqual(outcome.reports, {})

    def test_rows_that_do_not_fit(self):
        """Twenty megabytes of words are held as many more of tokens."""
        self.write("held.txt", b"word word word\n" * (20 * MEGABYTE // 15))
        self.check_words(r"Error: not enough memory for this job\.", "held.txt",
                         bounds={resource.RLIMIT_AS: 80 * MEGABYTE})

    def test_sparse_file(self):
        """Ten gigabytes of nothing."""
        self.write("sparse.txt", b"")
        os.truncate(self.path("motifs", "sparse.txt"), 10 << 30)
        sentence = r"Error: the file \S+sparse\.txt does not fit the memory\."
        self.check_words(sentence, "sparse.txt", bounds={resource.RLIMIT_AS: 400 * MEGABYTE})

    def test_pipe_that_never_ends(self):
        """It is read as long as it fits."""
        pipe = self.path("motifs", "pipe.txt")
        os.mkfifo(pipe)

        def feed():
            try:
                with open(pipe, "wb", buffering=0) as file:
                    while True:
                        file.write(b"x" * MEGABYTE)
            except BrokenPipeError:
                pass
        feeder = threading.Thread(target=feed, daemon=True)
        feeder.start()
        self.check_words(r"Error: the file \S+pipe\.txt does not fit the memory\.", "pipe.txt",
                         bounds={resource.RLIMIT_AS: 200 * MEGABYTE})
        feeder.join(10)


class NoFiles(NastyTest):
    """What is neither a regular file nor a pipe is refused."""

    def test_device_that_never_ends(self):
        """Zeros for ever."""
        os.symlink("/dev/zero", self.path("motifs", "zero.txt"))
        self.check_refused(NOT_OPENED, "zero.txt")

    def test_socket(self):
        """A socket is nothing to read."""
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(self.path("motifs", "s"))
            self.check_refused(NOT_OPENED, "s")

    def test_pipe(self):
        """A pipe is read to its end."""
        pipe = self.path("motifs", "pipe.txt")
        os.mkfifo(pipe)

        def feed():
            with open(pipe, "wb") as file:
                file.write(GOOD)
        feeder = threading.Thread(target=feed, daemon=True)
        feeder.start()
        outcome = self.run_on("pipe.txt")
        feeder.join(10)
        self.assertEqual((outcome.status, outcome.counts), (0, {"pipe.txt": 2}))


class ShortMotifs(NastyTest):
    """Motifs too short for an alignment take part in nothing and cost next to nothing."""

    def test_hundred_thousand_with_some_long_ones(self):
        """A loop over all pairs would take many seconds."""
        short = b"".join(b">s%d\nACG\n\n" % number for number in range(50000))
        self.write("motifs.txt", short, words(50, 6), short)
        outcome = self.run_on("motifs.txt", limit=10)
        self.assertEqual((outcome.status, outcome.counts), (0, {"motifs.txt": 100050}))


if __name__ == "__main__":
    unittest.main()
