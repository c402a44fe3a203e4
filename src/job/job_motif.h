#pragma once

#include <string>
#include <vector>

#include "job/downloads/download.h"

namespace varnolix::job {

/// A motif of the job, with where it comes from and what was done to it. The input motifs stand in the order of
/// Datasets, and those of the collection in the order of DatabaseDatasets.
struct JobMotif {
    DownloadedMotif motif;        ///< after trimming
    std::string reportName;       ///< as in the reports: one word
    std::string file;             ///< as named on the command line; of a folder, the file in it
    int dataset = 1;              ///< 1-based; 1 for the collection
    int number = 1;               ///< 1-based, within its data set
    std::size_t trimmedLeft = 0;  ///< columns that were cut
    std::size_t trimmedRight = 0;
    std::string note;  ///< what is odd about it, in words; empty if nothing is
};

/// A data set of the job: one file, or a folder of files.
struct JobDataset {
    std::string name;      ///< as the user or the file names it
    std::string fileName;  ///< of the file in the job folder that the stages read
};

/// A motif that the job goes on without.
struct SkippedMotif {
    std::string file;  ///< as in JobMotif
    RefusedMotif motif;
};

/// What a job compares, beyond what the records of the stages hold.
struct JobSources {
    std::vector<JobDataset> datasets;
    std::vector<JobMotif> motifs;
    std::string collection;  ///< the name that the user gave; empty if there is none
    std::vector<JobMotif> references;
};

}  // namespace varnolix::job
