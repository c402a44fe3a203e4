#pragma once

#include <string>

#include "run/shared_records.h"

// Names of the logo files, which lie in a folder of the job beside its reports.

namespace varnolix {

/// Which of the two logos of a motif.
enum class LogoStrand { original, reverseComplement };

constexpr const char* strandSuffix(LogoStrand strand) {
    return strand == LogoStrand::original ? "" : "RevComp";
}

/// The folder's name below the result folder, without a slash.
inline std::string logoFolderName() {
    return jobID + "image";
}

/// The start of a motif's file names: the job, 'M' for input motifs or 'D' for reference motifs, and its number.
inline std::string logoStem(char letter, long number) {
    return jobID + letter + std::to_string(number);
}

inline std::string logoName(char letter, long number, LogoStrand strand) {
    return logoStem(letter, number) + strandSuffix(strand) + ".jpeg";
}

}  // namespace varnolix
