"""Tests of tools/prince.php with the real PHP, Chromium and WeasyPrint.

Prince is closed and cannot be installed here: a script that answers as Prince
does stands in for it, and for it alone.
"""
import http.server
import os
import re
import shutil
import signal
import struct
import subprocess
import tempfile
import threading
import time
import unittest
import zlib
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
ALIGNMENT = """<font face='Arial' size='2'>
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
"""
PAGE_RECORD = f"""<p style='page-break-before: always'>
{ALIGNMENT}</p>
"""
PAGE = PAGE_HEAD + 2 * PAGE_RECORD + "</body>\n</html>\n"

# A motif's heading with its logos, and matches of input motifs and of a collection, as pages have them.
LOGOS = """<p>
<table class='sansserif' width='{width}' border = '0' cellSpacing = '1' cellPadding = '1' >
<col width= '500'>
<tr>
<td><font size = '2'>
Original motif &nbsp;&nbsp;&nbsp;&nbsp;&nbsp;Consensus sequence: CACGTG
</font></td>
<td><font size = '2'>
Reverse complement motif
</font></td>
</tr>
<tr>
<td></td>
</tr>
<tr>
<td>
<img src = 'logo.png'
name = 'Image1' align = 'left' width = '350' height = '100' border = '0'>
</td>
</tr>
</table>
</p>
"""
MOTIF = """<table class='sansserif' width='900' border = '0' cellSpacing = '1' cellPadding = '1' >
<col width= '170'>
<tr>
<td><b>
Motif ID: 1
</b></td>
</tr>
</table>
""" + LOGOS.format(width=1200) + """<p class='sansserif'>
<b> Best Matches for Motif ID 1 </b>
</p>
"""
MATCH = """<table class='sansserif' width='{rows}' cellpadding='0' cellspacing='0' >
<col width= '300'>
{labels}</table>
<br>
{alignment}{logos}<hr>
"""
LABELS = "".join(f"<tr>\n<td><font size = '2'>\n{label}\n</font></td>\n</tr>\n" for label in (
    "Dataset #:", "Motif ID:", "Motif name:", "Matching format of first motif:", "Matching format of second motif:",
    "Direction:", "Position number:", "Number of overlap:", "Similarity score:"))


def report_page(rows, logos, motifs):
    """A page of records with tables of the given widths; some motifs have no match, some have four."""
    match = MATCH.format(rows=rows, labels=LABELS, alignment=ALIGNMENT, logos=LOGOS.format(width=logos))
    records = "".join(MOTIF + (number % 5) * match for number in range(motifs))
    return (PAGE_HEAD + "<h3 class='sansserif'> RESULTS </h3>\n</div>\n<div class = 'boxed'>\n"
            "<h3 class='sansserif'> Best Matches </h3>\n" + records +
            "</div>\n<p class='sansserif'>\nThe end.\n</p>\n</body>\n</html>\n")


