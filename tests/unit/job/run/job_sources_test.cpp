#include "job/run/job_sources.h"

#include <gmock/gmock.h>

#include "job/job_error.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using ::testing::HasSubstr;

class JobSourcesTest : public varnolix::testing::FolderTest {
  protected:
    /// Reads a job of these files in the test's folder.
    ReadSources sourcesOf(const std::vector<std::string>& names, const std::string& collection = "none") const {
        RunOptions options;
        for (const std::string& name : names) options.files.push_back(folder() + name);
        options.collection = collection;
        options.trimBits = 0.5;
        return readSources(options, {{"system", folder()}});
    }

    static constexpr const char* two =
        ">M1 one\nA [ 9 0 0 9 1 ]\nC [ 0 9 0 0 1 ]\nG [ 0 0 9 0 1 ]\nT [ 0 0 0 0 1 ]\n"
        ">M 2 two\nA [ 9 0 0 9 0 ]\nC [ 0 9 0 0 9 ]\nG [ 0 0 9 0 0 ]\nT [ 1 1 1 1 1 ]\n";
};

TEST(ReportNameOf, IsOneWord) {
    EXPECT_EQ(reportNameOf("MA0001.1"), "MA0001.1");
    EXPECT_EQ(reportNameOf("Sox 2\t(a)"), "Sox_2_(a)");
    EXPECT_EQ(reportNameOf("Kr\xc3\xbcppel\x7f"), "Kr\xc3\xbcppel_");
}

TEST(MotifFileName, HasNoOddCharactersAndNoNamesake) {
    EXPECT_EQ(motifFileName("promoters", {}), "promoters.txt");
    EXPECT_EQ(motifFileName("my motifs/2", {}), "my_motifs_2.txt");
    EXPECT_EQ(motifFileName("", {}), "motifs_.txt");
    EXPECT_EQ(motifFileName(".hidden", {}), "motifs_.hidden.txt");
    EXPECT_EQ(motifFileName("a b", {{"a_b", "a_b.txt"}, {"a_b", "a_b_2.txt"}}), "a_b_3.txt");
}

TEST(Oddities, AreSaidInWords) {
    DownloadedMotif motif{"m", "", "", {{"1", "0", "0", "0"}, {"0", "0.0", "0", "0"}}, "", 1};
    EXPECT_EQ(oddities(motif), "fewer than 4 columns, so it matches nothing; no counts at position 2");
    motif.columns.assign(6, {"3", "3", "3", "3"});
    EXPECT_EQ(oddities(motif), "less than 0.25 bits of information in all");
    motif.columns.assign(6, {"3", "0", "0", "0"});
    EXPECT_EQ(oddities(motif), "");
}

TEST_F(JobSourcesTest, MotifsHaveDataSetNumberAndPlace) {
    write("a.txt", two);
    write("b.txt", two);
    const ReadSources read = sourcesOf({"a.txt", "b.txt"});
    ASSERT_EQ(read.sources.motifs.size(), 4U);
    EXPECT_EQ(read.sources.datasets[1].name, "b");
    EXPECT_EQ(read.sources.motifs[2].dataset, 2);
    EXPECT_EQ(read.sources.motifs[3].number, 2);
    EXPECT_EQ(read.sources.motifs[0].trimmedRight, 1U);
    EXPECT_EQ(read.files[0].taken, 2U);
}

TEST_F(JobSourcesTest, NameIsGivenBeforeTheFile) {
    write("a.txt", two);
    RunOptions options;
    options.files = {"mine=" + folder() + "a.txt"};
    EXPECT_EQ(readSources(options, {}).sources.datasets[0].name, "mine");
    // A path may have such a sign itself.
    write("x=y.txt", two);
    options.files = {folder() + "x=y.txt"};
    EXPECT_EQ(readSources(options, {}).sources.datasets[0].name, "x=y");
}

TEST_F(JobSourcesTest, CollectionIsNotTrimmed) {
    write("a.txt", two);
    const ReadSources read = sourcesOf({"a.txt"}, folder() + "a.txt");
    ASSERT_EQ(read.sources.references.size(), 2U);
    EXPECT_EQ(read.sources.references[0].motif.columns.size(), 5U);
    EXPECT_EQ(read.sources.collection, "a");
}

TEST_F(JobSourcesTest, MotifsWithoutAColumnLeftAreRefused) {
    write("flat.txt", ">F\n1 1 1 1\n1 1 1 1\n1 1 1 1\n1 1 1 1\n1 1 1 1\n");
    const ReadSources read = sourcesOf({"flat.txt"});
    EXPECT_TRUE(read.sources.motifs.empty());
    ASSERT_EQ(read.skipped.size(), 1U);
    EXPECT_THAT(read.skipped[0].motif.reason, HasSubstr("trimming"));
}

TEST_F(JobSourcesTest, AbsentFilesAndCollectionsAreNamed) {
    write("a.txt", two);
    EXPECT_THROW(sourcesOf({"absent.txt"}), JobError);
    EXPECT_THROW(sourcesOf({"a.txt"}, "jasparFungi"), JobError);
    EXPECT_THROW(sourcesOf({"a.txt"}, folder() + "absent"), JobError);
}

}  // namespace
}  // namespace varnolix::job
