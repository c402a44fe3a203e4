#pragma once

#include "report/report_file.h"

// The frame of the pages. The header has the style, banner, input parameters and file table; all result pages and tree
// pages share it. The footer has the time stamp, run time and credits; tree pages have one of their own
// (tree/tree_page.h).

namespace varnolix {

/// The full result page and the tree pages have one more style rule than the others, and a blank in the title of the
/// file table.
enum class PageStyle { motifs, others };

std::string pageHeader(const std::ios_base& stream, PageStyle style);
/// Closes the last box; then follow the time stamp, run time and credits.
std::string pageFooter(const std::ios_base& stream);

/// Empties the page's file and writes the header.
void writePageHeader(const ReportFile& page, PageStyle style);
/// Appends the footer.
void writePageFooter(const ReportFile& page);

}  // namespace varnolix