def png(width):
    """A small black picture, 10 pixels high."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, 10, 8, 0, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(10 * bytes(1 + width))) + chunk(b"IEND", b""))


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

# The last argument is the name of the PDF.
PRINCE_STAND_IN = """#!/bin/sh
for argument; do printf '%s\\n' "$argument"; done > arguments
printf '{pdf}' > "$argument"
printf 'msg|wrn|page.html:3|a | in the text\\n' >&2
printf 'fin|{end}\\n' >&2
"""


def php_string(path):
    """`path` as it stands between apostrophes in a PHP script."""
    return re.sub(r"(['\\])", r"\\\1", str(path))


class PrinceCase(ToolCase):
    """A job folder with a copy of prince.php, as the program uses it."""
    needs = {"php": "php-cli", "weasyprint": "weasyprint",
             "pdftotext": "poppler-utils", "pdfdetach": "poppler-utils", "fc-match": "fontconfig"}

    def setUp(self):
        super().setUp()
        shutil.copy(TOOLS / "prince.php", self.folder)
        self.page = self.folder / "job 1's \"#1\" 100%25? \u00e4\\_HTML_Results.html"
        self.page.write_text(PAGE)
        self.pdf = self.page.with_suffix(".pdf")
        self.homes = self.holder / "home"
        self.homes.mkdir()
        self.commands = self.holder / "bin"
        self.commands.mkdir()
        self.prince = "/usr/local/bin/no-prince-here"
        self.settings = {}

    def offer(self, *names):
        """Limits PATH to the named commands, beside those that are always there."""
        for name in ("php", "timeout", "rm", *names):
            (self.commands / name).symlink_to(shutil.which(name))

    def start(self, page=None, script="script.php"):
        """Starts the program's script in a process group of its own."""
        script = self.folder / script
        script.write_text(SCRIPT.format(folder=php_string(self.folder),
                                        prince=php_string(self.prince),
                                        page=php_string(page or self.page)))
        path = self.commands if any(self.commands.iterdir()) else os.environ["PATH"]
        return subprocess.Popen(
            ["/bin/sh", TOOLS / "bin/php5", script], cwd=self.folder, start_new_session=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
            env={"PATH": str(path), "VARNOLIX_TOOLS": str(TOOLS),
                 "HOME": str(self.homes), "TMPDIR": str(self.homes), **self.settings})

    def convert(self, page=None):
        """Runs the program's script; gives what it prints."""
        with self.start(page) as run:
            try:
                return run.communicate(timeout=120)[0]
            finally:
                run.kill()

    def stand_in_for_chromium(self, text):
        """Offers a shell script by the name of Chromium, which gets `$pdf` and `$profile`, and no other converter."""
        self.offer("sleep", "mkdir")
        path = self.commands / "chromium"
        path.write_text("#!/bin/sh\nfor word; do case $word in --print-to-pdf=*) pdf=${word#*=} ;;\n"
                        "--user-data-dir=*) profile=${word#*=} ;; esac; done\n" + text)
        path.chmod(0o755)

    def processes(self):
        """Command lines of the processes that name the folder for temporary files."""
        found = []
        for path in Path("/proc").glob("[0-9]*/cmdline"):
            try:
                line = path.read_bytes()
            except OSError:
                continue   # it has just ended
            if os.fsencode(self.homes) in line:
                found.append(line)
        return found

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
        # In points, of 72 to 25.4 mm.
        self.assertAlmostEqual(float(size[1]), 334 / 25.4 * 72, delta=1)
        self.assertAlmostEqual(float(size[2]), 236 / 25.4 * 72, delta=1)
        fonts = self.inspect("pdffonts", self.pdf)
        for face in ("DejaVu-?Sans", "Liberation-?Sans", "Liberation-?Mono"):
            self.assertRegex(fonts, face)
        # The page's number would be in a serif face if it had not the font of the text.
        self.assertNotRegex(fonts, "Serif|Times")

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


