"""Signals while outside tools run: the run ends by the signal and leaves nothing half-written and no process."""
import itertools
import os
import signal
import subprocess
import time
import unittest

from nasty_job import GOOD, PATIENCE, PROGRAM, NastyTest
from outside_tools import answers, install_tools, jobs, tool_environment

# Each notes its process, writes half of what it should, and hangs, in itself or in a child of its own.
HANG = """#!/bin/sh
echo $$ >> "$STAND_IN_CALLS.processes"
%s
[ -n "$STAND_IN_STUBBORN" ] && trap '' INT TERM HUP QUIT
sleep 300 &
echo $! >> "$STAND_IN_CALLS.processes"
echo hangs >> "$STAND_IN_CALLS.hangs"
wait
sleep 300
"""
HANGING = {
    "weblogo": HANG % "printf half",
    "php5": HANG % 'printf half > "${1%.php}.pdf"',
    "rscript": HANG % "printf half > \"$(sed -n \"s/^png('\\(.*\\)', width.*/\\1/p\" \"$1\")\"",
}
ENDING_SIGNALS = (signal.SIGINT, signal.SIGQUIT, signal.SIGTERM, signal.SIGHUP)
# Draws the second motif's first logo whole, then hangs in its reverse one.
SECOND_LOGO = """#!/bin/sh
echo call >> "$STAND_IN_CALLS"
[ "$(wc -l < "$STAND_IN_CALLS")" -lt 4 ] && exec cat
""" + HANG.split("\n", 1)[1] % "printf half"
# Draws every motif's first logo whole, then hangs in its reverse one.
REVERSE_LOGO = """#!/bin/sh
case " $* " in *" --revcomp "*) ;; *) exec cat ;; esac
""" + HANG.split("\n", 1)[1] % "printf half"


def is_alive(process):
    """Whether a process runs; a zombie that nobody has taken leave of does not."""
    try:
        with open(f"/proc/{process}/stat", encoding="ascii") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except FileNotFoundError:
        return False


