"""One command runs a whole job: files, names, refusals, folders, exit statuses."""
import gzip
import os
import subprocess
import unittest

from companion import COMPANION, LIMIT, PROGRAM, ROOT, CompanionTest, read, reports, table, write

TWO = b">M1 one\nA [ 9 0 0 9 ]\nC [ 0 9 0 0 ]\nG [ 0 0 9 0 ]\nT [ 1 1 1 1 ]\n" \
      b">M2 two\nA [ 9 0 0 9 0 ]\nC [ 0 9 0 0 9 ]\nG [ 0 0 9 0 0 ]\nT [ 1 1 1 1 1 ]\n"
BAD = b">M3\nA 1 2\nC 1 2\nG 1\nT 1 2\n"


class Run(CompanionTest):

    def setUp(self):
        super().setUp()
        write(self.path("a.jaspar"), TWO)
        write(self.path("b.jaspar"), TWO.replace(b"M1", b"N1").replace(b"M2", b"N2"))

    def test_files_are_data_sets_in_order(self):
        rows = table(os.path.join(self.job("a.jaspar", "known=b.jaspar"), "motifs.tsv"))
        self.assertEqual([(row["dataset"], row["id"]) for row in rows],
                         [("a", "M1"), ("a", "M2"), ("known", "N1"), ("known", "N2")])

    def test_folder_gzip_and_standard_input(self):
        write(self.path("many", "1.txt"), TWO)
        write(self.path("many", "2.txt.gz"), gzip.compress(TWO))
        job = self.job("many", "-", stdin=gzip.compress(TWO))
        rows = table(os.path.join(job, "motifs.tsv"))
        self.assertEqual([row["dataset"] for row in rows], ["many"] * 4 + ["stdin"] * 2)
        self.assertEqual([row["number_1based"] for row in rows], ["1", "2", "3", "4", "1", "2"])

    def test_a_bad_motif_ends_the_run_before_anything_is_written(self):
        write(self.path("bad.txt"), TWO + BAD)
        done = self.companion("run", "-o", "job", "bad.txt")
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr.decode(), r"bad\.txt:11: .*M3")
        self.assertFalse(os.path.exists(self.path("job")))

    def test_bad_motifs_can_be_skipped(self):
        write(self.path("bad.txt"), TWO + BAD)
        job = self.job("--skip-bad", "bad.txt")
        rows = table(os.path.join(job, "skipped.tsv"))
        self.assertEqual([(row["file"], row["line_1based"], row["motif"]) for row in rows], [("bad.txt", "11", "M3")])
        self.assertEqual(len(table(os.path.join(job, "motifs.tsv"))), 2)

    def test_counts_are_printed(self):
        write(self.path("bad.txt"), TWO + BAD)
        done = self.companion("run", "-o", "job", "--skip-bad", "a.jaspar", "bad.txt")
        self.assertIn(b"a.jaspar: 2 motifs read, 0 refused\nbad.txt: 2 motifs read, 1 refused\n", done.stdout)
        done = self.companion("run", "-o", "quiet", "--quiet", "a.jaspar")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"", b""))

    def test_trimming(self):
        write(self.path("flanks.txt"), b">F\n1 1 1 1\n1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n1 1 1 1\n1 1 1 1\n" * 2)
        row = table(os.path.join(self.job("--trim=0.5", "flanks.txt"), "motifs.tsv"))[0]
        self.assertEqual((row["length"], row["trimmed_left"], row["trimmed_right"]), ("4", "1", "2"))

    def test_a_folder_is_not_overwritten(self):
        self.job("a.jaspar")
        done = self.companion("run", "-o", "job", "b.jaspar")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"--force replaces it", done.stderr)
        self.job("--force", "b.jaspar")
        self.assertEqual(table(self.path("job", "motifs.tsv"))[0]["id"], "N1")
        write(self.path("mine", "precious.txt"), b"mine\n")
        done = self.companion("run", "-o", "mine", "--force", "b.jaspar")
        self.assertEqual((done.returncode, read(self.path("mine", "precious.txt"))), (1, b"mine\n"))

    def test_without_a_folder_the_next_free_name_is_taken(self):
        for number in (1, 2):
            self.assertEqual(self.companion("run", "a.jaspar").returncode, 0)
            self.assertEqual(len([name for name in os.listdir(self.top) if name.startswith("varnolix-")]), number)

    def test_every_number_of_threads_gives_the_same(self):
        samples = [os.path.join(ROOT, "examples", "motifs", name) for name in ("promoters.txt", "enhancers.txt")]
        jobs = [self.job("--merge", "--threads", str(count), *samples, folder=f"job{count}") for count in (1, 2, 10)]
        names = [name for name in os.listdir(jobs[0]) if name.endswith((".tsv", ".meme", "matches.json"))]
        self.assertGreater(len(names), 3)
        for job in jobs[1:]:
            for name in names:
                self.assertEqual(read(os.path.join(jobs[0], name)), read(os.path.join(job, name)), name)
            self.assertEqual(reports(os.path.join(jobs[0], "result")), reports(os.path.join(job, "result")))

    def test_a_collection_from_a_file(self):
        job = self.job("--collection", "b.jaspar", "a.jaspar")
        self.assertIn(("M1", "N1"), {(row["query_id"], row["target_id"])
                                     for row in table(os.path.join(job, "matches.tsv")) if row["list"] == "collection"})

    def test_tables_may_be_limited_to_sure_matches(self):
        every = self.job("a.jaspar", "b.jaspar", folder="every")
        rows = table(os.path.join(every, "matches.tsv"))
        self.assertIn("by_significance", {row["list"] for row in rows})
        least = min((row["q_value"] for row in rows), key=float)
        kept = [row for row in rows if float(row["q_value"]) <= float(least)]
        self.assertLess(len(kept), len(rows))
        sure = self.job("--max-q", least, "a.jaspar", "b.jaspar", folder="sure")
        self.assertEqual(table(os.path.join(sure, "matches.tsv")), kept)
        self.assertEqual(reports(os.path.join(every, "result")), reports(os.path.join(sure, "result")))

    def test_wrong_use(self):
        for arguments in ([], ["run"], ["run", "--cutoff=0.65", "a.jaspar"], ["run", "--top=51", "a.jaspar"],
                          ["run", "--max-q=1.5", "a.jaspar"],
                          ["run", "--format=doc", "a.jaspar"], ["fly"], ["run", "--threads=0", "a.jaspar"],
                          ["run", "--odd", "a.jaspar"], ["run", "--layout=odd", "a.jaspar"], ["convert"], ["collections", "install", "jasparAll"]):
            with self.subTest(arguments):
                done = self.companion(*arguments)
                self.assertEqual((done.returncode, done.stdout), (2, b""))
                self.assertTrue(done.stderr.startswith(b"varnolix-job: "))

    def test_refusals_in_words(self):
        write(self.path("one.txt"), TWO[:TWO.index(b">M2")])
        for arguments, words in ((["absent.txt"], "absent.txt"), (["one.txt"], "at least two motifs"),
                                 (["--collection=absent", "a.jaspar"], "absent"),
                                 (["--collection=jasparFungi", "a.jaspar"], "not installed"),
                                 (["--output=/proc/no/such", "a.jaspar"], "/proc/no/such")):
            with self.subTest(arguments):
                folder = [] if "--output" in arguments[0] else ["-o", "job"]
                done = self.companion("run", *folder, *arguments)
                self.assertEqual(done.returncode, 1, done.stderr)
                self.assertRegex(done.stderr.decode(), rf"\Avarnolix-job: [^\n]*{words}[^\n]*\n\Z")
                self.assertFalse(os.path.exists(self.path("job")))

    def test_a_failed_job_does_not_look_whole(self):
        self.assertEqual(self.companion("run", "-o", "job", "a.jaspar").returncode, 0)
        self.assertIn(b'"status": "complete"', read(self.path("job", "job.json")))
        # A file may have at most two blocks, so a report cannot be written.
        done = subprocess.run(["sh", "-c", 'ulimit -f 2; exec "$0" run -o small a.jaspar b.jaspar', COMPANION],
                              cwd=self.top, capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr.decode(), r"could not be written|cannot write")
        self.assertFalse(os.path.exists(self.path("small", "job.json")))

    def test_repeats_in_its_folder(self):
        job = self.job("a.jaspar")
        done = subprocess.run([os.path.join(job, "run"), "answers.txt"], cwd=job, capture_output=True, timeout=LIMIT,
                              check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(b"Your output files have been saved", done.stdout)
        self.assertTrue(os.path.exists(PROGRAM))

    def test_threads_may_be_all(self):
        self.assertEqual(self.companion("run", "-o", "job", "--threads=ALL", "a.jaspar").returncode, 0)
        for count in ("0", "-1", "two", "1.5"):
            self.assertEqual(self.companion("run", "--threads", count, "a.jaspar").returncode, 2)

    def test_version_and_help(self):
        printed = self.companion("--version").stdout.decode()
        self.assertRegex(printed, r"\Avarnolix-job \d+\.\d+\.\d+\n")
        for line in (r"commit +(unknown|[0-9a-f]{12}(-dirty)?)", r"compiler +(g\+\+|clang) \d\S*.*",
                     r"kernel +(portable|AVX2|AVX-512)", r"PHP +(not found|\d\S+)", r"Slurm +(not found|\d\S+)"):
            self.assertRegex(printed, rf"(?m)^  {line}$")

    def test_version_asks_the_tools_as_jobs_find_them(self):
        for tool, answer in (("php", "PHP 1.2.3-test (cli)"), ("parallel", "GNU parallel 20990101"), ("sbatch", "odd")):
            write(self.path("bin", tool), f"#!/bin/sh\necho '{answer}'\n")
            os.chmod(self.path("bin", tool), 0o755)
        printed = self.companion("--version", env={"PATH": f"{self.path('bin')}:{os.environ['PATH']}"}).stdout.decode()
        # PHP is called by the name of the launcher.
        self.assertRegex(printed, r"(?m)^  PHP +1\.2\.3-test$")
        self.assertRegex(printed, r"(?m)^  GNU parallel +20990101$")
        self.assertRegex(printed, r"(?m)^  Slurm +not found$")
        for command in ([], ["run"], ["convert"], ["collections"], ["collections", "install"], ["folder"]):
            done = self.companion(*command, "--help")
            shown = done.stdout.decode()
            self.assertEqual(done.returncode, 0)
            self.assertTrue(shown.startswith(f"Usage: {' '.join(['varnolix-job', *command])} "), shown[:80])
            self.assertLess(max(map(len, shown.splitlines())), 80)
        self.assertIn("\n  -o, --output=DIR      Folder of the job", self.companion("run", "--help").stdout.decode())


class Completion(CompanionTest):

    def complete(self, *words):
        """What bash offers for the last word."""
        script = os.path.join(ROOT, "tools", "completion", "varnolix-job")
        lines = [f"source '{script}'", "COMP_WORDS=(" + " ".join(f"'{word}'" for word in words) + ")",
                 f"COMP_CWORD={len(words) - 1}", "compopt() { :; }", "_varnolix_job", 'printf "%s\\n" "${COMPREPLY[@]}"']
        done = subprocess.run(["bash", "-c", "\n".join(lines)], cwd=self.top, capture_output=True, timeout=LIMIT,
                              check=True)
        return done.stdout.decode().split("\n")[:-1]

    def test_commands_options_values_and_files(self):
        self.assertEqual(self.complete(COMPANION, "co"), ["collect", "convert", "collections"])
        self.assertIn("--skip-bad", self.complete(COMPANION, "run", "--s"))
        self.assertEqual(self.complete(COMPANION, "run", "--format", "h"), ["html"])
        self.assertIn("jasparFungi", self.complete(COMPANION, "run", "--collection", "jasparF"))
        write(self.path("motifs.meme"), TWO)
        self.assertEqual(self.complete(COMPANION, "run", "mot"), ["motifs.meme"])


if __name__ == "__main__":
    unittest.main()
