#include "input/stages.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReadInputFileTest : public testing::FolderTest {
  protected:
    ReadInputFileTest() {
        inputPath = folder();
        FileNameType.resize(3);
    }

    void readText(std::string_view text) {
        write("motifs.txt", text);
        readInputFile("motifs.txt", 0);
    }

    static std::vector<std::string> names() {
        std::vector<std::string> texts;
        for (const data& motif : Datasets) texts.push_back(motif.motifName);
        return texts;
    }
    static std::vector<std::string> consensuses() {
        std::vector<std::string> texts;
        for (const data& motif : Datasets) texts.push_back(motif.consensus);
        return texts;
    }
    static std::vector<std::size_t> lengths() {
        std::vector<std::size_t> sizes;
        for (const data& motif : Datasets) sizes.push_back(motif.matrix.size());
        return sizes;
    }
};

std::string positions(int count) {
    std::string text;
    for (int row = 1; row <= count; ++row) text += std::to_string(row) + " 1 1 1\n";
    return text;
}

TEST_F(ReadInputFileTest, EveryLayoutInOneFile) {
    readText(
        "DE transfac\nP0 A C G T\n01 1 0 0 0 A\n02 0 1 0 0 C\n03 0 0 1 0 G\n04 0 0 0 1 T\nXX\n\n"
        ">jaspar Name\nA [ 1 0 0 0 ]\nC [ 0 1 0 0 ]\nG [ 0 0 1 0 ]\nT [ 0 0 0 1 ]\n\n"
        ">raw\n1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n\n"
        "----\nMotif 4 matrix\n----\nletter-probability matrix: alength= 4 w= 4\n"
        "1.0 0.0 0.0 0.0\n0.0 1.0 0.0 0.0\n0.0 0.0 1.0 0.0\n0.0 0.0 0.0 1.0\n\n"
        ">consensus\nACGT\n\n"
        ">alignment\nACGT\nACGT\nACG-\n\n"
        "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n\n"
        "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n0 0 0 1\n\n");
    EXPECT_THAT(names(), ElementsAre("transfac", "jaspar", "raw", "Motif 4", "consensus", "alignment", "NA", "NA"));
    EXPECT_THAT(consensuses(), ElementsAre("ACGT", "ACGT", "ACGT", "ACGT", "ACGT", "ACGT", "ACGT", "ACGTT"));
    EXPECT_EQ(FileNameType[0].motifCount, 8);
}

TEST_F(ReadInputFileTest, NumbersMotifsAndMovesToTheNextFile) {
    readText(">a\nACGT\n\n>b\nACGT\n\n");
    EXPECT_EQ(dNum, 2);
    EXPECT_EQ(mNum, 1);
    EXPECT_EQ(matrixIDNum, 3);
    write("second.txt", ">c\nACGT\n\n");
    readInputFile("second.txt", 1);
    ASSERT_EQ(Datasets.size(), 3U);
    for (std::size_t place = 0; place < 3; ++place) EXPECT_EQ(Datasets[place].matrixID, static_cast<int>(place) + 1);
    EXPECT_EQ(Datasets[1].motifNum, 2);
    EXPECT_EQ(Datasets[2].motifNum, 1);
    EXPECT_EQ(Datasets[2].datasetNum, 2);
    EXPECT_EQ(FileNameType[0].motifCount, 2);
    EXPECT_EQ(FileNameType[1].motifCount, 1);
}

TEST_F(ReadInputFileTest, FileWithoutMotifStillCountsAsAFile) {
    readText("no motif here\n\n");
    EXPECT_THAT(Datasets, IsEmpty());
    EXPECT_EQ(FileNameType[0].motifCount, 0);
    EXPECT_EQ(dNum, 2);
}

TEST_F(ReadInputFileTest, EmptyFileAndEmptyLinesGiveNothing) {
    readText("");
    readText("\n\n \t\n\n");
    EXPECT_THAT(Datasets, IsEmpty());
    EXPECT_EQ(dNum, 3);
}

TEST_F(ReadInputFileTest, LastLineEndClosesTheLastBlock) {
    readText(">a\nACGT\n\n>b\nACGT\n");
    EXPECT_THAT(names(), ElementsAre("a", "b"));
}

TEST_F(ReadInputFileTest, LastLineWithoutLineEndLosesItsMotif) {
    readText(">a\nACGT\n\n>b\nACGT");
    EXPECT_THAT(names(), ElementsAre("a"));
}

TEST_F(ReadInputFileTest, LastLineOfBlanksClosesTheBlock) {
    readText(">a\nACGT\n ");
    EXPECT_THAT(names(), ElementsAre("a"));
}

TEST_F(ReadInputFileTest, CarriageReturnsAndTabsAreStripped) {
    readText(">a\t\r\nACGT \r\n\t\r\n>b \r\n1\t0\t0\t0\r\n 0 1  0 0 \t\r\n\r\n");
    EXPECT_THAT(names(), ElementsAre("a", "b"));
    EXPECT_THAT(consensuses(), ElementsAre("ACGT", "AC"));
}

TEST_F(ReadInputFileTest, BlankLinesCloseBlocksToo) {
    readText(">a\nACGT\n   \n>b\nACGT\n\t\n");
    EXPECT_THAT(names(), ElementsAre("a", "b"));
}

TEST_F(ReadInputFileTest, FourRowsOfFourAreHorizontal) {
    readText("1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n\n");
    ASSERT_EQ(Datasets.size(), 1U);
    EXPECT_EQ(Datasets[0].matrix, Matrix(4, Column{0.25, 0.25, 0.25, 0.25}));
}