class ConverterChecks:
    """What holds for each converter; `converter` names it."""
    converter = ""

    def convert_well(self):
        """Converts the page by this converter."""
        self.assertEqual(self.convert(), "")
        self.assertRegex(self.log(), rf"_HTML_Results.html: converted by {self.converter} \(")
        self.assertNotIn("made no PDF", self.log())

    def test_makes_the_report(self):
        self.offer_converter()
        self.convert_well()
        self.check_report_pdf()
        self.check_alignment()
        self.check_nothing_left()

    def test_keeps_every_record_on_one_page(self):
        self.offer_converter()
        (self.folder / "logo.png").write_bytes(png(35))
        for rows, logos in ((600, 1000), (1000, 1200)):
            with self.subTest(rows=rows):
                self.page.write_text(report_page(rows, logos, 20))
                self.convert_well()
                pages = self.inspect("pdftotext", "-layout", self.pdf, "-").split("\f")[:-1]
                self.assertEqual(sum(page.count("Alignment:") for page in pages), 40)
                self.assertGreater(len(pages), 20)
                for number, page in enumerate(pages, 1):
                    parts = "".join(re.findall(r"(?m)Motif ID: 1$|Best M|^ *Dat|Sim|Ali|NIW|---|Original", page))
                    record = "DatSimAliNIW---Original"
                    self.assertRegex(parts, f"^(Best M)?((Motif ID: 1OriginalBest M)?({record})*)*$", f"page {number}")
                self.assertIn("Alignment:", pages[-1])

    def test_loads_nothing_from_elsewhere_and_runs_no_script(self):
        self.offer_converter()
        requests = []

        class Listener(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                requests.append(self.path)
                self.send_error(404)

            def log_message(self, *_):
                pass

        server = http.server.HTTPServer(("127.0.0.1", 0), Listener)
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        self.addCleanup(lambda: (server.shutdown(), thread.join(), server.server_close()))
        site = f"http://127.0.0.1:{server.server_port}"
        (self.folder / "logo.png").write_bytes(png(35))
        outside = self.holder / "outside.png"
        outside.write_bytes(png(37))
        (self.folder / "planted.png").symlink_to(outside)
        secret = self.holder / "secret.txt"
        secret.write_text("a secret")
        sources = ["logo.png", outside, outside.as_uri(), "../outside.png", "planted.png", f"{site}/picture.png"]
        self.page.write_text(
            PAGE_HEAD + "<p>before</p>" + "".join(f"<img src = '{source}'\nname = 'x'>\n" for source in sources) +
            f"<script>document.body.append('a script ran')</script><script src='{site}/x.js'></script>"
            f"<b onclick='' style=\"background: url('{outside.as_uri()}')\">b</b>"
            f"<link rel='stylesheet' href='{site}/x.css'><link rel='attachment' href='{secret.as_uri()}'>"
            f"<iframe src='{secret.as_uri()}'></iframe><object data='{outside.as_uri()}'></object>"
            f"<style>@import '{site}/y.css';</style><meta http-equiv='refresh' content='0;url={secret.as_uri()}'>"
            "<img src=x onerror=\"document.body.append('a script ran')\"><p>behind</p></body></html>\n")
        self.convert_well()
        text = self.inspect("pdftotext", self.pdf, "-")
        self.assertIn("before", text)
        self.assertIn("behind", text)
        for word in ("a secret", "script ran"):
            self.assertNotIn(word, text)
        self.assertEqual(requests, [])
        # Chromium draws signs of its own in place of what it did not get.
        widths = re.findall(r"(?m)^ +\d+ +\d+ image +(\d+) ", self.inspect("pdfimages", "-list", self.pdf))
        self.assertIn("35", widths)
        self.assertNotIn("37", widths)
        self.assertIn("0 embedded files", self.inspect("pdfdetach", "-list", self.pdf))

    def test_interrupted_leaves_nothing_and_ends_by_the_signal(self):
        self.offer_converter()
        self.page.write_text(report_page(600, 1000, 300))
        before = sorted(self.folder.iterdir())
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number), self.start() as run:
                self.wait_until(lambda: len(self.processes()) > 1)
                time.sleep(0.3)   # well into it
                # As from the terminal, to all of the group.
                os.killpg(run.pid, number)
                run.communicate(timeout=30)
                self.assertEqual(run.returncode, -number)
                self.wait_until(lambda: not self.processes())
                (self.folder / "script.php").unlink()
                (self.folder / "prince.log").unlink()
                self.assertEqual(sorted(self.folder.iterdir()), before)
                self.assertEqual([path.name for path in self.homes.iterdir() if path.name != ".cache"], [])

    def wait_until(self, holds):
        """Waits for something that has to happen soon."""
        end = time.monotonic() + 30
        while not holds():
            self.assertLess(time.monotonic(), end, self.processes())
            time.sleep(0.02)


class WeasyPrintTest(ConverterChecks, PrinceCase):
    converter = "WeasyPrint"

    def offer_converter(self):
        """Leaves no other."""
        if not (self.commands / "weasyprint").exists():
            self.offer("weasyprint")

    def test_follows_a_converter_that_makes_no_pdf(self):
        # Like Chromium at its worst, `true` is content and leaves nothing.
        self.offer("weasyprint")
        (self.commands / "chromium").symlink_to(shutil.which("true"))
        self.assertEqual(self.convert(), "")
        self.assertTrue(self.pdf.exists())
        self.assertRegex(self.log(), "(?s)Chromium .*made no PDF.*converted by WeasyPrint")

    def test_replaces_an_older_pdf(self):
        self.offer("weasyprint")
        self.pdf.write_text("old")
        self.convert()
        self.check_report_pdf()

    def test_writes_through_no_link(self):
        self.offer("weasyprint")
        other = self.holder / "other"
        other.write_text("old")
        self.pdf.symlink_to(other)
        self.assertEqual(self.convert(), "")
        self.assertFalse(self.pdf.is_symlink())
        self.assertEqual(other.read_text(), "old")


