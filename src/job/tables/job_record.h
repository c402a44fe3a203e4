#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "job/tables/job_results.h"

// The record of a job, job.json. It is written last, so a job whose record says "complete" is whole.

namespace varnolix::job {

/// A file that the job has read.
struct InputFile {
    std::string file;  ///< as named on the command line; of a folder, the file in it; "-" for standard input
    std::size_t taken = 0;
    std::size_t refused = 0;
    std::string sha256;  ///< of its bytes, packed ones as they are; empty if it cannot be read twice
};

/// A file in the job folder.
struct WrittenFile {
    std::string file;  ///< below the job folder
    std::uintmax_t bytes;
};

struct JobRecord {
    std::string version;
    std::string date;
    const nlohmann::ordered_json& settings;
    std::vector<InputFile> inputs;
    std::vector<StageTime> stages;
    std::uintmax_t peakMemory;  ///< in bytes
    std::vector<WrittenFile> written;
    std::vector<std::string> notes;         ///< sentences
    std::vector<std::string> command = {};  ///< the words behind the name of the companion
    double seconds = 0;                     ///< from the start of the job to this record
};

/// The text of job.json.
std::string jobRecordText(const JobRecord& record, const JobResults& results);

/// All regular files below the folder, in the order of their names; what links lead to is left out, and so is job.json.
std::vector<WrittenFile> filesBelow(const std::string& folder);

/// The most memory that this process has had, in bytes.
std::uintmax_t peakMemoryOfProcess();

}  // namespace varnolix::job
