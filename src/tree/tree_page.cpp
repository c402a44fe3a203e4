#include "tree/tree_page.h"

#include "report/text/text_columns.h"
#include "run/run_text.h"

namespace varnolix {

std::string treeBox(const char* title, const char* image) {
    return std::string("<div class = 'boxed'>\n<b class='sansserif'><font size='2'> ") + title +
           " </font></b>\n<br>\n<img src = '" + image + "' style='width:660px;height:660px' >\n</div>\n";
}

std::string singleFileBox() {
    return "<div class = 'boxed'>\n<font size='2' class='sansserif'> There is no phylogenetic tree for global "
           "significant "
           "motifs and their best matches for 1 motif file. </font>\n<br><br>\n</div>\n";
}

void writeTreeBox(const ReportFile& page, const std::string& box) {
    appendToReport(page, box);
}

void writeTreeFooter(const ReportFile& page) {
    AppendingReport open(page);
    open.stream() << "<p class='sansserif'>\n<font size = '2' >\nResults created by VARNOLIX on " << getCurrDateTime()
                  << "\n<br>\nRuntime: " << numberLike(open.stream(), wtime)
                  << " seconds\n<br>\nVARNOLIX is written by Hadrel Quonsett\n</font>\n</p>\n</body>\n</html>\n";
}

}  // namespace varnolix
