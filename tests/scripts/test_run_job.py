"""The job folder's run: typed and given answers, what it shows first, trees of earlier jobs, the lock.

Most sessions are with the real program, on a pseudo-terminal where a person would sit.
"""
import glob
import os
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest
from unittest import mock

from script_project import COMPANION, LIMIT, PROGRAM, ROOT, ScriptTest, read, write
from terminal import END_OF_INPUT, INTERRUPT, Terminal

sys.path.insert(0, os.path.join(ROOT, "scripts"))
with mock.patch.object(sys, "dont_write_bytecode", True):
    import motif_preview
    import run_job

SAMPLE = os.path.join(ROOT, "examples", "motifs", "promoters.txt")
SHORT = ">a\nACG\n\n>b\nACG\n\n"       # two motifs too short to be compared, for runs that take no time
TREES = ("Distance_Matrix.csv", "Plot_File.R", "Phylogenetic_Tree.png", "Global_Matching_Distance_Matrix.csv",
         "Global_Matching_Plot_File.R", "Global_Matching_Phylogenetic_Tree.png")
LAST_QUESTION = "please, enter output file's location"
REFUSED_CUTOFF = "Invalid input. Please, re-enter.\n"

# Stands in for the program: tells that it was started and works on until it is ended.
WORKING = "#!/bin/sh\necho 'Reading input ...'\necho $$ > started\nexec sleep 100\n"


class JobTest(ScriptTest):
    """Gives each test a job folder with one file of motifs, and the real program."""

    def setUp(self):
        super().setUp()
        self.use_real_program()
        os.makedirs(self.path("temporary"))
        os.environ["TMPDIR"] = self.path("temporary")
        self.job = self.path("job")
        done = self.script("new-job.sh", self.job)
        self.assertEqual(done.returncode, 0, done.stderr)
        shutil.copy(SAMPLE, self.job_path("motifs", "mine.txt"))

    def job_path(self, *parts):
        """A path below the job folder."""
        return os.path.join(self.job, *parts)

    def stand_in(self, text):
        """Puts another program in place of the real one."""
        os.remove(self.path("project", "build", "release", "varnolix"))
        write(self.path("project", "build", "release", "varnolix"), text, executable=True)

    def answers(self, files=("mine.txt",), tree="N"):
        """All answers for these files."""
        named = [answer for file in files for answer in (file, "10")]
        return [str(len(files)), "2", "2", "0.9", "1", self.job_path("motifs", ""), *named, "14", tree, "N", "All",
                "Text", self.job_path("result", "")]

    def run_with(self, text, piped=False, limit=LIMIT):
        """Runs with answers of that text (bytes) from a file or a pipe; answers the finished process."""
        with open(self.path("given.txt"), "wb") as file:
            file.write(text)
        arguments, given = ([], {"input": text}) if piped else (["given.txt"], {"stdin": subprocess.DEVNULL})
        done = subprocess.run([self.job_path("run"), *arguments], **given, cwd=self.top, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=limit, check=False)
        done.stdout, done.stderr = done.stdout.decode(), done.stderr.decode()
        return done

    def terminal(self):
        """Starts the dialogue on a terminal."""
        return Terminal(self.job_path("run"))

    def kept(self):
        """The text of the one file of typed answers."""
        paths = glob.glob(self.job_path("answers-*.txt"))
        self.assertEqual(len(paths), 1, paths)
        self.assertRegex(os.path.basename(paths[0]), r"^answers-\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d\.txt$")
        return read(paths[0])

    def reports(self):
        """The reports by name, without what differs from run to run."""
        found = {}
        for path in glob.glob(self.job_path("result", "J_*")):
            name = re.sub(r"^J_[\d-]+_\d+_", "", os.path.basename(path))
            found[name] = re.sub(r"(?m)^(Results created|Runtime).*", "", read(path))
            os.remove(path)
        return found


def text_of(lines, end="\n"):
    """Answers as the bytes of a file."""
    return "".join(line + end for line in lines).encode()


