#include "run/system/outside_text.h"

#include <gtest/gtest.h>
#include <stdio.h>

#include <array>
#include <string>

namespace varnolix {
namespace {

/// The first argument of a command as the shell passes it on.
std::string printedByShell(const std::string& word) {
    const std::string command = "printf %s " + word;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "no shell";
    std::string output;
    std::array<char, 256> buffer{};
    for (std::size_t count = 0; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        output.append(buffer.data(), count);
    }
    return pclose(pipe) == 0 ? output : "failed: " + output;
}

TEST(ShellWord, PlainPathsAreNotQuoted) {
    EXPECT_EQ(shellWord("/home/a/result/J_2016-05-21_4821_M1.txt"), "/home/a/result/J_2016-05-21_4821_M1.txt");
}

TEST(ShellWord, OddPathsAreQuoted) {
    EXPECT_EQ(shellWord("/home/my folder/a.txt"), "'/home/my folder/a.txt'");
    EXPECT_EQ(shellWord("/o'neill/"), "'/o'\\''neill/'");
    EXPECT_EQ(shellWord("/a$b/"), "'/a$b/'");
}

TEST(ShellWord, ShellReadsEveryWordBackUnchanged) {
    for (const char* path : {"/plain/path_1.txt", "/with blank/", "/o'neill/'", "/$HOME/`date`/", "/a;b&c|d/",
                             "/a\"b\"/", "/back\\slash/", "/*?[a]{b,c}/", "~/home", "#hash", "/tab\there",
                             "/line\nend/", "!x", "/(p)/<q>/", "/a=b,c@d%e^f:g+h/", "/\xc3\xa4/"}) {
        EXPECT_EQ(printedByShell(shellWord(path)), path);
    }
}

TEST(ShellWord, PathsThatLookLikeOptionsStayPaths) {
    EXPECT_EQ(shellWord("-job/result/J_1_M1.txt"), "./-job/result/J_1_M1.txt");
    EXPECT_EQ(shellWord("--my job/a.txt"), "'./--my job/a.txt'");
    EXPECT_EQ(shellWord("/a/-b/c"), "/a/-b/c");
    EXPECT_EQ(shellWord("a-b/-c"), "a-b/-c");
}

TEST(InsideQuotes, PathsThatLookLikeOptionsStayPaths) {
    EXPECT_EQ(insideQuotes("-job/o'neill.html"), "./-job/o\\'neill.html");
    EXPECT_EQ(insideQuotes("/a/-b/c"), "/a/-b/c");
    EXPECT_EQ(insideQuotes("result/-x"), "result/-x");
}

TEST(InsideQuotes, BackslashesAndApostrophesAreEscaped) {
    EXPECT_EQ(insideQuotes("/home/a/result/"), "/home/a/result/");
    EXPECT_EQ(insideQuotes("/o'neill/"), "/o\\'neill/");
    EXPECT_EQ(insideQuotes("a\\b"), "a\\\\b");
    EXPECT_EQ(insideQuotes("\\'"), "\\\\\\'");
    EXPECT_EQ(insideQuotes("$x \"y\""), "$x \"y\"");
}

}  // namespace
}  // namespace varnolix
