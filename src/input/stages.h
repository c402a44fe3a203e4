#pragma once

#include <string>
#include <vector>

#include "run/shared_records.h"

// The stages that read the motif files, in the order of the run. Each has a source file of its own name.

namespace varnolix {

/// Reads all input files into Datasets, with their counts in FileNameType, and finds motifNameLength.
void readInput(const std::vector<fileNameAndType>& files);
/// Reads one of these files, block by block. fileIndex is its place in FileNameType.
void readInputFile(const std::string& fileName, int fileIndex);
/// Writes the listing of all input motifs; its name is the job's identity and "input_motifs.txt".
void writeMotifInput();
/// Prints the input files and their motif counts to the console.
void printFileNameTypeCount();

}  // namespace varnolix
