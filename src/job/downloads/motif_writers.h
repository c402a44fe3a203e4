#pragma once

#include <span>
#include <string>

#include "job/downloads/download.h"

// Motifs as text in the layouts that other programs read. Numbers keep their text, except in MEME, which wants the
// values of a column as probabilities.

namespace varnolix::job {

enum class Taxon { leftOut, written };

/// One block in the Jaspar layout with aligned columns, and an empty line. The header has the id and the name as one
/// word each, then the taxon if it is wanted and known.
std::string jasparText(const DownloadedMotif& motif, Taxon taxon = Taxon::leftOut);

/// One entry in the TRANSFAC layout.
std::string transfacText(const DownloadedMotif& motif, Taxon taxon = Taxon::leftOut);

/// A minimal MEME file of all the motifs. A column that adds up to 1, within a thousandth, is written as it stands.
/// Others are divided by their sum and written with as many digits as it takes to read the same double back; a column
/// that is 0 throughout stays so. Where the number of sites is not known, it is 20, as the programs of MEME suppose.
std::string memeText(std::span<const DownloadedMotif> motifs);

/// A table with one row a column, tab between its fields: id, name, position_1based, A, C, G, T.
std::string tsvText(std::span<const DownloadedMotif> motifs);

}  // namespace varnolix::job
