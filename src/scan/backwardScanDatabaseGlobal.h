#pragma once

namespace varnolix {

/// Compares every top motif of the matching across files with every reference motif, offsets counted from the end.
/// Reads: Datasets, DatabaseDatasets, topGlobalMatchingResults, scannedDatabasePairs (and empties it). Appends to:
/// DatasetsCombinedScoreDatabaseGlobalLists, grouped by input motif, behind the forward records.
void backwardScanDatabaseGlobal();

}  // namespace varnolix
