#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadJasparInputTest : public testing::RunTest {
  protected:
    ReadJasparInputTest() { FileNameType.resize(1); }

    const data& readBlock(std::initializer_list<std::string_view> lines) {
        readJasparInput(blockOf(lines), 0);
        return Datasets.back();
    }
};

const Matrix threePositions = {{0.5, 0, 0.5, 0}, {0.25, 0.25, 0.25, 0.25}, {0, 0, 0, 1}};

TEST_F(ReadJasparInputTest, FirstTokenWithoutItsFirstCharacterIsTheName) {
    EXPECT_EQ(readBlock({">MA0004.1 Arnt", "A 1", "C 0", "G 0", "T 0"}).motifName, "MA0004.1");
    EXPECT_EQ(readBlock({"MA1", "A 1", "C 0", "G 0", "T 0"}).motifName, "A1");
}

TEST_F(ReadJasparInputTest, EmptyNameStaysEmpty) {
    EXPECT_EQ(readBlock({">", "A 1", "C 0", "G 0", "T 0"}).motifName, "");
    EXPECT_EQ(readBlock({"> Arnt", "A 1", "C 0", "G 0", "T 0"}).motifName, "");
}

TEST_F(ReadJasparInputTest, RowsAreTheBases) {
    EXPECT_EQ(readBlock({">m", "A 5 1 0", "C 0 1 0", "G 5 1 0", "T 0 1 7"}).matrix, threePositions);
}

TEST_F(ReadJasparInputTest, BracketsChangeNothing) {
    EXPECT_EQ(readBlock({">m", "A [ 5 1 0 ]", "C [0 1 0]", "G [5 1 0 ]", "T [ 0 1 7]"}).matrix, threePositions);
    EXPECT_EQ(readBlock({">m", "A [ 5 [ 1 ] 0 ]", "C [0] [1] [0]", "G 5 1 0", "T 0 1 7]]"}).matrix, threePositions);
}

TEST_F(ReadJasparInputTest, BaseLettersBetweenTheValuesAreSkipped) {
    EXPECT_EQ(jasparRowValues(splitTokens("A 1 C 2 G 3 T 4")), (std::vector<double>{1, 2, 3, 4}));
}

TEST_F(ReadJasparInputTest, OddCharactersOfTokensAreDropped) {
    EXPECT_EQ(jasparRowValues(splitTokens("A -1 2x 1e2 AC x 3,5")), (std::vector<double>{1, 2, 12, 35}));
}

TEST_F(ReadJasparInputTest, ShortRowsCountZero) {
    EXPECT_EQ(readBlock({">m", "A 1 1", "C 1", "G 1", "T 1 3"}).matrix,
              (Matrix{{0.25, 0.25, 0.25, 0.25}, {0.25, 0, 0, 0.75}}));
}

TEST_F(ReadJasparInputTest, RowOfATellsTheLength) {
    EXPECT_EQ(readBlock({">m", "A 1", "C 1 9", "G 1 9", "T 1 9"}).matrix, (Matrix{{0.25, 0.25, 0.25, 0.25}}));
    EXPECT_TRUE(readBlock({">m", "A", "C 1", "G 1", "T 1"}).matrix.empty());
}

}  // namespace
}  // namespace varnolix
