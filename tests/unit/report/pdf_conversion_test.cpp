#include "report/pdf_conversion.h"

#include <filesystem>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

TEST(ConversionScript, StandsLineByLine) {
    EXPECT_EQ(conversionScript("/home/a", "/home/a/result/J_1_HTML_Results.html"),
              "<?php\n"
              "require '/home/a/prince.php';\n"
              "$prince = new Prince('/usr/local/bin/prince');\n"
              "if(!$prince) die('Cannot instantiate Prince.');\n"
              "$prince->setHTML(TRUE);\n"
              "$prince->setLog('prince.log');\n"
              "$xmlPath = '/home/a/result/J_1_HTML_Results.html';\n"
              "$msgs = array();\n"
              "$convert = $prince->convert_file($xmlPath, $msgs);\n"
              "if(!$convert)\n"
              "{\n"
              "echo 'nothing converted';\n"
              "var_dump($msgs);\n"
              "}\n"
              "?>\n");
}

TEST(ConversionScript, ApostrophesAndBackslashesAreEscaped) {
    const std::string script = conversionScript("/o'neill", "/a\\b/page.html");
    EXPECT_NE(script.find("require '/o\\'neill/prince.php';\n"), std::string::npos);
    EXPECT_NE(script.find("$xmlPath = '/a\\\\b/page.html';\n"), std::string::npos);
}

constexpr const char* smallPDF =
    "%PDF-1.4\n1 0 obj<</Type/Catalog>>endobj\nxref\n0 2\ntrailer<</Root 1 0 R>>\nstartxref\n9\n%%EOF";

class PDFTest : public testing::FolderTest {
  protected:
    /// Whether a file of this content counts as a whole PDF.
    bool isWhole(const std::string& content) {
        write("a.pdf", content);
        return isWholePDF(folder() + "a.pdf");
    }
};

TEST_F(PDFTest, WholeOneHasHeaderAndEnd) {
    EXPECT_TRUE(isWhole(smallPDF));
}

TEST_F(PDFTest, WhiteSpaceMayFollowTheEnd) {
    EXPECT_TRUE(isWhole(smallPDF + std::string("\n")));
    EXPECT_TRUE(isWhole(smallPDF + std::string("\r\n \t\f\0\n", 7)));
}

TEST_F(PDFTest, LongOneIsWholeByItsEnd) {
    const std::string comment(100000, '%');
    EXPECT_TRUE(isWhole("%PDF-1.7\n" + comment + "\n%%EOF\n"));
    EXPECT_FALSE(isWhole("%PDF-1.7\n%%EOF\n" + comment));
}

TEST_F(PDFTest, MissingAndEmptyOnesAreNotWhole) {
    EXPECT_FALSE(isWholePDF(folder() + "missing.pdf"));
    EXPECT_FALSE(isWhole(""));
    EXPECT_FALSE(isWhole("\n"));
}

TEST_F(PDFTest, CutOneIsNotWhole) {
    const std::string text = smallPDF;
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(isWhole(text.substr(0, length))) << length;
    }
}

TEST_F(PDFTest, OtherFilesAreNotWhole) {
    EXPECT_FALSE(isWhole("<html>%%EOF"));
    EXPECT_FALSE(isWhole("\n%PDF-1.4\n%%EOF"));
    EXPECT_FALSE(isWholePDF(folder()));
}

TEST_F(PDFTest, OnlyAWholeOneTakesThePlaceOfThePage) {
    // No php5 is on the path, so the PDF is the one that stood there.
    outputPath = folder();
    jobID = "J_1_";
    outputFileFormat = "PDF";
    for (const bool isWholeOne : {false, true}) {
        const std::string text = smallPDF;
        write("J_1_P.html", "<html>");
        write("J_1_P.pdf", isWholeOne ? text : text.substr(0, text.size() / 2));
        const std::string path = getenv("PATH");
        setenv("PATH", folder().c_str(), 1);
        ::testing::internal::CaptureStderr();
        convertPage("P");
        ::testing::internal::GetCapturedStderr();
        setenv("PATH", path.c_str(), 1);
        EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_P.html"));
        EXPECT_EQ(std::filesystem::exists(folder() + "J_1_P.html.unconverted"), !isWholeOne);
        std::filesystem::remove(folder() + "J_1_P.html.unconverted");
    }
}

}  // namespace
}  // namespace varnolix
