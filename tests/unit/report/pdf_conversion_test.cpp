#include "report/pdf_conversion.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace varnolix
