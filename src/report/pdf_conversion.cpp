#include "report/pdf_conversion.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>

#include "run/run_text.h"
#include "run/shared_records.h"
#include "run/system/output_file.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"

namespace varnolix {

namespace {

/// The end of a PDF, with room for the white space that may follow it.
constexpr std::streamoff lengthOfEnd = 1024;

/// Leaves only the PDF, or keeps the page where there is no whole one.
void setPageAside(const std::string& page, const std::string& pdf) {
    if (isWholePDF(pdf)) {
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

bool isWholePDF(const std::string& path) {
    constexpr std::string_view header = "%PDF-";
    constexpr std::string_view footer = "%%EOF";
    // White space is what a PDF takes for it, with the zero byte.
    constexpr std::string_view whiteSpace("\0\t\n\f\r ", 6);
    std::ifstream stream(path, std::ios_base::in | std::ios_base::binary);
    std::string first(header.size(), '\0');
    if (!stream.read(first.data(), static_cast<std::streamsize>(first.size())) || first != header) return false;
    stream.seekg(0, std::ios_base::end);
    const std::streamoff size = stream.tellg();
    stream.seekg(std::max<std::streamoff>(0, size - lengthOfEnd));
    std::string end{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    end.erase(end.find_last_not_of(whiteSpace) + 1);
    return end.ends_with(footer);
}

void convertPage(const std::string& baseName) {
    const std::string stem = outputPath + jobID + baseName;
    const std::string script = stem + ".php";
    const std::string page = stem + ".html";
    const std::string pdf = stem + ".pdf";
    ToolWork work({script});
    std::ofstream stream;
    openOutput(stream, script);
    stream << conversionScript(getCurrentDirectory(), page);
    closeOutput(stream, script);
    refuseLink(pdf);
    // What the script prints goes to the same console as our own text.
    std::cout << std::flush;
    work.run("php5 " + shellWord(script), pdf);
    std::remove(script.c_str());
    if (outputFileFormat == "PDF") setPageAside(page, pdf);
}

}  // namespace varnolix
