#include "job/help_format.h"

#include <gtest/gtest.h>

namespace varnolix::job {
namespace {

TEST(HelpEntry, MeaningStandsInTheSecondColumn) {
    EXPECT_EQ(helpEntry("-q, --quiet", "Print nothing"), "  -q, --quiet           Print nothing\n");
}

TEST(HelpEntry, LongTermHasALineOfItsOwn) {
    EXPECT_EQ(helpEntry("    --collection=NAME", "A name"),
              "      --collection=NAME\n                        A name\n");
}

TEST(HelpEntry, LongMeaningIsWrapped) {
    const std::string text = helpEntry("x", std::string(50, 'a') + " bbbb " + std::string(60, 'c') + " d");
    EXPECT_EQ(text, "  x                     " + std::string(50, 'a') + " bbbb\n" + std::string(24, ' ') +
                        std::string(60, 'c') + "\n" + std::string(24, ' ') + "d\n");
}

TEST(HelpFormat, OptionsHaveTheirValueBehindTheLongName) {
    CLI::App app("Does things", "thing");
    app.formatter(std::make_shared<HelpFormat>());
    int number = 0;
    bool isLoud = false;
    std::vector<std::string> files;
    app.add_option("-n,--number", number, "A number")->type_name("N")->check(CLI::Range(1, 5));
    app.add_flag("--loud", isLoud, "Shout");
    app.add_option("FILE", files, "Files")->required();
    const std::string help = app.help();
    EXPECT_TRUE(help.starts_with("Usage: thing [OPTION]... FILE...\nDoes things.\n")) << help;
    EXPECT_NE(help.find("\n  -n, --number=N        A number\n"), std::string::npos) << help;
    EXPECT_NE(help.find("\n      --loud            Shout\n"), std::string::npos) << help;
}

}  // namespace
}  // namespace varnolix::job
