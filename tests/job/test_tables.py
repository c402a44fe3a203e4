"""The tables of a job: they agree with the reports, with the matrices, and with what other programs read from them."""
import csv
import glob
import json
import os
import random
import re
import subprocess
import unittest

from companion import CompanionTest, read, table, write

SECTIONS = {
    "Significant Motifs - Global Matching": "top_global",
    "Significant Motifs - Global and Local Matching": "significant",
    "Best Matches for Each Motif": "each_motif",
}
OWNER = re.compile(r"Best Matches for (?:Top Significant |Significant )?Motif ID (\d+) \(")
TITLES = ("Motif ID", "Motif name", "# of overlap", "Similarity score")


def jaspar(rng, names, families):
    """Motifs of a few families, so that many of them match, on either strand and with other ends."""
    text = ""
    for name in names:
        columns = [[value + rng.choice((0, 0, 1)) for value in column] for column in rng.choice(families)]
        columns = columns[rng.randrange(3):]
        if rng.random() < 0.5:
            columns = [column[::-1] for column in reversed(columns)]
        rows = "".join(f"{base} [ {' '.join(str(column[n]) for column in columns)} ]\n" for n, base in enumerate("ACGT"))
        text += f">{name}\n{rows}"
    return text


def random_family(rng, columns):
    """A motif with one strong base in each column."""
    return [rng.sample((12, rng.choice((0, 9)), 1, 0), 4) for _ in range(columns)]


def printed_matches(report, against_collection):
    """(list, query number, target name, overlap, score text) of every match that a text report shows."""
    section, owner, found = None, None, []
    lines = report.decode().split("\n")
    for number, line in enumerate(lines):
        if line.startswith("*"):
            title = line.strip("*").strip()
            owner_found = OWNER.search(line)
            if owner_found:
                owner = int(owner_found.group(1))
            for words, name in SECTIONS.items():
                if words in title and not owner_found:
                    section = name
        if "# of overlap" in line and "Matching format of first motif" in line:
            values = {title: lines[number + 1][line.index(title):].split()[0] for title in TITLES}
            found.append((against_collection or section, owner, values["Motif name"], int(values["# of overlap"]),
                          values["Similarity score"]))
    return found


def output(*command):
    """What a command prints."""
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stderr
    return done.stdout


def r(script, *arguments):
    """The output of an R script."""
    return output("Rscript", "-e", script, *arguments)


def debian_python(script, *arguments):
    """What a script prints as JSON that needs Debian's packages, which another Python may not see."""
    return json.loads(output("/usr/bin/python3", "-c", "import json, sys\n" + script, *arguments))


