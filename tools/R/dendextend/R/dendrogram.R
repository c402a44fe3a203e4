# Both functions go through the hclust form, which stats can cut and ape can convert.

as.hclust.or.same <- function(tree) if (inherits(tree, "dendrogram")) stats::as.hclust(tree) else tree

# Masks the function in stats, which does not accept dendrograms.
cutree <- function(tree, ...) stats::cutree(as.hclust.or.same(tree), ...)

as.phylo.dendrogram <- function(x, ...) as.phylo(stats::as.hclust(x), ...)
