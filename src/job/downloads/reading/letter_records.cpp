#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/letters.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/readers.h"
#include "job/downloads/reading/records.h"

namespace varnolix::job {

namespace {

std::string oddLetter(const TextLine& line, char letter, const char* what) {
    const bool isPrintable = std::isprint(static_cast<unsigned char>(letter)) != 0;
    return lineLabel(line.number) +
           (isPrintable ? std::string("\"") + letter + "\" is no " : "a character that is no ") + what;
}

std::string readConsensusLetters(const TextLine& line, std::vector<NumberColumn>& columns) {
    for (const char letter : line.text) {
        const std::optional<NumberColumn> column = basesAllowedBy(letter);
        if (!column) return oddLetter(line, letter, "IUPAC letter of nucleotides");
        columns.push_back(*column);
    }
    return "";
}

std::string readConsensus(const Record& record, DownloadedMotif& motif) {
    if (!record.hasHeader) return "a sequence before the first header line (\">NAME\")";
    if (motif.id.empty()) return "a header without an id";
    if (record.body.empty()) return "no consensus";
    if (record.body.size() > 1) return "a consensus of " + std::to_string(record.body.size()) + " lines, not one";
    return readConsensusLetters(record.body.front(), motif.columns);
}

using SiteCounts = std::vector<std::array<std::size_t, 4>>;

std::string countSite(const TextLine& site, SiteCounts& counts) {
    constexpr std::string_view bases = "ACGTU";
    if (site.text.size() != counts.size()) {
        return lineLabel(site.number) + "a site of " + std::to_string(site.text.size()) + " letters, the first has " +
               std::to_string(counts.size()) + "; if each is a motif of its own, choose the layout consensus";
    }
    for (std::size_t position = 0; position < counts.size(); ++position) {
        const char letter = site.text[position];
        const auto upper = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        if (isGap(letter) || upper == 'N') continue;
        const std::size_t base = bases.find(upper);
        if (base == std::string_view::npos) return oddLetter(site, letter, "base of a site");
        ++counts[position][std::min<std::size_t>(base, 3)];
    }
    return "";
}

std::string readSites(const Lines& sequences, DownloadedMotif& motif) {
    if (sequences.empty()) return "no sites";
    const Lines sites = withoutSurroundings(sequences);
    SiteCounts counts(sites.front().text.size());
    for (const TextLine& site : sites) {
        std::string reason = countSite(site, counts);
        if (!reason.empty()) return reason;
    }
    for (const auto& count : counts) {
        motif.columns.push_back(
            {std::to_string(count[0]), std::to_string(count[1]), std::to_string(count[2]), std::to_string(count[3])});
    }
    motif.siteCount = std::to_string(sites.size());
    return "";
}

/// All records are the sites of one motif.
void readSiteRecords(const std::vector<Record>& records, Download& found) {
    DownloadedMotif motif;
    motif.line = records.front().line;
    Lines sequences;
    std::string reason;
    for (const Record& record : records) {
        if (record.body.empty() && reason.empty()) reason = lineLabel(record.line) + "a header without a site";
        sequences.insert(sequences.end(), record.body.begin(), record.body.end());
    }
    if (reason.empty()) reason = readSites(sequences, motif);
    takeOrRefuse(found, std::move(motif), std::move(reason));
}

DownloadedMotif namedMotif(const Record& record) {
    DownloadedMotif motif;
    motif.line = record.line;
    const Row words = splitTokens(record.header);
    if (!words.empty()) motif.id = words[0];
    motif.name = joinedWords(words, 1);
    return motif;
}

}  // namespace

void readLetterRecords(const Lines& lines, Download& found) {
    const std::vector<Record> records = recordsOf(lines);
    const bool isMotifEach =
        found.layout == Layout::consensus ||
        std::any_of(records.begin(), records.end(), [](const Record& record) { return record.body.size() > 1; });
    if (!isMotifEach && !records.empty()) {
        readSiteRecords(records, found);
        return;
    }
    for (const Record& record : records) {
        DownloadedMotif motif = namedMotif(record);
        std::string reason =
            found.layout == Layout::consensus ? readConsensus(record, motif) : readSites(record.body, motif);
        takeOrRefuse(found, std::move(motif), std::move(reason));
    }
}

}  // namespace varnolix::job
