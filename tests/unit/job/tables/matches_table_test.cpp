#include "job/tables/matches_table.h"

#include <gmock/gmock.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <tuple>

#include "job/tables/small_job.h"
#include "job/tables/table_lines.h"
#include "support/random_motifs.h"

namespace varnolix {
namespace {

using job::JobResults;
using testing::rowsOfTsv;
using TsvRow = std::map<std::string, std::string>;

struct MatchTexts {
    std::string tsv;
    std::string json;
};

/// @param best matches of a list by significance; 0: there are none of these lists
MatchTexts textsOf(const JobResults& results, std::size_t best = 0, double mostQ = 1.0) {
    std::ostringstream tsv;
    std::ostringstream json;
    job::writeMatches(tsv, json, results, job::significanceOf(results, best), mostQ);
    return {tsv.str(), json.str()};
}

const Matrix& strand(const data& motif, const std::string& orientation) {
    EXPECT_TRUE(orientation == "forward" || orientation == "reverse complement") << orientation;
    return orientation == "forward" ? motif.matrix : motif.revCompMatrix;
}

struct Mean {
    double similarity;
    int columns;
};

/// The mean over all columns of the query that the target covers.
Mean meanOf(const Matrix& query, const Matrix& target, int targetOffset) {
    double sum = 0;
    int columns = 0;
    for (int column = 0; column < std::ssize(query); ++column) {
        const int facing = column - targetOffset;
        if (facing < 0 || facing >= std::ssize(target)) continue;
        ++columns;
        for (std::size_t base = 0; base < 4; ++base) {
            sum += 1 - std::fabs(query[static_cast<std::size_t>(column)][base] -
                                 target[static_cast<std::size_t>(facing)][base]);
        }
    }
    return {sum / (4 * columns), columns};
}

/// Letters of both lines that face each other.
int facingLetters(const std::string& query, const std::string& target) {
    EXPECT_EQ(query.size(), target.size());
    int count = 0;
    for (std::size_t n = 0; n < std::min(query.size(), target.size()); ++n) {
        if (query[n] != '-' && target[n] != '-') ++count;
    }
    return count;
}

class MatchesTableTest : public testing::SmallJobTest {
  protected:
    void compareRandom(std::uint64_t seed) {
        answer();
        testing::RandomMotifs random(seed);
        Datasets = random.motifs(24, 3);
        DatabaseDatasets = random.motifs(17, 1);
        numFile = 3;
        compare();
        sources = sourcesOfMotifs();
    }
};

/// One kind of record: the list, its direction, which motif it stores first, and the two strands.
using RecordKind = std::tuple<bool, Direction, PrimaryFlag, std::string, std::string>;

TEST_F(MatchesTableTest, StatedStrandsAndOffsetGiveTheSimilarity) {
    std::set<RecordKind> seen;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        compareRandom(seed);
        const std::vector<TsvRow> rows = rowsOfTsv(textsOf(results()).tsv);
        std::size_t next = 0;
        for (const RankedList& list : rankedLists) {
            for (const dataCombinedScore& record : list.matches) {
                ASSERT_LT(next, rows.size());
                const TsvRow& row = rows[next++];
                const bool isCollection = job::isAgainstCollection(list.kind);
                seen.insert({isCollection, record.direction, record.primaryFlag, row.at("query_orientation"),
                             row.at("target_orientation")});
                const data& query = Datasets.at(std::stoul(row.at("query_number_1based")) - 1);
                const data& target =
                    (isCollection ? DatabaseDatasets : Datasets).at(std::stoul(row.at("target_number_1based")) - 1);
                const Mean mean =
                    meanOf(strand(query, row.at("query_orientation")), strand(target, row.at("target_orientation")),
                           std::stoi(row.at("target_offset_0based")));
                EXPECT_NEAR(std::stod(row.at("similarity")), mean.similarity, 1e-12);
                EXPECT_EQ(std::stoi(row.at("overlap")), mean.columns);
                EXPECT_EQ(facingLetters(row.at("query_consensus"), row.at("target_consensus")), mean.columns);
                EXPECT_EQ(row.at("orientation") == "+", row.at("query_orientation") == row.at("target_orientation"));
            }
        }
        EXPECT_EQ(next, rows.size());
    }
    // Between input motifs both directions, both regions and all four pairs of strands; against the collection only the
    // forward records, as each backward one has a forward one of the same key before it.
    EXPECT_EQ(seen.size(), 2U * 2U * 4U + 2U * 4U);
}

TEST_F(MatchesTableTest, NumbersReadBackAsTheyAre) {
    compareRandom(77);
    const std::vector<TsvRow> rows = rowsOfTsv(textsOf(results()).tsv);
    std::size_t next = 0;
    for (const RankedList& list : rankedLists) {
        for (const dataCombinedScore& record : list.matches) {
            const TsvRow& row = rows.at(next++);
            EXPECT_EQ(std::stod(row.at("similarity")), record.similarityScore);
            EXPECT_EQ(std::stod(row.at("combined_score")), record.combinedScore);
        }
    }
    EXPECT_GT(next, 100U);
}

TEST_F(MatchesTableTest, JsonHoldsTheSameAsTsv) {
    compareRandom(78);
    sources.motifs.at(0).motif.id = "quoted \"a\\b\" \xC3\xA9";
    const MatchTexts texts = textsOf(results());
    const std::vector<TsvRow> rows = rowsOfTsv(texts.tsv);
    const nlohmann::json objects = nlohmann::json::parse(texts.json);
    ASSERT_EQ(objects.size(), rows.size());
    ASSERT_FALSE(rows.empty());
    for (std::size_t n = 0; n < rows.size(); ++n) {
        ASSERT_EQ(objects[n].size(), rows[n].size());
        for (const auto& [name, value] : rows[n]) {
            const nlohmann::json& found = objects[n].at(name);
            if (found.is_string()) {
                EXPECT_EQ(found.get<std::string>(), value) << name;
            } else {
                EXPECT_EQ(found.get<double>(), std::stod(value)) << name;
            }
        }
    }
}

TEST_F(MatchesTableTest, RowsNameListRanksAndMotifs) {
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 1),
                testing::motifOfText(3, "TAACCA", 2)};
    DatabaseDatasets = {testing::motifOfText(1, "GGTTGG"), testing::motifOfText(2, "AACCAG")};
    simCutoff = 0.95;
    compare();
    sources = sourcesOfMotifs();
    const std::vector<TsvRow> rows = rowsOfTsv(textsOf(results()).tsv);
    ASSERT_FALSE(rows.empty());
    const TsvRow& first = rows.front();
    EXPECT_EQ(first.at("list"), "top_global");
    EXPECT_EQ(first.at("query_rank_1based"), "1");
    EXPECT_EQ(first.at("match_rank_1based"), "1");
    EXPECT_EQ(first.at("query_dataset"), "set 1");
    EXPECT_EQ(first.at("query_id"), "motif 1");
    EXPECT_EQ(first.at("query_name"), "second 1");
    EXPECT_EQ(first.at("query_report_name"), "motif1");
    EXPECT_EQ(first.at("target_dataset"), "set 2");
    EXPECT_EQ(first.at("target_id"), "motif 3");
    EXPECT_EQ(first.at("target_number_1based"), "3");
    // Both strands fit equally well, and the first offset that fits is the one of the reverse complements.
    EXPECT_EQ(first.at("query_orientation"), "reverse complement");
    EXPECT_EQ(first.at("target_orientation"), "reverse complement");
    EXPECT_EQ(first.at("orientation"), "+");
    EXPECT_EQ(first.at("target_offset_0based"), "0");
    EXPECT_EQ(first.at("overlap"), "5");
    EXPECT_EQ(first.at("similarity"), "1");
    EXPECT_EQ(first.at("combined_score"), "0");
    EXPECT_EQ(first.at("query_consensus"), "TGGTT-");
    EXPECT_EQ(first.at("target_consensus"), "TGGTTA");
    EXPECT_EQ(first.at("in_report"), "yes");

    std::map<std::string, int> counts;
    for (const TsvRow& row : rows) {
        ++counts[row.at("list")];
        const bool isCollection = row.at("list").starts_with("collection");
        EXPECT_EQ(row.at("target_dataset") == "the collection", isCollection);
        EXPECT_EQ(row.at("target_id").starts_with("reference "), isCollection);
    }
    EXPECT_EQ(counts.size(), 5U);
    const job::CountsOfLists counted = matchCounts(results());
    for (const ListKind kind : job::listKinds) {
        EXPECT_EQ(counts[job::listName(kind)], counted.at(static_cast<std::size_t>(kind)));
    }
}

