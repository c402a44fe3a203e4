#!/usr/bin/env python3
"""Runs random jobs through the program and through the twin and compares everything that both leave.

    compare_random.py BINARY [--seed N] [--count K] [--threads N]

Job number i of a run with seed N is drawn from the seed N + i alone, so a failing one comes back with
`--seed N+i --count 1`. Exit status 0 when all agree, 1 when one differs; the files of that one are kept.
"""
import argparse
import os
import random
import shutil
import sys
import tempfile

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(os.path.dirname(HERE), "golden"))
import jobs                                                                     # noqa: E402

TWIN = os.path.join(HERE, "twin.py")
COLLECTIONS = (
    "jaspar/jaspar_pfm_all", "jaspar/jaspar_pfm_fungi", "jaspar/jaspar_pfm_insects", "jaspar/jaspar_pfm_nematodes",
    "jaspar/jaspar_pfm_plants", "jaspar/jaspar_pfm_urochordates", "jaspar/jaspar_pfm_vertebrates",
    "transfac/transfac", "uniprobe/uniprobe_human", "uniprobe/uniprobe_mouse", "uniprobe/uniprobe_parasite",
    "uniprobe/uniprobe_worm", "uniprobe/uniprobe_yeast")
TRANSFAC, NO_COLLECTION = 8, 14
IUPAC = "ACGTMRWSYKVHDBN"


# --- motifs as lists of four counts a position -------------------------------------------------------------------

def random_column(rng):
    kind = rng.random()
    if kind < 0.5:
        column = [rng.randint(0, 2) for _ in range(4)]
        column[rng.randrange(4)] += rng.randint(8, 30)
    elif kind < 0.8:
        column = [rng.randint(0, 12) for _ in range(4)]
    else:
        column = [rng.choice((0, 0, 5, 5, 10)) for _ in range(4)]
    return column if sum(column) else [5, 5, 5, 5]


def random_motif(rng):
    length = rng.choice((rng.randint(1, 5), rng.randint(4, 12), rng.randint(6, 16), rng.randint(6, 34)))
    return [random_column(rng) for _ in range(length)]


def relative(rng, motif):
    """A copy that is cut, extended, turned round or made noisy, or an equal one."""
    copy = [list(column) for column in motif]
    kinds = rng.sample(("cut", "extend", "turn", "noise", "equal"), rng.randint(1, 3))
    if "cut" in kinds and len(copy) > 4:
        copy = copy[rng.randint(0, 2):len(copy) - rng.randint(0, 2)]
    if "extend" in kinds:
        copy = [random_column(rng) for _ in range(rng.randint(0, 3))] + copy
    if "turn" in kinds:
        copy = [column[::-1] for column in reversed(copy)]
    if "noise" in kinds:
        copy = [[max(0, value + rng.randint(-2, 2)) for value in column] for column in copy]
        copy = [column if sum(column) else [1, 1, 1, 1] for column in copy]
    return copy


def equal_motifs(rng, count):
    """A few motifs of whole letters, many times: ties in every list."""
    columns = [[10 * (base == letter) for base in range(4)] for letter in range(4)]
    parents = [rng.choices(columns, k=rng.randint(4, 7)) for _ in range(rng.randint(1, 3))]
    return [rng.choice(parents) for _ in range(count)]


def families(rng, count):
    if rng.random() < 0.2:
        return equal_motifs(rng, count)
    motifs = []
    while len(motifs) < count:
        parent = random_motif(rng)
        motifs.append(parent)
        motifs += [relative(rng, parent) for _ in range(rng.choice((0, 1, 2, 3, 6)))]
    rng.shuffle(motifs)
    return motifs[:count]


# --- layouts -----------------------------------------------------------------------------------------------------

def numbers(rng, column):
    """Counts, or frequencies that are cut and so do not add up to 1."""
    if rng.random() < 0.6:
        return ["%d" % value for value in column]
    return ["%.*f" % (rng.choice((2, 4, 6)), value / sum(column)) for value in column]


