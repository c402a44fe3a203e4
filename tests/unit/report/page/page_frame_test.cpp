#include "report/page/page_frame.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <sstream>

#include "report/stages.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string twoCells(const std::string& label, const std::string& value) {
    return "<tr>\n<td><font size = '2'>\n" + label + "\n</font></td>\n<td><font size = '2'>\n" + value +
           "\n</font></td>\n</tr>\n";
}

class PageFrameTest : public testing::FolderTest {
  protected:
    PageFrameTest() {
        outputPath = folder();
        nameOutputFiles();
        numFile = 1;
        numTopMotif = 10;
        numBestMatches = 5;
        simCutoff = 0.75;
        DBName = "N";
        motifCluster = "Y";
        combinedMotifFlag = "N";
        outputFileType = "All";
        outputFileFormat = "HTML";
        FileNameType = {{"a&b.txt", 4, 12, 1}};
        wtime = 1.5;
    }

    static std::string header(PageStyle style) {
        const std::ostringstream stream;
        return pageHeader(stream, style);
    }
};

TEST_F(PageFrameTest, HeaderStandsLineByLine) {
    EXPECT_EQ(header(PageStyle::motifs),
              "<html>\n"
              "<head>\n"
              "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\" />\n"
              "<title>VARNOLIX Results</title>\n"
              "<style type = 'text/css'>\n"
              ".boxed {<br>&nbsp;&nbsp; border: 2px solid #B0B0B0 ; padding: 7px;<br>}\n"
              ".sansserif {font-family: Verdana}\n"
              ".textshadow {text-shadow: 1px 1px 1px #333;}\n"
              "html{-webkit-font-smoothing: antialiased;}\n"
              "@media print{@page {size: landscape}}\n"
              "@page { @bottom-right { content: 'Page ' counter(page) ' of ' counter(pages); } }\n"
              "</style>\n"
              "</head>\n"
              "<body>\n"
              "<h1 class='sansserif' style='text-shadow: 2px 2px 2px #999'> VARNOLIX - Matrix Kinship Finder </h1>\n"
              "<p><b class='sansserif'>Version 2.1 </b></p>\n"
              "<div><h3 class='sansserif'> INPUT </h3></div>\n"
              "<div class = 'boxed'>\n"
              "<b class='sansserif'><font size = '2'>\n"
              "Input Parameters \n"
              "</font></b>\n"
              "<table class='sansserif' width = '600' border = '0' cellSpacing = '1' cellPadding = '1'>\n"
              "<col width= '300'>\n" +
                  twoCells("Number of files: ", "1") + twoCells("Number of top significant motifs: ", "10") +
                  twoCells("Number of best matches: ", "5") + twoCells("Similarity cutoff >= ", "0.75") +
                  twoCells("Phylogenetic tree: ", "Yes") + twoCells("Combined similar motifs: ", "No") +
                  twoCells("Output file type: ", "All") + twoCells("Output file format: ", "HTML") +
                  "</table>\n"
                  "<br>\n"
                  "<b class='sansserif' ><font size = '2'> Input files and motif counts </font></b>\n"
                  "<table class='sansserif' width='700' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                  "<col width= '450'>\n"
                  "<col width= '150'>\n"
                  "<tr>\n"
                  "<td><b><font size = '2'>\nFile name\n</font></b></td>\n"
                  "<td><b><font size = '2'>\nCount of motifs\n</font></b></td>\n"
                  "<td><b><font size = '2'>\nDataset number \n</font></b></td>\n"
                  "</tr>\n"
                  "<tr>\n"
                  "<td><font size = '2'>\na&amp;b.txt\n</font></td>\n"
                  "<td><font size = '2'>\n12\n</font></td>\n"
                  "<td><font size = '2'>\n1\n</font></td>\n"
                  "</tr>\n"
                  "</table>\n"
                  "</div>\n"
                  "<br>\n"
                  "<h3 class='sansserif'> RESULTS </h3>\n");
}

TEST_F(PageFrameTest, OtherHeadersDifferInTwoPlaces) {
    std::string expected = header(PageStyle::motifs);
    const std::string shadow = ".textshadow {text-shadow: 1px 1px 1px #333;}\n";
    expected.erase(expected.find(shadow), shadow.size());
    const std::string blank = "<b class='sansserif' >";
    expected.replace(expected.find(blank), blank.size(), "<b class='sansserif'>");
    EXPECT_EQ(header(PageStyle::others), expected);
}

TEST_F(PageFrameTest, CollectionHasARowOfItsOwn) {
    DBName = "jasparAll";
    EXPECT_THAT(header(PageStyle::others), HasSubstr(twoCells("Similarity cutoff >= ", "0.75") +
                                                     twoCells("Matching motif database: ", "Jaspar Core") +
                                                     twoCells("Phylogenetic tree: ", "Yes")));
    DBName = "N";
    EXPECT_THAT(header(PageStyle::others), Not(HasSubstr("database")));
}

TEST_F(PageFrameTest, FooterClosesTheBoxAndThePage) {
    const std::ostringstream stream;
    const std::string footer = pageFooter(stream);
    EXPECT_THAT(footer, ::testing::MatchesRegex(
                            "</div>\n<p class='sansserif'>\n"
                            "<font size = '2' >\nResults created by VARNOLIX on [-0-9]+ [:0-9]+\n</font>\n<br>\n"
                            "<font size = '2' >\nRuntime: 1\\.5 seconds\n</font>\n</p>\n"
                            "<p class='sansserif'>\n<font size = '2' >\nVARNOLIX is written by Hadrel Quonsett\n"
                            "</font>\n<br>\n<font size = '2' >\n"
                            "Motif logo generated by <a href='[^']+' target ='_blank'> weblogo</a>\n"
                            "</font>\n</p>\n</body>\n</html>\n"));
}

struct Frame {
    void (*header)();
    void (*footer)();
    PageStyle style;
    const char* file;
};

TEST_F(PageFrameTest, EveryPageHasHeaderAndFooter) {
    for (const Frame& frame :
         {Frame{writeHeaderHTMLOrPDF, writeFooterHTMLOrPDF, PageStyle::motifs, "HTML_Results.html"},
          {writeHeaderGlobalHTMLOrPDF, writeFooterGlobalHTMLOrPDF, PageStyle::others,
           "HTML_Global_Matching_Results.html"},
          {writeHeaderHTMLOrPDFDatabaseMatch, writeFooterHTMLOrPDFDatabaseMatch, PageStyle::others,
           "HTML_Results_Database_Matching.html"},
          {writeHeaderGlobalHTMLOrPDFDatabaseMatch, writeFooterGlobalHTMLOrPDFDatabaseMatch, PageStyle::others,
           "HTML_Results_Database_Matching_Global_Matching.html"}}) {
        write(frame.file, "an earlier page");
        // The names already contain the job's identity, which is empty here.
        frame.header();
        EXPECT_EQ(read(frame.file), header(frame.style)) << frame.file;
        frame.footer();
        EXPECT_EQ(read(frame.file).substr(0, header(frame.style).size()), header(frame.style));
        EXPECT_THAT(read(frame.file), ::testing::EndsWith("</body>\n</html>\n"));
    }
}

using PageFrameDeathTest = PageFrameTest;

TEST_F(PageFrameDeathTest, MissingFolderEndsTheRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    outputHTMLFileLocation = folder() + "missing/page.html";
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            writeHeaderHTMLOrPDF();
        },
        ::testing::ExitedWithCode(1), "Invalid output path or output filename.$");
}

}  // namespace
}  // namespace varnolix
