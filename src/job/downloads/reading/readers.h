#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "job/downloads/download.h"
#include "job/downloads/reading/source_lines.h"

// The readers, one for each family of layouts. Each appends what it finds, motifs and refusals, and leaves the id of a
// motif empty that has no name of its own.

namespace varnolix::job {

using Reader = void (*)(const Lines& lines, Download& found);

/// ">" records, or blocks without names, with four rows of numbers or with one position a row: Jaspar, HOMER, HOCOMOCO,
/// cluster-buster, and bare matrices. `found.layout` says which.
void readNumberRecords(const Lines& lines, Download& found);
/// ">" records of sequences: aligned sites or IUPAC strings, as `found.layout` says.
void readLetterRecords(const Lines& lines, Download& found);
/// Minimal MEME files and whole reports.
void readMeme(const Lines& lines, Download& found);
/// Entries of tagged lines.
void readTransfac(const Lines& lines, Download& found);
/// Tables that begin with the line "Pos A C G T".
void readCisbp(const Lines& lines, Download& found);
/// Tables of rows "A:", "C:", "G:", "T:" below lines that name the protein.
void readUniprobe(const Lines& lines, Download& found);

/// Takes the motif, or refuses it if there is a reason to.
inline void takeOrRefuse(Download& found, DownloadedMotif motif, std::string reason) {
    if (reason.empty()) {
        found.motifs.push_back(std::move(motif));
    } else {
        found.refused.push_back({std::move(motif.id), motif.line, std::move(reason)});
    }
}

}  // namespace varnolix::job
