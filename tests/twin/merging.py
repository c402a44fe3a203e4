"""Folding a ranked group of motifs into one, and the combined reports."""
from records import ORIGINAL, reverse_complement, consensus_of
from scanning import PairScan, Side
from text_reports import DASHES, row

COMBINED = "Combined Motif"
TITLES = {"merged global": "Top Global Significant Motif ID",
          "merged local": "Top Global and Local Significant Motif ID", "merged best": "Motif ID"}


class PairAlignment:
    """One alignment of two matrices in memory; the first one stays the first."""
    def __init__(self, forward, found):
        self.primary, self.position, self.overlap, _, (self.format1, self.format2) = found
        self.direction = "Forward" if forward else "Backward"


class Step:
    """One merged step of a group, or one member left out."""
    def __init__(self, record, name1, name2, id1, merged):
        self.record, self.name1, self.name2, self.id1, self.merged = record, name1, name2, id1, merged
        self.matrix1 = self.matrix2 = self.combined = None
        self.lines = ("", "")


def scan_two(run, matrix1, matrix2, forward):
    """All alignments of two matrices. The key that sorts them is zero for each, so they keep their places."""
    sides = [Side(matrix, reverse_complement(matrix)) for matrix in (matrix1, matrix2)]
    return [PairAlignment(forward, one) for one in PairScan(*sides, run.cutoff).run(forward)]


def shifts(length1, length2, record):
    """How far each matrix stands from the end that its direction starts at."""
    total, shift = length1 + length2 - record.overlap, record.position - 1
    if record.position < 2:
        return 0, 0
    if total == max(length1, length2):
        return (0, shift) if length1 > length2 else (shift, 0)
    return (shift, 0) if record.primary else (0, shift)


def draw(matrix1, matrix2, record):
    """The two lines of an alignment of two matrices."""
    length1, length2 = len(matrix1), len(matrix2)
    total = length1 + length2 - record.overlap
    if total < 1:
        return "", ""
    texts = consensus_of(matrix1), consensus_of(matrix2)
    width, overhang = total, total > max(length1, length2)
    if (record.position > 1 and overhang and length2 > length1 and not record.primary
            and record.overlap != length1 - record.position + 1):
        width += length2 + record.position - 1
    lines = [place_text(width, text, shift, record.direction)
             for text, shift in zip(texts, shifts(length1, length2, record))]
    if record.position > 1 and total == length1 and length1 > length2:
        lines[0] = texts[0]
    return lines


def place_text(width, text, shift, direction):
    """Dashes with the text laid over them; what falls outside is cut off."""
    line, start = ["-"] * width, shift if direction == "Forward" else width - shift - len(text)
    for at, letter in enumerate(text, start):
        if 0 <= at < width:
            line[at] = letter
    return "".join(line)


def combine(matrix1, matrix2, record):
    """Both matrices on one axis, averaged where they meet; a column that neither covers adds nothing."""
    total = len(matrix1) + len(matrix2) - record.overlap
    if total < max(len(matrix1), len(matrix2)):
        return []
    starts = []
    for matrix, shift in zip((matrix1, matrix2), shifts(len(matrix1), len(matrix2), record)):
        starts.append(shift if record.direction == "Forward" else total - shift - len(matrix))
    result = []
    for at in range(total):
        columns = [matrix[at - start] for matrix, start in zip((matrix1, matrix2), starts)
                   if 0 <= at - start < len(matrix)]
        if len(columns) == 2:
            result.append([(a + b) * 0.5 for a, b in zip(*columns)])
        elif columns:
            result.append(columns[0])
    return result


def accepted(run, combined, *matrices):
    """The combined matrix must align forwards with both of its parents as they are stored."""
    return all(scan_two(run, combined, matrix, True) for matrix in matrices)


def merged_step(run, record, oriented, stored, names, id1):
    """The step that merges two matrices, or None where it is refused."""
    combined = combine(*oriented, record)
    if not accepted(run, combined, *stored):
        return None
    step = Step(record, *names, id1, True)
    step.matrix1, step.matrix2, step.combined = *oriented, combined
    step.lines = draw(*oriented, record)
    return step


def left_out(group):
    return [Step(record, record.name1, record.name2, record.id1, False) for record in group]


def merge_group(run, group):
    """The steps of one group, member by member until the end, a refusal, or a member without alignment."""
    first = group[0]
    one, two = run.motifs[first.id1 - 1], run.motifs[first.id2 - 1]
    oriented = [motif.matrix if form == ORIGINAL else motif.reverse
                for motif, form in ((one, first.format1), (two, first.format2))]
    step = merged_step(run, first, oriented, (one.matrix, two.matrix), (first.name1, first.name2), first.id1)
    if not step:
        return left_out(group)
    steps = [step]
    for index in range(1, len(group)):
        running, member = steps[-1].combined, run.motifs[group[index].id2 - 1]
        found = scan_two(run, running, member.matrix, True) or scan_two(run, running, member.matrix, False)
        if not found:
            break
        chosen = found[0]
        oriented = [running if chosen.format1 == ORIGINAL else reverse_complement(running),
                    member.matrix if chosen.format2 == ORIGINAL else member.reverse]
        step = merged_step(run, chosen, oriented, (running, member.matrix), (COMBINED, group[index].name2), 1)
        if not step:
            return steps + left_out(group[index:])
        steps.append(step)
    return steps


def write_merged(run, key, groups):
    merged = [merge_group(run, group) for group in groups if group]
    rows = [[consensus_of(step.matrix1), consensus_of(step.matrix2), consensus_of(step.combined)]
            for steps in merged for step in steps if step.merged]
    motif_widths = [max([40] + [len(texts[i]) + 2 for texts in rows]) for i in range(3)]
    widths = [run.name_length + 10] * 2 + [40, 40] + motif_widths
    head = row(("1st motif name", "2nd motif name", "1st format", "2nd format", "1st motif", "2nd motif",
                "Combined motif"), widths) + DASHES + "\n"
    text, rows = "", iter(rows)
    for steps in merged:
        text += "%s Combined Motifs for %s %d and Its Best Matches %s\n%s\n" % (
            "*" * 60, TITLES[key], steps[0].id1, "*" * 59, DASHES)
        for step in steps:
            if step.merged:
                record = step.record
                text += head + row([step.name1, step.name2, record.format1, record.format2] + next(rows), widths)
                text += "Direction: %s\t\tPosition #: %d\t\tOverlap #: %d\nAlignment:\n%s\n%s\n%s\n" % (
                    record.direction, record.position, record.overlap, *step.lines, DASHES)
    run.reports[key].add(text)
