"""Tests of tools/prince.php with the real PHP, Chromium and WeasyPrint.

Prince is closed and cannot be installed here: a script that answers as Prince
does stands in for it, and for it alone.
"""
import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from support import TOOLS, ToolCase

# The frame of the program's pages, with enough records for three pages.
PAGE_HEAD = """<html>
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8" />
<title>VARNOLIX Results</title>
<style type = 'text/css'>
.sansserif {font-family: Verdana}
@media print{@page {size: landscape}}
@page { @bottom-right { content: 'Page ' counter(page) ' of ' counter(pages); } }
</style>
</head>
<body>
<h1 class='sansserif'> VARNOLIX - Matrix Kinship Finder </h1>
"""
PAGE_RECORD = """<p style='page-break-before: always'>
<font face='Arial' size='2'>
Alignment:
</font>
<br>
<font face = 'Courier New'>
NIWWTAIIIWMN
</font>
<br>
<font face = 'Courier New'>
---WTAIIIW--
</font>
</p>
"""
PAGE = PAGE_HEAD + 2 * PAGE_RECORD + "</body>\n</html>\n"

# What the program writes for each page.
SCRIPT = """<?php
require '{folder}/prince.php';
$prince = new Prince('{prince}');
if(!$prince) die('Cannot instantiate Prince.');
$prince->setHTML(TRUE);
$prince->setLog('prince.log');
$xmlPath = '{page}';
$msgs = array();
$convert = $prince->convert_file($xmlPath, $msgs);
if(!$convert)
{{
echo 'nothing converted';
var_dump($msgs);
}}
?>
"""

PRINCE_STAND_IN = """#!/bin/sh
for argument; do printf '%s\\n' "$argument"; done > arguments
printf 'msg|wrn|page.html:3|a | in the text\\n' >&2
printf 'fin|{end}\\n' >&2
"""


def php_string(path):
    """`path` as it stands between apostrophes in a PHP script."""
    return re.sub(r"(['\\])", r"\\\1", str(path))


class PrinceCase(ToolCase):
    """A job folder with a copy of prince.php, as the program uses it."""
    needs = {"php": "php-cli", "weasyprint": "weasyprint",
             "pdftotext": "poppler-utils", "fc-match": "fontconfig"}

    def setUp(self):
        super().setUp()
        shutil.copy(TOOLS / "prince.php", self.folder)
        self.page = self.folder / "job 1's #1 100%_HTML_Results.html"
        self.page.write_text(PAGE)
        self.pdf = self.page.with_suffix(".pdf")
        self.homes = self.holder / "home"
        self.homes.mkdir()
        self.commands = self.holder / "bin"
        self.commands.mkdir()
        self.prince = "/usr/local/bin/no-prince-here"

    def offer(self, *names):
        """Limits PATH to the named commands, beside those that are always there."""
        for name in ("php", "timeout", "rm", *names):
            (self.commands / name).symlink_to(shutil.which(name))

    def convert(self, page=None):
        """Runs the program's script; gives what it prints."""
        script = self.folder / "script.php"
        script.write_text(SCRIPT.format(folder=php_string(self.folder),
                                        prince=php_string(self.prince),
                                        page=php_string(page or self.page)))
        path = self.commands if any(self.commands.iterdir()) else os.environ["PATH"]
        run = subprocess.run(
            ["/bin/sh", TOOLS / "bin/php5", script], cwd=self.folder, timeout=120,
            capture_output=True, text=True,
            env={"PATH": str(path), "VARNOLIX_TOOLS": str(TOOLS),
                 "HOME": str(self.homes), "TMPDIR": str(self.homes)})
        return run.stdout

    def log(self):
        """The log of the conversions."""
        return (self.folder / "prince.log").read_text()

    def inspect(self, *command):
        """Output of one of the PDF inspection commands."""
        return subprocess.run([*command], capture_output=True, text=True,
                              timeout=60, check=True).stdout

    def check_report_pdf(self):
        """The PDF stands beside the page, landscape, numbered and in the right faces."""
        text = self.inspect("pdftotext", "-layout", self.pdf, "-")
        self.assertEqual(re.findall(r"Page \d+ of \d+", text),
                         ["Page 1 of 3", "Page 2 of 3", "Page 3 of 3"])
        self.assertIn("NIWWTAIIIWMN", text)
        size = re.search(r"Page size: +([\d.]+) x ([\d.]+)",
                         self.inspect("pdfinfo", self.pdf))
        self.assertGreater(float(size[1]), float(size[2]))
        fonts = self.inspect("pdffonts", self.pdf)
        for face in ("DejaVu-?Sans", "Liberation-?Sans", "Liberation-?Mono"):
            self.assertRegex(fonts, face)

    def check_alignment(self):
        """Both lines of an alignment begin and end at the same places."""
        words = self.inspect("pdftotext", "-bbox", "-f", "2", "-l", "2", self.pdf, "-")
        ends = [re.search(rf'xMin="([\d.]+)".*xMax="([\d.]+)".*>{line}<', words).groups()
                for line in ("NIWWTAIIIWMN", "---WTAIIIW--")]
        self.assertEqual(ends[0], ends[1])

    def check_nothing_left(self):
        """Only the PDF and the log are new."""
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()),
                         sorted([self.page.name, self.pdf.name, "prince.log",
                                 "prince.php", "script.php"]))


