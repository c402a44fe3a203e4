"""Disks, files and consoles that take no more: nothing may be lost in silence."""
import itertools
import os
import re
import resource
import subprocess
import tempfile
import unittest

from nasty_job import PATIENCE, PROGRAM, GOOD, NastyTest
from outside_tools import answers, install_tools, motif_text, tool_environment

MESSAGE = "Invalid output path or output filename."
ROOM = 64 << 10


class FullDisks(NastyTest):
    """Jobs of every kind of report, with stand-ins of the outside tools."""

    def setUp(self):
        super().setUp()
        os.mkdir(self.path("result"))
        for name in ("a.txt", "b.txt"):
            self.write(name, motif_text(30))
        install_tools(self.folder)

    def run_full(self, output_format, limit=None, stdout=subprocess.PIPE, output_type="All", threads=2):
        """Runs a job with tree, merging and all types of reports; files grow to the limit."""
        def confine():
            os.setpgid(0, 0)
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        text = answers(self.folder, ["a.txt", "b.txt"], output_format, output_type, threads)
        return subprocess.run([PROGRAM], input=text.encode(), stdout=stdout, stderr=subprocess.PIPE, cwd=self.folder,
                              env=tool_environment(self.folder), preexec_fn=confine, timeout=60 * PATIENCE, check=False)

    def check_ended(self, done):
        """The run ended in words, and the file that they name is there, or could not be made."""
        said = done.stderr.decode()
        self.assertEqual(done.returncode, 1, said)
        self.assertTrue(done.stdout.decode().endswith(MESSAGE), done.stdout[-200:])
        self.assertNotIn(b"have been saved", done.stdout)
        # Behind what the tools say, of which one that was ended may have said half a line.
        named = re.search(f"({re.escape(self.path('result'))}/.+) could not be written: .+\\.\n\\Z", said)
        self.assertIsNotNone(named, said)
        return named[1]

    def test_jobs_fit_where_there_is_room(self):
        """The same jobs end well otherwise, and each has a file longer than the limits below."""
        for output_format in ("Text", "HTML", "PDF", "All"):
            with self.subTest(output_format):
                done = self.run_full(output_format)
                self.assertEqual((done.returncode, done.stderr), (0, b""))
                self.assertIn(b"Your output files have been saved", done.stdout)

    def test_limit_of_file_size(self):
        """Wherever a limit strikes first, its file is named and has not more than the limit."""
        for output_format in ("Text", "HTML", "PDF", "All"):
            for limit, threads in itertools.product((0, 100, 3000, 20000), (1, 3)):
                with self.subTest(f"{output_format} {limit} {threads}"):
                    done = self.run_full(output_format, limit, threads=threads)
                    self.assertLessEqual(os.path.getsize(self.check_ended(done)), limit)

    def test_small_disk(self):
        """A file system of 64 KB, mounted for the test. Only root may do that."""
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={ROOM}", "tmpfs", self.path("result")],
                                 capture_output=True, check=False)
        if mounted.returncode != 0:
            self.skipTest("no file system can be mounted here: " + mounted.stderr.decode().strip())
        try:
            for output_format in ("Text", "HTML", "PDF", "All"):
                for output_type, threads in itertools.product(("All", "Global-Only"), (1, 3)):
                    with self.subTest(f"{output_format} {output_type} {threads}"):
                        self.check_ended(self.run_full(output_format, output_type=output_type, threads=threads))
                        # A matrix file only serves the drawing.
                        self.assertEqual([name for _, _, names in os.walk(self.path("result")) for name in names
                                          if re.search(r"M\d+\.txt$", name)], [])
                        subprocess.run("rm -rf ./*", shell=True, cwd=self.path("result"), check=True)
        finally:
            subprocess.run(["umount", self.path("result")], check=True)

    def test_full_console(self):
        """Standard output that takes nothing."""
        with open("/dev/full", "wb") as full:
            done = self.run_full("Text", stdout=full)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr.decode(), r"\AStandard output could not be written: .+\.\n\Z")

    def test_console_that_fills_at_the_end_of_the_answers(self):
        """The dialogue repeats its error for ever, but not into a file that is full."""
        def confine():
            resource.setrlimit(resource.RLIMIT_FSIZE, (ROOM, ROOM))
        with tempfile.TemporaryFile() as console:
            done = subprocess.run([PROGRAM], input=b"0\n", stdout=console, stderr=subprocess.PIPE, timeout=60 * PATIENCE,
                                  preexec_fn=confine, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"Standard output could not be written", done.stderr)


class PlantedLinks(NastyTest):
    """Symbolic links and pipes that someone else put where the program is about to write."""

    def setUp(self):
        super().setUp()
        os.mkdir(self.path("result"))
        self.write("a.txt", GOOD)
        self.write("b.txt", GOOD)
        install_tools(self.folder)
        with open(self.path("precious"), "w", encoding="utf-8") as file:
            file.write("precious")

    def check_refused(self, name, output_format="Text"):
        """A run with this in the way ends in words, and what a link leads to is as before."""
        done = subprocess.run([PROGRAM], input=answers(self.folder, ["a.txt", "b.txt"], output_format).encode(),
                              capture_output=True, cwd=self.folder, env=tool_environment(self.folder),
                              timeout=60 * PATIENCE, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertTrue(done.stdout.decode().endswith(MESSAGE), done.stdout[-200:])
        self.assertIn(f"/result/{name} could not be written: ", done.stderr.decode())
        with open(self.path("precious"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "precious")

    def test_files_with_bare_names(self):
        """Tables, scripts and pictures of the trees have names that are known before."""
        for name, output_format in (("Distance_Matrix.csv", "Text"), ("Plot_File.R", "Text"),
                                    ("Phylogenetic_Tree.png", "HTML")):
            with self.subTest(name):
                os.symlink(self.path("precious"), self.path("result", name))
                self.check_refused(name, output_format)
                os.unlink(self.path("result", name))

    def test_pipe(self):
        """It has no reader, and the run does not wait for one."""
        os.mkfifo(self.path("result", "Plot_File.R"))
        self.check_refused("Plot_File.R")

    def test_result_folder_may_be_a_link(self):
        """That is the choice of the user."""
        os.rename(self.path("result"), self.path("elsewhere"))
        os.symlink(self.path("elsewhere"), self.path("result"))
        done = subprocess.run([PROGRAM], input=answers(self.folder, ["a.txt", "b.txt"], "Text").encode(),
                              capture_output=True, cwd=self.folder, env=tool_environment(self.folder),
                              timeout=60 * PATIENCE, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))


if __name__ == "__main__":
    unittest.main()
