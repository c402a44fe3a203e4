#include "job/run/answers.h"

#include <gtest/gtest.h>

#include "job/run/job_console.h"
#include "run/runDialogue.h"
#include "support/console.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

class AnswersTest : public varnolix::testing::FolderTest {
  protected:
    AnswersTest() {
        sources.datasets = {{"a", "a.txt"}, {"b c", "b_c.txt"}};
        std::filesystem::create_directories(folder() + "result");
    }

    JobSources sources;
};

TEST_F(AnswersTest, DialogueTakesTheSameSettingsFromTheText) {
    RunOptions options;
    options.topMotifs = 7;
    options.bestMatches = 3;
    options.cutoff = "0.75";
    options.threads = 1;
    options.type = "global-only";
    options.format = "pdf";
    options.merges = true;
    const std::string job = folder().substr(0, folder().size() - 1);
    fillAnswers(options, job, sources, "transfac");
    const std::string text = answersText();
    EXPECT_EQ(text, "2\n7\n3\n0.75\n1\n" + job + "/motifs/\na.txt\n10\nb_c.txt\n10\n8\nN\nY\nGlobal-Only\nPDF\n" + job +
                        "/result/\n");

    varnolix::testing::resetGlobals();
    {
        const varnolix::testing::Console console(text);
        runDialogue();
    }
    EXPECT_EQ(numFile, 2);
    EXPECT_EQ(numTopMotif, 7);
    EXPECT_EQ(numBestMatches, 3);
    EXPECT_EQ(simCutoff, 0.75);
    EXPECT_EQ(inputPath, job + "/motifs/");
    EXPECT_EQ(FileNameType[1].fileName, "b_c.txt");
    EXPECT_EQ(FileNameType[1].datasetNum, 2);
    EXPECT_EQ(DBName, "transfac");
    EXPECT_EQ(motifCluster + combinedMotifFlag + outputFileType + outputFileFormat, "NYGlobal-OnlyPDF");
    EXPECT_EQ(outputPath, job + "/result/");
}

TEST_F(AnswersTest, WithoutACollectionTheLastEntryOfTheMenuIsTaken) {
    fillAnswers({}, "/job", sources, "N");
    EXPECT_EQ(DBNameInput, "14");
}

TEST(LastLineOf, SkipsEmptyLines) {
    EXPECT_EQ(lastLineOf("one\ntwo\n\n"), "two");
    EXPECT_EQ(lastLineOf("one"), "one");
    EXPECT_EQ(lastLineOf("\n\n"), "");
    EXPECT_EQ(lastLineOf(""), "");
}

}  // namespace
}  // namespace varnolix::job
