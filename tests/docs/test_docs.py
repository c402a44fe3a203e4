"""What the documents claim: links and named paths exist, quoted program text is printed, examples are read as told.

The program is named by the environment variable VARNOLIX_PROGRAM. No builds, a few runs of well under a second.
"""
import os
import re
import subprocess
import tempfile
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.path.abspath(os.environ["VARNOLIX_PROGRAM"])
DOCUMENTS = ("README.md", "ARCHITECTURE.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs/manual.md", "docs/varnolix-job.md",
             "docs/downloads.md", "docs/page.md", "docs/tables.md", "docs/families.md", "docs/many.md",
             "docs/scale.md", "docs/performance.md", "tools/README.md", "databases/README.md")
FOLDERS = ("src", "scripts", "tests", "tools", "databases", "examples", "bench", "fuzz", "docs", ".ci")
LIMIT = 20          # seconds of one run: at the end of its input the dialogue repeats for ever

FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)]+)\)")
CODE = re.compile(r"`([^`\n]+)`")
EXAMPLE = re.compile(r"^### \((\d+)\) ([^\n]+)\n\n```motif\n(.*?)^```\n\nRead as `([^`]+)`, (\d+) positions\.$",
                     re.MULTILINE | re.DOTALL)


def text_of(path):
    with open(os.path.join(PROJECT, path), encoding="utf-8") as file:
        return file.read()


def without_fences(text):
    return FENCE.sub("", text)


