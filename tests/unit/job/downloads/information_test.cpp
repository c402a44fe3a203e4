#include "job/downloads/information.h"

#include <gtest/gtest.h>

namespace varnolix::job {

namespace {

const NumberColumn certain = {"0", "7", "0", "0"};
const NumberColumn flat = {"3", "3", "3", "3"};
const NumberColumn two = {"0.5", "0", "0", "0.5"};
const NumberColumn empty = {"0", "0", "0", "0"};

DownloadedMotif motifOf(std::vector<NumberColumn> columns) {
    DownloadedMotif motif;
    motif.columns = std::move(columns);
    return motif;
}

}  // namespace

TEST(Information, OfColumns) {
    EXPECT_DOUBLE_EQ(informationOf(certain), 2);
    EXPECT_DOUBLE_EQ(informationOf(flat), 0);
    EXPECT_DOUBLE_EQ(informationOf(two), 1);
    EXPECT_DOUBLE_EQ(informationOf(empty), 0);
    EXPECT_NEAR(informationOf(NumberColumn{"7", "1", "1", "1"}), 2 - 1.3567796494470394, 1e-12);
}

TEST(Information, OfMotifs) {
    EXPECT_DOUBLE_EQ(informationOf(motifOf({certain, two, flat, empty})), 3);
    EXPECT_DOUBLE_EQ(informationOf(motifOf({})), 0);
}

TEST(TrimFlanks, CutsFlanksOnly) {
    DownloadedMotif motif = motifOf({flat, empty, two, flat, certain, flat});
    const TrimmedFlanks trimmed = trimFlanks(motif, 0.5);
    EXPECT_EQ(trimmed.left, 2U);
    EXPECT_EQ(trimmed.right, 1U);
    EXPECT_FALSE(trimmed.isEmpty);
    EXPECT_EQ(motif.columns, (std::vector<NumberColumn>{two, flat, certain}));
}

TEST(TrimFlanks, KeepsColumnsOfJustEnough) {
    DownloadedMotif motif = motifOf({two, certain, two});
    EXPECT_EQ(trimFlanks(motif, 1).left, 0U);
    EXPECT_EQ(motif.columns.size(), 3U);
    EXPECT_EQ(trimFlanks(motif, 1.5).right, 1U);
    EXPECT_EQ(motif.columns, std::vector<NumberColumn>{certain});
}

TEST(TrimFlanks, LeavesAMotifOfWhichNothingWouldRemain) {
    DownloadedMotif motif = motifOf({flat, two});
    EXPECT_TRUE(trimFlanks(motif, 1.5).isEmpty);
    EXPECT_EQ(motif.columns.size(), 2U);
}

}  // namespace varnolix::job
