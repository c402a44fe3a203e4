#include "run/system/output_file.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <iomanip>
#include <iostream>

#include "report/report_file.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using std::filesystem::create_symlink;

class OutputFileTest : public testing::FolderTest {
  protected:
    // With this style, the child of a death test shares the folder, which is removed only once.
    OutputFileTest() { GTEST_FLAG_SET(death_test_style, "fast"); }

    std::string path() const { return folder() + "out.txt"; }

    bool opens(std::ios_base::openmode mode = std::ios_base::out) {
        std::ofstream stream;
        errno = 0;
        const bool isOpen = tryOpenOutput(stream, path(), mode);
        EXPECT_EQ(stream.is_open(), isOpen);
        return isOpen;
    }
};

TEST_F(OutputFileTest, CreatesAFile) {
    std::ofstream stream;
    openOutput(stream, path());
    stream << "text";
    closeOutput(stream, path());
    EXPECT_EQ(read("out.txt"), "text");
}

TEST_F(OutputFileTest, PermissionsAreThoseOfAnyNewFile) {
    EXPECT_TRUE(opens());
    std::ofstream(folder() + "plain.txt").close();
    EXPECT_EQ(std::filesystem::status(path()).permissions(),
              std::filesystem::status(folder() + "plain.txt").permissions());
}

TEST_F(OutputFileTest, EmptiesOrAppends) {
    write("out.txt", "before ");
    std::ofstream stream;
    openOutput(stream, path(), std::ios_base::out | std::ios_base::app);
    stream << "behind";
    closeOutput(stream, path());
    EXPECT_EQ(read("out.txt"), "before behind");
    openOutput(stream, path(), std::ios_base::out | std::ios_base::trunc);
    closeOutput(stream, path());
    EXPECT_EQ(read("out.txt"), "");
}

TEST_F(OutputFileTest, NotationSurvivesClosing) {
    std::ofstream stream;
    openOutput(stream, path());
    stream << std::fixed << std::setprecision(6);
    closeOutput(stream, path());
    openOutput(stream, path());
    stream << 0.5;
    closeOutput(stream, path());
    EXPECT_EQ(read("out.txt"), "0.500000");
}

TEST_F(OutputFileTest, LeavesNoDescriptorOpen) {
    const auto lowestFree = [] {
        const int descriptor = ::open("/dev/null", O_RDONLY);
        ::close(descriptor);
        return descriptor;
    };
    const int before = lowestFree();
    EXPECT_TRUE(opens());
    std::filesystem::create_directory(folder() + "sub");
    create_symlink(folder() + "sub", folder() + "link");
    std::ofstream stream;
    EXPECT_FALSE(tryOpenOutput(stream, folder() + "link"));
    EXPECT_FALSE(tryOpenOutput(stream, folder() + "sub"));
    EXPECT_EQ(lowestFree(), before);
}

TEST_F(OutputFileTest, LinkIsRefusedAndItsTargetUntouched) {
    write("target.txt", "precious");
    create_symlink(folder() + "target.txt", path());
    for (const auto mode : {std::ios_base::out, std::ios_base::out | std::ios_base::app}) {
        EXPECT_FALSE(opens(mode));
        EXPECT_EQ(errno, ELOOP);
    }
    EXPECT_EQ(read("target.txt"), "precious");
}

TEST_F(OutputFileTest, DanglingLinkCreatesNoFile) {
    create_symlink(folder() + "target.txt", path());
    EXPECT_FALSE(opens());
    EXPECT_FALSE(std::filesystem::exists(folder() + "target.txt"));
}

