"""Reference collections: every public layout comes out right, and bad files change nothing."""
import os
import unittest

from script_project import ScriptTest, read, write

FILES = {"jasparAll": "jaspar/jaspar_pfm_all.txt", "uniprobeMouse": "uniprobe/uniprobe_mouse.txt",
         "transfac": "transfac/transfac.txt"}

# The same two motifs in every layout: (id, name, positions as A, C, G, T).
TWO = [("M1", "one", [[1.0, 2.0, 3.0, 4.0], [0.5, 0.0, 0.25, 0.25]]), ("M2", "two", [[0.0, 0.0, 1.0, 0.0]])]

LAYOUTS = {
    "jaspar with brackets and empty lines":
        ">M1 one\nA [ 1 0.5 ]\nC [ 2 0 ]\nG [ 3 0.25 ]\nT [ 4 0.25 ]\n\n"
        ">M2 two\nA [ 0 ]\nC [ 0 ]\nG [ 1 ]\nT [ 0 ]\n\n",
    "jaspar with tabs, touching brackets, no empty lines, no last line end":
        ">M1\tone\nA  [1 0.5]\nC  [ 2 0]\nG  [3 0.25 ]\nT  [4 0.25]\n>M2\ttwo\nA[0]\nC[0]\nG[1]\nT[0]",
    "jaspar without brackets":
        ">M1 one\nA 1 0.5\nC 2 0\nG 3 0.25\nT 4 0.25\n>M2 two\nA | 0\nC | 0\nG | 1\nT | 0\n",
    "jaspar rows without letters":
        ">M1 one\n1 0.5\n2 0\n3 0.25\n4 0.25\n\n>M2 two\n0\n0\n1\n0\n",
    "jaspar with the line ends of another system, rows out of order":
        "\ufeff>M1 one\r\nT [ 4 0.25 ]\r\nG [ 3 0.25 ]\r\nC [ 2 0 ]\r\nA [ 1 0.5 ]\r\n>M2 two\r\n0\r\n0\r\n1\r\n0\r\n",
    "transfac":
        "VV  head\nXX\n//\nAC  M1\nXX\nID  V$ONE\nXX\nNA  one\nXX\nP0      A      C      G      T\n"
        "01      1      2      3      4      T\n02    0.5      0   0.25   0.25      A\nXX\nCC  text\nXX\n//\n"
        "AC  M2\nNA  two\nP0 A C G T\n1 0 0 1 0\n//\n",
    "transfac with tabs, no closing lines, columns in another order":
        "AC\tM1\nID\tone\nPO\tT\tG\tC\tA\n01\t4\t3\t2\t1\n02\t0.25\t0.25\t0\t0.5\n"
        "AC M2\nDE two\nP0 A C G T\n01 0 0 1 0 G",
    "transfac without heads of positions":
        "AC  M1\nNA  one\nXX\n01\t1\t2\t3\t4\tT\n02\t0.5\t0\t0.25\t0.25\tW\nXX\n\n"
        "AC  M2\nNA  two\n01\t0\t0\t1\t0\tG\nXX\n",
    "meme":
        "MEME version 4\n\nALPHABET= ACGT\n\nstrands: + -\n\n"
        "Background letter frequencies\nA 0.3 C 0.2 G 0.2 T 0.3\n\n"
        "MOTIF M1 one\nletter-probability matrix: alength= 4 w= 2 nsites= 20 E= 0\n"
        " 1 2 3 4\n 5.0e-1 0e-9 0.25 2.5E-01\n"
        "URL http://example.org/M1\n\nMOTIF M2 two\n\nletter-probability matrix: alength= 4 w= 1\n0 0 1 0\n",
    "uniprobe tables":
        "UP00001\tProtein: one\n\nA:\t1\t0.5\nC:\t2\t0\nG:\t3\t0.25\nT:\t4\t0.25\n\n"
        "UP00002\tGene: two\tMotif: x\nA:\t0\nC:\t0\nG:\t1\nT:\t0\n",
}


def number_rows(tokens_by_base):
    """Positions of four rows of tokens."""
    return [[float(token) for token in position] for position in zip(*tokens_by_base)]


def installed_jaspar(text):
    """What the program makes of a Jaspar or UniPROBE collection: (id, name, positions), and the taxon."""
    motifs, taxa, rows = [], [], []
    for line in text.splitlines():
        tokens = line.split()
        if line.startswith(">"):
            identity, name, *taxon = tokens
            taxa.append(" ".join(taxon))
        elif tokens:
            assert tokens[0] == "ACGT"[len(rows)] and tokens[1] == "[" and tokens[-1] == "]", line
            rows.append(tokens[2:-1])
            if tokens[0] == "T":
                motifs.append((identity[1:], name, number_rows(rows)))
                rows = []
    return motifs, taxa


