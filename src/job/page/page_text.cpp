#include "job/page/page_text.h"

#include <algorithm>
#include <regex>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "job/tables/checksum.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

constexpr std::string_view libraryRoot = "/usr/share/";
constexpr std::string_view policyMark = "policy";

/// What a line of index.html asks for.
struct Inclusion {
    std::string tag;   ///< script or style
    std::string path;  ///< as in the line
};

/// @return whether the line is a script or a style sheet that stands in a file
bool readInclusion(const std::string& line, Inclusion& found) {
    static const std::regex script(R"x(\s*<script src="([^"]+)"></script>\s*)x");
    static const std::regex style(R"x(\s*<link rel="stylesheet" href="([^"]+)">\s*)x");
    std::smatch parts;
    if (std::regex_match(line, parts, script)) {
        found = {"script", parts[1]};
        return true;
    }
    if (std::regex_match(line, parts, style)) {
        found = {"style", parts[1]};
        return true;
    }
    return false;
}

/// Browsers read a carriage return as a line end, which would change the checksum.
std::string withoutReturns(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

/// Whether the text could end its element, or hide the end of it.
bool leavesElement(const std::string& text, const std::string& tag) {
    return text.find("</" + tag) != std::string::npos || text.find("<!--") != std::string::npos;
}

/// The scripts and styles that the page holds, as sources of the content security policy.
struct AllowedSources {
    std::string scripts;
    std::string styles;
};

std::string policyText(const AllowedSources& allowed) {
    return "default-src 'none'; script-src" + allowed.scripts + "; style-src" + allowed.styles +
           "; img-src data:; base-uri 'none'; form-action 'none'";
}

/// The element that takes the place of the line.
std::string elementText(const Inclusion& wanted, const PageFiles& files, AllowedSources& allowed) {
    const bool isLibrary = wanted.path.starts_with(libraryRoot);
    const fs::path path =
        isLibrary ? files.libraries / wanted.path.substr(libraryRoot.size()) : files.folder / wanted.path;
    if (isLibrary && !fs::is_regular_file(path)) return "<!-- not installed: " + wanted.path + " -->\n";
    const std::string text = withoutReturns(readFile(path));
    if (leavesElement(text, wanted.tag)) {
        if (isLibrary) return "<!-- cannot stand inside a page: " + wanted.path + " -->\n";
        throw JobError(path.string() + " cannot stand inside a page");
    }
    std::string& sources = wanted.tag == "script" ? allowed.scripts : allowed.styles;
    sources += " 'sha256-" + sha256AsBase64(text) + "'";
    return "<" + wanted.tag + ">" + text + "</" + wanted.tag + ">\n";
}

/// Puts the values in place of the marks, each once: what they bring in is not searched again.
std::string withMarks(std::string_view text, const std::map<std::string, std::string>& marks) {
    std::string filled;
    for (;;) {
        const std::size_t begin = text.find("{{");
        const std::size_t end = begin == std::string_view::npos ? begin : text.find("}}", begin);
        if (end == std::string_view::npos) return filled.append(text);
        const auto mark = marks.find(std::string(text.substr(begin + 2, end - begin - 2)));
        filled += text.substr(0, begin);
        if (mark == marks.end()) {
            filled += text.substr(begin, end + 2 - begin);
        } else {
            filled += mark->second;
        }
        text.remove_prefix(end + 2);
    }
}

}  // namespace

std::string scriptSafeJson(std::string_view json) {
    constexpr std::string_view lineSeparator = "\xe2\x80\xa8";
    constexpr std::string_view paragraphSeparator = "\xe2\x80\xa9";
    std::string safe;
    safe.reserve(json.size() + json.size() / 16);
    std::size_t copied = 0;
    const auto replace = [&](std::size_t place, std::size_t length, std::string_view escape) {
        safe.append(json, copied, place - copied).append(escape);
        copied = place + length;
    };
    for (std::size_t place = 0; place < json.size(); ++place) {
        switch (json[place]) {
            case '<':
                replace(place, 1, "\\u003c");
                break;
            case '>':
                replace(place, 1, "\\u003e");
                break;
            case '&':
                replace(place, 1, "\\u0026");
                break;
            case lineSeparator[0]:
                if (json.substr(place).starts_with(lineSeparator)) replace(place, 3, "\\u2028");
                if (json.substr(place).starts_with(paragraphSeparator)) replace(place, 3, "\\u2029");
                break;
            default:
                break;
        }
    }
    return safe.append(json, copied);
}

std::string joinedPage(const PageFiles& files, const std::map<std::string, std::string>& marks) {
    const std::string skeleton = withoutReturns(readFile(files.folder / "index.html"));
    AllowedSources allowed;
    // Marks are filled in the skeleton's own lines alone: scripts may hold what looks like one.
    struct Piece {
        std::string text;
        bool hasMarks;
    };
    std::vector<Piece> pieces;
    std::size_t begin = 0;
    while (begin < skeleton.size()) {
        const std::size_t end = std::min(skeleton.find('\n', begin), skeleton.size() - 1) + 1;
        const std::string line = skeleton.substr(begin, end - begin);
        Inclusion wanted;
        if (readInclusion(line, wanted)) {
            pieces.push_back({elementText(wanted, files, allowed), false});
        } else {
            pieces.push_back({line, true});
        }
        begin = end;
    }
    std::map<std::string, std::string> values = marks;
    values[std::string(policyMark)] = policyText(allowed);
    std::string page;
    for (const Piece& piece : pieces) page += piece.hasMarks ? withMarks(piece.text, values) : piece.text;
    return page;
}

}  // namespace varnolix::job
