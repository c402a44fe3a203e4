#include "job/many/collected.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "job/page/write_page.h"
#include "job/tables/matches_table.h"
#include "report/page/html_text.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

using Status = JobSummary::Status;
constexpr double bytesInMegabyte = 1e6;

const char* statusName(Status status) {
    if (status == Status::done) return "done";
    return status == Status::failed ? "failed" : "missing";
}

/// A cell that only jobs that are done have.
template <class Value>
Cell ofDone(const JobSummary& job, Value value) {
    return job.status == Status::done ? Cell(value) : Cell(std::monostate());
}

template <std::size_t list>
Cell matchesCell(const JobSummary& job) {
    return ofDone(job, static_cast<std::int64_t>(std::get<list>(job.matches)));
}

void openTable(std::ifstream& stream, std::string& header, const fs::path& file) {
    stream.open(file, std::ios::binary);
    if (!std::getline(stream, header)) throw JobError("cannot read " + file.string());
}

/// The path as a link of a page.
std::string linkTo(const std::string& path) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string link;
    for (const char c : path) {
        if (plain.find(c) != std::string_view::npos) {
            link += c;
        } else {
            std::array<char, 4> code{};
            std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            link += code.data();
        }
    }
    return link;
}

std::string fixed(double number, int digits) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, number);
    return text.data();
}

std::string numberCell(const std::string& text) {
    return "<td class=\"number\">" + text + "</td>";
}

std::string pageRow(const JobSummary& job) {
    const std::string name = escapeHTML(job.name);
    const std::string status = "<td class=\"" + std::string(statusName(job.status)) + "\">" + statusName(job.status);
    if (job.status != Status::done) {
        return "<tr><td>" + name + "</td>" + status + "</td><td colspan=\"4\">" + escapeHTML(validUtf8(job.error)) +
               "</td></tr>\n";
    }
    std::int64_t matches = 0;
    for (const int count : job.matches) matches += count;
    return "<tr><td><a href=\"" + linkTo("./" + job.name + "/" + pageName) + "\">" + name + "</a></td>" + status +
           "</td>" + numberCell(std::to_string(job.motifs)) + numberCell(std::to_string(matches)) +
           numberCell(fixed(job.seconds, 1)) +
           numberCell(fixed(static_cast<double>(job.peakMemory) / bytesInMegabyte, 0)) + "</tr>\n";
}

std::string figure(std::size_t count, const char* what) {
    return "<p><strong>" + std::to_string(count) + "</strong> " + what + "</p>";
}

}  // namespace

JobSummary summaryOf(const ManyFolder& folder, const ListedJob& job) {
    JobSummary summary;
    summary.name = job.name;
    summary.line = job.line;
    const nlohmann::ordered_json record = recordOfDone(folder, job);
    if (record.is_null()) {
        summary.error = failureOf(folder, job);
        if (!summary.error.empty()) summary.status = Status::failed;
        return summary;
    }
    summary.status = Status::done;
    const auto& counts = record.at("counts");
    summary.motifs = counts.at("motifs");
    summary.refused = counts.at("refused");
    summary.collectionMotifs = counts.at("collection_motifs");
    for (const ListKind kind : listKinds) {
        summary.matches.at(static_cast<std::size_t>(kind)) = counts.at("matches").value(listName(kind), 0);
    }
    summary.seconds = record.value("seconds", 0.0);
    summary.peakMemory = record.value("peak_memory_bytes", std::int64_t{0});
    summary.threads = record.at("settings").value("threads", std::int64_t{0});
    summary.version = record.value("version", "");
    summary.date = record.value("date", "");
    return summary;
}