class WeasyPrintTest(PrinceCase):
    def test_makes_the_report(self):
        self.offer("weasyprint")
        self.assertEqual(self.convert(), "")
        self.check_report_pdf()
        self.check_alignment()
        self.check_nothing_left()
        self.assertRegex(self.log(), r"Results.html: converted by WeasyPrint \(")

    def test_follows_a_converter_that_makes_no_pdf(self):
        # Like Chromium at its worst, `true` is content and leaves nothing.
        self.offer("weasyprint")
        (self.commands / "chromium").symlink_to(shutil.which("true"))
        self.assertEqual(self.convert(), "")
        self.assertTrue(self.pdf.exists())
        self.assertRegex(self.log(), "(?s)Chromium made no PDF.*converted by WeasyPrint")

    def test_replaces_an_older_pdf(self):
        self.offer("weasyprint")
        self.pdf.write_text("old")
        self.convert()
        self.check_report_pdf()


@unittest.skipUnless(shutil.which("chromium"), "Chromium is not installed (it is optional)")
class ChromiumTest(PrinceCase):
    def test_makes_the_report(self):
        self.assertEqual(self.convert(), "")
        self.check_report_pdf()
        self.check_alignment()
        self.check_nothing_left()
        self.assertRegex(self.log(), r"Results.html: converted by Chromium \(")

    def test_leaves_no_profile_and_nothing_in_the_home(self):
        self.convert()
        self.assertTrue(self.pdf.exists())
        self.assertEqual(list(self.homes.iterdir()), [])


class FailureTest(PrinceCase):
    def test_missing_page_is_reported(self):
        printed = self.convert(self.folder / "missing.html")
        self.assertTrue(printed.startswith("nothing converted"))
        self.assertIn("cannot read the page", printed)
        self.assertIn("missing.html: err: cannot read the page", self.log())
        self.assertFalse((self.folder / "missing.pdf").exists())

    def test_no_converter_at_hand_is_reported(self):
        self.offer()
        printed = self.convert()
        self.assertTrue(printed.startswith("nothing converted"))
        self.assertIn("no converter made a PDF", printed)
        self.assertFalse(self.pdf.exists())


class RealPrinceProtocolTest(PrinceCase):
    def stand_in(self, end):
        """Installs the stand-in, which ends with the given word."""
        path = self.folder / "its prince"
        path.write_text(PRINCE_STAND_IN.format(end=end))
        path.chmod(0o755)
        self.prince = path

    def test_is_called_as_it_wants(self):
        self.stand_in("success")
        self.assertEqual(self.convert(), "")
        self.assertEqual((self.folder / "arguments").read_text().splitlines(),
                         ["-i", "html", "--no-xinclude", "--log=prince.log",
                          "--structured-log=normal", str(self.page)])
        self.assertIn("converted by Prince", self.log())

    def test_its_messages_come_back(self):
        self.stand_in("failure")
        printed = self.convert()
        self.assertTrue(printed.startswith("nothing converted"))
        for text in ("wrn", "page.html:3", "a | in the text"):
            self.assertIn(f'"{text}"', printed)


class FontsTest(PrinceCase):
    def test_are_found_beside_the_linked_file_too(self):
        (self.folder / "prince.php").unlink()
        (self.folder / "prince.php").symlink_to(TOOLS / "prince.php")
        found = self.inspect(
            "php", "-r", "require $argv[1]; $find = new ReflectionMethod('Prince', "
            "'findOwn'); echo $find->invoke(null, 'fonts/fonts.conf');",
            str(self.folder / "prince.php"))
        self.assertEqual(Path(found), TOOLS / "fonts/fonts.conf")

    def test_verdana_gets_a_sans_face(self):
        match = subprocess.run(["fc-match", "-f", "%{family}", "Verdana"], text=True,
                               capture_output=True, timeout=30, check=True,
                               env={"FONTCONFIG_FILE": str(TOOLS / "fonts/fonts.conf")})
        self.assertEqual(match.stdout, "DejaVu Sans")
