#pragma once

#include <string>

#include "run/shared_records.h"

// A tree of the motifs: a distance table and a script for R, which clusters it and draws a fan tree.

namespace varnolix {

/// What the two trees differ by. The files lie in the result folder under these bare names.
struct TreeFiles {
    char letter;  ///< in front of the labels
    const char* table;
    const char* script;
    const char* image;
};

inline constexpr TreeFiles listTree{'I', "Distance_Matrix.csv", "Plot_File.R", "Phylogenetic_Tree.png"};
inline constexpr TreeFiles globalTree{'G', "Global_Matching_Distance_Matrix.csv", "Global_Matching_Plot_File.R",
                                      "Global_Matching_Phylogenetic_Tree.png"};

/// The script that draws the image from the table.
std::string plotScript(const std::string& tablePath, const std::string& imagePath);

/// Writes table and script and runs R on it; a failed R leaves no image and is not noticed. R gives up on fewer than
/// ten motifs. Ends the run if a file cannot be written. The table is freed once it is written, as R needs the memory.
void drawTree(DistanceTable& table, const TreeFiles& files);

}  // namespace varnolix
