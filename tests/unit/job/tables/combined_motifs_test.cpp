#include "job/tables/combined_motifs.h"

#include <gtest/gtest.h>

#include <limits>

#include "input/getRevCompMotif.h"
#include "job/tables/merged_job.h"
#include "job/tables/table_lines.h"
#include "merge/stages.h"
#include "scan/region_rule.h"
#include "support/random_motifs.h"

namespace varnolix {
namespace {

using job::DownloadedMotif;
using job::MergedList;
using job::NumberColumn;
using testing::rowsOfTsv;
using TsvRow = std::map<std::string, std::string>;

/// Both matrices laid on one axis, averaged where both are, without the columns where none is.
Matrix laidTogether(const Matrix& one, int oneOffset, const Matrix& other, int otherOffset, int axis) {
    Matrix result;
    for (int place = 0; place < axis; ++place) {
        const int a = place - oneOffset;
        const int b = place - otherOffset;
        const bool isOne = a >= 0 && a < std::ssize(one);
        const bool isOther = b >= 0 && b < std::ssize(other);
        if (isOne && isOther) {
            Column& mean = result.emplace_back();
            for (std::size_t base = 0; base < 4; ++base) {
                mean[base] = (one[static_cast<std::size_t>(a)][base] + other[static_cast<std::size_t>(b)][base]) * 0.5;
            }
        } else if (isOne || isOther) {
            result.push_back(isOne ? one[static_cast<std::size_t>(a)] : other[static_cast<std::size_t>(b)]);
        }
    }
    return result;
}

using CombinedMotifsTest = testing::MergedJobTest;

TEST_F(CombinedMotifsTest, RowsTellHowTheCombinedMatrixWasMade) {
    int merged = 0;
    int left = 0;
    int reversed = 0;
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE(seed);
        mergeRandom(seed);
        const std::vector<DownloadedMotif> motifs = job::combinedMotifs(results(), lists());
        std::map<std::string, Matrix> made;
        Matrix running;
        std::string axisOwner;
        for (const TsvRow& row : rowsOfTsv(combinedTsv(results(), lists()))) {
            SCOPED_TRACE(row.at("list") + " " + row.at("group_1based") + " step " + row.at("step_0based"));
            const data& member = Datasets.at(std::stoul(row.at("member_number_1based")) - 1);
            EXPECT_EQ(row.at("member_id"), "motif " + std::to_string(member.matrixID));
            EXPECT_EQ(row.at("merged") == "yes", row.at("reason").empty());
            if (row.at("merged") == "no") {
                EXPECT_EQ(row.at("member_orientation"), "");
                ++left;
                continue;
            }
            const Matrix& matrix = row.at("member_orientation") == "forward" ? member.matrix : member.revCompMatrix;
            if (row.at("step_0based") == "0") {
                running = matrix;
                axisOwner = row.at("member_orientation");
                continue;
            }
            // In the first step, row 0 has told the strand already.
            const bool isFirst = row.at("step_0based") == "1";
            const std::string& strand = row.at("combined_orientation");
            if (isFirst) {
                EXPECT_EQ(strand, axisOwner);
            } else if (strand == "reverse complement") {
                running = getRevCompMotif(running);
                ++reversed;
            }
            const int oneOffset = std::stoi(row.at("combined_offset_0based"));
            const int otherOffset = std::stoi(row.at("member_offset_0based"));
            // The axis ends where the columns of the result do.
            const int ends =
                std::max(oneOffset + static_cast<int>(running.size()), otherOffset + static_cast<int>(matrix.size()));
            Matrix result = laidTogether(running, oneOffset, matrix, otherOffset, ends);
            const std::size_t length = std::stoul(row.at("combined_length"));
            ASSERT_GE(result.size(), length);
            result.resize(length);
            running = result;
            made[row.at("combined_id")] = running;
            ++merged;
        }
        ASSERT_EQ(motifs.size(), made.size());
        for (const DownloadedMotif& motif : motifs) {
            Matrix read;
            for (const NumberColumn& column : motif.columns) {
                read.push_back(
                    {std::stod(column[0]), std::stod(column[1]), std::stod(column[2]), std::stod(column[3])});
            }
            EXPECT_EQ(read, made.at(motif.id)) << motif.id;
        }
    }
    EXPECT_GT(merged, 100);
    EXPECT_GT(left, 10);
    EXPECT_GT(reversed, 0);
}

TEST_F(CombinedMotifsTest, StepsNameGroupMembersAndScores) {
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 2),
                testing::motifOfText(3, "AACCAG", 2)};
    sources = sourcesOfMotifs();
    dataCombinedScore record{};
    record.matrixID1 = 1;
    record.matrixID2 = 2;
    record.position = 1;
    record.overlap = 5;
    record.primaryFlag = PrimaryFlag::yes;
    record.combinedScore = 0.25;
    dataCombinedScore second = record;
    second.matrixID2 = 3;
    second.combinedScore = 0.5;
    topGlobalMatchingResults = {{record, second}};
    for (const auto& group : topGlobalMatchingResults) combinedMatrixGlobalMatching(group);
    const std::vector<MergedList> lists = {{ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching}};
    const std::vector<TsvRow> rows = rowsOfTsv(combinedTsv(results(), lists));
    ASSERT_EQ(rows.size(), 3U);
    for (const TsvRow& row : rows) {
        EXPECT_EQ(row.at("list"), "top_global");
        EXPECT_EQ(row.at("group_1based"), "1");
        EXPECT_EQ(row.at("combined_id"), "top_global_1");
        EXPECT_EQ(row.at("merged"), "yes");
        EXPECT_EQ(row.at("member_offset_0based"), "0");
    }
    EXPECT_EQ(rows[0].at("member_id"), "motif 1");
    EXPECT_EQ(rows[0].at("combined_score"), "");
    EXPECT_EQ(rows[0].at("overlap"), "");
    EXPECT_EQ(rows[1].at("combined_score"), "0.25");
    EXPECT_EQ(rows[1].at("combined_length"), "5");
    EXPECT_EQ(rows[2].at("member_id"), "motif 3");
    EXPECT_EQ(rows[2].at("combined_score"), "0.5");
    EXPECT_EQ(rows[2].at("combined_length"), "6");
    const std::vector<DownloadedMotif> motifs = job::combinedMotifs(results(), lists);
    ASSERT_EQ(motifs.size(), 1U);
    EXPECT_EQ(motifs[0].id, "top_global_1");
    EXPECT_EQ(motifs[0].name, "motif 1");
    EXPECT_EQ(motifs[0].columns.front(), (NumberColumn{"1", "0", "0", "0"}));
}

