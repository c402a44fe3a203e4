"""Reads and writes the case files: what a case pins, its input, and everything that it must leave.

A case file has some words on what it pins, then sections. A section is a head line and the lines below it:

    === cases                           a table, where several cases share the file: case | NAME | NAME ...
    === answers                         what is typed; jobs.py fills in @ROOT@ and @THREADS@
    === tree motifs/a.txt               a file of the working directory
    === folders, === environment        see jobs.py
    === text NAME                       lines for which @NAME@ stands elsewhere in the file; shared.txt has more
    === expected result/report.txt      a file that the run leaves, as jobs.run_job names it; the status is 0 if unsaid

Everywhere @NAME@ also stands for the case's value in the table's column NAME. A head line may go on with

    | FORMAT = HTML, All                only the cases with such a value in that column of the table
    | as inputs/family.txt              the lines are those of that file beside this one
    | no last line end                  the last line has none
"""
import dataclasses
import functools
import glob
import os
import re

import jobs

HERE = os.path.dirname(os.path.abspath(__file__))
NO_LINE_END = "no last line end"
KINDS = ("cases", "answers", "tree", "folders", "environment", "text", "expected")
FIRST = ("status", "stdout", "stderr", "calls", "folders", "made")


@dataclasses.dataclass
class Section:
    kind: str
    name: str
    body: bytes
    conditions: dict = dataclasses.field(default_factory=dict)      # column of the table -> values
    source: str = ""                                                # the file that has the lines

    def holds_for(self, row):
        return all(row[column] in values for column, values in self.conditions.items())

    def written(self):
        head = " ".join(word for word in ("===", self.kind, self.name) if word)
        head += "".join(" | %s = %s" % (column, ", ".join(values)) for column, values in self.conditions.items())
        if self.source:
            return (head + " | as %s\n" % self.source).encode()
        whole = not self.body or self.body.endswith(b"\n")
        return (head + ("\n" if whole else " | %s\n" % NO_LINE_END)).encode() + self.body + (b"" if whole else b"\n")


