"""Tests of tools/R/dendextend: the tree of a job is the same with the stand-in as with the real package.

The script is the one that the golden cases hold the program to.
"""
import math
import os
import random
import re
import subprocess
from pathlib import Path

from support import TOOLS, ToolCase

SCRIPT = re.search(r'SCRIPT = """(.*?)"""', (TOOLS.parent / "tests/twin/tree.py").read_text(), re.DOTALL)[1]
MOTIFS = 150
LOADED_QUIETLY = ("ggplot2", "ggdendro")    # the script asks for them and goes on without
TELL = """
writeLines(c(find.package('dendextend'), deparse(clus10, width.cutoff = 500)), 'told')
"""


def random_table(count, steps):
    """Distances between random places in a cube as the program's table; `steps` rounds them, so that many are equal."""
    generator = random.Random(8)
    places = [[generator.random() for _ in range(3)] for _ in range(count)]
    names = [f"I{number}_motif{number}" for number in range(1, count + 1)]
    lines = ['"",' + "".join(f'"{name}",' for name in names)]
    for name, place in zip(names, places):
        distances = [round(math.dist(place, other) * steps) / steps for other in places]
        lines.append(f'"{name}",' + "".join(f"{distance:g}," for distance in distances))
    return "\n".join(lines) + "\n"


class DendextendTest(ToolCase):
    needs = {"Rscript": "r-base-core"}

    def run_r(self, *command, **environment):
        """Output of R with the surroundings of its own packages and no others."""
        surroundings = {name: value for name, value in os.environ.items() if not name.startswith("R_")}
        return subprocess.run(command, cwd=self.folder, env={**surroundings, **environment}, text=True, timeout=100,
                              stdin=subprocess.DEVNULL, capture_output=True, check=False)

    def packages(self):
        """The folder of each package that R has, by name."""
        run = self.run_r("Rscript", "-e", "writeLines(.libPaths())")
        libraries = [Path(line) for line in run.stdout.splitlines()]
        return {path.name: path for library in reversed(libraries) for path in library.iterdir()}

    def with_the_stand_in_alone(self):
        """The variables of an R that has neither the real package nor those that are loaded quietly."""
        site, library = self.holder / "site", self.holder / "library"
        site.mkdir()
        library.mkdir()
        for name, path in self.packages().items():
            if name not in ("dendextend", *LOADED_QUIETLY):
                (site / name).symlink_to(path)
        run = self.run_r("R", "CMD", "INSTALL", "--no-docs", f"--library={library}", str(TOOLS / "R/dendextend"),
                         R_LIBS_SITE=str(site))
        self.assertEqual(run.returncode, 0, run.stderr)
        return {"R_LIBS": str(library), "R_LIBS_SITE": str(site), "R_LIBS_USER": str(self.holder / "none")}

    def draw(self, table, **environment):
        """Groups, picture, and the folder of the package that made them."""
        (self.folder / "table.csv").write_text(table)
        (self.folder / "plot.R").write_text(SCRIPT % ("table.csv", "tree.png") + TELL)
        run = self.run_r("Rscript", "plot.R", **environment)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
        package, _, groups = (self.folder / "told").read_text().partition("\n")
        return groups, (self.folder / "tree.png").read_bytes(), Path(package)

    def test_draws_the_tree_in_ten_groups(self):
        stand_in = self.with_the_stand_in_alone()
        groups, picture, package = self.draw(random_table(MOTIFS, 10**6), **stand_in)
        self.assertEqual(package.parent, Path(stand_in["R_LIBS"]))
        self.assertTrue(picture.startswith(b"\x89PNG"))
        numbers = [int(number) for number in re.findall(r"= (\d+)L", groups)]
        self.assertEqual((len(numbers), set(numbers)), (MOTIFS, set(range(1, 11))))

    def test_groups_and_picture_are_those_of_the_real_package(self):
        if "dendextend" not in self.packages():
            self.skipTest("the real package is not installed (r-cran-dendextend)")
        stand_in = self.with_the_stand_in_alone()
        for steps in (10**6, 5):
            with self.subTest(steps=steps):
                table = random_table(MOTIFS, steps)
                ours, real = self.draw(table, **stand_in), self.draw(table)
                self.assertNotEqual(ours[2], real[2])
                self.assertEqual(ours[:2], real[:2])
