#include "job/tables/combined_motifs.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "job/tables/pair_placement.h"
#include "merge/matrix_placement.h"
#include "run/record_fields.h"

namespace varnolix::job {

namespace {

using Row = CombinedRow;
using Steps = std::vector<combinedMatrices>;

constexpr const char* mergedFlag = "Y";
/// Some readers of MEME files require a number of sites. This is the one that MEME assumes where none is given.
constexpr const char* assumedSites = "20";

/// A cell of the placement; nothing if there is none.
template <class Value>
Cell placed(const Row& row, Value value) {
    return row.placement ? Cell(value(*row.placement)) : Cell(std::monostate());
}

/// The same for what only a step has.
template <class Value>
Cell ofStep(const Row& row, Value value) {
    return row.step > 0 ? placed(row, value) : Cell(std::monostate());
}

constexpr TableColumn<Row> columns[] = {
    {{"list", "ranked list that the group belongs to, as in matches.tsv", "top_global, significant, each_motif"},
     [](const Row& row) -> Cell { return listName(row.list); }},
    {{"group_1based", "number of the group in its list: `query_rank_1based` in matches.tsv", "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.group}; }},
    {{"combined_id", "id of the combined motif in the motif files", "list and group; empty if nothing was merged"},
     [](const Row& row) -> Cell { return row.combinedId; }},
    {{"step_0based",
      "step in which the member joined: 0 is the motif that the group belongs to, then its matches by rank",
      "whole, counted from 0"},
     [](const Row& row) -> Cell { return std::int64_t{row.step}; }},
    {{"member_number_1based", "number of the member in the reports (\"Motif ID\"): `motif_number_1based` in motifs.tsv",
      "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.member.matrixID}; }},
    {{"member_id", "name of the member as in its file", "text"}, [](const Row& row) -> Cell { return row.names.id; }},
    {{"member_name", "second name of the member, as in its file", "text, may be empty"},
     [](const Row& row) -> Cell { return row.names.name; }},
    {{"member_report_name", "name of the member in the reports", "one word"},
     [](const Row& row) -> Cell { return row.names.reportName; }},
    {{"merged", "whether the member is part of the combined motif", "yes, no"},
     [](const Row& row) -> Cell { return row.placement ? "yes" : "no"; }},
    {{"reason", "why it is not", "text; empty if it is"}, [](const Row& row) -> Cell { return row.reason; }},
    {{"member_orientation", "strand of the member that was merged", "forward, reverse complement; empty if not merged"},
     [](const Row& row) -> Cell {
         return placed(row, [&](const StepPlacement& at) {
             return std::string_view(strandText(row.step > 0 ? at.member : at.combined));
         });
     }},
    {{"member_offset_0based",
      "column of the common axis of this step on which the member's first column lies (of step 0: the axis of step 1)",
      "whole, 0-based; negative if columns were cut off"},
     [](const Row& row) -> Cell {
         return placed(row, [&](const StepPlacement& at) {
             return std::int64_t{row.step > 0 ? at.memberOffset : at.combinedOffset};
         });
     }},
    {{"combined_orientation", "strand of what was combined before that the member was merged with",
      "forward, reverse complement; empty in step 0"},
     [](const Row& row) -> Cell {
         return ofStep(row, [](const StepPlacement& at) { return std::string_view(strandText(at.combined)); });
     }},
    {{"combined_offset_0based", "column of the same axis on which the first column of what was combined before lies",
      "whole, 0-based; empty in step 0"},
     [](const Row& row) -> Cell {
         return ofStep(row, [](const StepPlacement& at) { return std::int64_t{at.combinedOffset}; });
     }},
    {{"overlap", "number of columns that both cover, whose values were averaged", "whole, from 0"},
     [](const Row& row) -> Cell {
         return ofStep(row, [](const StepPlacement& at) { return std::int64_t{at.overlap}; });
     }},
    {{"combined_length", "number of columns of the combined motif after this step", "whole, from 4"},
     [](const Row& row) -> Cell {
         return ofStep(row, [&](const StepPlacement&) { return static_cast<std::int64_t>(row.length); });
     }},
    {{"combined_score", "`combined_score` of the match in matches.tsv, by which the members are ranked",
      "from 0; empty in step 0"},
     [](const Row& row) -> Cell { return row.combinedScore ? Cell(*row.combinedScore) : Cell(std::monostate()); }},
};

bool isMerged(const combinedMatrices& step) {
    return step.mergedFlag == mergedFlag;
}

std::string combinedId(ListKind list, int group) {
    return listName(list) + ("_" + std::to_string(group));
}

/// Why the match of this place of its group was not merged.
const char* reasonOf(const Steps& steps, std::size_t place) {
    const std::size_t merged = mergedSteps(steps).size();
    const bool isRefusal = steps.size() > merged;
    if (place > merged) return isRefusal ? "comes after a refused member" : "comes after a member without an alignment";
    return isRefusal ? "refused, as the result would not align with its parts"
                     : "does not align with what was combined before";
}

void appendGroup(std::string& text, const JobResults& results, const MergedList& list, std::size_t place) {
    const std::vector<dataCombinedScore>& records = list.groups[place];
    const Steps& steps = list.merged[place];
    const int group = static_cast<int>(place) + 1;
    const std::string id = mergedSteps(steps).empty() ? "" : combinedId(list.kind, group);
    const auto addRow = [&](int step, int memberID, std::optional<double> score) {
        const std::size_t match = step > 0 ? static_cast<std::size_t>(step - 1) : 0;
        const data& member = motifOf(results.motifs, memberID);
        const bool isPart = match < steps.size() && isMerged(steps[match]);
        appendTsvRow(text, columns,
                     Row{list.kind, group, id, step, member, namesOfInput(results, member), score,
                         isPart ? std::optional(placementOf(steps[match])) : std::nullopt,
                         isPart ? steps[match].combinedMatrix.size() : 0, isPart ? "" : reasonOf(steps, match)});
    };
    addRow(0, records.front().matrixID1, std::nullopt);
    for (std::size_t match = 0; match < records.size(); ++match) {
        addRow(static_cast<int>(match) + 1, records[match].matrixID2, records[match].combinedScore);
    }
}

/// The number in plain decimal notation, with as few digits as it takes to read the same number back. The columns of a
/// motif without counts are no numbers; they are 0 in the files.
std::string decimalText(double number) {
    if (!std::isfinite(number)) return "0";
    // The smallest numbers have more than 300 zeros behind the point.
    std::array<char, 512> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

}  // namespace

std::span<const combinedMatrices> mergedSteps(const std::vector<combinedMatrices>& steps) {
    return {steps.begin(), std::find_if_not(steps.begin(), steps.end(), isMerged)};
}

StepPlacement placementOf(const combinedMatrices& step) {
    const PairAlignment alignment{static_cast<int>(step.matrix1.size()),
                                  static_cast<int>(step.matrix2.size()),
                                  step.primaryFlag,
                                  step.direction,
                                  step.position,
                                  step.overlap};
    const Shifts shifts = shiftsOf(alignment).value_or(Shifts{0, 0});
    const int axis = alignment.total();
    const int first1 = firstColumn(step.direction, axis, alignment.length1, shifts.first);
    const int first2 = firstColumn(step.direction, axis, alignment.length2, shifts.second);
    const int begin = std::max({0, first1, first2});
    const int end = std::min({axis, first1 + alignment.length1, first2 + alignment.length2});
    return {step.matchingFormat1, step.matchingFormat2, first1, first2, std::max(0, end - begin)};
}

std::span<const TableColumn<CombinedRow>> combinedColumns() {
    return columns;
}

std::string combinedTsv(const JobResults& results, std::span<const MergedList> lists) {
    std::string text;
    appendTsvHeader(text, columns);
    for (const MergedList& list : lists) {
        for (std::size_t place = 0; place < list.merged.size(); ++place) appendGroup(text, results, list, place);
    }
    return text;
}

DownloadedMotif motifOfShares(const std::string& id, const std::string& name, const Matrix& matrix) {
    DownloadedMotif motif;
    motif.id = id;
    motif.name = name;
    motif.siteCount = assumedSites;
    for (const Column& column : matrix) {
        NumberColumn& numbers = motif.columns.emplace_back();
        std::transform(column.begin(), column.end(), numbers.begin(), decimalText);
    }
    return motif;
}

std::vector<DownloadedMotif> combinedMotifs(const JobResults& results, std::span<const MergedList> lists) {
    std::vector<DownloadedMotif> motifs;
    for (const MergedList& list : lists) {
        for (std::size_t place = 0; place < list.merged.size(); ++place) {
            const std::span<const combinedMatrices> steps = mergedSteps(list.merged[place]);
            if (steps.empty()) continue;
            const data& owner = motifOf(results.motifs, list.groups[place].front().matrixID1);
            motifs.push_back(motifOfShares(combinedId(list.kind, static_cast<int>(place) + 1),
                                           std::string(namesOfInput(results, owner).id), steps.back().combinedMatrix));
        }
    }
    return motifs;
}

}  // namespace varnolix::job
