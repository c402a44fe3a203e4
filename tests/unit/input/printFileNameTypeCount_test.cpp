#include "input/stages.h"

#include "report/text/file_table.h"

#include "support/console.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using PrintFileNameTypeCountTest = testing::RunTest;

TEST_F(PrintFileNameTypeCountTest, ColumnIsAsWideAsTheLongestName) {
    FileNameType = {{"longer_name.txt", 4, 12, 1}, {"b.txt", 10, 0, 2}};
    const testing::Console console;
    printFileNameTypeCount();
    EXPECT_EQ(console.output(),
              "\nYour input files, types, and counts are:\n\n"
              "File Name      Count of Motifs     Dataset #      \n"
              "longer_name.txt12                  1              \n"
              "b.txt          0                   2              \n\n");
}

TEST_F(PrintFileNameTypeCountTest, TitlesOverflowShortNames) {
    FileNameType = {{"a", 4, 3, 1}};
    const testing::Console console;
    printFileNameTypeCount();
    EXPECT_EQ(console.output(),
              "\nYour input files, types, and counts are:\n\n"
              "File NameCount of Motifs     Dataset #      \n"
              "a3                   1              \n\n");
}

TEST_F(PrintFileNameTypeCountTest, LongestFileNameOfNoneIsZero) {
    EXPECT_EQ(longestFileName({}), 0U);
    EXPECT_EQ(longestFileName({{"ab", 1, 1, 1}, {"abcd", 1, 1, 2}, {"abc", 1, 1, 3}}), 4U);
}

}  // namespace
}  // namespace varnolix