TEST_F(MatchesTableTest, MatchesThatTheReportsOmitAreMarked) {
    // The record of motif 2 with reference 1 is stored by the reference first, as the one that slides.
    Datasets = {testing::motifOfText(1, "AACCAGT"), testing::motifOfText(2, "AACCAGT")};
    DatabaseDatasets = {testing::motifOfText(1, "ACCAGT")};
    sources = sourcesOfMotifs();
    dataCombinedScore record{};
    record.matrixID1 = 1;
    record.matrixID2 = 2;
    record.position = 2;
    record.overlap = 6;
    record.similarityScore = 1;
    rankedLists = {{ListKind::collection, 2, {record}}};
    std::vector<TsvRow> rows = rowsOfTsv(textsOf(results()).tsv);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].at("in_report"), "no");
    EXPECT_EQ(rows[0].at("query_id"), "motif 2");
    EXPECT_EQ(rows[0].at("target_id"), "reference 1");
    EXPECT_EQ(rows[0].at("target_offset_0based"), "1");
    EXPECT_EQ(rows[0].at("target_consensus"), "-ACCAGT");
    // The same for motif 1: its id happens to be that of the reference, so the reports take the record for its own.
    record.matrixID2 = 1;
    rankedLists = {{ListKind::collection, 1, {record}}};
    rows = rowsOfTsv(textsOf(results()).tsv);
    EXPECT_EQ(rows[0].at("in_report"), "yes");
    EXPECT_EQ(rows[0].at("query_id"), "motif 1");
    EXPECT_EQ(rows[0].at("target_offset_0based"), "1");
}

