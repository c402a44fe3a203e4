#pragma once

#include "report/report_file.h"

// The result records of the pages: a table of labels and values, a drawing of the alignment, and the logos.

namespace varnolix {

/// The kinds of result pages. Both pages about a reference collection are of the same kind.
enum class PageKind { motifs, globalMatching, collection };

/// Appends the matches of the motif with this id to the page. Against a collection, records that do not store the motif
/// first are skipped. Modes other than 2 and 3, and ids below 1, print nothing.
void writeResultPageList(const ReportFile& page, PageKind kind, const std::vector<dataCombinedScore>& list, int mode,
                         long id);

}  // namespace varnolix
