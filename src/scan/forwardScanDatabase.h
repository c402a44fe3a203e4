#pragma once

namespace varnolix {

/// Compares every input motif with every reference motif, offsets counted from the start.
/// Reads: Datasets, DatabaseDatasets. Appends to: DatasetsCombinedScoreDatabaseLists,
/// grouped by input motif. Leaves the scored pairs in scannedDatabasePairs for the backward scan.
void forwardScanDatabase();

}  // namespace varnolix
