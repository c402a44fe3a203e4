#include "scan/pair_scan.h"

#include <omp.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <tuple>

#include "plain/listed_records.h"
#include "plain/plain_records.h"
#include "scan/pair_records.h"
#include "scan/region_rule.h"
#include "scan/stages.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

// Both scans must give the records of the plain walk over the regions: in the same order, with the same bits, for any
// number of threads.

namespace varnolix {
namespace {

using testing::RandomMotifs;
using testing::walkBothScans;
using testing::walked;

class PairScanTest : public testing::RunTest {
  protected:
    static RecordLists scan(const std::vector<data>& motifs, double cutoff) {
        Datasets = motifs;
        simCutoff = cutoff;
        forwardScan();
        backwardScan();
        return testing::allRecords(inputRecords(DatasetsCombinedScoreLists), Datasets.size());
    }

    static void expectWalked(const RecordLists& lists, const std::vector<data>& motifs, double cutoff) {
        expectRecords(lists, walkBothScans(motifs, cutoff));
    }

    static void expectRecords(const RecordLists& lists,
                              const std::vector<std::vector<testing::WalkedRecord>>& expected) {
        ASSERT_EQ(lists.size(), expected.size());
        for (std::size_t motif = 0; motif < lists.size(); ++motif) {
            ASSERT_EQ(walked(lists[motif]), expected[motif]) << "motif " << motif + 1;
        }
    }
};

TEST_F(PairScanTest, RandomMotifsGiveTheRecordsOfTheWalk) {
    for (const double cutoff : {0.5, 0.6, 0.75, 0.9}) {
        for (std::uint64_t seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", cutoff " + std::to_string(cutoff));
            const std::vector<data> motifs = RandomMotifs(seed).motifs(25, 3);
            expectWalked(scan(motifs, cutoff), motifs, cutoff);
        }
    }
}

TEST_F(PairScanTest, ThreadsChangeNothing) {
    // More motifs than one block of lists.
    const std::vector<data> motifs = RandomMotifs(77).motifs(90, 2);
    const auto expected = walkBothScans(motifs, 0.8);
    for (const int threads : {1, 2, 3, 7}) {
        omp_set_num_threads(threads);
        SCOPED_TRACE(threads);
        expectRecords(scan(motifs, 0.8), expected);
    }
}

TEST_F(PairScanTest, OddValuesGiveTheRecordsOfTheWalk) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (std::uint64_t seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        RandomMotifs random(seed);
        std::vector<data> motifs = random.motifs(14, 1);
        for (std::size_t motif = 0; motif < motifs.size(); motif += 3) {
            Matrix matrix = motifs[motif].matrix;
            if (matrix.empty()) continue;
            Column& column = matrix[random.pick(matrix.size())];
            switch (random.pick(4)) {
                case 0:
                    column = {nan, nan, nan, nan};
                    break;
                case 1:
                    column = {2.0, -1.0, 0.0, 0.0};
                    break;
                case 2:
                    column = {1.1, -0.3, 0.1, 0.1};
                    break;
                default:
                    column = {std::numeric_limits<double>::infinity(), 0, 0, 0};
            }
            motifs[motif] = testing::motifOfMatrix(static_cast<int>(motif) + 1, matrix);
        }
        expectWalked(scan(motifs, 0.5), motifs, 0.5);
    }
}

TEST_F(PairScanTest, VeryLongMotifsGiveTheRecordsOfTheWalk) {
    RandomMotifs random(9);
    std::vector<data> motifs;
    int id = 0;
    for (const std::size_t length : {254U, 255U, 256U, 300U, 4U, 12U}) {
        motifs.push_back(testing::motifOfMatrix(++id, random.matrix(length)));
    }
    expectWalked(scan(motifs, 0.7), motifs, 0.7);
}

TEST_F(PairScanTest, ScansAgainstChosenMotifsOnly) {
    RandomMotifs random(3);
    const std::vector<data> lefts = random.motifs(6, 1);
    const std::vector<data> rights = random.motifs(9, 1);
    const std::vector<std::size_t> chosen = {1, 4};
    PairRecords records = scannedPairs(lefts, rights, chosen, {4, 1.0, 0.6}, 4);
    records.isForwardScanned = true;
    records.isBackwardScanned = true;
    const RecordLists lists = testing::allRecords(collectionRecords(records), lefts.size());
    for (const std::size_t left : {0U, 2U, 3U, 5U}) EXPECT_TRUE(lists[left].empty()) << left;
    for (const std::size_t left : chosen) {
        std::vector<testing::WalkedRecord> expected;
        for (const bool isForward : {true, false}) {
            for (const data& right : rights) {
                testing::walkBothRegions(isForward, lefts[left], right, 0.6, expected);
            }
        }
        EXPECT_EQ(walked(lists[left]), expected);
        EXPECT_FALSE(expected.empty());
    }
}

