#pragma once

#include <cstddef>

#include "job/downloads/download.h"
#include "run/shared_records.h"

// How much a motif says: information content in bits, against a background of equal bases and without a correction for
// few sites.

namespace varnolix::job {

/// Motifs with less in all are flat.
inline constexpr double flatBits = 0.25;

/// 2 plus the sum of p log2 p over the four bases: 0 where all bases are alike, 2 where there is one alone. A column
/// without counts, whose frequencies are not-a-number, has 0.
double informationOf(const Column& frequencies);
double informationOf(const NumberColumn& column);

/// The sum over all columns.
double informationOf(const Matrix& matrix);
double informationOf(const DownloadedMotif& motif);

/// The numbers of the columns without any counts, 1-based, with commas between them; empty if there is none.
std::string columnsWithoutCounts(const DownloadedMotif& motif);

struct TrimmedFlanks {
    std::size_t left = 0;  ///< columns that were cut
    std::size_t right = 0;
    bool isEmpty = false;  ///< no column has enough information; the motif was left as it was
};

/// Cuts the columns at both ends that have less information than `bits`. A motif of which nothing would remain is left
/// as it was; the caller has to refuse it.
TrimmedFlanks trimFlanks(DownloadedMotif& motif, double bits);

}  // namespace varnolix::job
