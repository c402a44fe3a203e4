#pragma once

namespace varnolix {

/// Compares every input motif with every reference motif, offsets counted from the end.
/// Reads: Datasets, DatabaseDatasets, scannedDatabasePairs (and empties it). Appends to:
/// DatasetsCombinedScoreDatabaseLists, grouped by input motif, behind the forward records.
void backwardScanDatabase();

}  // namespace varnolix