TEST_F(OutputFileTest, FolderMayBeALink) {
    std::filesystem::create_directory(folder() + "real");
    create_symlink(folder() + "real", folder() + "result");
    std::ofstream stream;
    EXPECT_TRUE(tryOpenOutput(stream, folder() + "result/a.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder() + "real/a.txt"));
}

TEST_F(OutputFileTest, PipeIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_FALSE(opens());
    const int reader = ::open(path().c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_FALSE(opens());
    ::close(reader);
}

TEST_F(OutputFileTest, FolderIsRefused) {
    std::filesystem::create_directory(path());
    EXPECT_FALSE(opens());
    EXPECT_EQ(errno, EISDIR);
}

using OutputFileDeathTest = OutputFileTest;

/// Limits the size of files to so many bytes.
void limitFiles(rlim_t bytes) {
    const struct rlimit limit { bytes, RLIM_INFINITY };
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

constexpr rlim_t fewBytes = 1000;
const std::string manyBytes(100000, 'x');

TEST_F(OutputFileDeathTest, FailedOpenEndsTheRunAndNamesTheFile) {
    std::ofstream stream;
    EXPECT_EXIT(openOutput(stream, folder() + "missing/a.txt"), ::testing::ExitedWithCode(1),
                "missing/a.txt could not be written: No such file or directory\\.");
}

TEST_F(OutputFileDeathTest, MessageOfAnInvalidPathIsPrinted) {
    std::ofstream stream;
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            openOutput(stream, folder() + "missing/a.txt");
        },
        ::testing::ExitedWithCode(1), "Invalid output path or output filename\\.$");
}

/// Writes when there is space for only a few bytes. The limit is lifted before the second text.
void writeOnFullDisk(const std::string& path, const std::string& first, const std::string& second = "") {
    letFileSizeLimitFailWrites();
    limitFiles(fewBytes);
    std::ofstream stream;
    openOutput(stream, path);
    stream << first;
    if (!second.empty()) {
        EXPECT_FALSE(stream);
        limitFiles(RLIM_INFINITY);
        stream << second;
    }
    closeOutput(stream, path);
}

TEST_F(OutputFileDeathTest, FailedWriteEndsTheRunAndNamesTheFile) {
    EXPECT_EXIT(writeOnFullDisk(path(), manyBytes), ::testing::ExitedWithCode(1),
                "out.txt could not be written: the disk may be full\\.");
}

TEST_F(OutputFileDeathTest, BytesWrittenOnClosingAreChecked) {
    // They stay in the buffer of the stream until it is closed.
    EXPECT_EXIT(writeOnFullDisk(path(), manyBytes.substr(0, fewBytes + 1)), ::testing::ExitedWithCode(1),
                "out.txt could not be written");
}

TEST_F(OutputFileDeathTest, SpaceThatBecomesFreeDoesNotHideTheGap) {
    EXPECT_EXIT(writeOnFullDisk(path(), manyBytes, "footer"), ::testing::ExitedWithCode(1),
                "out.txt could not be written");
}

TEST_F(OutputFileDeathTest, ReportThatIsAppendedToIsChecked) {
    const std::string location = path();
    std::ofstream stream;
    const ReportFile report{stream, location};
    EXPECT_EXIT(
        {
            startReport(report, "header");
            letFileSizeLimitFailWrites();
            limitFiles(fewBytes);
            AppendingReport open(report);
            open.stream() << manyBytes;
        },
        ::testing::ExitedWithCode(1), "out.txt could not be written");
    EXPECT_EXIT(
        {
            letFileSizeLimitFailWrites();
            limitFiles(fewBytes);
            startReport(report, manyBytes);
        },
        ::testing::ExitedWithCode(1), "out.txt could not be written");
}

TEST_F(OutputFileTest, WritesAWholeText) {
    write("out.txt", "before, and longer");
    EXPECT_FALSE(writeOutput(path(), "text\n"));
    EXPECT_EQ(read("out.txt"), "text\n");
}

TEST_F(OutputFileTest, TroubleTellsPathAndReason) {
    const std::string inside = folder() + "missing/a.txt";
    const auto missing = writeOutput(inside, "text");
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->path, inside);
    EXPECT_EQ(missing->reason, "No such file or directory");
    create_symlink(folder() + "nowhere", folder() + "link");
    EXPECT_TRUE(writeOutput(folder() + "link", "text"));
    EXPECT_FALSE(std::filesystem::exists(folder() + "nowhere"));
    EXPECT_TRUE(linkTrouble(folder() + "link"));
    EXPECT_FALSE(linkTrouble(path()));
}

TEST_F(OutputFileDeathTest, TextBeyondTheLimitIsTrouble) {
    EXPECT_EXIT(
        {
            letFileSizeLimitFailWrites();
            limitFiles(fewBytes);
            endOnTrouble(std::nullopt);
            endOnTrouble(writeOutput(path(), manyBytes));
        },
        ::testing::ExitedWithCode(1), "out.txt could not be written: the disk may be full\\.");
}

TEST_F(OutputFileDeathTest, LinkWhereAToolWritesEndsTheRun) {
    refuseLink(path());
    write("out.txt", "");
    refuseLink(path());
    create_symlink(folder() + "nowhere", folder() + "link");
    EXPECT_EXIT(refuseLink(folder() + "link"), ::testing::ExitedWithCode(1),
                "link could not be written: it is a symbolic link\\.");
}

TEST_F(OutputFileDeathTest, FullConsoleEndsTheRun) {
    checkConsole();
    EXPECT_EXIT(
        {
            dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO);
            std::cout << "text";
            checkConsole();
        },
        ::testing::ExitedWithCode(1), "Standard output could not be written");
}

}  // namespace
}  // namespace varnolix
