#!/usr/bin/env python3
"""Turn a downloaded motif collection into the layout that the program reads.

    convert_collection.py jaspar FILE > MOTIF_FILE
    convert_collection.py --taxon jaspar|transfac FILE > COLLECTION

The headers of a motif file have at most two words, as the program does not recognise a block with more words
there. With --taxon, for the files in databases/, the header ends with the taxon if FILE has one; the layout
transfac is only for these files.

FILE may be in Jaspar layout (with or without brackets, empty lines and row letters), in TRANSFAC layout, in
the minimal format of MEME, or a UniPROBE table with rows "A:", "C:", "G:", "T:". Numbers are copied as they are
written, except that exponents are written out, since the program reads only digits and points. If FILE cannot be
read correctly, the script prints one line on standard error and exits with status 1. Notes on unusual but
readable motifs go to standard error too.
"""
import os
import re
import sys
from dataclasses import dataclass, field
from decimal import Decimal

BASES = "ACGT"
PLAIN_NUMBER = re.compile(r"\d+\.?\d*|\.\d+")
NUMBER = re.compile(r"[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?")
MOST_DIGITS = 300                       # of a number that is written out; a longer one cannot be a count or frequency

# A row of one base: its letter, "A", "A:", "A |", "A[" or "A [", then the values, then perhaps "]".
LETTER_ROW = re.compile(r"([ACGTacgt])(?:\s*[:|\[]\s*\[?|\s+\[?)\s*(.*?)\s*\]?")
UNIPROBE_ROW = re.compile(r"([ACGT])\s*:\s*(.*)")
UNIPROBE_ID = re.compile(r"UP\d{5}[A-Z]?(_\d+)?")
# Lines above a UniPROBE table that say what kind of table it is; only a table of probabilities is the motif itself.
UNIPROBE_TITLE = re.compile(r"(energy|reverse complement|probability) matrix|P[O0]\b", re.IGNORECASE)
UNIPROBE_OTHER_MATRIX = re.compile(r"energy|reverse complement", re.IGNORECASE)


class BadCollection(Exception):
    """What is wrong with the file, worded for the user."""


@dataclass
class Motif:
    """One reference motif: the texts of its header, and four texts (A, C, G, T) for each position."""
    identity: str
    name: str
    taxon: str = ""
    positions: list = field(default_factory=list)


def joined(text):
    """The text as one word."""
    return "_".join(text.split())


def plain(token, motif):
    """The number in a token, written with only digits and points."""
    if PLAIN_NUMBER.fullmatch(token):
        return token
    if not NUMBER.fullmatch(token):
        raise BadCollection(f'motif {motif}: "{token}" is no number')
    value = Decimal(token)
    if value < 0:
        raise BadCollection(f"motif {motif}: {token} is below 0; counts or frequencies are needed, no log-odds")
    if value == 0:
        return "0"
    if abs(value.adjusted()) > MOST_DIGITS:
        raise BadCollection(f"motif {motif}: {token} is no count or frequency")
    return format(value, "f")


def positions_of_rows(rows, motif):
    """Positions from four rows of number tokens in the order A, C, G, T."""
    lengths = [len(row) for row in rows]
    if min(lengths) == 0:
        raise BadCollection(f"motif {motif}: a row without values")
    if len(set(lengths)) > 1:
        raise BadCollection(f"motif {motif}: rows of different length ({', '.join(map(str, lengths))})")
    return [[plain(token, motif) for token in position] for position in zip(*rows)]


def motif_of_letter_rows(header, rows, identity, name, taxon=""):
    """A motif from (letter or None, tokens) rows; header is for messages."""
    if len(rows) != len(BASES):
        raise BadCollection(f"motif {header}: {len(rows)} rows of values, not four")
    letters = "".join(letter or base for (letter, _), base in zip(rows, BASES))
    if sorted(letters) != sorted(BASES):
        raise BadCollection(f"motif {header}: rows {', '.join(letters)}, not A, C, G, T")
    by_letter = dict(zip(letters, (tokens for _, tokens in rows)))
    return Motif(identity, name, taxon, positions_of_rows([by_letter[base] for base in BASES], identity))


