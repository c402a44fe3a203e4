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

/// Fills the work record with what the steps merged and the members left out have in common.
void fillFromRecord(const dataCombinedScore& record, const std::string& name1, const std::string& name2) {
    mergedMatrix.matrixID1 = record.matrixID1;
    mergedMatrix.matrixID2 = record.matrixID2;
    mergedMatrix.motifName1 = name1;
    mergedMatrix.motifName2 = name2;
    mergedMatrix.matchingFormat1 = record.matchingFormat1;
    mergedMatrix.matchingFormat2 = record.matchingFormat2;
    mergedMatrix.primaryFlag = record.primaryFlag;
    mergedMatrix.direction = record.direction;
    mergedMatrix.position = static_cast<int>(record.position);
    mergedMatrix.overlap = static_cast<int>(record.overlap);
    mergedMatrix.combinedScore = record.combinedScore;
}

/// Members from the first refused one on, each with its own matrix in place of a combined one.
void leaveOut(std::span<const dataCombinedScore> members, std::vector<combinedMatrices>& steps) {
    for (const dataCombinedScore& record : members) {
        const data& motif1 = motifOf(Datasets, record.matrixID1);
        const data& motif2 = motifOf(Datasets, record.matrixID2);
        fillFromRecord(record, motif1.motifName, motif2.motifName);
        mergedMatrix.matrix1 = motif1.matrix;
        mergedMatrix.matrix2 = oriented(motif2, record.matchingFormat2);
        mergedMatrix.combinedMatrix = mergedMatrix.matrix2;
        mergedMatrix.mergedFlag = "N";
        steps.push_back(mergedMatrix);
    }
}

/// One motif as a step sees it: its name, its matrix as it is stored, and in the orientation to be merged.
struct Part {
    std::string name;
    const Matrix& stored;
    const Matrix& merged;
};

class GroupMerger {
  public:
    explicit GroupMerger(std::vector<combinedMatrices>& steps) : steps_(steps), cutoff_(simCutoff) {}

    void merge(std::span<const dataCombinedScore> group) {
        const dataCombinedScore& pair = group.front();
        const data& motif1 = motifOf(Datasets, pair.matrixID1);
        const data& motif2 = motifOf(Datasets, pair.matrixID2);
        bool isAccepted = tryStep(pair, {motif1.motifName, motif1.matrix, oriented(motif1, pair.matchingFormat1)},
                                  {motif2.motifName, motif2.matrix, oriented(motif2, pair.matchingFormat2)});
        std::size_t index = 1;
        for (; isAccepted && index < group.size(); ++index) {
            const data& member = motifOf(Datasets, group[index].matrixID2);
            const std::optional<dataCombinedScore> record = bestAlignment(running_, member.matrix);
            if (!record) return;  // the members behind it get no record at all
            const bool isReversed = record->matchingFormat1 == MatchingFormat::reverseComplement;
            const Matrix reversed = isReversed ? getRevCompMotif(running_) : Matrix();
            isAccepted = tryStep(*record, {runningName, running_, isReversed ? reversed : running_},
                                 {member.motifName, member.matrix, oriented(member, record->matchingFormat2)});
        }
        if (!isAccepted) leaveOut(group.subspan(index - 1), steps_);
    }

  private:
    /// Merges the two parts. The result counts if it aligns forward with both as they are stored; a backward alignment
    /// does not make up for a missing forward one.
    bool tryStep(const dataCombinedScore& record, const Part& part1, const Part& part2) {
        const PairAlignment alignment = alignmentOf(record, part1.merged, part2.merged);
        Matrix combined = combinedTwoMatrices(part1.merged, part2.merged, alignment);
        for (const Part* part : {&part1, &part2}) {
            if (forwardScanTwoMatrices(combined, part->stored, cutoff_).empty()) return false;
        }
        fillFromRecord(record, part1.name, part2.name);
        mergedMatrix.matrix1 = part1.merged;
        mergedMatrix.matrix2 = part2.merged;
        mergedMatrix.combinedMatrix = combined;
        mergedMatrix.mergedFlag = "Y";
        const std::string lines = alignTwoMatrices(part1.merged, part2.merged, alignment);
        const std::size_t border = lines.find('_');
        mergedMatrix.alignedMotif1 = lines.substr(0, border);
        mergedMatrix.alignedMotif2 = lines.substr(border + 1);
        steps_.push_back(mergedMatrix);
        running_ = std::move(combined);
        return true;
    }

    /// The first forward record, or the first backward one where there is no forward one: their scores are all alike.
    std::optional<dataCombinedScore> bestAlignment(const Matrix& matrix1, const Matrix& matrix2) const {
        const std::vector<dataCombinedScore> forward = forwardScanTwoMatrices(matrix1, matrix2, cutoff_);
        if (!forward.empty()) return forward.front();
        const std::vector<dataCombinedScore> backward = backwardScanTwoMatrices(matrix1, matrix2, cutoff_);
        if (!backward.empty()) return backward.front();
        return std::nullopt;
    }

    std::vector<combinedMatrices>& steps_;
    CutoffTable cutoff_;
    Matrix running_;
};

}  // namespace

void mergeGroup(const std::vector<dataCombinedScore>& group, std::vector<combinedMatrices>& steps,
                std::vector<std::vector<combinedMatrices>>& mergedGroups) {
    GroupMerger(steps).merge(group);
    if (!steps.empty()) mergedGroups.push_back(std::move(steps));
    steps.clear();
}

}  // namespace varnolix
