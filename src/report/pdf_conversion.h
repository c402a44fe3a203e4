#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "run/shared_records.h"
#include "run/system/output_file.h"
#include "run/system/outside_tool.h"

// PDF files, made of finished pages by Prince through a small PHP script that is written, run and removed.

namespace varnolix {

/// The pages, by their names without the job's identity and without ".html".
namespace pages {
inline constexpr const char* global = "HTML_Global_Matching_Results";
inline constexpr const char* databaseGlobal = "HTML_Results_Database_Matching_Global_Matching";
inline constexpr const char* full = "HTML_Results";
inline constexpr const char* database = "HTML_Results_Database_Matching";
inline constexpr const char* globalTree = "Global_Matching_Phylogenetic_Tree";
inline constexpr const char* tree = "Phylogenetic_Tree";
}  // namespace pages

/// The script that converts the page.
/// @param folder the working directory, where prince.php stands
std::string conversionScript(const std::string& folder, const std::string& page);

/// Whether the file has the header and the end of a PDF. A tool that fails half-way leaves an empty file or a part.
bool isWholePDF(const std::string& path);

/// Puts a page on the list of those that are to be converted, `pagesToConvert`.
inline void convertPage(const char* baseName) {
    pagesToConvert.emplace_back(baseName);
}

/// Memory that a converter takes for a page of so many bytes.
double converterMemory(std::uintmax_t pageBytes);

/// How many conversions may run at once: at least one, and of more only as many as fit into the memory even if they
/// are the largest.
/// @param needs the memory that each takes
/// @param most how many calls the converter bears
int conversionsAtOnce(std::vector<double> needs, int most, double memory);

/// Converts the pages on the list, each into the PDF beside it, and shows how far it is: several at a time if the file
/// "prince-calls-may-overlap" stands beside prince.php (see `callsAtOnce`), otherwise one after the other. What the
/// tools print is never mixed and comes in the order of the pages. With format "PDF" only the PDF stays; but where no
/// whole one came out, the page, the only copy of the results, is kept under its name with ".unconverted" behind it.
/// Ends the run if a script cannot be written.
void convertPages();

}  // namespace varnolix
