#pragma once

#include <string>

// PDF files, made of finished pages by Prince through a small PHP script that is written, run and removed.

namespace varnolix {

/// The script that converts the page.
/// @param folder the working directory, where prince.php stands
std::string conversionScript(const std::string& folder, const std::string& page);

/// Converts a page of the job into the PDF beside it. With format "PDF" only the PDF stays; but where none came out,
/// the page, the only copy of the results, is kept under its name with ".unconverted" behind it.
/// @param baseName the page's name without the job's identity and without ".html"
void convertPage(const std::string& baseName);

}  // namespace varnolix
