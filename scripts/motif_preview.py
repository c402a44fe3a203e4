"""What the files of a job folder hold: motifs that the program will read, and lines that look like a motif's heading.

The first number comes from the program: it is started on the files in a temporary folder, its table of counts is
read, and it is stopped before it compares anything. For the second number this script looks at the lines.
"""
import os
import re
import select
import shlex
import subprocess
import tempfile
import time
import tty

from job_process import before_exec

MOST_BYTES = 4 << 20                    # of all counted files together; more would take too long
LONGEST_WAIT = 3.0                      # seconds that the program gets to read them
LONGEST_ANSWER = 1 << 22                # bytes of its console output; the table is far smaller
MOST_SHOWN = 40                         # lines of each kind

# A line of the program's table, with the names that are made below: name, count, number of the file.
TABLE_ROW = re.compile(rb"file(\d+)- *(\d+) +\d+ *\r?")
TABLE_END = b"Processing input ..."
# Two motifs that are too short to be compared: the program needs two motifs before it prints its table.
COMPANION = ">short_1\nAAA\n\n>short_2\nAAA\n\n"

ENTRY_TAG = re.compile(rb"(AC|ID|NA|DE)\s+\S")
NUMBERS = re.compile(rb"\s*[\d.]+([ \t]+[\d.]+)+\s*")
POSITION = re.compile(rb"\d+[ \t]")
PROTEIN = re.compile(rb"(Protein|Gene):")


def headings_in(content):
    """How many motifs the lines of a file seem to announce: headings in any usual layout, and tables without one.

    The tags AC, ID, NA and DE above one table count as one heading; so do the lines that MEME writes for one
    motif.
    """
    plain = meme_names = meme_matrices = entries = 0
    in_head = in_table = False          # whether the line is in the head of a tagged entry; in any block
    for line in content.splitlines():
        if line.startswith(b">") or PROTEIN.search(line):
            plain += 1
        elif line.startswith(b"MOTIF"):
            meme_names += 1
        elif line.startswith(b"letter-probability"):
            meme_matrices += 1
        elif ENTRY_TAG.match(line):
            entries += not in_head
            in_head = in_table = True
            continue
        elif not in_table and NUMBERS.fullmatch(line):
            plain += 1
        if line.startswith(b"//") or POSITION.match(line):
            in_head = False
        in_table = bool(line.strip())
    return plain + max(meme_names, meme_matrices) + entries


def counts_of_table(console):
    """The counts in the program's table by file number, or None if the table is not complete."""
    table, end, _ = console.partition(TABLE_END)
    if not end:
        return None
    return {int(number): int(count) for number, count in TABLE_ROW.findall(table)}


def console_until_table(process, console_end, deadline):
    """What the program prints until its table is complete, the program ends, or the deadline passes."""
    console = b""
    try:
        while len(console) < LONGEST_ANSWER and TABLE_END not in console:
            ended = process.poll() is not None          # checked first, as its last output may still have to be read
            if select.select([console_end], [], [], 0.1)[0]:
                console += os.read(console_end, 1 << 16)
            elif ended or time.monotonic() > deadline:
                break
    finally:
        process.kill()
        process.wait()
    return console


def counts_by_program(program, paths):
    """How many motifs the program reads from each file, or None if this cannot be found out quickly."""
    with tempfile.TemporaryDirectory(prefix="varnolix-look-") as scratch:
        motifs = os.path.join(scratch, "motifs")
        os.mkdir(motifs)
        os.mkdir(os.path.join(scratch, "result"))
        names = [f"file{number}-" for number in range(len(paths) + 1)]
        with open(os.path.join(motifs, names[0]), "w", encoding="ascii") as companion:
            companion.write(COMPANION)
        for path, name in zip(paths, names[1:]):
            os.symlink(os.path.abspath(path), os.path.join(motifs, name))
        files = "".join(f"{name}\n10\n" for name in names)
        answers = f"{len(names)}\n1\n1\n0.9\n1\n{motifs}/\n{files}14\nN\nN\nAll\nText\n{scratch}\n"
        with tempfile.TemporaryFile(dir=scratch) as given:
            given.write(answers.encode())
            given.seek(0)
            # A terminal, so that the table arrives when it is printed and not at the end of the run.
            console_end, program_end = os.openpty()
            tty.setraw(program_end)
            try:
                with subprocess.Popen([program], cwd=scratch, stdin=given, stdout=program_end,
                                      stderr=subprocess.DEVNULL, preexec_fn=before_exec) as process:
                    console = console_until_table(process, console_end, time.monotonic() + LONGEST_WAIT)
            finally:
                os.close(console_end)
                os.close(program_end)
    counts = counts_of_table(console) or {}
    return [counts.get(number) for number in range(1, len(names))]


