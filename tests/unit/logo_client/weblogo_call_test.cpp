#include "logo_client/weblogo_call.h"

#include <gtest/gtest.h>

#include "report/page/motif_logos.h"

namespace varnolix::logos {
namespace {

/// The options of a command as a shell passes them on. In these commands only the names of the bases are quoted.
std::vector<std::string> optionsOf(const std::string& command) {
    std::vector<std::string> options;
    std::size_t start = command.find(' ');
    while (start != std::string::npos) {
        const std::size_t end = command.find(' ', start + 1);
        std::string word = command.substr(start + 1, end == std::string::npos ? end : end - start - 1);
        if (word == "<") break;
        std::erase(word, '\'');
        options.push_back(word);
        start = end;
    }
    return options;
}

TEST(WeblogoCall, KnowsTheCallsOfTheProgram) {
    for (const bool isReverse : {false, true}) {
        std::vector<std::string> options = optionsOf(logoCommand("matrix.txt", "logo.jpeg", isReverse));
        EXPECT_TRUE(isProgramCall(options));
        options.emplace_back("--help");
        EXPECT_FALSE(isProgramCall(options));
    }
    EXPECT_FALSE(isProgramCall({}));
    EXPECT_FALSE(isProgramCall({"--version"}));
}

TEST(WeblogoCall, KnowsAHeaderWithoutRows) {
    for (const char* matrix : {"PO A C G T \n", "PO", "P0 A C G T", "\n \nPO A C G T\r\n\t\n"})
        EXPECT_TRUE(isHeaderAlone(matrix)) << matrix;
    for (const char* matrix : {"", "\n", "PO A C G T \n1 1 0 0 0 \n", "PO\rPO", "POA C G T", "1 1 0 0 0"})
        EXPECT_FALSE(isHeaderAlone(matrix)) << matrix;
}

}  // namespace
}  // namespace varnolix::logos
