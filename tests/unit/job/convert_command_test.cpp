#include "job/convert_command.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace varnolix::job {

namespace {

namespace fs = std::filesystem;

/// A file that goes with the test.
class ConvertTest : public testing::Test {
  protected:
    ConvertTest() {
        options.files = {(fs::temp_directory_path() / ("convert_test_" + std::to_string(getpid()) + "_" +
                                                       testing::UnitTest::GetInstance()->current_test_info()->name()))
                             .string()};
    }
    ~ConvertTest() override {
        std::error_code ignored;
        fs::remove(options.files[0], ignored);
    }
    int convert(const std::string& text) {
        std::ofstream(options.files[0], std::ios::binary) << text;
        output.str("");
        messages.str("");
        return convertMotifs(options, output, messages);
    }

    ConvertOptions options;
    std::ostringstream output;
    std::ostringstream messages;
};

const char* const goodAndBad = ">M1 one Homo\nA 1\nC 0\nG 0\nT 0\n>M2\nA 1\n";

}  // namespace

TEST_F(ConvertTest, WritesEachLayout) {
    const std::string text = "AC  M1\nNA  one\nOS  Homo\nP0 A C G T\n01 1 0 0 0\n//\n";
    for (const auto& [to, begin] :
         std::vector<std::pair<std::string, std::string>>{{"jaspar", ">M1 one\nA [ 1 ]\n"},
                                                          {"transfac", "AC  M1\nXX\nID  one\n"},
                                                          {"meme", "MEME version 4\n"},
                                                          {"tsv", "id\tname\tposition_1based"}}) {
        options.to = to;
        EXPECT_EQ(convert(text), 0);
        EXPECT_EQ(output.str().substr(0, begin.size()), begin);
        EXPECT_EQ(messages.str(), "");
    }
    options.to = "jaspar";
    options.withTaxon = true;
    convert(text);
    EXPECT_TRUE(output.str().starts_with(">M1 one Homo\n"));
    options.to = "pfm";
    EXPECT_EQ(convert(text), 2);
}

TEST_F(ConvertTest, WritesNothingIfAMotifIsRefused) {
    EXPECT_EQ(convert(goodAndBad), 1);
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(messages.str(), "varnolix-job: " + options.files[0] + ":6: motif M2: 1 row of values, not four\n");
}

TEST_F(ConvertTest, SkipsBadMotifsWhenAsked) {
    options.skipBad = true;
    EXPECT_EQ(convert(goodAndBad), 0);
    EXPECT_EQ(output.str(), ">M1 one\nA [ 1 ]\nC [ 0 ]\nG [ 0 ]\nT [ 0 ]\n\n");
    EXPECT_EQ(messages.str(), "varnolix-job: " + options.files[0] + ":6: motif M2: 1 row of values, not four\n");
    EXPECT_EQ(convert(">M2\nA 1\n"), 1) << "nothing is left";
}

TEST_F(ConvertTest, SaysWhatIsWrongWithAFile) {
    EXPECT_EQ(convert("<?xml?>"), 1);
    EXPECT_EQ(messages.str(), "varnolix-job: " + options.files[0] +
                                  ":1: XML; take the text output of the program that " + "wrote it\n");
    options.files.emplace_back("/none");
    EXPECT_EQ(convert(">M1\nRY\n"), 1);
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(messages.str(), "varnolix-job: /none: there is no such file\n");
}

TEST_F(ConvertTest, NotesColumnsWithoutCounts) {
    EXPECT_EQ(convert(">M1\nA 0 1 0.0\nC 0 0 0\nG 0 0 0\nT 0 0 0\n"), 0);
    EXPECT_EQ(messages.str(),
              "varnolix-job: " + options.files[0] + ":1: note: motif M1 has no counts at position 1, 3\n");
}

TEST_F(ConvertTest, TakesTheNamedLayout) {
    options.layout = Layout::consensus;
    EXPECT_EQ(convert(">a\nAC\n>b\nAG\n"), 0);
    EXPECT_NE(output.str().find(">b b"), std::string::npos);
}

}  // namespace varnolix::job
