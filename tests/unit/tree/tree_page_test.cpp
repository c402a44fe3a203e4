#include "tree/tree_page.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/run_fixture.h"
#include "tree/tree_plot.h"

namespace varnolix {
namespace {

TEST(TreePlot, PathsStandInQuotesOfR) {
    const std::string script = plotScript("/a/o'clock/t.csv", "/a/i.png");
    EXPECT_NE(script.find("tb = read.csv('/a/o\\'clock/t.csv', row.names = 1)\n"), std::string::npos);
    EXPECT_NE(script.find("png('/a/i.png', width=700, height=700)\n"), std::string::npos);
}

TEST(TreePlot, ScriptHasFifteenLines) {
    const std::string script = plotScript("t.csv", "i.png");
    EXPECT_EQ(std::count(script.begin(), script.end(), '\n'), 15);
}

class TreePageTest : public testing::FolderTest {};

TEST_F(TreePageTest, BoxesFollowEachOtherOnTheClosedPage) {
    outputPhylogeneticTreeHTMLFileLocation = folder() + "tree.html";
    writeTreeBox(reports::tree, treeBox("Title", "image.png"));
    writeTreeBox(reports::tree, singleFileBox());
    EXPECT_FALSE(myPhylogeneticTreeFile.is_open());
    EXPECT_EQ(read("tree.html"),
              "<div class = 'boxed'>\n<b class='sansserif'><font size='2'> Title </font></b>\n<br>\n"
              "<img src = 'image.png' style='width:660px;height:660px' >\n</div>\n"
              "<div class = 'boxed'>\n<font size='2' class='sansserif'> There is no phylogenetic tree for global "
              "significant motifs and their best matches for 1 motif file. </font>\n<br><br>\n</div>\n");
}

}  // namespace
}  // namespace varnolix
