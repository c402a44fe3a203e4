#include "report/page/result_page.h"

#include "report/matched_motif.h"
#include "report/page/html_text.h"
#include "report/text/result_text.h"
#include "report/text/text_columns.h"

namespace varnolix {

namespace {

constexpr const char* jasparAddress = "http://jaspar.genereg.net";
constexpr const char* transfacAddress = "http://www.gene-regulation.com";
constexpr const char* uniprobeAddress = "http://the_brain.bwh.harvard.edu";

/// The part of a UniPROBE id that goes into a link to the catalogue: three characters, starting with the fifth.
std::string uniprobeNumber(const std::string& motifID) {
    return motifID.size() > 4 ? motifID.substr(4, 3) : "";
}

/// What the records of a page need besides themselves.
struct PageContext {
    PageKind kind;
    const std::vector<data>& inputMotifs;
    const std::vector<data>& matchedMotifs;  ///< the input motifs again, or the collection
    const std::string& collectionName;       ///< as in DBName

    bool isCollection() const { return kind == PageKind::collection; }
};

/// The row that names a reference motif and links to its catalogue.
std::string catalogueRow(const data& motif, std::string_view collectionName) {
    std::string label = "Motif ID:";
    std::string link;
    if (collectionName == "transfac") {
        label = "AC:";
        link = std::string(transfacAddress) + "/cgi-bin/pub/databases/transfac/getTF.cgi?" + escapeHTML(motif.motifID);
    } else if (collectionName.starts_with("uniprobe")) {
        link =
            std::string(uniprobeAddress) + "/uniprobe/detailsDef.php?id=" + escapeHTML(uniprobeNumber(motif.motifID));
    } else {
        link = std::string(jasparAddress) +
               "/cgi-bin/jaspar_db.pl?rm=present&collection=CORE&ID=" + escapeHTML(motif.motifID);
    }
    return tableRow(cell(label) + "<td><font size = '2'>\n<a href='" + link + "' target ='_blank'>" +
                    escapeHTML(motif.motifID) + "</a></font></td>\n");
}

std::string matchRows(const dataCombinedScore& record, const data& motif, const PageContext& context,
                      const std::string& score) {
    const bool isReference = context.isCollection();
    std::string rows = isReference ? catalogueRow(motif, context.collectionName)
                                   : labelledRow("Dataset #:", std::to_string(motif.datasetNum)) +
                                         labelledRow("Motif ID:", std::to_string(motif.matrixID));
    // Each of these two rows leaves a font element open. Whoever parses the pages relies on the cells as they are.
    rows += tableRow(cellLeftOpen("Motif name:") + cell(escapeHTML(motif.motifName)));
    if (isReference)
        rows += labelledRow(std::string(taxonLabel(context.collectionName)) + ":", escapeHTML(motif.taxon));
    rows += tableRow(cell("Matching format of first motif:") + cellLeftOpen(formatText(record.matchingFormat1)));
    return rows + labelledRow("Matching format of second motif:", formatText(record.matchingFormat2)) +
           labelledRow("Direction:", directionText(record.direction)) +
           labelledRow("Position number:", std::to_string(record.position)) +
           labelledRow("Number of overlap:", std::to_string(record.overlap)) + labelledRow("Similarity score:", score);
}

std::string consensusCell(const char* title, const std::string& consensus) {
    return cell(std::string(title) + "\n&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;\nConsensus sequence: " + consensus);
}

std::string drawingLine(const std::string& line) {
    return "<font face = 'Courier New'>\n" + line + "\n</font>\n";
}

std::string matchMarkup(const dataCombinedScore& record, long id, const PageContext& context,
                        const std::string& score) {
    const bool isReference = context.isCollection();
    const MatchedMotif match = matchedMotif(record, id, context.inputMotifs, context.matchedMotifs);
    const bool isSpacedLabel = context.kind == PageKind::globalMatching && record.direction == Direction::backward;
    std::string text =
        isReference ? "<table class='sansserif' width='1000' cellpadding='0' cellspacing='0' >\n"
                      "<col width= '300'>\n<col width= '700'>\n"
                    : "<table class='sansserif' width='600' cellpadding='0' cellspacing='0' >\n<col width= '300'>\n";
    text += matchRows(record, match.motif, context, score) + "</table>\n<br>\n";
    text += isSpacedLabel ? "<font face='Arial' size = '2'>\n" : "<font face='Arial' size='2'>\n";
    text += "Alignment:\n</font>\n<br>\n" + drawingLine(match.lines.other) + "<br>\n" + drawingLine(match.lines.own);
    text += "<p>\n";
    text += isReference ? "<table class='sansserif' width='1200' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                          "<col width= '600'>\n"
                        : "<table class='sansserif' width='1000' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                          "<col width= '500'>\n";
    text += tableRow(consensusCell("Original motif", match.motif.consensus) +
                     consensusCell("Reverse complement motif", match.motif.revCompConsensus)) +
            tableRow("<td></td>\n") + logoRow(isReference ? 'D' : 'M', match.motif.matrixID);
    return text + "</table>\n</p>\n<hr>\n";
}

}  // namespace

void writeResultPageList(const ReportFile& page, PageKind kind, const std::vector<dataCombinedScore>& list, int mode,
                         long id) {
    const PageContext context{kind, Datasets, kind == PageKind::collection ? DatabaseDatasets : Datasets, DBName};
    AppendingReport open(page);
    if ((mode != topMode && mode != eachMotifMode) || id <= 0) return;
    std::string text;
    for (const dataCombinedScore& record : list) {
        if (context.isCollection() && !isPrintedOfCollection(record, id)) continue;
        text += matchMarkup(record, id, context, numberLike(open.stream(), record.combinedScore));
        flushWhenLarge(open.stream(), text);
    }
    open.stream() << text;
}

}  // namespace varnolix
