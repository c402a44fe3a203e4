#include "run/system/progress.h"

#include <gtest/gtest.h>

namespace varnolix {
namespace {

TEST(ProgressText, TellsWhatIsDone) {
    EXPECT_EQ(progressText("PDF", 2, 6, std::nullopt), "PDF 2 of 6");
    EXPECT_EQ(progressText("logos", 812, 2482, 31.0), "logos 812 of 2,482, 31 s left");
}

TEST(ProgressText, GroupsDigits) {
    EXPECT_EQ(progressText("x", 0, 999, std::nullopt), "x 0 of 999");
    EXPECT_EQ(progressText("x", 1000, 123456, std::nullopt), "x 1,000 of 123,456");
    EXPECT_EQ(progressText("x", 999999, 1234567, std::nullopt), "x 999,999 of 1,234,567");
}

TEST(ProgressText, RoundsTimeUpAndTurnsToMinutes) {
    EXPECT_EQ(progressText("x", 1, 2, 0.0), "x 1 of 2, 0 s left");
    EXPECT_EQ(progressText("x", 1, 2, 0.2), "x 1 of 2, 1 s left");
    EXPECT_EQ(progressText("x", 1, 2, 99.5), "x 1 of 2, 100 s left");
    EXPECT_EQ(progressText("x", 1, 2, 100.0), "x 1 of 2, 2 min left");
    EXPECT_EQ(progressText("x", 1, 2, 601.0), "x 1 of 2, 11 min left");
}

TEST(SecondsLeft, GoesOnAsBefore) {
    EXPECT_EQ(secondsLeft(25, 100, 10), 30);
    EXPECT_EQ(secondsLeft(100, 100, 10), 0);
}

TEST(SecondsLeft, IsNotKnownAtFirst) {
    EXPECT_EQ(secondsLeft(0, 100, 10), std::nullopt);
    EXPECT_EQ(secondsLeft(25, 100, 0.9), std::nullopt);
}

}  // namespace
}  // namespace varnolix
