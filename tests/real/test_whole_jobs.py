"""Whole jobs with WebLogo, PHP, a PDF converter and R, in a folder of an awkward name and with awkward names."""
import csv
import html
import os
import re
import subprocess
import unittest

import browser
from pictures import dark_share, jpeg_samples, jpeg_size, png_picture
from real_job import (COLLECTION, FIRST_FILE, FIRST_SITES, SECOND_FILE, SECOND_SITES, TAXON, Job, RealJobCase)

BOTH_FILES = {FIRST_FILE: FIRST_SITES, SECOND_FILE: SECOND_SITES}
PAGES = ["Global_Matching_Phylogenetic_Tree", "HTML_Global_Matching_Results", "HTML_Results",
         "HTML_Results_Database_Matching", "HTML_Results_Database_Matching_Global_Matching", "Phylogenetic_Tree"]
TREES = ["", "Global_Matching_"]


def printed(command, path):
    """Output of one of the PDF inspection commands."""
    to_console = ["-"] if command[0] == "pdftotext" else []
    return subprocess.run([*command, path, *to_console], capture_output=True, text=True, timeout=60,
                          check=True).stdout


class PictureChecks:
    """What must hold of logos, PDF files and trees in every job that has them."""

    def check_logo_files(self, logos):
        """Each is a JPEG of a sane size with something drawn."""
        sizes = [jpeg_size(path.read_bytes()) for path in logos]
        for path, (width, height, samples), decoded in zip(logos, sizes, jpeg_samples(logos)):
            with self.subTest(path.name):
                self.assertTrue(100 <= width <= 1000 and 50 <= height <= 400, (width, height))
                self.assertEqual(len(decoded), width * height * samples)
                self.assertTrue(0.05 < dark_share(decoded) < 0.9, dark_share(decoded))

    def check_pdf(self, path):
        """Landscape pages, numbered from the first to the last."""
        facts = printed(["pdfinfo"], path)
        count = int(re.search(r"Pages: +(\d+)", facts)[1])
        size = re.search(r"Page size: +([\d.]+) x ([\d.]+)", facts)
        self.assertGreaterEqual(count, 1)
        self.assertGreater(float(size[1]), float(size[2]))
        self.assertEqual(re.findall(r"Page \d+ of \d+", printed(["pdftotext", "-layout"], path)),
                         [f"Page {number} of {count}" for number in range(1, count + 1)])

    def check_tree(self, path):
        """The picture has the told size and shows branches in black and labels in several colours."""
        width, height, pixels = png_picture(path.read_bytes())
        self.assertEqual((width, height), (700, 700))
        counts = {}
        for line in pixels:
            for pixel in line:
                counts[pixel] = counts.get(pixel, 0) + 1
        ground = max(counts, key=counts.get)
        self.assertTrue(0.5 < counts[ground] / 490000 < 0.999, counts[ground])
        self.assertGreaterEqual(len(counts), 5)


