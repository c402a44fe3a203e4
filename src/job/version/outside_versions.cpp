#include "job/version/outside_versions.h"

#include <array>
#include <cstdio>
#include <regex>

#include "run/system/outside_text.h"

namespace varnolix::job {

namespace {

/// Prints the packages that the scripts of trees load, each with its version, in one line.
constexpr const char* askRPackages =
    R"(Rscript -e 'versions <- sapply(c("ape", "dendextend", "ggplot2", "ggdendro"), function(name) paste(name,
        tryCatch(as.character(packageVersion(name)), error = function(e) "missing")))
        cat("packages:", paste(versions, collapse = ", "), "\n")')";

/// PHP's script for the PDF files looks for these names, in this order.
constexpr const char* askBrowser =
    "browser=$(command -v chromium || command -v chromium-browser || command -v google-chrome) && "
    "\"$browser\" --version";

/// Starts the command, which ends after so many seconds. What it prints can be read from the pipe.
std::FILE* start(const std::string& command, int seconds) {
    const std::string limited =
        "timeout -k 1 " + std::to_string(seconds) + " sh -c " + shellWord(command) + " 2>&1 < /dev/null";
    return popen(limited.c_str(), "r");
}

std::string allOf(std::FILE* pipe) {
    std::string text;
    std::array<char, 4096> piece{};
    for (std::size_t got = 1; got > 0;) {
        got = std::fread(piece.data(), 1, piece.size(), pipe);
        text.append(piece.data(), got);
    }
    return text;
}

}  // namespace

std::vector<ToolQuestion> toolQuestions(const Installation& installation) {
    return {
        {"WebLogo", shellWord((installation.logoTool / "weblogo").string()) + " --version", R"(WebLogo (\S+))"},
        // The client of WebLogo lets it look there alone.
        {"Ghostscript", "PATH=/usr/bin:/bin gs --version", R"(^(\d\S*))"},
        {"PHP", "php5 --version", R"(PHP (\d\S*))"},
        {"Prince", "/usr/local/bin/prince --version", R"(Prince (\d\S*))"},
        {"Chromium", askBrowser, R"(Chrom\w+ (\d\S*))"},
        {"WeasyPrint", "weasyprint --version", R"(WeasyPrint version (\S+))"},
        {"R", "Rscript --version", R"(version (\d\S*))"},
        {"R packages", askRPackages, R"(packages: (.*\S))"},
        {"GNU parallel", "parallel --version", R"(GNU parallel (\d\S*))"},
        {"Slurm", "sbatch --version", R"(slurm\S* (\d\S*))"},
    };
}

std::vector<std::string> askTools(const std::vector<ToolQuestion>& questions, int limit) {
    std::vector<std::FILE*> pipes;
    pipes.reserve(questions.size());
    for (const ToolQuestion& question : questions) pipes.push_back(start(question.command, limit));
    std::vector<std::string> versions;
    for (std::size_t place = 0; place < questions.size(); ++place) {
        std::string version;
        if (pipes[place] != nullptr) {
            version = versionIn(allOf(pipes[place]), questions[place].pattern);
            pclose(pipes[place]);
        }
        versions.push_back(version);
    }
    return versions;
}

std::string versionIn(const std::string& answer, const std::string& pattern) {
    std::smatch found;
    return std::regex_search(answer, found, std::regex(pattern)) ? found[1].str() : "";
}

}  // namespace varnolix::job
