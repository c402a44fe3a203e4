"""The text reports: frame, sections, records and alignment drawing."""
import time

from arithmetic import fixed, general
from records import ORIGINAL, REVERSE, Report

STARS, DASHES = "*" * 196, "-" * 196
BANNER = "VARNOLIX - Matrix Kinship Finder\nVersion 2.1\n"
LABELS = {
    "transfac": "Transfac", "jasparAll": "Jaspar Core", "jasparFungi": "Jaspar Fungi",
    "jasparInsects": "Jaspar Insects", "jasparNematodes": "Jaspar Nematodes", "jasparPlants": "Jaspar Plants",
    "jasparUrochordates": "Jaspar Urochordates", "jasparVertebrates": "Jaspar Vertebrates",
    "uniprobeHuman": "UniProbe Homo Sapiens", "uniprobeMouse": "UniProbe Mus Musculus",
    "uniprobeParasite": "UniProbe Parasite (Plasmodium Falciparum)",
    "uniprobeWorm": "UniProbe Worm (Caenorhabditis Elegans)",
    "uniprobeYeast": "UniProbe Yeast (Saccharomyces Cerevisiae)",
}
NAMES = {
    "full": "Results.txt", "brief": "Results_Without_Motif_Details.txt", "global": "Results_Global_Matching.txt",
    "references full": "Results_Database_Matching.txt",
    "references brief": "Results_Database_Matching_Without_Motif_Details.txt",
    "references global": "Results_Database_Matching_Global_Matching.txt",
    "merged global": "Results_Combined_Motifs_Global_Matching.txt",
    "merged local": "Results_Combined_Motifs_Global_and_Local_Matching.txt",
    "merged best": "Results_Combined_Motifs_Best_Matches.txt",
}
ONE_FILE = "There is no global matching for 1 motif file."


def row(texts, widths):
    """Left-aligned columns, the padding kept behind the last one too."""
    return "".join(str(text).ljust(width) for text, width in zip(texts, widths)) + "\n"


def file_table(run, head, width):
    widths = (width, 20, 15)
    return row((head, "Count of motifs", "Dataset #"), widths) + "".join(
        row((file.name, file.motif_count, file.dataset), widths) for file in run.files)


def longest_file_name(run):
    return max((len(file.name) for file in run.files), default=0)


def now():
    return time.strftime("%m-%d-%Y %X")


def yes_no(flag):
    return "Yes" if flag else "No"


# --- listing -----------------------------------------------------------------------------------------------------

def write_listing(run):
    """The plain listing of all input motifs; a file that does not open is named and passed over."""
    text = BANNER + "\nTotal number of motifs: %d\n\nInput files and motif counts\n" % len(run.motifs)
    text += file_table(run, "File name", longest_file_name(run)) + "\nInput Motifs\n\n\n"
    for motif in run.motifs:
        text += "Dataset #: %d\tMotif ID: %d\tMotif name: %s\n\n" % (motif.dataset, motif.id, motif.name)
        text += "".join("".join(fixed(value) + "\t" for value in column) + "\n" for column in motif.matrix)
        text += "\n\n"
    try:
        with open(run.output("input_motifs.txt").encode("latin-1"), "wb") as file:
            file.write(text.encode("latin-1"))
    except OSError as error:
        run.console.name_unwritten(run.output("input_motifs.txt"), error)


# --- frame -------------------------------------------------------------------------------------------------------

def begin(run, key):
    run.reports[key] = Report(run, NAMES[key])
    note = ONE_FILE + "\n" if key == "merged global" and run.file_count == 1 else ""
    run.reports[key].begin(header(run) + note)


def header(run):
    parameters = [
        "Number of files: %d" % run.file_count,
        "Number of top significant motifs: %d" % run.top_count,
        "Number of best matches: %d" % run.best_count,
        "Similarity cutoff: >= " + general(run.cutoff),
        "Matching motif database: " + LABELS.get(run.collection, "None"),
        "Phylogenetic tree: " + yes_no(run.has_tree),
        "Combined similar motifs: " + yes_no(run.has_merging),
        "Output file type: " + run.file_type,
        "Output file format: " + run.format,
    ]
    lines = [STARS, BANNER, STARS, "INPUT", STARS, "", "Input Parameters "] + parameters
    width = longest_file_name(run) + 10
    return ("\n".join(lines) + "\n\nInput files and motif counts\n" + file_table(run, "File name", width)
            + "\n".join(["", STARS, "RESULTS", STARS, "", ""]))


def finish(run, key):
    """The run time follows the notation that the report's stream was left in."""
    report = run.reports[key]
    seconds = fixed(run.run_time) if report.fixed else general(run.run_time)
    report.add("\nResults created by VARNOLIX on %s\nRuntime: %s seconds\n\nVARNOLIX is written by Hadrel Quonsett\n"
               % (now(), seconds))


# --- motifs ------------------------------------------------------------------------------------------------------

def matrix_rows(matrix):
    return "".join("".join(fixed(value).ljust(12) for value in column) + "\n" for column in matrix)


def matrix_block(motif, second_title="Reverse complement motif"):
    return ("Original motif\n" + matrix_rows(motif.matrix) + "Consensus sequence: " + motif.consensus + "\n\n"
            + second_title + "\n" + matrix_rows(motif.reverse)
            + "Consensus sequence: " + motif.reverse_consensus + "\n")