def vertical(rng, motif):
    return "".join(rng.choice((" ", "\t", "  ")).join(numbers(rng, column)) + "\n" for column in motif)


def horizontal(rng, motif):
    columns = [numbers(rng, column) for column in motif]
    return "".join(" ".join(column[base] for column in columns) + "\n" for base in range(4))


def base_rows(rng, motif):
    shape = rng.choice(("%s [ %s ]\n", "%s [%s]\n", "%s %s\n"))
    columns = [numbers(rng, column) for column in motif]
    return "".join(shape % (letter, " ".join(column[base] for column in columns))
                   for base, letter in enumerate("ACGT"))


def transfac_rows(rng, motif):
    letter = rng.choice(("", " N"))
    return "".join("%02d %s%s\n" % (place, " ".join(numbers(rng, column)), letter)
                   for place, column in enumerate(motif, 1))


def meme(rng, motif):
    rows = "".join(" ".join("%.6f" % (value / sum(column)) for value in column) + "\n" for column in motif)
    return "-----\n\ttitle of a motif\n-----\nletter-probability matrix: w= %d\n%s" % (len(motif), rows)


def letters(motif, alphabet):
    """One letter for each position, by its largest counts."""
    return "".join(alphabet[sum((i + 3) * value for i, value in enumerate(column)) % len(alphabet)]
                   if max(column) < 0.6 * sum(column) else "ACGT"[column.index(max(column))] for column in motif)


def alignment(rng, motif):
    rows = ["".join(rng.choices("ACGT-", [value + 0.01 for value in column] + [0.3])[0] for column in motif)
            for _ in range(rng.randint(2, 6))]
    return "\n".join(rows) + "\n"


def odd_numbers(rng, length):
    """Vertical rows of what strtod takes: negative values, sums of zero, behind a whole first number."""
    values = ("-1", "-0.25", "0", "0", "1", "2", "0.5", "3.5", "7", "1e1")
    return "1 2 3 4\n" + "".join(" ".join(rng.choices(values, k=4)) + "\n" for _ in range(length))


def block(rng, number, motif):
    """One motif in one of the layouts, now and then in a bad one, closed by an empty line."""
    name = rng.choice(("m%d" % number, "motif-%d" % number, "same", "n%d<&>'x" % number))
    kind = rng.randrange(20)
    if kind < 4:
        text = ">%s\n%s" % (name, vertical(rng, motif))
    elif kind < 7:
        text = ">%s%s\n%s" % (name, rng.choice(("", " second")), base_rows(rng, motif))
    elif kind < 9:
        text = "DE %s\nP0 A C G T\n%sXX\n" % (name, transfac_rows(rng, motif))
    elif kind < 11:
        text = meme(rng, motif)
    elif kind < 13:
        text = ">%s\n%s\n" % (name, letters(motif, IUPAC))
    elif kind < 15:
        text = ">%s\n%s" % (name, alignment(rng, motif))
    elif kind < 16:
        text = horizontal(rng, motif)
    elif kind < 18:
        text = vertical(rng, motif)
    elif kind < 19:
        text = odd_numbers(rng, len(motif))
    else:
        text = rng.choice((">%s\n" % name, "words of no layout\n", ">%s\nacgt\n" % name,
                           "0 0 0 0\n" * 5, "1 -2 3 4\n" * 5))
    return text + "\n"


def input_file(rng, count, first):
    text = "".join(block(rng, first + at, motif) for at, motif in enumerate(families(rng, count)))
    if rng.random() < 0.1:
        text = text.replace("\n", "\r\n")
    return text.rstrip("\n") if rng.random() < 0.05 else text


