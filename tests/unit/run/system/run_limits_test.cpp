#include "run/system/run_limits.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace varnolix {
namespace {

const ::testing::ExitedWithCode endedEarly(1);

TEST(RunLimitsDeathTest, TooManyEndWithASentence) {
    requireAtMost(5, 5, "motifs");
    EXPECT_EXIT(requireAtMost(6, 5, "motifs"), endedEarly, "^Error: more than 5 motifs\\.\n$");
}

TEST(RunLimitsDeathTest, NothingButTheSentenceIsWritten) {
    EXPECT_EXIT(endForLack("this and that"), endedEarly, "^Error: this and that\\.\n$");
}

// Sanitizers have their own way to end a process that asks for too much memory.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

/// Allocates more than any machine has.
void takeTooMuch() {
    const volatile std::size_t bytes = std::size_t{1} << 60U;
    char* volatile taken = new char[bytes];  // volatile, so that the compiler does not remove it
    delete[] taken;
}

void askForAnImpossibleSize() {
    std::vector<double> numbers;
    volatile std::size_t count = numbers.max_size();
    numbers.reserve(count + 1);
}

/// Like main, this lets an uncaught exception end the process. GoogleTest would catch it.
[[noreturn]] void run(void (*work)()) noexcept {
    endWhereMemoryEnds();
    work();
    std::_Exit(0);
}

[[noreturn]] void runOnTwoThreads(void (*work)()) {
    endWhereMemoryEnds();
#pragma omp parallel num_threads(2)
    work();
    std::_Exit(0);
}

class MemoryEndDeathTest : public ::testing::Test {
  protected:
    // A plain fork would lack the OpenMP threads that other tests have started.
    MemoryEndDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
    ~MemoryEndDeathTest() override { GTEST_FLAG_SET(death_test_style, "fast"); }
};

TEST_F(MemoryEndDeathTest, LackOfMemoryEndsWithASentence) {
    EXPECT_EXIT(run(takeTooMuch), endedEarly, "^Error: not enough memory for this job\\.\n");
    EXPECT_EXIT(run(askForAnImpossibleSize), endedEarly, "^Error: not enough memory for this job\\.\n");
}

TEST_F(MemoryEndDeathTest, SoItDoesInAParallelRegion) {
    EXPECT_EXIT(runOnTwoThreads(takeTooMuch), endedEarly, "^Error: not enough memory for this job\\.\n");
    EXPECT_EXIT(runOnTwoThreads(askForAnImpossibleSize), endedEarly, "^Error: not enough memory for this job\\.\n");
}

TEST_F(MemoryEndDeathTest, OtherExceptionsStillAbort) {
    EXPECT_EXIT(run([] { throw std::logic_error("a fault"); }), ::testing::KilledBySignal(SIGABRT), "");
}

#endif

}  // namespace
}  // namespace varnolix
