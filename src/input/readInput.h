#pragma once

#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// Reads every input file in order and then takes the length of the longest motif name.
/// Fills: Datasets, the motif counts of FileNameType, motifNameLength.
void readInput(const std::vector<fileNameAndType>& files);

}  // namespace varnolix
