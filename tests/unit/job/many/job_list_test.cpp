#include "job/many/job_list.h"

#include <gmock/gmock.h>

#include "job/many/shell_words.h"

namespace varnolix::job {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// Some options of each kind: a value, a flag, and two that a list has no columns for.
CLI::App* setUpRun(CLI::App& parser, RunOptions& options) {
    CLI::App* run = parser.add_subcommand("run");
    run->add_option("FILE", options.files)->required();
    run->add_option("-o,--output", options.folder);
    run->add_option("--top", options.topMotifs)->check(CLI::Range(1, 50));
    run->add_flag("--merge", options.merges);
    run->add_flag("-q,--quiet", options.isQuiet);
    return run;
}

std::string noFault(const RunOptions& /*options*/) {
    return "";
}

JobList listOf(const std::string& text) {
    return readJobList(text, setUpRun, noFault);
}

TEST(JobListTest, ColumnsAreTheOptionsOfRun) {
    const JobList list = listOf("merge\tfiles\tname\ttop\nyes\ta 'b c'\tone\t5\nno\t-x\ttwo\n");
    EXPECT_THAT(list.faults, ElementsAre());
    ASSERT_EQ(list.jobs.size(), 2U);
    EXPECT_EQ(list.jobs[0].name, "one");
    // In the order of the options, whatever that of the columns is.
    EXPECT_THAT(list.jobs[0].arguments, ElementsAre("--top=5", "--merge", "--", "a", "b c"));
    EXPECT_THAT(list.jobs[1].arguments, ElementsAre("--", "-x"));
    EXPECT_EQ(list.jobs[1].line, 3U);
    const RunOptions options = runOptionsOf(list.jobs[0].arguments, setUpRun);
    EXPECT_EQ(options.topMotifs, 5);
    EXPECT_TRUE(options.merges);
    EXPECT_THAT(options.files, ElementsAre("a", "b c"));
    EXPECT_THAT(runOptionsOf(list.jobs[1].arguments, setUpRun).files, ElementsAre("-x"));
}

TEST(JobListTest, FaultsNameTheirLines) {
    EXPECT_THAT(listOf("name\tfiles\toutput\n").faults,
                ElementsAre("line 1: there is no column output; the columns are name, files, top, merge"));
    EXPECT_THAT(listOf("").faults, ElementsAre("there is no line with the names of the columns"));
    EXPECT_THAT(listOf("# note\n\nname\tfiles\ttop\n\xff\ta\nx\ta\t51\nx\ta\n").faults,
                ElementsAre("line 4: it is not UTF-8", HasSubstr("line 5: --top: "),
                            "line 6: the name \"x\" is that of line 5, too"));
}

TEST(JobListTest, CheckMayRefuse) {
    const JobList list = readJobList("name\tfiles\nx\ta\ny\tb\n", setUpRun, [](const RunOptions& options) {
        return options.files[0] == "a" ? std::string("not a") : "";
    });
    EXPECT_THAT(list.faults, ElementsAre("line 2: not a"));
    EXPECT_EQ(list.jobs.size(), 1U);
}

TEST(JobListTest, NamesAreThoseOfPlainFolders) {
    for (const char* name : {"a", "a b", "\xc3\xa4", "100%", "a.b", "_", "Many"})
        EXPECT_EQ(nameFault(name), "") << name;
    for (const char* name : {"", ".", "..", ".a", "-a", "a/b", "/", "a\x01", "many", "many.new", "index.html",
                             "all_matches.tsv", "summary.tsv"}) {
        EXPECT_NE(nameFault(name), "") << name;
    }
    EXPECT_EQ(nameFault(std::string(200, 'x')), "");
    EXPECT_NE(nameFault(std::string(201, 'x')), "");
}

TEST(ShellWordsTest, AreThoseOfAShell) {
    EXPECT_THAT(*shellWords("  a  b\tc "), ElementsAre("a", "b", "c"));
    EXPECT_THAT(*shellWords(R"('a b' "c d" e\ f)"), ElementsAre("a b", "c d", "e f"));
    EXPECT_THAT(*shellWords(R"(it\'s 'it'\''s' "a \"b\" \c" 'a\b' x'y'"z")"),
                ElementsAre("it's", "it's", "a \"b\" \\c", "a\\b", "xyz"));
    EXPECT_THAT(*shellWords("'' \"\""), ElementsAre("", ""));
    EXPECT_THAT(*shellWords("$HOME *.txt ~"), ElementsAre("$HOME", "*.txt", "~"));
    EXPECT_TRUE(shellWords("")->empty());
    for (const char* text : {"'a", "\"a", "a\\", "\"a\\\""}) EXPECT_FALSE(shellWords(text).has_value()) << text;
}

}  // namespace
}  // namespace varnolix::job
