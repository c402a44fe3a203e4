#pragma once

#include <gtest/gtest.h>
#include <omp.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "input/input_block.h"
#include "run/shared_records.h"

// Fixtures for the tests of stages: globals with their start values, a folder of the test's own, small motifs.

namespace varnolix::testing {

/// Resets every global of run/shared_records.h to its start value, and all streams to their initial state.
void resetGlobals();

/// Resets the globals before and after the test. The test may change the number of threads.
class RunTest : public ::testing::Test {
  protected:
    RunTest() { resetGlobals(); }
    ~RunTest() override {
        resetGlobals();
        omp_set_num_threads(threadsBefore_);
    }

    const int threadsBefore_ = omp_get_max_threads();
};

/// The same, with an empty folder that is removed after the test.
class FolderTest : public RunTest {
  protected:
    FolderTest();
    ~FolderTest() override;

    /// With a slash at its end.
    std::string folder() const { return folder_.string() + "/"; }
    void write(const std::string& name, std::string_view text) const;
    std::string read(const std::string& name) const;

  private:
    std::filesystem::path folder_;
};

/// The lines as rows of tokens. They point into the texts, which must outlive the block, as literals do.
Block blockOf(std::initializer_list<std::string_view> lines);

/// A motif with all derived fields.
data motifOfMatrix(int matrixID, Matrix matrix, int datasetNum = 1, std::string name = "");

/// A motif made from an IUPAC string, so its frequencies are 1, one half, one third or one quarter.
data motifOfText(int matrixID, std::string_view letters, int datasetNum = 1, std::string name = "");

/// `letters` repeated `count` times.
inline std::string times(std::size_t count, char letter) {
    return std::string(count, letter);
}

}  // namespace varnolix::testing
