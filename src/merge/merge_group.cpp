#include "merge/merge_group.h"

#include <optional>
#include <span>
#include <utility>

#include "input/getRevCompMotif.h"
#include "merge/alignTwoMatrices.h"
#include "merge/combinedTwoMatrices.h"
#include "merge/stages.h"
#include "run/record_fields.h"

namespace varnolix {

namespace {

constexpr const char* runningName = "Combined Motif";

const Matrix& oriented(const data& motif, MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? motif.matrix : motif.revCompMatrix;
}

PairAlignment alignmentOf(const dataCombinedScore& record, const Matrix& matrix1, const Matrix& matrix2) {
    return {static_cast<int>(matrix1.size()),  static_cast<int>(matrix2.size()), record.primaryFlag, record.direction,
            static_cast<int>(record.position), static_cast<int>(record.overlap)};
}

/// Fills the fields that merged steps and left-out members have in common.
void fillFromRecord(combinedMatrices& step, const dataCombinedScore& record, const std::string& name1,
                    const std::string& name2) {
    step.matrixID1 = record.matrixID1;
    step.matrixID2 = record.matrixID2;
    step.motifName1 = name1;
    step.motifName2 = name2;
    step.matchingFormat1 = record.matchingFormat1;
    step.matchingFormat2 = record.matchingFormat2;
    step.primaryFlag = record.primaryFlag;
    step.direction = record.direction;
    step.position = static_cast<int>(record.position);
    step.overlap = static_cast<int>(record.overlap);
    step.combinedScore = record.combinedScore;
}

/// One motif of a step: its name, its matrix as stored, and its matrix in the orientation in which it is merged.
struct Part {
    std::string name;
    const Matrix& stored;
    const Matrix& merged;
};

class GroupMerger {
  public:
    GroupMerger(const MergeInput& input, combinedMatrices& work, std::vector<combinedMatrices>& steps)
        : motifs_(input.motifs), limits_(input.limits), work_(work), steps_(steps) {}

    void merge(std::span<const dataCombinedScore> group) {
        const dataCombinedScore& pair = group.front();
        const data& motif1 = motifOf(motifs_, pair.matrixID1);
        const data& motif2 = motifOf(motifs_, pair.matrixID2);
        bool isAccepted = tryStep(pair, {motif1.motifName, motif1.matrix, oriented(motif1, pair.matchingFormat1)},
                                  {motif2.motifName, motif2.matrix, oriented(motif2, pair.matchingFormat2)});
        std::size_t index = 1;
        for (; isAccepted && index < group.size(); ++index) {
            const data& member = motifOf(motifs_, group[index].matrixID2);
            const std::optional<dataCombinedScore> record = firstAlignment(running_, member.matrix);
            if (!record) return;  // this member and all later ones get no record at all
            const bool isReversed = record->matchingFormat1 == MatchingFormat::reverseComplement;
            const Matrix reversed = isReversed ? getRevCompMotif(running_) : Matrix();
            isAccepted = tryStep(*record, {runningName, running_, isReversed ? reversed : running_},
                                 {member.motifName, member.matrix, oriented(member, record->matchingFormat2)});
        }
        if (!isAccepted) leaveOut(group.subspan(index - 1));
    }

  private:
    /// Merges the two parts. The result is accepted if it has a forward alignment with each of them as stored; a
    /// backward alignment does not count.
    bool tryStep(const dataCombinedScore& record, const Part& part1, const Part& part2) {
        const PairAlignment alignment = alignmentOf(record, part1.merged, part2.merged);
        Matrix combined = combinedTwoMatrices(part1.merged, part2.merged, alignment);
        for (const Part* part : {&part1, &part2}) {
            if (forwardScanTwoMatrices(combined, part->stored, limits_).empty()) return false;
        }
        fillFromRecord(work_, record, part1.name, part2.name);
        work_.matrix1 = part1.merged;
        work_.matrix2 = part2.merged;
        work_.combinedMatrix = combined;
        work_.mergedFlag = "Y";
        const std::string lines = alignTwoMatrices(part1.merged, part2.merged, alignment);
        const std::size_t border = lines.find('_');
        work_.alignedMotif1 = lines.substr(0, border);
        work_.alignedMotif2 = lines.substr(border + 1);
        steps_.push_back(work_);
        running_ = std::move(combined);
        return true;
    }

    /// Records every remaining member, from the refused one on, with its own matrix in place of a combined one.
    void leaveOut(std::span<const dataCombinedScore> members) {
        for (const dataCombinedScore& record : members) {
            const data& motif1 = motifOf(motifs_, record.matrixID1);
            const data& motif2 = motifOf(motifs_, record.matrixID2);
            fillFromRecord(work_, record, motif1.motifName, motif2.motifName);
            work_.matrix1 = motif1.matrix;
            work_.matrix2 = oriented(motif2, record.matchingFormat2);
            work_.combinedMatrix = work_.matrix2;
            work_.mergedFlag = "N";
            steps_.push_back(work_);
        }
    }

    /// The first forward record or, if there is none, the first backward one. None of them has a combinedScore yet, so
    /// there is nothing better to choose by.
    std::optional<dataCombinedScore> firstAlignment(const Matrix& matrix1, const Matrix& matrix2) const {
        const std::vector<dataCombinedScore> forward = forwardScanTwoMatrices(matrix1, matrix2, limits_);
        if (!forward.empty()) return forward.front();
        const std::vector<dataCombinedScore> backward = backwardScanTwoMatrices(matrix1, matrix2, limits_);
        if (!backward.empty()) return backward.front();
        return std::nullopt;
    }

    const std::vector<data>& motifs_;
    const AlignmentLimits& limits_;
    combinedMatrices& work_;
    std::vector<combinedMatrices>& steps_;
    Matrix running_;
};

}  // namespace

void mergeGroup(const std::vector<dataCombinedScore>& group, const MergeInput& input, combinedMatrices& work,
                std::vector<combinedMatrices>& steps, std::vector<std::vector<combinedMatrices>>& mergedGroups) {
    GroupMerger(input, work, steps).merge(group);
    if (!steps.empty()) mergedGroups.push_back(std::move(steps));
    steps.clear();
}

void mergeInputGroup(const std::vector<dataCombinedScore>& group, std::vector<combinedMatrices>& steps,
                     std::vector<std::vector<combinedMatrices>>& mergedGroups) {
    mergeGroup(group, {Datasets, {overlap, maxScore, simCutoff}}, mergedMatrix, steps, mergedGroups);
}

}  // namespace varnolix
