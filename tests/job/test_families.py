"""Families of motifs: whole jobs with --families, against R, biopython and plain sums in Python."""
import collections
import json
import os
import random
import re
import resource
import subprocess
import unittest

from companion import COMPANION, LIMIT, CompanionTest, read, reports, table, write
from test_tables import debian_python, jaspar, r, random_family

TABLES = ("families.tsv", "family_members.tsv", "family_motifs.meme", "family_motifs.jaspar",
          "family_motifs.transfac", "tree.nwk")


def matrices(path):
    """The motifs of a Jaspar file, name -> list of columns of shares."""
    found, rows = {}, []
    for line in read(path).decode().split("\n"):
        if line.startswith(">"):
            rows = found[line[1:].split()[0]] = []
        elif line:
            rows.append([float(value) for value in re.sub(r"^[ACGT]|[][]", " ", line).split()])
    return {name: [[value / sum(column) for value in column] for column in zip(*rows)]
            for name, rows in found.items()}


def strand(columns, orientation):
    """The columns, or those of the true reverse complement."""
    return columns if orientation == "forward" else [column[::-1] for column in reversed(columns)]


class Families(CompanionTest):
    """One job of related motifs on both strands, with equal ones among them."""

    def setUp(self):
        super().setUp()
        rng = random.Random(11)
        families = [random_family(rng, 12) for _ in range(7)]
        text = jaspar(rng, [f"m{n}" for n in range(60)], families)
        first = text[text.index("\n") + 1:text.index(">", 1)]
        write(self.path("motifs.jaspar"), text + f">again\n{first}>short\nA [ 1 2 ]\nC [ 3 0 ]\nG [ 0 1 ]\nT [ 0 0 ]\n")

    def families_job(self, *options, folder="job", threads="2"):
        """A job with families; answers its folder."""
        return self.job("motifs.jaspar", "--families", "--threads", threads, "-q", *options, folder=folder)

    def members(self, job):
        """family -> its rows of family_members.tsv."""
        found = collections.defaultdict(list)
        for row in table(os.path.join(job, "family_members.tsv")):
            found[row["family"]].append(row)
        return found

    def test_every_motif_is_in_exactly_one_family(self):
        job = self.families_job()
        members = self.members(job)
        numbers = sorted(int(row["motif_number_1based"]) for rows in members.values() for row in rows)
        self.assertEqual(numbers, list(range(1, 63)))
        rows = table(os.path.join(job, "families.tsv"))
        self.assertEqual([row["family"] for row in rows], [f"family_{n + 1}" for n in range(len(rows))])
        self.assertEqual([row["family"] for row in rows], list(members))
        sizes = [int(row["size"]) for row in rows]
        self.assertEqual(sizes, sorted(sizes, reverse=True))
        self.assertGreater(sizes[0], 3)
        for row in rows:
            names = [member["motif_report_name"] for member in members[row["family"]]]
            self.assertEqual(row["members"], " ".join(names))
            self.assertEqual(int(row["size"]), len(names))
            self.assertLessEqual(float(row["cut_height"]), 0.5)
            if len(names) == 1:
                self.assertEqual((row["cut_height"], members[row["family"]][0]["distance"]), ("0", "0"))
        of_name = {row["motif_id"]: row for rows in members.values() for row in rows}
        self.assertEqual(of_name["again"]["family"], of_name["m0"]["family"])
        self.assertEqual(of_name["again"]["offset_0based"], of_name["m0"]["offset_0based"])
        self.assertEqual(len(members[of_name["short"]["family"]]), 1)
        record = json.loads(read(os.path.join(job, "job.json")))
        self.assertTrue(any("fewer than four columns" in note for note in record["notes"]))
        self.assertEqual(record["settings"]["families"]["linkage"], "average")
        self.assertIn("families", [stage["stage"] for stage in record["stages"]])

    def test_offsets_reproduce_the_common_motifs(self):
        for flanks in ("0.3", "0.8", "0"):
            job = self.families_job("--family-flanks", flanks, folder="job" + flanks)
            sources = matrices(self.path("motifs.jaspar"))
            commons = matrices(os.path.join(job, "family_motifs.jaspar"))
            inner = 0
            for family, rows in self.members(job).items():
                columns = collections.defaultdict(list)
                for row in rows:
                    placed = strand(sources[row["motif_id"]], row["orientation"])
                    for k, column in enumerate(placed):
                        columns[int(row["offset_0based"]) + k].append(column)
                common = commons[family]
                for k, column in enumerate(common):
                    for base in range(4):
                        mean = sum(values[base] for values in columns[k]) / len(columns[k])
                        self.assertAlmostEqual(column[base], mean, 9)
                wanted = min(float(flanks) * len(rows), max(map(len, columns.values())))
                kept = [k for k, values in columns.items() if len(values) >= wanted - 1e-9]
                self.assertEqual((min(kept), max(kept)), (0, len(common) - 1))
                inner += len(columns) > len(common)
            self.assertEqual(inner > 0, flanks != "0")

    def test_the_tree_cut_at_the_height_gives_the_families(self):
        for linkage, cut in (("average", "0.5"), ("complete", "0.6"), ("single", "0.25")):
            job = self.families_job("--family-linkage", linkage, "--family-cut", cut, folder=linkage)
            members = self.members(job)
            expected = sorted(sorted(int(row["motif_number_1based"]) for row in rows) for rows in members.values())
            script = """
import re
from Bio import Phylo
tree = Phylo.read(sys.argv[1], "newick")
cut = float(sys.argv[2])
depth = max(tree.depths().values())
found, names = [], {}
def height(node, above):
    return 2 * (depth - above)
def numbers(node):
    return sorted(int(re.match(r"I(\\d+)_", leaf.name).group(1)) for leaf in node.get_terminals())
def walk(node, above):
    above += node.branch_length or 0
    if node.is_terminal() or height(node, above) <= cut + 1e-9:
        found.append(numbers(node))
        return
    for child in node.clades: walk(child, above)
walk(tree.root, 0)
for node in tree.get_nonterminals():
    if node.name: names[node.name] = numbers(node)
print(json.dumps([sorted(found), names]))
"""
            found, names = debian_python(script, os.path.join(job, "tree.nwk"), cut)
            self.assertEqual(found, expected)
            self.assertEqual(names, {family: sorted(int(row["motif_number_1based"]) for row in rows)
                                     for family, rows in members.items() if len(rows) > 1})
            self.assertGreater(len(names), 2)

    def test_r_builds_the_same_tree_of_the_same_distances(self):
        # With few motifs the lists by significance hold the p-values of all pairs, so the distances follow from them.
        rng = random.Random(5)
        sources = [[[rng.choice((0, 2, 9, 40)) + rng.randrange(8) for _ in range(4)] for _ in range(12)]
                   for _ in range(8)]
        text = ""
        for n in range(45):
            columns = [[value + rng.randrange(6) for value in column] for column in rng.choice(sources)]
            columns = columns[rng.randrange(4):12 - rng.randrange(3)]
            rows = zip(*strand(columns, rng.choice(("forward", "reverse complement"))))
            text += f">m{n}\n" + "".join(f"{base} [ {' '.join(map(str, row))} ]\n" for base, row in zip("ACGT", rows))
        write(self.path("fine.jaspar"), text)
        script = """
            suppressMessages(library(ape)); a <- commandArgs(TRUE)
            tree <- cophenetic(read.tree(a[1])); distances <- as.matrix(read.csv(a[2], header = FALSE))
            numbers <- as.integer(sub("I([0-9]+)_.*", "\\\\1", rownames(tree)))
            other <- as.matrix(cophenetic(hclust(as.dist(distances), a[3])))[numbers, numbers]
            cat(max(abs(tree - other)), max(tree), length(unique(round(as.vector(tree), 9))))"""
        for linkage in ("average", "complete", "single"):
            job = self.job("fine.jaspar", "--families", "--family-linkage", linkage, "--best", "50", "-q",
                           folder="job-" + linkage)
            distances = [[0.0] * 45 for _ in range(45)]
            pairs = [row for row in table(os.path.join(job, "matches.tsv")) if row["list"] == "by_significance"]
            self.assertEqual(len(pairs), 45 * 44)
            for row in pairs:
                one, other = int(row["query_number_1based"]) - 1, int(row["target_number_1based"]) - 1
                for a, b in ((one, other), (other, one)):
                    distances[a][b] += float(row["p_value"]) ** 0.1 / 2
            write(self.path("distances.csv"), "".join(",".join(map(repr, row)) + "\n" for row in distances))
            furthest, height, heights = map(float, r(script, os.path.join(job, "tree.nwk"),
                                                     self.path("distances.csv"), linkage).split())
            self.assertLess(furthest, 1e-12)
            self.assertGreater(height, 0.1)
            self.assertGreater(heights, 40)

    def test_every_number_of_threads_gives_the_same_bytes(self):
        jobs = [self.families_job(folder="threads" + count, threads=count) for count in "123"]
        for name in TABLES:
            for other in jobs[1:]:
                self.assertEqual(read(os.path.join(other, name)), read(os.path.join(jobs[0], name)), name)

    def test_reports_and_tables_of_the_job_stay_as_they_are(self):
        options = ("motifs.jaspar", "--tree", "--merge", "--threads", "2", "-q")
        plain, families = self.path("plain"), self.path("job")
        os.rename(self.job(*options), plain)  # the reports name the folder
        self.job(*options, "--families")
        self.assertEqual(reports(os.path.join(plain, "result")), reports(os.path.join(families, "result")))
        for name in ("matches.tsv", "matches.json", "motifs.tsv", "skipped.tsv", "combined_motifs.tsv"):
            self.assertEqual(read(os.path.join(plain, name)), read(os.path.join(families, name)), name)
        self.assertEqual(read(os.path.join(plain, "tree.nwk")), read(os.path.join(families, "tree_matching.nwk")))
        for name in set(TABLES) - {"tree.nwk"}:
            self.assertFalse(os.path.exists(os.path.join(plain, name)), name)

    def test_motif_files_are_read_by_other_programs(self):
        job = self.families_job()
        script = """
from Bio import motifs
found = {}
for layout, path in zip(("minimal", "jaspar", "transfac"), sys.argv[1:]):
    with open(path) as file: read = motifs.parse(file, layout)
    found[layout] = [len(motif) if layout != "transfac" else motif.length for motif in read]
print(json.dumps(found))
"""
        found = debian_python(script, *(os.path.join(job, "family_motifs." + name)
                                        for name in ("meme", "jaspar", "transfac")))
        lengths = [int(row["length"]) for row in table(os.path.join(job, "families.tsv"))]
        self.assertEqual(found, {"minimal": lengths, "jaspar": lengths, "transfac": lengths})

    def test_wrong_use(self):
        for options in (("--family-cut", "2", "--families"), ("--family-linkage", "ward", "--families"),
                        ("--family-cut", "0.4"), ("--family-flanks", "-1", "--families")):
            self.assertEqual(self.companion("run", "motifs.jaspar", *options).returncode, 2, options)

    def test_one_motif_is_refused_as_in_every_job(self):
        write(self.path("one.jaspar"), ">a\nA [ 4 0 0 0 ]\nC [ 0 4 0 0 ]\nG [ 0 0 4 0 ]\nT [ 0 0 0 4 ]\n")
        done = self.companion("run", "one.jaspar", "--families", "-o", "job")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"at least two motifs", done.stderr)

    def test_too_little_memory_is_refused_before_anything_is_compared(self):
        rng = random.Random(6)
        rows = ("".join(f"{base} [ {' '.join(str(rng.randrange(90)) for _ in range(5))} ]\n" for base in "ACGT")
                for _ in range(12000))
        write(self.path("many.jaspar"), "".join(f">m{n}\n{text}" for n, text in enumerate(rows)))
        limit = 500 * 1000 * 1000  # the table takes 576 MB
        done = subprocess.run([COMPANION, "run", "many.jaspar", "--families", "-o", "job", "--threads", "1"],
                              cwd=self.top, capture_output=True, timeout=LIMIT, check=False,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr.decode(), r"the distances of 12000 different motifs take 576 MB for the families, "
                                               r"and only \d+ MB of memory are left")
        self.assertFalse(os.path.exists(self.path("job")))

    def test_equal_flat_short_and_long_motifs(self):
        rng = random.Random(4)
        flat = "".join(f"{base} [ {'5 ' * 8}]\n" for base in "ACGT")
        long_rows = [[rng.randrange(1, 30) for _ in range(140)] for _ in range(4)]
        long_text = "".join(f"{base} [ {' '.join(map(str, row))} ]\n" for base, row in zip("ACGT", long_rows))
        for name, text, families in (("flat", "".join(f">f{n}\n{flat}" for n in range(5)), 1),
                                     ("long", f">a\n{long_text}>b\n{long_text}>c\n{flat}", 2),
                                     ("short", ">a\nA [ 3 ]\nC [ 0 ]\nG [ 0 ]\nT [ 1 ]\n"
                                               ">b\nA [ 1 ]\nC [ 0 ]\nG [ 0 ]\nT [ 3 ]\n"
                                               ">c\nA [ 1 ]\nC [ 1 ]\nG [ 0 ]\nT [ 3 ]\n", 2)):
            write(self.path(name), text)
            job = self.job(name, "--families", "-q", folder="job-" + name)
            self.assertEqual(len(table(os.path.join(job, "families.tsv"))), families, name)


if __name__ == "__main__":
    unittest.main()
