"""Calls of the outside tools through the shell: logos, PDF files, trees. Their results are never looked at."""
import os
import re
import shlex
import sys

from arithmetic import general
from records import current_directory, file_path

LOGO = ("weblogo-3.4/weblogo --format jpeg --sequence-type dna --units bits --composition none --first-index 1 %s"
        "--size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES --ticmarks 1.0 --errorbars NO "
        "--stack-width 20 --resolution 96 --scale-width yes --color-scheme classic --color green A 'Adenine' "
        "--color blue C 'Cytosine' --color orange G 'Guanine' --color red T 'Thymine'")
SCRIPT = """<?php
require '%s/prince.php';
$prince = new Prince('/usr/local/bin/prince');
if(!$prince) die('Cannot instantiate Prince.');
$prince->setHTML(TRUE);
$prince->setLog('prince.log');
$xmlPath = '%s';
$msgs = array();
$convert = $prince->convert_file($xmlPath, $msgs);
if(!$convert)
{
echo 'nothing converted';
var_dump($msgs);
}
?>
"""


def shell(command):
    sys.stdout.buffer.flush()
    os.system(file_path(command))


def no_option(path):
    """A path that begins with "-" must not be taken for an option."""
    return "./" + path if path.startswith("-") else path


def quoted(path):
    """A path as one word of a command line."""
    return shlex.quote(no_option(path))


def escaped(path):
    """A path for between the apostrophes of a PHP or R string."""
    return re.sub(r"(['\\])", r"\\\1", no_option(path))


def put(run, path, text):
    try:
        with open(file_path(path), "wb") as file:
            file.write(text.encode("latin-1"))
    except OSError as error:
        run.console.stop_for_output(path, error)


def remove(path):
    try:
        os.remove(file_path(path))
    except OSError:
        pass


def draw_logos(run, motifs, letter):
    for motif in motifs:
        folder = run.output("image")
        try:
            os.mkdir(file_path(folder), 0o777)
        except OSError:
            pass
        stem = "%s/%s%s%d" % (folder, run.job_id, letter, motif.id)
        rows = ["%d %s\n" % (place, "".join(general(value) + " " for value in column))
                for place, column in enumerate(motif.matrix, 1)]
        put(run, stem + ".txt", "PO A C G T \n" + "".join(rows))
        for option, ending in (("", ".jpeg"), ("--revcomp ", "RevComp.jpeg")):
            command = quoted(run.input_path + "weblogo-3.4/weblogo") + (LOGO % option)[len("weblogo-3.4/weblogo"):]
            shell("%s < %s > %s" % (command, quoted(stem + ".txt"), quoted(stem + ending)))
        remove(stem + ".txt")


def is_whole_pdf(path):
    """Whether a file has the header and the end of a PDF."""
    try:
        with open(path, "rb") as file:
            content = file.read()
    except OSError:
        return False
    return content.startswith(b"%PDF-") and content.rstrip(b"\0\t\n\f\r ").endswith(b"%%EOF")


def convert_to_pdf(run, name):
    """With format "PDF" the page goes, but never as the only copy of the results."""
    stem = run.output(name)[:-len(".html")]
    put(run, stem + ".php", SCRIPT % (escaped(current_directory()), escaped(stem + ".html")))
    shell("php5 " + quoted(stem + ".php"))
    remove(stem + ".php")
    if run.format != "PDF":
        return
    if is_whole_pdf(file_path(stem + ".pdf")):
        remove(stem + ".html")
    else:
        os.rename(file_path(stem + ".html"), file_path(stem + ".html.unconverted"))
