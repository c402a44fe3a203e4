#include "job/convert_command.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <span>
#include <string_view>
#include <utility>

#include "job/downloads/information.h"
#include "job/downloads/motif_files.h"
#include "job/downloads/motif_writers.h"

namespace varnolix::job {

namespace {

constexpr const char* program = "varnolix-job: ";

using Writer = std::string (*)(std::span<const DownloadedMotif> motifs, Taxon taxon);

template <std::string (*textOfMotif)(const DownloadedMotif&, Taxon)>
std::string eachAlone(std::span<const DownloadedMotif> motifs, Taxon taxon) {
    std::string text;
    for (const DownloadedMotif& motif : motifs) text += textOfMotif(motif, taxon);
    return text;
}

template <std::string (*textOfAll)(std::span<const DownloadedMotif>)>
std::string allTogether(std::span<const DownloadedMotif> motifs, Taxon /*taxon*/) {
    return textOfAll(motifs);
}

constexpr std::array<std::pair<std::string_view, Writer>, 4> writers = {{
    {"jaspar", eachAlone<jasparText>},
    {"meme", allTogether<memeText>},
    {"transfac", eachAlone<transfacText>},
    {"tsv", allTogether<tsvText>},
}};

void noteEmptyColumns(const std::string& path, const Download& found, std::ostream& messages) {
    for (const DownloadedMotif& motif : found.motifs) {
        const std::string columns = columnsWithoutCounts(motif);
        if (columns.empty()) continue;
        messages << program << path << ':' << motif.line << ": note: motif " << motif.id
                 << " has no counts at position " << columns << '\n';
    }
}

}  // namespace

int convertMotifs(const ConvertOptions& options, std::ostream& output, std::ostream& messages) {
    const auto* const writer =
        std::find_if(writers.begin(), writers.end(), [&options](const auto& each) { return each.first == options.to; });
    if (writer == writers.end()) {
        messages << program << "no layout to write is named " << options.to << '\n';
        return 2;
    }
    std::vector<DownloadedMotif> motifs;
    bool isRefused = false;
    for (const std::string& path : options.files) {
        MotifFiles read = readMotifFiles(path);
        if (!read.reason.empty()) {
            messages << program << read.path << ": " << read.reason << '\n';
            return 1;
        }
        for (const MotifFile& file : read.files) {
            Download found =
                readDownload(file.text, file.baseName, options.layout.has_value() ? &*options.layout : nullptr);
            for (const RefusedMotif& refused : found.refused) messages << refusalLine(file.path, refused);
            isRefused = isRefused || !found.refused.empty();
            noteEmptyColumns(file.path, found, messages);
            std::move(found.motifs.begin(), found.motifs.end(), std::back_inserter(motifs));
        }
    }
    if (motifs.empty() || (isRefused && !options.skipBad)) return 1;
    output << writer->second(motifs, options.withTaxon ? Taxon::written : Taxon::leftOut) << std::flush;
    if (output) return 0;
    messages << program << "the motifs cannot be written\n";
    return 1;
}

int convertCommand(const ConvertOptions& options) {
    return convertMotifs(options, std::cout, std::cerr);
}

}  // namespace varnolix::job
