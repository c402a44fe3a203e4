"""demo.sh and test.sh with stand-ins for set-up, build and program: the answers given, and what is missed."""
import os
import shutil
import unittest

from script_project import ROOT, ScriptTest, read, write

# Stands in for the program: keeps the answers, leaves the reports of a full run, but for those named in $LESS.
PROGRAM = r"""#!/usr/bin/env bash
cat > answers.seen
input="$(sed -n 6p answers.seen)"
format="$(tail -n 2 answers.seen | head -n 1)"
result="${input%motifs/}result/"
job="${result}J_2016-05-21_4821_"
leave() { [[ " ${LESS:-} " == *" ${1##*/J_2016-05-21_4821_} "* ]] || echo "$2" > "$1"; }
leave "${job}input_motifs.txt" "Total number of motifs: 2"
for name in Results Results_Without_Motif_Details Results_Global_Matching Results_Database_Matching \
            Results_Database_Matching_Without_Motif_Details Results_Database_Matching_Global_Matching \
            Results_Combined_Motifs_Global_Matching Results_Combined_Motifs_Global_and_Local_Matching \
            Results_Combined_Motifs_Best_Matches; do
    leave "$job$name.txt" text
done
[[ $format == All ]] || exit 0
for name in HTML_Results HTML_Global_Matching_Results HTML_Results_Database_Matching \
            HTML_Results_Database_Matching_Global_Matching Phylogenetic_Tree Global_Matching_Phylogenetic_Tree; do
    leave "$job$name.html" page
    leave "$job$name.pdf" pdf
done
for name in {,Global_Matching_}{Distance_Matrix.csv,Plot_File.R,Phylogenetic_Tree.png}; do
    leave "$result$name" tree
done
mkdir "${job}image"
references="$(grep -c '>' databases/jaspar/jaspar_pfm_all.txt)"
for (( i = 0; i < 2 * (references + 2); i++ )); do
    leave "${job}image/$i.jpeg" picture
done
if [[ -n ${EMPTY_LOGO:-} ]]; then : > "${job}image/0.jpeg"; fi
"""


