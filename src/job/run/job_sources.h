#pragma once

#include <string>
#include <vector>

#include "job/folder/collection_store.h"
#include "job/job_motif.h"
#include "job/run/run_options.h"
#include "job/tables/job_record.h"

// From the files on the command line to the motifs of the job.

namespace varnolix::job {

/// What was read for a job.
struct ReadSources {
    JobSources sources;
    std::vector<SkippedMotif> skipped;  ///< in the order of the files
    std::vector<InputFile> files;       ///< the collection's behind the others
};

/// Reads all motifs of the job. Throws JobError if a file cannot be read.
/// @param places where installed collections are looked up
ReadSources readSources(const RunOptions& options, const std::vector<CollectionPlace>& places);

/// What the job cannot read as it is not there, in a clause; empty if all is there. Reads nothing.
/// @param home as above
std::string missingSource(const RunOptions& options, const std::vector<CollectionPlace>& places);

/// The motif's name in the reports: its id, with blanks and control characters replaced by "_", as a name there is one
/// word.
std::string reportNameOf(const std::string& id);

/// A file name for the motifs of a data set: the name without folder and extensions, with letters, digits, ".", "-" and
/// "_" only, and one that no earlier data set has.
std::string motifFileName(const std::string& datasetName, const std::vector<JobDataset>& earlier);

/// What is odd about the motif, in words: few columns, hardly any information, columns without counts.
std::string oddities(const DownloadedMotif& motif);

}  // namespace varnolix::job