class Typed(JobTest):

    def type_all(self, terminal, lines):
        """Types each line when the program has asked for it."""
        for place, line in enumerate(lines, 1):
            questions = r"(?m)^(?:please, enter|Please, |Would you|\(14\) None|Invalid).*\n"
            while len(re.findall(questions, terminal.seen)) < place:
                self.assertTrue(terminal.read_some(), terminal.seen)
            terminal.type(line)

    def test_a_whole_dialogue_ends_with_the_program_and_is_kept(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers())
        self.assertEqual(terminal.finish(), 0, terminal.seen)
        self.assertIn("Your output files have been saved", terminal.seen)
        self.assertEqual(self.kept(), text_of(self.answers()).decode())

    def test_the_kept_answers_give_the_same_reports_again(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers())
        terminal.finish()
        first = self.reports()
        self.assertIn("Results.txt", first)
        self.assertEqual(self.run_with(self.kept().encode()).returncode, 0)
        self.assertEqual(self.reports(), first)

    def test_each_line_is_echoed_once(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers())
        terminal.finish()
        dialogue = terminal.seen.partition("What you type")[2]
        self.assertEqual(dialogue.count("\n0.9\n"), 1)
        self.assertEqual(dialogue.count("\nmine.txt\n"), 1)

    def test_bad_answers_are_kept_and_asked_again(self):
        lines = self.answers()
        lines[3:3] = ["0.65", "nine"]
        terminal = self.terminal()
        self.type_all(terminal, lines)
        self.assertEqual(terminal.finish(), 0, terminal.seen)
        self.assertEqual(terminal.seen.count(REFUSED_CUTOFF), 2)
        self.assertEqual(self.kept(), text_of(lines).decode())

    def test_a_forgotten_slash_does_not_cost_the_answers(self):
        lines = self.answers()
        lines[5] = lines[5].rstrip("/")
        terminal = self.terminal()
        self.type_all(terminal, lines)
        self.assertEqual(terminal.finish(), 1)
        self.assertIn("Invalid input path or file name.\n", terminal.seen)
        self.assertEqual(self.kept(), text_of(lines).decode())
        self.assertRegex(terminal.seen, r"what was typed is kept in \S+/answers-")

    def test_the_interrupt_key_ends_the_run_as_it_ends_any_program(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers()[:3])
        terminal.wait_for("select a cutoff")
        terminal.press(INTERRUPT)
        self.assertEqual(terminal.finish(), -signal.SIGINT)
        self.assertEqual(self.kept(), "1\n2\n2\n")

    def test_the_end_of_input_ends_the_dialogue(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers()[:3])
        terminal.wait_for("select a cutoff")
        terminal.press(END_OF_INPUT)
        self.assertEqual(terminal.finish(), 1)
        self.assertIn("the answers ended before the last question", terminal.seen)
        self.assertEqual(terminal.seen.count(REFUSED_CUTOFF), 1)
        self.assertEqual(self.kept(), "1\n2\n2\n")

    def test_nothing_is_kept_where_nothing_was_typed(self):
        terminal = self.terminal()
        terminal.wait_for("number of files")
        terminal.press(INTERRUPT)
        self.assertEqual(terminal.finish(), -signal.SIGINT)
        self.assertEqual(glob.glob(self.job_path("answers-*")), [])

    def test_an_unfinished_line_is_an_answer(self):
        terminal = self.terminal()
        self.type_all(terminal, self.answers()[:3])
        terminal.wait_for("select a cutoff")
        terminal.press(b"0.75" + END_OF_INPUT + END_OF_INPUT)
        self.assertEqual(terminal.finish(), 1)
        self.assertIn("Please, enter number of threads", terminal.seen)
        self.assertEqual(self.kept(), "1\n2\n2\n0.75\n")

    def test_the_program_still_writes_line_by_line(self):
        self.stand_in(f"#!{sys.executable} -I\nimport os, time\nprint('Reading input ...')\nprint('step one')\n"
                      "while not os.path.exists('go'): time.sleep(0.02)\nprint('step two')\n")
        terminal = self.terminal()
        terminal.wait_for("step one")
        self.assertNotIn("step two", terminal.seen)
        write(self.job_path("go"), "")
        self.assertEqual(terminal.finish(), 0)
        self.assertIn("step two", terminal.seen)

    def test_behind_the_dialogue_nothing_is_taken_from_the_terminal(self):
        self.stand_in("#!/bin/sh\necho 'Reading input ...'\ncat\necho 'no more input'\n")
        terminal = self.terminal()
        terminal.wait_for("no more input")
        self.assertEqual(terminal.finish(), 0)

    def test_output_to_a_file_still_keeps_what_is_typed(self):
        command = f"exec '{self.job_path('run')}' > '{self.path('console')}'"
        terminal = Terminal("/bin/sh", "-c", command)
        for line in self.answers():
            terminal.type(line)
        self.assertEqual(terminal.finish(), 0, terminal.seen)
        self.assertEqual(self.kept(), text_of(self.answers()).decode())
        self.assertTrue(read(self.path("console")).startswith("Please, enter number of files"))


