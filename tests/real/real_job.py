"""A whole job of the real program with the real outside tools, in a job folder of an awkward name."""
import html
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LIMIT = 110             # seconds for one job
JOB_FOLDER = "somebody's job folder"

NEEDS = {"weblogo": "python3-weblogo", "gs": "ghostscript", "php": "php-cli", "weasyprint": "weasyprint",
         "Rscript": "r-base-core", "pdftotext": "poppler-utils", "pdfinfo": "poppler-utils"}

# Ten sites at least, so that the tree can be cut into ten; the odd names come first.
FIRST_FILE = "a&<b>'c'\"d\".txt"
SECOND_FILE = "plain.txt"
FIRST_SITES = {"R&D<b>bold</b>": "CACGTGAC", "say\"so\",twice": "TATAAAAG", "it's#1": "TGACGTCA",
               "&amp;": "AGATAAGG", "octamer": "ATGCAAAT", "gc_box": "GGGGCGGGG"}
SECOND_SITES = {"ebox,2": "GCACGTGA", "tata": "CTATAAAA", "cre": "ATGACGTCAT", "gata": "AGATAAGA",
                "caat": "GCCAATCA", "ap1": "TGAGTCAG"}
TAXON = "Homo & \"Pan\" <apes> 'all'"
COLLECTION = {f"S1.1 E<box>&co {TAXON}": "CACGTGAC", "S2.1 cre plain": "TGACGTCA"}


def sites_text(sites):
    """A motif file of consensus sequences."""
    return "".join(f">{name}\n{site}\n\n" for name, site in sites.items())


def jaspar_text(sites):
    """A collection file in the layout of Jaspar, twenty sites a motif."""
    blocks = []
    for header, site in sites.items():
        rows = (f"{base} [ " + " ".join("20" if letter == base else "0" for letter in site) + " ]\n" for base in "ACGT")
        blocks.append(f">{header}\n" + "".join(rows))
    return "".join(blocks)


class Job:
    """One finished job: its folder, what was printed, and its files by their bare name."""

    def __init__(self, top, files, output_format, collection=None, tree="Y", threads=2):
        self.folder = Path(top) / JOB_FOLDER
        # Not the user's store of logos, and as many threads as are asked for.
        self.environment = {**os.environ, "XDG_CACHE_HOME": f"{top}/cache", "OMP_NUM_THREADS": "8"}
        self.call(ROOT / "scripts/new-job.sh", self.folder)
        for name, sites in files.items():
            (self.folder / "motifs" / name).write_text(sites_text(sites))
        if collection:
            self.install(Path(top) / "collection.txt", collection)
        answers = [len(files), 3, 3, "0.75", threads, f"{self.folder}/motifs/"]
        for name in files:
            answers += [name, 10]
        answers += [1 if collection else 14, tree, "Y", "All", output_format, f"{self.folder}/result/"]
        (self.folder / "answers.txt").write_text("".join(f"{answer}\n" for answer in answers))
        self.console = self.call(self.folder / "run", self.folder / "answers.txt")
        self.result = self.folder / "result"
        listing = next(self.result.glob("J_*_input_motifs.txt"))
        self.identity = listing.name[:-len("input_motifs.txt")]

    def install(self, file, collection):
        """Puts the collection into the job folder."""
        file.write_text(jaspar_text(collection))
        self.call(ROOT / "scripts/install-collection.sh", "jasparAll", file, "--to", self.folder)

    def call(self, *command):
        """Output of a command that must end well; its whole process group ends with the limit."""
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   text=True, start_new_session=True, env=self.environment)
        try:
            output, _ = process.communicate(timeout=LIMIT)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.communicate()
            raise
        if process.returncode != 0:
            raise RuntimeError(f"{command} ended with {process.returncode}: {output[-2000:]}")
        return output

    def names(self):
        """Names of the result folder, without the job's identity."""
        return sorted(path.name.removeprefix(self.identity) for path in self.result.iterdir())

    def path(self, name):
        """A file of the job, by its name behind the identity."""
        return self.result / (self.identity + name)

    def pages(self):
        """All pages of the job."""
        return sorted(self.result.glob("*.html"))

    def logos(self, page):
        """The logo files that a page names."""
        return [self.result / html.unescape(source)
                for source in re.findall(r"<img src = '([^']+\.jpeg)'", page.read_text())]


class RealJobCase(unittest.TestCase):
    """Tests of one job, run once for all of them.

    A missing tool fails the tests, since the reports need it. Only where the surroundings say
    VARNOLIX_TEXT_ONLY=1 are they skipped, and say so.
    """

    @classmethod
    def setUpClass(cls):
        missing = [f"{command} (package {package})" for command, package in NEEDS.items() if not shutil.which(command)]
        if missing:
            text = "not installed: " + ", ".join(missing)
            if os.environ.get("VARNOLIX_TEXT_ONLY") == "1":
                raise unittest.SkipTest("VARNOLIX_TEXT_ONLY=1; " + text)
            raise RuntimeError(text)
        if not os.access(os.environ.get("VARNOLIX_PROGRAM", ""), os.X_OK):
            raise RuntimeError("VARNOLIX_PROGRAM must name the program")
        holder = tempfile.TemporaryDirectory(prefix="varnolix-real-")
        cls.addClassCleanup(holder.cleanup)
        cls.job = cls.make_job(holder.name)

    @classmethod
    def make_job(cls, top):
        """The job of these tests."""
        raise NotImplementedError