class Tables(CompanionTest):
    """One job with all that can be written; the tests look at its files."""

    def setUp(self):
        super().setUp()
        rng = random.Random(11)
        families = [random_family(rng, columns) for columns in (6, 8, 9, 11, 14)]
        for name in ("one", "two", "three"):
            write(self.path(name + ".jaspar"),
                  jaspar(rng, [f"{name}{n} second{n}" for n in range(1, 9)], families))
        write(self.path("known.jaspar"), jaspar(rng, [f"K{n}" for n in range(1, 21)], families))

    def whole_job(self, *options, folder="job"):
        """Runs the job; answers its folder."""
        return self.job("one.jaspar", "the second=two.jaspar", "three.jaspar", "--collection", "known.jaspar",
                        "--cutoff", "0.75", *options, folder=folder)

    def check_printed(self, rows, printed):
        """Each printed match is one row with the same numbers, and each row that says so is printed."""
        rows = [row for row in rows if row["list"] in {match[0] for match in printed}]
        found = []
        for name, owner, target, overlap, score in printed:
            same = [row for row in rows if (row["list"], row["query_number_1based"], row["target_report_name"])
                    == (name, str(owner), target)]
            self.assertEqual(len(same), 1, (name, owner, target))
            self.assertEqual(int(same[0]["overlap"]), overlap)
            value = float(same[0]["combined_score"])
            self.assertIn(float(score), (float(f"{value:g}"), float(f"{value:.6f}")))
            found.append(same[0])
        self.assertEqual(found, [row for row in rows if row["in_report"] == "yes"])

    def test_each_printed_match_is_in_the_table_once(self):
        job = self.whole_job()
        rows = table(os.path.join(job, "matches.tsv"))
        for name, against in (("", None), ("_Database_Matching", "collection"),
                              ("_Database_Matching_Global_Matching", "collection_global"),
                              ("_Global_Matching", None)):
            path, = glob.glob(os.path.join(job, "result", f"J_*_Results{name}.txt"))
            printed = printed_matches(read(path), against)
            self.assertGreater(len(printed), 20, name)
            self.check_printed(rows, printed)
        self.assertEqual({row["list"] for row in rows},
                         {"top_global", "significant", "each_motif", "collection", "collection_global",
                          "by_significance", "collection_by_significance"})
        self.assertIn("no", {row["in_report"] for row in rows})

    def test_matches_across_data_sets_alone(self):
        job = self.whole_job("--type", "global-only")
        rows = table(os.path.join(job, "matches.tsv"))
        self.assertEqual({row["list"] for row in rows}, {"top_global", "collection_global", "by_significance",
                                                        "collection_by_significance"})

    def test_json_is_the_table(self):
        job = self.whole_job()
        rows = table(os.path.join(job, "matches.tsv"))
        with open(os.path.join(job, "matches.json"), encoding="utf-8") as file:
            objects = json.load(file)
        self.assertEqual([list(each) for each in objects], [list(row) for row in rows])
        for each, row in zip(objects, rows):
            for name, value in each.items():
                if value is None:
                    self.assertEqual(row[name], "", name)
                else:
                    self.assertEqual(value, type(value)(row[name]), name)

    def test_threads_do_not_change_the_tables(self):
        first = self.whole_job("--threads", "1", "--merge", folder="first")
        second = self.whole_job("--threads", "2", "--merge", folder="second")
        for name in ("matches.tsv", "matches.json", "motifs.tsv", "skipped.tsv", "combined_motifs.tsv",
                     "combined_motifs.meme", "combined_motifs.jaspar", "combined_motifs.transfac"):
            self.assertEqual(read(os.path.join(first, name)), read(os.path.join(second, name)), name)

    def test_combined_motifs_are_read_by_biopython(self):
        job = self.whole_job("--merge")
        members = table(os.path.join(job, "combined_motifs.tsv"))
        lengths = {row["combined_id"]: int(row["combined_length"]) for row in members
                   if row["merged"] == "yes" and row["step_0based"] != "0"}
        self.assertGreater(len(lengths), 20)
        found = debian_python(
            "from Bio import motifs\n"
            "def of(layout, name, **options):\n"
            "    with open(sys.argv[1] + '.' + name) as file:\n"
            "        return motifs.parse(file, layout, **options)\n"
            "def sums(motif):\n"
            "    return [sum(values) for values in zip(*(motif.pwm[base] for base in 'ACGT'))]\n"
            "print(json.dumps({\n"
            "    'meme': [(each.name.split()[0], sums(each)) for each in of('minimal', 'meme')],\n"
            "    'jaspar': [(each.matrix_id, sums(each)) for each in of('jaspar', 'jaspar')],\n"
            "    'transfac': [(each['AC'], sums(each)) for each in of('transfac', 'transfac', strict=False)]}))",
            os.path.join(job, "combined_motifs"))
        for layout, each in found.items():
            self.assertEqual({name: len(sums) for name, sums in each}, lengths, layout)
            self.assertEqual(len(each), len(lengths), layout)
            for _, sums in each:
                for total in sums:
                    self.assertAlmostEqual(total, 1)

    def test_tables_are_read_by_r_and_csv(self):
        write(self.path("odd.jaspar"), '>odd"name \'quoted\'#\nA 9 0 0 9\nC 0 9 0 0\nG 0 0 9 0\nT 0 0 0 9\n')
        job = self.whole_job("odd.jaspar", "--merge")
        for name in ("matches.tsv", "motifs.tsv", "combined_motifs.tsv"):
            path = os.path.join(job, name)
            rows = table(path)
            with open(path, encoding="utf-8", newline="") as file:
                self.assertEqual(list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE)), rows)
            script = ('t <- read.delim(commandArgs(TRUE)[1], quote = "", na.strings = "", colClasses = "character");'
                      't[is.na(t)] <- "";'
                      'write.table(t, sep = "\\t", quote = FALSE, row.names = FALSE)')
            self.assertEqual(r(script, path).encode(), read(path), name)

    def check_tree(self, job, newick, distances, letter):
        """The tree that ape reads is the clustering of the distance table, and its leaves are the motifs."""
        script = ('suppressMessages(library(ape)); a <- commandArgs(TRUE); t <- read.tree(a[1]);'
                  'tb <- as.matrix(read.csv(a[2], row.names = 1)[, seq_along(t$tip.label)]);'
                  'h <- as.matrix(cophenetic(hclust(as.dist(tb))));'
                  'p <- cophenetic(t)[rownames(h), rownames(h)];'
                  'cat(max(abs(p - h)), max(h), sort(t$tip.label), sep = "\\n")')
        error, height, *leaves = r(script, os.path.join(job, newick),
                                   os.path.join(job, "result", distances)).split()
        self.assertLess(float(error), 1e-9)
        self.assertGreater(float(height), 0)
        rows = table(os.path.join(job, "motifs.tsv"))
        self.assertEqual(set(leaves), {f"{letter}{row['motif_number_1based']}_{row['report_name']}" for row in rows})

    def test_trees_are_those_of_the_distance_tables(self):
        job = self.whole_job("--tree")
        self.check_tree(job, "tree.nwk", "Distance_Matrix.csv", "I")
        self.check_tree(job, "tree_global.nwk", "Global_Matching_Distance_Matrix.csv", "G")
        self.assertFalse(os.path.exists(os.path.join(job, "tree.png")))

    def test_few_motifs_have_a_picture_with_whole_labels(self):
        rng = random.Random(5)
        names = ["short", "W" * 60, "g_y" * 9]
        write(self.path("few.jaspar"), jaspar(rng, names, [random_family(rng, 9)]))
        job = self.job("few.jaspar", "--tree")
        self.check_tree(job, "tree.nwk", "Distance_Matrix.csv", "I")
        darkest, *edges = debian_python(
            "from PIL import Image\n"
            "picture = Image.open(sys.argv[1]).convert('L')\n"
            "width, height = picture.size\n"
            "boxes = [(0, 0, width, height), (0, 0, width, 1), (0, 0, 1, height), (0, height - 1, width, height),\n"
            "         (width - 1, 0, width, height)]\n"
            "print(json.dumps([picture.crop(box).getextrema()[0] for box in boxes]))",
            os.path.join(job, "tree.png"))
        self.assertLess(darkest, 50, "nothing is drawn")
        self.assertEqual(edges, [255] * 4, "something reaches the edge")

    def test_a_job_without_r_says_so(self):
        write(self.path("bin", "Rscript"), "#!/bin/sh\nexit 1\n")
        os.chmod(self.path("bin", "Rscript"), 0o755)
        done = self.companion("run", "-o", "job", "one.jaspar", "--tree",
                              env={"PATH": self.path("bin") + ":" + os.environ["PATH"]})
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        self.assertIn(b"tree.nwk and tree.png could not be written", done.stderr)
        record = json.loads(read(self.path("job", "job.json")))
        self.assertEqual((record["status"], len(record["notes"])), ("complete", 1))

    def test_the_record_counts_and_lists(self):
        job = self.whole_job("--merge")
        record = json.loads(read(os.path.join(job, "job.json")))
        rows = table(os.path.join(job, "matches.tsv"))
        for name, count in record["counts"]["matches"].items():
            self.assertEqual(count, sum(row["list"] == name for row in rows), name)
        self.assertEqual([each["dataset"] for each in record["datasets"]], ["one", "the second", "three"])
        self.assertEqual(record["counts"]["motifs"], 24)
        for each in record["files"]:
            self.assertEqual(os.path.getsize(os.path.join(job, each["file"])), each["bytes"], each["file"])
        for each in record["inputs"]:
            done = subprocess.run(["sha256sum", self.path(each["file"])], capture_output=True, text=True, check=True)
            self.assertEqual(each["sha256"], done.stdout.split()[0])
        self.assertEqual({each["file"] for each in record["files"]}, set(self.files_of(job)) - {"job.json"})

    @staticmethod
    def files_of(job):
        """All regular files below the job folder."""
        return [os.path.relpath(os.path.join(top, name), job) for top, _, names in os.walk(job) for name in names
                if not os.path.islink(os.path.join(top, name))]


if __name__ == "__main__":
    unittest.main()
