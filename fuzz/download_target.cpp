#include <algorithm>
#include <optional>
#include <string>

#include "fuzz/targets.h"
#include "job/downloads/download.h"
#include "job/downloads/information.h"
#include "job/downloads/layouts.h"
#include "job/downloads/motif_writers.h"

namespace varnolix::fuzz {

namespace {

using namespace job;

/// Digits with at most one point between them.
bool isPlainDecimal(const std::string& number) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return !number.empty() && isDigit(number.front()) && isDigit(number.back()) &&
           std::count(number.begin(), number.end(), '.') <= 1 &&
           std::all_of(number.begin(), number.end(),
                       [&](char character) { return isDigit(character) || character == '.'; });
}

void checkMotif(const DownloadedMotif& motif) {
    require(!motif.id.empty(), "every motif has an id");
    require(motif.line > 0, "every motif has a line");
    require(!motif.columns.empty(), "a motif that is taken has columns");
    for (const NumberColumn& column : motif.columns) {
        require(std::all_of(column.begin(), column.end(), isPlainDecimal), "every number is plain decimal text");
        const double bits = informationOf(column);
        require(bits >= 0 && bits <= 2, "the information of a column is between 0 and 2 bits");
    }
}

void checkReadBack(const DownloadedMotif& motif, const std::string& text, Layout layout) {
    const Download found = readDownload(text, "file", &layout);
    require(found.motifs.size() == 1 && found.refused.empty(), "a motif that was written is read back");
    require(found.motifs[0].columns == motif.columns, "reading back changes no number");
}

void checkWriters(const DownloadedMotif& motif) {
    checkReadBack(motif, jasparText(motif), Layout::jaspar);
    checkReadBack(motif, transfacText(motif), Layout::transfac);
    const std::string meme = memeText({&motif, 1});
    const Layout layout = Layout::meme;
    const Download found = readDownload(meme, "file", &layout);
    require(found.motifs.size() == 1 && found.motifs[0].columns.size() == motif.columns.size(),
            "a motif in MEME layout is read back");
    require(memeText(found.motifs) == meme || !found.motifs[0].siteCount.empty() || motif.siteCount.empty(),
            "probabilities are written as they stand");
    const std::string table = tsvText({&motif, 1});
    require(static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n')) == motif.columns.size() + 1,
            "a table has one row a column");
}

void checkDownload(std::string_view text, std::optional<Layout> layout) {
    const Download found = readDownload(text, "file", layout ? &*layout : nullptr);
    require(!found.motifs.empty() || !found.refused.empty(), "a file without motifs is refused");
    require(!layout || found.layout == *layout, "a named layout is the layout");
    for (const DownloadedMotif& motif : found.motifs) {
        checkMotif(motif);
        checkWriters(motif);
    }
    for (const RefusedMotif& refused : found.refused) {
        require(!refused.reason.empty() && refused.reason.size() < 200, "a short reason is given");
        require(refused.line > 0, "every refusal has a line");
    }
}

}  // namespace

void downloadTarget(std::string_view text) {
    checkDownload(text, std::nullopt);
    for (int layout = 0; layout <= static_cast<int>(Layout::columns); ++layout) {
        checkDownload(text, static_cast<Layout>(layout));
    }
}

}  // namespace varnolix::fuzz
