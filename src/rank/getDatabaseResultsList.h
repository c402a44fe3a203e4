#pragma once

namespace varnolix {

/// Ranks the reference motifs for each input motif and, for Type "All", writes the sections of the reports against the
/// collection.
/// Reads: DatasetsCombinedScoreDatabaseLists, numBestMatches, the output answers.
void getDatabaseResultsList();

}  // namespace varnolix
