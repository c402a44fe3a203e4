#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "job/downloads/download.h"

// `varnolix-job convert`: motifs of any layout in, one layout out.

namespace varnolix::job {

struct ConvertOptions {
    std::vector<std::string> files;  ///< files, folders, or "-" for standard input
    std::string to = "jaspar";       ///< "jaspar", "meme", "transfac" or "tsv"
    std::optional<Layout> layout;    ///< of all files; told by their content if there is none
    bool withTaxon = false;          ///< in the layouts that have a place for it
    bool skipBad = false;            ///< refused motifs are only listed
};

/// Writes all motifs to `output`, and refusals and notes, one a line, to `messages`. If a motif is refused, nothing is
/// written unless bad ones are to be skipped; if a file cannot be read, nothing is.
/// @return the exit status: 0, or 1 for a refusal or an error, or 2 for an unknown layout
int convertMotifs(const ConvertOptions& options, std::ostream& output, std::ostream& messages);

/// The same, from the command line: to standard output and standard error.
int convertCommand(const ConvertOptions& options);

}  // namespace varnolix::job
