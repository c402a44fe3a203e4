#include "run/run_text.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <regex>
#include <sstream>

#include "support/numbers.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

std::string byStream(double number) {
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

TEST(NumberToString, PrintsSixSignificantDigits) {
    EXPECT_EQ(numberToString(4821), "4821");
    EXPECT_EQ(numberToString(0.75), "0.75");
    EXPECT_EQ(numberToString(0.0), "0");
    EXPECT_EQ(numberToString(-0.0), "-0");
    EXPECT_EQ(numberToString(0.1 + 0.2), "0.3");
    EXPECT_EQ(numberToString(1.0 / 3.0), "0.333333");
    EXPECT_EQ(numberToString(999999.5), "1e+06");
    EXPECT_EQ(numberToString(999999), "999999");
    EXPECT_EQ(numberToString(1234567), "1.23457e+06");
    EXPECT_EQ(numberToString(0.0001), "0.0001");
    EXPECT_EQ(numberToString(0.00001), "1e-05");
}

TEST(NumberToString, PrintsAsStreamDoes) {
    for (const double number : testing::nastyNumbers()) EXPECT_EQ(numberToString(number), byStream(number));
}

TEST(NumberToString, PrintsRandomNumbersAsStreamDoes) {
    testing::RandomNumbers random(20161);
    for (int round = 0; round < 20000; ++round) {
        const double number = random.next();
        ASSERT_EQ(numberToString(number), byStream(number)) << std::hexfloat << number;
    }
}

TEST(CurrentTime, HasTheFormsOfFooterAndJob) {
    EXPECT_TRUE(std::regex_match(getCurrDateTime(), std::regex(R"(\d\d-\d\d-\d{4} \d\d:\d\d:\d\d)")))
        << getCurrDateTime();
    EXPECT_TRUE(std::regex_match(getCurrDateTimeFormat(), std::regex(R"(\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d)")))
        << getCurrDateTimeFormat();
}

TEST(CurrentTime, BothFormsNameTheSameDay) {
    const std::string before = getCurrDateTimeFormat().substr(0, 10);
    const std::string footer = getCurrDateTime();
    const std::string after = getCurrDateTimeFormat().substr(0, 10);
    const std::string day = footer.substr(6, 4) + "-" + footer.substr(0, 5);
    EXPECT_TRUE(day == before || day == after) << footer;
}

class CurrentDirectoryTest : public testing::FolderTest {
  protected:
    ~CurrentDirectoryTest() override { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(CurrentDirectoryTest, HasNoSlashAtItsEnd) {
    std::filesystem::current_path(folder());
    EXPECT_EQ(getCurrentDirectory() + "/", std::filesystem::canonical(folder()).string() + "/");
}

TEST_F(CurrentDirectoryTest, IsEmptyIfTheFolderIsGone) {
    std::filesystem::create_directory(folder() + "gone");
    std::filesystem::current_path(folder() + "gone");
    std::filesystem::remove(folder() + "gone");
    EXPECT_EQ(getCurrentDirectory(), "");
}

using EndRunDeathTest = testing::RunTest;

TEST_F(EndRunDeathTest, EndsWithStatusOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endRun("message"), ::testing::ExitedWithCode(1), "");
}

TEST_F(EndRunDeathTest, PrintsToStandardOutput) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            endRun("message");
        },
        ::testing::ExitedWithCode(1), "message$");
}

TEST(EndRunMessages, HaveTheExpectedWording) {
    EXPECT_STREQ(invalidInputPathMessage, "Invalid input path or file name.\n");
    EXPECT_STREQ(invalidOutputPathMessage, "Invalid output path or output filename.");
}

}  // namespace
}  // namespace varnolix
