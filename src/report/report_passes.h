#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "report/report_file.h"

// The passes that fill the reports. A pass writes one section of one report: the section heading, and then for each
// motif its block, its heading and its best matches. writePass() writes every section of every report; what differs is
// in the tables below.

namespace varnolix {

/// A walk over ranked motifs, with the headings that it prints.
struct ReportWalk {
    ListKind list;
    std::string sectionTitle;  ///< including its blanks; printed as it is in a page, between stars in a text
    std::size_t starsBefore;
    std::size_t starsAfter;
    std::string motifTitle;  ///< the part before the motif's id
    std::size_t motifStars;
    std::size_t briefMotifStars;  ///< the same for the report without matrices
    const char* reverseTitle;     ///< above the second matrix of a motif
    int mode;                     ///< passed to the list writers, see result_text.h
    const std::vector<data>& inputMotifs;
    const RecordLists& bestMatches;  ///< of all input motifs
    std::vector<int> motifs;         ///< ids of those to print, in the order of the walk
    bool isSingleFileNote;           ///< there is only one motif file: print a note instead of motifs
};

enum class PassForm { text, brief, page };

/// One of the reports that a walk is written to.
struct ReportPass {
    const ReportFile& report;
    PassForm form;
    void (*write)(const std::vector<dataCombinedScore>& list, int mode, long id);
};

/// Appends the walk's section to one report. The heading, each motif block and each list of matches opens the report
/// and closes it again.
void writePass(const ReportWalk& walk, const ReportPass& pass);

/// The pass that keeps instead of writing: appends the walk's motifs with their matches to rankedLists, if the job
/// keeps them.
void keepRankedLists(const ReportWalk& walk);

/// Those passes that the output format asks for, in the order given.
std::vector<ReportPass> passesForFormat(std::initializer_list<ReportPass> passes);

}  // namespace varnolix