def anchors_of(text):
    """The fragments that a rendered page offers for its headings."""
    headings = re.findall(r"^#+ (.*)$", without_fences(text), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def path_of_code(code):
    """The path in the project that a piece of code names, or nothing."""
    words = code.split()
    if not words or re.search(r"[<>*$|]|\.\.\.", words[0]):
        return None
    word = words[0].rstrip("/")
    is_installed = re.match(r"databases/(jaspar|transfac|uniprobe)/", word)     # made by install-collection.sh
    return word if "/" in word and word.split("/")[0] in FOLDERS and not is_installed else None


def sources():
    for folder, _, names in os.walk(os.path.join(PROJECT, "src")):
        for name in names:
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                yield file.read()


class Job:
    """A job folder and one run in it."""

    def __init__(self, place):
        self.root = os.path.join(place, "job")
        os.makedirs(os.path.join(self.root, "motifs"))
        os.makedirs(os.path.join(self.root, "result"))

    def write(self, name, text):
        with open(os.path.join(self.root, "motifs", name), "w", encoding="utf-8") as file:
            file.write(text)

    def answers(self, files, bad=False):
        """All answers for these files; with `bad`, one that is refused in front of each that can be."""
        wrong = (lambda text: [text]) if bad else (lambda text: [])
        lines = wrong("0") + [str(len(files))] + wrong("51") + ["2"] + wrong("x") + ["2"] + wrong("0.65") + ["0.75"]
        lines += wrong("10") + ["1", self.root + "/motifs/"]
        for name in files:
            lines += wrong("a b") + [name] + wrong("11") + ["10"]
        lines += wrong("01") + ["14"] + wrong("y") + ["N"] + wrong("n") + ["N"] + wrong("all") + ["All"]
        return lines + wrong("text") + ["Text"] + wrong("/nowhere/at/all/") + [self.root]

    def run(self, files, bad=False):
        done = subprocess.run([PROGRAM], input="\n".join(self.answers(files, bad)) + "\n", cwd=self.root, text=True,
                              stdout=subprocess.PIPE, timeout=LIMIT, check=False)
        return done.returncode, done.stdout

    def result(self, ending):
        """The one file of the result folder whose name ends so."""
        folder = os.path.join(self.root, "result")
        name, = [name for name in os.listdir(folder) if name.endswith(ending)]
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            return file.read()


class JobCase(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = place.name
        self.job = Job(place.name)


class Paths(unittest.TestCase):
    def test_links_lead_somewhere(self):
        for document in DOCUMENTS:
            for link in LINK.findall(without_fences(text_of(document))):
                if re.match(r"https?:", link):
                    continue
                with self.subTest(document=document, link=link):
                    path, _, anchor = link.partition("#")
                    target = os.path.normpath(os.path.join(os.path.dirname(document), path)) if path else document
                    self.assertTrue(os.path.exists(os.path.join(PROJECT, target)), "no such file")
                    if anchor:
                        self.assertIn(anchor, anchors_of(text_of(target)))

    def test_named_files_and_folders_exist(self):
        for document in DOCUMENTS:
            for code in CODE.findall(without_fences(text_of(document))):
                path = path_of_code(code)
                if path:
                    with self.subTest(document=document, path=path):
                        self.assertTrue(os.path.exists(os.path.join(PROJECT, path)), "no such file or folder")

    def test_names_of_units_exist(self):
        """Names with an underscore in ARCHITECTURE.md are units, and those in camel case stand in the sources."""
        units = {os.path.splitext(name)[0] for _, _, names in os.walk(os.path.join(PROJECT, "src")) for name in names}
        everything = "\n".join(sources())
        for code in CODE.findall(text_of("ARCHITECTURE.md")):
            with self.subTest(name=code):
                if re.fullmatch(r"[a-z]+(_[a-z]+)+", code):
                    self.assertTrue(code in units or code in everything, "no such unit or name")
                elif re.fullmatch(r"[A-Za-z]+[a-z][A-Z]\w*(\[\w\])?\.*", code):
                    end = "" if code.endswith("...") else r"\b"
                    self.assertRegex(everything, r"\b" + code.split("[")[0].rstrip(".") + end)

    def test_the_two_commands_come_first_and_can_be_run(self):
        commands = re.findall(r"^    (scripts/\S+)", text_of("README.md"), re.MULTILINE)[:2]
        self.assertEqual(commands, ["scripts/demo.sh", "scripts/test.sh"])
        for command in commands:
            self.assertTrue(os.access(os.path.join(PROJECT, command), os.X_OK), command)

    def test_every_script_is_in_the_manual(self):
        manual = text_of("docs/manual.md")
        for name in os.listdir(os.path.join(PROJECT, "scripts")):
            if name.endswith(".sh") and name not in ("common.sh", "fresh_system.sh"):   # sourced, never run
                self.assertIn("`scripts/%s`" % name, manual)


class Names(unittest.TestCase):
    def test_output_names_of_the_manual_stand_in_the_sources(self):
        everything = "\n".join(sources())
        names = set(re.findall(r"^\| `([\w.]+\.(?:txt|html|csv|R|png))` \|", text_of("docs/manual.md"), re.MULTILINE))
        self.assertGreater(len(names), 20)
        for name in sorted(names):
            self.assertIn('"%s"' % name, everything)

    def test_output_names_of_the_sources_stand_in_the_manual(self):
        manual = text_of("docs/manual.md")
        names = re.findall(r'"(\w+\.(?:txt|html))"', text_of("src/run/shared_records.cpp"))
        self.assertEqual(len(names), 15)
        for name in names:
            self.assertIn("`%s`" % name, manual)

    def test_collections_of_the_manual_are_those_of_the_sources(self):
        rows = re.findall(r"^\| (\d+) \| (\w+) \| `databases/(\S+)` \|$", text_of("docs/manual.md"), re.MULTILINE)
        self.assertEqual([int(number) for number, _, _ in rows], list(range(1, 14)))
        listed = re.findall(r'"(\w+)",\s*"[^"]*",\s*"/databases/([^"]+)"', text_of("src/run/collections.h"))
        self.assertEqual([(name, path) for _, name, path in rows], listed)

    def test_headings_of_reports_stand_in_the_sources(self):
        everything = "\n".join(sources())
        for heading in re.findall(r'^- .*?" ([^"]+) "', text_of("docs/manual.md"), re.MULTILINE):
            for part in heading.split("Top N"):
                self.assertIn(part.strip(), everything)


class Dialogue(JobCase):
    def setUp(self):
        super().setUp()
        self.job.write("a.txt", ">one\nTGACGTCA\n\n>two\nCACGTGAA\n\n")

    def quoted_patterns(self):
        """The lines of the manual's console blocks; <...> stands for anything."""
        lines = [line for kind, text in FENCE.findall(text_of("docs/manual.md")) if kind == "console"
                 for line in text.splitlines() if line]
        return [".*".join(re.escape(part) for part in re.split(r"<[^=>]+>", line)) for line in lines]

    def test_quoted_text_is_what_the_program_prints(self):
        status, console = self.job.run(["a.txt"], bad=True)
        self.assertEqual(status, 0)
        printed = [line.rstrip() for line in console.splitlines() if line.strip()]
        patterns = self.quoted_patterns()
        self.assertGreater(len(patterns), 40)
        for pattern in patterns:
            self.assertTrue(any(re.fullmatch(pattern, line) for line in printed), "never printed: " + pattern)
        for line in printed:
            self.assertTrue(any(re.fullmatch(pattern, line) for pattern in patterns), "not in the manual: " + line)

    def test_questions_of_the_readme_are_printed(self):
        _, console = self.job.run(["a.txt"])
        questions = re.findall(r"^    ([Pp]lease, .*)$", text_of("README.md"), re.MULTILINE)
        self.assertGreater(len(questions), 8)
        for question in questions:
            self.assertIn(question + "\n", console)

    def messages(self):
        rows = re.findall(r'^\| "([^"]+)" \| ', text_of("docs/manual.md"), re.MULTILINE)
        self.assertEqual(len(rows), 3)
        return rows

    def test_messages_and_statuses(self):
        too_few, no_input, no_output = self.messages()
        self.job.write("one.txt", ">one\nTGACGTCA\n\n")
        self.assert_ends(["one.txt"], too_few)
        self.assert_ends(["nowhere.txt"], no_input)
        os.rmdir(os.path.join(self.job.root, "result"))
        self.assert_ends(["a.txt"], no_output)

    def assert_ends(self, files, message):
        status, console = self.job.run(files)
        self.assertEqual(status, 1)
        self.assertEqual(console.splitlines()[-1], message)


class Examples(JobCase):
    def examples(self):
        found = [(int(number), title, text, name, int(positions))
                 for number, title, text, name, positions in EXAMPLE.findall(text_of("docs/manual.md"))]
        self.assertEqual([number for number, *_ in found], list(range(1, 10)))
        return found

    def read(self, files):
        """Names and numbers of positions of all motifs, as the listing has them."""
        for name, text in files.items():
            self.job.write(name, text)
        status, _ = self.job.run(list(files))
        self.assertEqual(status, 0)
        blocks = self.job.result("input_motifs.txt").split("Motif name: ")[1:]
        return [(block.split("\n")[0], len(re.findall(r"^[-\d.]+\t", block, re.MULTILINE))) for block in blocks]

    def test_titles_are_those_of_the_dialogue(self):
        for number, title, *_ in self.examples():
            self.assertIn("(%d) %s\n" % (number, title), text_of("docs/manual.md").split("## Motif files")[0])

    def test_examples_mixed_in_one_file_are_read_as_told(self):
        examples = self.examples()
        found = self.read({"all.txt": "".join(text + "\n" for _, _, text, _, _ in examples)})
        self.assertEqual(found, [(name, positions) for *_, name, positions in examples])

    def test_each_example_is_read_in_a_file_of_its_own(self):
        examples = self.examples()
        found = self.read({"%d.txt" % number: text + "\n" for number, _, text, _, _ in examples})
        self.assertEqual(found, [(name, positions) for *_, name, positions in examples])

    def test_last_line_without_a_line_end_is_lost(self):
        found = self.read({"a.txt": ">one\nTGACGTCA\n\n>two\nCACGTGAA\n\n>three\nTGACGTCA"})
        self.assertEqual(found, [("one", 8), ("two", 8)])

    def test_forty_rows_become_31_and_8(self):
        found = self.read({"a.txt": "1 2 3 4\n" * 40 + "\n"})
        self.assertEqual(found, [("NA", 31), ("NA", 8)])

    def test_the_sample_collection_command_works(self):
        command, = re.findall(r"^    (scripts/install-collection.sh .*) --to DIR$", text_of("docs/manual.md"),
                              re.MULTILINE)
        subprocess.run(command.split() + ["--to", self.job.root], cwd=PROJECT, check=True, timeout=LIMIT,
                       stdout=subprocess.DEVNULL)
        self.assertTrue(os.path.exists(os.path.join(self.job.root, "databases/jaspar/jaspar_pfm_all.txt")))


if __name__ == "__main__":
    unittest.main()
