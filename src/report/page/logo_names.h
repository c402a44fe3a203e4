#pragma once

#include <string>

#include "run/shared_records.h"

// Where the logos lie: in a folder of the job beside its reports.

namespace varnolix {

enum class Strand { original, reverseComplement };

constexpr const char* strandSuffix(Strand strand) {
    return strand == Strand::original ? "" : "RevComp";
}

/// The folder below the result folder, without a slash.
inline std::string logoFolderName() {
    return jobID + "image";
}

/// Start of the names of one motif's files: 'M' for input motifs, 'D' for reference motifs, and the motif's number.
inline std::string logoStem(char letter, long number) {
    return jobID + letter + std::to_string(number);
}

inline std::string logoName(char letter, long number, Strand strand) {
    return logoStem(letter, number) + strandSuffix(strand) + ".jpeg";
}

}  // namespace varnolix