def read_jaspar(lines):
    """Blocks of a ">" line and four rows, with or without letters, brackets and empty lines."""
    motifs, header, rows = [], None, []

    def close():
        if header is not None:
            tokens = header.split()
            identity = tokens[0]
            name = tokens[1] if len(tokens) > 1 else identity
            motifs.append(motif_of_letter_rows(identity, rows, identity, name, " ".join(tokens[2:])))

    for number, line in enumerate(lines, 1):
        if line.startswith(">"):
            close()
            header, rows = line[1:].strip(), []
            if not header:
                raise BadCollection(f"line {number}: a header without an id")
        elif line:
            if header is None:
                raise BadCollection(f'line {number}: values before the first header line (">ID NAME")')
            lettered = LETTER_ROW.fullmatch(line)
            if lettered:
                rows.append((lettered[1].upper(), lettered[2].split()))
            else:
                rows.append((None, line.strip("[] \t").split()))
    close()
    return motifs


def transfac_name(fields):
    """NA, else ID, else DE."""
    return next((fields[tag] for tag in ("NA", "ID", "DE") if fields.get(tag)), "")


def transfac_taxon(fields):
    """OS, else the species of the first BF line."""
    species = fields.get("BF", "").partition("Species: ")[2].strip()
    return fields.get("OS") or (species[:-1] if species.endswith(".") else species)


def read_transfac(lines):
    """Entries of tagged lines; an entry ends at "//", or where the next one begins."""
    motifs, fields, rows, order = [], {}, [], BASES

    def close():
        identity = fields.get("AC") or fields.get("ID") or fields.get("NA") or fields.get("DE")
        if rows and not identity:
            raise BadCollection("an entry without AC, ID, NA and DE lines")
        if identity and not rows and "position head" in fields:
            raise BadCollection(f"motif {identity}: no position lines")
        if rows:
            columns = [[row[order.index(base)] for row in rows] for base in BASES]
            motifs.append(Motif(joined(identity), transfac_name(fields) or identity, transfac_taxon(fields),
                                positions_of_rows(columns, identity)))

    for number, line in enumerate(lines, 1):
        tag, text = (line.split(None, 1) + ["", ""])[:2]
        if tag == "//" or (rows and tag in ("AC", "ID", "NA", "DE")):
            close()
            fields, rows, order = {}, [], BASES
        if tag in ("P0", "PO"):
            fields["position head"] = text
            letters = "".join(text.upper().split()[:4])
            if sorted(letters) == sorted(BASES):
                order = letters
        elif tag.isdecimal():
            tokens = text.split()
            if len(tokens) not in (4, 5):
                raise BadCollection(f"line {number}: a position line needs four values")
            rows.append(tokens[:4])
        elif tag != "//" and text:
            fields.setdefault(tag, text)
    close()
    return motifs


def read_meme(lines):
    """MOTIF lines, each with a letter-probability matrix."""
    motifs, motif, width = [], None, None

    def close():
        if motif is None:
            return
        if not motif.positions:
            raise BadCollection(f"motif {motif.identity}: no letter-probability matrix")
        if width is not None and width != len(motif.positions):
            raise BadCollection(f"motif {motif.identity}: {len(motif.positions)} rows, but w= {width}")
        motifs.append(motif)

    in_matrix = False
    for line in lines:
        tokens = line.split()
        if line.startswith("ALPHABET") and "=" in line and line.partition("=")[2].strip() != BASES:
            raise BadCollection(f"the alphabet is not {BASES}: {line}")
        if tokens[:1] == ["MOTIF"]:
            close()
            if len(tokens) < 2:
                raise BadCollection("a MOTIF line without a name")
            motif, width, in_matrix = Motif(tokens[1], tokens[2] if len(tokens) > 2 else tokens[1]), None, False
        elif motif and line.startswith("letter-probability matrix"):
            stated = re.search(r"\bw=\s*(\d+)", line)
            width = int(stated[1]) if stated else None
            in_matrix = True
        elif in_matrix and len(tokens) == 4 and NUMBER.fullmatch(tokens[0]):
            motif.positions.append([plain(token, motif.identity) for token in tokens])
        elif tokens:
            in_matrix = False
    close()
    return motifs


def uniprobe_header(lines):
    """Id and name from the lines above a table: the name follows "Protein:" or "Gene:", or begins the last line."""
    tokens = " ".join(lines).replace(":", ": ").split()
    words = [token.strip("#>:,") for token in tokens]
    identity = next((word for word in words if UNIPROBE_ID.fullmatch(word)), "")
    labels = [i for i, token in enumerate(tokens[:-1]) if token in ("Protein:", "Gene:")]
    if labels:
        name = words[labels[0] + 1]
    else:
        last = [word.strip("#>:,") for word in lines[-1].split()]
        name = next((word for word in last if word and word != identity), identity)
    return identity or name, name


