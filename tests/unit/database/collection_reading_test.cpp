#include "database/collection_reading.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "database/stages.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

TEST(MotifsOfBaseRows, HeaderGivesIdAndName) {
    const std::vector<data> motifs =
        motifsOfBaseRows(blockOf({">MA0004.1 Arnt", "A [ 4 0 ]", "C [ 0 1 ]", "G [ 0 1 ]", "T [ 0 2 ]",  //
                                  ">MA0006.1", "A 1", "C 0", "G 0", "T 0"}),
                         "Plants");
    ASSERT_EQ(motifs.size(), 2U);
    EXPECT_EQ(motifs[0].motifID, "MA0004.1");
    EXPECT_EQ(motifs[0].motifName, "Arnt");
    EXPECT_EQ(motifs[0].taxon, "Plants");
    EXPECT_EQ(motifs[0].matrix, (Matrix{{1, 0, 0, 0}, {0, 0.25, 0.25, 0.5}}));
    EXPECT_EQ(motifs[0].consensus, "AB");
    EXPECT_EQ(motifs[1].motifID, "MA0006.1");
    EXPECT_EQ(motifs[1].motifName, "MA0006.1");
}

TEST(MotifsOfBaseRows, MotifsAreNumberedInTheCollection) {
    const std::vector<data> motifs =
        motifsOfBaseRows(blockOf({">a", "A 1", "C 0", "G 0", "T 0", ">b", "A 1", "C 0", "G 0", "T 0"}), "Plants");
    ASSERT_EQ(motifs.size(), 2U);
    for (int number = 1; number <= 2; ++number) {
        const data& motif = motifs[static_cast<std::size_t>(number - 1)];
        EXPECT_EQ(motif.matrixID, number);
        EXPECT_EQ(motif.motifNum, number);
        EXPECT_EQ(motif.datasetNum, 1);
    }
}

TEST(MotifsOfBaseRows, WithoutTaxonTheHeaderGivesIt) {
    const auto taxon = [](std::string_view header) {
        return motifsOfBaseRows(blockOf({header, "A 1", "C 0", "G 0", "T 0"}), "").at(0).taxon;
    };
    EXPECT_EQ(taxon(">id name Homo  sapiens"), "Homo sapiens");
    EXPECT_EQ(taxon(">id name"), "");
    EXPECT_EQ(taxon(">id"), "");
}

TEST(MotifsOfBaseRows, BracketsMayTouchTheNumbersOrBeAbsent) {
    for (const Block& rows : {blockOf({">a", "A [1 2]", "C [ 1 0]", "G [1 0 ]", "T [ 1 2 ]"}),
                              blockOf({">a", "A 1 2", "C 1 0", "G 1 0", "T 1 2"}),
                              blockOf({">a", "A [1] [2]", "C [1 0", "G 1 0]", "T 1 2"})}) {
        EXPECT_EQ(motifsOfBaseRows(rows, "").at(0).matrix, (Matrix{{0.25, 0.25, 0.25, 0.25}, {0.5, 0, 0, 0.5}}));
    }
}

TEST(MotifsOfBaseRows, MissingValuesCountZero) {
    EXPECT_EQ(motifsOfBaseRows(blockOf({">a", "A 1 2", "C 1", "G 1", "T 1"}), "").at(0).matrix,
              (Matrix{{0.25, 0.25, 0.25, 0.25}, {1, 0, 0, 0}}));
}

TEST(MotifsOfBaseRows, WithoutAnARowThereIsNoPosition) {
    // The A row decides how many positions there are.
    const std::vector<data> motifs =
        motifsOfBaseRows(blockOf({">a", "C 1", "G 1", "T 1",        //
                                  ">b", "A 1 2", "C 1 0", "G 1 0",  // not closed: the next header starts a new motif
                                  ">c", "C 1 0", "G 1 0", "T 1 2",  //
                                  ">d", "A 1", "C 0", "G 0", "T 0"}),
                         "");
    ASSERT_EQ(motifs.size(), 3U);
    EXPECT_EQ(motifs[0].motifID, "a");
    EXPECT_TRUE(motifs[0].matrix.empty());
    EXPECT_EQ(motifs[0].consensus, "");
    EXPECT_EQ(motifs[1].motifID, "c");
    EXPECT_TRUE(motifs[1].matrix.empty());
    EXPECT_EQ(motifs[2].matrix, (Matrix{{1, 0, 0, 0}}));
}

