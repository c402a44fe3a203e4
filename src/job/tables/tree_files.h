#pragma once

#include <string>

// The tree as Newick, and a picture where the tree stage has none: R's cut into ten clusters fails for fewer motifs.

namespace varnolix::job {

struct TreePaths {
    std::string table;    ///< the distance table, which the tree stage has written
    std::string newick;   ///< the file to write
    std::string picture;  ///< the picture to draw; empty if none is wanted
};

/// Has R write the files.
/// @param script path of tree_newick.R
/// @return a sentence that says what is missing and why; empty if all was written
std::string writeTree(const std::string& script, const TreePaths& paths);

/// Whether the tree stage draws no picture of so many motifs.
constexpr bool lacksPicture(std::size_t motifs) {
    constexpr std::size_t clustersOfPicture = 10;
    return motifs < clustersOfPicture;
}

}  // namespace varnolix::job
