"""The layout of the source tree: folders of src are layers, none is crowded, and stages are declared."""
import collections
import os
import re
import statistics
import subprocess
import unittest

PROJECT = os.path.abspath(os.path.join(os.path.dirname(__file__), os.pardir, os.pardir))

# Each folder of src with the folders below it, whose headers it may include. The run flow, src/run/runJob.cpp, is above
# all stages, and the companion, src/job, above that.
LAYERS = {
    "run": (),
    "report": ("run",),
    "scan": ("run",),
    "tree": ("run", "report"),
    "input": ("run", "report"),
    "rank": ("run", "report", "scan"),
    "database": ("run", "report", "input"),
    "merge": ("run", "report", "scan", "rank", "input"),
    "job": ("run", "report", "input", "database", "tree", "scan", "rank", "merge"),
}
FLOW = "run/runJob.cpp"

MEDIAN_LINES = 30
MOST_ENTRIES = 25
# Wings hold one unit a stage, and a corpus is data, which nobody reads through.
LARGE_FOLDERS = re.compile(r"src/\w+/stages|fuzz/corpus/\w+")

# Folders that are built or left behind by a run of the tests, where git cannot be asked.
UNTRACKED = {".git", "build", "__pycache__"}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def tracked_files():
    """Paths below the project, by git where there is a repository, else all that a source archive holds."""
    asked = subprocess.run(["git", "-c", "safe.directory=*", "ls-files", "-z"], cwd=PROJECT, check=False,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) if has_git() else None
    if asked is not None and asked.returncode == 0:
        names = [name for name in os.fsdecode(asked.stdout).split("\0") if name]
        return [name for name in names if os.path.exists(os.path.join(PROJECT, name))]
    found = []
    for folder, folders, names in os.walk(PROJECT):
        folders[:] = [name for name in folders if name not in UNTRACKED]
        found += [os.path.relpath(os.path.join(folder, name), PROJECT) for name in names if not name.endswith(".pyc")]
    return found


def has_git():
    return os.path.exists(os.path.join(PROJECT, ".git")) and any(
        os.access(os.path.join(place, "git"), os.X_OK) for place in os.get_exec_path())


def text_of(path):
    with open(os.path.join(PROJECT, path), encoding="utf-8") as file:
        return file.read()


def sources():
    """Paths below src."""
    for folder, _, names in os.walk(os.path.join(PROJECT, "src")):
        for name in names:
            if name.endswith((".h", ".cpp")):
                yield os.path.relpath(os.path.join(folder, name), os.path.join(PROJECT, "src"))


def wings():
    return [name for name in LAYERS if os.path.isdir(os.path.join(PROJECT, "src", name, "stages"))]


def is_allowed(source, included):
    """Whether this file of src may include that one; both are paths below src."""
    folder, target = source.split("/")[0], included.split("/")[0]
    return source == FLOW or target == folder or target in LAYERS[folder]


class Layers(unittest.TestCase):

    def test_the_rule_refuses_what_it_should(self):
        self.assertTrue(is_allowed("input/readInput.cpp", "run/settings.h"))
        self.assertTrue(is_allowed(FLOW, "merge/stages.h"))
        self.assertFalse(is_allowed("run/settings.cpp", "report/stages.h"))
        self.assertFalse(is_allowed("rank/stages/getResultsList.cpp", "merge/stages.h"))

    def test_every_folder_has_its_place(self):
        found = {name.split("/")[0] for name in sources()}
        self.assertEqual(found, set(LAYERS))

    def test_the_table_runs_downwards(self):
        seen = set()
        for folder, below in LAYERS.items():
            self.assertLessEqual(set(below), seen, folder)
            seen.add(folder)

    def test_includes_run_downwards(self):
        count = 0
        for source in sources():
            for included in INCLUDE.findall(text_of(os.path.join("src", source))):
                count += 1
                with self.subTest(source=source, included=included):
                    self.assertTrue(os.path.exists(os.path.join(PROJECT, "src", included)), "no such header of src")
                    self.assertTrue(is_allowed(source, included), "includes upwards")
        self.assertGreater(count, 100)


class Sizes(unittest.TestCase):

    def test_the_median_file_has_some_content(self):
        lines = [text_of(os.path.join("src", name)).count("\n") for name in sources() if "/stages/" not in name]
        self.assertGreaterEqual(statistics.median(lines), MEDIAN_LINES)

    def test_no_folder_is_crowded(self):
        entries = collections.defaultdict(set)
        for name in tracked_files():
            parts = name.split("/")
            for depth, part in enumerate(parts):
                entries["/".join(parts[:depth])].add(part)
        self.assertGreater(len(entries["src"]), 5)
        for folder, names in sorted(entries.items()):
            if not LARGE_FOLDERS.fullmatch(folder):
                with self.subTest(folder=folder or "."):
                    self.assertLessEqual(len(names), MOST_ENTRIES)


class Stages(unittest.TestCase):

    def test_every_stage_is_declared(self):
        self.assertTrue(wings())
        for wing in wings():
            declared = text_of(f"src/{wing}/stages.h")
            for unit in os.listdir(os.path.join(PROJECT, "src", wing, "stages")):
                with self.subTest(wing=wing, unit=unit):
                    stage, extension = os.path.splitext(unit)
                    self.assertEqual(extension, ".cpp", "a wing holds stages only; their header is stages.h")
                    self.assertRegex(declared, rf"(?m)^[a-z][^;]* {stage}\(")


if __name__ == "__main__":
    unittest.main()
