"""Scans of motif pairs in plain form, and the bounds that turn scores into the sort key."""
from functools import lru_cache

from arithmetic import CELL_UNITS, EXACT_COLUMNS, mean_in_order, mean_of_units
from records import LEAST_OVERLAP, ORIGINAL, REVERSE, Alignment

FORMATS = ((ORIGINAL, ORIGINAL), (ORIGINAL, REVERSE), (REVERSE, ORIGINAL), (REVERSE, REVERSE))
MAX_SCORE = 1.0


def is_frequency_matrix(matrix):
    return all(0.0 <= value <= 1.0 for column in matrix for value in column)


def cells(x, y):
    """The four cells of a column pair."""
    return [MAX_SCORE - abs(a - b) for a, b in zip(x, y)]


@lru_cache(maxsize=None)
def units(x, y):
    """Sum of the cells of two columns of frequencies, exact; remembered, since every offset meets them again."""
    return sum(int(cell * CELL_UNITS) for cell in cells(x, y))


class Side:
    """The two strands of a motif under scan."""
    def __init__(self, matrix, reverse):
        self.strands = [[tuple(column) for column in strand] for strand in (matrix, reverse)]
        self.length = len(matrix)
        self.plain = is_frequency_matrix(matrix)


class PairScan:
    """All alignments of motif one (i) and motif two (j)."""

    def __init__(self, one, two, cutoff):
        self.one, self.two, self.cutoff = one, two, cutoff
        self.exact = one.plain and two.plain

    def score(self, strand1, strand2, columns):
        """Mean of the cells of the column pairs, in their order."""
        one, two, count = self.one.strands[strand1], self.two.strands[strand2], 4 * len(columns)
        if self.exact and len(columns) <= EXACT_COLUMNS:
            return mean_of_units(sum([units(one[c1], two[c2]) for c1, c2 in columns]), count)
        return mean_in_order([cell for c1, c2 in columns for cell in cells(one[c1], two[c2])], count)

    def best(self, columns):
        """(score, formats) of the best orientation; a tie goes to the earlier one."""
        scores = [self.score(s1, s2, columns) for s1, s2 in ((0, 0), (0, 1), (1, 0), (1, 1))]
        best = 0
        for kind in (1, 2, 3):
            if scores[kind] > scores[best]:
                best = kind
        return scores[best], FORMATS[best]

    def run(self, forward):
        """Yield (first_region, position, overlap, score, formats) of the kept alignments."""
        if min(self.one.length, self.two.length) < LEAST_OVERLAP:
            return
        for first_region in (True, False):
            sliding, fixed = (self.one, self.two) if first_region else (self.two, self.one)
            for offset in range(fixed.length - LEAST_OVERLAP + 1):
                overlap = min(sliding.length, fixed.length - offset)
                if forward:
                    faced = [(k, offset + k) for k in range(overlap)]
                else:
                    faced = [(sliding.length - 1 - t, fixed.length - 1 - offset - t) for t in range(overlap)]
                columns = faced if first_region else [(f, s) for s, f in faced]
                score, formats = self.best(columns)
                if score >= self.cutoff:
                    yield first_region, offset + 1, overlap, score, formats


def scan_pair(run, i, j, forward):
    """Records of one pair in the order of one thread."""
    sides = [Side(motif.matrix, motif.reverse) for motif in (i, j)]
    found = []
    for first_region, position, overlap, score, formats in PairScan(*sides, run.cutoff).run(forward):
        stored = (i, j) if first_region else (j, i)
        record = Alignment()
        record.direction = "Forward" if forward else "Backward"
        record.primary = first_region
        record.id1, record.id2 = stored[0].id, stored[1].id
        record.name1, record.name2 = stored[0].name, stored[1].name
        record.dataset1, record.dataset2 = i.dataset, j.dataset     # these two do not follow the swap
        record.position, record.overlap, record.similarity = position, overlap, score
        record.format1, record.format2 = formats
        found.append(record)
    return found


def scan(run):
    """Every pair of input motifs, forwards and then backwards."""
    pairs = [(i, j) for at, i in enumerate(run.motifs) for j in run.motifs[at + 1:]]
    return [record for forward in (True, False) for i, j in pairs for record in scan_pair(run, i, j, forward)]


def scan_references(run, outer):
    """Every motif of the outer list against the whole collection, forwards and then backwards."""
    pairs = [(i, j) for i in outer for j in run.references]
    return [record for forward in (True, False) for i, j in pairs for record in scan_pair(run, i, j, forward)]


def score_records(run, records, named, measured):
    """Set the sort key of each record.

    `named` gives the ids whose bounds a record raises, `measured` the one whose bounds it is measured by.
    """
    best_score, best_overlap = [0.0] * len(run.motifs), [0] * len(run.motifs)
    for record in records:
        for number in named(record):
            best_score[number - 1] = max(best_score[number - 1], record.similarity)
            best_overlap[number - 1] = max(best_overlap[number - 1], record.overlap)
    for record in records:
        at = measured(record) - 1
        score_difference = abs(record.similarity - best_score[at])
        record.score = (score_difference + abs(record.overlap - best_overlap[at])) * 0.5


def input_id(record):
    """The input motif of a record against the collection."""
    return record.id1 if record.primary else record.id2


def compare_inputs(run):
    records = scan(run)
    score_records(run, records, lambda r: (r.id1, r.id2), lambda r: r.id1)
    return records


def compare_references(run, outer):
    records = scan_references(run, outer)
    score_records(run, records, lambda r: (input_id(r),), input_id)
    return records
