#include "job/many/collected.h"

#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "job/many/parallel_run.h"
#include "job/many/slurm_array.h"
#include "job/tables/column_listing.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

class CollectedTest : public varnolix::testing::FolderTest {
  protected:
    CollectedTest() : many{folder() + "many jobs"} {
        fs::create_directories(many.base);
        claimManyFolder(many);
    }

    /// Makes the folder of a job that is done, with one table.
    void makeDone(const ListedJob& job, const std::string& table) {
        fs::create_directories(many.job(job));
        writeFile(many.job(job) / "matches.tsv", table);
        std::string command = "\"run\",\"--quiet\",\"--force\",\"--output=elsewhere\",\"--threads=7\"";
        for (const std::string& word : job.arguments) command += ",\"" + word + "\"";
        writeFile(many.job(job) / "job.json",
                  "{\"version\":\"1.2.3\",\"date\":\"today\",\"command\":[" + command +
                      "],\"settings\":{\"threads\":7},\"counts\":{\"motifs\":5,\"refused\":1,\"collection_motifs\":2,"
                      "\"matches\":{\"top_global\":3,\"collection\":4}},\"seconds\":1.5,\"peak_memory_bytes\":2000000,"
                      "\"files\":[{\"file\":\"matches.tsv\",\"bytes\":" +
                      std::to_string(table.size()) + "}],\"status\":\"complete\"}\n");
    }

    ManyFolder many;
    ListedJob one{"one", 2, {"--top=3", "--", "a.txt"}};
    ListedJob two{"two", 3, {"--", "b.txt"}};
};

TEST_F(CollectedTest, ListIsKeptAsItIs) {
    keepList(many, {"/some folder", {one, two}});
    const KeptList list = readKeptList(many);
    EXPECT_EQ(list.folder, "/some folder");
    ASSERT_EQ(list.jobs.size(), 2U);
    EXPECT_EQ(list.jobs[0].name, "one");
    EXPECT_EQ(list.jobs[0].line, 2U);
    EXPECT_EQ(list.jobs[0].arguments, one.arguments);
    writeFile(many.list(), "{");
    EXPECT_THROW(readKeptList(many), JobError);
}

TEST_F(CollectedTest, OnlyAWholeJobIsDone) {
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::missing);
    makeDone(one, "list\nx\n");
    const JobSummary done = summaryOf(many, one);
    EXPECT_EQ(done.status, JobSummary::Status::done);
    EXPECT_EQ(done.matches, (CountsOfLists{3, 0, 0, 4, 0}));
    EXPECT_EQ(tsvText(summaryColumns(), std::vector{done})
                  .substr(tsvText(summaryColumns(), std::vector<JobSummary>()).size()),
              "one\t2\tdone\t\t5\t1\t2\t3\t0\t0\t4\t0\t1.5\t2000000\t7\t1.2.3\ttoday\n");
    // Another command.
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--top=4", "--", "a.txt"}, {"--", "a.txt"}, {"--merge", "--top=3", "--", "a.txt"}}) {
        EXPECT_EQ(summaryOf(many, {"one", 2, arguments}).status, JobSummary::Status::missing);
    }
    // A table that was cut off or lost, a record that was cut off.
    std::ofstream(many.job(one) / "matches.tsv") << "list\n";
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::missing);
    fs::remove(many.job(one) / "matches.tsv");
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::missing);
    makeDone(one, "list\n");
    fs::resize_file(many.job(one) / "job.json", 100);
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::missing);
}

TEST_F(CollectedTest, FailureIsTheLastLineOfTheLog) {
    writeFile(many.log(one), "");
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::missing);
    writeFile(many.log(one), "a.txt:3: odd\nvarnolix-job: nothing was compared\n");
    EXPECT_EQ(summaryOf(many, one).status, JobSummary::Status::failed);
    EXPECT_EQ(summaryOf(many, one).error, "nothing was compared");
}

TEST_F(CollectedTest, InputsAreComparedByTheirChecksums) {
    writeFile(folder() + "input", "abc");
    const std::string path = folder() + "input";
    const auto recordWith = [&](const std::string& sum) {
        nlohmann::ordered_json record;
        record["inputs"] = {{{"file", path}, {"sha256", sum}}};
        return record;
    };
    // Of "abc", as sha256sum prints it.
    const std::string sum = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    Checksums known;
    EXPECT_TRUE(hasSameInputs(recordWith(sum), known));
    writeFile(folder() + "input", "abd");
    EXPECT_TRUE(hasSameInputs(recordWith(sum), known)) << "is read once";
    known.clear();
    EXPECT_FALSE(hasSameInputs(recordWith(sum), known));
}

