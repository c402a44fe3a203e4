#include "report/pdf_conversion.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "run/outside_text.h"
#include "run/run_text.h"
#include "run/shared_records.h"

namespace varnolix {

namespace {

/// Leaves only the PDF, or keeps the page where there is none.
void setPageAside(const std::string& page, const std::string& pdf) {
    std::error_code error;
    if (std::filesystem::file_size(pdf, error) > 0 && !error) {
        std::remove(page.c_str());
    } else {
        std::rename(page.c_str(), (page + ".unconverted").c_str());
    }
}

}  // namespace

std::string conversionScript(const std::string& folder, const std::string& page) {
    return "<?php\nrequire '" + insideQuotes(folder) +
           "/prince.php';\n"
           "$prince = new Prince('/usr/local/bin/prince');\n"
           "if(!$prince) die('Cannot instantiate Prince.');\n"
           "$prince->setHTML(TRUE);\n"
           "$prince->setLog('prince.log');\n"
           "$xmlPath = '" +
           insideQuotes(page) +
           "';\n"
           "$msgs = array();\n"
           "$convert = $prince->convert_file($xmlPath, $msgs);\n"
           "if(!$convert)\n{\necho 'nothing converted';\nvar_dump($msgs);\n}\n?>\n";
}

void convertPage(const std::string& baseName) {
    const std::string stem = outputPath + jobID + baseName;
    const std::string script = stem + ".php";
    const std::string page = stem + ".html";
    {
        std::ofstream stream(script);
        stream << conversionScript(getCurrentDirectory(), page);
    }
    // What the script prints goes to the same console as our own text.
    std::cout << std::flush;
    [[maybe_unused]] const int ignored = std::system(("php5 " + shellWord(script)).c_str());
    std::remove(script.c_str());
    if (outputFileFormat == "PDF") setPageAside(page, stem + ".pdf");
}

}  // namespace varnolix
