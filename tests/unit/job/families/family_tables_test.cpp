#include "job/families/family_tables.h"

#include <gtest/gtest.h>

#include "job/tables/small_job.h"
#include "job/tables/table_lines.h"

namespace varnolix::job {
namespace {

using varnolix::testing::motifOfText;
using varnolix::testing::rowsOfTsv;
using varnolix::testing::SmallJobTest;

/// Four motifs: the third and the first are a family, and so are the two others, each by itself.
class FamilyTablesTest : public SmallJobTest {
  protected:
    FamilyTablesTest() {
        for (const char* letters : {"AACGT", "GGGCC", "ACGTTT", "TATA"}) {
            const int number = static_cast<int>(Datasets.size()) + 1;
            Datasets.push_back(motifOfText(number, letters, 1, number == 2 ? "odd,name(2)" : ""));
        }
        sources = sourcesOfMotifs();
        families.families = {{{{2, true, -1, 0.25}, {0, false, 0, 0.125}}, 0.3, motifOfText(1, "AACGT").matrix},
                             {{{1, false, 0, 0.0}}, 0.0, Datasets[1].matrix},
                             {{{3, false, 0, 0.0}}, 0.0, Datasets[3].matrix}};
        families.merges = {{-3, -1, 0.3}, {-2, -4, 0.6}, {1, 2, 1.0}};
        families.leafOrder = {2, 0, 1, 3};
        families.cut = 0.5;
    }

    Families families;
};

TEST_F(FamilyTablesTest, ListsTheFamilies) {
    const auto rows = rowsOfTsv(familiesTsv(families, results()));
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].at("family"), "family_1");
    EXPECT_EQ(rows[0].at("size"), "2");
    EXPECT_EQ(rows[0].at("cut_height"), "0.3");
    EXPECT_EQ(rows[0].at("length"), "5");
    EXPECT_EQ(rows[0].at("information_bits"), "10");
    EXPECT_EQ(rows[0].at("consensus"), "AACGT");
    EXPECT_EQ(rows[0].at("members"), Datasets[2].motifName + " " + Datasets[0].motifName);
    EXPECT_EQ(rows[2].at("size"), "1");
    EXPECT_EQ(rows[2].at("cut_height"), "0");
}

TEST_F(FamilyTablesTest, ListsTheMembers) {
    const auto rows = rowsOfTsv(familyMembersTsv(families, results()));
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].at("family"), "family_1");
    EXPECT_EQ(rows[0].at("motif_number_1based"), "3");
    EXPECT_EQ(rows[0].at("motif_id"), "motif 3");
    EXPECT_EQ(rows[0].at("motif_name"), "second 3");
    EXPECT_EQ(rows[0].at("orientation"), "reverse complement");
    EXPECT_EQ(rows[0].at("offset_0based"), "-1");
    EXPECT_EQ(rows[0].at("distance"), "0.25");
    EXPECT_EQ(rows[1].at("orientation"), "forward");
    EXPECT_EQ(rows[3].at("family"), "family_3");
}

TEST_F(FamilyTablesTest, NamesTheCommonMotifsAfterTheNearestMember) {
    const std::vector<DownloadedMotif> motifs = familyMotifs(families, results());
    ASSERT_EQ(motifs.size(), 3U);
    EXPECT_EQ(motifs[0].id, "family_1");
    EXPECT_EQ(motifs[0].name, "motif 1");
    EXPECT_EQ(motifs[1].name, "motif 2");
    EXPECT_EQ(motifs[0].columns.size(), 5U);
    EXPECT_EQ(motifs[0].columns[0], (NumberColumn{"1", "0", "0", "0"}));
}

TEST_F(FamilyTablesTest, NamesTheNodesOfFamilies) {
    const std::string first = "I1_" + Datasets[0].motifName;
    const std::string third = "I3_" + Datasets[2].motifName;
    const std::string fourth = "I4_" + Datasets[3].motifName;
    EXPECT_EQ(familyTree(families, results()),
              "((" + third + ":0.15," + first + ":0.15)family_1:0.35,(I2_odd-name-2-:0.3," + fourth + ":0.3):0.2);\n");
}

}  // namespace
}  // namespace varnolix::job