class Interrupts(NastyTest):
    """A job whose tools hang, and signals at that moment."""

    def setUp(self):
        super().setUp()
        self.write("a.txt", GOOD)
        self.write("b.txt", GOOD)

    def start(self, output_format="PDF", environment=(), ignored=(), threads=1, may_overlap=True, **tools):
        """Starts the job with these stand-ins and comes back when one hangs in each thread that may call one."""
        def set_actions():
            for number in ENDING_SIGNALS:
                signal.signal(number, signal.SIG_IGN if number in ignored else signal.SIG_DFL)

        for name in ("result", "bin"):
            subprocess.run(["rm", "-rf", self.path(name)], check=True)
        for name in ("calls", "calls.hangs", "calls.processes"):
            if os.path.exists(self.path(name)):
                os.unlink(self.path(name))
        os.mkdir(self.path("result"))
        install_tools(self.folder, may_overlap=may_overlap, **tools)
        with open(self.path("answers"), "w", encoding="utf-8") as file:
            file.write(answers(self.folder, ["a.txt", "b.txt"], output_format, threads=threads))
        with open(self.path("answers"), "rb") as asked:
            process = subprocess.Popen([PROGRAM], stdin=asked, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                       cwd=self.folder, start_new_session=True, preexec_fn=set_actions,
                                       env=dict(tool_environment(self.folder), **dict(environment)))
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.stdout.close)
        self.wait_until(lambda: self.hanging() >= (threads if may_overlap else 1))
        return process

    def hanging(self):
        """How many tools have begun to hang."""
        if not os.path.exists(self.path("calls.hangs")):
            return 0
        with open(self.path("calls.hangs"), encoding="ascii") as file:
            return len(file.readlines())

    def wait_until(self, holds):
        """Waits for something that comes soon."""
        limit = time.monotonic() + 20 * PATIENCE
        while not holds():
            self.assertLess(time.monotonic(), limit)
            time.sleep(0.01)

    def processes(self):
        """The processes that the stand-ins noted."""
        with open(self.path("calls.processes"), encoding="ascii") as file:
            return [int(line) for line in file]

    def files(self):
        """Names of all files below the result folder, without the job's identity."""
        return sorted(jobs.JOB_ID.sub(b"", os.fsencode(name)).decode()
                      for _, _, names in os.walk(self.path("result")) for name in names)

    def check_ended(self, process, number, limit=4.0):
        """The program ends by the signal, soon, says nothing more, and nothing of the tools goes on."""
        begun = time.monotonic()
        self.assertEqual(process.wait(30 * PATIENCE), -number)
        self.assertLess(time.monotonic() - begun, limit * PATIENCE)
        self.assertNotIn(b"have been saved", process.stdout.read())
        self.wait_until(lambda: not any(map(is_alive, self.processes())))
        for ending in (".php", "M1.txt", "M2.txt", "M3.txt", "M4.txt", ".unconverted"):
            self.assertEqual([name for name in self.files() if name.endswith(ending)], [])

    def test_logo(self):
        """Neither the half picture nor the matrix file stays; to the program alone and to its group."""
        for number in ENDING_SIGNALS:
            for send in (os.kill, os.killpg):
                with self.subTest(f"{number} {send.__name__}"):
                    process = self.start(weblogo=HANGING["weblogo"])
                    self.assertEqual(self.files(), ["M1.jpeg", "M1.txt", "input_motifs.txt"])
                    send(process.pid, number)
                    self.check_ended(process, number)
                    self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_logos_of_three_threads(self):
        """Each has a picture and a matrix file on its way; all of them go, and all tools end."""
        for number in ENDING_SIGNALS:
            for send in (os.kill, os.killpg):
                with self.subTest(f"{number} {send.__name__}"):
                    process = self.start(weblogo=HANGING["weblogo"], threads=3)
                    self.assertEqual(self.files(), ["M1.jpeg", "M1.txt", "M2.jpeg", "M2.txt", "M3.jpeg", "M3.txt",
                                                    "input_motifs.txt"])
                    send(process.pid, number)
                    self.check_ended(process, number)
                    self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_logo_of_a_tool_that_is_called_once_at_a_time(self):
        """Without the promise there is one call, whatever the number of threads."""
        process = self.start(weblogo=HANGING["weblogo"], threads=3, may_overlap=False)
        time.sleep(0.5)
        self.assertEqual(self.hanging(), 1)
        self.assertEqual(self.files(), ["M1.jpeg", "M1.txt", "input_motifs.txt"])
        os.kill(process.pid, signal.SIGTERM)
        self.check_ended(process, signal.SIGTERM)
        self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_whole_logos_of_three_threads_stay(self):
        """The first logos of three motifs are whole, and each thread hangs in the second of its motif."""
        process = self.start(weblogo=REVERSE_LOGO, threads=3)
        os.kill(process.pid, signal.SIGTERM)
        self.check_ended(process, signal.SIGTERM)
        self.assertEqual(self.files(), ["M1.jpeg", "M2.jpeg", "M3.jpeg", "input_motifs.txt"])

    def test_whole_logos_stay(self):
        """Only what the interrupted call was writing goes."""
        process = self.start(weblogo=SECOND_LOGO)
        os.kill(process.pid, signal.SIGTERM)
        self.check_ended(process, signal.SIGTERM)
        self.assertEqual(self.files(), ["M1.jpeg", "M1RevComp.jpeg", "M2.jpeg", "input_motifs.txt"])

    def test_pdf(self):
        """The half PDF and the script go, the page stays."""
        for number in ENDING_SIGNALS:
            with self.subTest(number):
                process = self.start(php5=HANGING["php5"])
                self.assertIn("HTML_Global_Matching_Results.pdf", self.files())
                os.killpg(process.pid, number)
                self.check_ended(process, number)
                self.assertIn("HTML_Global_Matching_Results.html", self.files())
                self.assertEqual([name for name in self.files() if name.endswith(".pdf")], [])

    def test_pdf_files_of_three_threads(self):
        """Half PDF files and scripts go, and all pages stay."""
        for number in ENDING_SIGNALS:
            with self.subTest(number):
                process = self.start(php5=HANGING["php5"], threads=3)
                self.assertEqual(len([name for name in self.files() if name.endswith((".pdf", ".php"))]), 6)
                os.killpg(process.pid, number)
                self.check_ended(process, number)
                self.assertEqual([name for name in self.files() if name.endswith((".pdf", ".html"))],
                                 ["Global_Matching_Phylogenetic_Tree.html", "HTML_Global_Matching_Results.html",
                                  "HTML_Results.html", "Phylogenetic_Tree.html"])

    def test_tree(self):
        """The half picture goes, table and script stay."""
        process = self.start("HTML", rscript=HANGING["rscript"])
        self.assertIn("Global_Matching_Phylogenetic_Tree.png", self.files())
        os.kill(process.pid, signal.SIGTERM)
        self.check_ended(process, signal.SIGTERM)
        self.assertNotIn("Global_Matching_Phylogenetic_Tree.png", self.files())
        self.assertIn("Global_Matching_Plot_File.R", self.files())

    def test_stubborn_tool(self):
        """One that will not end is killed after some seconds, and all that it started."""
        for threads in (1, 3):
            with self.subTest(threads):
                process = self.start(environment={"STAND_IN_STUBBORN": "1"}, weblogo=HANGING["weblogo"],
                                     threads=threads)
                os.kill(process.pid, signal.SIGTERM)
                self.check_ended(process, signal.SIGTERM, limit=15)
                self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_interrupted_tool(self):
        """A tool that was itself ended by SIGINT or SIGQUIT, or says so by its status, ends the run alike."""
        for number in (signal.SIGINT, signal.SIGQUIT):
            for end in (f"kill -{int(number)} $$; sleep 1", f"exit {128 + number}"):
                with self.subTest(end):
                    process = self.start(weblogo=HANG.replace("wait", end) % "printf half")
                    self.check_ended(process, number)
                    self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_interrupted_tool_of_three_threads(self):
        """One that is interrupted takes those with it that hang."""
        first = 'case "$(readlink /proc/$$/fd/0)" in *_M2.txt) sleep 1; kill -INT $$;; esac\nwait'
        process = self.start(weblogo=HANG.replace("wait", first) % "printf half", threads=3)
        # A second goes by before the interrupt, and another one before what is deaf to it gets SIGTERM.
        self.check_ended(process, signal.SIGINT, limit=8)
        self.assertEqual(self.files(), ["input_motifs.txt"])

    def test_tools_that_end_otherwise_are_not_looked_at(self):
        """Any other signal or status: the run goes on to its end."""
        for end in ("kill -TERM $$; sleep 1", "kill -KILL $$; sleep 1", "exit 1", "exit 143"):
            with self.subTest(end):
                process = self.start("HTML", weblogo=HANG.replace("sleep 300 &", "true &").replace("wait", end)
                                     % "printf half")
                self.assertEqual(process.wait(30 * PATIENCE), 0)
                self.assertIn(b"have been saved", process.stdout.read())
                self.assertIn("M2RevComp.jpeg", self.files())

    def test_ignored_signals_stay_ignored(self):
        """As under nohup: neither program nor tool takes notice."""
        process = self.start(ignored=[signal.SIGHUP], weblogo=HANGING["weblogo"])
        os.killpg(process.pid, signal.SIGHUP)
        time.sleep(0.3)
        self.assertIsNone(process.poll())
        self.assertTrue(all(map(is_alive, self.processes())))
        os.kill(process.pid, signal.SIGTERM)
        self.check_ended(process, signal.SIGTERM)

    def test_at_any_moment(self):
        """Signals that come while quick tools start and end: never a matrix file or half a picture, never a process."""
        quick = '#!/bin/sh\necho $$ >> "$STAND_IN_CALLS.processes"\necho >> "$STAND_IN_CALLS.hangs"\nprintf half\ncat\n'
        self.write("a.txt", GOOD * 20)
        for delay, threads in itertools.product(range(12), (1, 3)):
            with self.subTest(f"{delay} {threads}"):
                process = self.start(weblogo=quick + "printf whole\n", threads=threads)
                time.sleep(0.004 * delay)
                os.killpg(process.pid, signal.SIGINT)
                self.check_ended(process, signal.SIGINT)
                self.assertEqual([name for name in self.files() if name.endswith(".txt")], ["input_motifs.txt"])
                for here, _, names in os.walk(self.path("result")):
                    for name in names:
                        if name.endswith(".jpeg"):
                            with open(os.path.join(here, name), "rb") as file:
                                self.assertTrue(file.read().endswith(b"whole"), name)


if __name__ == "__main__":
    unittest.main()
