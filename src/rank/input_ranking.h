#pragma once

#include <span>
#include <vector>

#include "rank/best_matches.h"
#include "rank/record_source.h"
#include "run/shared_records.h"

// The best matches of every input motif and the ranking of the motifs. Local lists hold all records of a motif, global
// lists those between motifs of different files.

namespace varnolix {

/// One of the two rankings.
struct InputRanking {
    RecordLists bestMatches;  ///< element m - 1 belongs to motif m and may be empty
    std::vector<commonBestMatches> ranking;
    DistanceTable distances;  ///< filled if its tree is asked for
};

struct RankingSettings {
    int mostMatches;
    bool isGlobalAsked;      ///< several files
    bool isLocalTreeAsked;   ///< the tree of all records
    bool isGlobalTreeAsked;  ///< the one across files; only with the global ranking
};

struct InputRankings {
    InputRanking local;
    InputRanking global;
    double largestCombinedScore = 0.0;  ///< over all records; 0 unless a tree is asked for
};

/// Selects the best matches and ranks the motifs. The threads share the work.
/// @param source gives the records of each motif that store it first
InputRankings rankInput(const RecordSource& source, const std::vector<data>& motifs, const RankingSettings& settings);

}  // namespace varnolix
