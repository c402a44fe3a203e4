#include "job/version/outside_versions.h"

#include <gmock/gmock.h>

#include <chrono>

namespace varnolix::job {
namespace {

using ::testing::ElementsAre;

TEST(OutsideVersions, AreFoundInWhatRealToolsPrint) {
    const std::vector<std::pair<std::string, std::string>> answers = {
        {"WebLogo 3.7.12\n", "3.7.12"},
        {"10.00.0\n", "10.00.0"},
        {"PHP 8.2.29 (cli) (built: Jan  1 2026 00:00:00) (NTS)\nCopyright (c) The PHP Group\n", "8.2.29"},
        {"Prince 15.3\nCopyright\n", "15.3"},
        {"/usr/bin/chromium: 9: [: unexpected operator\nChromium 140.0.1 built on Debian\n", "140.0.1"},
        {"WeasyPrint version 57.2\n", "57.2"},
        {"Rscript (R) version 4.2.2 Patched (2022-11-10 r83330)\n", "4.2.2"},
        {"packages: ape 5.7, dendextend missing \n", "ape 5.7, dendextend missing"},
        {"GNU parallel 20221122\nCopyright (C) 2007-2022\n", "20221122"},
        {"slurm-wlm 22.05.8\n", "22.05.8"},
    };
    const std::vector<ToolQuestion> questions = toolQuestions({});
    ASSERT_EQ(questions.size(), answers.size());
    for (std::size_t place = 0; place < answers.size(); ++place) {
        EXPECT_EQ(versionIn(answers[place].first, questions[place].pattern), answers[place].second);
        EXPECT_EQ(versionIn("sh: 1: tool: not found\n", questions[place].pattern), "") << questions[place].name;
    }
}

TEST(OutsideVersions, SlowAndMissingToolsAreGivenUp) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(askTools({{"slow", "sleep 60; echo version 1", "version (\\S+)"},
                          {"good", "echo it is version 2 >&2", "version (\\S+)"},
                          {"missing", "./no-such-tool --version", "version (\\S+)"},
                          {"slow too", "sleep 60", "()"}},
                         1),
                ElementsAre("", "2", "", ""));
    // They were asked at the same time.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace varnolix::job