TEST(MotifsOfBaseRows, RowsAfterATRowAreAnotherMotifOfTheSameHeader) {
    const std::vector<data> motifs = motifsOfBaseRows(blockOf({">a name", "A 1 1", "C 0 1", "G 0 1", "T 0 1",  //
                                                               "A 0", "C 3", "G 0", "T 1",                     //
                                                               "C 1", "G 1", "T 2"}),
                                                      "Plants");
    ASSERT_EQ(motifs.size(), 3U);
    for (const data& motif : motifs) {
        EXPECT_EQ(motif.motifID, "a");
        EXPECT_EQ(motif.motifName, "name");
        EXPECT_EQ(motif.taxon, "Plants");
    }
    EXPECT_EQ(motifs[0].matrix, (Matrix{{1, 0, 0, 0}, {0.25, 0.25, 0.25, 0.25}}));
    EXPECT_EQ(motifs[1].matrix, (Matrix{{0, 0.75, 0, 0.25}}));
    // The third has no A row of its own.
    EXPECT_TRUE(motifs[2].matrix.empty());
}

const std::initializer_list<std::string_view> twoEntries = {
    "AC M00001",
    "XX",
    "ID V$MYOD_01",
    "NA MyoD",
    "DE description",
    "OS Mus musculus",
    "P0 A C G T",
    "01 1 2 3 4 N",
    "02 1 0 0 0 A",
    "XX",
    "//",  //
    "ID F$ABF1",
    "BF T00001; ABF1; Species: yeast, Saccharomyces cerevisiae.",
    "P0 A C G T",
    "01 0 0 5 5 K",
    "//"};

TEST(MotifsOfTransfacEntries, TagsSelectTheFields) {
    const std::vector<data> motifs = motifsOfTransfacEntries(blockOf(twoEntries));
    ASSERT_EQ(motifs.size(), 2U);
    EXPECT_EQ(motifs[0].motifID, "M00001");
    EXPECT_EQ(motifs[0].motifName, "MyoD");
    EXPECT_EQ(motifs[0].taxon, "Mus musculus");
    EXPECT_EQ(motifs[0].matrix, (Matrix{{0.1, 0.2, 0.3, 0.4}, {1, 0, 0, 0}}));
    EXPECT_EQ(motifs[1].motifName, "F$ABF1");
    EXPECT_EQ(motifs[1].taxon, "yeast, Saccharomyces cerevisiae");
    EXPECT_EQ(motifs[1].matrixID, 2);
    EXPECT_EQ(motifs[1].datasetNum, 1);
}

TEST(MotifsOfTransfacEntries, NameOfDescriptionIsTheLastResort) {
    EXPECT_EQ(motifsOfTransfacEntries(blockOf({"DE name of it", "01 1 0 0 0"})).at(0).motifName, "name of it");
}

TEST(MotifsOfTransfacEntries, NextHeaderEndsAnEntryToo) {
    for (const std::string_view head : {"AC b", "ID b", "NA b", "DE b"}) {
        const std::vector<data> motifs =
            motifsOfTransfacEntries(blockOf({"ID a", "01 1 0 0 0", "XX", head, "01 0 1 0 0", "02 0 1 0 0"}));
        ASSERT_EQ(motifs.size(), 2U) << head;
        EXPECT_EQ(motifs[0].matrix.size(), 1U);
        EXPECT_EQ(motifs[1].matrix.size(), 2U);
    }
}

