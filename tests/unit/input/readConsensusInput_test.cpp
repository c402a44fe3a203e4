#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadConsensusInputTest : public testing::RunTest {
  protected:
    ReadConsensusInputTest() { FileNameType.resize(1); }

    const data& readBlock(std::initializer_list<std::string_view> lines) {
        readConsensusInput(blockOf(lines), 0);
        return Datasets.back();
    }
};

TEST_F(ReadConsensusInputTest, LettersBecomePositions) {
    struct Letter {
        const char* letter;
        Column column;
    };
    for (const Letter& each : {Letter{"A", {1, 0, 0, 0}},
                               {"C", {0, 1, 0, 0}},
                               {"G", {0, 0, 1, 0}},
                               {"T", {0, 0, 0, 1}},
                               {"M", {0.5, 0.5, 0, 0}},
                               {"R", {0.5, 0, 0.5, 0}},
                               {"W", {0.5, 0, 0, 0.5}},
                               {"S", {0, 0.5, 0.5, 0}},
                               {"Y", {0, 0.5, 0, 0.5}},
                               {"K", {0, 0, 0.5, 0.5}},
                               {"V", {0.3333, 0.3333, 0.3333, 0}},
                               {"H", {0.3333, 0.3333, 0, 0.3333}},
                               {"D", {0.3333, 0, 0.3333, 0.3333}},
                               {"B", {0, 0.3333, 0.3333, 0.3333}},
                               {"N", {0.25, 0.25, 0.25, 0.25}}}) {
        const data& motif = readBlock({">m", each.letter});
        EXPECT_EQ(motif.matrix, Matrix{each.column}) << each.letter;
        EXPECT_EQ(motif.consensus, each.letter);
    }
}

TEST_F(ReadConsensusInputTest, GapIsNoPosition) {
    const data& motif = readBlock({">m", "AC-G"});
    EXPECT_EQ(motif.matrix.size(), 3U);
    EXPECT_EQ(motif.consensus, "ACG");
    EXPECT_TRUE(readBlock({">m", "---"}).matrix.empty());
}

TEST_F(ReadConsensusInputTest, EveryLetterComesBack) {
    EXPECT_EQ(readBlock({">m", "ACGTMRWSYKVHDBN"}).consensus, "ACGTMRWSYKVHDBN");
}

TEST_F(ReadConsensusInputTest, NameLosesItsFirstCharacterOrIsNA) {
    EXPECT_EQ(readBlock({">ebox", "CACGTG"}).motifName, "ebox");
    EXPECT_EQ(readBlock({">", "CACGTG"}).motifName, "NA");
}

TEST_F(ReadConsensusInputTest, RowsOfOneTokenFollowOn) {
    EXPECT_EQ(readBlock({">m", "AC", "G T", "T"}).consensus, "ACT");
}

}  // namespace
}  // namespace varnolix
