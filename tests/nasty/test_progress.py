"""The line that shows how far long work is: on a terminal, and nowhere else."""
import os
import pty
import re
import signal
import subprocess
import sys
import threading
import time
import unittest

from nasty_job import PATIENCE, PROGRAM, NastyTest
from outside_tools import answers, install_tools, jobs, motif_text, tool_environment

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "scripts"))
import terminal                                                                 # noqa: E402  pylint: disable=C0413

MOTIFS = 30
LINE = re.compile(r"(logos|PDF) (\d+) of (\d+)(, \d+ (?:s|min) left)?")
SLOW_LOGO = "#!/bin/sh\nsleep 0.05\ncat\n"
PRINTING_PHP = '#!/bin/sh\nsleep 0.3\necho "converted"\n'


def last_line(text):
    """What a terminal shows in the end in the line that the cursor is in."""
    shown, place = [], 0
    for letter in text.rsplit("\n", 1)[-1]:
        if letter == "\r":
            place = 0
        elif letter == "\b":
            place -= 1
        else:
            shown[place:place + 1] = [letter]
            place += 1
    return "".join(shown).rstrip()


class Progress(NastyTest):
    """Jobs with logos and PDF files, of stand-ins that take their time."""

    def setUp(self):
        super().setUp()
        for name in ("a.txt", "b.txt"):
            self.write(name, motif_text(MOTIFS // 2))
        os.mkdir(self.path("result"))
        install_tools(self.folder, weblogo=SLOW_LOGO, php5=PRINTING_PHP)

    def run_job(self, threads, errors):
        """Standard output of the job, masked."""
        text = answers(self.folder, ["a.txt", "b.txt"], "All", threads=threads)
        done = subprocess.run([PROGRAM], input=text.encode(), stdout=subprocess.PIPE, stderr=errors, cwd=self.folder,
                              env=tool_environment(self.folder), timeout=60 * PATIENCE, check=False)
        self.assertEqual(done.returncode, 0)
        return re.sub(rb"(?<=Runtime: ).*", b"", done.stdout)

    def run_on_terminal(self, threads):
        """Standard output, and what the terminal of standard error got."""
        end, errors = pty.openpty()
        seen = []

        def take_in():
            try:
                while text := os.read(end, 1 << 16):
                    seen.append(text)
            except OSError:         # nobody has the terminal any more
                pass

        reader = threading.Thread(target=take_in)
        reader.start()
        try:
            output = self.run_job(threads, errors)
        finally:
            os.close(errors)
            reader.join()
            os.close(end)
        return output, b"".join(seen).decode()

    def test_terminal(self):
        """One line, drawn over itself, which goes on and is gone in the end; standard output is that of a pipe."""
        for threads in (1, 3):
            with self.subTest(threads):
                without = self.run_job(threads, subprocess.PIPE)
                begun = time.monotonic()
                output, seen = self.run_on_terminal(threads)
                took = time.monotonic() - begun
                self.assertEqual(output, without)
                self.assertEqual(output.count(b"converted\n"), 4)
                self.assertNotIn("\n", seen)
                self.assertEqual(last_line(seen), "")
                lines = LINE.findall(seen)
                self.assertEqual(re.sub("[\r\b ]", "", LINE.sub("", seen)), "")
                counts = {name: [int(done) for what, done, _, _ in lines if what == name] for name in ("logos", "PDF")}
                self.assertEqual({total for what, _, total, _ in lines if what == "logos"}, {str(2 * MOTIFS)})
                self.assertEqual({total for what, _, total, _ in lines if what == "PDF"}, {"4"})
                for what, done in counts.items():
                    self.assertEqual(done, sorted(done), what)
                    self.assertGreater(len(set(done)), 2, what)
                self.assertLess(len(counts["logos"]), 10 * took + 3)
                self.assertTrue(threads > 1 or any(left for *_, left in lines))

    def test_pipe_and_file(self):
        """Not a byte."""
        text = answers(self.folder, ["a.txt", "b.txt"], "All", threads=3).encode()
        with open(self.path("errors"), "w+b") as file:
            for errors in (subprocess.PIPE, file):
                done = subprocess.run([PROGRAM], input=text, stdout=subprocess.PIPE, stderr=errors, cwd=self.folder,
                                      env=tool_environment(self.folder), timeout=60 * PATIENCE, check=True)
                self.assertFalse(done.stderr)
                self.assertNotIn(b"\r", done.stdout)
                self.assertIsNone(LINE.search(done.stdout.decode()))
            self.assertEqual(os.path.getsize(self.path("errors")), 0)

    def test_interrupt_from_the_keyboard(self):
        """Ctrl-C at the terminal while three threads draw: the run ends by it, and nothing half-written stays."""
        install_tools(self.folder, weblogo="#!/bin/sh\nprintf half\nsleep 60\n")
        session = terminal.Terminal(PROGRAM, env=tool_environment(self.folder), cwd=self.folder)
        for line in answers(self.folder, ["a.txt", "b.txt"], "HTML", threads=3).splitlines():
            session.type(line)
        session.wait_for(f"logos 0 of {2 * MOTIFS}")
        image = self.path("result")
        limit = time.monotonic() + 20 * PATIENCE
        while sum(name.endswith(".jpeg") for _, _, names in os.walk(image) for name in names) < 3:
            self.assertLess(time.monotonic(), limit)
            time.sleep(0.01)
        session.press(terminal.INTERRUPT)
        self.assertEqual(session.finish(), -signal.SIGINT)
        left = [jobs.JOB_ID.sub(b"", os.fsencode(name)) for _, _, names in os.walk(image) for name in names]
        self.assertEqual(left, [b"input_motifs.txt"])


if __name__ == "__main__":
    unittest.main()
