"""Motif files of odd bytes, odd kinds and odd names."""
import os
import random
import unittest

from nasty_job import GOOD, MEGABYTE, NastyTest

NOT_OPENED = "Invalid input path or file name.\n"
HIGH_BYTES = bytes(range(0x80, 0x100))


def garbage(seed, count, letters):
    """So many random bytes of these."""
    return bytes(random.Random(seed).choices(letters, k=count))


class OddBytes(NastyTest):
    """Bytes that no motif file holds."""

    def test_garbage_without_line_ends(self):
        """The last line, here the only one, is not read without its line end."""
        self.check_count(0, garbage(1, MEGABYTE, HIGH_BYTES))

    def test_garbage_words_alone(self):
        """Every word alone between empty lines is the name row of an empty motif."""
        words = [garbage(seed, 1000, HIGH_BYTES) + b"\n\n" for seed in range(300)]
        outcome = self.check_count(300, *words)
        self.assertIn(words[299][1:1000], outcome.report("input_motifs.txt"))

    def test_garbage_of_all_bytes(self):
        """The first block opens with three words that are no numbers, so it holds all that follows."""
        self.check_count(0, b"\x80 \x81 \x82\n", garbage(2, 4 * MEGABYTE, bytes(range(0x100))))

    def test_nul_bytes(self):
        """A zero byte is a letter like others: fit for a name, unfit for a sequence."""
        outcome = self.check_count(1, b">n\0ame\nACGT\n\n", b">lost\nAC\0GT\n\n")
        self.assertIn(b"Motif name: n\0ame\n", outcome.report("input_motifs.txt"))

    def test_only_nul_bytes(self):
        """A line of zero bytes is a name row."""
        self.check_count(1, b"\0" * MEGABYTE, b"\n\n")

    def test_nul_in_a_number(self):
        """A number ends at a zero byte, behind a first row that makes the block one of numbers."""
        outcome = self.check_count(1, b"1 1 1 1\n6\0007 2 1 1\n\n")
        self.assertIn(b"0.600000\t0.200000\t0.100000\t0.100000\t\n", outcome.report("input_motifs.txt"))

    def test_carriage_returns(self):
        """Lines may end as on Windows."""
        self.check_count(3, b">a\r\nACG\r\n\r\n>b\r\n1 0 0 0\r\n0 1 0 0\r\n\r\n1 2 3 4\r\n\r\n")

    def test_carriage_returns_alone(self):
        """They end no line, so there is but one line, of one word and then two."""
        self.check_count(0, b">a\rACG\r\r>b\rACG\r\r")

    def test_blanks_of_other_kinds(self):
        """Form feeds and vertical tabs part no words; tabs and blanks do."""
        self.check_count(1, b"1\t1 \t 1\t\t1 \t\r\n\n", b"1\f1 1\v 1 1\n\n")


class OddFiles(NastyTest):
    """Names of files that are none, or none that can be read."""

    def test_folder(self):
        """A folder opens but is no file."""
        os.mkdir(self.path("motifs", "folder.txt"))
        self.check_refused(NOT_OPENED, "folder.txt")

    def test_folder_beside_motifs(self):
        """The run ends, though the other file is good."""
        os.mkdir(self.path("motifs", "folder.txt"))
        self.write("good.txt", GOOD)
        self.check_refused(NOT_OPENED, "good.txt", "folder.txt")

    def test_empty_name(self):
        """An empty name is the input folder itself."""
        self.check_refused(NOT_OPENED, "")

    def test_missing(self):
        """The run ends, though the first file was good."""
        self.write("good.txt", GOOD)
        self.check_refused(NOT_OPENED, "good.txt", "missing.txt")

    def test_empty(self):
        """No line, no motif."""
        self.check_count(0, b"")

    def test_only_line_ends(self):
        """Ten million empty lines."""
        self.check_count(0, b"\n" * 10 * MEGABYTE)

    def test_no_device(self):
        """A device, even the empty one, is no file."""
        os.symlink("/dev/null", self.path("motifs", "null.txt"))
        self.check_refused(NOT_OPENED, "null.txt")

    def test_without_permission(self):
        """What the user may not read ends the run; root may read everything."""
        self.write("closed.txt", GOOD)
        os.chmod(self.path("motifs", "closed.txt"), 0)
        if os.access(self.path("motifs", "closed.txt"), os.R_OK):
            self.assertEqual(self.run_on("closed.txt").counts, {"closed.txt": 2})
        else:
            self.check_refused(NOT_OPENED, "closed.txt")

    def test_long_file_name(self):
        """As long as the file system allows, and one longer."""
        longest = "f" * 251 + ".txt"
        self.write(longest, GOOD)
        self.assertEqual(self.run_on(longest).counts, {longest: 2})
        self.check_refused(NOT_OPENED, "f" + longest)

    def test_same_file_a_hundred_times(self):
        """Every naming counts: two hundred motifs."""
        self.write("good.txt", GOOD)
        outcome = self.run_on(*["good.txt"] * 100, limit=20)
        self.assertEqual(outcome.status, 0)
        self.assertIn(b"\nTotal number of motifs: 200\n", outcome.report("input_motifs.txt"))


class OddNames(NastyTest):
    """Names of motifs that are very long or look like something else."""

    def test_long_names(self):
        """Names are never cut, and the columns of the reports are as wide as the longest."""
        names = [letter * 20000 for letter in (b"x", b"y")]
        outcome = self.check_count(2, *[b">" + name + b"\nACGTACGT\n\n" for name in names])
        for ending in ("input_motifs.txt", "Results.txt"):
            for name in names:
                self.assertIn(name, outcome.report(ending))

    def test_names_like_formats(self):
        """Signs of formats and shells stay as they are."""
        name = b"%s%n%x$(false)`false`;&|<b>\\\"'"
        outcome = self.check_count(2, (b">" + name + b"\nACGTACGT\n\n") * 2)
        self.assertEqual(outcome.report("input_motifs.txt").count(b"Motif name: " + name + b"\n"), 2)

    def test_name_of_one_sign(self):
        """Where nothing is left behind the first sign the name is NA, but a Jaspar block keeps its empty name."""
        outcome = self.check_count(2, b">\nACG\n\n", b">\nA 1\nC 1\nG 1\nT 1\n\n")
        listing = outcome.report("input_motifs.txt")
        self.assertIn(b"Motif ID: 1\tMotif name: NA\n", listing)
        self.assertIn(b"Motif ID: 2\tMotif name: \n", listing)


if __name__ == "__main__":
    unittest.main()
