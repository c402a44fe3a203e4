#include "report/page/html_text.h"

#include "report/page/logo_names.h"
#include "run/shared_records.h"

namespace varnolix {

std::string escapeHTML(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string cell(std::string_view content) {
    return "<td><font size = '2'>\n" + std::string(content) + "\n</font></td>\n";
}

std::string cellLeftOpen(std::string_view content) {
    return "<td><font size = '2'>\n" + std::string(content) + "\n</td>\n";
}

std::string headCell(std::string_view content) {
    return "<td><b><font size = '2'>\n" + std::string(content) + "\n</font></b></td>\n";
}

std::string tableRow(std::string_view cells) {
    return "<tr>\n" + std::string(cells) + "</tr>\n";
}

std::string labelledRow(std::string_view label, std::string_view value) {
    return tableRow(cell(label) + cell(value));
}

std::string logoRow(char letter, int number) {
    std::string cells;
    for (const LogoStrand strand : {LogoStrand::original, LogoStrand::reverseComplement}) {
        cells += "<td>\n<img src = '" + escapeHTML(logoFolderName() + "/" + logoName(letter, number, strand)) + "'\n";
        cells += "name = 'Image" + std::string(strandSuffix(strand)) + std::to_string(number) +
                 "' align = 'left' width = '350' height = '100' border = '0'> \n</td>\n";
    }
    return tableRow(cells);
}

}  // namespace varnolix
