#!/usr/bin/env python3
"""A plain, slow twin of the program, written straight from its description.

It asks the same questions and leaves the same files; the golden results and the random comparisons come from it.
"""
import os
import random
import stat
import sys
import time

sys.dont_write_bytecode = True

import merging                                                                  # noqa: E402
import pages                                                                    # noqa: E402
import references                                                               # noqa: E402
import text_reports                                                             # noqa: E402
import tools                                                                    # noqa: E402
import tree                                                                     # noqa: E402
from arithmetic import general, is_double, is_numeric, strtod, strtol           # noqa: E402
from ranking import Rankings                                                    # noqa: E402
from reading import read_input                                                  # noqa: E402
from records import InputFile, Run, file_path                                   # noqa: E402
from scanning import compare_inputs                                             # noqa: E402

BAD = "Invalid input. Please, re-enter."
CUTOFFS = (0.5, 0.6, 0.7, 0.75, 0.8, 0.85, 0.9)
LAYOUTS = ("TRANSFAC", "TRANSFAC-like", "PSSM", "Jaspar", "MEME output", "Consensus sequence",
           "Sequence Alignment", "Matrices (Horizonal)", "Matrices (Vertical)", "Unspecified")
COLLECTIONS = (
    ("Jaspar 2016 (All)", "jasparAll"), ("Jaspar 2016 (Fungi)", "jasparFungi"),
    ("Jaspar 2016 (Insects)", "jasparInsects"), ("Jaspar 2016 (Nematodes)", "jasparNematodes"),
    ("Jaspar 2016 (Plants)", "jasparPlants"), ("Jaspar 2016 (Urochordates)", "jasparUrochordates"),
    ("Jaspar 2016 (Vertebrates)", "jasparVertebrates"), ("Transfac (Free version)", "transfac"),
    ("UniPROBE (Human)", "uniprobeHuman"), ("UniPROBE (Mouse)", "uniprobeMouse"),
    ("UniPROBE (Parasite)", "uniprobeParasite"), ("UniPROBE (Worm)", "uniprobeWorm"),
    ("UniPROBE (Yeast)", "uniprobeYeast"), ("None", "N"))
WHERE = "location (full path, for example, C:\\MyDocuments\\ for Windows and /home/MyFolder/ for Linux):"


# --- dialogue ----------------------------------------------------------------------------------------------------

def repeat(console, read, accepted, complaint):
    """Read until the answer is accepted; one line of complaint after each bad one."""
    answer = read("")
    while not accepted(answer):
        console.say(complaint)
        console.clear()
        answer = read(answer)
    return answer


def counted(low, high):
    return lambda text: is_numeric(text) and low <= strtol(text) and (high is None or strtol(text) <= high)


def ask_count(console, question, high):
    console.say(question)
    return strtol(repeat(console, console.word, counted(1, high), BAD))


def ask_choice(console, question, choices, complaint=BAD):
    console.say(question)
    return repeat(console, console.line, lambda text: text in choices, complaint)


def is_folder(text):
    try:
        return bool(os.stat(file_path(text)).st_mode & 0x4000)
    except (OSError, ValueError):
        return False


def note_threads(console):
    known = os.environ.get("OMP_NUM_THREADS", "")
    threads = int(known) if known.isdigit() else os.cpu_count()
    console.say("Maximum number of threads available on your machine is %d." % threads)
    console.say("This is the maximum number of threads can be allocated to run this program.")
    console.say()


def ask_files(run):
    console = run.console
    console.say("\nEnter input file names and formats (for example: 1). See the user manual for each format:\n")
    for number, layout in enumerate(LAYOUTS, 1):
        console.say("(%d) %s" % (number, layout))
    console.say()
    name = layout = ""
    for number in range(1, run.file_count + 1):
        console.say("Please, enter file name (in text format .txt, name without spaces):")
        name = console.line(name)
        while " " in name:
            console.say("Please, re-enter file name without spaces:")
            console.clear()
            name = console.line(name)
        console.say("Please, enter file format:")
        layout = console.line(layout)
        while not counted(1, 10)(layout):
            console.say("Invalid file format. Please, re-enter:")
            console.clear()
            layout = console.line(layout)
        run.files.append(InputFile(name, number))


def ask_collection(run):
    console = run.console
    console.say("\nEnter database name by selecting a number in the list below:\n")
    for number, (label, _) in enumerate(COLLECTIONS, 1):
        console.say("(%d) %s" % (number, label))
    console.say()
    names = {str(number): name for number, (_, name) in enumerate(COLLECTIONS, 1)}
    run.collection = names[repeat(console, console.word, names.__contains__, BAD)]
    console.ignore()