class Group:
    """The cases of one file; most files have one."""

    def __init__(self, path):
        self.path = path
        head, *parts = re.split(rb"(?m)^=== ", jobs.read(path))
        self.about = head.decode().strip()
        sections = [read_section(part) for part in parts]
        self.rows = [row for section in sections if section.kind == "cases" for row in read_table(section.body)]
        self.rows = self.rows or [{"case": os.path.splitext(os.path.basename(path))[0]}]
        self.columns = [column for column in self.rows[0] if column not in ("case", "pins")]
        self.sections = sections
        self.texts = {section.name: section.body for section in sections + shared_texts() if section.kind == "text"}

    def row(self, case):
        return next(row for row in self.rows if row["case"] == case)

    def pins(self, case):
        row = self.row(case)
        return self.filled(row.get("pins", self.about).encode(), row).decode()

    def filled(self, data, row):
        for name, lines in self.texts.items():
            data = data.replace(b"@%s@\n" % name.encode(), lines)
        for column, value in row.items():
            data = data.replace(b"@%s@" % column.encode(), value.encode())
        return data

    def contents(self, kind, case):
        """Name -> content of the case's sections of this kind."""
        row, found = self.row(case), {}
        for section in self.sections:
            if section.kind == kind and section.holds_for(row):
                name = self.filled(section.name.encode(), row).decode()
                if name in found:
                    raise ValueError("%s: twice for %s: %s %s" % (self.path, case, kind, name))
                body = jobs.read(os.path.join(HERE, section.source)) if section.source else section.body
                found[name] = self.filled(body, row)
        return found

    def expected(self, case):
        """All that the case must leave: name -> content."""
        return unfolded({"status": b"exit 0\n", **self.contents("expected", case)})

    def lay_out(self, case, folder):
        """Write the case as a job for jobs.run_job."""
        os.makedirs(os.path.join(folder, "tree"))
        jobs.write(os.path.join(folder, "answers.txt"), self.contents("answers", case)[""])
        for kind in ("folders", "environment"):
            for data in self.contents(kind, case).values():
                jobs.write(os.path.join(folder, kind), data)
        for name, data in self.contents("tree", case).items():
            jobs.write(os.path.join(folder, "tree", name), data)

    def rewrite(self, lefts):
        """Write the file anew with what each of its cases left; what cases have in common is written once."""
        found = {case: folded(left) for case, left in lefts.items()}
        kept = [section for section in self.sections if section.kind != "expected"]
        for name in sorted({name for left in found.values() for name in left}, key=order):
            kept += self.shared(name, {case: left[name] for case, left in found.items() if name in left})
        self.sections = kept
        jobs.write(self.path, self.about.encode() + b"\n\n" + b"".join(section.written() for section in kept))
        again = Group(self.path)
        for case, left in lefts.items():
            if again.expected(case) != left:
                raise ValueError("%s: does not read back as written: %s" % (self.path, case))

    def shared(self, name, contents):
        """The sections for one name: one for the cases of each content."""
        contents = {case: self.shortened(data, self.row(case)) for case, data in contents.items()}
        for count in {data.count(b"\n") for data in contents.values()}:
            contents.update(self.with_values({case: data for case, data in contents.items()
                                              if data.count(b"\n") == count}))
        return [Section("expected", name, body, self.conditions([case for case in contents if contents[case] == body]))
                for body in dict.fromkeys(contents.values()) if (name, body) != ("status", b"exit 0\n")]

    def shortened(self, data, row):
        """With the names of the texts in place of their lines, the longest first."""
        texts = {name: self.filled(lines, row) for name, lines in self.texts.items()}
        for name, lines in sorted(texts.items(), key=lambda text: -len(text[1])):
            data = re.sub(rb"(?m)^" + re.escape(lines), b"@%s@\n" % name.encode(), data)
        return data

    def with_values(self, contents):
        """With the names of the values in the lines that differ, if that makes all contents equal."""
        rows = [self.row(case) for case in contents]
        lines = zip(*(data.split(b"\n") for data in contents.values()))
        named = set(zip(*(self.with_values_of_line(line, rows) for line in lines)))
        return dict.fromkeys(contents, b"\n".join(named.pop())) if len(named) == 1 else contents

    def with_values_of_line(self, line, rows):
        """One line as each case has it: named by one column, or by as many as it takes."""
        columns = [[column] for column in self.columns] + [self.columns]
        for chosen in columns if len(set(line)) > 1 else []:
            named = [functools.reduce(lambda text, column: with_value(text, column, row), chosen, own)
                     for own, row in zip(line, rows)]
            if len(set(named)) == 1:
                return named
        return line

    def conditions(self, cases):
        """The fewest columns with values that pick just these cases; their names if no columns do."""
        chosen = [row for row in self.rows if row["case"] in cases]
        picked = {column: list(dict.fromkeys(row[column] for row in chosen)) for column in self.columns}
        for column in self.columns:
            fewer = {other: values for other, values in picked.items() if other != column}
            if self.picks(fewer, chosen):
                picked = fewer
        return picked if self.picks(picked, chosen) else {"case": cases}

    def picks(self, conditions, chosen):
        return [row for row in self.rows if Section("", "", b"", conditions).holds_for(row)] == chosen


def read_section(text):
    head, _, body = text.partition(b"\n")
    words, *options = head.decode().split(" | ")
    kind, _, name = words.partition(" ")
    if kind not in KINDS:
        raise ValueError("no such section: " + words)
    section = Section(kind, name, body)
    for option in options:
        if option.startswith("as "):
            section.source = option[3:]
        elif option == NO_LINE_END:
            section.body = body[:-1]
        else:
            column, values = option.split(" = ")
            section.conditions[column] = values.split(", ")
    return section


