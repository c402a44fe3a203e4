#include "job/downloads/generated_downloads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "job/downloads/layouts.h"
#include "job/downloads/motif_writers.h"
#include "job/downloads/reading/source_lines.h"

// The same matrices in every layout, whole and cut off.

namespace varnolix::job::test {

namespace {

constexpr std::size_t manyMotifs = 160;

Download readAs(Layout layout, const std::string& text) {
    return readDownload(text, "file", &layout);
}

void expectSameMotifs(const Download& found, const std::vector<GeneratedMotif>& motifs) {
    EXPECT_TRUE(found.refused.empty()) << found.refused.front().line << ": " << found.refused.front().reason;
    ASSERT_EQ(found.motifs.size(), motifs.size());
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        ASSERT_EQ(found.motifs[motif].columns, motifs[motif].columns) << "motif " << motif;
    }
}

/// How many motifs the text begins: lines that begin like the first line of a motif, or blocks between empty lines
/// where motifs have no such line. A text without any is one file that cannot be read.
std::size_t motifsBegunIn(Layout layout, const std::string& text) {
    std::size_t begun = 0;
    bool isInBlock = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line); isInBlock = !line.empty()) {
        switch (layout) {
            case Layout::meme:
                begun += line == "MOTIF" || line.starts_with("MOTIF ") ? 1U : 0U;
                break;
            case Layout::transfac:
                begun += line.starts_with("AC") ? 1U : 0U;
                break;
            case Layout::uniprobe:
                begun += line.starts_with("P") ? 1U : 0U;
                break;
            case Layout::cisbp:
            case Layout::rows:
            case Layout::columns:
                begun += !isInBlock && !line.empty() ? 1U : 0U;
                break;
            default:
                begun += line.starts_with(">") ? 1U : 0U;
                break;
        }
    }
    return std::max<std::size_t>(begun, 1);
}

class EachNumberLayout : public testing::TestWithParam<Layout> {};

std::string layoutName(const testing::TestParamInfo<Layout>& info) {
    std::string name = nameOf(info.param);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Downloads, EachNumberLayout, testing::ValuesIn(numberLayouts), layoutName);

}  // namespace

TEST_P(EachNumberLayout, KeepsAllOfManyMotifs) {
    const auto motifs = generatedMotifs(manyMotifs, 11);
    const std::string file = fileOf(GetParam(), motifs);
    const Download found = readDownload(file, "file");
    EXPECT_EQ(found.layout, GetParam());
    expectSameMotifs(found, motifs);
}

TEST_P(EachNumberLayout, KeepsAllWhenTheLayoutIsNamed) {
    const auto motifs = generatedMotifs(manyMotifs, 12);
    expectSameMotifs(readAs(GetParam(), fileOf(GetParam(), motifs)), motifs);
}

TEST_P(EachNumberLayout, KeepsAllWithOddLineEnds) {
    const auto motifs = generatedMotifs(manyMotifs, 13);
    std::string file = fileOf(GetParam(), motifs);
    file.erase(file.find_last_not_of('\n') + 1);
    std::string windows = "\xEF\xBB\xBF";
    std::string oldMac;
    for (const char character : file) {
        windows += character == '\n' ? "\r\n" : std::string(1, character);
        oldMac += character == '\n' ? '\r' : character;
    }
    expectSameMotifs(readDownload(windows, "file"), motifs);
    expectSameMotifs(readDownload(oldMac, "file"), motifs);
}

TEST_P(EachNumberLayout, NumbersLinesFromOne) {
    const auto motifs = generatedMotifs(3, 14);
    const std::string file = "\n\n" + fileOf(GetParam(), motifs);
    const Lines lines = linesOf(file);
    for (const DownloadedMotif& motif : readDownload(file, "file").motifs) {
        ASSERT_GE(motif.line, 3U);
        ASSERT_LE(motif.line, lines.size());
        EXPECT_FALSE(lines[motif.line - 1].text.empty());
    }
}

// Whatever is cut off, every motif that is begun is taken or refused, and those before the last one are not changed.
TEST_P(EachNumberLayout, LosesNothingWhenCutOffAnywhere) {
    const auto motifs = generatedMotifs(3, 15);
    const std::string file = fileOf(GetParam(), motifs);
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const std::string text = file.substr(0, length);
        const Download found = readDownload(text, "file");
        ASSERT_EQ(found.motifs.size() + found.refused.size(), motifsBegunIn(GetParam(), text)) << text;
        for (const RefusedMotif& refused : found.refused) {
            ASSERT_FALSE(refused.reason.empty());
            ASSERT_GE(refused.line, 1U);
        }
        const Download named = readAs(GetParam(), text);
        ASSERT_GE(named.motifs.size() + 1, motifsBegunIn(GetParam(), text)) << text;
        for (std::size_t motif = 0; motif + 1 < motifsBegunIn(GetParam(), text); ++motif) {
            ASSERT_EQ(named.motifs[motif].columns, motifs[motif].columns) << text;
        }
    }
}

