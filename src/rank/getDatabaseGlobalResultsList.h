#pragma once

namespace varnolix {

/// Ranks the reference motifs for each top motif of the matching across files and writes the sections of its reports.
/// Reads: DatasetsCombinedScoreDatabaseGlobalLists, numBestMatches, the output answers.
void getDatabaseGlobalResultsList();

}  // namespace varnolix
