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
        convertPages();
        ::testing::internal::GetCapturedStderr();
        setenv("PATH", path.c_str(), 1);
        EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_P.html"));
        EXPECT_EQ(std::filesystem::exists(folder() + "J_1_P.html.unconverted"), !isWholeOne);
        std::filesystem::remove(folder() + "J_1_P.html.unconverted");
    }
}

TEST(ConverterMemory, IsAboveWhatWasMeasured) {
    EXPECT_GT(converterMemory(33'000), 374e6);
    EXPECT_GT(converterMemory(1'063'000), 750e6);
}

TEST(ConversionsAtOnce, AreAsManyAsThreads) {
    EXPECT_EQ(conversionsAtOnce({1, 1, 1, 1, 1, 1}, 1, 100), 1);
    EXPECT_EQ(conversionsAtOnce({1, 1, 1, 1, 1, 1}, 4, 100), 4);
    EXPECT_EQ(conversionsAtOnce({1, 1}, 4, 100), 2);
}

TEST(ConversionsAtOnce, GreatestMustFitTogether) {
    EXPECT_EQ(conversionsAtOnce({1, 5, 1, 4, 1}, 4, 8.9), 1);
    EXPECT_EQ(conversionsAtOnce({1, 5, 1, 4, 1}, 4, 9), 2);
    EXPECT_EQ(conversionsAtOnce({1, 5, 1, 4, 1}, 4, 10), 3);
}

TEST(ConversionsAtOnce, OneMayAlways) {
    EXPECT_EQ(conversionsAtOnce({5, 5}, 4, 0), 1);
    EXPECT_EQ(conversionsAtOnce({}, 4, 0), 1);
}

class ConvertPagesTest : public testing::FolderTest {
  protected:
    ConvertPagesTest() {
        outputPath = folder();
        jobID = "J_1_";
        outputFileFormat = "All";
        std::filesystem::create_directory(folder() + "bin");
        setenv("PATH", (folder() + "bin:" + pathBefore_).c_str(), 1);
        std::filesystem::current_path(folder());
    }
    ~ConvertPagesTest() override {
        std::filesystem::current_path(folderBefore_);
        setenv("PATH", pathBefore_.c_str(), 1);
    }

    void installPHP(std::string_view script) {
        write("bin/php5", script);
        std::filesystem::permissions(folder() + "bin/php5", std::filesystem::perms::owner_all);
    }

    /// The same for a converter that works alongside itself.
    void installOverlappingPHP(std::string_view script) {
        installPHP(script);
        write("prince-calls-may-overlap", "");
    }

  private:
    const std::string pathBefore_ = getenv("PATH");
    const std::filesystem::path folderBefore_ = std::filesystem::current_path();
};

TEST_F(ConvertPagesTest, ConverterWithoutAPromiseRunsOnceAtATimeAndInOrder) {
    installPHP("#!/bin/sh\nmkdir scratch || echo overlap\necho ${1##*/}\nsleep 0.05\nrmdir scratch\n");
    for (const char* page : {"P_1", "P_2", "P_3"}) convertPage(page);
    omp_set_num_threads(9);
    ::testing::internal::CaptureStdout();
    convertPages();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "J_1_P_1.php\nJ_1_P_2.php\nJ_1_P_3.php\n");
}

TEST_F(ConvertPagesTest, ConverterWithAPromiseRunsOnSeveralThreads) {
    // Each call waits until the other one has begun, too, for five seconds at most.
    installOverlappingPHP(
        "#!/bin/sh\n: > ${1%.php}.begun\n"
        "for n in $(seq 500); do set -- *.begun; [ $# -gt 1 ] && break; sleep 0.01; done\necho $#\n");
    for (const char* page : {"P_1", "P_2"}) convertPage(page);
    omp_set_num_threads(2);
    ::testing::internal::CaptureStdout();
    convertPages();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "2\n2\n");
}

TEST_F(ConvertPagesTest, ConvertsWhatIsAskedAndPrintsInOrder) {
    // The first takes longest, and lines come in parts.
    installOverlappingPHP(
        "#!/bin/sh\nn=${1%.php}; n=${n##*_}; printf 'begin '; sleep 0.$((3 - n)); echo \"$n\"; echo \"e$n\" >&2\n"
        "[ -f \"$1\" ] && cp \"${1%.php}.html\" \"${1%.php}.pdf\"\n");
    for (const char* name : {"J_1_P_1.html", "J_1_P_0.html", "J_1_P_2.html", "J_1_P_3.html"}) write(name, name);
    for (const int threads : {1, 2, 3, 9}) {
        omp_set_num_threads(threads);
        for (const char* page : {"P_1", "P_2", "P_3"}) convertPage(page);
        // Tools write past the streams.
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        convertPages();
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "begin 1\nbegin 2\nbegin 3\n") << threads;
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "e1\ne2\ne3\n") << threads;
        for (const char* name : {"J_1_P_1", "J_1_P_2", "J_1_P_3"}) {
            EXPECT_EQ(read(name + std::string(".pdf")), name + std::string(".html"));
            EXPECT_FALSE(std::filesystem::exists(folder() + name + ".php"));
        }
        EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_P_0.pdf"));
    }
}

using ConvertPagesDeathTest = ConvertPagesTest;

TEST_F(ConvertPagesDeathTest, LostScriptEndsTheRunAndLeavesThePagesOfOtherThreads) {
    installOverlappingPHP("#!/bin/sh\necho half > \"${1%.php}.pdf\"; sleep 60\n");
    GTEST_FLAG_SET(death_test_style, "fast");
    outputFileFormat = "PDF";
    for (const char* name : {"J_1_P_1.html", "J_1_P_2.html"}) write(name, name);
    std::filesystem::create_directory(folder() + "J_1_P_2.php");
    for (const char* page : {"P_1", "P_2"}) convertPage(page);
    EXPECT_EXIT(
        {
            omp_set_num_threads(2);
            convertPages();
        },
        ::testing::ExitedWithCode(1), "^" + folder() + "J_1_P_2\\.php could not be written: Is a directory\\.\n$");
    EXPECT_TRUE(std::filesystem::exists(folder() + "J_1_P_1.html"));
    EXPECT_TRUE(std::filesystem::exists(folder() + "J_1_P_2.html"));
    EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_P_1.pdf"));
    EXPECT_FALSE(std::filesystem::exists(folder() + "J_1_P_1.php"));
}

}  // namespace
}  // namespace varnolix
