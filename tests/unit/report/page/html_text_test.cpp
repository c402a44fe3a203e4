#include "report/page/html_text.h"

#include "report/page/logo_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

TEST(EscapeHTML, PlainTextIsUnchanged) {
    EXPECT_EQ(escapeHTML(""), "");
    EXPECT_EQ(escapeHTML("MA0004.1 Arnt::Ahr (var.2)"), "MA0004.1 Arnt::Ahr (var.2)");
    EXPECT_EQ(escapeHTML("\xc3\xa4\t\n"), "\xc3\xa4\t\n");
}

TEST(EscapeHTML, FiveCharactersBecomeEntities) {
    EXPECT_EQ(escapeHTML("&<>\"'"), "&amp;&lt;&gt;&quot;&#39;");
    EXPECT_EQ(escapeHTML("a&amp;b"), "a&amp;amp;b");
    EXPECT_EQ(escapeHTML("<b>'x'</b>"), "&lt;b&gt;&#39;x&#39;&lt;/b&gt;");
}

TEST(Cells, PiecesStandOnLinesOfTheirOwn) {
    EXPECT_EQ(cell("text"), "<td><font size = '2'>\ntext\n</font></td>\n");
    EXPECT_EQ(cellLeftOpen("text"), "<td><font size = '2'>\ntext\n</td>\n");
    EXPECT_EQ(headCell("text"), "<td><b><font size = '2'>\ntext\n</font></b></td>\n");
    EXPECT_EQ(tableRow("<td></td>\n"), "<tr>\n<td></td>\n</tr>\n");
    EXPECT_EQ(labelledRow("a", "b"),
              "<tr>\n<td><font size = '2'>\na\n</font></td>\n<td><font size = '2'>\nb\n</font></td>\n</tr>\n");
}

class LogoRowTest : public testing::RunTest {};

TEST_F(LogoRowTest, NamesBothPictures) {
    jobID = "J_1_";
    EXPECT_EQ(logoRow('M', 12),
              "<tr>\n"
              "<td>\n<img src = 'J_1_image/J_1_M12.jpeg'\n"
              "name = 'Image12' align = 'left' width = '350' height = '100' border = '0'> \n</td>\n"
              "<td>\n<img src = 'J_1_image/J_1_M12RevComp.jpeg'\n"
              "name = 'ImageRevComp12' align = 'left' width = '350' height = '100' border = '0'> \n</td>\n"
              "</tr>\n");
}

TEST_F(LogoRowTest, NamesOfLogoFiles) {
    jobID = "J_1_";
    EXPECT_EQ(logoFolderName(), "J_1_image");
    EXPECT_EQ(logoStem('D', 7), "J_1_D7");
    EXPECT_EQ(logoName('D', 7, LogoStrand::original), "J_1_D7.jpeg");
    EXPECT_EQ(logoName('M', 7, LogoStrand::reverseComplement), "J_1_M7RevComp.jpeg");
}

}  // namespace
}  // namespace varnolix