TEST(MotifsOfTransfacEntries, SecondHeaderBeforePositionsEndsNothing) {
    const std::vector<data> motifs = motifsOfTransfacEntries(blockOf({"AC a", "ID b", "NA c", "01 1 0 0 0"}));
    ASSERT_EQ(motifs.size(), 1U);
    EXPECT_EQ(motifs[0].motifID, "a");
    EXPECT_EQ(motifs[0].motifName, "c");
}

class ReadCollectionTest : public testing::FolderTest {
  protected:
    ReadCollectionTest() { std::filesystem::current_path(folder()); }
    ~ReadCollectionTest() override { std::filesystem::current_path(before_); }

    void install(const std::string& place, const std::string& name, std::string_view text) const {
        std::filesystem::create_directories(folder() + "databases/" + place);
        write("databases/" + place + "/" + name, text);
    }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

constexpr std::string_view oneMotif = ">id name\nA [ 1 0 ]\nC [ 0 1 ]\nG [ 0 0 ]\nT [ 0 0 ]";

struct Catalogued {
    const char* name;
    const char* place;
    const char* file;
    const char* taxon;
    void (*read)();
};

TEST_F(ReadCollectionTest, EveryCollectionHasItsFileAndTaxon) {
    for (const Catalogued& each :
         {Catalogued{"jasparAll", "jaspar", "jaspar_pfm_all.txt", "", readJasparDatabase},
          {"jasparFungi", "jaspar", "jaspar_pfm_fungi.txt", "Fungi", readJasparDatabase},
          {"jasparInsects", "jaspar", "jaspar_pfm_insects.txt", "Insects", readJasparDatabase},
          {"jasparNematodes", "jaspar", "jaspar_pfm_nematodes.txt", "Nematodes", readJasparDatabase},
          {"jasparPlants", "jaspar", "jaspar_pfm_plants.txt", "Plants", readJasparDatabase},
          {"jasparUrochordates", "jaspar", "jaspar_pfm_urochordates.txt", "Urochordates", readJasparDatabase},
          {"jasparVertebrates", "jaspar", "jaspar_pfm_vertebrates.txt", "Vertebrates", readJasparDatabase},
          {"uniprobeHuman", "uniprobe", "uniprobe_human.txt", "Homo sapiens", readUniprobeDatabase},
          {"uniprobeMouse", "uniprobe", "uniprobe_mouse.txt", "Mus musculus", readUniprobeDatabase},
          {"uniprobeParasite", "uniprobe", "uniprobe_parasite.txt", "Parasite (Plasmodium Falciparum)",
           readUniprobeDatabase},
          {"uniprobeWorm", "uniprobe", "uniprobe_worm.txt", "Worm (Caenorhabditis Elegans)", readUniprobeDatabase},
          {"uniprobeYeast", "uniprobe", "uniprobe_yeast.txt", "Yeast (saccharomyces cerevisiae)",
           readUniprobeDatabase}}) {
        DBName = each.name;
        DatabaseDatasets.clear();
        install(each.place, each.file, oneMotif);
        each.read();
        // There is no line end after the last row, but the motif is read anyway.
        ASSERT_EQ(DatabaseDatasets.size(), 1U) << each.name;
        EXPECT_EQ(DatabaseDatasets[0].taxon, each.taxon);
        EXPECT_EQ(DatabaseDatasets[0].consensus, "AC");
    }
}

TEST_F(ReadCollectionTest, ReadsTransfac) {
    DBName = "transfac";
    install("transfac", "transfac.txt", "AC M1\r\nXX\r\n\r\n01\t1 0 0 0 A\r\n//\r\n");
    readTransfacDatabase();
    ASSERT_EQ(DatabaseDatasets.size(), 1U);
    EXPECT_EQ(DatabaseDatasets[0].motifID, "M1");
}

using ReadCollectionDeathTest = ReadCollectionTest;

TEST_F(ReadCollectionDeathTest, MissingFileEndsTheRun) {
    GTEST_FLAG_SET(death_test_style, "fast");
    DBName = "jasparAll";
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            readJasparDatabase();
        },
        ::testing::ExitedWithCode(1), "Invalid input path or file name.\n$");
}

}  // namespace
}  // namespace varnolix