def ask_everything(run):
    console = run.console
    run.file_count = ask_count(console, "Please, enter number of files to read (must be > 0):", None)
    console.ignore()
    run.top_count = ask_count(
        console, "Please, enter number of top significant motifs (must be > 0 and <= 50):", 50)
    run.best_count = ask_count(console, "Please, enter number of best matches (must be > 0 and <= 50):", 50)
    console.say("Please, select a cutoff for similarity (>= 0.5, >= 0.6, >= 0.7, >= 0.75, >= 0.8, >= 0.85, >= 0.9):")
    run.cutoff = strtod(repeat(console, console.word, lambda t: is_double(t) and strtod(t) in CUTOFFS, BAD))
    console.say("Please, enter number of threads (must be >= 1):")
    repeat(console, console.word, lambda text: set(text) <= set("123456789"), BAD)
    note_threads(console)
    console.ignore()
    console.say("Please, enter input file's " + WHERE)
    run.input_path = console.line("")
    ask_files(run)
    ask_collection(run)
    run.wants_tree = ask_choice(console, "Would you like to generate phylogenetic tree? (Y or N):", ("Y", "N"))
    run.wants_merging = ask_choice(console, "Would you like to combine similar motifs? (Y or N):", ("Y", "N"))
    run.file_type = ask_choice(console, "Please, enter an output file type (Global-Only, All):",
                               ("Global-Only", "All"), "Invalid output file type. Please, re-enter.")
    run.format = ask_choice(console, "Please, enter an output file format (Text, HTML, PDF, All):",
                            ("Text", "HTML", "PDF", "All"), "Invalid output file format. Please, re-enter.")
    console.say("please, enter output file's " + WHERE)
    repeat(console, console.line, is_folder, "Invalid path. Please, re-enter.")


def derive_identity(run):
    run.job_id = "J_%s_%d_" % (time.strftime("%Y-%m-%d"), random.randint(1000, 9999))
    shortened = run.input_path[:-7] if len(run.input_path) >= 7 else run.input_path
    run.output_path = shortened + "result/"


# --- stages ------------------------------------------------------------------------------------------------------

def print_file_counts(run):
    run.console.say("\nYour input files, types, and counts are:\n")
    run.console.say(text_reports.file_table(run, "File Name", text_reports.longest_file_name(run))
                    .replace("Count of motifs", "Count of Motifs", 1))


def report_keys(run):
    """The reports of the run, in the order in which headers and footers are written."""
    keys = []
    for kind in (["global"], ["full"]) if run.all_types else (["global"],):
        for prefix in ("", "references ") if run.has_references else ("",):
            if run.has_text:
                keys += [prefix + name for name in kind + (["brief"] if kind == ["full"] else [])]
            if run.has_pages:
                keys.append("page " + prefix + kind[0])
    if run.has_merging:
        keys += ["merged global"] + (["merged local", "merged best"] if run.all_types else [])
    if run.has_tree and run.has_pages:
        keys += ["page tree global"] + (["page tree"] if run.all_types else [])
    return keys


def frame_of(key):
    return pages if key.startswith("page ") else text_reports


def write_sections(run, rankings):
    keys = ["full", "brief", "global", "page full", "page global"]
    keys = [key for key in keys if key in run.reports]
    for key in keys:
        frame_of(key).write_top(run, rankings, key)
    if not run.all_types:
        return
    for walk in ("write_significant", "write_each"):
        for key in keys:
            if not key.endswith("global"):
                getattr(frame_of(key), walk)(run, rankings, key)


def write_merged(run, rankings):
    top = [rankings.across[number - 1] for number in rankings.global_order]
    merging.write_merged(run, "merged global", top)
    if run.all_types:
        local = [rankings.local[number - 1] for number in rankings.local_order]
        merging.write_merged(run, "merged local", local)
        merging.write_merged(run, "merged best", rankings.local)


def write_references(run, reduced, kinds):
    for key in kinds:
        if key in run.reports:
            frame_of(key).write_references(run, reduced, key)


def match_references(run, rankings):
    references.read_references(run)
    if run.has_pages:
        tools.draw_logos(run, run.references, "D")
    if run.all_types:
        kinds = ("references full", "references brief", "page references full")
        write_references(run, references.match_all(run), kinds)
    top = [rankings.across[number - 1] for number in rankings.global_order]
    write_references(run, references.match_top(run, top), ("references global", "page references global"))


def convert_pages(run):
    """The order differs from that of the frames: the page, then its twin for the collection."""
    for key in ("page global", "page references global", "page full", "page references full",
                "page tree global", "page tree"):
        if key in run.reports:
            tools.convert_to_pdf(run, pages.NAMES[key])


def perform(run):
    console = run.console
    begun = time.monotonic()
    console.say("\nReading input ...")
    read_input(run)
    if len(run.motifs) < 2:
        console.stop("Error: insufficient number of motifs.\n")
    text_reports.write_listing(run)
    print_file_counts(run)
    console.say("Processing input ...")
    if run.has_pages:
        tools.draw_logos(run, run.motifs, "M")
    rankings = Rankings(run, compare_inputs(run))
    keys = report_keys(run)
    for key in keys:
        frame_of(key).begin(run, key)
    write_sections(run, rankings)
    if run.has_tree:
        tree.plot_and_write(run, rankings)
    if run.has_merging:
        write_merged(run, rankings)
    if run.has_references:
        match_references(run, rankings)
    run.run_time = float(os.environ.get("TWIN_RUN_TIME", time.monotonic() - begun))
    for key in keys:
        frame_of(key).finish(run, key)
    if run.has_pdf:
        convert_pages(run)
    console.say("Your output files have been saved in " + run.output_path)
    console.say()
    console.say("Runtime: %s seconds." % general(run.run_time))


def main():
    run = Run()
    ask_everything(run)
    derive_identity(run)
    perform(run)


if __name__ == "__main__":
    main()