def collection_file(rng, number, motifs):
    text = ""
    for at, motif in enumerate(motifs, 1):
        name = rng.choice(("ref%d" % at, "same", "r&%d" % at))
        if number == TRANSFAC:
            text += "AC  R%04d\nNA  %s\nOS  some species\nP0 A C G T\n%s//\n" % (at, name, transfac_rows(rng, motif))
        else:
            text += ">RX%05d_%d %s taxon of it\n%s" % (at, at, name, base_rows(rng, motif))
    return text


# --- jobs --------------------------------------------------------------------------------------------------------

def make_job(rng, folder):
    """Write answers and tree of one random job."""
    file_count = rng.choice((1, 2, 2, 3))
    number = rng.choice((NO_COLLECTION, NO_COLLECTION, rng.randint(1, 13)))
    answers = [file_count, rng.choice((1, 2, 5, 50)), rng.choice((1, 2, 3, 10, 50)),
               rng.choice(("0.5", "0.6", "0.7", "0.75", "0.8", "0.85", "0.9")), "@THREADS@", "@ROOT@/motifs/"]
    for place in range(1, file_count + 1):
        text = input_file(rng, rng.choice((1, 3, 5, 9)) if file_count > 1 else rng.choice((2, 6, 12, 22)), place * 100)
        jobs.write(os.path.join(folder, "tree", "motifs", "f%d.txt" % place), text.encode())
        answers += ["f%d.txt" % place, rng.randint(1, 10)]
    if number != NO_COLLECTION:
        path = os.path.join(folder, "tree", "databases", COLLECTIONS[number - 1] + ".txt")
        jobs.write(path, collection_file(rng, number, families(rng, rng.choice((0, 3, 8)))).encode())
    answers += [number, rng.choice("YN"), rng.choice("YN"), rng.choice(("Global-Only", "All", "All")),
                rng.choice(("Text", "Text", "Text", "HTML", "PDF", "All")), "@ROOT@/result/"]
    jobs.write(os.path.join(folder, "answers.txt"), "".join("%s\n" % answer for answer in answers).encode())
    if rng.random() < 0.5:
        jobs.write(os.path.join(folder, "environment"), b"STAND_IN_PDF=1\n")


def compare(binary, place, seed, threads):
    """Draw and run one job; True when program and twin agree."""
    rng, job = random.Random(seed), os.path.join(place, "drawn")
    make_job(rng, job)
    count = threads or rng.choice((1, 2, 3, 4, 7))
    wanted = jobs.run_job(TWIN, job, os.path.join(place, "run"), 1, 120.0, {"TWIN_RUN_TIME": "0.0123456789"})
    found = jobs.run_job(binary, job, os.path.join(place, "run"), count, 60.0)
    names = jobs.differences(wanted, found)
    if not names:
        return True
    jobs.keep(os.path.join(place, "twin"), wanted)
    jobs.keep(os.path.join(place, "found"), found)
    print("FAIL seed %d, threads %d\n%s\nfiles: %s (drawn, twin, found)\nagain: python3 %s %s --seed %d --count 1"
          % (seed, count, jobs.describe(wanted, found, names), place, os.path.abspath(__file__), binary, seed))
    return False


def main():
    parser = argparse.ArgumentParser(description="Compare the program with its twin on random jobs.")
    parser.add_argument("binary")
    parser.add_argument("--seed", type=int, default=1, metavar="N", help="seed of the first job (1)")
    parser.add_argument("--count", type=int, default=20, metavar="K", help="how many jobs (20)")
    parser.add_argument("--threads", type=int, metavar="N", help="thread count of the answers (drawn)")
    args = parser.parse_args()
    binary, failed = os.path.abspath(args.binary), 0
    for seed in range(args.seed, args.seed + args.count):
        place = os.path.realpath(tempfile.mkdtemp(prefix="random-"))
        agreed = compare(binary, place, seed, args.threads)
        failed += not agreed
        shutil.rmtree(os.path.join(place, "run") if not agreed else place, ignore_errors=True)
    print("seeds %d to %d: %d agreed, %d differed" % (args.seed, args.seed + args.count - 1,
                                                       args.count - failed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
