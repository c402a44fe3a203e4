#include "job/tables/job_results.h"

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

}  // namespace varnolix::job
