#include "input/stages.h"

#include <algorithm>
#include <iostream>

namespace varnolix {

void readInput(const std::vector<fileNameAndType>& files) {
    try {
        int fileIndex = 0;
        for (const fileNameAndType& file : files) readInputFile(file.fileName, fileIndex++);
    } catch (int) {
        // Reserved for readers that give up on a file. None of them does so today.
        std::cout << "Bad input. Please, check input data.\n";
    }
    for (const data& motif : Datasets) {
        motifNameLength = std::max(motifNameLength, static_cast<int>(motif.motifName.size()));
    }
}

}  // namespace varnolix
