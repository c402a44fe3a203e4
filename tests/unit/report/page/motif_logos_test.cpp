#include "report/page/motif_logos.h"

#include <cmath>
#include <filesystem>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

TEST(LogoMatrixText, NumbersItsRowsAndEndsThemInABlank) {
    EXPECT_EQ(logoMatrixText({{1, 0, 0, 0}, {1.0 / 3, 0.1 + 0.2, 0.00001, 0.25}}),
              "PO A C G T \n"
              "1 1 0 0 0 \n"
              "2 0.333333 0.3 1e-05 0.25 \n");
}

TEST(LogoMatrixText, EmptyMotifIsTheHeadLine) {
    EXPECT_EQ(logoMatrixText({}), "PO A C G T \n");
}

class MotifLogosTest : public testing::FolderTest {
  protected:
    MotifLogosTest() {
        inputPath = "/a/motifs/";
        outputPath = folder();
        jobID = "J_1_";
    }

    /// A stand-in for WebLogo that prints its options and what it reads.
    void installTool(std::string_view script) {
        inputPath = folder();
        std::filesystem::create_directory(folder() + "weblogo-3.4");
        write("weblogo-3.4/weblogo", script);
        std::filesystem::permissions(folder() + "weblogo-3.4/weblogo", std::filesystem::perms::owner_all);
    }
};

TEST_F(MotifLogosTest, CommandsDifferInOneOption) {
    const std::string start =
        "/a/motifs/weblogo-3.4/weblogo --format jpeg --sequence-type dna --units bits --composition none --first-index "
        "1";
    const std::string end =
        " --size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES --ticmarks 1.0 --errorbars NO "
        "--stack-width 20 --resolution 96 --scale-width yes --color-scheme classic --color green A 'Adenine' --color "
        "blue C 'Cytosine' --color orange G 'Guanine' --color red T 'Thymine' < /r/m.txt > /r/m.jpeg";
    EXPECT_EQ(logoCommand("/r/m.txt", "/r/m.jpeg", false), start + end);
    EXPECT_EQ(logoCommand("/r/m.txt", "/r/m.jpeg", true), start + " --revcomp" + end);
}

TEST_F(MotifLogosTest, OddPathsAreQuoted) {
    inputPath = "/o'neill/my motifs/";
    const std::string command = logoCommand("/r s/m.txt", "/r s/m.jpeg", false);
    EXPECT_TRUE(command.starts_with("'/o'\\''neill/my motifs/weblogo-3.4/weblogo' --format")) << command;
    EXPECT_TRUE(command.ends_with(" < '/r s/m.txt' > '/r s/m.jpeg'")) << command;
}

TEST_F(MotifLogosTest, DrawsBothLogosAndRemovesTheMatrix) {
    installTool("#!/bin/sh\necho \"$*\" | grep -o -e --revcomp\ncat\n");
    drawLogos({{1, 0, 0, 0}}, 'D', 7);
    EXPECT_EQ(read("J_1_image/J_1_D7.jpeg"), "PO A C G T \n1 1 0 0 0 \n");
    EXPECT_EQ(read("J_1_image/J_1_D7RevComp.jpeg"), "--revcomp\nPO A C G T \n1 1 0 0 0 \n");
    EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_image/J_1_D7.txt"));
}

TEST_F(MotifLogosTest, LaterMotifOfTheSameIdReplacesThePictures) {
    installTool("#!/bin/sh\ncat\n");
    drawLogos({{1, 0, 0, 0}, {1, 0, 0, 0}}, 'M', 1);
    drawLogos({{0, 1, 0, 0}}, 'M', 1);
    EXPECT_EQ(read("J_1_image/J_1_M1.jpeg"), "PO A C G T \n1 0 1 0 0 \n");
}

}  // namespace
}  // namespace varnolix
