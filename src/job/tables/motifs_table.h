#pragma once

#include <span>
#include <string>
#include <vector>

#include "job/job_motif.h"
#include "job/tables/job_results.h"
#include "job/tables/table.h"

// The table of the input motifs, and the table of those that were left out.

namespace varnolix::job {

struct MotifRow {
    const data& motif;
    const JobMotif& source;
    MotifNames names;
    double bits;
};

std::span<const TableColumn<MotifRow>> motifColumns();
std::span<const TableColumn<SkippedMotif>> skippedColumns();

/// The rows of the table of motifs, one for each input motif.
std::vector<MotifRow> motifRows(const JobResults& results);

std::string motifsTsv(const JobResults& results);
std::string skippedTsv(const std::vector<SkippedMotif>& skipped);

}  // namespace varnolix::job