TEST_F(CombinedMotifsTest, MembersThatAreNotMergedSayWhy) {
    // Motif 3 has no alignment with the combined motif, so the group ends before motif 2 is tried again.
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 2),
                testing::motifOfText(3, "GTGTGT", 2)};
    simCutoff = 0.95;
    sources = sourcesOfMotifs();
    dataCombinedScore record{};
    record.matrixID1 = 1;
    record.matrixID2 = 2;
    record.position = 1;
    record.overlap = 5;
    record.primaryFlag = PrimaryFlag::yes;
    dataCombinedScore unlike = record;
    unlike.matrixID2 = 3;
    topGlobalMatchingResults = {{record, unlike, record}, {unlike, record}};
    for (const auto& group : topGlobalMatchingResults) combinedMatrixGlobalMatching(group);
    const std::vector<MergedList> lists = {{ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching}};
    const std::vector<TsvRow> rows = rowsOfTsv(combinedTsv(results(), lists));
    ASSERT_EQ(rows.size(), 7U);
    EXPECT_EQ(rows[2].at("reason"), "does not align with what was combined before");
    EXPECT_EQ(rows[3].at("reason"), "comes after a member without an alignment");
    // The first pair of the second group is refused, so nothing is combined.
    EXPECT_EQ(rows[4].at("combined_id"), "");
    EXPECT_EQ(rows[5].at("reason"), "refused, as the result would not align with its parts");
    EXPECT_EQ(rows[6].at("reason"), "comes after a refused member");
    EXPECT_EQ(job::combinedMotifs(results(), lists).size(), 1U);
}

TEST_F(CombinedMotifsTest, ColumnsWithoutCountsAreZero) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    Datasets = {testing::motifOfText(1, "AACCA"), testing::motifOfText(2, "AACCA", 2)};
    sources = sourcesOfMotifs();
    topGlobalMatchingResults = {{makeRecord({}, 0, Direction::forward, PrimaryFlag::yes, {1, 2}, {5, 5})}};
    combinedMatrices step;
    step.mergedFlag = "Y";
    step.combinedMatrix = {{none, none, none, none}, {0.125, 0.875, 1e-7, 0}};
    mergedMotifGlobalMatching = {{step}};
    const std::vector<MergedList> lists = {{ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching}};
    const std::vector<DownloadedMotif> motifs = job::combinedMotifs(results(), lists);
    ASSERT_EQ(motifs.size(), 1U);
    EXPECT_EQ(motifs[0].columns,
              (std::vector<NumberColumn>{{"0", "0", "0", "0"}, {"0.125", "0.875", "0.0000001", "0"}}));
}

}  // namespace
}  // namespace varnolix
