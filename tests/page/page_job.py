"""The jobs whose pages are tested."""
import csv
import os
import shutil
import sys
import tempfile
from random import Random

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "job"))
from companion import COMPANION, write                                          # noqa: E402, F401
import subprocess                                                               # noqa: E402

SAMPLES = [os.path.join(ROOT, "examples", "motifs", name) for name in ("promoters.txt", "enhancers.txt")]
COLLECTION = os.path.join(ROOT, "examples", "collection", "sample_jaspar.txt")
LIMIT = 300                             # seconds for a job

# Names that would be markup, or end a script or a line of it, if they were not taken as data.
HOSTILE = ["</script><script>window.hacked=1</script>", "<img/src=x/onerror=window.hacked=2>",
           "\"'`${window.hacked=3}`", "a\u2028b\u2029c", "<!--<script>", "&lt;b&gt;&amp;", "__proto__", "{{data}}"]
MATRIX = "A [ 9 0 1 {0} 0 1 ]\nC [ 0 9 1 0 {0} 7 ]\nG [ 1 1 8 1 1 1 ]\nT [ 0 0 0 {0} 9 1 ]\n"


def hostile_file():
    """Motifs in the Jaspar layout with hostile names."""
    return "".join(f">{name} {name}\n{MATRIX.format(number)}\n" for number, name in enumerate(HOSTILE, 1))


def random_file(count, seed):
    """Motifs in the Jaspar layout, every five of them alike."""
    random, text, base = Random(seed), "", []
    for number in range(count):
        if number % 5 == 0:
            base = [[random.gammavariate(0.25, 1) + 0.001 for _ in range(4)] for _ in range(random.randint(7, 20))]
        columns = [[max(1, round(100 * share / sum(column) + random.gauss(0, 6))) for share in column]
                   for column in base]
        text += f">R{seed}.{number} factor{number // 5}\n"
        text += "".join(f"{letter} [ {' '.join(str(column[place]) for column in columns)} ]\n"
                        for place, letter in enumerate("ACGT")) + "\n"
    return text


def planted_families(count, seed, singles=0.2):
    """Motifs in families of skewed sizes: (name, family, columns), in a random order. Members are cut and extended at
    both ends, noisy, and half of them on the other strand. A share of the motifs is alone in its family."""
    random, motifs, family = Random(seed), [], 0
    while len(motifs) < count:
        family += 1
        core = [[random.gammavariate(0.2, 1) + 0.001 for _ in range(4)] for _ in range(random.randint(8, 16))]
        core = [[share / sum(column) for share in column] for column in core]
        size = 1 if random.random() < singles * 3 else min(1 + int(random.paretovariate(0.9)), 60, count - len(motifs))
        for member in range(size):
            columns = [*([[0.25] * 4] * random.choice((0, 0, 1, 2))), *core, *([[0.25] * 4] * random.choice((0, 0, 1)))]
            columns = columns[random.choice((0, 0, 1)):len(columns) - random.choice((0, 0, 1))]
            columns = [[max(1, round(200 * share + random.gauss(0, 6))) for share in column] for column in columns]
            if random.random() < 0.5:
                columns = [column[::-1] for column in columns[::-1]]
            motifs.append((f"M{seed}.{family}.{member}", family, columns))
    random.shuffle(motifs)
    return motifs


def jaspar_file(motifs):
    """Motifs of `planted_families` in the Jaspar layout; the second name tells the family."""
    return "".join(f">{name} planted{family}\n" + "".join(
        f"{letter} [ {' '.join(str(column[place]) for column in columns)} ]\n"
        for place, letter in enumerate("ACGT")) + "\n" for name, family, columns in motifs)


class Job:
    """A finished job in a folder of its own; `rows` are those of matches.tsv."""

    def __init__(self, *arguments, files=(), env=None):
        self.top = os.path.realpath(tempfile.mkdtemp(prefix="varnolix-page-"))
        for name, text in dict(files).items():
            write(os.path.join(self.top, name), text)
        self.folder = os.path.join(self.top, "job")
        done = subprocess.run([COMPANION, "run", "-q", "-o", "job", *arguments], cwd=self.top, capture_output=True,
                              timeout=LIMIT, check=False, env={**os.environ, **(env or {})})
        if done.returncode != 0:
            raise AssertionError(done.stderr.decode())
        self.address = "file://" + self.path("index.html")

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def text(self, *parts):
        with open(self.path(*parts), encoding="utf-8", newline="") as file:
            return file.read()

    def table(self, name):
        lines = self.text(name).split("\n")[:-1]
        return list(csv.DictReader(lines, delimiter="\t", quoting=csv.QUOTE_NONE))

    def remove(self):
        shutil.rmtree(self.top)
