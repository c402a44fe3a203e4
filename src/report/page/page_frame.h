#pragma once

#include "report/report_file.h"

// The frame of the pages: head, style, banner, input parameters and file table in front, time stamp, run time and
// credits behind. All result pages and tree pages share it.

namespace varnolix {

/// The page of the motif-against-motif results has a style rule more than the others, and a blank in its files line.
/// The tree pages follow it.
enum class PageStyle { motifs, others };

std::string pageHeader(const std::ios_base& stream, PageStyle style);
/// The end of the last box, time stamp, run time and credits.
std::string pageFooter(const std::ios_base& stream);

/// Empties the page's file and writes the header.
void writePageHeader(const ReportFile& page, PageStyle style);
/// Appends the footer.
void writePageFooter(const ReportFile& page);

}  // namespace varnolix