def motif_line(motif):
    return "Dataset #: %d\t\tMotif ID: %d\t\tMotif name: %s" % (motif.dataset, motif.id, motif.name)


def brief_motif(motif):
    return ("%s\t\tConsensus sequence (original motif): %s\t\tConsensus sequence (reverse complement motif): %s\n\n\n\n"
            % (motif_line(motif), motif.consensus, motif.reverse_consensus))


def full_motif(motif, second_title):
    return motif_line(motif) + "\n\n" + matrix_block(motif, second_title) + "\n\n"


# --- records -----------------------------------------------------------------------------------------------------

def drawing(b, a, record, format_b):
    """The two lines of an alignment; motif A is always drawn by the record's first format."""
    text_b = {ORIGINAL: b.consensus, REVERSE: b.reverse_consensus}[format_b]
    text_a = a.consensus if record.format1 == ORIGINAL else a.reverse_consensus
    total = len(b.consensus) + len(a.consensus) - record.overlap
    offset = "-" * (record.position - 1)
    padding_b = "-" * (total - len(b.consensus))
    padding_a = "-" * (total - len(a.consensus) - len(offset))
    if record.direction == "Forward":
        return text_b + padding_b, offset + text_a + padding_a
    return padding_b + text_b, padding_a + text_a + offset


def other_motif(run, record, number):
    """(B, its format) for a record of the input motif of this id."""
    if number == record.id1:
        return run.motifs[record.id2 - 1], record.format2
    return run.motifs[record.id1 - 1], record.format1


def species_label(run):
    return "Species" if run.collection.startswith("uniprobe") or run.collection == "transfac" else "Taxon"


def record_text(run, record, number, with_matrices, references, as_fixed):
    if references:
        b, format_b = run.references[record.id2 - 1], record.format2
    else:
        b, format_b = other_motif(run, record, number)
    head = ["Motif ID", "Motif name", "Matching format of first motif", "Matching format of second motif",
            "Direction", "Position #", "# of overlap", "Similarity score"]
    values = [b.catalogue_id if references else b.id, b.name, record.format1, record.format2, record.direction,
              record.position, record.overlap, fixed(record.score) if as_fixed else general(record.score)]
    widths = [15, run.name_length + 10, 40, 40, 15, 15, 15, 15]
    if not references:
        head, values, widths = ["Dataset #"] + head, [b.dataset] + values, [15] + widths
    text = row(head, widths) + row(values, widths) + "\n"
    if references:
        text += "%s: %s\n\n" % (species_label(run), b.taxon)
    if with_matrices:
        text += matrix_block(b)
    else:
        text += ("Consensus sequence (original motif): %s\nConsensus sequence (reverse complement motif): %s\n"
                 % (b.consensus, b.reverse_consensus))
    return text + "\nAlignment:\n%s\n%s\n\n%s\n" % (*drawing(b, run.motifs[number - 1], record, format_b), DASHES)


def write_records(run, key, records, number, references=False):
    """A matrix cell leaves the report's stream in fixed notation; an empty matrix has no cell."""
    report, text, with_matrices = run.reports[key], "", not key.endswith("brief")
    for record in records:
        if references and record.id1 != number:
            continue
        text += record_text(run, record, number, with_matrices, references, report.fixed)
        if with_matrices:
            b = run.references[record.id2 - 1] if references else other_motif(run, record, number)[0]
            report.fixed = report.fixed or bool(b.matrix)
    report.add(text)


# --- sections ----------------------------------------------------------------------------------------------------

def heading(title, before, after=None):
    return "*" * before + " " + title + " " + "*" * (before if after is None else after) + "\n\n"


def write_section(run, key, order, reduced, motif_title, stars, references=False):
    for number in order:
        motif = run.motifs[number - 1]
        second = "Reserve complement motif" if references else "Reverse complement motif"
        block = brief_motif(motif) if key.endswith("brief") else full_motif(motif, second)
        run.reports[key].add(block + heading("%s %d (Highest to Lowest)" % (motif_title, number), stars))
        write_records(run, key, reduced[number - 1], number, references)


def write_top(run, rankings, key):
    title = "Top %d Significant Motifs - Global Matching (Highest to Lowest)" % run.top_count
    run.reports[key].add(heading(title, 66))
    if not rankings.several_files:
        run.reports[key].add(ONE_FILE + "\n")
        return
    write_section(run, key, rankings.global_order, rankings.across, "Best Matches for Top Significant Motif ID", 63)


def write_significant(run, rankings, key):
    run.reports[key].add(heading("Significant Motifs - Global and Local Matching (Highest to Lowest)", 64))
    stars = 62 if key == "brief" else 67
    write_section(run, key, rankings.local_order, rankings.local, "Best Matches for Significant Motif ID", stars)


def non_empty(reduced):
    return [place + 1 for place, group in enumerate(reduced) if group]


def write_each(run, rankings, key):
    run.reports[key].add(heading("Best Matches for Each Motif (Highest to Lowest)", 70, 77))
    write_section(run, key, non_empty(rankings.local), rankings.local, "Best Matches for Motif ID", 72)


def write_references(run, reduced, key):
    run.reports[key].add(heading("Best Matches in Database for Each Motif (Highest to Lowest)", 70, 65))
    write_section(run, key, non_empty(reduced), reduced, "Best Matches for Motif ID", 72, references=True)
