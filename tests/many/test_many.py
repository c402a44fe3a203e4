"""Lists of jobs: what they may hold, what is collected, what is done again."""
import concurrent.futures
import json
import os
import random
import shutil
import signal
import time
import unittest

from many import ENHANCERS, PROMOTERS, ManyTest, alive, list_of, read, table, write

COLUMNS = ("name", "files", "cutoff", "top", "merge")
FOUR = (("one", "a.txt b.txt", "0.75", "", "yes"), ("two", "a.txt", "", "3", "no"), ("three", "b.txt"),
        ("four", "x=b.txt a.txt", "0.9"))


class Lists(ManyTest):

    def test_jobs_are_what_run_makes_of_the_same_options(self):
        self.list(*FOUR, header=COLUMNS)
        out, _ = self.many("jobs.tsv")
        self.assertIn("4 of 4 jobs done", out)
        singles = [["--cutoff=0.75", "--merge", "a.txt", "b.txt"], ["--top=3", "a.txt"], ["b.txt"],
                   ["--cutoff=0.9", "x=b.txt", "a.txt"]]
        expected = []
        for (name, *_), arguments in zip(FOUR, singles):
            lines = read(os.path.join(self.job(*arguments, folder=f"single {name}"), "matches.tsv")).split(b"\n")
            self.assertEqual(lines.pop(), b"")
            expected += [b"job\t" + lines[0]] if not expected else []
            expected += [name.encode() + b"\t" + line for line in lines[1:]]
        self.assertEqual(self.collected(), b"\n".join(expected) + b"\n")

    def test_the_summary_tells_what_the_records_tell(self):
        self.list(*FOUR, header=COLUMNS)
        self.many("jobs.tsv", "-o", "out", "--jobs=2", "--threads=1")
        rows = table(self.path("out", "summary.tsv"))
        self.assertEqual([(row["job"], row["line_1based"], row["status"]) for row in rows],
                         [(job[0], str(line), "done") for line, job in enumerate(FOUR, 2)])
        for row in rows:
            record = json.loads(read(self.path("out", row["job"], "job.json")))
            self.assertEqual(int(row["motifs"]), record["counts"]["motifs"])
            for name, count in record["counts"]["matches"].items():
                self.assertEqual(int(row["matches_" + name]), count)
            self.assertEqual(int(row["peak_memory_bytes"]), record["peak_memory_bytes"])
            self.assertGreater(float(row["seconds"]), sum(stage["seconds"] for stage in record["stages"]))
            self.assertEqual((row["threads"], row["error"]), ("1", ""))
        page = read(self.path("out", "index.html")).decode()
        for name, *_ in FOUR:
            self.assertIn(f'<a href="./{name}/index.html">{name}</a>', page)
        self.assertNotIn("<script", page)

    def test_any_number_at_once_gives_the_same(self):
        self.list(*FOUR, header=COLUMNS)
        for number in ("1", "2", "3"):
            self.many("jobs.tsv", "-o", "jobs" + number, "--jobs", number)
        self.assertEqual(self.collected("jobs1"), self.collected("jobs2"))
        self.assertEqual(self.collected("jobs1"), self.collected("jobs3"))

    def test_names_and_paths_may_be_odd(self):
        write(self.path("it's a \"file\".txt"), PROMOTERS)
        write(self.path("lists", "b c.txt"), ENHANCERS)
        name = "<b>\"it's\" $(x) \u00e4 100%"
        self.list((name, '"it\'s a \\"file\\".txt"'), ("b", "b.txt"), ("set", "'my set=b.txt' a.txt"))
        self.many("jobs.tsv", "-o", "odd 'folder'")
        self.assertEqual(set(self.statuses("odd 'folder'").values()), {"done"})
        self.assertIn(name.encode() + b"\t", self.collected("odd 'folder'"))
        page = read(self.path("odd 'folder'", "index.html")).decode()
        self.assertIn("<a href=\"./%3Cb%3E%22it%27s%22%20%24%28x%29%20%C3%A4%20100%25/index.html\">"
                      "&lt;b&gt;&quot;it&#39;s&quot; $(x) \u00e4 100%</a>", page)
        self.assertNotIn("<b>", page)
        self.assertIn("my set", {row["dataset"] for row in table(self.path("odd 'folder'", "set", "motifs.tsv"))})
        # Paths are meant from the folder of the list, wherever the program is called.
        write(self.path("lists", "jobs.tsv"), list_of(("one", "'b c.txt'")))
        self.many("lists/jobs.tsv")
        self.assertEqual(self.statuses(), {"one": "done"})

    def test_line_ends_and_comments(self):
        text = "\ufeff" + list_of(("one", "a.txt", ""), ("two", "b.txt", "0.9"), header=COLUMNS[:3], end="\r\n")
        write(self.path("jobs.tsv"), "# two jobs\n\n" + text.replace("\ufeff", "") + "\r\n")
        self.many("jobs.tsv")
        write(self.path("marked.tsv"), text.rstrip())
        self.many("marked.tsv")
        self.assertEqual([row["line_1based"] for row in table(self.path("jobs", "summary.tsv"))], ["4", "5"])
        self.assertEqual(self.collected(), self.collected("marked"))

    def test_no_jobs(self):
        self.list()
        out, _ = self.many("jobs.tsv", env={"PATH": "/nowhere"})
        self.assertIn("0 of 0 jobs done", out)
        self.assertTrue(self.collected().startswith(b"job\tlist\t"))
        self.assertEqual(self.collected().count(b"\n"), 1)
        self.assertEqual(self.statuses(), {})

    def test_every_bad_line_is_told_before_anything_starts(self):
        write(self.path("jobs.tsv"), list_of(
            ("good", "a.txt"), ("good", "b.txt"), ("a/b", "a.txt"), ("many", "a.txt"), ("..", "a.txt"), ("", "a.txt"),
            ("x1", "absent.txt"), ("x2", ""), ("x3", "'a.txt"), ("x4", "a.txt", "0.65"), ("x5", "a.txt", "", "51"),
            ("x6", "a.txt", "", "", "maybe"), ("x7", "a.txt", "", "", "", ""), ("x8", "-"), header=COLUMNS))
        _, errors = self.many("jobs.tsv", status=1)
        wanted = ("3: the name \"good\" is that of line 2", "4: .*slash", "5: .*all jobs share", "6: .*begins with",
                  "7: .*no name", "8: there is no file or folder absent.txt", "9: it has no files", "10: .*not closed",
                  "11: --cutoff: 0.65", "12: --top: .*51", "13: merge is yes or no", "14: it has 6 cells",
                  "15: standard input")
        lines = errors.splitlines()
        self.assertEqual(len(lines), len(wanted) + 1)
        for line, words in zip(lines, wanted):
            self.assertRegex(line, r"\Avarnolix-job: jobs\.tsv: line " + words)
        self.assertEqual(lines[-1], "varnolix-job: no job was started, as 13 lines of jobs.tsv cannot be used")
        self.assertFalse(os.path.exists(self.path("jobs")))

    def test_bad_headers(self):
        for header, words in (("name\tfiles\tcutof", "no column cutof; the columns are name, files, .*cutoff"),
                              ("name\tfiles\toutput", "no column output"), ("name\tfiles\tname", "two columns name"),
                              ("name", "no column files"), ("", "no line with the names"),
                              ("name\tfiles\t", "no column without a name")):
            with self.subTest(header):
                write(self.path("jobs.tsv"), header + "\n")
                self.assertRegex(self.many("jobs.tsv", status=1)[1], words)

    def test_what_else_is_refused(self):
        self.list(("one", "a.txt"))
        write(self.path("mine", "file"), "mine")
        self.assertIn("holds other files", self.many("jobs.tsv", "-o", "mine", status=1)[1])
        self.assertIn("exists and is not a folder", self.many("jobs.tsv", "-o", "a.txt", status=1)[1])
        self.assertIn("cannot read", self.many("absent.tsv", status=1)[1])
        self.assertEqual(os.listdir(self.path("mine")), ["file"])
        for arguments in ([], ["jobs.tsv", "--jobs=0"], ["jobs.tsv", "--submit"], ["jobs.tsv", "--time=1"]):
            self.many(*arguments, status=2)
        done = self.companion("collect", "mine")
        self.assertEqual((done.returncode, os.listdir(self.path("mine"))), (1, ["file"]))
        self.assertIn(b"holds no jobs of a list", done.stderr)

    def test_without_gnu_parallel(self):
        self.list(("one", "a.txt"))
        _, errors = self.many("jobs.tsv", status=1, env={"PATH": self.path("bin")})
        self.assertEqual(errors, "varnolix-job: GNU parallel, which runs the jobs, is not installed; Debian's package "
                                 "parallel has it\n")
        write(self.path("bin", "parallel"), "#!/bin/sh\nexit 1\n")
        os.chmod(self.path("bin", "parallel"), 0o755)
        _, errors = self.many("jobs.tsv", status=1, env={"PATH": self.path("bin") + ":" + os.environ["PATH"]})
        self.assertIn("another program of this name", errors)
        # What the user has set for GNU parallel does not matter.
        self.many("jobs.tsv", env={"PARALLEL": "--dry-run", "PARALLEL_SHELL": "/bin/false"})
        self.assertEqual(self.statuses(), {"one": "done"})


