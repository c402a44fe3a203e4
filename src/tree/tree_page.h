#pragma once

#include "report/report_file.h"

// The pages that show the tree images. Their header is that of the result pages, but their footer is shorter.

namespace varnolix {

/// The box that shows a tree's image, a file in the folder of the page.
std::string treeBox(const char* title, const char* image);

/// The box that replaces the tree across files if there is only one motif file.
std::string singleFileBox();

/// Appends the box to the page.
void writeTreeBox(const ReportFile& page, const std::string& box);

/// Appends the footer.
void writeTreeFooter(const ReportFile& page);

}  // namespace varnolix
