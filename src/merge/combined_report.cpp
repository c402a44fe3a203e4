#include "merge/combined_report.h"

#include <algorithm>
#include <array>

#include "input/getConsensusString.h"
#include "report/text/text_columns.h"
#include "run/record_fields.h"

namespace varnolix {

namespace {

constexpr std::size_t starsBefore = 60;
constexpr std::size_t starsAfter = 59;
constexpr std::size_t formatWidth = 40;
constexpr std::size_t leastMotifWidth = 40;
constexpr std::size_t motifMargin = 2;
constexpr std::size_t nameMargin = 10;

/// The consensus strings of the first, the second and the combined matrix.
using StepMotifs = std::array<std::string, 3>;

StepMotifs motifsOf(const combinedMatrices& step) {
    return {getConsensusString(step.matrix1), getConsensusString(step.matrix2),
            getConsensusString(step.combinedMatrix)};
}

template <class Use>
void forEachMergedStep(const std::vector<combinedMatrices>& group, Use use) {
    for (const combinedMatrices& step : group) {
        if (step.mergedFlag == "Y") use(step, motifsOf(step));
    }
}

/// The widths of the motif columns: the longest text of the report in each column, plus a margin.
std::array<std::size_t, 3> motifWidths(const std::vector<std::vector<combinedMatrices>>& groups) {
    std::array<std::size_t, 3> widths{leastMotifWidth, leastMotifWidth, leastMotifWidth};
    for (const std::vector<combinedMatrices>& group : groups) {
        forEachMergedStep(group, [&](const combinedMatrices&, const StepMotifs& motifs) {
            for (std::size_t column = 0; column < widths.size(); ++column) {
                widths[column] = std::max(widths[column], motifs[column].size() + motifMargin);
            }
        });
    }
    return widths;
}

}  // namespace

std::string combinedGroupsText(const std::vector<std::vector<combinedMatrices>>& groups, const char* titleStart,
                               std::size_t longestName) {
    const std::string rule = std::string(ruleWidth, '-') + "\n";
    const std::array<std::size_t, 3> widths = motifWidths(groups);
    const std::size_t nameWidth = longestName + nameMargin;
    std::string body;
    const auto addRow = [&](const std::array<std::string_view, 4>& labels,
                            const std::array<std::string_view, 3>& motifs) {
        appendPadded(body, labels[0], nameWidth);
        appendPadded(body, labels[1], nameWidth);
        appendPadded(body, labels[2], formatWidth);
        appendPadded(body, labels[3], formatWidth);
        for (std::size_t column = 0; column < widths.size(); ++column)
            appendPadded(body, motifs[column], widths[column]);
        body += '\n';
    };
    for (const std::vector<combinedMatrices>& group : groups) {
        body += std::string(starsBefore, '*') + titleStart + std::to_string(group.front().matrixID1) +
                " and Its Best Matches " + std::string(starsAfter, '*') + "\n" + rule;
        forEachMergedStep(group, [&](const combinedMatrices& step, const StepMotifs& motifs) {
            addRow({"1st motif name", "2nd motif name", "1st format", "2nd format"},
                   {"1st motif", "2nd motif", "Combined motif"});
            body += rule;
            addRow(
                {step.motifName1, step.motifName2, formatText(step.matchingFormat1), formatText(step.matchingFormat2)},
                {motifs[0], motifs[1], motifs[2]});
            body += std::string("Direction: ") + directionText(step.direction) +
                    "\t\tPosition #: " + std::to_string(step.position) +
                    "\t\tOverlap #: " + std::to_string(step.overlap) + "\nAlignment:\n" + step.alignedMotif1 + "\n" +
                    step.alignedMotif2 + "\n" + rule;
        });
    }
    return body;
}

void writeCombinedGroups(const ReportFile& report, const std::vector<std::vector<combinedMatrices>>& groups,
                         const char* titleStart) {
    appendToReport(report, combinedGroupsText(groups, titleStart, static_cast<std::size_t>(motifNameLength)));
}

}  // namespace varnolix
