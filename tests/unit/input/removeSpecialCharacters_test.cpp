#include "input/removeSpecialCharacters.h"

#include <gtest/gtest.h>

namespace varnolix {
namespace {

TEST(RemoveSpecialCharacters, LeavesBlanksPointsAndDigits) {
    std::string all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(removeSpecialCharacters(all), " .0123456789");
}

TEST(RemoveSpecialCharacters, TakesBracketsOff) {
    EXPECT_EQ(removeSpecialCharacters("[12.5"), "12.5");
    EXPECT_EQ(removeSpecialCharacters("3]"), "3");
    EXPECT_EQ(removeSpecialCharacters("-1e5"), "15");
    EXPECT_EQ(removeSpecialCharacters("[]"), "");
    EXPECT_EQ(removeSpecialCharacters(""), "");
}

}  // namespace
}  // namespace varnolix
