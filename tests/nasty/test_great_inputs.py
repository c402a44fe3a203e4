"""Motif files that are far too long, wide or many. Great files grow with VARNOLIX_NASTY_SIZE."""
import itertools
import random
import unittest

from nasty_job import MEGABYTE, NastyTest, sized

INSUFFICIENT = "Error: insufficient number of motifs.\n"


def words(count):
    """So many different names of four letters."""
    return itertools.islice(("".join(word) for word in itertools.product("ACGT", repeat=7)), count)


class ManyMotifs(NastyTest):
    """Thousands of motifs in one file."""

    def test_thousands_that_never_match(self):
        """Three columns are fewer than the four that an alignment needs."""
        blocks = "".join(">m%d\nACG\n\n" % number for number in range(3000)).encode()
        outcome = self.check_count(3000, blocks)
        self.assertIn(b"\tMotif ID: 3000\tMotif name: m2999\n", outcome.report("input_motifs.txt"))

    def test_a_thousand_that_match_closely(self):
        """Every two words of seven letters that share six in a row match at 0.9."""
        blocks = "".join(">%s\n%s\n\n" % (word, word) for word in words(1000)).encode()
        outcome = self.check_count(1000, blocks, limit=20)
        self.assertIn(b"Motif name: AAAAAAA", outcome.report("Results.txt"))

    def test_slices_of_an_endless_matrix(self):
        """A block is closed by its 32nd line, which is lost: 3200 lines make 100 motifs of 31 positions."""
        outcome = self.check_count(100, b"0.7 0.1 0.1 0.1\n" * 3200)
        position = b"0.700000\t0.100000\t0.100000\t0.100000\t\n"
        self.assertEqual(outcome.report("input_motifs.txt").count(position), 3100)


class EndlessLines(NastyTest):
    """Lines of ten megabytes."""

    def test_blanks(self):
        """A line of blanks is an empty line, so the blocks around it are two."""
        self.check_count(2, b">a\nACG\n", b" " * 10 * MEGABYTE, b"\n>b\nACG\n\n")

    def test_one_token_of_no_layout(self):
        """A name row alone is an empty motif of that name; here a row that no reader takes stands behind it."""
        self.check_count(0, b"name\n", b"x" * 10 * MEGABYTE, b"\n\n>lost\nACG\n\n")

    def test_row_of_numbers(self):
        """One row of numbers is a vertical matrix, and a row of other than four numbers no position of it."""
        self.check_count(1, b"1 " * 5 * MEGABYTE, b"\n\n")

    def test_one_number(self):
        """Ten million digits are one number, and four of them a position; too great numbers are no shares."""
        digits = b"9" * (10 * MEGABYTE // 4) + b" "
        outcome = self.check_count(1, digits * 4, b"\n", b"1 1 1 1\n\n")
        self.assertIn(b"0.250000\t0.250000\t0.250000\t0.250000\t\n", outcome.report("input_motifs.txt"))

    def test_one_consensus(self):
        """A motif as long as the line; it is printed with every match, so the line is a shorter one."""
        letters = sized(MEGABYTE // 8)
        outcome = self.check_count(1, b">long\n", b"A" * letters, b"\n\n", limit=30)
        in_good = 2         # the first good motif begins and ends with A
        row = b"1.000000\t0.000000\t0.000000\t0.000000\t\n"
        self.assertEqual(outcome.report("input_motifs.txt").count(row), letters + in_good)


class HugeMatrices(NastyTest):
    """Horizontal matrices of 5000 columns, with numbers whose shares are no round ones."""
    columns = 5000

    def block(self, seed):
        """Four rows of random numbers."""
        chance = random.Random(seed)
        rows = [" ".join("%.3f" % chance.uniform(0.001, 1) for _ in range(self.columns)) for _ in range(4)]
        return ("\n".join(rows) + "\n\n").encode()

    def test_one(self):
        """Five thousand positions are read."""
        self.check_count(1, self.block(1))

    def test_unlike_pair(self):
        """Random columns are far from 0.9 alike, wherever the two motifs lie."""
        outcome = self.check_count(2, self.block(1), self.block(2), limit=30)
        self.assertNotIn(b"Top 1 ", outcome.report("Results.txt"))

    def test_equal_pair(self):
        """A motif and itself match over all columns, and best there."""
        outcome = self.check_count(2, self.block(3), self.block(3), limit=30)
        row = r"Original Motif +Original Motif +Forward +1 +5000 +0 +\n"
        self.assertRegex(outcome.report("Results.txt").decode(), row)


class HeldToTheEnd(NastyTest):
    """Blocks that no reader takes grow to the end of the file. Every empty line asks again about the whole block."""

    def check_held(self, first, again):
        """A file of twenty megabytes gives no motif, in seconds."""
        self.write("held.txt", first, again * sized(20 * MEGABYTE // len(again)))
        self.check_refused(INSUFFICIENT, "held.txt", limit=20)

    def test_words(self):
        """Words are no numbers."""
        self.check_held(b"", b"word word word\n")

    def test_words_with_empty_lines(self):
        """An empty line behind every row."""
        self.check_held(b"", b"word word word\n\n")

    def test_numbers_behind_a_word(self):
        """A good row of numbers changes nothing."""
        self.check_held(b"word 1 1 1\n", b"0.1 0.2 0.3 0.4\n\n")

    def test_sequences_of_unlike_lengths(self):
        """Every sequence is looked at, though the second is too short already."""
        self.check_held(b">name\nACGT\nACG\n", b"ACGTACGTACGT\n\n")

    def test_numbers_of_a_report_spoilt(self):
        """The matrix section of a MEME report with a row of five tokens."""
        self.check_held(b"----\ntitle\n----\nletter-probability matrix:\n0 0 0 0 0\n", b"0.1 0.2 0.3 0.4\n\n")

    def test_name_rows_of_unlike_shape(self):
        """A name row with rows of three tokens."""
        self.check_held(b">name\n", b"1 2 3\n\n")


class LongReading(NastyTest):
    """Great files that are read to the last number."""

    def test_jaspar_block_of_many_megabytes(self):
        """Four rows of five megabytes are one motif, so the run stops behind the reading."""
        row = b" 1 20 0.5" * sized(5 * MEGABYTE // 9)
        self.write("wide.txt", b">wide\n", *[base + row + b"\n" for base in (b"A", b"C", b"G", b"T")], b"\n")
        self.check_refused(INSUFFICIENT, "wide.txt", limit=20)

    def test_many_rows_of_one_slice(self):
        """A vertical matrix of thirty-one rows, each of many tokens: one motif without a position."""
        row = b"1.5 " * sized(MEGABYTE // 8) + b"\n"
        self.check_count(1, row * 31, b"\n", limit=20)


if __name__ == "__main__":
    unittest.main()
