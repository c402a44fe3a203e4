#include "job/tables/job_record.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "job/tables/checksum.h"
#include "job/tables/small_job.h"

namespace varnolix {
namespace {

class JobRecordTest : public testing::SmallJobTest {};

TEST_F(JobRecordTest, TellsWhatTheJobDid) {
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 2)};
    sources = sourcesOfMotifs();
    compare();
    const nlohmann::ordered_json settings = {{"top", 10}, {"cutoff", 0.85}};
    const job::JobRecord record{"1.2.3",
                                "today",
                                settings,
                                {{"a.meme", 1, 2, "abc"}, {"-", 1, 0, ""}},
                                {{"reading", 0.5}},
                                4096,
                                {{"matches.tsv", 77}},
                                {"A note."},
                                {"run", "a.meme"},
                                1.5};
    const std::string text = jobRecordText(record, results());
    const auto object = nlohmann::ordered_json::parse(text);
    EXPECT_EQ(object["version"], "1.2.3");
    EXPECT_EQ(object["command"], nlohmann::ordered_json({"run", "a.meme"}));
    EXPECT_EQ(object["seconds"], 1.5);
    EXPECT_EQ(object["settings"], settings);
    EXPECT_EQ(object["inputs"][0]["refused"], 2);
    EXPECT_EQ(object["inputs"][0]["sha256"], "abc");
    EXPECT_TRUE(object["inputs"][1]["sha256"].is_null());
    EXPECT_EQ(object["datasets"].size(), 2U);
    EXPECT_EQ(object["datasets"][1]["motifs"], 1);
    EXPECT_TRUE(object["collection"].is_null());
    EXPECT_EQ(object["counts"]["motifs"], 2);
    EXPECT_EQ(object["counts"]["refused"], 2);
    EXPECT_EQ(object["counts"]["matches"]["each_motif"], 2);
    EXPECT_EQ(object["counts"]["matches"]["collection"], 0);
    EXPECT_EQ(object["stages"][0]["seconds"], 0.5);
    EXPECT_EQ(object["peak_memory_bytes"], 4096);
    EXPECT_EQ(object["files"][0]["bytes"], 77);
    EXPECT_EQ(object["notes"][0], "A note.");
    // The status stands last, so that a record that was cut off has none.
    EXPECT_EQ((--object.end()).key(), "status");
    EXPECT_EQ(object["status"], "complete");
}

TEST_F(JobRecordTest, ListsTheFilesOfTheFolder) {
    write("b.txt", "12345");
    write("a.txt", "");
    std::filesystem::create_directory(folder() + "result");
    write("result/c.txt", "1");
    write("job.json", "{}");
    std::filesystem::create_symlink("a.txt", folder() + "link");
    std::filesystem::create_directory_symlink("result", folder() + "linked");
    std::vector<std::string> names;
    for (const job::WrittenFile& file : job::filesBelow(folder())) {
        names.push_back(file.file + " " + std::to_string(file.bytes));
    }
    EXPECT_THAT(names, ::testing::ElementsAre("a.txt 0", "b.txt 5", "result/c.txt 1"));
}

TEST_F(JobRecordTest, ChecksumsAreThoseOfSha256sum) {
    EXPECT_EQ(job::sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(job::sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    const std::string large(200'000, 'x');
    write("large", large);
    EXPECT_EQ(job::sha256OfFile(folder() + "large"), job::sha256(large));
    write("empty", "");
    EXPECT_EQ(job::sha256OfFile(folder() + "empty"), job::sha256(""));
    EXPECT_EQ(job::sha256OfFile(folder() + "missing"), "");
    EXPECT_EQ(job::sha256OfFile("/dev/null"), "");
}

TEST_F(JobRecordTest, PeakMemoryIsInBytes) {
    EXPECT_GT(job::peakMemoryOfProcess(), std::uintmax_t{1} << 20U);
}

}  // namespace
}  // namespace varnolix
