#include "input/stages.h"

#include <cmath>
#include <filesystem>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

class WriteMotifInputTest : public testing::FolderTest {
  protected:
    WriteMotifInputTest() {
        outputPath = folder();
        jobID = "J_1_";
    }
};

TEST_F(WriteMotifInputTest, ListsFilesAndMotifs) {
    FileNameType = {{"first_file.txt", 4, 1, 1}, {"b.txt", 10, 1, 2}};
    Datasets.push_back(testing::motifOfMatrix(1, {{1, 0, 0, 0}, {0.1, 0.2, 0.3, 0.4}}, 1, "one"));
    Datasets.push_back(testing::motifOfMatrix(2, {{1.0 / 3, 2.0 / 3, 0, 0}}, 2, "two words"));
    writeMotifInput();
    EXPECT_EQ(read("J_1_input_motifs.txt"),
              "VARNOLIX - Matrix Kinship Finder\n"
              "Version 2.1\n"
              "\n"
              "Total number of motifs: 2\n"
              "\n"
              "Input files and motif counts\n"
              "File name     Count of motifs     Dataset #      \n"
              "first_file.txt1                   1              \n"
              "b.txt         1                   2              \n"
              "\n"
              "Input Motifs\n"
              "\n"
              "\n"
              "Dataset #: 1\tMotif ID: 1\tMotif name: one\n"
              "\n"
              "1.000000\t0.000000\t0.000000\t0.000000\t\n"
              "0.100000\t0.200000\t0.300000\t0.400000\t\n"
              "\n"
              "\n"
              "Dataset #: 2\tMotif ID: 2\tMotif name: two words\n"
              "\n"
              "0.333333\t0.666667\t0.000000\t0.000000\t\n"
              "\n"
              "\n");
}

TEST_F(WriteMotifInputTest, EmptyMotifHasNoRows) {
    Datasets.push_back(testing::motifOfMatrix(1, {}, 1, "empty"));
    writeMotifInput();
    const std::string text = read("J_1_input_motifs.txt");
    const std::string end = "Dataset #: 1\tMotif ID: 1\tMotif name: empty\n\n\n\n";
    ASSERT_GE(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(WriteMotifInputTest, ReplacesAnEarlierFile) {
    write("J_1_input_motifs.txt", std::string(5000, '%'));
    writeMotifInput();
    EXPECT_EQ(read("J_1_input_motifs.txt").find('%'), std::string::npos);
}

TEST_F(WriteMotifInputTest, ListsMoreThanABufferHolds) {
    constexpr int motifs = 4000;
    for (int id = 1; id <= motifs; ++id) Datasets.push_back(testing::motifOfText(id, "ACGTACGTACGT"));
    writeMotifInput();
    const std::string text = read("J_1_input_motifs.txt");
    int listed = 0;
    for (std::size_t at = text.find("Motif ID: "); at != std::string::npos; at = text.find("Motif ID: ", at + 1)) {
        ++listed;
        EXPECT_EQ(
            text.compare(at, 10 + std::to_string(listed).size() + 1, "Motif ID: " + std::to_string(listed) + "\t"), 0);
    }
    EXPECT_EQ(listed, motifs);
    EXPECT_GT(text.size(), std::size_t{1} << 20U);
}

TEST_F(WriteMotifInputTest, MissingFolderDoesNotEndTheRun) {
    outputPath = folder() + "missing/";
    writeMotifInput();
    EXPECT_FALSE(std::filesystem::exists(folder() + "missing"));
}

}  // namespace
}  // namespace varnolix
