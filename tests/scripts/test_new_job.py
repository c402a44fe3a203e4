"""Job folders: what is in them, what is printed, and how their start script starts the program."""
import os
import shutil
import subprocess
import unittest

from script_project import LIMIT, ScriptTest, read, write

# Stands in for the program: tells where and how it was started.
STAND_IN = """#!/usr/bin/env bash
printf 'folder %s\\n' "$PWD"
printf 'tools %s\\n' "$VARNOLIX_TOOLS"
printf 'path %s\\n' "${PATH%%:*}"
printf 'R %s\\n' "${R_LIBS:-}"
cat
"""
# As many answers as one file needs.
ANSWERS = "1\n" + "".join(f"answer {number}\n" for number in range(13))


class NewJob(ScriptTest):

    def setUp(self):
        super().setUp()
        os.environ.pop("R_LIBS", None)

    def make(self, name):
        """Makes a job folder; answers its path and what was printed."""
        job = self.path(name)
        done = self.script("new-job.sh", job)
        self.assertEqual(done.returncode, 0, done.stderr)
        return job, done.stdout

    def collection(self, file, text):
        """Puts a collection into the project; answers its path."""
        path = self.path("project", "databases", file)
        write(path, text)
        return path

    def start(self, job, *arguments, stdin=subprocess.DEVNULL):
        """Starts the job from another folder; answers the finished process."""
        write(self.path("project", "build", "release", "varnolix"), STAND_IN, executable=True)
        return subprocess.run([os.path.join(job, "run"), *arguments], cwd=self.top, stdin=stdin, capture_output=True,
                              text=True, timeout=LIMIT, check=False)

    def test_makes_the_folders_and_links(self):
        job, _ = self.make("job")
        for folder in ("motifs", "result", "databases/jaspar", "databases/transfac", "databases/uniprobe"):
            self.assertTrue(os.path.isdir(os.path.join(job, folder)), folder)
        self.assertTrue(os.access(os.path.join(job, "motifs/weblogo-3.4/weblogo"), os.X_OK))
        self.assertTrue(os.path.isfile(os.path.join(job, "prince.php")))
        self.assertTrue(os.path.isfile(os.path.join(job, "prince-calls-may-overlap")))
        self.assertFalse(os.path.islink(os.path.join(job, "prince.php")))

    def test_logos_come_from_the_client_where_it_is_built(self):
        client = self.path("project", "build", "release", "weblogo-3.4")
        job, _ = self.make("job")
        link = os.path.join(job, "motifs/weblogo-3.4")
        self.assertEqual(os.readlink(link), self.path("project", "tools", "weblogo-3.4"))
        write(os.path.join(client, "weblogo"), "#!/bin/sh\n", executable=True)
        self.make("job")
        self.assertEqual(os.readlink(link), client)

    def test_result_folder_is_the_input_path_less_seven_characters(self):
        job, printed = self.make("job")
        self.assertIn(f"input file's location    {job}/motifs/\n", printed)
        self.assertIn(f"output file's location   {job}/result/\n", printed)
        self.assertEqual(f"{job}/motifs/"[:-7] + "result/", f"{job}/result/")

    def test_starts_the_program_in_the_job_folder(self):
        for name in ("job", "my job's folder", 'odd "$HOME" `id` ; & name'):
            with self.subTest(name):
                job, printed = self.make(name)
                self.assertIn(f"{job}/motifs/\n", printed)
                write(self.path("answers of mine.txt"), ANSWERS)
                done = self.start(job, "answers of mine.txt")
                tools = self.path("project", "tools")
                self.assertEqual(done.stdout, f"folder {job}\ntools {tools}\npath {tools}/bin\nR \n{ANSWERS}",
                                 done.stderr)

    def test_without_a_file_the_answers_come_from_standard_input(self):
        job, _ = self.make("job")
        write(self.path("typed"), ANSWERS)
        with open(self.path("typed"), encoding="utf-8") as typed:
            self.assertTrue(self.start(job, stdin=typed).stdout.endswith("\n" + ANSWERS))

    def test_packages_of_r_that_the_project_has_are_found(self):
        job, _ = self.make("job")
        write(self.path("answers"), ANSWERS)
        library = self.path("project", "build", "R-library")
        os.makedirs(library)
        for own, seen in ((None, library), ("/of/mine", library + ":/of/mine")):
            os.environ.pop("R_LIBS", None)
            if own:
                os.environ["R_LIBS"] = own
            self.assertIn(f"\nR {seen}\n", self.start(job, "answers").stdout)

    def test_says_that_python_is_missing(self):
        job, _ = self.make("job")
        write(self.path("project", "build", "release", "varnolix"), STAND_IN, executable=True)
        os.makedirs(self.path("bin"))
        for tool in ("bash", "dirname"):
            os.symlink(shutil.which(tool), self.path("bin", tool))
        done = subprocess.run([os.path.join(job, "run")], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=LIMIT, check=False, env={"PATH": self.path("bin")})
        self.assertEqual(done.returncode, 1)
        self.assertIn("python3 is not installed", done.stderr)

    def test_works_below_a_project_with_an_odd_name(self):
        odd = self.path("it's a project")
        os.rename(self.project, odd)
        self.project = odd
        job, _ = self.make("job")
        write(os.path.join(odd, "build/release/varnolix"), STAND_IN, executable=True)
        done = subprocess.run([os.path.join(job, "run")], input=ANSWERS, capture_output=True, text=True, timeout=LIMIT,
                              check=False)
        self.assertIn(f"tools {odd}/tools\n", done.stdout)

    def test_says_that_the_program_is_not_built(self):
        job, _ = self.make("job")
        done = subprocess.run([os.path.join(job, "run")], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("neither built nor installed", done.stderr)

    def test_links_and_lists_installed_collections(self):
        self.collection("jaspar/jaspar_pfm_fungi.txt", ">a b\n>c d\n")
        self.collection("transfac/transfac.txt", "AC  M1\n//\nAC  M2\n//\nAC  M3\n//\n")
        self.collection("uniprobe/uniprobe_worm.txt", ">a b\n")
        job, printed = self.make("job")
        self.assertRegex(printed, r"(?m)^ +1  jasparAll +not installed$")
        self.assertRegex(printed, r"(?m)^ +2  jasparFungi +2 motifs$")
        self.assertRegex(printed, r"(?m)^ +8  transfac +3 motifs$")
        self.assertRegex(printed, r"(?m)^ +12  uniprobeWorm +1 motif$")
        self.assertEqual(read(os.path.join(job, "databases/jaspar/jaspar_pfm_fungi.txt")), ">a b\n>c d\n")
        self.assertFalse(os.path.lexists(os.path.join(job, "databases/jaspar/jaspar_pfm_all.txt")))

    def test_lists_all_thirteen_collections(self):
        _, printed = self.make("job")
        self.assertEqual(printed.count("not installed\n"), 13)

    def test_run_again_it_follows_the_project_and_keeps_what_is_the_users(self):
        fungi = self.collection("jaspar/jaspar_pfm_fungi.txt", ">a b\n")
        job, _ = self.make("job")
        write(os.path.join(job, "motifs/mine.txt"), "mine\n")
        write(os.path.join(job, "databases/uniprobe/uniprobe_worm.txt"), ">by hand\n")
        os.remove(fungi)
        self.collection("jaspar/jaspar_pfm_all.txt", ">a b\n")
        self.collection("uniprobe/uniprobe_worm.txt", ">of the project\n")
        self.make("job")
        self.assertEqual(read(os.path.join(job, "motifs/mine.txt")), "mine\n")
        self.assertEqual(read(os.path.join(job, "databases/uniprobe/uniprobe_worm.txt")), ">by hand\n")
        self.assertEqual(read(os.path.join(job, "databases/jaspar/jaspar_pfm_all.txt")), ">a b\n")
        self.assertFalse(os.path.lexists(os.path.join(job, "databases/jaspar/jaspar_pfm_fungi.txt")))

    def test_refuses_wrong_use(self):
        for arguments in ([], ["--into"], ["one", "two"]):
            with self.subTest(arguments):
                self.assertEqual(self.script("new-job.sh", *arguments).returncode, 2)
        self.assertEqual(os.listdir(self.top), ["project"])


if __name__ == "__main__":
    unittest.main()
