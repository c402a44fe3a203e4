#include "job/tables/job_results.h"

#include "run/record_fields.h"

namespace varnolix::job {

namespace {

MotifNames namesOf(const std::vector<JobMotif>& listed, const data& motif, std::string_view dataset) {
    const DownloadedMotif& downloaded = listed[static_cast<std::size_t>(motif.matrixID - 1)].motif;
    return {dataset, downloaded.id, downloaded.name, motif.motifName};
}

}  // namespace

MotifNames namesOfInput(const JobResults& results, const data& motif) {
    const JobSources& sources = results.sources;
    return namesOf(sources.motifs, motif, sources.datasets[static_cast<std::size_t>(motif.datasetNum - 1)].name);
}

MotifNames namesOfReference(const JobResults& results, const data& motif) {
    return namesOf(results.sources.references, motif, results.sources.collection);
}

const char* listName(ListKind kind) {
    switch (kind) {
        case ListKind::topGlobal:
            return "top_global";
        case ListKind::significant:
            return "significant";
        case ListKind::eachMotif:
            return "each_motif";
        case ListKind::collection:
            return "collection";
        case ListKind::collectionGlobal:
            return "collection_global";
    }
    return "";
}

RankedMatch rankedMatch(const JobResults& results, const RankedList& list, std::size_t place) {
    const dataCombinedScore& record = list.matches[place];
    const bool isCollection = isAgainstCollection(list.kind);
    // Ids of the two lists may be the same, so against a collection only the flag tells which motif comes first: the
    // query is the outer one.
    const bool isQueryFirst = isCollection ? record.primaryFlag == PrimaryFlag::yes : record.matrixID1 == list.matrixID;
    const data& query = motifOf(results.motifs, list.matrixID);
    const data& target =
        motifOf(isCollection ? results.references : results.motifs, isQueryFirst ? record.matrixID2 : record.matrixID1);
    const int queryLength = static_cast<int>(query.matrix.size());
    const int targetLength = static_cast<int>(target.matrix.size());
    return {
        query, target, record,
        placementOf(record, isQueryFirst,
                    isQueryFirst ? PairLengths{queryLength, targetLength} : PairLengths{targetLength, queryLength})};
}

}  // namespace varnolix::job
