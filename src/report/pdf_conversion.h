#pragma once

#include <string>

// PDF files, made of finished pages by Prince through a small PHP script that is written, run and removed.

namespace varnolix {

/// The script that converts the page.
/// @param folder the working directory, where prince.php stands
std::string conversionScript(const std::string& folder, const std::string& page);

/// Whether the file has the header and the end of a PDF. A tool that fails half-way leaves an empty file or a part.
bool isWholePDF(const std::string& path);

/// Converts a page of the job into the PDF beside it. With format "PDF" only the PDF stays; but where no whole one came
/// out, the page, the only copy of the results, is kept under its name with ".unconverted" behind it.
/// Ends the run if the script cannot be written.
/// @param baseName the page's name without the job's identity and without ".html"
void convertPage(const std::string& baseName);

}  // namespace varnolix
