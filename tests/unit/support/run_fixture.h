#pragma once

#include <gtest/gtest.h>
#include <omp.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "input/input_block.h"
#include "run/shared_records.h"

// What tests of stages share: the globals at their start values, a folder of their own, small motifs.

namespace varnolix::testing {

/// Puts every global of run/shared_records.h back to its start value and all streams into their first state.
void resetGlobals();

/// Globals at their start values before and after the test, which may set the number of threads.
class RunTest : public ::testing::Test {
  protected:
    RunTest() { resetGlobals(); }
    ~RunTest() override {
        resetGlobals();
        omp_set_num_threads(threadsBefore_);
    }

    const int threadsBefore_ = omp_get_max_threads();
};

/// The same, with an empty folder that is removed behind the test.
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

/// Rows of tokens; the texts must outlive the block, as literals do.
Block blockOf(std::initializer_list<std::string_view> lines);

/// A motif with its derived forms.
data motifOfMatrix(int matrixID, Matrix matrix, int datasetNum = 1, std::string name = "");

/// A motif of one IUPAC string, a frequency matrix of whole, half, third and quarter shares.
data motifOfText(int matrixID, std::string_view letters, int datasetNum = 1, std::string name = "");

/// `letters` repeated `count` times.
inline std::string times(std::size_t count, char letter) {
    return std::string(count, letter);
}

}  // namespace varnolix::testing