def read_table(body):
    head, *rows = ([cell.strip() for cell in line.split("|")] for line in body.decode().splitlines())
    return [dict(zip(head, row)) for row in rows]


def order(name):
    """Sorts the console and the calls before the files."""
    return (FIRST.index(name) if name in FIRST else len(FIRST), name)


def with_value(text, column, row):
    return text.replace(row[column].encode(), b"@%s@" % column.encode()) if row[column] else text


@functools.lru_cache(maxsize=None)
def shared_texts():
    """What shared.txt has for all files."""
    return [read_section(part) for part in re.split(rb"(?m)^=== ", jobs.read(os.path.join(HERE, "shared.txt")))[1:]]


def all_cases():
    """Name of the case -> the group that has it."""
    found = {}
    for path in sorted(glob.glob(os.path.join(HERE, "*", "*.case"))):
        group = Group(path)
        for row in group.rows:
            if found.setdefault(row["case"], group) is not group:
                raise ValueError("two cases of the name " + row["case"])
    return found


# --- what the stand-ins of the outside tools make ----------------------------------------------------------------
#
# Their files follow from others, so one line of `made` stands for each:
#
#     logo 3 PATH             the picture of the third call of weblogo: its matrix is in `calls`
#     pdf PATH                the PDF file of the page beside it
#     pdf-alone PATH          the same, but the page is gone; its content is given all the same
#     renamed PATH            the page under another name, `.html.unconverted`; content as above

PDF_HEAD, PDF_END = b"%PDF-1.4\n", b"%%EOF\n"


def matrices(calls):
    """What weblogo was given, call by call."""
    runs = re.findall(rb"(?m)^weblogo .*\n((?:    .*\n)*)", calls)
    return [re.sub(rb"(?m)^    ", b"", lines) for lines in runs]


def inside_pdf(data):
    """The page in a PDF file of the stand-in, or None."""
    whole = data.startswith(PDF_HEAD) and data.endswith(PDF_END)
    return data[len(PDF_HEAD):-len(PDF_END)] if whole else None


def page_of(name):
    return re.sub(r"\.pdf$|\.html\.unconverted$", ".html", name)


def how_made(name, left, logos):
    """The word before the name in `made`, and the content of the page; nothing where the file speaks for itself."""
    data, page = left[name], page_of(name)
    if name.endswith(".jpeg") and data[5:] in logos and data.startswith(b"logo\n"):
        number = logos.index(data[5:])
        logos[number] = None if logos.count(data[5:]) > 1 else logos[number]
        return "logo %d" % (number + 1), None
    inside = inside_pdf(data) if name.endswith(".pdf") else None
    if inside is not None and left.get(page, inside) == inside:
        return "pdf" if page in left else "pdf-alone", inside
    if name.endswith(".unconverted") and page not in left:
        return "renamed", data
    return None, None


def folded(left):
    """Without the files that follow from others, but with a line for each in `made`."""
    rest, lines, logos = dict(left), [], matrices(left.get("calls", b""))
    for name in sorted(left):
        how, page = how_made(name, left, logos)
        if how:
            lines.append("%s %s\n" % (how, name))
            del rest[name]
        if page is not None:
            rest[page_of(name)] = page
    return {**rest, "made": "".join(lines).encode()} if lines else rest


def unfolded(left):
    """With the files of `made` in its place."""
    whole, gone = dict(left), set()
    logos = matrices(left.get("calls", b""))
    for line in whole.pop("made", b"").decode().splitlines():
        how, _, name = line.partition(" ")
        page = page_of(name)
        if how == "logo":
            number, _, name = name.partition(" ")
            whole[name] = b"logo\n" + logos[int(number) - 1]
        else:
            whole[name] = left[page] if how == "renamed" else PDF_HEAD + left[page] + PDF_END
            gone |= {page} if how != "pdf" else set()
    return {name: data for name, data in whole.items() if name not in gone}
