#include <algorithm>
#include <string>

#include "database/collection_reading.h"
#include "fuzz/targets.h"
#include "plain/plain_blocks.h"

namespace varnolix::fuzz {

namespace {

bool isPosition(const Row& row) {
    return (row.size() == 5 || row.size() == 6) && std::all_of(row.begin() + 1, row.begin() + 5, [](auto token) {
               return plain::isNumber(token, 0, static_cast<int>(token.size()));
           });
}

void checkNumbers(const std::vector<data>& motifs) {
    int number = 0;
    for (const data& motif : motifs) {
        ++number;
        require(motif.matrixID == number && motif.motifNum == number && motif.datasetNum == 1,
                "reference motifs are numbered from 1 without gaps");
        require(motif.revCompMatrix.size() == motif.matrix.size(), "the reverse complement is as long as the motif");
    }
}

void checkBaseRows(const Block& rows) {
    const std::vector<data> motifs = motifsOfBaseRows(rows, "");
    checkNumbers(motifs);
    const auto closing = std::count_if(rows.begin(), rows.end(), [](const Row& row) { return row[0] == "T"; });
    require(motifs.size() == static_cast<std::size_t>(closing), "every row of T closes a motif");

    const std::vector<data> ofTaxon = motifsOfBaseRows(rows, "Fungi");
    require(ofTaxon.size() == motifs.size(), "the taxon changes no motif");
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        require(ofTaxon[motif].motifName == motifs[motif].motifName, "the taxon changes no name");
        const std::string& taxon = ofTaxon[motif].taxon;
        require(taxon == "Fungi" || (taxon.empty() && ofTaxon[motif].motifID.empty()),
                "a motif behind a header has the taxon of its collection");
    }
}

void checkEntries(const Block& rows) {
    const std::vector<data> motifs = motifsOfTransfacEntries(rows);
    checkNumbers(motifs);
    std::size_t positions = 0;
    for (const data& motif : motifs) {
        require(!motif.matrix.empty(), "an entry without positions is no motif");
        positions += motif.matrix.size();
    }
    const auto lines = std::count_if(rows.begin(), rows.end(), isPosition);
    require(positions == static_cast<std::size_t>(lines), "every position line stands in one motif");
}

}  // namespace

void collectionsTarget(std::string_view text) {
    const Block rows = plain::rowsOf(text);
    checkBaseRows(rows);
    checkEntries(rows);
}

}  // namespace varnolix::fuzz
