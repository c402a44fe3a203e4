#include "job/page/page_data.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <set>

#include "input/getRevCompMotif.h"
#include "job/families/families.h"
#include "job/page/compact_table.h"
#include "job/tables/matches_table.h"
#include "job/tables/merged_job.h"
#include "job/tables/motifs_table.h"

namespace varnolix {
namespace {

using nlohmann::json;

struct TestRow {
    std::string_view text;
    double number;
};

constexpr job::TableColumn<TestRow> testColumns[] = {
    {{"text", "a \"text\"", "any"},
     [](const TestRow& row) -> job::Cell {
         return row.text.empty() ? job::Cell(std::monostate()) : job::Cell(row.text);
     }},
    {{"number", "a number", "from 0"}, [](const TestRow& row) -> job::Cell { return row.number; }},
};

TEST(CompactTable, TextsStandOnce) {
    job::CompactTable table(testColumns);
    for (const TestRow& row : {TestRow{"a", 0.5}, TestRow{"<b>", 1}, TestRow{"", 2}, TestRow{"a", 1e-40}}) {
        table.add(testColumns, row);
    }
    const json read = json::parse(table.json());
    EXPECT_EQ(read["rows"], 4);
    EXPECT_EQ(read["columns"][0]["meaning"], "a \"text\"");
    EXPECT_EQ(read["columns"][0]["texts"], json({"a", "<b>"}));
    EXPECT_EQ(read["columns"][0]["cells"], json({0, 1, nullptr, 0}));
    EXPECT_EQ(read["columns"][1]["cells"], json({0.5, 1, 2, 1e-40}));
    EXPECT_FALSE(read["columns"][1].contains("texts"));
}

TEST(CompactTable, MayBeEmpty) {
    const json read = json::parse(job::CompactTable(testColumns).json());
    EXPECT_EQ(read["rows"], 0);
    EXPECT_EQ(read["columns"][0]["cells"], json::array());
}

TEST(MatrixJson, PositionsFollowOneAnother) {
    EXPECT_EQ(job::matrixJson({{0.25, 0.75, 0, 0}, {1.0 / 3, 0, 1, 1e-7}}), "[0.25,0.75,0,0,0.333333,0,1,1e-07]");
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(job::matrixJson({{none, none, none, none}}), "[null,null,null,null]");
}

TEST(SwappedPairs, TellWhatTheReverseComplementSwaps) {
    // The larger pair decides even where six digits look equal; of equal maxima the first one counts.
    EXPECT_EQ(job::swappedPairs({{0.7, 0.1, 0.1, 0.1}, {0, 1, 0, 0}, {0.2, 0.4, 0.4 + 1e-12, 0}, {0, 0, 0.5, 0.5}}),
              "wsss");
}

TEST(DistanceRows, HoldTheLowerHalf) {
    EXPECT_EQ(job::distanceRows(",I1_a,I2_b,I3_c,\nI1_a,0,7,0.5,\nI2_b,7,0,nan,\nI3_c,0.5,2.06719,0,\n"),
              "[[7],\n[0.5,2.0672]]");
    EXPECT_EQ(job::distanceRows(",I1_a,\nI1_a,0,\n"), "[]");
    EXPECT_EQ(job::distanceRows(",I1,I2,\nI1,0,x,\nI2,x,0,\n"), "[[null]]");
}

TEST(DistanceRows, HoldAllPairs) {
    EXPECT_EQ(job::distanceRows(std::vector<double>{0.25, 1, 0.123456}), "[[0.25],\n[1,0.1235]]");
    EXPECT_EQ(job::distanceRows(std::vector<double>{}), "[]");
}

class PageDataTest : public testing::MergedJobTest {
  protected:
    const job::JobSignificance& significance() {
        found_ = significanceOf(results(), 2);
        return found_;
    }

    json data() {
        const nlohmann::ordered_json settings = {{"top", 3}};
        const job::JobRecord record{"1.2.3", "date", settings, {}, {}, 0, {}, {"A note."}};
        const job::PageContent content{"name </script>",           record, {}, significance(), 1.0, lists(),
                                       {{"tree", "(I1_a:1);", ""}}};
        return json::parse(pageData(content, results()));
    }

