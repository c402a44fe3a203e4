#pragma once

// The stages that rank motifs and matches and fill the reports, in the order of the run. Each has a unit of its own
// name.

namespace varnolix {

/// Ranks the input motifs and their matches, fills the reports, and leaves the groups to merge and the distance tables.
void getResultsList();
/// Ranks the collection's motifs for each input motif and fills the reports, for Type "All".
void getDatabaseResultsList();
/// Ranks the collection's motifs for each top motif of the matching across files and fills the reports.
void getDatabaseGlobalResultsList();

}  // namespace varnolix
