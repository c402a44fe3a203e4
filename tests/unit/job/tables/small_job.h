#pragma once

#include <string>
#include <vector>

#include "job/tables/job_results.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix::testing {

/// Runs the comparing stages over the motifs of a test, as a job does that keeps its ranked lists.
class SmallJobTest : public FolderTest {
  protected:
    SmallJobTest() { answer(); }

    /// Puts all globals back, then answers as these tests need it.
    void answer() const;

    /// Scans and ranks `Datasets`, and compares it with `DatabaseDatasets` unless that is empty.
    static void compare();

    /// Sources that name every motif "motif N" with the second name "second N", and the references alike.
    static job::JobSources sourcesOfMotifs();

    job::JobSources sources;

    job::JobResults results() const { return {sources, Datasets, DatabaseDatasets, rankedLists}; }
};

}  // namespace varnolix::testing