  private:
    job::JobSignificance found_;
};

TEST_F(PageDataTest, HasEveryMatchAndMotif) {
    mergeRandom(3);
    const json read = data();
    int count = 0;
    visitMatches(results(), significance(), 1.0, [&](const job::MatchRow& row) {
        const auto place = static_cast<std::size_t>(count++);
        for (std::size_t number = 0; number < job::matchColumns().size(); ++number) {
            const json& stored = read["matches"]["table"]["columns"][number];
            const json& cell = stored["cells"][place];
            std::string expected;
            job::appendJsonValue(expected, job::matchColumns()[number].cell(row));
            EXPECT_EQ(stored.contains("texts") ? stored["texts"][cell.get<std::size_t>()] : cell,
                      json::parse(expected));
        }
    });
    EXPECT_GT(count, 20);
    EXPECT_EQ(read["matches"]["total"], count);
    EXPECT_EQ(read["matches"]["table"]["rows"], count);
    EXPECT_EQ(read["matches"]["table"]["columns"].size(), job::matchColumns().size());
    EXPECT_EQ(read["matches"]["against_reference"], std::string(static_cast<std::size_t>(count), '0'));
    EXPECT_EQ(read["motifs"]["rows"], Datasets.size());
    EXPECT_EQ(read["matrices"].size(), Datasets.size());
    EXPECT_EQ(read["name"], "name </script>");
    EXPECT_EQ(read["record"]["notes"][0], "A note.");
    EXPECT_TRUE(read["trees"][0]["distances"].is_null());
    EXPECT_EQ(read["trees"][0]["of_families"], false);
    EXPECT_EQ(read["families"], json::array());
}

TEST_F(PageDataTest, MergedMotifsAreThoseOfTheFiles) {
    mergeRandom(4);
    const json read = data();
    const std::vector<job::DownloadedMotif> motifs = combinedMotifs(results(), lists());
    ASSERT_EQ(read["merged"].size(), motifs.size());
    ASSERT_GT(motifs.size(), 3U);
    for (std::size_t place = 0; place < motifs.size(); ++place) {
        const json& merged = read["merged"][place];
        EXPECT_EQ(merged["id"], motifs[place].id);
        EXPECT_EQ(merged["matrix"].size(), 4 * motifs[place].columns.size());
        EXPECT_EQ(merged["matrix"][5], std::stod(motifs[place].columns[1][1]));
        EXPECT_GE(merged["members"].size(), 2U);
    }
}

TEST_F(PageDataTest, FamiliesHaveTheirMembers) {
    mergeRandom(4);
    const Matrix motif{{0.125, 0.875, 0, 0}, {1.0 / 3, 0, 1.0 / 3, 1.0 / 3}};
    job::Families families;
    families.families = {{{{4, true, -2, 0.25}, {0, false, 1, 0.125}}, 0.375, motif}, {{{2, false, 0, 0}}, 0, motif}};
    const json read = json::parse(familiesJson(families, results()));
    ASSERT_EQ(read.size(), 2U);
    const json& first = read[0];
    EXPECT_EQ(first["id"], "family_1");
    EXPECT_EQ(first["name"], sources.motifs[0].motif.id);  // the nearest member
    EXPECT_EQ(first["cut_height"], 0.375);
    EXPECT_EQ(first["consensus"], "CD");
    EXPECT_EQ(first["matrix"], json({0.125, 0.875, 0, 0, 1.0 / 3, 0, 1.0 / 3, 1.0 / 3}));
    EXPECT_EQ(first["members"][0],
              json({{"motif", 5}, {"strand", "reverse complement"}, {"offset", -2}, {"distance", 0.25}}));
    EXPECT_EQ(first["members"][1], json({{"motif", 1}, {"strand", "forward"}, {"offset", 1}, {"distance", 0.125}}));
    EXPECT_EQ(read[1]["id"], "family_2");
    EXPECT_EQ(read[1]["members"].size(), 1U);
}

TEST_F(PageDataTest, ReferencesAreThoseOfTheMatches) {
    answer();
    testing::RandomMotifs random(5);
    Datasets = random.motifs(8, 2);
    DatabaseDatasets = random.motifs(30, 1);
    compare();
    sources = sourcesOfMotifs();
    const json read = data();
    std::set<int> expected;
    std::string against;
    visitMatches(results(), significance(), 1.0, [&](const job::MatchRow& row) {
        const bool isReference = row.targetNames.dataset == sources.collection;
        against += isReference ? '1' : '0';
        if (isReference) expected.insert(row.target.matrixID);
    });
    EXPECT_EQ(read["matches"]["against_reference"], against);
    std::set<int> found;
    for (const json& reference : read["matches"]["references"]) found.insert(reference["number"].get<int>());
    EXPECT_EQ(found, expected);
    EXPECT_GT(found.size(), 3U);
}

}  // namespace
}  // namespace varnolix