class Demo(ScriptTest):

    def setUp(self):
        super().setUp()
        shutil.copytree(os.path.join(ROOT, "examples"), self.path("project", "examples"))
        write(self.path("project", "scripts", "setup.sh"), "#!/bin/sh\necho setup \"$@\"\n", executable=True)
        for tool in ("cmake", "ctest"):
            write(self.path("bin", tool), f"#!/bin/sh\necho {tool} \"$@\" text-only=$VARNOLIX_TEXT_ONLY\n",
                  executable=True)
        write(self.path("project", "build", "release", "varnolix"), PROGRAM, executable=True)
        self.job = self.path("project", "build", "demo-job")

    def run_script(self, name, *arguments, **variables):
        """Runs one of the two scripts with the stand-ins first on the path."""
        path = f"{self.path('bin')}:{os.environ['PATH']}"
        return self.script(name, *arguments, env={**os.environ, **variables, "PATH": path})

    def answers(self):
        """The answers that the program was given."""
        return read(os.path.join(self.job, "answers.seen")).splitlines()

    def test_a_whole_job_with_everything(self):
        done = self.run_script("demo.sh")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("setup --if-missing\n", done.stdout)
        self.assertIn("cmake --preset program text-only", done.stdout)
        self.assertEqual(self.answers()[-6:-1], ["1", "Y", "Y", "All", "All"])
        self.assertNotIn("MISSING", done.stdout)
        self.assertIn("44 logos", done.stdout)

    def test_the_same_job_in_one_command(self):
        done = self.run_script("demo.sh", "--text")
        shown = done.stdout[done.stdout.index("== The same job in one command"):]
        self.assertIn(" run --force -o build/demo-short --top 3 --best 2 --cutoff 0.75 --merge ", shown)
        listed = shown[shown.index("== What it wrote in"):].splitlines()
        self.assertTrue(listed[1].startswith("  index.html "))
        self.assertRegex(shown.splitlines()[-1], r"^== Open this in a browser: .*build/demo-short/index\.html$")
        self.assertRegex(shown, r"(?m)^  list +query_id +target_id +orientation +overlap +similarity$")
        self.assertEqual(len([line for line in shown.splitlines() if line.startswith("  top_global ")]), 3)

    def test_text_only(self):
        done = self.run_script("demo.sh", "--text")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("setup --if-missing --text\n", done.stdout)
        self.assertEqual(self.answers()[-6:-1], ["1", "N", "Y", "All", "Text"])
        self.assertNotIn(".pdf", done.stdout)

    def test_every_answer_is_given_and_shown(self):
        done = self.run_script("demo.sh", "--text")
        answers = self.answers()
        self.assertEqual(len(answers), 12 + 2 * int(answers[0]))
        for answer in answers:
            self.assertIn(answer, done.stdout)
        for name in answers[6:6 + 2 * int(answers[0]):2]:
            self.assertTrue(os.path.isfile(os.path.join(answers[5], name)), name)
        self.assertRegex(answers[4], "^[1-9]$")

    def test_a_build_folder_with_tests_stays_as_it_is(self):
        write(self.path("project", "build", "release", "build.ninja"), "")
        done = self.run_script("demo.sh", "--text")
        self.assertNotIn("cmake --preset", done.stdout)
        self.assertIn("cmake --build --preset program --target programs", done.stdout)
        self.assertIn("cmake --preset release", self.run_script("test.sh").stdout)

    def test_the_job_folder_is_made_afresh(self):
        write(os.path.join(self.job, "result", "J_old_Results.txt"), "old")
        self.assertEqual(self.run_script("demo.sh", "--text").returncode, 0)
        self.assertFalse(os.path.exists(os.path.join(self.job, "result", "J_old_Results.txt")))

    def test_says_which_collections_stand_there(self):
        done = self.run_script("demo.sh", "--text")
        self.assertRegex(done.stdout, r"(?m)^ +1  jasparAll +20 motifs$")
        self.assertRegex(done.stdout, r"(?m)^ +2  jasparFungi +not installed$")

    def test_fails_when_a_report_is_missing(self):
        for name in ("Results_Combined_Motifs_Best_Matches.txt", "Phylogenetic_Tree.pdf", "HTML_Results.html"):
            with self.subTest(name):
                done = self.run_script("demo.sh", LESS=name)
                self.assertEqual(done.returncode, 1)
                self.assertRegex(done.stdout, rf"(?m)^  {name} +MISSING")
                self.assertEqual(done.stdout.count("MISSING"), 1)

    def test_fails_when_a_logo_is_empty(self):
        done = self.run_script("demo.sh", EMPTY_LOGO="1")
        self.assertEqual(done.returncode, 1)
        self.assertIn("MISSING: 1 of 44 logos", done.stdout)

    def test_fails_when_the_program_fails(self):
        write(self.path("project", "build", "release", "varnolix"), "#!/bin/sh\necho went wrong\nexit 1\n",
              executable=True)
        done = self.run_script("demo.sh", "--text")
        self.assertEqual(done.returncode, 1)
        self.assertIn("the run did not end well", done.stderr)
        self.assertEqual(read(os.path.join(self.job, "console.txt")), "went wrong\n")

    def test_the_tests_are_built_and_run(self):
        done = self.run_script("test.sh")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("setup --if-missing --tests --chromium\n", done.stdout)
        self.assertIn("ctest --preset release text-only=\n", done.stdout)

    def test_without_the_outside_tools_the_tests_are_told_so(self):
        done = self.run_script("test.sh", "--text")
        self.assertIn("setup --if-missing --tests --text\n", done.stdout)
        self.assertIn("ctest --preset release text-only=1\n", done.stdout)

    def test_failed_tests_are_the_exit_status(self):
        write(self.path("bin", "ctest"), "#!/bin/sh\nexit 8\n", executable=True)
        self.assertEqual(self.run_script("test.sh").returncode, 8)


if __name__ == "__main__":
    unittest.main()
