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

import text_reports                                                             # noqa: E402
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
    run.tree = ask_choice(console, "Would you like to generate phylogenetic tree? (Y or N):", ("Y", "N"))
    run.combine = ask_choice(console, "Would you like to combine similar motifs? (Y or N):", ("Y", "N"))
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
    """The report files of the run, in the order in which headers and footers are written."""
    kinds = ["global"] + (["references global"] if run.has_references else [])
    if run.all_types:
        kinds += ["full", "brief"] + (["references full", "references brief"] if run.has_references else [])
    return kinds if run.has_text else []


def write_sections(run, rankings):
    text = (["full", "brief"] if run.all_types else []) + ["global"] if run.has_text else []
    for key in text:
        text_reports.write_top(run, rankings, key)
    if not run.all_types:
        return
    for write in (text_reports.write_significant, text_reports.write_each):
        for key in text[:2]:
            write(run, rankings, key)


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
    records = compare_inputs(run)
    for key in report_keys(run):
        text_reports.begin(run, key)
    rankings = Rankings(run, records)
    write_sections(run, rankings)
    run.run_time = float(os.environ.get("TWIN_RUN_TIME", time.monotonic() - begun))
    for key in report_keys(run):
        text_reports.finish(run, key)
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
