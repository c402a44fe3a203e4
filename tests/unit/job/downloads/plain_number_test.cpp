#include "job/downloads/reading/plain_number.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace varnolix::job {

namespace {

/// The plain text, or "refused: " and the reason.
std::string plainOf(const std::string& token) {
    std::string plain;
    const std::string reason = plainNumber(token, plain);
    return reason.empty() ? plain : "refused: " + reason;
}

}  // namespace

TEST(PlainNumber, KeepsPlainNumbers) {
    for (const char* token :
         {"0", "12", "007", "0.250", "12.0", "0.0000000000000000000000001", "3.14159265358979323846"}) {
        EXPECT_EQ(plainOf(token), token);
    }
}

TEST(PlainNumber, WritesOthersPlainly) {
    const std::vector<std::pair<const char*, const char*>> numbers = {
        {"+1", "1"},
        {"1.", "1"},
        {".5", "0.5"},
        {"+.5", "0.5"},
        {"-0", "0"},
        {"-0.0", "0.0"},
        {"1.0e+00", "1.0"},
        {"5.0e-1", "0.50"},
        {"2.5E-01", "0.25"},
        {"0e-9", "0"},
        {"0.0E99999", "0"},
        {"1e3", "1000"},
        {"1.5e3", "1500"},
        {"12.345e1", "123.45"},
        {"12.345e-3", "0.012345"},
        {"1.e2", "100"},
        {".5e1", "5"},
        {"007e0", "7"},
        {"1.0e1", "10"},
        {"0.05e1", "0.5"},
        {"0.00100e3", "1.00"},
        {"100e-2", "1.00"},
        {"100e-5", "0.00100"},
        {"123456789e-9", "0.123456789"},
    };
    for (const auto& [token, plain] : numbers) EXPECT_EQ(plainOf(token), plain) << token;
}

TEST(PlainNumber, LosesNoDigitOfGreatExponents) {
    EXPECT_EQ(plainOf("1e300"), "1" + std::string(300, '0'));
    EXPECT_EQ(plainOf("1e-300"), "0." + std::string(299, '0') + "1");
    for (const char* token : {"1e301", "1e-301", "1e999999999", "1e-99999999999999999999999999"}) {
        EXPECT_EQ(plainOf(token), std::string("refused: ") + token + " is no count or frequency");
    }
    EXPECT_TRUE(plainOf(std::string(302, '9')).starts_with("refused: 9999"));
    EXPECT_EQ(plainOf(std::string(301, '9')), std::string(301, '9'));
}

TEST(PlainNumber, RefusesWhatIsNone) {
    for (const char* token : {"", "x", "nan", "inf", "-inf", ".", "+", "1.2.3", "1e", "1e+", "e5", "1,5", "0x10", "1 2",
                              "1-", "--1", "1f"}) {
        EXPECT_EQ(plainOf(token), std::string("refused: \"") + token + "\" is no number");
    }
    EXPECT_EQ(plainOf("-1e-5"), "refused: -1e-5 is below 0; counts or frequencies are needed, no log-odds");
}

TEST(PlainNumber, KnowsWhatIsMeantAsOne) {
    for (const char* token : {"1", "-1", "+.5", "1x", "nan", "-INF", "Infinity"}) EXPECT_TRUE(looksLikeNumber(token));
    for (const char* token : {"", "x1", "-", ".", "A", "info"}) EXPECT_FALSE(looksLikeNumber(token));
}

}  // namespace varnolix::job
