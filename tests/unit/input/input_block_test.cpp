#include "input/input_block.h"

#include <sys/stat.h>

#include <fstream>
#include <thread>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

TEST(SplitTokens, CutsAtBlanksAndTabs) {
    EXPECT_EQ(splitTokens("a b\tc"), (Row{"a", "b", "c"}));
    EXPECT_EQ(splitTokens("  a \t\t b  "), (Row{"a", "b"}));
    EXPECT_EQ(splitTokens("one"), (Row{"one"}));
    EXPECT_TRUE(splitTokens("").empty());
    EXPECT_TRUE(splitTokens(" \t ").empty());
}

TEST(SplitTokens, OtherControlCharactersBelongToTokens) {
    EXPECT_EQ(splitTokens("a\rb\vc d"), (Row{"a\rb\vc", "d"}));
}

TEST(StripLineEnd, DropsBlanksTabsAndLineEnds) {
    EXPECT_EQ(stripLineEnd("text \t\r\n"), "text");
    EXPECT_EQ(stripLineEnd("  text"), "  text");
    EXPECT_EQ(stripLineEnd(" \t\r"), "");
    EXPECT_EQ(stripLineEnd(""), "");
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    forEachLine(text, [&](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

TEST(ForEachLine, LineEndAtTheEndGivesOneMoreLine) {
    EXPECT_EQ(linesOf("a\nb\n"), (std::vector<std::string>{"a", "b", ""}));
    EXPECT_EQ(linesOf("a\nb"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(linesOf("a\n\n"), (std::vector<std::string>{"a", "", ""}));
    EXPECT_EQ(linesOf(""), (std::vector<std::string>{""}));
}

class ReadWholeFileTest : public testing::FolderTest {};

TEST_F(ReadWholeFileTest, ReadsEveryByte) {
    const std::string bytes("a\0\xff\r\nb", 6);
    write("file.txt", bytes);
    std::string text = "old";
    ASSERT_TRUE(readWholeFile(folder() + "file.txt", text));
    EXPECT_EQ(text, bytes);
}

TEST_F(ReadWholeFileTest, ReadsFilesLongerThanItsBuffer) {
    std::string bytes;
    while (bytes.size() < 3'000'001) bytes += std::to_string(bytes.size());
    write("file.txt", bytes);
    std::string text;
    ASSERT_TRUE(readWholeFile(folder() + "file.txt", text));
    EXPECT_TRUE(text == bytes);
}

TEST_F(ReadWholeFileTest, OnlyRegularFilesAndPipesAreRead) {
    std::string text;
    EXPECT_FALSE(readWholeFile(folder(), text));
    EXPECT_FALSE(readWholeFile("/dev/zero", text));
    EXPECT_FALSE(readWholeFile("/dev/null", text));
    const std::string pipe = folder() + "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe) << "through the pipe"; });
    EXPECT_TRUE(readWholeFile(pipe, text));
    writer.join();
    EXPECT_EQ(text, "through the pipe");
}

TEST_F(ReadWholeFileTest, FileThatDoesNotFitEndsTheRun) {
    write("sparse.txt", "");
    std::filesystem::resize_file(folder() + "sparse.txt", std::uintmax_t{1} << 42U);
    std::string text;
    EXPECT_EXIT(readWholeFile(folder() + "sparse.txt", text), ::testing::ExitedWithCode(1),
                "^Error: the file .*sparse.txt does not fit the memory\\.\n$");
}

TEST_F(ReadWholeFileTest, MissingFileIsReported) {
    std::string text;
    EXPECT_FALSE(readWholeFile(folder() + "missing.txt", text));
}

TEST(ParseNumber, ReadsAsStrtodDoes) {
    for (const char* text : {"0",
                             "12",
                             "1.5",
                             ".5",
                             "5.",
                             ".",
                             "",
                             "1.2.3",
                             "0.1",
                             "00.10",
                             "-3.5",
                             "+2",
                             "1e3",
                             "1e-3x",
                             "0x10",
                             "inf",
                             "nan",
                             "x",
                             "5x",
                             "0.3333333333333333333333333",
                             "123456789012345678901234567890",
                             "0.000000000000000000000000000000000000000001",
                             "..",
                             "1..2",
                             "9007199254740993"}) {
        const double expected = std::strtod(text, nullptr);
        const double value = parseNumber(text);
        EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << text << " gave " << value;
    }
}

TEST(ParseNumber, ReadsNumbersBeyondTheRangeAsStrtodDoes) {
    const std::string huge(400, '9');
    EXPECT_EQ(parseNumber(huge), HUGE_VAL);
    const std::string tiny = "0." + std::string(400, '0') + "1";
    EXPECT_EQ(parseNumber(tiny), 0.0);
}

TEST(Frequencies, DividesBySum) {
    EXPECT_EQ(frequencies({10, 30, 60, 0}), (Column{0.1, 0.3, 0.6, 0.0}));
    EXPECT_EQ(frequencies({1, 2, 3, 4}), (Column{0.1, 0.2, 0.3, 0.4}));
}

TEST(Frequencies, SumOfZeroGivesNoNumbers) {
    for (const double value : frequencies({0, 0, 0, 0})) EXPECT_TRUE(std::isnan(value));
}

TEST(Frequencies, AddsInTheOrderOfTheBases) {
    // 1 + 2^-53 rounds to 1 each time if the small values come last; the other order would give 1 + 2^-52.
    const double tiny = 0x1p-53;
    EXPECT_EQ(frequencies({1, tiny, tiny, 0})[0], 1.0);
    EXPECT_EQ(frequencies({0, tiny, tiny, 1})[3], 1.0 / (1.0 + 0x1p-52));
}

TEST(FourNumeric, TestsFourTokensFromTheFirst) {
    const Row row = {"P0", "1", "2.", ".3", "4..5", "x"};
    EXPECT_TRUE(fourNumeric(row, 1));
    EXPECT_FALSE(fourNumeric(row, 0));
    EXPECT_FALSE(fourNumeric(row, 2));
}

TEST(NameOrNA, DropsTheFirstCharacter) {
    EXPECT_EQ(nameOrNA(">m1"), "m1");
    EXPECT_EQ(nameOrNA("m1"), "1");
    EXPECT_EQ(nameOrNA(">>m1"), ">m1");
}

TEST(NameOrNA, EmptyNameIsNA) {
    EXPECT_EQ(nameOrNA(">"), "NA");
    EXPECT_EQ(nameOrNA("m"), "NA");
    EXPECT_EQ(nameOrNA(""), "NA");
}

TEST(PositionsFromBaseRows, FirstRowTellsTheLengthAndMissingValuesAreZero) {
    EXPECT_EQ(positionsFromBaseRows({{{1, 1, 3}, {1, 1}, {2}, {0, 2, 1, 9}}}),
              (Matrix{{0.25, 0.25, 0.5, 0}, {0.25, 0.25, 0, 0.5}, {0.75, 0, 0, 0.25}}));
    EXPECT_TRUE(positionsFromBaseRows({{{}, {1}, {1}, {1}}}).empty());
}

class AppendMotifTest : public testing::RunTest {
  protected:
    AppendMotifTest() { FileNameType.resize(2); }
};

TEST_F(AppendMotifTest, FirstMotifIsNumberedOneThroughout) {
    appendMotif("name", {{1, 0, 0, 0}, {0, 1, 0, 0}}, 0);
    ASSERT_EQ(Datasets.size(), 1U);
    EXPECT_EQ(Datasets[0].matrixID, 1);
    EXPECT_EQ(Datasets[0].datasetNum, 1);
    EXPECT_EQ(Datasets[0].motifNum, 1);
    EXPECT_EQ(Datasets[0].motifName, "name");
    EXPECT_EQ(FileNameType[0].motifCount, 1);
    EXPECT_EQ(mNum, 2);
    EXPECT_EQ(matrixIDNum, 2);
}

TEST_F(AppendMotifTest, FillsTheDerivedForms) {
    appendMotif("name", {{0.7, 0.2, 0.1, 0.0}, {0.3, 0.3, 0.2, 0.2}}, 0);
    const data& motif = Datasets.at(0);
    EXPECT_EQ(motif.consensus, "AH");
    EXPECT_EQ(motif.revCompMatrix, (Matrix{{0.2, 0.3, 0.2, 0.3}, {0.0, 0.2, 0.1, 0.7}}));
    EXPECT_EQ(motif.revCompConsensus, "BT");  // C and T have 0.3; of the equal A and G, G counts as larger
    EXPECT_EQ(motif.taxon, "");
    EXPECT_EQ(motif.motifID, "");
}

TEST_F(AppendMotifTest, LaterMotifsCountOn) {
    appendMotif("a", {}, 0);
    appendMotif("b", {}, 0);
    dNum = 2;
    mNum = 1;
    appendMotif("c", {}, 1);
    EXPECT_EQ(FileNameType[0].motifCount, 2);
    EXPECT_EQ(FileNameType[1].motifCount, 1);
    EXPECT_EQ(Datasets[1].motifNum, 2);
    EXPECT_EQ(Datasets[2].matrixID, 3);
    EXPECT_EQ(Datasets[2].datasetNum, 2);
    EXPECT_EQ(Datasets[2].motifNum, 1);
    EXPECT_EQ(Datasets[2].consensus, "");
    EXPECT_TRUE(Datasets[2].revCompMatrix.empty());
}

TEST_F(AppendMotifTest, WorkRecordHoldsTheMotifToo) {
    appendMotif("name", {{1, 0, 0, 0}}, 0);
    EXPECT_EQ(Matrices.motifName, "name");
    EXPECT_EQ(Matrices.matrixID, 1);
    EXPECT_EQ(Matrices.consensus, "A");
}

}  // namespace
}  // namespace varnolix
