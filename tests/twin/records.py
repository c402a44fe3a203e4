"""The records of a run, the run itself, and the console that it talks to."""
import os
import sys

from arithmetic import divide

ORIGINAL, REVERSE = "Original Motif", "Reverse Complement"
LEAST_OVERLAP = 4


class Motif:
    """One motif; a matrix is a list of positions of four doubles in the order A, C, G, T."""
    def __init__(self, number, dataset, place, name, matrix, taxon="", catalogue_id=""):
        self.id, self.dataset, self.place = number, dataset, place
        self.name, self.taxon, self.catalogue_id = name, taxon, catalogue_id
        self.matrix = matrix
        self.reverse = reverse_complement(matrix)
        self.consensus = consensus_of(self.matrix)
        self.reverse_consensus = consensus_of(self.reverse)


class InputFile:
    """One input file of the dialogue."""
    def __init__(self, name, dataset):
        self.name, self.dataset, self.motif_count = name, dataset, 0


class Alignment:
    """One scored alignment of two motifs; number 1 is the one stored first."""
    __slots__ = ("direction", "primary", "id1", "id2", "dataset1", "dataset2", "name1", "name2",
                 "position", "overlap", "similarity", "score", "format1", "format2")


class Run:
    """Everything that one job knows: answers, lists, and its report streams."""
    def __init__(self):
        self.console = Console()
        self.files, self.motifs, self.references = [], [], []
        self.name_length = 0
        self.run_time = 0.0
        self.reports = {}

    def output(self, name):
        """Path of a file of this job in the result folder."""
        return self.output_path + self.job_id + name

    @property
    def has_text(self):
        return self.format in ("Text", "All")

    @property
    def has_pages(self):
        return self.format in ("HTML", "PDF", "All")

    @property
    def has_pdf(self):
        return self.format in ("PDF", "All")

    @property
    def has_references(self):
        return len(self.collection) > 1

    @property
    def all_types(self):
        return self.file_type == "All"

    @property
    def has_tree(self):
        return self.wants_tree == "Y"

    @property
    def has_merging(self):
        return self.wants_merging == "Y"


class Report:
    """One report file and the notation of its stream, which lives on from writer to writer."""
    def __init__(self, run, name):
        self.run, self.path, self.fixed = run, run.output(name), False

    def begin(self, text):
        self._put("wb", text)

    def add(self, text):
        self._put("ab", text)

    def _put(self, mode, text):
        try:
            with open(file_path(self.path), mode) as file:
                file.write(text.encode("latin-1"))
        except OSError as error:
            self.run.console.stop_for_output(self.path, error)


class Console:
    """Standard input with the error state of a C++ stream, and standard output."""
    BLANKS = " \t\n\v\f\r"

    def __init__(self):
        self.text = sys.stdin.buffer.read().decode("latin-1")
        self.at, self.good = 0, True

    def clear(self):
        self.good = True

    def _ended(self):
        if self.at >= len(self.text):
            self.good = False
        return not self.good

    def word(self, before):
        """Skip white space and read up to the next one; at the end of input the text before stays."""
        while self.good and self.at < len(self.text) and self.text[self.at] in self.BLANKS:
            self.at += 1
        if self._ended():
            return before
        start = self.at
        while self.at < len(self.text) and self.text[self.at] not in self.BLANKS:
            self.at += 1
        found = self.text[start:self.at]
        self._ended()
        return found

    def line(self, before):
        """Read a whole line; a stream that has failed already leaves the text before."""
        if not self.good:
            return before
        end = self.text.find("\n", self.at)
        found = self.text[self.at:] if end < 0 else self.text[self.at:end]
        self.at = len(self.text) if end < 0 else end + 1
        if end < 0:
            self.good = False
        return found

    def ignore(self):
        if not self._ended():
            self.at += 1

    @staticmethod
    def put(text):
        sys.stdout.buffer.write(text.encode("latin-1"))

    @staticmethod
    def say(text=""):
        Console.put(text + "\n")
        sys.stdout.buffer.flush()

    @staticmethod
    def stop(text):
        """Print the text and end the process with exit status 1."""
        Console.put(text)
        sys.stdout.buffer.flush()
        sys.exit(1)

    @staticmethod
    def name_unwritten(path, error):
        """Name a file that was not written, on standard error."""
        sys.stderr.buffer.write(("%s could not be written: %s.\n" % (path, error.strerror)).encode("latin-1"))

    @staticmethod
    def stop_for_output(path, error):
        """The end of a run that cannot write a file."""
        Console.name_unwritten(path, error)
        Console.stop("Invalid output path or output filename.")


def file_path(text):
    """The bytes of a path that is kept as latin-1 text."""
    return text.encode("latin-1")


def current_directory():
    return os.getcwdb().decode("latin-1")


PAIR_LETTERS = {(0, 2): "R", (1, 3): "Y", (1, 2): "S", (0, 3): "W", (2, 3): "K", (0, 1): "M"}
TRIPLE_LETTERS = {(1, 2, 3): "B", (0, 2, 3): "D", (0, 1, 3): "H", (0, 1, 2): "V"}


def sorted_cells(column):
    """(value, base) pairs, ascending, by the insertion sort of the library (it is stable)."""
    cells = []
    for base, value in enumerate(column):
        if cells and value < cells[0][0]:
            cells.insert(0, (value, base))
            continue
        at = len(cells)
        while at and value < cells[at - 1][0]:
            at -= 1
        cells.insert(at, (value, base))
    return cells


def consensus_letter(column):
    (third, third_base), (second, second_base), (top, top_base) = sorted_cells(column)[1:]
    if top > 0.5 and divide(top, second) >= 2.0:
        return "ACGT"[top_base]
    if top + second > 0.75:
        if top > 0.5 and second >= 0.5:
            return ""
        return PAIR_LETTERS[tuple(sorted((top_base, second_base)))]
    if top + second + third > 0.75:
        return TRIPLE_LETTERS[tuple(sorted((top_base, second_base, third_base)))]
    return "N"


def consensus_of(matrix):
    return "".join(consensus_letter(column) for column in matrix)


def reverse_complement(matrix):
    """Positions in reverse order; in each only the pair that holds the largest value is swapped."""
    result = []
    for column in reversed(matrix):
        best, base = 0.0, 0
        for i, value in enumerate(column):
            if value > best:
                best, base = value, i
        a, c, g, t = column
        result.append([t, c, g, a] if base in (0, 3) else [a, g, c, t])
    return result
