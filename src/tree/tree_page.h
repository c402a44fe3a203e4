#pragma once

#include "report/report_file.h"

// The pages that show the tree images.

namespace varnolix {

/// The box with a tree's image, which lies beside the page.
std::string treeBox(const char* title, const char* image);

/// The box that stands in for the tree across files where there is one motif file.
std::string singleFileBox();

/// Appends the box to the page.
void writeTreeBox(const ReportFile& page, const std::string& box);

/// Appends the footer.
void writeTreeFooter(const ReportFile& page);

}  // namespace varnolix
