#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "job/downloads/download.h"
#include "job/downloads/layouts.h"

// The examples in docs/downloads.md are read as the document says, and there is one for each layout.

namespace varnolix::job {

namespace {

std::string documentText() {
    std::ifstream file(std::string(VARNOLIX_PROJECT) + "/docs/downloads.md");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// "Read as `LAYOUT`: `ID` with N positions, ..."
std::string claimOf(const Download& found) {
    std::string claim = std::string("Read as `") + nameOf(found.layout) + "`:";
    for (const DownloadedMotif& motif : found.motifs) {
        claim += (&motif == &found.motifs.front() ? " `" : ", `") + motif.id + "` with " +
                 std::to_string(motif.columns.size()) + (motif.columns.size() == 1 ? " position" : " positions");
    }
    return claim + ".";
}

}  // namespace

TEST(DownloadsDocument, ExamplesAreReadAsItSays) {
    const std::string document = documentText();
    const std::string begin = "\n```download\n";
    const std::string end = "\n```\n\n";
    std::set<Layout> layouts;
    for (std::size_t at = document.find(begin); at != std::string::npos; at = document.find(begin, at)) {
        at += begin.size();
        const std::size_t close = document.find(end, at);
        ASSERT_NE(close, std::string::npos);
        const std::string example = document.substr(at, close + 1 - at);
        const std::size_t claim = close + end.size();
        const Download found = readDownload(example, "downloads");
        EXPECT_EQ(document.substr(claim, document.find('\n', claim) - claim), claimOf(found)) << example;
        EXPECT_TRUE(found.refused.empty());
        layouts.insert(found.layout);
        const std::size_t heading = document.rfind("\n## ", at) + 4;
        EXPECT_EQ(document.substr(heading, document.find('\n', heading) - heading), nameOf(found.layout));
    }
    EXPECT_EQ(layouts.size(), static_cast<std::size_t>(Layout::columns) + 1);
}

}  // namespace varnolix::job
