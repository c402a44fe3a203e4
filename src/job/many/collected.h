#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "job/many/many_folder.h"
#include "job/tables/job_results.h"
#include "job/tables/table.h"

// What is made of all jobs of a list together: one table of matches, a summary, and a page to start from.

namespace varnolix::job {

/// A line of the summary.
struct JobSummary {
    enum class Status { done, failed, missing };

    std::string name;
    std::size_t line = 0;
    Status status = Status::missing;
    std::string error;  ///< why it failed
    // The rest is known of jobs that are done.
    std::int64_t motifs = 0;
    std::int64_t refused = 0;
    std::int64_t collectionMotifs = 0;
    CountsOfLists matches{};
    double seconds = 0;
    std::int64_t peakMemory = 0;  ///< in bytes
    std::int64_t threads = 0;
    std::string version;
    std::string date;
};

/// What a job's folder and its log tell.
JobSummary summaryOf(const ManyFolder& folder, const ListedJob& job);

using SummaryColumn = TableColumn<JobSummary>;
const std::vector<SummaryColumn>& summaryColumns();

/// A table of one job.
struct JobTable {
    std::string job;
    std::filesystem::path file;
};

/// Writes the rows of all tables under one header, which begins with the column `job`. Where tables have different
/// columns, the header has all of them, and cells are empty where a table has no such column. Holds one row at a time.
/// Throws JobError if a table cannot be read.
/// @param columns the first columns of the header behind `job`, whether a table has them or not
void joinTables(std::ostream& stream, const std::vector<JobTable>& tables, std::vector<std::string> columns);

/// The page, with links to the pages of the jobs.
/// @param home the installation, which has the template
std::string startPage(const ManyFolder& folder, const std::vector<JobSummary>& jobs, const std::filesystem::path& home);

/// Writes all three into the folder, each as a whole or not at all. Throws JobError.
/// @return the summary
std::vector<JobSummary> collect(const ManyFolder& folder, const std::vector<ListedJob>& jobs,
                                const std::filesystem::path& home);

}  // namespace varnolix::job
