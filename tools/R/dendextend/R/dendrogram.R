# Both by way of the hclust form, which stats and ape know how to cut and to convert.

as.hclust.or.same <- function(tree) if (inherits(tree, "dendrogram")) stats::as.hclust(tree) else tree

# Hides the function of stats, which knows no dendrograms.
cutree <- function(tree, ...) stats::cutree(as.hclust.or.same(tree), ...)

as.phylo.dendrogram <- function(x, ...) as.phylo(stats::as.hclust(x), ...)