@unittest.skipUnless(shutil.which("chromium"), "Chromium is not installed (it is optional)")
class ChromiumTest(ConverterChecks, PrinceCase):
    converter = "Chromium"

    def offer_converter(self):
        """It is the first of those that are installed."""

    def test_works_with_a_long_path_for_temporary_files(self):
        self.homes = self.homes / ("long" * 20)
        self.homes.mkdir()
        self.convert_well()

    def test_leaves_no_profile_and_nothing_in_the_home(self):
        self.convert()
        self.assertTrue(self.pdf.exists())
        self.assertEqual(list(self.homes.iterdir()), [])

    def look_of_report(self, **settings):
        """A report's PDF as it looks: all words with their places, the fonts, and the drawn pages."""
        (self.folder / "logo.png").write_bytes(png(35))
        self.page.write_text(report_page(600, 1000, 20))
        self.settings = settings
        self.convert_well()
        words = re.findall("<(?:page|word) .*", self.inspect("pdftotext", "-bbox", self.pdf, "-"))
        self.assertGreater(len(words), 1000)
        with tempfile.TemporaryDirectory(dir=self.holder) as drawn:
            self.inspect("pdftoppm", "-r", "50", self.pdf, f"{drawn}/page")
            pictures = [path.read_bytes() for path in sorted(Path(drawn).iterdir())]
        return words, self.inspect("pdffonts", self.pdf), pictures

    def test_tags_come_on_request_and_do_not_show(self):
        looks = {}
        for wish, tagged in (("", "no"), ("yes", "yes")):
            looks[tagged] = self.look_of_report(VARNOLIX_PDF_TAGS=wish)
            self.assertRegex(self.inspect("pdfinfo", self.pdf), rf"(?m)^Tagged: +{tagged}$")
        self.assertEqual(looks["no"], looks["yes"])

    def test_the_rule_for_the_screen_does_not_show(self):
        tools = self.holder / "tools"
        shutil.copytree(TOOLS / "fonts", tools / "fonts")
        style = tools / "fonts/paper.css"
        rule = re.search(r"(?s)@media screen \{.*?\n\}\n", style.read_text())[0]
        style.write_text(style.read_text().replace(rule, ""))
        self.assertEqual(self.look_of_report(), self.look_of_report(VARNOLIX_TOOLS=str(tools)))


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

    def check_no_pdf(self):
        """It is told, and neither the PDF nor a part of it is there."""
        self.assertTrue(self.convert().startswith("nothing converted"))
        self.assertRegex(self.log(), "(?s)Chromium .*made no PDF.*no converter made a PDF")
        self.assertEqual([path.name for path in self.folder.iterdir() if ".pdf" in path.name], [])
        self.assertEqual(list(self.homes.iterdir()), [])

    def test_an_empty_pdf_is_none(self):
        self.stand_in_for_chromium(': > "$pdf"')
        self.check_no_pdf()

    def test_a_cut_pdf_is_none(self):
        self.stand_in_for_chromium("printf '%%PDF-1.4\\n1 0 obj\\n' > \"$pdf\"")
        self.check_no_pdf()

    def test_a_pdf_without_its_head_is_none(self):
        self.stand_in_for_chromium("printf 'x\\n%%%%EOF\\n' > \"$pdf\"")
        self.check_no_pdf()

    def test_a_whole_pdf_is_one(self):
        # The stand-in of the tests above would do if the PDF were whole.
        self.stand_in_for_chromium("printf '%%PDF-1.4\\n%%%%EOF\\n' > \"$pdf\"")
        self.assertEqual(self.convert(), "")
        self.assertEqual(self.pdf.read_text(), "%PDF-1.4\n%%EOF\n")

    def test_a_place_that_is_taken_is_reported(self):
        self.stand_in_for_chromium("printf '%%PDF-1.4\\n%%%%EOF\\n' > \"$pdf\"")
        self.pdf.mkdir()
        self.assertTrue(self.convert().startswith("nothing converted"))
        self.assertIn("cannot write", self.log())
        self.assertEqual([path.name for path in self.folder.iterdir() if ".part" in path.name], [])

    def test_no_room_for_temporary_files_is_reported(self):
        self.stand_in_for_chromium("")
        self.homes.rmdir()
        self.assertTrue(self.convert().startswith("nothing converted"))
        self.assertIn("cannot make the temporary folder", self.log())

    def test_a_stubborn_converter_is_ended_too(self):
        # Half a PDF, a profile, and a process that outlives the first.
        self.stand_in_for_chromium('printf %s %PDF- > "$pdf"; mkdir "$profile"; sleep 300 "$profile" &\n'
                                   'sh=$!; : > "$profile/ready"; sleep 300')
        with self.start() as run:
            end = time.monotonic() + 30
            while not list(self.homes.glob("*/profile/ready")):
                self.assertLess(time.monotonic(), end)
                time.sleep(0.02)
            # To the one process only: those below it are its own business.
            os.kill(run.pid, signal.SIGTERM)
            run.communicate(timeout=30)
        self.assertEqual(run.returncode, -signal.SIGTERM)
        self.assertEqual(self.processes(), [])
        self.assertEqual(list(self.homes.iterdir()), [])
        self.assertFalse(self.pdf.exists())