class ShownFirst(JobTest):

    def shown(self):
        """What appears before the first question."""
        terminal = self.terminal()
        terminal.wait_for("Please, enter number of files")
        terminal.press(INTERRUPT)
        terminal.finish()
        return terminal.seen.partition("Please, enter number of files")[0]

    def test_the_answers_and_the_files_with_their_counts(self):
        write(self.job_path("motifs", "tables.txt"), "1 2 3 4\n" * 4 + "\n" + " 1 2 3 4\n" * 6 + "\n")
        shown = self.shown()
        self.assertIn(f"input file's location    {self.job}/motifs/\n", shown)
        self.assertIn(f"output file's location   {self.job}/result/\n", shown)
        self.assertIn("input file names         the bare names of files in it\n", shown)
        self.assertRegex(shown, r"(?m)^  mine.txt    16 motifs$")
        self.assertRegex(shown, r"(?m)^  tables.txt  2 motifs$")
        self.assertNotIn("warning", shown)
        self.assertNotIn("weblogo", shown)

    def test_a_download_is_warned_of_and_the_advice_mends_it(self):
        download = "".join(f">MA{number} FOS\nA [ 1 2 ]\nC [ 3 4 ]\nG [ 0 0 ]\nT [ 1 1 ]\n" for number in range(9))
        write(self.job_path("motifs", "it's a.txt"), download)
        shown = self.shown()
        self.assertRegex(shown, r"(?m)^  it's a.txt  1 motif, but 9 headings seen$")
        self.assertIn("1 motif of 9 will be read", shown)
        self.assertIn("a name with a blank cannot be typed", shown)
        advice = re.search(r"(?m)^ +(\S*varnolix-job convert .*)$", shown)[1]
        os.symlink(COMPANION, self.path("project", "build", "release", "varnolix-job"))
        done = subprocess.run(["/bin/sh", "-c", advice], capture_output=True, text=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(self.shown(), r"(?m)^  it's a_mended.txt  9 motifs$")

    def test_a_table_cut_in_pieces_is_warned_of(self):
        write(self.job_path("motifs", "long.txt"), ">long\n" + "1 2 3 4\n" * 40 + "\n")
        shown = self.shown()
        self.assertRegex(shown, r"(?m)^  long.txt  2 motifs, but 1 heading seen$")
        self.assertIn("cut in pieces", shown)

    def test_a_file_too_large_to_look_at_is_not_counted(self):
        with open(self.job_path("motifs", "huge.txt"), "wb") as file:
            file.truncate(10 << 30)
        started = time.monotonic()
        shown = self.shown()
        self.assertLess(time.monotonic() - started, 20)
        self.assertRegex(shown, r"(?m)^  huge.txt  not counted$")
        self.assertRegex(shown, r"(?m)^  mine.txt  16 motifs$")

    def test_what_cannot_be_read_keeps_nobody_from_the_run(self):
        os.mkfifo(self.job_path("motifs", "pipe.txt"))
        os.symlink("absent", self.job_path("motifs", "broken.txt"))
        shown = self.shown()
        self.assertRegex(shown, r"(?m)^  pipe.txt    not counted$")
        self.assertRegex(shown, r"(?m)^  broken.txt  not counted$")
        self.assertRegex(shown, r"(?m)^  mine.txt    16 motifs$")

    def test_a_program_that_does_not_answer_is_not_waited_for(self):
        self.stand_in("#!/bin/sh\necho 'Please, enter number of files'\nexec sleep 100\n")
        with mock.patch.object(motif_preview, "LONGEST_WAIT", 0.2):
            program = self.path("project", "build", "release", "varnolix")
            self.assertEqual(motif_preview.counts_by_program(program, [SAMPLE]), [None])

    def test_what_a_program_printed_before_it_ended_counts(self):
        table = b"file1-2                   2\n\nProcessing input ...\n"
        console_end, program_end = os.openpty()
        try:
            os.write(program_end, table)
            with subprocess.Popen(["/bin/true"]) as ended:
                ended.wait()
            console = motif_preview.console_until_table(ended, console_end, time.monotonic() + 5)
        finally:
            os.close(console_end)
            os.close(program_end)
        self.assertEqual(motif_preview.counts_of_table(console), {1: 2})

    def test_names_that_are_no_text_are_shown_all_the_same(self):
        for name in (b"odd\xff.txt", b"two\nlines.txt"):
            write(os.path.join(self.job_path("motifs").encode(), name), SHORT)
        shown = self.shown()
        self.assertRegex(shown, r"(?m)^  'odd\\udcff.txt'   2 motifs$")
        self.assertRegex(shown, r"(?m)^  'two\\nlines.txt'  2 motifs$")

    def test_a_long_list_is_cut_short(self):
        for number in range(60):
            write(self.job_path("motifs", f"n{number:02}.txt"), SHORT)
        shown = self.shown()
        self.assertEqual(len(re.findall(r"(?m)^  n\d\d.txt   2 motifs$", shown)), 39)
        self.assertIn("  ... and 21 more\n", shown)

    def test_an_empty_folder(self):
        os.remove(self.job_path("motifs", "mine.txt"))
        self.assertIn("put your motif files there", self.shown())

    def test_nothing_is_left_behind(self):
        self.shown()
        self.assertEqual(os.listdir(self.path("temporary")), [])
        self.assertEqual(os.listdir(self.job_path("result")), [])

    def test_answers_from_a_file_are_answered_at_once(self):
        done = self.run_with(text_of(self.answers()))
        self.assertTrue(done.stdout.startswith("Please, enter number of files"))

    def test_headings_of_every_layout(self):
        for headings, text in ((2, ">a\nACGT\n\n>b\nACGT\n"),
                               (2, "AC  M1\nXX\nID  x\nNA  x\nP0 A C G T\n01 1 2 3 4\n//\nAC M2\nDE  x\n01 1 2 3 4\n"),
                               (2, "ID a\n1 1 2 3 4\n\nDE b\n1 1 2 3 4\n"),
                               (2, "MEME version 4\nMOTIF a\nletter-probability matrix: w= 1\n 1 0 0 0\nMOTIF b\n"),
                               (1, "----\n\tMotif 1\n----\nletter-probability matrix: w= 1\n 1 0 0 0\n 0 0 0 1\n"),
                               (2, "1 2\n3 4\n5 6\n7 8\n\n 1\t2 3 4\r\n1 2 3 4\r\n"),
                               (1, "Protein: Sox4\tSeed\n\nA:\t1\nC:\t2\nG:\t3\nT:\t4\n"),
                               (0, "")):
            with self.subTest(text):
                self.assertEqual(motif_preview.headings_in(text.encode()), headings)

    def test_headings_of_the_samples_are_their_motifs(self):
        for path in glob.glob(os.path.join(os.path.dirname(SAMPLE), "*.txt")):
            with self.subTest(path):
                self.assertEqual([motif_preview.headings_of(path)],
                                 motif_preview.counts_by_program(PROGRAM, [path]))


class Given(JobTest):

    def test_line_ends_of_windows_and_a_mark_at_the_start(self):
        for piped in (False, True):
            for start in (b"", b"\xef\xbb\xbf"):
                with self.subTest(piped=piped, start=start):
                    done = self.run_with(start + text_of(self.answers(), "\r\n"), piped)
                    self.assertEqual((done.returncode, done.stderr), (0, ""))
                    self.assertIn("mine.txt16 ", done.stdout)

    def test_without_a_last_line_end(self):
        self.assertEqual(self.run_with(text_of(self.answers())[:-1]).returncode, 0)

    def test_too_few_lines_are_refused_before_the_program_starts(self):
        self.stand_in("#!/bin/sh\ntouch started\n")
        for files, left_out in (("mine.txt",), 1), (("mine.txt",) * 3, 2), (("mine.txt",), 13):
            lines = self.answers(files)[:-left_out]
            for piped in (False, True):
                with self.subTest(lines=lines, piped=piped):
                    done = self.run_with(text_of(lines) + b"\n \n\n", piped)
                    self.assertEqual((done.returncode, done.stdout), (1, ""))
                    self.assertIn(f"has {len(lines)} answers", done.stderr)
                    self.assertIn(f"asks for {12 + 2 * len(files)};", done.stderr)
                    self.assertEqual(done.stderr.count("\n"), 1)
        self.assertFalse(os.path.exists(self.job_path("started")))

    def test_what_are_no_answers_is_refused(self):
        for text in (b"", b"\n\n", b"no number\n" * 20, b"0\n" * 20):
            with self.subTest(text=text[:20]):
                done = self.run_with(text)
                self.assertEqual((done.returncode, done.stdout), (1, ""))
                self.assertIn("no line that answers the first question", done.stderr)
        for path, message in (("/dev/zero", "too large"), ("absent", "No such file"), (self.top, "Is a directory")):
            with self.subTest(path):
                done = subprocess.run([self.job_path("run"), path], stdin=subprocess.DEVNULL, capture_output=True,
                                      text=True, timeout=LIMIT, check=False)
                self.assertEqual((done.returncode, done.stdout), (1, ""))
                self.assertIn(message, done.stderr)

    def test_a_refused_first_answer_does_not_hide_the_number_of_files(self):
        done = self.run_with(text_of(["0", "x", *self.answers()]))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.run_with(text_of(["0", "x", *self.answers()[:-2]])).stdout, "")

    def test_answers_used_up_by_bad_ones_stop_the_program(self):
        for place, bad in ((3, "0.65"), (7, "11"), (8, "15"), (13, "/nowhere/at/all")):
            with self.subTest(bad):
                lines = self.answers()
                lines[place] = bad
                lines.append("/nowhere/at/all")
                done = self.run_with(text_of(lines), limit=20)
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr, "run: the answers ended before the last question, so the program was "
                                              "stopped\n")
                self.assertLess(len(done.stdout), 5000)
                self.assertEqual(self.reports(), {})

    def test_the_console_is_the_programs_own_with_many_bad_answers(self):
        """Equal error lines in a row are held back for a while and must all come."""
        lines = self.answers()
        lines[3:3] = ["0.65"] * 20
        lines[-1:-1] = ["/nowhere/at/all"] * 30
        done = self.run_with(text_of(lines))
        plain = subprocess.run([PROGRAM], input=text_of(lines), stdout=subprocess.PIPE, cwd=self.job, timeout=LIMIT,
                               check=True).stdout.decode()
        self.assertEqual(re.sub("Runtime.*", "", done.stdout), re.sub("Runtime.*", "", plain))
        self.assertEqual(done.stdout.count(REFUSED_CUTOFF), 20)

    def test_more_answers_than_a_pipe_has_room_for(self):
        write(self.job_path("motifs", "short.txt"), SHORT)
        name = "./" * 60 + "short.txt"
        done = self.run_with(text_of(self.answers([name] * 2000)))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn(f"{name}2                   2000", done.stdout)

    def test_the_status_is_the_programs(self):
        for text, status in (("exit 0", 0), ("exit 7", 7), ("kill -TERM $$", -signal.SIGTERM),
                             ("kill -KILL $$", -signal.SIGKILL)):
            with self.subTest(text):
                self.stand_in(f"#!/bin/sh\necho 'Reading input ...'\nprintf unfinished\n{text}\n")
                done = self.run_with(text_of(self.answers()))
                self.assertEqual((done.returncode, done.stdout), (status, "Reading input ...\nunfinished"))

    def test_a_full_disk_below_the_console_ends_the_run(self):
        write(self.path("given.txt"), text_of(self.answers()).decode())
        with open("/dev/full", "wb") as full:
            done = subprocess.run([self.job_path("run"), self.path("given.txt")], stdout=full, stderr=subprocess.PIPE,
                                  text=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("the console cannot be written: No space left on device", done.stderr)

    def test_closed_input_and_output(self):
        for closed, message in (("<&-", "cannot be read"), (">&- < /dev/null", "standard output is closed")):
            done = subprocess.run(["/bin/sh", "-c", f"exec '{self.job_path('run')}' {closed}"], capture_output=True,
                                  text=True, timeout=LIMIT, check=False)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertIn(message, done.stderr)

    def test_wrong_use_and_help(self):
        for arguments, status in ((["one", "two"], 2), (["--help"], 0)):
            done = subprocess.run([self.job_path("run"), *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                                  text=True, timeout=LIMIT, check=False)
            self.assertEqual(done.returncode, status)
            self.assertIn("run ANSWERS", done.stdout + done.stderr)


class EarlierTrees(JobTest):

    def leave_trees(self, page):
        """The files of an earlier job with trees."""
        names = [*TREES, f"{page}_Phylogenetic_Tree.html", f"{page}_Global_Matching_Phylogenetic_Tree.html.unconverted"]
        for name in names:
            write(self.job_path("result", name), "tree of " + page)
        for name in ("_Results.txt", "_HTML_Results.html", "_Phylogenetic_Tree.pdf"):
            write(self.job_path("result", page + name), page)
        return names

    def test_the_bare_names_are_those_of_the_program(self):
        source = read(os.path.join(ROOT, "src", "tree", "tree_plot.h"))
        self.assertEqual(sorted(run_job.TREE_FILES), sorted(re.findall(r'"(\w+\.\w+)"', source)))
        self.assertEqual(sorted(run_job.TREE_FILES), sorted(TREES))

    def test_trees_and_their_pages_are_moved_aside(self):
        page = "J_2016-05-21_4821"
        names = self.leave_trees(page)
        self.assertEqual(self.run_with(text_of(self.answers())).returncode, 0)
        aside = glob.glob(self.job_path("result", "earlier-*"))
        self.assertEqual(len(aside), 1)
        self.assertRegex(os.path.basename(aside[0]), r"^earlier-\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d$")
        self.assertEqual(sorted(os.listdir(aside[0])), sorted(names))
        for name in names:
            self.assertFalse(os.path.exists(self.job_path("result", name)), name)
        for name in ("_Results.txt", "_HTML_Results.html", "_Phylogenetic_Tree.pdf"):
            self.assertTrue(os.path.exists(self.job_path("result", page + name)), name)

    def test_every_job_has_a_folder_of_its_own(self):
        for page in ("J_2016-05-21_1000", "J_2016-05-21_1001", "J_2016-05-21_1002"):
            self.leave_trees(page)
            self.assertEqual(self.run_with(text_of(self.answers())).returncode, 0)
        pictures = [read(path) for path in glob.glob(self.job_path("result", "earlier-*", TREES[2]))]
        self.assertEqual(sorted(pictures), [f"tree of J_2016-05-21_100{number}" for number in range(3)])

    def test_a_job_too_small_for_a_tree_shows_none(self):
        """With few motifs R draws nothing, and the page must not find the picture of another job."""
        self.leave_trees("J_2016-05-21_4821")
        write(self.job_path("motifs", "few.txt"), SHORT)
        lines = self.answers(["few.txt"], tree="Y")
        lines[-2] = "HTML"
        os.makedirs(self.path("bin"))
        os.symlink("/bin/true", self.path("bin", "Rscript"))
        os.environ["PATH"] = self.path("bin") + ":" + os.environ["PATH"]
        self.assertEqual(self.run_with(text_of(lines)).returncode, 0)
        page, = glob.glob(self.job_path("result", "J_*[0-9]_Phylogenetic_Tree.html"))
        self.assertIn("Phylogenetic_Tree.png", read(page))
        self.assertFalse(os.path.exists(self.job_path("result", "Phylogenetic_Tree.png")))

    def test_without_trees_nothing_is_made(self):
        self.run_with(text_of(self.answers()))
        self.assertEqual(glob.glob(self.job_path("result", "earlier-*")), [])


class OneAtATime(JobTest):

    def start_working(self, text=WORKING):
        """Starts a run that goes on; answers it and the program's process when that has begun."""
        self.stand_in(text)
        write(self.path("given.txt"), text_of(self.answers()).decode())
        run = subprocess.Popen([self.job_path("run"), self.path("given.txt")], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.addCleanup(run.wait)
        self.addCleanup(run.stdout.close)
        self.addCleanup(run.kill)
        self.wait_until(lambda: os.path.exists(self.job_path("started")) and read(self.job_path("started")))
        return run, int(read(self.job_path("started")))

    def wait_until(self, holds):
        """Waits for what comes soon."""
        end = time.monotonic() + 30
        while not holds():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.02)

    def ended(self, process):
        """Whether a process has gone, or is waited for by nobody."""
        try:
            return read(f"/proc/{process}/stat").rpartition(")")[2].split()[0] == "Z"
        except OSError:
            return True

    def second(self):
        """A second run in the same folder, with the real program."""
        os.remove(self.path("project", "build", "release", "varnolix"))
        os.symlink(PROGRAM, self.path("project", "build", "release", "varnolix"))
        return self.run_with(text_of(self.answers()))

    def test_a_second_run_is_refused_while_the_first_works(self):
        self.start_working()
        write(self.job_path("result", TREES[0]), "of the first run")
        done = self.second()
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("another run is working in " + self.job, done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertTrue(os.path.exists(self.job_path("result", TREES[0])))

    def test_a_dialogue_holds_the_folder_too(self):
        terminal = self.terminal()
        terminal.wait_for("Please, enter number of files")
        self.assertEqual(self.run_with(text_of(self.answers())).returncode, 1)
        terminal.press(INTERRUPT)
        terminal.finish()
        self.assertEqual(self.run_with(text_of(self.answers())).returncode, 0)

    def test_a_killed_run_leaves_no_lock_and_no_program(self):
        run, program = self.start_working()
        run.send_signal(signal.SIGKILL)
        run.wait()
        self.wait_until(lambda: self.ended(program))
        self.assertEqual(self.second().returncode, 0)

    def test_a_signal_ends_the_program_and_the_run(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            with self.subTest(number):
                run, program = self.start_working()
                run.send_signal(number)
                self.assertEqual(run.wait(timeout=LIMIT), -number)
                self.wait_until(lambda process=program: self.ended(process))
                os.remove(self.job_path("started"))

    def test_a_program_that_cleans_up_is_waited_for(self):
        run, _ = self.start_working(text="#!/bin/sh\ntrap 'sleep 0.5; echo cleaned up; exit 5' TERM\n"
                                         "echo 'Reading input ...'\necho $$ > started\n"
                                         "while true; do sleep 0.05; done\n")
        run.send_signal(signal.SIGTERM)
        self.assertEqual(run.stdout.read(), b"Reading input ...\ncleaned up\n")
        self.assertEqual(run.wait(timeout=LIMIT), 5)

    def test_what_the_caller_ignores_stays_ignored(self):
        before = signal.signal(signal.SIGHUP, signal.SIG_IGN)
        try:
            run, _ = self.start_working()
        finally:
            signal.signal(signal.SIGHUP, before)
        run.send_signal(signal.SIGHUP)
        time.sleep(0.3)
        self.assertIsNone(run.poll())

    def test_another_folder_is_free(self):
        self.start_working()
        self.assertEqual(self.script("new-job.sh", self.path("other")).returncode, 0)
        self.job = self.path("other")
        write(self.job_path("motifs", "mine.txt"), SHORT)
        self.assertEqual(self.second().returncode, 0)


if __name__ == "__main__":
    unittest.main()
