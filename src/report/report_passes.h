#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "report/report_file.h"

// The passes that fill the reports: a section heading, then for each motif of a walk its block, its heading and its
// best matches. Every section of every report, text or page, is written by writePass; the walks and reports differ by
// their tables.

namespace varnolix {

/// One walk over ranked motifs, and the headings it writes.
struct ReportWalk {
    std::string sectionTitle;  ///< with its blanks; a page shows it as it is, a text report between stars
    std::size_t starsBefore;
    std::size_t starsAfter;
    std::string motifTitle;  ///< up to the motif's id
    std::size_t motifStars;
    std::size_t briefMotifStars;  ///< the same in the report without matrices
    const char* reverseTitle;     ///< above the second matrix of a motif
    int mode;                     ///< of the list writers
    const RecordLists& bestMatches;
    std::vector<int> motifs;  ///< ids, in the order of the walk
    bool isSingleFileNote;    ///< one motif file: the walk has nothing to walk, and a note says so
};

enum class PassForm { text, brief, page };

/// One report of a walk.
struct ReportPass {
    const ReportFile& report;
    PassForm form;
    void (*write)(const std::vector<dataCombinedScore>& list, int mode, long id);
};

/// Writes the walk's section into one report.
void writePass(const ReportWalk& walk, const ReportPass& pass);

/// The passes that the output format asks for, text ones first.
std::vector<ReportPass> passesForFormat(std::initializer_list<ReportPass> passes);

}  // namespace varnolix