def motif_files(folder):
    """The sorted names of the files in a folder, without hidden ones."""
    return sorted(name for name in os.listdir(folder)
                  if not name.startswith(".") and not os.path.isdir(os.path.join(folder, name)))


def look_at(program, folder):
    """(name, motifs read or None, headings seen or None) for each file of the folder."""
    names, countable, room = motif_files(folder), {}, MOST_BYTES
    for name in sorted(names, key=lambda name: size_of(os.path.join(folder, name))):
        room -= size_of(os.path.join(folder, name))
        if room < 0:
            break
        path = os.path.join(folder, name)
        if os.path.isfile(path) and os.access(path, os.R_OK):
            countable[name] = path
    counts = dict(zip(countable, counts_by_program(program, list(countable.values())))) if countable else {}
    return [(name, counts.get(name), headings_of(countable[name]) if name in countable else None) for name in names]


def size_of(path):
    """The size of a file in bytes; 0 if it cannot be read."""
    try:
        return os.path.getsize(path)
    except OSError:
        return 0


def headings_of(path):
    """The same as headings_in, for a path."""
    with open(path, "rb") as file:
        return headings_in(file.read())


def printable(name):
    """A file's name in a form that can be printed on one line."""
    return name if name.isprintable() else ascii(name)


def counted(number, word):
    """A number with its noun."""
    return f"{number} {word}" if number == 1 else f"{number} {word}s"


def shortened(lines):
    """The first lines, and the number of lines left out."""
    if len(lines) <= MOST_SHOWN:
        return lines
    return lines[:MOST_SHOWN] + [f"  ... and {len(lines) - MOST_SHOWN} more"]


def advice(folder, name, motifs, headings, companion):
    """What is wrong with a file and how to repair it, one text for each fault."""
    shown = printable(name)
    if " " in name:
        yield f"{shown}: a name with a blank cannot be typed; rename the file."
    if motifs is not None and motifs < headings:
        path = os.path.join(folder, name)
        mended = os.path.splitext(path)[0] + "_mended.txt"
        yield (f"{shown}: {counted(motifs, 'motif')} of {headings} will be read. Perhaps empty lines between motifs are "
               f"missing, or the layout is another one. To mend a download:\n"
               f"    {shlex.quote(companion)} convert {shlex.quote(path)} > {shlex.quote(mended)}")
    if motifs is not None and motifs > headings:
        yield (f"{shown}: more motifs than headings will be read. Perhaps a table is longer than 31 lines and is cut in "
               f"pieces.")


def preview(program, folder, companion):
    """The lines that say what the files hold, with a warning where the program will read something else."""
    found = look_at(program, folder)
    if not found:
        return [f"No file lies in {folder} yet: put your motif files there."]
    lines, warnings = [], []
    width = max(len(printable(name)) for name, _, _ in found)
    for name, motifs, headings in found:
        told = "not counted" if motifs is None else counted(motifs, "motif")
        if motifs is not None and motifs != headings:
            told += f", but {counted(headings, 'heading')} seen"
        lines.append(f"  {printable(name).ljust(width)}  {told}")
        warnings += ["warning: " + text for text in advice(folder, name, motifs, headings, companion)]
    return ["Files there, and how many motifs the program will read from each:", *shortened(lines),
            *shortened(warnings)]
