"""The distance tables, the scripts that plot them, and the bodies of the tree pages."""
import math

from arithmetic import general
from tools import escaped, put, quoted, shell

SCRIPT = """options(warn = -1)
suppressMessages(require(ggplot2))
suppressMessages(require(ggdendro))
suppressMessages(require(dendextend))
suppressMessages(library(ape))

tb = read.csv('%s', row.names = 1)
d = as.dist(tb)
hc <- as.dendrogram(hclust(d))
colors = c('red', 'blue', 'green4', 'black', 'brown', 'magenta', 'purple', 'darkorange', 'deepskyblue', 'darkgreen')
clus10 = cutree(hc, 10)
png('%s', width=700, height=700)
plot(as.phylo(hc), type = 'fan', tip.color = colors[clus10], cex = 0.7, label.offset = 0.05)
invisible(dev.off())
options(warn = 0)
"""
BOX = """<div class = 'boxed'>
<b class='sansserif'><font size='2'> Phylogenetic Tree for %s </font></b>
<br>
<img src = '%s' style='width:660px;height:660px' >
</div>
"""
ONE_FILE_BOX = """<div class = 'boxed'>
<font size='2' class='sansserif'> There is no phylogenetic tree for global significant motifs and their best matches \
for 1 motif file. </font>
<br><br>
</div>
"""


def cell(text):
    """A cell of the table, quoted only where a plain one would break it."""
    return '"%s"' % text.replace('"', '""') if any(letter in text for letter in ',"\n\r') else text


def table(run, groups, letter, start):
    """Each cell holds the lowest key of its pair, or the start value."""
    size = len(run.motifs)
    distances = [[0.0 if i == j else start for j in range(size)] for i in range(size)]
    for record in (record for group in groups for record in group):
        for i, j in ((record.id1 - 1, record.id2 - 1), (record.id2 - 1, record.id1 - 1)):
            distances[i][j] = min(distances[i][j], record.score)
    labels = [cell("%s%d_%s" % (letter, motif.id, motif.name)) for motif in run.motifs]
    rows = [[""] + labels] + [[label] + [general(value) for value in row] for label, row in zip(labels, distances)]
    return "".join("".join(text + "," for text in row) + "\n" for row in rows)


def plot(run, groups, largest_key, across):
    prefix, letter, above = ("Global_Matching_", "G", 3) if across else ("", "I", 2)
    stem = run.output_path + prefix
    csv, image, script = stem + "Distance_Matrix.csv", stem + "Phylogenetic_Tree.png", stem + "Plot_File.R"
    put(run, csv, table(run, groups, letter, float(math.ceil(largest_key + above))))
    put(run, script, SCRIPT % (escaped(csv), escaped(image)))
    shell("Rscript " + quoted(script))


def write_body(run, across):
    if across:
        title = "Global Significant Motifs and Their Best Matches"
        text = BOX % (title, "Global_Matching_Phylogenetic_Tree.png") if run.file_count > 1 else ONE_FILE_BOX
        run.reports["page tree global"].add(text)
    else:
        run.reports["page tree"].add(BOX % ("Motifs in the Combined List", "Phylogenetic_Tree.png"))


def plot_and_write(run, rankings):
    """The global body follows each of the two plots, so it may stand twice."""
    if run.file_count > 1:
        plot(run, rankings.global_groups, rankings.largest_key, True)
        if run.has_pages:
            write_body(run, True)
    if run.all_types:
        plot(run, rankings.local_groups, rankings.largest_key, False)
        if run.has_pages:
            write_body(run, True)
            write_body(run, False)