class Again(ManyTest):

    def test_a_failed_job_does_not_stop_the_others(self):
        write(self.path("bad.txt"), b">M1\nA 1 2\nC 1 2\nG 1 2\nT 1 2\n>M3\nA 1 2\nC 1 2\nG 1\nT 1 2\n")
        self.list(("one", "a.txt"), ("bad", "bad.txt"), ("two", "b.txt"))
        _, errors = self.many("jobs.tsv", status=1)
        self.assertRegex(errors, r"\Avarnolix-job: job bad failed: nothing was compared, as 1 motif cannot be .*\n\Z")
        self.assertEqual(self.statuses(), {"one": "done", "bad": "failed", "two": "done"})
        row = table(self.path("jobs", "summary.tsv"))[1]
        self.assertIn("nothing was compared", row["error"])
        self.assertEqual((row["motifs"], row["seconds"]), ("", ""))
        self.assertNotIn(b"\nbad\t", self.collected())
        before = self.records()
        self.many("jobs.tsv", status=1)
        write(self.path("bad.txt"), PROMOTERS)
        out, _ = self.many("jobs.tsv")
        self.assertIn("3 jobs, 2 done before", out)
        after = self.records()
        self.assertEqual({name: after[name] for name in before}, before)
        self.list(("one", "a.txt"), ("bad", "bad.txt"), ("two", "b.txt"), name="fresh.tsv")
        self.many("fresh.tsv")
        self.assertEqual(self.collected(), self.collected("fresh"))

    def assert_done_anew(self, *names):
        """Another run does these jobs again and no other."""
        before = self.records()
        self.many("jobs.tsv")
        after = self.records()
        self.assertEqual({name for name in after if after[name] != before.get(name)}, set(names))

    def test_what_was_changed_is_done_anew(self):
        rows = [("one", "a.txt", ""), ("two", "b.txt", ""), ("three", "a.txt b.txt", "")]
        header = ("name", "files", "cutoff")
        self.list(*rows, header=header)
        self.assert_done_anew("one", "two", "three")
        self.assert_done_anew()
        rows[1] = ("two", "b.txt", "0.9")
        self.list(*rows, header=header)
        self.assert_done_anew("two")
        self.assertEqual(json.loads(read(self.path("jobs", "two", "job.json")))["settings"]["cutoff"], 0.9)
        # Another order of lines and columns changes no job.
        self.list(*[(name, cutoff, files) for name, files, cutoff in reversed(rows)],
                  header=("name", "cutoff", "files"))
        self.assert_done_anew()
        self.assertEqual(list(self.statuses()), ["three", "two", "one"])
        # A changed file, a lost file, a table that was cut off.
        self.list(*rows, header=header)
        write(self.path("b.txt"), ENHANCERS + b"\n")
        self.assert_done_anew("two", "three")
        os.remove(self.path("jobs", "one", "motifs.tsv"))
        self.assert_done_anew("one")
        os.truncate(self.path("jobs", "two", "matches.tsv"), 100)
        self.assert_done_anew("two")
        # A job of fewer lines stays, but is collected no more.
        self.list(*rows[:2], header=header)
        self.assert_done_anew()
        self.assertNotIn(b"\nthree\t", self.collected())
        self.assertTrue(os.path.exists(self.path("jobs", "three", "job.json")))

    def test_the_folder_may_be_moved_and_collected(self):
        self.list(("one", "a.txt"), ("two", "b.txt"))
        self.many("jobs.tsv")
        before = self.collected()
        os.rename(self.path("jobs"), self.path("moved"))
        os.remove(self.path("moved", "all_matches.tsv"))
        done = self.companion("collect", "moved/")
        self.assertEqual((done.returncode, self.collected("moved")), (0, before), done.stderr)
        os.remove(self.path("moved", "two", "job.json"))
        done = self.companion("collect", "moved")
        self.assertEqual((done.returncode, done.stderr), (1, b"varnolix-job: job two is missing\n"))
        self.assertEqual(self.statuses("moved"), {"one": "done", "two": "missing"})
        self.assertNotIn(b"\ntwo\t", self.collected("moved"))

    def test_tables_with_other_columns(self):
        self.list(("one", "a.txt"), ("two", "b.txt"))
        self.many("jobs.tsv")
        plain = table(self.path("jobs", "all_matches.tsv"))
        # As a job of another version may have it: one column more, in front.
        path = self.path("jobs", "two", "matches.tsv")
        lines = read(path).decode().splitlines()
        write(path, "".join(f"{'extra' if place == 0 else place}\t{line}\n" for place, line in enumerate(lines)))
        record = json.loads(read(self.path("jobs", "two", "job.json")))
        for each in record["files"]:
            each["bytes"] = os.path.getsize(path) if each["file"] == "matches.tsv" else each["bytes"]
        write(self.path("jobs", "two", "job.json"), json.dumps(record))
        self.assertEqual(self.companion("collect", "jobs").returncode, 0)
        rows = table(self.path("jobs", "all_matches.tsv"))
        extras = [row.pop("extra") for row in rows]
        self.assertEqual(rows, plain)
        self.assertEqual([extra for extra in extras if extra], [str(place) for place in range(1, len(lines))])