def installed_transfac(text):
    """What the program makes of a TRANSFAC collection: (id, name, positions), and the taxon."""
    motifs, taxa = [], []
    for entry in text.split("//\n")[:-1]:
        fields, positions = {}, []
        for line in entry.splitlines():
            tag, _, value = line.partition("  ")
            fields.setdefault(tag, value)
            if tag.isdigit():
                positions.append([float(token) for token in value.split()])
        motifs.append((fields["AC"], fields["NA"], positions))
        taxa.append(fields.get("OS", ""))
    return motifs, taxa


def installed(name, text):
    """What the program makes of the collection of that name."""
    return (installed_transfac if name == "transfac" else installed_jaspar)(text)


class InstallCollection(ScriptTest):

    def target(self, name, base="project"):
        """Where a collection goes."""
        return self.path(base, "databases", FILES[name])

    def install(self, name, text, *options, encoding="utf-8"):
        """Installs a file with that text; answers the finished process."""
        with open(self.path("download.txt"), "wb") as download:
            download.write(text.encode(encoding))
        return self.script("install-collection.sh", name, self.path("download.txt"), *options)

    def test_every_layout_into_every_kind_of_collection(self):
        for layout, text in LAYOUTS.items():
            for name in FILES:
                with self.subTest(layout=layout, name=name):
                    done = self.install(name, text)
                    self.assertEqual(done.returncode, 0, done.stderr)
                    self.assertIn(f"{name}: 2 motifs in ", done.stdout)
                    motifs, _ = installed(name, read(self.target(name)))
                    ids = ["UP00001", "UP00002"] if layout == "uniprobe tables" else ["M1", "M2"]
                    self.assertEqual(motifs, [(ids[i], *TWO[i][1:]) for i in range(2)])

    def test_installing_the_installed_file_changes_nothing(self):
        for name in FILES:
            with self.subTest(name):
                self.install(name, LAYOUTS["transfac"])
                first = read(self.target(name))
                self.assertEqual(self.install(name, first).returncode, 0)
                self.assertEqual(read(self.target(name)), first)

    def test_exponents_are_written_out(self):
        self.install("jasparAll", LAYOUTS["meme"])
        self.assertTrue(read(self.target("jasparAll")).startswith(
            ">M1 one\nA [ 1 0.50 ]\nC [ 2    0 ]\nG [ 3 0.25 ]\nT [ 4 0.25 ]\n\n>M2 "))

    def test_keeps_the_taxon(self):
        jaspar = ">M1 one Mus musculus\n1\n0\n0\n0\n"
        transfac = "AC  M1\nBF  factor; Species: Mus musculus.\nBF  other; Species: Homo.\nP0 A C G T\n01 1 0 0 0\n//\n"
        for name in ("jasparAll", "transfac"):
            for text in (jaspar, transfac):
                with self.subTest(name=name, text=text):
                    self.assertEqual(self.install(name, text).returncode, 0)
                    self.assertEqual(installed(name, read(self.target(name)))[1], ["Mus musculus"])

    def test_a_name_with_blanks_stays_one_word_before_the_taxon(self):
        text = "AC  M1\nNA  Sox 2\nOS  Mus musculus\nP0 A C G T\n01 1 0 0 0\n//\n"
        self.install("jasparAll", text)
        self.assertTrue(read(self.target("jasparAll")).startswith(">M1 Sox_2 Mus musculus\n"))

    def test_equal_ids_are_both_kept(self):
        self.install("uniprobeMouse", ">UP1 a\n1\n0\n0\n0\n>UP1 a\n0\n1\n0\n0\n")
        self.assertEqual(len(installed_jaspar(read(self.target("uniprobeMouse")))[0]), 2)

    def test_uniprobe_energies_and_reverse_complements_are_left_out(self):
        table = "A:\t{0}\nC:\t0\nG:\t0\nT:\t1\n\n"
        text = ("Protein: Sox4\tEnrichment Score: 0.4\n\nEnergy matrix for enoLOGOS\n\nPO\t1\n" + table.format("-3") +
                "Reverse complement matrix for enoLOGOS\n\nPO\t1\n" + table.format("2") +
                "Probability matrix\n\n" + table.format("3"))
        self.assertEqual(self.install("uniprobeMouse", text).returncode, 0)
        self.assertEqual(installed_jaspar(read(self.target("uniprobeMouse")))[0], [("Sox4", "Sox4", [[3, 0, 0, 1]])])

    def test_a_table_without_a_name_takes_the_files(self):
        self.install("uniprobeMouse", "A: 1\nC: 0\nG: 0\nT: 0\n")
        self.assertEqual(installed_jaspar(read(self.target("uniprobeMouse")))[0][0][0], "download")

    def test_says_which_positions_have_no_counts(self):
        done = self.install("jasparAll", ">M1 one\n0 1\n0 0\n0 0\n0 0\n")
        self.assertEqual(done.returncode, 0)
        self.assertIn("M1: fewer than 4 columns, so it matches nothing; no counts at position 1", done.stderr)

    def test_reads_latin_1(self):
        self.assertEqual(self.install("jasparAll", ">M1 Kr\u00fcppel\n1\n0\n0\n0\n", encoding="latin-1").returncode, 0)
        self.assertIn("Kr\u00fcppel", read(self.target("jasparAll")))

    def test_bad_files_are_refused_and_the_old_collection_stays(self):
        bad = {
            "a web page, not a file of motifs": "<!DOCTYPE html>\n<p>Not found</p>\n",
            "not a text file": ">M1 one\n1\n\0\n",
            "no motif in it": "MEME version 4\n",
            "3 rows of values, not four": ">M1 one\n1\n0\n0\n>M2 two\n1\n0\n0\n0\n",
            "5 rows of values, not four": ">M1 one\n1\n0\n0\n0\n0\n",
            "rows A, C, G, G, not A, C, G, T": ">M1 one\nA 1\nC 0\nG 0\nG 0\n",
            "rows of different length (2, 1, 2, 2)": ">M1 one\n1 1\n0\n0 0\n0 0\n",
            "a row without values": ">M1 one\nA [ ]\nC [ ]\nG [ ]\nT [ ]\n",
            '"x" is no number': ">M1 one\n1\nx\n0\n0\n",
            '"nan" is no number': ">M1 one\n1\nnan\n0\n0\n",
            "-0.5 is below 0": ">M1 one\n1\n-0.5\n0\n0\n",
            "1e999999999 is no count": ">M1 one\n1\n1e999999999\n0\n0\n",
            "values before the first header line": "1\n0\n0\n0\n>M1 one\n1\n0\n0\n0\n",
            "a header without an id": ">\n1\n0\n0\n0\n",
            "2 rows, but w= 3": "MOTIF M1\nletter-probability matrix: alength= 4 w= 3\n1 0 0 0\n1 0 0 0\n",
            "no letter-probability matrix": "MEME version 4\nMOTIF M1\nMOTIF M2\n",
            "the alphabet is not ACGT": "MEME version 4\nALPHABET= ACDEFGHIKLMNPQRSTVWY\n",
            "a position needs four values, not 3": "AC  M1\nP0 A C G T\n01 1 0 0\n//\n",
            "no position lines": "AC  M1\nP0 A C G T\n//\n",
            "an entry without AC, ID, NA and DE": "P0 A C G T\n01 1 0 0 0\n//\n",
        }
        self.install("jasparAll", LAYOUTS["meme"])
        before = read(self.target("jasparAll"))
        for message, text in bad.items():
            with self.subTest(message):
                done = self.install("jasparAll", text)
                self.assertEqual(done.returncode, 1)
                self.assertIn(message, done.stderr)
                self.assertNotIn("Traceback", done.stderr)
                self.assertEqual(read(self.target("jasparAll")), before)
                self.assertEqual(os.listdir(os.path.dirname(self.target("jasparAll"))), ["jaspar_pfm_all.txt"])

    def test_into_a_job_folder_alone(self):
        """The job folder's link to the project's collection is replaced, the project's file is not."""
        self.install("jasparAll", LAYOUTS["meme"])
        before = read(self.target("jasparAll"))
        self.script("new-job.sh", self.path("job"))
        done = self.install("jasparAll", ">M9 nine\n1\n0\n0\n0\n", "--to", self.path("job"))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(read(self.target("jasparAll", "job")).startswith(">M9 nine\n"))
        self.assertEqual(read(self.target("jasparAll")), before)

    def test_the_collection_can_be_read_by_all(self):
        self.install("jasparAll", LAYOUTS["meme"])
        self.assertEqual(os.stat(self.target("jasparAll")).st_mode & 0o777, 0o644)

    def test_refuses_wrong_use(self):
        write(self.path("download.txt"), LAYOUTS["meme"])
        for arguments, status, message in (
                ([], 2, "NAME is required"),
                (["jasparAll"], 2, "FILE is required"),
                (["jasparAll", "download.txt", "more"], 2, "more"),
                (["jasparAll", "download.txt", "--from", "x"], 2, "--from"),
                (["jasparAll", "download.txt", "--to"], 2, "--to"),
                (["jaspar", "download.txt"], 1, "no collection is named jaspar"),
                (["jasparAll", "absent.txt"], 1, "absent.txt"),
                (["jasparAll", "download.txt", "--to", "absent"], 1, "there is no folder absent")):
            with self.subTest(arguments):
                done = self.script("install-collection.sh", *arguments)
                self.assertEqual(done.returncode, status)
                self.assertIn(message, done.stderr)


if __name__ == "__main__":
    unittest.main()