class AllFormats(RealJobCase, PictureChecks):
    """Two files, a collection, the tree, and every format."""

    @classmethod
    def make_job(cls, top):
        return Job(top, BOTH_FILES, "All", COLLECTION)

    def test_pages_pdf_files_and_pictures_are_there(self):
        wanted = {f"{name}.{kind}" for name in PAGES for kind in ("html", "pdf")}
        self.assertEqual(wanted - set(self.job.names()), set())
        self.assertEqual([name for name in self.job.names() if name.endswith((".php", ".unconverted"))], [])

    def test_nothing_of_the_shell_went_wrong(self):
        for text in ("not found", "syntax error", "Unterminated", "No such file", "nothing converted"):
            self.assertNotIn(text, self.job.console)

    def test_logos_of_the_pages_are_pictures(self):
        named = {path for page in self.job.pages() for path in self.job.logos(page)}
        self.assertEqual({path for path in named if not path.is_file()}, set())
        drawn = set((self.job.result / f"{self.job.identity}image").iterdir())
        self.assertEqual(len(drawn), 2 * (len(FIRST_SITES) + len(SECOND_SITES) + len(COLLECTION)))
        self.assertLessEqual(named, drawn)
        self.assertTrue(any(f"{self.job.identity}D" in path.name for path in named))
        self.check_logo_files(sorted(drawn))

    def test_reverse_logos_differ_unless_the_site_is_its_own_reverse(self):
        folder = self.job.result / f"{self.job.identity}image"
        for number, (name, site) in enumerate([*FIRST_SITES.items(), *SECOND_SITES.items()], 1):
            with self.subTest(name):
                ways = [(folder / f"{self.job.identity}M{number}{way}.jpeg").read_bytes() for way in ("", "RevComp")]
                own = site == site.translate(str.maketrans("ACGT", "TGCA"))[::-1]
                self.assertEqual(ways[0] == ways[1], own)

    def test_pdf_files_are_landscape_and_numbered(self):
        for name in PAGES:
            with self.subTest(name):
                self.check_pdf(self.job.path(f"{name}.pdf"))

    def test_no_record_of_a_pdf_is_torn(self):
        for name in PAGES:
            if "Tree" in name:
                continue
            with self.subTest(name):
                pages = printed(["pdftotext", "-layout"], self.job.path(f"{name}.pdf")).split("\f")[:-1]
                matches = 0
                for page in pages:
                    found = re.findall(r"Similarity score:|Alignment:|Original motif", page)
                    parts = "".join(part[0] for part in found)
                    # A motif has logos of its own, before its first match.
                    self.assertRegex(parts, "^(O|SAO)*$", page)
                    self.assertFalse(parts.startswith("O") and "Motif name:" not in page.split("Original")[0], page)
                    matches += parts.count("SAO")
                self.assertEqual(matches, self.job.path(f"{name}.html").read_text().count("Alignment:"))

    def test_awkward_names_come_out_right_in_the_page_and_the_pdf(self):
        page = self.job.path("HTML_Results.html").read_text()
        self.assertNotIn("<b>bold", page)
        shown = html.unescape(re.sub(r"<[^>]*>", "", page))
        for name in [FIRST_FILE, *FIRST_SITES, *SECOND_SITES]:
            self.assertIn(name, shown)
        text = printed(["pdftotext", "-layout"], self.job.path("HTML_Results.pdf"))
        for name in (FIRST_FILE, "R&D<b>bold</b>", "&amp;", "it's#1"):
            self.assertIn(name, text)

    def test_awkward_taxon_comes_out_right(self):
        page = self.job.path("HTML_Results_Database_Matching.html").read_text()
        self.assertNotIn("<apes>", page)
        shown = html.unescape(re.sub(r"<[^>]*>", "", page))
        self.assertIn(TAXON, shown)
        self.assertIn("E<box>&co", shown)
        self.assertIn(TAXON, printed(["pdftotext", "-layout"], self.job.path("HTML_Results_Database_Matching.pdf")))

    def test_distance_tables_read_back_with_the_names(self):
        names = [*FIRST_SITES, *SECOND_SITES]
        for tree, letter in zip(TREES, "IG"):
            with self.subTest(tree):
                with open(self.job.result / f"{tree}Distance_Matrix.csv", newline="", encoding="utf-8") as file:
                    rows = list(csv.reader(file))
                labels = [f"{letter}{number}_{name}" for number, name in enumerate(names, 1)]
                self.assertEqual(rows[0], ["", *labels, ""])
                self.assertEqual([row[0] for row in rows[1:]], labels)
                cells = [[float(cell) for cell in row[1:-1]] for row in rows[1:]]
                self.assertEqual(cells, [list(column) for column in zip(*cells)])

    def test_trees_are_drawn(self):
        for tree in TREES:
            with self.subTest(tree):
                self.check_tree(self.job.result / f"{tree}Phylogenetic_Tree.png")

    @unittest.skipUnless(browser.installed(), "Chromium is not installed (it is optional)")
    def test_pages_in_a_browser(self):
        for page in self.job.pages():
            with self.subTest(page.name):
                seen = browser.look_at(page)
                self.assertEqual([source for source, loaded in seen["pictures"] if not loaded], [])
                self.assertEqual(seen["console"], [])
                if "Tree" in page.name:
                    # The global tree follows each of the two clusterings of a whole run.
                    self.assertEqual(len(seen["pictures"]), 2 if "Global" in page.name else 1)
                else:
                    self.assertGreater(len(seen["pictures"]), 1)
                    self.check_lines(seen["lines"])

    def check_lines(self, lines):
        """The two lines of each alignment are of one length and as wide as each other."""
        self.assertGreater(len(lines), 0)
        self.assertEqual(len(lines) % 2, 0)
        for (upper, upper_width), (lower, lower_width) in zip(lines[::2], lines[1::2]):
            self.assertEqual(len(upper), len(lower))
            self.assertGreater(upper_width, 0)
            self.assertAlmostEqual(upper_width / len(upper), lower_width / len(lower), places=3, msg=(upper, lower))

    @unittest.skipUnless(browser.installed(), "Chromium is not installed (it is optional)")
    def test_a_lost_picture_would_be_seen(self):
        page = self.job.result / "lost.html"
        page.write_text("<html><body><img src='nowhere.jpeg'><script>console.error('told')</script></body></html>")
        self.addCleanup(page.unlink)
        seen = browser.look_at(page)
        self.assertEqual(seen["pictures"], [["nowhere.jpeg", False]])
        self.assertTrue(any("told" in line for line in seen["console"]))