def read_uniprobe(lines, fallback):
    """Tables of rows "A:", "C:", "G:", "T:" below lines that name the protein.

    The file of one protein may hold the matrix again, as energies or as the reverse complement; these are left out.
    A table without a name gets the name of the table before it, or that of the file.
    """
    motifs, text, rows = [], [], []
    identity = name = fallback

    def close():
        nonlocal identity, name
        titles = [line for line in text if UNIPROBE_TITLE.match(line)]
        naming = [line for line in text if line not in titles and line.strip("# ")]
        if naming:
            identity, name = uniprobe_header(naming)
        if rows and not any(UNIPROBE_OTHER_MATRIX.match(title) for title in titles):
            motifs.append(motif_of_letter_rows(identity, rows, identity, name))

    for line in lines:
        row = UNIPROBE_ROW.fullmatch(line)
        if rows and (len(rows) == len(BASES) if row else line):
            close()
            text, rows = [], []
        if row:
            rows.append((row[1], row[2].split()))
        elif line:
            text.append(line)
    close()
    return motifs


def read_lines(path):
    """The lines of a text file, without leading and trailing blanks."""
    with open(path, "rb") as source:
        content = source.read()
    if b"\0" in content:
        raise BadCollection("not a text file (unpack it first if it is an archive)")
    try:
        text = content.decode("utf-8-sig")
    except UnicodeDecodeError:
        text = content.decode("latin-1")
    return [line.strip() for line in text.splitlines()]


def read_collection(path):
    """All motifs of a file in any of the layouts."""
    lines = read_lines(path)
    if any(line.startswith(("MEME version", "MOTIF ")) for line in lines):
        motifs = read_meme(lines)
    elif any(line.startswith(">") for line in lines):
        motifs = read_jaspar(lines)
    elif any(UNIPROBE_ROW.fullmatch(line) for line in lines):
        motifs = read_uniprobe(lines, os.path.splitext(os.path.basename(path))[0])
    elif any(re.match(r"(P[0O]|AC|ID|NA|DE)\s", line) for line in lines):
        motifs = read_transfac(lines)
    else:
        raise BadCollection("neither Jaspar, TRANSFAC, MEME nor UniPROBE layout")
    if not motifs:
        raise BadCollection("no motif in it")
    return motifs


def jaspar_text(motif):
    """The motif as a block in the Jaspar layout, with aligned columns."""
    widths = [max(map(len, position)) for position in motif.positions]
    header = " ".join(filter(None, [">" + joined(motif.identity), joined(motif.name), motif.taxon]))
    rows = [" ".join(value.rjust(width) for value, width in zip(row, widths)) for row in zip(*motif.positions)]
    return "".join([header + "\n"] + [f"{base} [ {row} ]\n" for base, row in zip(BASES, rows)] + ["\n"])


def transfac_text(motif):
    """The motif as an entry in the TRANSFAC layout."""
    tags = [("AC", motif.identity), ("ID", joined(motif.name)), ("NA", motif.name), ("OS", motif.taxon)]
    lines = [line for tag, text in tags if text for line in (f"{tag}  {text}", "XX")]
    lines.append("P0  A  C  G  T")
    lines += [f"{number:02d}  {'  '.join(position)}" for number, position in enumerate(motif.positions, 1)]
    return "\n".join(lines + ["XX", "//"]) + "\n"


WRITERS = {"jaspar": jaspar_text, "transfac": transfac_text}


def note_empty_positions(motifs):
    """Prints which motifs have positions without any counts; the program keeps these as not-a-number."""
    for motif in motifs:
        empty = [str(i) for i, position in enumerate(motif.positions, 1) if not any(map(float, position))]
        if empty:
            print(f"note: motif {motif.identity} has no counts at position {', '.join(empty)}", file=sys.stderr)


def main(arguments):
    """Reads the command line, converts the file and reports errors."""
    with_taxon = arguments[:1] == ["--taxon"]
    arguments = arguments[with_taxon:]
    if len(arguments) != 2 or arguments[0] not in WRITERS or (arguments[0] == "transfac" and not with_taxon):
        print(__doc__, file=sys.stderr)
        return 2
    layout, path = arguments
    try:
        motifs = read_collection(path)
    except (BadCollection, OSError) as error:
        print(f"{path}: {error}", file=sys.stderr)
        return 1
    note_empty_positions(motifs)
    if not with_taxon:
        for motif in motifs:
            motif.taxon = ""
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.writelines(WRITERS[layout](motif) for motif in motifs)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
