#include "job/tables/tables.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "job/tables/small_job.h"
#include "job/tables/tree_files.h"
#include "merge/stages.h"
#include "tree/distance_table.h"
#include "tree/tree_plot.h"

namespace fs = std::filesystem;

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The job folder is `job` in the folder of the test, and `Rscript` a stand-in that writes its arguments into the files
/// that the script would write.
class TablesTest : public testing::SmallJobTest {
  protected:
    TablesTest() {
        fs::create_directories(folder() + "job/result");
        outputPath = folder() + "job/result/";
        fs::create_directory(folder() + "bin");
        write("bin/Rscript",
              "#!/bin/sh\nall=\"$*\"\nshift\n"
              "while [ $# -gt 0 ]; do\n  echo \"$all\" > \"$2\"\n"
              "  [ \"$3\" = - ] || echo \"$all\" > \"$3\"\n  shift 3\ndone\n");
        fs::permissions(folder() + "bin/Rscript", fs::perms::owner_all);
        setPath(folder() + "bin:" + pathBefore_);
        Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 1),
                    testing::motifOfText(3, "TAACCA", 2)};
        sources = sourcesOfMotifs();
    }
    ~TablesTest() override { setPath(pathBefore_); }

    static void setPath(const std::string& path) { setenv("PATH", path.c_str(), 1); }

    job::TableSettings settings() const { return {folder() + "job/", "script.R"}; }

    /// Runs the job and returns the notes.
    std::vector<std::string> tables() const {
        compare();
        for (const auto& group : topGlobalMatchingResults) combinedMatrixGlobalMatching(group);
        for (const auto& group : topGlobalAndLocalMatchingResults) combinedMatrixGlobalAndLocalMatching(group);
        for (const auto& group : topBestMatchesResults) combinedMatrixBestMatches(group);
        return job::writeTables(sources, job::leftSignificance(sources), {}, settings());
    }

    std::vector<std::string> jobFiles() const {
        std::vector<std::string> names;
        for (const job::WrittenFile& file : job::filesBelow(folder() + "job")) {
            if (!file.file.starts_with("result/")) names.push_back(file.file);
        }
        return names;
    }

  private:
    const std::string pathBefore_ = std::getenv("PATH");
};

TEST_F(TablesTest, WritesWhatTheAnswersAskFor) {
    EXPECT_TRUE(tables().empty());
    EXPECT_THAT(jobFiles(), ::testing::ElementsAre("matches.json", "matches.tsv", "motifs.tsv", "skipped.tsv"));
    EXPECT_THAT(read("job/matches.tsv"), StartsWith("list\t"));
    EXPECT_STREQ(stageTimes.at(stageTimes.size() - 2).stage, "p-values");
    EXPECT_STREQ(stageTimes.back().stage, "tables");
}

TEST_F(TablesTest, MergingAddsTheCombinedMotifs) {
    combinedMotifFlag = "Y";
    tables();
    EXPECT_THAT(jobFiles(), ::testing::IsSupersetOf({"combined_motifs.jaspar", "combined_motifs.meme",
                                                     "combined_motifs.transfac", "combined_motifs.tsv"}));
    for (const char* name : {"meme", "jaspar", "transfac", "tsv"}) {
        EXPECT_THAT(read(std::string("job/combined_motifs.") + name), HasSubstr("top_global_1"));
    }
}

TEST_F(TablesTest, TreesAreDrawnByR) {
    motifCluster = "Y";
    EXPECT_TRUE(tables().empty());
    EXPECT_THAT(jobFiles(), ::testing::IsSupersetOf({"tree.nwk", "tree.png", "tree_global.nwk", "tree_global.png"}));
    const std::string stem = folder() + "job/tree";
    EXPECT_EQ(read("job/tree.nwk"), "script.R " + outputPath + listTree.table + " " + stem + ".nwk " + stem + ".png " +
                                        outputPath + globalTree.table + " " + stem + "_global.nwk " + stem +
                                        "_global.png\n");
}

TEST_F(TablesTest, TenMotifsHaveTheirPictureAlready) {
    Datasets.clear();
    for (int id = 1; id <= 10; ++id) Datasets.push_back(testing::motifOfText(id, "AACCA"));
    sources = sourcesOfMotifs();
    motifCluster = "Y";
    numFile = 1;
    EXPECT_TRUE(tables().empty());
    EXPECT_THAT(read("job/tree.nwk"), ::testing::EndsWith("job/tree.nwk -\n"));
    EXPECT_FALSE(fs::exists(folder() + "job/tree.png"));
    EXPECT_FALSE(fs::exists(folder() + "job/tree_global.nwk"));
}

TEST_F(TablesTest, WithoutRTheJobGoesOn) {
    motifCluster = "Y";
    write("job/tree.nwk", "of an earlier job");
    fs::remove(folder() + "bin/Rscript");
    setPath(folder() + "bin");
    const std::vector<std::string> notes = tables();
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_EQ(notes[0], "tree.nwk and tree.png could not be written: Rscript or its package ape is missing or failed.");
    EXPECT_THAT(notes[1], StartsWith("tree_global.nwk and tree_global.png "));
    EXPECT_FALSE(fs::exists(folder() + "job/tree.nwk"));
    EXPECT_TRUE(fs::exists(folder() + "job/matches.tsv"));
}

TEST_F(TablesTest, PicturesAreDrawnForFewerThanTenMotifs) {
    EXPECT_TRUE(job::lacksPicture(9));
    EXPECT_FALSE(job::lacksPicture(10));
}

TEST_F(TablesTest, TheRecordListsAllFiles) {
    tables();
    const nlohmann::ordered_json options = {{"top", 10}};
    writeJobRecord(sources, {"1.2.3", options, {}, {}}, settings());
    const auto record = nlohmann::json::parse(read("job/job.json"));
    EXPECT_EQ(record["status"], "complete");
    EXPECT_EQ(record["settings"]["top"], 10);
    std::vector<std::string> listed;
    for (const auto& file : record["files"]) {
        EXPECT_EQ(file["bytes"], fs::file_size(folder() + "job/" + file["file"].get<std::string>()));
        listed.push_back(file["file"]);
    }
    EXPECT_THAT(listed, ::testing::IsSupersetOf(jobFiles()));
    EXPECT_FALSE(fs::exists(folder() + "job/job.json.part"));
}

}  // namespace
}  // namespace varnolix
