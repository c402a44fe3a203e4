#pragma once

#include <string>
#include <vector>

#include "run/shared_records.h"

// The stages that read the motif files, in the order of the run. Each has a unit of its own name.

namespace varnolix {

/// Reads all input files into Datasets, with their counts in FileNameType, and finds motifNameLength.
void readInput(const std::vector<fileNameAndType>& files);
/// Reads one of them, block by block; fileIndex is its place in FileNameType.
void readInputFile(const std::string& fileName, int fileIndex);
/// Writes the listing of all input motifs, "input_motifs.txt" behind the job's identity.
void writeMotifInput();
/// Prints the input files with their counts to the console.
void printFileNameTypeCount();

}  // namespace varnolix
