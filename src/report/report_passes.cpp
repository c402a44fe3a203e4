#include "report/report_passes.h"

#include "report/page/html_text.h"
#include "report/text/motif_text.h"
#include "report/text/text_frame.h"
#include "run/record_fields.h"
#include "run/settings.h"

namespace varnolix {

namespace {

constexpr const char* motifTitleEnd = " (Highest to Lowest) ";

std::string betweenStars(std::size_t before, const std::string& title, std::size_t after) {
    return std::string(before, '*') + title + std::string(after, '*') + "\n\n";
}

std::string sectionHeading(const ReportWalk& walk, PassForm form) {
    if (form == PassForm::page) {
        return "</div>\n<div class = 'boxed'>\n<h3 class='sansserif'>" + walk.sectionTitle + "</h3>\n";
    }
    return betweenStars(walk.starsBefore, walk.sectionTitle, walk.starsAfter);
}

std::string noteLine(PassForm form) {
    const std::string note = singleFileNote;
    if (form == PassForm::page) return "<p class='sansserif'><font size = '2'> " + note + " </font></p>\n";
    return note + "\n";
}

/// The three items that identify a motif at the top of its block.
struct MotifLabels {
    std::string dataset;
    std::string id;
    std::string name;
};

MotifLabels labelsOf(const data& motif) {
    return {"Dataset #: " + std::to_string(motif.datasetNum), "Motif ID: " + std::to_string(motif.matrixID),
            "Motif name: " + motif.motifName};
}

std::string textMotifBlock(const data& motif, const ReportWalk& walk, PassForm form) {
    const MotifLabels labels = labelsOf(motif);
    const std::string head = labels.dataset + "\t\t" + labels.id + "\t\t" + labels.name;
    if (form == PassForm::brief) {
        return head + "\t\tConsensus sequence (original motif): " + motif.consensus +
               "\t\tConsensus sequence (reverse complement motif): " + motif.revCompConsensus + "\n\n\n\n";
    }
    return head + "\n\n" + matrixBlock(motif, walk.reverseTitle) + "\n\n";
}

std::string pageMotifBlock(const data& motif) {
    const MotifLabels labels = labelsOf(motif);
    std::string text =
        "<table class='sansserif' width='900' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
        "<col width= '170'>\n<col width= '150'>\n<col width= '600'>\n<tr>\n";
    for (const std::string& label : {labels.dataset, labels.id, labels.name}) {
        text += "<td><b>\n" + escapeHTML(label) + "\n</b></td>\n";
    }
    text +=
        "</tr>\n</table>\n<p>\n"
        "<table class='sansserif' width='1200' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
        "<col width= '600'>\n<col width= '600'>\n";
    text += tableRow(cell("Original motif") + cell("Reverse complement motif")) +
            tableRow(cell("Consensus sequence: " + motif.consensus) +
                     cell("Consensus sequence: " + motif.revCompConsensus)) +
            tableRow("<td></td>\n<td></td>\n") + logoRow('M', motif.matrixID);
    return text + "</table>\n</p>\n";
}

std::string motifHeading(const ReportWalk& walk, PassForm form, int id) {
    const std::string title = walk.motifTitle + std::to_string(id) + motifTitleEnd;
    if (form == PassForm::page) return "<p class='sansserif'>\n<b>" + title + "</b>\n</p>\n";
    const std::size_t stars = form == PassForm::brief ? walk.briefMotifStars : walk.motifStars;
    return betweenStars(stars, title, stars);
}

}  // namespace

void writePass(const ReportWalk& walk, const ReportPass& pass) {
    const bool isPage = pass.form == PassForm::page;
    appendToReport(pass.report, sectionHeading(walk, pass.form) + (walk.isSingleFileNote ? noteLine(pass.form) : ""));
    if (walk.isSingleFileNote) return;
    for (const int id : walk.motifs) {
        const data& motif = motifOf(walk.inputMotifs, id);
        // Unlike the matrices of its matches, the motif's own matrices do not change the notation of the stream.
        appendToReport(pass.report, (isPage ? pageMotifBlock(motif) : textMotifBlock(motif, walk, pass.form)) +
                                        motifHeading(walk, pass.form, id));
        pass.write(walk.bestMatches[static_cast<std::size_t>(id - 1)], walk.mode, id);
    }
}

void keepRankedLists(const ReportWalk& walk) {
    if (!keepsRankedLists || walk.isSingleFileNote) return;
    for (const int id : walk.motifs) {
        rankedLists.push_back({walk.list, id, walk.bestMatches[static_cast<std::size_t>(id - 1)]});
    }
}

std::vector<ReportPass> passesForFormat(std::initializer_list<ReportPass> passes) {
    std::vector<ReportPass> asked;
    for (const ReportPass& pass : passes) {
        if (pass.form == PassForm::page ? writesPages() : writesText()) asked.push_back(pass);
    }
    return asked;
}

}  // namespace varnolix
