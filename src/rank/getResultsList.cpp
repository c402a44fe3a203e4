#include "rank/stages.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rank/input_ranking.h"
#include "rank/memory_plan.h"
#include "report/report_passes.h"
#include "report/stages.h"
#include "report/text/result_text.h"
#include "run/settings.h"
#include "run/shared_records.h"

namespace varnolix {

namespace {

using Records = std::vector<dataCombinedScore>;

constexpr const char* reverseTitle = "Reverse complement motif";

const ReportPass fullPass{reports::full, PassForm::text, WriteTopResultsList};
const ReportPass briefPass{reports::brief, PassForm::brief, WriteTopResultsListWithoutMotif};
const ReportPass globalPass{reports::global, PassForm::text,
                            [](const Records& list, int, long id) { WriteTopResultsGlobalMatchingList(list, id); }};
const ReportPass fullPagePass{reports::fullPage, PassForm::page, WriteTopResultsListHTML};
const ReportPass globalPagePass{reports::globalPage, PassForm::page, [](const Records& list, int, long id) {
                                    WriteTopResultsGlobalMatchingListHTML(list, id);
                                }};

RecordLists groupsOf(const std::vector<int>& motifs, const RecordLists& bestMatches) {
    RecordLists groups;
    for (const int id : motifs) groups.push_back(bestMatches[static_cast<std::size_t>(id - 1)]);
    return groups;
}

void writeWalk(const ReportWalk& walk, std::initializer_list<ReportPass> passes) {
    keepRankedLists(walk);
    for (const ReportPass& pass : passesForFormat(passes)) writePass(walk, pass);
}

/// The top motifs of the matching across files.
void writeTopWalk(const RecordLists& bestMatches, std::vector<int> motifs) {
    const ReportWalk walk{
        .list = ListKind::topGlobal,
        .sectionTitle =
            " Top " + std::to_string(numTopMotif) + " Significant Motifs - Global Matching (Highest to Lowest) ",
        .starsBefore = 66,
        .starsAfter = 66,
        .motifTitle = " Best Matches for Top Significant Motif ID ",
        .motifStars = 63,
        .briefMotifStars = 63,
        .reverseTitle = reverseTitle,
        .mode = topMode,
        .inputMotifs = Datasets,
        .bestMatches = bestMatches,
        .motifs = std::move(motifs),
        .isSingleFileNote = numFile == 1,
    };
    if (isTypeAll()) {
        writeWalk(walk, {fullPass, briefPass, globalPass, fullPagePass, globalPagePass});
    } else {
        writeWalk(walk, {globalPass, globalPagePass});
    }
}

/// The top motifs of the matching within and across files.
void writeSignificantWalk(const RecordLists& bestMatches, std::vector<int> motifs) {
    const ReportWalk walk{
        .list = ListKind::significant,
        .sectionTitle = " Significant Motifs - Global and Local Matching (Highest to Lowest) ",
        .starsBefore = 64,
        .starsAfter = 64,
        .motifTitle = " Best Matches for Significant Motif ID ",
        .motifStars = 67,
        .briefMotifStars = 62,
        .reverseTitle = reverseTitle,
        .mode = topMode,
        .inputMotifs = Datasets,
        .bestMatches = bestMatches,
        .motifs = std::move(motifs),
        .isSingleFileNote = false,
    };
    writeWalk(walk, {fullPass, briefPass, fullPagePass});
}

void writeEachMotifWalk(const RecordLists& bestMatches, std::vector<int> motifs) {
    const ReportWalk walk{
        .list = ListKind::eachMotif,
        .sectionTitle = " Best Matches for Each Motif (Highest to Lowest) ",
        .starsBefore = 70,
        .starsAfter = 77,
        .motifTitle = " Best Matches for Motif ID ",
        .motifStars = 72,
        .briefMotifStars = 72,
        .reverseTitle = reverseTitle,
        .mode = eachMotifMode,
        .inputMotifs = Datasets,
        .bestMatches = bestMatches,
        .motifs = std::move(motifs),
        .isSingleFileNote = false,
    };
    writeWalk(walk, {fullPass, briefPass, fullPagePass});
}

void keepDistances(InputRankings& rankings) {
    // Pairs without a record are farther apart than any pair with one; in the table across files, by one more.
    maxSumScoreCompare = std::max(maxSumScoreCompare, rankings.largestCombinedScore);
    distanceMatrix = std::move(rankings.local.distances);
    distanceMatrix.unmatched = std::ceil(maxSumScoreCompare + 2);
    distanceMatrixGlobal = std::move(rankings.global.distances);
    distanceMatrixGlobal.unmatched = std::ceil(maxSumScoreCompare + 3);
}

}  // namespace

void getResultsList() {
    InputRankings rankings = rankInput(inputRecords(DatasetsCombinedScoreLists), Datasets,
                                       {numBestMatches, numFile > 1, isLocalTreeDrawn(), isGlobalTreeDrawn()});
    if (motifCluster == "Y") keepDistances(rankings);
    const RecordLists& localMatches = rankings.local.bestMatches;
    const RecordLists& globalMatches = rankings.global.bestMatches;
    globalMatchingScoreResultList = std::move(rankings.global.ranking);
    commonBestScoreResultList = std::move(rankings.local.ranking);

    const std::vector<int> topGlobal = topMotifs(globalMatchingScoreResultList, globalMatches, numTopMotif);
    const std::vector<int> topLocal = topMotifs(commonBestScoreResultList, localMatches, numTopMotif);
    const std::vector<int> matched = motifsWithMatches(localMatches);
    topGlobalMatchingResults = groupsOf(topGlobal, globalMatches);
    if (combinedMotifFlag == "Y" && isTypeAll()) {
        topGlobalAndLocalMatchingResults = groupsOf(topLocal, localMatches);
        topBestMatchesResults = groupsOf(matched, localMatches);
    }

    writeTopWalk(globalMatches, topGlobal);
    if (!isTypeAll()) return;
    writeSignificantWalk(localMatches, topLocal);
    writeEachMotifWalk(localMatches, matched);
}

}  // namespace varnolix
