#include "input/stages.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

class ReadInputTest : public testing::FolderTest {
  protected:
    ReadInputTest() { inputPath = folder(); }

    void addFile(const std::string& name, std::string_view text) {
        write(name, text);
        FileNameType.push_back({name, 10, 0, static_cast<int>(FileNameType.size()) + 1});
    }
};

TEST_F(ReadInputTest, ReadsFilesInOrder) {
    addFile("a.txt", ">first\nACGT\n\n>second\nACGT\n\n");
    addFile("b.txt", "");
    addFile("c.txt", ">third\nACGT\n\n");
    readInput(FileNameType);
    ASSERT_EQ(Datasets.size(), 3U);
    EXPECT_EQ(Datasets[2].motifName, "third");
    EXPECT_EQ(Datasets[2].matrixID, 3);
    EXPECT_EQ(Datasets[2].datasetNum, 3);
    EXPECT_EQ(Datasets[2].motifNum, 1);
    EXPECT_EQ(FileNameType[0].motifCount, 2);
    EXPECT_EQ(FileNameType[1].motifCount, 0);
    EXPECT_EQ(FileNameType[2].motifCount, 1);
    EXPECT_EQ(dNum, 4);
}

TEST_F(ReadInputTest, TakesTheLongestName) {
    addFile("a.txt", ">abc\nACGT\n\n>abcdefg\nACGT\n\n>ab\nACGT\n\n");
    readInput(FileNameType);
    EXPECT_EQ(motifNameLength, 7);
}

TEST_F(ReadInputTest, LengthOfNamesOnlyGrows) {
    addFile("a.txt", ">abc\nACGT\n\n");
    motifNameLength = 9;
    readInput(FileNameType);
    EXPECT_EQ(motifNameLength, 9);
}

TEST_F(ReadInputTest, SameFileTwiceGivesItsMotifsTwice) {
    addFile("a.txt", ">abc\nACGT\n\n");
    addFile("a.txt", ">abc\nACGT\n\n");
    readInput(FileNameType);
    ASSERT_EQ(Datasets.size(), 2U);
    EXPECT_EQ(Datasets[1].datasetNum, 2);
    EXPECT_EQ(Datasets[0].matrix, Datasets[1].matrix);
}

}  // namespace
}  // namespace varnolix