class Ends(ManyTest):

    JOBS = 16

    def setUp(self):
        super().setUp()
        self.list(*[(f"job{number}", "a.txt b.txt", str(number % 50 + 1)) for number in range(self.JOBS)],
                  header=("name", "files", "top"))

    def test_killed_anywhere_only_what_is_missing_is_done_again(self):
        self.many("jobs.tsv", "-o", "whole", "--jobs=3")
        rng = random.Random(20)
        kills = 0
        while kills < 6:
            process = self.start("jobs.tsv", "--jobs=2")
            wanted = len(self.records()) + 1
            self.wait_until(lambda: len(self.records()) >= wanted or process.poll() is not None, "no job is done")
            if process.poll() is not None:
                # All were done before we came to it: the next one starts from nothing.
                shutil.rmtree(self.path("jobs"))
                continue
            time.sleep(rng.uniform(0, 0.03))
            process.kill()
            self.kill_all()
            process.wait()
            kills += 1
            before = self.records()
            # A job that looks done is whole: it has its table as the run that nobody killed.
            for name in before:
                self.assertEqual(read(self.path("jobs", name, "matches.tsv")),
                                 read(self.path("whole", name, "matches.tsv")), name)
            if kills % 3 == 0:
                self.many("jobs.tsv", "--jobs=2")
                after = self.records()
                self.assertEqual({name: after[name] for name in before}, before)
                self.assertEqual(len(after), self.JOBS)
                self.assertEqual(self.collected(), self.collected("whole"))
                shutil.rmtree(self.path("jobs"))

    def test_killed_alone_it_takes_its_jobs_with_it(self):
        process = self.start("jobs.tsv", "--jobs=2")
        self.wait_until(lambda: len(self.records()) > 1, "no job is done")
        process.kill()
        process.wait()
        self.wait_until(lambda: not alive(self.top), "jobs go on")
        self.many("jobs.tsv")

    def test_signals_end_everything(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number):
                process = self.start("jobs.tsv", "--jobs=2", "-o", f"out{number}")
                self.wait_until(lambda number=number: len(self.records(f"out{number}")) > 1, "no job is done")
                process.send_signal(number)
                self.assertEqual(process.wait(timeout=30), -number)
                self.wait_until(lambda: not alive(self.top), "jobs go on")
                self.assertLess(len(self.records(f"out{number}")), self.JOBS)
                out, _ = self.many("jobs.tsv", "-o", f"out{number}")
                self.assertIn("16 of 16 jobs done", out)

    def test_two_in_one_folder(self):
        process = self.start("jobs.tsv", "--jobs=1")
        self.wait_until(lambda: self.records(), "no job is done")
        _, errors = self.many("jobs.tsv", status=1)
        self.assertEqual(errors, f"varnolix-job: another varnolix-job is at work in {self.path('jobs')}\n")
        self.assertEqual(process.wait(timeout=60), 0)
        with concurrent.futures.ThreadPoolExecutor() as pool:
            both = list(pool.map(lambda name: self.companion("many", name, "-o", "both"), ["jobs.tsv"] * 2))
        self.assertIn(sorted(done.returncode for done in both), ([0, 0], [0, 1]))
        self.assertEqual(set(self.statuses("both").values()), {"done"})

    def test_two_runs_in_one_job_folder(self):
        with concurrent.futures.ThreadPoolExecutor() as pool:
            both = list(pool.map(lambda _: self.companion("run", "--force", "-o", "job", "a.txt", "b.txt"), range(6)))
        self.assertIn(0, [done.returncode for done in both])
        for done in both:
            self.assertTrue(done.returncode == 0 or b"another varnolix-job is at work" in done.stderr, done.stderr)
        self.assertIn(b'"status": "complete"', read(self.path("job", "job.json")))


if __name__ == "__main__":
    unittest.main()
