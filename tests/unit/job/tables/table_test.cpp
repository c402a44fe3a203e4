#include "job/tables/table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "support/numbers.h"

namespace varnolix::job {
namespace {

std::string tsv(const Cell& cell) {
    std::string text;
    appendTsvCell(text, cell);
    return text;
}

std::string json(const Cell& cell) {
    std::string text;
    appendJsonValue(text, cell);
    return text;
}

TEST(Table, ControlCharactersInTextsBecomeBlanks) {
    EXPECT_EQ(tsv("a\tb\r\nc\x01"
                  "d\x7f"),
              "a b  c d ");
    EXPECT_EQ(tsv(std::string_view("a\0b", 3)), "a b");
    EXPECT_EQ(tsv("\"quoted\" and \\ stay"), "\"quoted\" and \\ stay");
}

TEST(Table, BytesThatAreNoUtf8AreReplaced) {
    EXPECT_EQ(tsv("f\xC3\xBCr"), "f\xC3\xBCr");
    EXPECT_EQ(tsv("f\xFCr"), "f\xEF\xBF\xBDr");
    EXPECT_EQ(json("f\xFCr"), "\"f\xEF\xBF\xBDr\"");
}

TEST(Table, JsonKeepsControlCharacters) {
    for (const std::string text : {"a\tb\nc\x01", "\"\\/", "plain", "", "\x7f"}) {
        EXPECT_EQ(nlohmann::json::parse(json(text)).get<std::string>(), text);
    }
}

TEST(Table, NumbersReadBack) {
    testing::RandomNumbers random(5);
    std::vector<double> numbers = testing::nastyNumbers();
    for (int n = 0; n < 2000; ++n) numbers.push_back(random.next());
    for (const double number : numbers) {
        if (!std::isfinite(number)) {
            EXPECT_EQ(json(number), "null");
            continue;
        }
        EXPECT_EQ(std::strtod(tsv(number).c_str(), nullptr), number);
        EXPECT_EQ(nlohmann::json::parse(json(number)).get<double>(), number);
    }
    EXPECT_EQ(tsv(0.1), "0.1");
    EXPECT_EQ(tsv(1.0), "1");
    EXPECT_EQ(tsv(std::int64_t{-12}), "-12");
    EXPECT_EQ(json(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

}  // namespace
}  // namespace varnolix::job
