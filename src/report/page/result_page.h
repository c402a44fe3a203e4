#pragma once

#include "report/report_file.h"

// The result records of the pages: a table of labels and values, the drawing of the alignment, and the logos.

namespace varnolix {

/// What differs between the four pages.
enum class PageKind { motifs, globalMatching, collection };

/// Appends the matches of the motif with this id to the page. Against a collection, records that do not store the motif
/// first are passed over.
void writeResultPageList(const ReportFile& page, PageKind kind, const std::vector<dataCombinedScore>& list, int mode,
                         long id);

}  // namespace varnolix
