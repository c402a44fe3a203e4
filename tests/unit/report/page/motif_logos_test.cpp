#include "report/page/motif_logos.h"

#include <cmath>
#include <filesystem>
#include <iterator>
#include <vector>

#include "report/stages.h"
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

    /// The same for one that works alongside itself.
    void installOverlappingTool(std::string_view script) {
        installTool(script);
        write("weblogo-3.4/calls-may-overlap", "");
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

TEST_F(MotifLogosTest, ToolWithoutAPromiseIsCalledOnceAtATimeAndInOrder) {
    installTool(
        "#!/bin/sh\ncalls=${0%/*}/calls\nmkdir $calls.scratch || echo overlap >> $calls\n"
        "tail -n 1 | cut -d ' ' -f 1 >> $calls\nsleep 0.01\nrmdir $calls.scratch\n");
    std::vector<data> motifs;
    std::string wanted;
    for (int k = 1; k <= 9; ++k) {
        motifs.push_back(testing::motifOfText(k, testing::times(std::size_t(k), 'A')));
        wanted += std::to_string(k) + "\n" + std::to_string(k) + "\n";
    }
    omp_set_num_threads(9);
    drawAllLogos(motifs, writeMotifImage);
    EXPECT_EQ(read("weblogo-3.4/calls"), wanted);
}

TEST_F(MotifLogosTest, ToolWithAPromiseIsCalledOnSeveralThreads) {
    // Each call waits until the other motif's call has begun, too, for five seconds at most.
    installOverlappingTool(
        "#!/bin/sh\nown=${0%/*}/call-$(cat | wc -l)\n: > $own\n"
        "for n in $(seq 500); do set -- ${own%-*}-*; [ $# -gt 1 ] && break; sleep 0.01; done\n"
        "echo $#\n");
    omp_set_num_threads(2);
    drawAllLogos(std::vector{testing::motifOfText(1, "A"), testing::motifOfText(2, "CC")}, writeMotifImage);
    EXPECT_EQ(read("J_1_image/J_1_M1.jpeg"), "2\n");
    EXPECT_EQ(read("J_1_image/J_1_M2.jpeg"), "2\n");
}

TEST_F(MotifLogosTest, EveryThreadCountDrawsTheSame) {
    // Random times shake the order.
    installOverlappingTool(
        "#!/bin/sh\nsleep 0.0$(od -An -N1 -tu1 /dev/urandom | tr -d ' ')\n"
        "echo \"$*\" | grep -o -e --revcomp\ncat\n");
    std::vector<data> motifs;
    for (int k = 1; k <= 12; ++k) motifs.push_back(testing::motifOfText(k, testing::times(std::size_t(k), 'A')));
    for (const int threads : {1, 2, 3, 9}) {
        omp_set_num_threads(threads);
        jobID = "J_" + std::to_string(threads) + "_";
        ::testing::internal::CaptureStderr();
        drawAllLogos(motifs, writeMotifImage);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        const std::string stem = jobID + "image/" + jobID + "M";
        for (int k = 1; k <= 12; ++k) {
            const std::string text = logoMatrixText(motifs[std::size_t(k) - 1].matrix);
            EXPECT_EQ(read(stem + std::to_string(k) + ".jpeg"), text);
            EXPECT_EQ(read(stem + std::to_string(k) + "RevComp.jpeg"), "--revcomp\n" + text);
        }
        using Files = std::filesystem::directory_iterator;
        EXPECT_EQ(std::distance(Files(folder() + jobID + "image"), Files()), 24);
    }
}

TEST_F(MotifLogosTest, LastOfMotifsWithTheSameNumberKeepsItsPictures) {
    // The first takes longer than the last.
    installOverlappingTool("#!/bin/sh\ntext=$(cat)\ncase $text in *\"9 \"*) sleep 0.2;; esac\necho \"$text\"\n");
    omp_set_num_threads(3);
    const data last = testing::motifOfText(1, "ACGT");
    drawAllLogos(std::vector{testing::motifOfText(1, testing::times(9, 'A')), testing::motifOfText(2, "C"), last},
                 writeDatabaseMotifImage);
    EXPECT_EQ(read("J_1_image/J_1_D1.jpeg"), logoMatrixText(last.matrix));
}

using MotifLogosDeathTest = MotifLogosTest;

TEST_F(MotifLogosDeathTest, LostMatrixFileEndsTheRunAndTheToolsOfOtherThreads) {
    installOverlappingTool("#!/bin/sh\necho half\nsleep 60\n");
    GTEST_FLAG_SET(death_test_style, "fast");
    const std::string image = folder() + "J_1_image/";
    std::filesystem::create_directories(image + "J_1_M3.txt");
    const std::vector motifs{testing::motifOfText(1, "A"), testing::motifOfText(2, "C"), testing::motifOfText(3, "G")};
    EXPECT_EXIT(
        {
            omp_set_num_threads(3);
            drawAllLogos(motifs, writeMotifImage);
        },
        ::testing::ExitedWithCode(1), "^" + image + "J_1_M3\\.txt could not be written: Is a directory\\.\n$");
    std::filesystem::remove_all(image + "J_1_M3.txt");
    EXPECT_TRUE(std::filesystem::is_empty(image));
}

}  // namespace
}  // namespace varnolix
