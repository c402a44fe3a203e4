"""Input files: blocks, their shapes, and the nine layouts."""
import re

from arithmetic import divide, is_double, is_numeric, strtod
from records import Motif, file_path

BLOCK_LINES = 31
SETS = {"A": "A", "C": "C", "G": "G", "T": "T", "M": "AC", "R": "AG", "W": "AT", "S": "CG", "Y": "CT",
        "K": "GT", "V": "ACG", "H": "ACT", "D": "AGT", "B": "CGT", "N": "ACGT"}
SHARES = {1: 1.0, 2: 0.5, 3: 0.3333, 4: 0.25}


def is_iupac(text):
    return re.fullmatch(r"[-ABCDGHKMNRSTVWY]*", text) is not None


def is_nucleotide(text):
    return re.fullmatch(r"[-ACGT]*", text) is not None


def tokens_of(line):
    return [token for token in re.split(r"[ \t]", line) if token]


def file_lines(path):
    """Lines as getline gives them, and whether the last one had a line end; None if the file does not open or is
    neither a regular file nor a pipe."""
    try:
        with open(file_path(path), "rb") as file:
            text = file.read().decode("latin-1")
    except OSError:
        return None
    return text.split("\n")


def remove_spaces(line):
    return re.sub(r" +", " ", line.strip(" "))


def normalised(values):
    """Four numbers divided by their sum, added in the order A, C, G, T."""
    a, c, g, t = values
    total = a + c + g + t
    return [divide(value, total) for value in values]


def position_of(tokens):
    return normalised([strtod(token) for token in tokens])


def columns_of(rows):
    """Positions from the four rows of texts of A, C, G, T; missing values are 0."""
    return [normalised([strtod(row[i]) if i < len(row) else 0.0 for row in rows]) for i in range(len(rows[0]))]


class BlockReader:
    """Cuts one file into blocks and hands each to the reader of its shape."""

    def __init__(self, run, file):
        self.run, self.file, self.place = run, file, 1
        self.rows, self.lines = [], 0
        self.held = False
        self.numeric_seen = self.decimal_seen = False

    def read(self):
        lines = file_lines(self.run.input_path + self.file.name)
        if lines is None:
            self.run.console.stop("Invalid input path or file name.\n")
        for number, line in enumerate(lines, 1):
            line = remove_spaces(line).rstrip(" \n\r\t")
            if line and self.lines < BLOCK_LINES:
                self.rows.append(tokens_of(line))
                self.lines += 1
                continue
            self.close_block()

    def close_block(self):
        self.lines = 0
        if not self.rows:
            return
        reader = self.classify()
        if reader:
            name, matrix = reader(self.rows)
            self.append(name, matrix)
            self.rows = []

    def append(self, name, matrix):
        self.file.motif_count = self.place
        self.run.motifs.append(Motif(len(self.run.motifs) + 1, self.file.dataset, self.place, name, matrix))
        self.place += 1

    def classify(self):
        """The reader of the block, or None to hold it."""
        rows, first = self.rows, len(self.rows[0])
        if first == 2 and len(rows) >= 6:
            return read_transfac
        if first in (1, 2) and len(rows) == 5 and [row[0] for row in rows[1:]] == list("ACGT"):
            return read_jaspar
        if first != 1:
            return self.classify_numbers()
        if len(rows) == 2:
            return read_consensus if len(rows[1]) == 1 and is_iupac(rows[1][0]) else None
        if len(rows) >= 4 and len(rows[2]) == 1 and rows[3][0] == "letter-probability":
            return self.classify_meme()
        if len(rows) == 1:
            return None if self.held else self.take_raw()
        if len(rows[1]) == 1:
            return self.classify_alignment()
        if all(len(row) == 4 for row in rows[1:]):
            return self.take_raw()
        self.held = False
        return None

    def classify_numbers(self):
        rows = self.rows
        self.test_tokens(rows)
        if not self.numeric_seen and not self.decimal_seen:
            return None
        if len(rows) != 4:
            return read_vertical
        if len(rows[0]) < 2:
            return None
        self.held = len({len(row) for row in rows}) == 1
        return read_horizontal if self.held else None

    def classify_meme(self):
        lines = self.rows[4:]
        good = bool(lines) and all(len(row) == 4 for row in lines) and self.test_tokens(lines)
        if not good and not self.numeric_seen and not self.decimal_seen:
            return None
        return self.read_meme

    def classify_alignment(self):
        rows = self.rows
        self.held = False
        if any(len(row) != 1 for row in rows[2:]):
            return None
        texts = [row[0] for row in rows[1:]]
        self.held = len({len(text) for text in texts}) > 1 or not all(map(is_nucleotide, texts))
        return None if self.held else read_alignment

    def take_raw(self):
        self.held = False
        return read_raw

    def test_tokens(self, rows):
        """Whether all tokens are decimal numbers; the marks tell of the last one tested."""
        for row in rows:
            for token in row:
                self.numeric_seen, self.decimal_seen = is_numeric(token), is_double(token)
                if not (self.numeric_seen and self.decimal_seen):
                    return False
            self.numeric_seen = True
        return True

    def read_meme(self, rows):
        matrix = [position_of(row) for row in rows if len(row) == 4 and all(map(is_numeric, row))]
        return "Motif %d" % (len(self.run.motifs) + 1), matrix


def read_transfac(rows):
    lines = [row for row in rows if len(row) in (5, 6) and all(map(is_numeric, row[1:5]))]
    return rows[0][1], [position_of(row[1:5]) for row in lines]


def read_jaspar(rows):
    values = []
    for row in rows[1:]:
        rest = [re.sub(r"[^ .0-9]", "", token) for token in row if token not in ("A", "C", "G", "T", "[", "]")]
        values.append([token for token in rest if token])
    return rows[0][0][1:], columns_of(values)


def read_horizontal(rows):
    return "NA", columns_of(rows)


def read_vertical(rows):
    return "NA", [position_of(row) for row in rows if len(row) == 4]


def read_raw(rows):
    matrix = [position_of(row) for row in rows if len(row) == 4 and all(map(is_numeric, row))]
    return rows[0][0][1:] or "NA", matrix


def read_consensus(rows):
    matrix = []
    for row in rows[1:]:
        for letter in row[0] if len(row) == 1 else "":
            if letter in SETS:
                share = SHARES[len(SETS[letter])]
                matrix.append([share if base in SETS[letter] else 0.0 for base in "ACGT"])
    return rows[0][0][1:] or "NA", matrix


def read_alignment(rows):
    texts = [row[0] for row in rows[1:]]
    matrix = [[[text[i] for text in texts].count(base) for base in "ACGT"] for i in range(len(texts[0]))]
    return rows[0][0][1:] or "NA", [normalised([float(n) for n in counts]) for counts in matrix]


def read_input(run):
    for file in run.files:
        BlockReader(run, file).read()
    run.name_length = max([run.name_length] + [len(motif.name) for motif in run.motifs])