/// The fields that identify an alignment.
std::vector<std::tuple<std::uint32_t, int, double, Orientation, Walks>> told(std::span<const ScoredShift> shifts) {
    std::vector<std::tuple<std::uint32_t, int, double, Orientation, Walks>> result;
    for (const ScoredShift& kept : shifts) {
        result.emplace_back(kept.partner, kept.shift, kept.score, kept.orientation, kept.walks);
    }
    return result;
}

TEST_F(PairScanTest, EarlierAlignmentsAreThoseScoredFromTheLaterMotif) {
    const std::vector<data> motifs = RandomMotifs(12).motifs(40, 1);
    const PairScan scan(motifs, motifs, {4, 1.0, 0.6});
    // A block that is not the whole list, in runs that do not divide it.
    constexpr std::size_t first = 5;
    constexpr std::size_t last = 36;
    constexpr std::size_t run = 7;
    const ShiftRows rows = scanBlock(scan, allPlaces(motifs.size()), first, last);
    ASSERT_EQ(rows.size(), last - first);
    ShiftRows earlier;
    KernelScratch scratch;
    std::size_t gathered = 0;
    for (std::size_t from = first; from < last; from += run) {
        const std::size_t to = std::min(last, from + run);
        gatherEarlier(rows, filledRows(rows), first, from, to, earlier);
        ASSERT_EQ(earlier.size(), to - from);
        for (std::size_t motif = from; motif < to; ++motif) {
            std::vector<ScoredShift> expected;
            scan.scanPartners(motif, first, motif, OuterMotif::right, expected, scratch);
            EXPECT_EQ(told(earlier[motif - from]), told(expected)) << motif;
            gathered += expected.size();
        }
    }
    EXPECT_GT(gathered, 100U);
}

/// Partner, shift and score of all kept alignments of these motifs with each other. The plain form keeps an alignment
/// once for each scan, which counts as one here.
std::vector<std::tuple<std::uint32_t, int, double>> alignmentsOf(const std::vector<data>& motifs,
                                                                 const AlignmentLimits& limits) {
    const PairRecords records = scannedPairs(motifs, motifs, allPlaces(motifs.size()), limits, 0);
    std::vector<std::tuple<std::uint32_t, int, double>> alignments;
    for (const std::vector<ScoredShift>& row : records.rows) {
        for (const ScoredShift& kept : row) alignments.emplace_back(kept.partner, kept.shift, kept.score);
    }
    alignments.erase(std::unique(alignments.begin(), alignments.end()), alignments.end());
    return alignments;
}

TEST_F(PairScanTest, LargerLeastOverlapLeavesTheLongerAlignments) {
    const std::vector<data> motifs = RandomMotifs(4).motifs(20, 1);
    const PairRecords records = scannedPairs(motifs, motifs, allPlaces(motifs.size()), {4, 1.0, 0.6}, 0);
    std::vector<std::tuple<std::uint32_t, int, double>> expected;
    std::size_t left = 0;
    for (const std::vector<ScoredShift>& row : records.rows) {
        const int length = static_cast<int>(motifs[left++].matrix.size());
        for (const ScoredShift& kept : row) {
            const PairLengths lengths{length, static_cast<int>(motifs[kept.partner].matrix.size())};
            if (overlapAt(lengths, kept.shift) >= 7) expected.emplace_back(kept.partner, kept.shift, kept.score);
        }
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(alignmentsOf(motifs, {7, 1.0, 0.6}), expected);
}

TEST_F(PairScanTest, SmallerLeastOverlapTakesShorterMotifs) {
    const std::vector<data> motifs = {testing::motifOfText(1, "ACC"), testing::motifOfText(2, "GACCG")};
    EXPECT_TRUE(alignmentsOf(motifs, {4, 1.0, 0.99}).empty());
    const std::vector<std::tuple<std::uint32_t, int, double>> expected = {{1, 1, 1.0}};
    EXPECT_EQ(alignmentsOf(motifs, {3, 1.0, 0.99}), expected);
}

TEST_F(PairScanTest, PerfectCellIsAddedToTheScore) {
    const std::vector<data> motifs = {testing::motifOfText(1, "AAAA"), testing::motifOfText(2, "AACA")};
    // Three columns agree, and one differs in two of its four cells.
    const std::vector<std::tuple<std::uint32_t, int, double>> expected = {{1, 0, 2.0 - 2.0 / 16}};
    EXPECT_EQ(alignmentsOf(motifs, {4, 2.0, 1.5}), expected);
}

TEST_F(PairScanTest, NoMotifsGiveNothing) {
    EXPECT_TRUE(scan({}, 0.5).empty());
    const std::vector<data> one = {testing::motifOfText(1, "ACGTACGT")};
    const std::vector<data> other = one;
    EXPECT_TRUE(scannedPairs(one, other, {}, {4, 1.0, 0.5}, 0).rows[0].empty());
    EXPECT_TRUE(scannedPairs({}, other, {}, {4, 1.0, 0.5}, 0).rows.empty());
}

}  // namespace
}  // namespace varnolix