const std::vector<SummaryColumn>& summaryColumns() {
    using Row = const JobSummary&;
    static const std::vector<SummaryColumn> columns = {
        {{"job", "name of the job, and of its folder", "text"}, [](Row job) { return Cell(job.name); }},
        {{"line_1based", "line of the job in the list", "whole, counted from 1"},
         [](Row job) { return Cell(static_cast<std::int64_t>(job.line)); }},
        {{"status",
          "whether the job is done as the list has it; `missing` if it was not started, is at work, or was killed",
          "done, failed, missing"},
         [](Row job) { return Cell(statusName(job.status)); }},
        {{"error", "why the job failed: the last line that it printed", "text; empty unless failed"},
         [](Row job) { return Cell(job.error); }},
        {{"motifs", "motifs of the job", "whole, from 2"}, [](Row job) { return ofDone(job, job.motifs); }},
        {{"refused", "motifs that were left out", "whole, from 0"}, [](Row job) { return ofDone(job, job.refused); }},
        {{"collection_motifs", "motifs of the collection", "whole, from 0"},
         [](Row job) { return ofDone(job, job.collectionMotifs); }},
        {{"matches_top_global", "matches of the list `top_global`", "whole, from 0"}, matchesCell<0>},
        {{"matches_significant", "matches of the list `significant`", "whole, from 0"}, matchesCell<1>},
        {{"matches_each_motif", "matches of the list `each_motif`", "whole, from 0"}, matchesCell<2>},
        {{"matches_collection", "matches of the list `collection`", "whole, from 0"}, matchesCell<3>},
        {{"matches_collection_global", "matches of the list `collection_global`", "whole, from 0"}, matchesCell<4>},
        {{"seconds", "how long the job took", "from 0"}, [](Row job) { return ofDone(job, job.seconds); }},
        {{"peak_memory_bytes", "the most memory that the job had", "whole"},
         [](Row job) { return ofDone(job, job.peakMemory); }},
        {{"threads", "threads of the job", "whole, from 1"}, [](Row job) { return ofDone(job, job.threads); }},
        {{"version", "version of the companion that did the job", "text"},
         [](Row job) { return ofDone(job, std::string_view(job.version)); }},
        {{"date", "when the job was done, in UTC", "text"},
         [](Row job) { return ofDone(job, std::string_view(job.date)); }},
    };
    return columns;
}

void joinTables(std::ostream& stream, const std::vector<JobTable>& tables, std::vector<std::string> columns) {
    std::string line;
    for (const JobTable& table : tables) {
        std::ifstream file;
        openTable(file, line, table.file);
        for (const std::string& column : tsvCells(line)) {
            if (std::find(columns.begin(), columns.end(), column) == columns.end()) columns.push_back(column);
        }
    }
    std::string header;
    for (const std::string& column : columns) header += (header.empty() ? "" : "\t") + column;
    stream << "job\t" << header << '\n';
    for (const JobTable& table : tables) {
        std::ifstream file;
        openTable(file, line, table.file);
        const std::vector<std::string> own = tsvCells(line);
        const bool hasAll = line == header;
        while (std::getline(file, line)) {
            stream << table.job;
            if (hasAll) {
                stream << '\t' << line;
            } else {
                const std::vector<std::string> cells = tsvCells(line);
                for (const std::string& column : columns) {
                    const auto place =
                        static_cast<std::size_t>(std::find(own.begin(), own.end(), column) - own.begin());
                    stream << '\t' << (place < cells.size() ? cells[place] : "");
                }
            }
            stream << '\n';
        }
        if (file.bad()) throw JobError("cannot read " + table.file.string());
    }
}

std::string startPage(const ManyFolder& folder, const std::vector<JobSummary>& jobs, const fs::path& home) {
    const auto countOf = [&](Status status) {
        return static_cast<std::size_t>(
            std::count_if(jobs.begin(), jobs.end(), [&](const JobSummary& job) { return job.status == status; }));
    };
    std::string rows;
    for (const JobSummary& job : jobs) rows += pageRow(job);
    PageFiles files = pageFilesOf(home);
    files.folder = home / "tools" / "many";
    return joinedPage(files, {{"title", escapeHTML(validUtf8(folder.base.filename().string()))},
                              {"figures", figure(jobs.size(), "jobs") + figure(countOf(Status::done), "done") +
                                              figure(countOf(Status::failed), "failed") +
                                              figure(countOf(Status::missing), "missing")},
                              {"rows", rows}});
}

std::vector<JobSummary> collect(const ManyFolder& folder, const std::vector<ListedJob>& jobs, const fs::path& home) {
    std::vector<JobSummary> summaries;
    std::vector<JobTable> tables;
    for (const ListedJob& job : jobs) {
        summaries.push_back(summaryOf(folder, job));
        if (summaries.back().status == Status::done) tables.push_back({job.name, folder.job(job) / "matches.tsv"});
    }
    std::vector<std::string> columns;
    for (const auto& column : matchColumns()) columns.emplace_back(column.note.name);
    FreshFile matches(folder.base / collectedTable);
    joinTables(matches.stream(), tables, std::move(columns));
    matches.finish();
    writeFile(folder.base / summaryTable, tsvText(summaryColumns(), summaries));
    writeFile(folder.base / pageName, startPage(folder, summaries, home));
    return summaries;
}

}  // namespace varnolix::job
