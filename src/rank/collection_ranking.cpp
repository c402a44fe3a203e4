#include "rank/collection_ranking.h"

#include <unordered_map>

#include "rank/best_matches.h"
#include "report/text/result_text.h"

namespace varnolix {

namespace {

/// For each reference motif, the place of the first one with the same name.
std::vector<std::uint32_t> namePlaces(const std::vector<data>& references) {
    std::unordered_map<std::string_view, std::uint32_t> firstPlaces;
    std::vector<std::uint32_t> places;
    places.reserve(references.size());
    for (const data& motif : references) {
        places.push_back(
            firstPlaces.try_emplace(motif.motifName, static_cast<std::uint32_t>(places.size())).first->second);
    }
    return places;
}

/// The buffers of one thread.
struct MatchingScratch {
    RecordScratch records;
    std::vector<std::uint32_t> seen;
};

}  // namespace

RecordLists matchesInCollection(const RecordSource& source, std::size_t inputMotifs,
                                const std::vector<data>& references, int mostMatches) {
    const std::vector<std::uint32_t> places = namePlaces(references);
    RecordLists bestMatches(inputMotifs);
    forEachMotif<MatchingScratch>(source, inputMotifs, [&](MatchingScratch& scratch) {
        bestMatches[scratch.records.motif] = selectBestMatches(
            scratch.records.keys, collectionRule(mostMatches), scratch.seen,
            [&](const SortKey& key) { return places[key.partner()]; },
            [&](const SortKey& key) { return source.recordOf(scratch.records, key); });
    });
    return bestMatches;
}

void writeCollectionSections(const RecordSource& source, ListKind list, const std::vector<data>& inputMotifs,
                             const std::vector<data>& references, int mostMatches,
                             std::initializer_list<ReportPass> passes) {
    const RecordLists bestMatches = matchesInCollection(source, inputMotifs.size(), references, mostMatches);
    const ReportWalk walk{
        .list = list,
        .sectionTitle = " Best Matches in Database for Each Motif (Highest to Lowest) ",
        .starsBefore = 70,
        .starsAfter = 65,
        .motifTitle = " Best Matches for Motif ID ",
        .motifStars = 72,
        .briefMotifStars = 72,
        .reverseTitle = "Reserve complement motif",
        .mode = eachMotifMode,
        .inputMotifs = inputMotifs,
        .bestMatches = bestMatches,
        .motifs = motifsWithMatches(bestMatches),
        .isSingleFileNote = false,
    };
    keepRankedLists(walk);
    for (const ReportPass& pass : passesForFormat(passes)) writePass(walk, pass);
}

}  // namespace varnolix
