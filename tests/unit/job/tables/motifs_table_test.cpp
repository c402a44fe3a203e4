#include "job/tables/motifs_table.h"

#include <gtest/gtest.h>

#include "job/tables/small_job.h"
#include "job/tables/table_lines.h"

namespace varnolix {
namespace {

using testing::rowsOfTsv;
using TsvRow = std::map<std::string, std::string>;

class MotifsTableTest : public testing::SmallJobTest {};

TEST_F(MotifsTableTest, RowsDescribeTheMotifs) {
    Datasets = {testing::motifOfText(1, "AACCN"), testing::motifOfText(2, "GGRT", 2)};
    sources = sourcesOfMotifs();
    job::JobMotif& second = sources.motifs[1];
    second.motif.id = "odd\tname";
    second.number = 1;
    second.trimmedLeft = 2;
    second.trimmedRight = 3;
    second.note = "a note";
    second.file = "folder/file.txt";
    second.motif.line = 77;
    const std::vector<TsvRow> rows = rowsOfTsv(motifsTsv(results()));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].at("motif_number_1based"), "1");
    EXPECT_EQ(rows[0].at("dataset"), "set 1");
    EXPECT_EQ(rows[0].at("information_bits"), "8");
    EXPECT_EQ(rows[0].at("note"), "");
    EXPECT_EQ(rows[1], (TsvRow{{"motif_number_1based", "2"},
                               {"dataset", "set 2"},
                               {"number_1based", "1"},
                               {"id", "odd name"},
                               {"name", "second 2"},
                               {"report_name", "motif2"},
                               {"file", "folder/file.txt"},
                               {"line_1based", "77"},
                               {"length", "4"},
                               {"information_bits", "7"},
                               {"consensus", "GGRT"},
                               {"reverse_consensus", Datasets[1].revCompConsensus},
                               {"trimmed_left", "2"},
                               {"trimmed_right", "3"},
                               {"note", "a note"}}));
}

TEST_F(MotifsTableTest, SkippedMotifsAreListedWithTheirReasons) {
    const std::vector<TsvRow> rows =
        rowsOfTsv(job::skippedTsv({{"a.txt", {"one", 12, "numbers below 0"}}, {"b.txt", {"", 1, "no matrix"}}}));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0],
              (TsvRow{{"file", "a.txt"}, {"line_1based", "12"}, {"motif", "one"}, {"reason", "numbers below 0"}}));
    EXPECT_EQ(rows[1].at("motif"), "");
}

}  // namespace
}  // namespace varnolix