TEST_F(CollectedTest, TablesAreJoinedUnderOneHeader) {
    writeFile(folder() + "1", "a\tb\n1\t2\n3\t\n");
    writeFile(folder() + "2", "c\tb\n5\t6\n");
    writeFile(folder() + "3", "b\ta\n");
    std::ostringstream joined;
    joinTables(joined, {{"x", folder() + "1"}, {"y", folder() + "2"}, {"z", folder() + "3"}}, {"b"});
    EXPECT_EQ(joined.str(), "job\tb\ta\tc\nx\t2\t1\t\nx\t\t3\t\ny\t6\t\t5\n");
    std::ostringstream same;
    joinTables(same, {{"x", folder() + "1"}}, {"a", "b"});
    EXPECT_EQ(same.str(), "job\ta\tb\nx\t1\t2\nx\t3\t\n");
    EXPECT_THROW(joinTables(same, {{"x", folder() + "absent"}}, {}), JobError);
}

TEST_F(CollectedTest, PageEscapesNamesAndLinks) {
    JobSummary done;
    done.name = "<a> 1%";
    done.status = JobSummary::Status::done;
    JobSummary failed;
    failed.name = "bad";
    failed.status = JobSummary::Status::failed;
    failed.error = "no <file>";
    const std::string page = startPage(many, {done, failed}, VARNOLIX_PROJECT);
    EXPECT_THAT(page, HasSubstr("<a href=\"./%3Ca%3E%201%25/index.html\">&lt;a&gt; 1%</a>"));
    EXPECT_THAT(page, HasSubstr("no &lt;file&gt;"));
    EXPECT_THAT(page, HasSubstr("<h1>many jobs</h1>"));
    EXPECT_THAT(page, Not(HasSubstr("<link")));
}

TEST_F(CollectedTest, FolderOfOthersIsNotTaken) {
    const ManyFolder others{folder() + "others"};
    fs::create_directories(others.base);
    writeFile(others.base / "file", "mine");
    EXPECT_THROW(claimManyFolder(others), JobError);
    EXPECT_FALSE(fs::exists(others.work()));
    claimManyFolder(many);
}

TEST_F(CollectedTest, CommandsAreQuoted) {
    const std::string command = shellCommandOf("/it's", many, {"o'ne", 2, {"--", "a b"}}, 3);
    EXPECT_THAT(command, HasSubstr("'/it'\\''s' 'run' "));
    EXPECT_THAT(command, HasSubstr("many jobs/o'\\''ne' '--threads=3' '--' 'a b' > "));
}

TEST_F(CollectedTest, ArrayNumbersAreRanges) {
    EXPECT_EQ(arrayOf({}), "");
    EXPECT_EQ(arrayOf({1}), "1");
    EXPECT_EQ(arrayOf({1, 2, 3, 5, 7, 8}), "1-3,5,7-8");
}

TEST_F(CollectedTest, NeedsGrowWithTheJob) {
    RunOptions options;
    const JobSize small{100, 0};
    const JobSize large{4000, 0};
    // Measured, with 4,000 motifs: 289 MB, and 73 seconds of one processor.
    EXPECT_GT(roomFor(large, options), 289e6);
    EXPECT_LT(roomFor(large, options), 3 * 289e6);
    EXPECT_GT(minutesFor(large, options, 1), 10 + 73.0 / 60);
    EXPECT_LT(minutesFor(large, options, 2), minutesFor(large, options, 1));
    EXPECT_LT(roomFor(small, options), roomFor(large, options));
    EXPECT_LT(roomFor(large, options), roomFor({4000, 1000}, options));
    options.drawsTree = true;
    EXPECT_GT(roomFor(large, options), 1e9);
}

TEST(SummaryColumns, ManualPageDescribesThem) {
    std::vector<ColumnNote> notes;
    for (const SummaryColumn& column : summaryColumns()) notes.push_back(column.note);
    EXPECT_THAT(readFile(VARNOLIX_PROJECT "/docs/many.md"),
                HasSubstr("\n\n" + describedColumns({"summary.tsv", notes}) + "\n"));
}

}  // namespace
}  // namespace varnolix::job