TEST_F(ReadInputFileTest, FiveRowsOfFourAreVertical) {
    readText("1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n\n");
    ASSERT_EQ(Datasets.size(), 1U);
    EXPECT_EQ(Datasets[0].matrix, Matrix(5, Column{0.1, 0.2, 0.3, 0.4}));
}

TEST_F(ReadInputFileTest, ThirtyOneLinesFitOneBlock) {
    readText(positions(31) + "\n");
    EXPECT_THAT(lengths(), ElementsAre(31U));
}

TEST_F(ReadInputFileTest, ThirtySecondLineIsLost) {
    readText(positions(32) + "\n");
    EXPECT_THAT(lengths(), ElementsAre(31U));
}

TEST_F(ReadInputFileTest, FortyRowsBecomeTwoMotifs) {
    readText(positions(40) + "\n");
    ASSERT_THAT(lengths(), ElementsAre(31U, 8U));
    EXPECT_EQ(Datasets[1].matrix[0], (Column{33.0 / 36, 1.0 / 36, 1.0 / 36, 1.0 / 36}));
}

TEST_F(ReadInputFileTest, ThirtySecondLineWithoutLineEndClosesTheBlock) {
    readText(positions(31) + "32 1 1 1");
    EXPECT_THAT(lengths(), ElementsAre(31U));
}

TEST_F(ReadInputFileTest, ThirtyFirstLineWithoutLineEndDoesNotCloseTheBlock) {
    readText(positions(30) + "31 1 1 1");
    EXPECT_THAT(Datasets, IsEmpty());
}

TEST_F(ReadInputFileTest, HeldBlockSwallowsGoodOnes) {
    readText(">bad\nacgt\n\n>good\nACGT\n\n>too\nACGT\n\n");
    EXPECT_THAT(Datasets, IsEmpty());
}

TEST_F(ReadInputFileTest, GoodBlocksBeforeAHeldOneAreKept) {
    readText(">good\nACGT\n\n>bad\nacgt\n\n>lost\nACGT\n\n");
    EXPECT_THAT(names(), ElementsAre("good"));
}

TEST_F(ReadInputFileTest, HeldBlockMayBeCompleted) {
    // The rows of "letter-probability" follow after an empty line.
    readText("----\ntitle\n----\nletter-probability matrix\n\n0.25 0.25 0.25 0.25\n1.0 0.0 0.0 0.0\n\n");
    EXPECT_THAT(names(), ElementsAre("Motif 1"));
    EXPECT_THAT(lengths(), ElementsAre(2U));
}

TEST_F(ReadInputFileTest, HeldBlockIsClassifiedAgainAfterThirtyOneMoreLines) {
    // Two words on their own are held. With more lines after them they begin a TRANSFAC block, which has no position
    // lines here. The thirty-second line is lost.
    readText("two words\n\n" + positions(31) + "lost\n>name\nACGT\n\n");
    EXPECT_THAT(names(), ElementsAre("words", "name"));
    EXPECT_THAT(lengths(), ElementsAre(0U, 4U));
}

TEST_F(ReadInputFileTest, HeldBlockSwallowsManyLines) {
    readText("three odd words\n\n" + positions(31) + "lost\n>name\nACGT\n\n");
    EXPECT_THAT(Datasets, IsEmpty());
}

TEST_F(ReadInputFileTest, LoneNameIsReadAsAnEmptyMotif) {
    readText(">lone\n\n1 2 3 4\n1 2 3 4\n\n");
    EXPECT_THAT(names(), ElementsAre("lone", "NA"));
    EXPECT_THAT(lengths(), ElementsAre(0U, 2U));
}

TEST_F(ReadInputFileTest, LoneNameAfterAHorizontalMatrixWaitsForItsRows) {
    readText("1 0\n0 1\n0 0\n0 0\n\n>name\n\n1 0 0 0\n0 1 0 0\n\n");
    EXPECT_THAT(names(), ElementsAre("NA", "name"));
    EXPECT_THAT(lengths(), ElementsAre(2U, 2U));
}

TEST_F(ReadInputFileTest, MarksDoNotOutliveTheFile) {
    readText("1 0\n0 1\n0 0\n0 0\n\n");
    readText(">lone\n\n");
    EXPECT_THAT(names(), ElementsAre("NA", "lone"));
}

TEST_F(ReadInputFileTest, TypedFormatDoesNotMatter) {
    for (int format = 1; format <= 10; ++format) {
        testing::resetGlobals();
        inputPath = folder();
        FileNameType.resize(1);
        FileNameType[0].fileFormat = format;
        readText(">jaspar\nA 1 0\nC 0 1\nG 0 0\nT 0 0\n\n");
        EXPECT_THAT(names(), ElementsAre("jaspar")) << format;
    }
}

TEST_F(ReadInputFileTest, BinaryInputIsReadToItsEnd) {
    std::string bytes;
    for (int round = 0; round < 5000; ++round) bytes += static_cast<char>(round * 37 % 256);
    readText(bytes);
    EXPECT_EQ(dNum, 2);
}

using ReadInputFileDeathTest = ReadInputFileTest;

TEST_F(ReadInputFileDeathTest, MissingFilesAndFoldersEndTheRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const char* name : {"missing.txt", ""}) {
        EXPECT_EXIT(
            {
                dup2(STDERR_FILENO, STDOUT_FILENO);
                readInputFile(name, 0);
            },
            ::testing::ExitedWithCode(1), "Invalid input path or file name.\n$");
    }
}

}  // namespace
}  // namespace varnolix
