#include "run/checks.h"

#include <gtest/gtest.h>

#include <string>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using Check = bool (*)(std::string_view);

struct Case {
    std::string_view text;
    bool passes;
};

void expectAll(Check check, std::initializer_list<Case> cases) {
    for (const Case& each : cases) EXPECT_EQ(check(each.text), each.passes) << "'" << each.text << "'";
}

/// Tries every character as a text of length one.
void expectOnlyCharacters(Check check, std::string_view allowed) {
    for (int code = 0; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        EXPECT_EQ(check(text), allowed.find(text[0]) != std::string_view::npos) << "character code " << code;
    }
}

TEST(CheckNumeric, TakesDigitsAndPointsOnly) {
    expectOnlyCharacters(checkNumeric, "0123456789.");
}

TEST(CheckNumeric, JudgesWholeTexts) {
    expectAll(checkNumeric, {{"", true},
                             {"12", true},
                             {"1.5", true},
                             {".5", true},
                             {"1.2.3", true},
                             {"...", true},
                             {"-1", false},
                             {"+1", false},
                             {"1e5", false},
                             {"1,5", false},
                             {"1 5", false},
                             {"5x", false},
                             {"nan", false}});
}

TEST(CheckDouble, TakesExactlyOnePoint) {
    expectAll(checkDouble, {{"", false},
                            {"1", false},
                            {".5", true},
                            {"5.", true},
                            {".", true},
                            {"0.75", true},
                            {"0.750", true},
                            {"1.2.3", false},
                            {"..", false},
                            {"-0.5", false},
                            {"0.5e1", false},
                            {"0.5 ", false}});
}

TEST(CheckNumThreads, RefusesZeroAnywhere) {
    expectOnlyCharacters(checkNumThreads, "123456789");
    expectAll(checkNumThreads, {{"", true},
                                {"1", true},
                                {"9", true},
                                {"11", true},
                                {"99", true},
                                {"0", false},
                                {"10", false},
                                {"20", false},
                                {"101", false},
                                {"-1", false},
                                {"2.0", false},
                                {"2.5", false},
                                {"x", false}});
}

TEST(CheckSpace, RefusesBlanksOnly) {
    expectAll(
        checkSpace,
        {{"", true}, {"motifs.txt", true}, {"a\tb", true}, {" ", false}, {" a", false}, {"a ", false}, {"a b", false}});
}

TEST(CheckIUPAC, TakesUpperCaseLettersAndGap) {
    expectOnlyCharacters(checkIUPAC, "-ABCDGHKMNRSTVWY");
    expectAll(checkIUPAC, {{"", true}, {"ACGTRYKMSWBDHVN-", true}, {"acgt", false}, {"ACGTa", false}, {"ACGU", false}});
}

TEST(CheckNucleotide, TakesFourBasesAndGap) {
    expectOnlyCharacters(checkNucleotide, "-ACGT");
    expectAll(checkNucleotide, {{"", true}, {"AC-GT", true}, {"acgt", false}, {"ACGN", false}, {"AC GT", false}});
}

class IsValidPathTest : public testing::FolderTest {};

TEST_F(IsValidPathTest, TakesFolders) {
    EXPECT_TRUE(isValidPath(folder().c_str()));
    EXPECT_TRUE(isValidPath("/"));
    EXPECT_TRUE(isValidPath("."));
}

TEST_F(IsValidPathTest, RefusesFilesAndMissingPaths) {
    write("file.txt", "text");
    EXPECT_FALSE(isValidPath((folder() + "file.txt").c_str()));
    EXPECT_FALSE(isValidPath((folder() + "file.txt/").c_str()));
    EXPECT_FALSE(isValidPath((folder() + "missing").c_str()));
    EXPECT_FALSE(isValidPath(""));
}

}  // namespace
}  // namespace varnolix
