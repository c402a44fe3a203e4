#include "job/page/write_page.h"

#include <omp.h>

#include <cstdlib>

#include "job/folder/files.h"
#include "job/page/page_data.h"
#include "report/page/html_text.h"
#include "run/run_text.h"
#include "run/settings.h"
#include "tree/tree_plot.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

std::string textIfThere(const fs::path& path) {
    return fs::is_regular_file(path) ? readFile(path) : "";
}

PageTree treeOf(const TreeFiles& tree, const char* name, const std::string& newick) {
    const bool hasHeatMap = Datasets.size() <= mostMotifsOfHeatMap;
    const std::string table = hasHeatMap ? textIfThere(outputPath + tree.table) : "";
    return {name, textIfThere(newick), table.empty() ? "" : distanceRows(table)};
}

std::vector<PageTree> treesOf(const TableSettings& settings) {
    std::vector<PageTree> trees;
    if (settings.families != nullptr) {
        const std::vector<double>& distances = settings.families->distances;
        trees.push_back({"the families", textIfThere(settings.folder + "tree.nwk"),
                         distances.empty() ? "" : distanceRows(distances), true});
    }
    if (isLocalTreeDrawn()) trees.push_back(treeOf(listTree, "all matching", listTreeStem(settings) + ".nwk"));
    if (isGlobalTreeDrawn()) {
        trees.push_back(treeOf(globalTree, "matching across data sets", settings.folder + "tree_global.nwk"));
    }
    return trees;
}

}  // namespace

PageFiles pageFilesOf(const fs::path& home) {
    const char* libraries = std::getenv("VARNOLIX_LIBRARIES");
    return {home / "tools" / "page", libraries != nullptr ? libraries : "/usr/share"};
}

void writePage(const JobSources& sources, const JobSignificance& significance, const std::vector<SkippedMotif>& skipped,
               const RecordedJob& job, const TableSettings& settings, const PageFiles& files,
               const std::string& jobName) {
    const double begin = omp_get_wtime();
    const JobRecord record = recordOf(job, settings);
    const PageContent content{jobName,        record,       skipped,           significance,
                              settings.mostQ, leftMerged(), treesOf(settings), settings.families};
    const std::string json = pageData(content, leftResults(sources));
    writeFile(fs::path(settings.folder) / pageName,
              joinedPage(files, {{"title", escapeHTML(validUtf8(jobName))}, {"data", scriptSafeJson(json)}}));
    stageTimes.push_back({"page", omp_get_wtime() - begin});
}

}  // namespace varnolix::job