class PdfAlone(RealJobCase, PictureChecks):
    """Format PDF: no page stays."""

    @classmethod
    def make_job(cls, top):
        return Job(top, BOTH_FILES, "PDF", tree="N")

    def test_only_pdf_files_and_pictures_stay(self):
        kept = [name for name in self.job.names() if "Combined" not in name]
        self.assertEqual(kept, ["HTML_Global_Matching_Results.pdf", "HTML_Results.pdf", "image", "input_motifs.txt"])
        for name in ("HTML_Global_Matching_Results.pdf", "HTML_Results.pdf"):
            with self.subTest(name):
                self.check_pdf(self.job.path(name))

    def test_matrix_files_are_removed(self):
        pictures = list((self.job.result / f"{self.job.identity}image").iterdir())
        self.assertEqual({path.suffix for path in pictures}, {".jpeg"})


class ThreadCounts(RealJobCase):
    """The same job with one, two and three threads."""

    @classmethod
    def make_job(cls, top):
        cls.jobs = []
        for threads in (1, 2, 3):
            os.mkdir(f"{top}/{threads}")
            cls.jobs.append(Job(f"{top}/{threads}", BOTH_FILES, "All", tree="N", threads=threads))
        return cls.jobs[0]

    def masked(self, job, text):
        """Without what tells when the job was, how long it took, and where."""
        text = re.sub(r"(?<=VARNOLIX on )[\d-]+ [\d:]+|(?<=Runtime: )\S+", "", text)
        return text.replace(job.identity, "").replace(str(job.folder), "")

    def check_equal(self, look):
        """What `look` finds of the first job it finds of the others."""
        first, *others = [look(job) for job in self.jobs]
        for threads, other in enumerate(others, 2):
            with self.subTest(threads):
                self.assertEqual(first, other)
        return first

    def test_files(self):
        self.check_equal(Job.names)

    def test_console(self):
        self.check_equal(lambda job: re.sub(r"\b\d(?= threads?\b)", "", self.masked(job, job.console)))

    def test_pictures(self):
        drawn = self.check_equal(lambda job: {path.name.removeprefix(job.identity): path.read_bytes()
                                              for path in (job.result / f"{job.identity}image").iterdir()})
        self.assertEqual(len(drawn), 2 * (len(FIRST_SITES) + len(SECOND_SITES)))

    def test_pages_and_pdf_files(self):
        self.check_equal(lambda job: [self.masked(job, path.read_text()) for path in job.pages()])
        texts = self.check_equal(lambda job: [self.masked(job, printed(["pdftotext", "-layout"], path))
                                              for path in sorted(job.result.glob("*.pdf"))])
        self.assertEqual(len(texts), 2)

    def test_log_of_the_conversions_is_whole(self):
        for job in self.jobs:
            lines = (job.folder / "prince.log").read_text().splitlines()
            self.assertEqual(len(lines), 2)
            for line in lines:
                self.assertRegex(line, r"\A[\d-]+ [\d:]+ .*/J_\S+\.html: converted by \w+ \(.*\)\Z")


class PagesAlone(RealJobCase, PictureChecks):
    """Format HTML with one file: pages and pictures, no PDF."""

    @classmethod
    def make_job(cls, top):
        return Job(top, {SECOND_FILE: SECOND_SITES}, "HTML", tree="N")

    def test_pages_and_their_logos(self):
        kept = [name for name in self.job.names() if "Combined" not in name]
        self.assertEqual(kept, ["HTML_Global_Matching_Results.html", "HTML_Results.html", "image", "input_motifs.txt"])
        named = self.job.logos(self.job.path("HTML_Results.html"))
        self.assertEqual(len({path.name for path in named}), 2 * len(SECOND_SITES))
        self.check_logo_files(sorted(set(named)))


if __name__ == "__main__":
    unittest.main()