TEST(GeneratedDownloads, ConsensusKeepsAllOfManyMotifs) {
    const GeneratedLetters letters = generatedConsensus(manyMotifs, 21);
    const Download found = readDownload(letters.file, "file");
    EXPECT_EQ(found.layout, Layout::consensus);
    EXPECT_TRUE(found.refused.empty());
    ASSERT_EQ(found.motifs.size(), manyMotifs);
    for (std::size_t motif = 0; motif < manyMotifs; ++motif) {
        EXPECT_EQ(found.motifs[motif].id, letters.ids[motif]);
        EXPECT_EQ(found.motifs[motif].columns.size(), letters.strings[motif].size());
    }
}

TEST(GeneratedDownloads, ConsensusLosesNothingWhenCutOffAnywhere) {
    const GeneratedLetters letters = generatedConsensus(8, 22);
    for (std::size_t length = 0; length <= letters.file.size(); ++length) {
        const std::string text = letters.file.substr(0, length);
        const Download found = readDownload(text, "file");
        ASSERT_EQ(found.motifs.size() + found.refused.size(), motifsBegunIn(Layout::consensus, text)) << text;
    }
}

TEST(GeneratedDownloads, SitesKeepAllOfManyMotifs) {
    const GeneratedLetters letters = generatedSites(manyMotifs, 23);
    const Download found = readDownload(letters.file, "file");
    EXPECT_EQ(found.layout, Layout::sites);
    EXPECT_TRUE(found.refused.empty());
    ASSERT_EQ(found.motifs.size(), manyMotifs);
    for (std::size_t motif = 0; motif < manyMotifs; ++motif) {
        const std::string& sites = letters.strings[motif];
        const std::size_t length = sites.find('\n');
        ASSERT_EQ(found.motifs[motif].columns.size(), length);
        for (std::size_t position = 0; position < length; ++position) {
            std::array<int, 4> counts = {};
            for (std::size_t at = position; at < sites.size(); at += length + 1) {
                const std::size_t base = std::string("ACGT").find(sites[at]);
                if (base != std::string::npos) ++counts[base];
            }
            for (std::size_t base = 0; base < 4; ++base) {
                EXPECT_EQ(found.motifs[motif].columns[position][base], std::to_string(counts[base]));
            }
        }
    }
}

TEST(GeneratedDownloads, SitesLoseNothingWhenCutOffAnywhere) {
    const GeneratedLetters letters = generatedSites(4, 24);
    for (std::size_t length = 0; length <= letters.file.size(); ++length) {
        const std::string text = letters.file.substr(0, length);
        const Download found = readAs(Layout::sites, text);
        // A single sequence with its header is a file of one site.
        ASSERT_EQ(found.motifs.size() + found.refused.size(), motifsBegunIn(Layout::sites, text)) << text;
    }
}

TEST(GeneratedDownloads, WritersAreReadBackExactly) {
    const auto motifs = readDownload(fileOf(Layout::jaspar, generatedMotifs(manyMotifs, 31)), "file").motifs;
    std::string jaspar;
    std::string transfac;
    for (const DownloadedMotif& motif : motifs) {
        jaspar += jasparText(motif);
        transfac += transfacText(motif, Taxon::written);
    }
    for (const std::string& text : {jaspar, transfac}) {
        const Download found = readDownload(text, "file");
        ASSERT_EQ(found.motifs.size(), motifs.size());
        for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
            EXPECT_EQ(found.motifs[motif].id, motifs[motif].id);
            EXPECT_EQ(found.motifs[motif].name, motifs[motif].name);
            EXPECT_EQ(found.motifs[motif].columns, motifs[motif].columns);
        }
    }
}

TEST(GeneratedDownloads, MemeKeepsTheValues) {
    const auto motifs = readDownload(fileOf(Layout::jaspar, generatedMotifs(manyMotifs, 32)), "file").motifs;
    const Download found = readDownload(memeText(motifs), "file");
    ASSERT_EQ(found.motifs.size(), motifs.size());
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        ASSERT_EQ(found.motifs[motif].columns.size(), motifs[motif].columns.size());
        for (std::size_t position = 0; position < motifs[motif].columns.size(); ++position) {
            const NumberColumn& column = motifs[motif].columns[position];
            const double sum =
                std::stod(column[0]) + std::stod(column[1]) + std::stod(column[2]) + std::stod(column[3]);
            for (std::size_t base = 0; base < 4; ++base) {
                EXPECT_EQ(std::stod(found.motifs[motif].columns[position][base]), std::stod(column[base]) / sum);
            }
        }
    }
    // What is probabilities already keeps its text.
    EXPECT_EQ(memeText(found.motifs), memeText(readDownload(memeText(found.motifs), "file").motifs));
}

TEST(GeneratedDownloads, TablesKeepTheNumbers) {
    const auto motifs = readDownload(fileOf(Layout::jaspar, generatedMotifs(5, 33)), "file").motifs;
    std::istringstream lines(tsvText(motifs));
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "id\tname\tposition_1based\tA\tC\tG\tT");
    for (const DownloadedMotif& motif : motifs) {
        for (std::size_t position = 0; position < motif.columns.size(); ++position) {
            const NumberColumn& column = motif.columns[position];
            ASSERT_TRUE(std::getline(lines, line));
            EXPECT_EQ(line, motif.id + "\t" + motif.name + "\t" + std::to_string(position + 1) + "\t" + column[0] +
                                "\t" + column[1] + "\t" + column[2] + "\t" + column[3]);
        }
    }
    EXPECT_FALSE(std::getline(lines, line));
}

}  // namespace varnolix::job::test
