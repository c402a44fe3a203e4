"""Reference collections: the catalogue of files, their two layouts, and the scans against them."""
from ranking import rank_references
from reading import columns_of, file_lines, is_numeric, position_of, tokens_of
from records import Motif, current_directory
from scanning import compare_references

FILES = {
    "jasparAll": "jaspar/jaspar_pfm_all.txt", "jasparFungi": "jaspar/jaspar_pfm_fungi.txt",
    "jasparInsects": "jaspar/jaspar_pfm_insects.txt", "jasparNematodes": "jaspar/jaspar_pfm_nematodes.txt",
    "jasparPlants": "jaspar/jaspar_pfm_plants.txt", "jasparUrochordates": "jaspar/jaspar_pfm_urochordates.txt",
    "jasparVertebrates": "jaspar/jaspar_pfm_vertebrates.txt", "transfac": "transfac/transfac.txt",
    "uniprobeHuman": "uniprobe/uniprobe_human.txt", "uniprobeMouse": "uniprobe/uniprobe_mouse.txt",
    "uniprobeParasite": "uniprobe/uniprobe_parasite.txt", "uniprobeWorm": "uniprobe/uniprobe_worm.txt",
    "uniprobeYeast": "uniprobe/uniprobe_yeast.txt",
}
TAXA = {
    "jasparFungi": "Fungi", "jasparInsects": "Insects", "jasparNematodes": "Nematodes", "jasparPlants": "Plants",
    "jasparUrochordates": "Urochordates", "jasparVertebrates": "Vertebrates",
    "uniprobeHuman": "Homo sapiens", "uniprobeMouse": "Mus musculus",
    "uniprobeParasite": "Parasite (Plasmodium Falciparum)", "uniprobeWorm": "Worm (Caenorhabditis Elegans)",
    "uniprobeYeast": "Yeast (saccharomyces cerevisiae)",
}


def read_references(run):
    lines = file_lines(current_directory() + "/databases/" + FILES[run.collection])
    if lines is None:
        run.console.stop("Invalid input path or file name.\n")
    rows = [tokens_of(line.rstrip(" \n\r\t")) for line in lines]
    rows = [row for row in rows if row]
    if run.collection == "transfac":
        read_entries(run, rows)
    else:
        read_blocks(run, rows)


def append(run, name, taxon, catalogue_id, matrix):
    number = len(run.references) + 1
    run.references.append(Motif(number, 1, number, name, matrix, taxon, catalogue_id))


def read_blocks(run, rows):
    """A header line that begins with ">", then a row for each base; the T row closes the block."""
    header, values = [""], {}
    for row in rows:
        if row[0].startswith(">"):
            header, values = [row[0][1:]] + row[1:], {}
        elif row[0] in ("A", "C", "G", "T"):
            cleaned = [token.strip("[]") for token in row[1:]]
            values[row[0]] = [token for token in cleaned if token]
            if row[0] == "T":
                taxon = TAXA.get(run.collection, " ".join(header[2:]))
                name = header[1] if len(header) > 1 else header[0]
                append(run, name, taxon, header[0], columns_of([values.get(base, []) for base in "ACGT"]))
                values = {}


def read_entries(run, rows):
    """Entries ended by "//", by the next entry's first lines, or by the end of the file."""
    texts, positions = {}, []
    for row in rows + [["//"]]:
        is_head = row[0] in ("AC", "ID", "NA", "DE")
        if row[0] == "//" or (is_head and positions):
            if positions:
                append_entry(run, texts, positions)
            texts, positions = {}, []
        if len(row) in (5, 6) and all(map(is_numeric, row[1:5])):
            positions.append(position_of(row[1:5]))
        else:
            texts.setdefault(row[0], " ".join(row[1:]))


def append_entry(run, texts, positions):
    name = next((texts[tag] for tag in ("NA", "ID", "DE") if tag in texts), "")
    taxon = texts.get("OS", "")
    if not taxon and "Species: " in texts.get("BF", ""):
        taxon = texts["BF"].split("Species: ", 1)[1].removesuffix(".")
    append(run, name, taxon, texts.get("AC", name), positions)


def match_all(run):
    """The reduced lists of all input motifs against the collection."""
    return rank_references(run, compare_references(run, run.motifs))


def match_top(run, groups):
    """The reduced lists of the first motif of each group of the global ranking."""
    outer = []
    for group in groups:
        first, motif = group[0], run.motifs[group[0].id1 - 1]
        copy = Motif(first.id1, first.dataset1, motif.place, first.name1, motif.matrix)
        copy.reverse, copy.consensus = motif.reverse, motif.consensus
        copy.reverse_consensus = motif.reverse_consensus
        outer.append(copy)
    return rank_references(run, compare_references(run, outer))
