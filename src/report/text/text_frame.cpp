#include "report/text/text_frame.h"

#include "report/text/file_table.h"
#include "report/text/text_columns.h"
#include "run/collections.h"
#include "run/run_text.h"

namespace varnolix {

namespace {

constexpr std::size_t nameColumnMargin = 10;

std::string starRule() {
    return std::string(ruleWidth, '*') + "\n";
}

}  // namespace

std::string textHeader(const std::ios_base& stream) {
    const Collection* collection = findCollection(DBName);
    std::string text = starRule() + bannerText() + "\n" + starRule() + "INPUT\n" + starRule() + "\n";
    text += "Input Parameters \n";
    text += "Number of files: " + std::to_string(numFile) + "\n";
    text += "Number of top significant motifs: " + std::to_string(numTopMotif) + "\n";
    text += "Number of best matches: " + std::to_string(numBestMatches) + "\n";
    text += "Similarity cutoff: >= " + numberLike(stream, simCutoff) + "\n";
    text += "Matching motif database: ";
    text += collection != nullptr ? collection->reportLabel : "None";
    text += "\n";
    text += std::string("Phylogenetic tree: ") + yesOrNo(motifCluster) + "\n";
    text += std::string("Combined similar motifs: ") + yesOrNo(combinedMotifFlag) + "\n";
    text += "Output file type: " + outputFileType + "\n";
    text += "Output file format: " + outputFileFormat + "\n\n";
    text += "Input files and motif counts\n";
    text += fileTable(FileNameType, "File name", "Count of motifs", longestFileName(FileNameType) + nameColumnMargin);
    return text + "\n" + starRule() + "RESULTS\n" + starRule() + "\n";
}

std::string textFooter(const std::ios_base& stream) {
    return "\nResults created by VARNOLIX on " + getCurrDateTime() + "\nRuntime: " + numberLike(stream, wtime) +
           " seconds\n\nVARNOLIX is written by Hadrel Quonsett\n";
}

void writeTextHeader(const ReportFile& report) {
    startReport(report, textHeader(report.stream));
}

void writeTextFooter(const ReportFile& report) {
    appendToReport(report, textFooter(report.stream));
}

}  // namespace varnolix
