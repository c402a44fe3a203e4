#include "report/text/text_columns.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "support/numbers.h"

namespace varnolix {
namespace {

std::string padded(std::string_view text, std::size_t width) {
    std::string line = "|";
    appendPadded(line, text, width);
    return line + "|";
}

std::string fixedText(double number) {
    std::string line;
    appendFixed(line, number);
    return line;
}

std::string byStream(double number) {
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(6) << number;
    return stream.str();
}

TEST(AppendPadded, FillsUpToTheWidth) {
    EXPECT_EQ(padded("ab", 5), "|ab   |");
    EXPECT_EQ(padded("", 3), "|   |");
}

TEST(AppendPadded, LongTextsRunOver) {
    EXPECT_EQ(padded("abc", 3), "|abc|");
    EXPECT_EQ(padded("abcd", 3), "|abcd|");
    EXPECT_EQ(padded("a", 0), "|a|");
}

TEST(AppendFixed, HasSixDecimals) {
    EXPECT_EQ(fixedText(0.85), "0.850000");
    EXPECT_EQ(fixedText(0), "0.000000");
    EXPECT_EQ(fixedText(-0.0), "-0.000000");
    EXPECT_EQ(fixedText(1.0 / 3.0), "0.333333");
    EXPECT_EQ(fixedText(2.0 / 3.0), "0.666667");
    EXPECT_EQ(fixedText(1e-7), "0.000000");
    EXPECT_EQ(fixedText(0.1 + 0.2), "0.300000");
    EXPECT_EQ(fixedText(999999.5), "999999.500000");
}

TEST(AppendFixed, PrintsAsStreamDoes) {
    for (const double number : testing::nastyNumbers()) EXPECT_EQ(fixedText(number), byStream(number));
}

TEST(AppendFixed, PrintsRandomNumbersAsStreamDoes) {
    testing::RandomNumbers random(20162);
    for (int round = 0; round < 20000; ++round) {
        const double number = random.next();
        ASSERT_EQ(fixedText(number), byStream(number)) << std::hexfloat << number;
    }
}

TEST(AppendFixed, KeepsTheTextBefore) {
    std::string line = "score ";
    appendFixed(line, 0.5);
    EXPECT_EQ(line, "score 0.500000");
}

TEST(NumberLike, FollowsTheNotationOfTheStream) {
    std::ostringstream stream;
    EXPECT_EQ(numberLike(stream, 0.85), "0.85");
    EXPECT_EQ(numberLike(stream, 1.0 / 3.0), "0.333333");
    stream << std::fixed;
    EXPECT_EQ(numberLike(stream, 0.85), "0.850000");
    stream << std::defaultfloat;
    EXPECT_EQ(numberLike(stream, 1234567.0), "1.23457e+06");
}

TEST(BannerText, NamesProductAndVersion) {
    EXPECT_EQ(bannerText(), "VARNOLIX - Matrix Kinship Finder\nVersion 2.1\n");
}

TEST(FlushWhenLarge, WritesOnlyLargeTexts) {
    std::ostringstream stream;
    std::string text = "small";
    flushWhenLarge(stream, text);
    EXPECT_EQ(text, "small");
    EXPECT_EQ(stream.str(), "");
    text.assign(std::size_t{1} << 20U, 'x');
    flushWhenLarge(stream, text);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(stream.str().size(), std::size_t{1} << 20U);
}

}  // namespace
}  // namespace varnolix
