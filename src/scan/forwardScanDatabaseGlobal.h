#pragma once

namespace varnolix {

/// Compares every top motif of the matching across files with every reference motif, offsets counted from the start.
/// Reads: Datasets, DatabaseDatasets, topGlobalMatchingResults. Appends to: DatasetsCombinedScoreDatabaseGlobalLists,
/// grouped by input motif. Leaves the scored pairs in scannedDatabasePairs for the backward scan.
void forwardScanDatabaseGlobal();

}  // namespace varnolix
