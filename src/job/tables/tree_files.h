#pragma once

#include <string>
#include <vector>

// The trees as Newick, and a picture where the tree stage draws none: R's cut into ten clusters fails for fewer motifs.

namespace varnolix::job {

struct TreePaths {
    std::string table;    ///< the distance table, which the tree stage has written
    std::string newick;   ///< the file to write
    std::string picture;  ///< the picture to draw; empty if none is wanted
};

/// Has R write the files of all trees, in one go.
/// @param script path of tree_newick.R
/// @return for each tree with a missing file, a sentence that says what is missing and why
std::vector<std::string> writeTrees(const std::string& script, const std::vector<TreePaths>& trees);

/// Whether the tree stage draws no picture of so many motifs.
constexpr bool lacksPicture(std::size_t motifs) {
    constexpr std::size_t clustersOfPicture = 10;
    return motifs < clustersOfPicture;
}

}  // namespace varnolix::job