class TogetherTest(PrinceCase):
    """Several pages at once, as the program converts them."""
    pages = 8

    def convert_all(self):
        """Converts copies of the page at the same time; gives their paths and what is printed for each."""
        pages = [self.folder / f"page {number}.html" for number in range(self.pages)]
        for page in pages:
            shutil.copy(self.page, page)
        runs = [self.start(page, f"script {number}.php") for number, page in enumerate(pages)]
        return pages, [run.communicate(timeout=120)[0] for run in runs]

    def test_each_gets_its_own_pdf(self):
        self.stand_in_for_chromium('printf "%%PDF-1.4\\n$$\\n%%%%EOF\\n" > "$pdf"\n')
        pages, printed = self.convert_all()
        self.assertEqual(set(printed), {""})
        self.assertEqual(len({page.with_suffix(".pdf").read_text() for page in pages}), self.pages)
        self.assertEqual(sorted(re.findall(r"page \d\.html: converted by Chromium", self.log())),
                         [f"page {number}.html: converted by Chromium" for number in range(self.pages)])

    def test_log_entries_are_whole(self):
        """Long ones, each of one word many times."""
        self.stand_in_for_chromium('n=0; while [ $n -lt 4000 ]; do printf "$$ "; n=$((n + 1)); done; exit 1\n')
        pages, _ = self.convert_all()
        for page in pages:
            about = [line.split(" ", 2)[2].removeprefix(f"{page}: ") for line in self.log().splitlines()
                     if f" {page}: " in line]
            self.assertEqual(len(about), 2)
            self.assertRegex(about[0], r"\Awrn: Chromium \(.*\) made no PDF \(status 1\): (\d+)( \1){3999}\Z")
            self.assertEqual(about[1], "err: no converter made a PDF")
        self.assertEqual(len(self.log().splitlines()), 2 * self.pages)


class RealPrinceProtocolTest(PrinceCase):
    def stand_in(self, end, pdf="%%PDF-1.4\\n%%%%EOF\\n"):
        """Installs the stand-in, which ends with the given word."""
        path = self.folder / "its prince"
        path.write_text(PRINCE_STAND_IN.format(end=end, pdf=pdf))
        path.chmod(0o755)
        self.prince = path

    def test_is_called_as_it_wants(self):
        self.stand_in("success")
        self.assertEqual(self.convert(), "")
        *arguments, pdf = (self.folder / "arguments").read_text().splitlines()
        self.assertEqual(arguments, ["-i", "html", "--no-xinclude", "--log=prince.log",
                                     "--structured-log=normal", str(self.page), "-o"])
        self.assertTrue(pdf.startswith(str(self.homes)))
        self.assertTrue(self.pdf.exists())
        self.assertIn("converted by Prince", self.log())

    def test_its_messages_come_back(self):
        self.stand_in("failure")
        printed = self.convert()
        self.assertTrue(printed.startswith("nothing converted"))
        for text in ("wrn", "page.html:3", "a | in the text"):
            self.assertIn(f'"{text}"', printed)
        self.assertFalse(self.pdf.exists())

    def test_its_cut_pdf_is_none(self):
        self.stand_in("success", pdf="%%PDF-1.4\\n")
        self.assertTrue(self.convert().startswith("nothing converted"))
        self.assertFalse(self.pdf.exists())


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
