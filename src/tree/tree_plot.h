#pragma once

#include <string>

#include "run/shared_records.h"

// The trees of the motifs. The program writes a distance table and a script, with which R clusters the motifs and draws
// a fan tree.

namespace varnolix {

/// How the two trees differ. The files are in the result folder, under these names without the job's identity.
struct TreeFiles {
    char letter;  ///< first character of the labels
    const char* table;
    const char* script;
    const char* image;
};

inline constexpr TreeFiles listTree{'I', "Distance_Matrix.csv", "Plot_File.R", "Phylogenetic_Tree.png"};
inline constexpr TreeFiles globalTree{'G', "Global_Matching_Distance_Matrix.csv", "Global_Matching_Plot_File.R",
                                      "Global_Matching_Phylogenetic_Tree.png"};

/// The script that draws the image from the table.
std::string plotScript(const std::string& tablePath, const std::string& imagePath);

/// Writes the table and the script and has R run it. If R fails there is no image, and the run goes on; R always fails
/// for fewer than ten motifs. Ends the run if a file cannot be written. Frees the table once it is written, as R needs
/// the memory.
void drawTree(DistanceTable& table, const TreeFiles& files);

}  // namespace varnolix
