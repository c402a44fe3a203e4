#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

// The page of a job is one file. Its template stands in tools/page as a web page of several files, and is joined here:
// each file that index.html names is put into its place.

namespace varnolix::job {

/// JSON that may stand inside a script element: no text in it can end the element or begin a comment. `<`, `>`, `&` and
/// the two line ends of Unicode, which only stand inside strings, are written as escapes.
std::string scriptSafeJson(std::string_view json);

/// Where the files are that a page is made of.
struct PageFiles {
    std::filesystem::path folder;     ///< the template: index.html and the files that it names
    std::filesystem::path libraries;  ///< what is used in place of /usr/share
};

/// The whole page. In index.html, a line with a script or a style sheet becomes the file that it names. A library,
/// which is named by its path below /usr/share, is left out if it is not installed. Throws JobError if another file is
/// missing.
/// @param marks what stands for {{NAME}}; {{policy}} is the content security policy, which allows what was put in
std::string joinedPage(const PageFiles& files, const std::map<std::string, std::string>& marks);

}  // namespace varnolix::job
