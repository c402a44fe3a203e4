# Writes the trees of distance tables as Newick and, if a picture is named, draws them. The companion calls it:
#
#     Rscript tree_newick.R TABLE NEWICK PICTURE ...
#
# with three arguments for each tree; "-" instead of PICTURE draws none. The tables are those that the tree stage has
# written: labels in the first row and column, a comma behind every row. The trees are those of that stage's pictures:
# complete linkage, lengths as ape takes them from the heights.

suppressMessages(library(ape))

readTable <- function(path) {
    labels <- scan(path, "", sep = ",", quote = "\"", nlines = 1, quiet = TRUE)
    # The first label is that of the column of labels, and the comma at the end makes one more.
    count <- length(labels) - 2
    # With known classes R reads big tables many times faster.
    as.matrix(read.csv(path, row.names = 1, colClasses = c("character", rep("numeric", count), "NULL")))
}

# Whole labels at the tips: each letter gets as much room as the widest one takes.
drawTree <- function(tree, path) {
    treeWidth <- 450
    letterWidth <- 12
    leaves <- length(tree$tip.label)
    if (max(node.depth.edgelength(tree)) == 0) tree <- compute.brlen(tree, 1)
    depth <- max(node.depth.edgelength(tree))
    width <- treeWidth + letterWidth * (max(nchar(tree$tip.label)) + 2)
    png(path, width = width, height = 40 * (leaves + 1))
    plot(tree, no.margin = TRUE, x.lim = c(0, depth * width / treeWidth), y.lim = c(0.5, leaves + 0.5),
         label.offset = depth / 50, underscore = TRUE, font = 1)
    invisible(dev.off())
}

writeTree <- function(paths) {
    tree <- as.phylo(hclust(as.dist(readTable(paths[1]))))
    write.tree(tree, paths[2], digits = 15)
    if (paths[3] != "-") drawTree(tree, paths[3])
}

trees <- matrix(commandArgs(trailingOnly = TRUE), nrow = 3)
# Each tree in a process of its own, so that one that fails does not stop the other.
invisible(parallel::mclapply(asplit(trees, 2), writeTree, mc.cores = ncol(trees)))