TEST_F(MatchesTableTest, ListsBySignificanceFollowThoseOfTheReports) {
    compareRandom(79);
    const std::vector<TsvRow> rows = rowsOfTsv(textsOf(results(), 3).tsv);
    std::map<std::string, int> counts;
    bool isListed = false;
    for (const TsvRow& row : rows) {
        const std::string& list = row.at("list");
        ++counts[list];
        const bool isCollection = list == "collection_by_significance";
        if (!isCollection && list != "by_significance") {
            EXPECT_FALSE(isListed);
            EXPECT_FALSE(row.at("combined_score").empty());
            continue;
        }
        isListed = true;
        const data& query = Datasets.at(std::stoul(row.at("query_number_1based")) - 1);
        const data& target =
            (isCollection ? DatabaseDatasets : Datasets).at(std::stoul(row.at("target_number_1based")) - 1);
        EXPECT_TRUE(isCollection || &query != &target);
        EXPECT_EQ(row.at("query_orientation"), "forward");
        const bool isForward = row.at("target_orientation") == "forward";
        EXPECT_EQ(row.at("orientation") == "+", isForward);
        const Mean mean = meanOf(query.matrix, isForward ? target.matrix : job::oppositeStrand(target.matrix),
                                 std::stoi(row.at("target_offset_0based")));
        EXPECT_NEAR(std::stod(row.at("similarity")), mean.similarity, 1e-12);
        EXPECT_EQ(std::stoi(row.at("overlap")), mean.columns);
        EXPECT_EQ(facingLetters(row.at("query_consensus"), row.at("target_consensus")), mean.columns);
        EXPECT_EQ(row.at("combined_score"), "");
        EXPECT_EQ(row.at("in_report"), "no");
    }
    // Three for each motif that is long enough to be compared.
    const auto compared =
        std::count_if(Datasets.begin(), Datasets.end(), [](const data& motif) { return motif.matrix.size() >= 4; });
    EXPECT_EQ(counts["by_significance"], 3 * compared);
    EXPECT_EQ(counts["collection_by_significance"], 3 * compared);
}

TEST_F(MatchesTableTest, APairHasTheSameProbabilityInEveryList) {
    compareRandom(80);
    std::map<std::tuple<bool, std::string, std::string>, std::string> seen;
    int repeated = 0;
    for (const TsvRow& row : rowsOfTsv(textsOf(results(), 50).tsv)) {
        const bool isCollection = row.at("list").starts_with("collection");
        const auto [place, isNew] = seen.insert(
            {{isCollection, row.at("query_id"), row.at("target_id")}, row.at("p_value") + ' ' + row.at("q_value")});
        EXPECT_EQ(place->second, row.at("p_value") + ' ' + row.at("q_value"));
        if (!isNew) ++repeated;
        for (const char* name : {"p_value", "p_alignment", "q_value"}) {
            EXPECT_GT(std::stod(row.at(name)), 0.0) << name;
            EXPECT_LE(std::stod(row.at(name)), 1.0) << name;
        }
    }
    EXPECT_GT(repeated, 100);
}

TEST_F(MatchesTableTest, MatchesOfHigherQAreLeftOut) {
    compareRandom(81);
    const std::vector<TsvRow> all = rowsOfTsv(textsOf(results(), 5).tsv);
    const MatchTexts some = textsOf(results(), 5, 0.2);
    std::vector<TsvRow> expected;
    for (const TsvRow& row : all) {
        if (std::stod(row.at("q_value")) <= 0.2) expected.push_back(row);
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_LT(expected.size(), all.size());
    EXPECT_EQ(rowsOfTsv(some.tsv), expected);
    EXPECT_EQ(nlohmann::json::parse(some.json).size(), expected.size());
}

TEST_F(MatchesTableTest, OddQueriesAreNoted) {
    Datasets = {testing::motifOfMatrix(1, Matrix(6, Column{0.25, 0.25, 0.25, 0.25})), testing::motifOfText(2, "AACCAA"),
                testing::motifOfText(3, "AACCAC")};
    sources = sourcesOfMotifs();
    std::map<std::string, std::string> notes;
    for (const TsvRow& row : rowsOfTsv(textsOf(results(), 5).tsv)) {
        notes[row.at("query_id")] = row.at("significance_note");
    }
    EXPECT_EQ(notes["motif 1"], "flat query; background of only 24 columns");
    EXPECT_EQ(notes["motif 2"], "background of only 24 columns");
}

TEST_F(MatchesTableTest, NoMatchesLeaveTheHeaderAndAnEmptyArray) {
    const MatchTexts texts = textsOf(results());
    EXPECT_THAT(texts.tsv, ::testing::StartsWith("list\tquery_rank_1based\t"));
    EXPECT_EQ(std::count(texts.tsv.begin(), texts.tsv.end(), '\n'), 1);
    EXPECT_TRUE(nlohmann::json::parse(texts.json).empty());
}

}  // namespace
}  // namespace varnolix
