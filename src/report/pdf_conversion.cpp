#include "report/pdf_conversion.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <mutex>
#include <string_view>

#include "run/run_text.h"
#include "run/shared_records.h"
#include "run/system/memory_limits.h"
#include "run/system/outside_text.h"
#include "run/system/parallel_pieces.h"
#include "run/system/progress.h"

namespace varnolix {

namespace {

/// The end of a PDF, with room for the white space that may follow it.
constexpr std::streamoff lengthOfEnd = 1024;

// A little more than what was measured: Chromium took 374 MB for a page of 33 kB and 742 MB for one of 1,063 kB,
// WeasyPrint 82 and 750 MB.
constexpr double leastConverterMemory = 360e6;
constexpr double memoryPerPageByte = 600;

/// Leaves only the PDF, or keeps the page where there is no whole one.
void setPageAside(const std::string& page, const std::string& pdf) {
    if (isWholePDF(pdf)) {
        std::remove(page.c_str());
    } else {
        std::rename(page.c_str(), (page + ".unconverted").c_str());
    }
}

std::string pathOf(const std::string& baseName, const char* ending) {
    return outputPath + jobID + baseName + ending;
}

std::optional<OutputTrouble> tryConvertPage(const std::string& baseName, const CapturedConsole* console) {
    const std::string script = pathOf(baseName, ".php");
    const std::string page = pathOf(baseName, ".html");
    const std::string pdf = pathOf(baseName, ".pdf");
    ToolWork work({script});
    auto trouble = writeOutput(script, conversionScript(getCurrentDirectory(), page));
    if (!trouble) trouble = linkTrouble(pdf);
    const bool isTried = !trouble && work.run("php5 " + shellWord(script), pdf, console);
    std::remove(script.c_str());
    if (isTried && outputFileFormat == "PDF") setPageAside(page, pdf);
    return trouble;
}

/// What the conversions print. Each output is shown when this conversion and all before it have ended.
class ConsolesInOrder {
  public:
    /// @param count 0 if the tools print directly to our console
    ConsolesInOrder(std::size_t count, Progress& progress) : consoles_(count), ended_(count), progress_(progress) {}

    const CapturedConsole* at(std::size_t k) const { return k < consoles_.size() ? &consoles_[k] : nullptr; }

    void finish(std::size_t k) {
        const std::lock_guard lock(guard_);
        if (k < ended_.size()) ended_[k] = true;
        for (; next_ < ended_.size() && ended_[next_]; ++next_) {
            if (consoles_[next_].isEmpty()) continue;
            progress_.clear();
            consoles_[next_].print();
        }
    }

  private:
    const std::vector<CapturedConsole> consoles_;
    std::vector<bool> ended_;
    Progress& progress_;
    std::size_t next_ = 0;
    std::mutex guard_;
};

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

double converterMemory(std::uintmax_t pageBytes) {
    return leastConverterMemory + memoryPerPageByte * static_cast<double>(pageBytes);
}

int conversionsAtOnce(std::vector<double> needs, int most, double memory) {
    std::sort(needs.begin(), needs.end(), std::greater<>());
    int count = 0;
    for (const double need : needs) {
        memory -= need;
        if (count == most || memory < 0) break;
        ++count;
    }
    return std::max(1, count);
}

void convertPages() {
    const std::vector<std::string> names = std::exchange(pagesToConvert, {});
    std::vector<double> needs;
    for (const std::string& baseName : names) {
        std::error_code unknown;
        const std::uintmax_t bytes = std::filesystem::file_size(pathOf(baseName, ".html"), unknown);
        needs.push_back(converterMemory(unknown ? 0 : bytes));
    }
    const int mostAtOnce = callsAtOnce(getCurrentDirectory() + "/prince-calls-may-overlap");
    const int atOnce = conversionsAtOnce(needs, mostAtOnce, static_cast<double>(memoryAvailable()));
    // What the scripts print goes to the same console as our own text.
    std::cout << std::flush;
    Progress progress("PDF", names.size(), Progress::Time::untold);
    ConsolesInOrder consoles(atOnce > 1 ? names.size() : 0, progress);
    const auto trouble = doPieces(names.size(), atOnce, [&](std::size_t k) {
        auto ownTrouble = tryConvertPage(names[k], consoles.at(k));
        consoles.finish(k);
        progress.add(1);
        return ownTrouble;
    });
    progress.clear();
    endOnTrouble(trouble);
}

}  // namespace varnolix
