#include "job/tables/motifs_table.h"

#include "job/downloads/information.h"

namespace varnolix::job {

namespace {

Cell whole(std::size_t number) {
    return static_cast<std::int64_t>(number);
}

constexpr TableColumn<MotifRow> ofMotifs[] = {
    {{"motif_number_1based", "number of the motif in the reports (\"Motif ID\"); `query_number_1based` in matches.tsv",
      "whole, counted from 1"},
     [](const MotifRow& row) -> Cell { return std::int64_t{row.motif.matrixID}; }},
    {{"dataset", "data set of the motif", "text"}, [](const MotifRow& row) -> Cell { return row.names.dataset; }},
    {{"number_1based", "number of the motif in its data set", "whole, counted from 1"},
     [](const MotifRow& row) -> Cell { return std::int64_t{row.source.number}; }},
    {{"id", "name as in the file; `query_id` and `target_id` in matches.tsv", "text"},
     [](const MotifRow& row) -> Cell { return row.names.id; }},
    {{"name", "second name as in the file; `query_name` and `target_name` in matches.tsv", "text, may be empty"},
     [](const MotifRow& row) -> Cell { return row.names.name; }},
    {{"report_name", "name in the reports", "one word"},
     [](const MotifRow& row) -> Cell { return row.names.reportName; }},
    {{"file", "file that the motif comes from", "path as given"},
     [](const MotifRow& row) -> Cell { return row.source.file; }},
    {{"line_1based", "line of the file in which the motif begins", "whole, counted from 1"},
     [](const MotifRow& row) -> Cell { return whole(row.source.motif.line); }},
    {{"length", "number of columns that are compared, so after trimming", "whole, from 1"},
     [](const MotifRow& row) -> Cell { return whole(row.motif.matrix.size()); }},
    {{"information_bits", "information content: the sum of 2 + p log2 p over the bases of all columns, in bits",
      "0 to 2 for each column"},
     [](const MotifRow& row) -> Cell { return row.bits; }},
    {{"consensus", "consensus", "IUPAC letters"}, [](const MotifRow& row) -> Cell { return row.motif.consensus; }},
    {{"reverse_consensus", "consensus of the reverse complement", "IUPAC letters"},
     [](const MotifRow& row) -> Cell { return row.motif.revCompConsensus; }},
    {{"trimmed_left", "columns that `--trim` cut at the left end", "whole, from 0"},
     [](const MotifRow& row) -> Cell { return whole(row.source.trimmedLeft); }},
    {{"trimmed_right", "columns that `--trim` cut at the right end", "whole, from 0"},
     [](const MotifRow& row) -> Cell { return whole(row.source.trimmedRight); }},
    {{"note", "what is odd about the motif", "text, mostly empty"},
     [](const MotifRow& row) -> Cell { return row.source.note; }},
};

constexpr TableColumn<SkippedMotif> ofSkipped[] = {
    {{"file", "file that the motif comes from", "path as given"},
     [](const SkippedMotif& row) -> Cell { return row.file; }},
    {{"line_1based", "line of the file in which the motif begins", "whole, counted from 1"},
     [](const SkippedMotif& row) -> Cell { return whole(row.motif.line); }},
    {{"motif", "name as in the file", "text, may be empty"},
     [](const SkippedMotif& row) -> Cell { return row.motif.id; }},
    {{"reason", "why the motif was left out", "text"},
     [](const SkippedMotif& row) -> Cell { return row.motif.reason; }},
};

}  // namespace

std::span<const TableColumn<MotifRow>> motifColumns() {
    return ofMotifs;
}

std::span<const TableColumn<SkippedMotif>> skippedColumns() {
    return ofSkipped;
}

std::vector<MotifRow> motifRows(const JobResults& results) {
    std::vector<MotifRow> rows;
    rows.reserve(results.motifs.size());
    for (std::size_t place = 0; place < results.motifs.size(); ++place) {
        const data& motif = results.motifs[place];
        rows.push_back(
            {motif, results.sources.motifs[place], namesOfInput(results, motif), informationOf(motif.matrix)});
    }
    return rows;
}

std::string motifsTsv(const JobResults& results) {
    return tsvText(ofMotifs, motifRows(results));
}

std::string skippedTsv(const std::vector<SkippedMotif>& skipped) {
    return tsvText(ofSkipped, skipped);
}

}  // namespace varnolix::job
