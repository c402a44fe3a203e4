#include "job/many/job_list.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "job/many/many_folder.h"
#include "job/many/shell_words.h"
#include "job/tables/table.h"

namespace varnolix::job {

namespace {

constexpr const char* nameColumn = "name";
constexpr const char* filesColumn = "files";
/// Linux takes no longer word of a command, and a job is a word of a shell command.
constexpr std::size_t longestCommand = 100'000;
constexpr std::size_t longestName = 200;
constexpr const char* byteOrderMark = "\xef\xbb\xbf";

/// Options that are not a job's own: `many` sets them for all.
bool isSetForAll(const std::string& option) {
    return option == "help" || option == "output" || option == "force" || option == "quiet" || option == "threads";
}

/// An option of `run` that a list may have a column for.
struct ListedOption {
    std::string name;  ///< the long one
    bool isFlag;
};

std::vector<ListedOption> listedOptions(const RunSetup& setUpRun) {
    CLI::App parser;
    RunOptions options;
    const CLI::App* run = setUpRun(parser, options);
    std::vector<ListedOption> found;
    for (const CLI::Option* option : run->get_options()) {
        const std::vector<std::string>& names = option->get_lnames();
        if (!names.empty() && !isSetForAll(names[0])) found.push_back({names[0], option->get_expected_max() == 0});
    }
    return found;
}

std::string withoutBlanksAround(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells = tsvCells(line);
    for (std::string& cell : cells) cell = withoutBlanksAround(cell);
    return cells;
}

/// The places of the columns in a line, by their names.
using Columns = std::map<std::string, std::size_t>;

std::string joined(const std::vector<ListedOption>& options) {
    std::string names;
    for (const ListedOption& option : options) names += ", " + option.name;
    return names;
}

/// What is wrong with the first line, or nothing; fills the columns.
std::vector<std::string> readHeader(const std::string& line, const std::vector<ListedOption>& options,
                                    Columns& columns) {
    std::vector<std::string> faults;
    std::size_t place = 0;
    for (const std::string& name : cellsOf(line)) {
        const bool isOption = std::any_of(options.begin(), options.end(),
                                          [&](const ListedOption& option) { return option.name == name; });
        if (!isOption && name != nameColumn && name != filesColumn) {
            faults.push_back("there is no column " + (name.empty() ? "without a name" : name) +
                             "; the columns are name, files" + joined(options));
        } else if (!columns.emplace(name, place).second) {
            faults.push_back("there are two columns " + name);
        }
        ++place;
    }
    for (const char* needed : {nameColumn, filesColumn}) {
        if (!columns.contains(needed)) faults.push_back(std::string("there is no column ") + needed + " in it");
    }
    return faults;
}

/// The arguments of the options in the line.
struct OptionArguments {
    std::vector<std::string> arguments;
    std::string fault;
};

OptionArguments optionArguments(const std::vector<ListedOption>& options,
                                const std::function<std::string(const std::string&)>& cell) {
    OptionArguments found;
    for (const ListedOption& option : options) {
        const std::string value = cell(option.name);
        if (value.empty()) continue;
        if (!option.isFlag) {
            found.arguments.push_back("--" + option.name + "=" + value);
        } else if (value == "yes") {
            found.arguments.push_back("--" + option.name);
        } else if (value != "no") {
            found.fault = option.name + " is yes or no, not " + value;
        }
    }
    return found;
}

/// What the parser of `run`, or the check, has against the arguments.
std::string faultOf(const std::vector<std::string>& arguments, const RunSetup& setUpRun, const JobCheck& check) {
    try {
        return check(runOptionsOf(arguments, setUpRun));
    } catch (const CLI::ParseError& error) {
        return error.what();
    }
}

}  // namespace

std::string nameFault(const std::string& name) {
    if (name.empty()) return "the job has no name";
    const std::string quoted = "the name \"" + name + "\" ";
    if (name.find('/') != std::string::npos) return quoted + "has a slash, and a job folder is no path";
    if (name[0] == '.' || name[0] == '-') return quoted + "begins with \"" + name[0] + "\"";
    if (std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < ' ' || c == 0x7f; })) {
        return quoted + "has a control character";
    }
    if (name.size() > longestName) return quoted + "is longer than " + std::to_string(longestName) + " bytes";
    if (isOwnEntry(name)) return quoted + "is that of a file that all jobs share";
    return "";
}

RunOptions runOptionsOf(const std::vector<std::string>& arguments, const RunSetup& setUpRun) {
    CLI::App parser;
    RunOptions options;
    setUpRun(parser, options);
    // The parser takes them from the back.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    reversed.emplace_back("run");
    parser.parse(std::move(reversed));
    return options;
}

JobList readJobList(const std::string& text, const RunSetup& setUpRun, const JobCheck& check) {
    JobList list;
    const std::vector<ListedOption> options = listedOptions(setUpRun);
    std::optional<Columns> columns;
    std::map<std::string, std::size_t> linesOfNames;
    std::size_t number = 0;
    const auto refuse = [&](const std::string& fault) {
        list.faults.push_back("line " + std::to_string(number) + ": " + fault);
    };
    for (std::size_t begin = text.starts_with(byteOrderMark) ? 3 : 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line = text.substr(begin, end - begin);
        begin = end + 1;
        ++number;
        if (line.ends_with('\r')) line.pop_back();
        if (validUtf8(line) != line) {
            refuse("it is not UTF-8");
            continue;
        }
        if (line.find_first_not_of(" \t") == std::string::npos || line[0] == '#') continue;
        if (!columns) {
            columns.emplace();
            for (const std::string& fault : readHeader(line, options, *columns)) refuse(fault);
            if (!list.faults.empty()) return list;
            continue;
        }
        const std::vector<std::string> cells = cellsOf(line);
        if (cells.size() > columns->size()) {
            refuse("it has " + std::to_string(cells.size()) + " cells for " + std::to_string(columns->size()) +
                   " columns");
            continue;
        }
        const auto cell = [&](const std::string& column) {
            const auto found = columns->find(column);
            return found == columns->end() || found->second >= cells.size() ? "" : cells[found->second];
        };
        ListedJob job{cell(nameColumn), number, {}};
        const auto [earlier, isNew] = linesOfNames.emplace(job.name, number);
        const std::optional<std::vector<std::string>> files = shellWords(cell(filesColumn));
        OptionArguments found = optionArguments(options, cell);
        if (const std::string fault = nameFault(job.name); !fault.empty()) {
            refuse(fault);
        } else if (!isNew) {
            refuse("the name \"" + job.name + "\" is that of line " + std::to_string(earlier->second) + ", too");
        } else if (!files) {
            refuse("a quotation of its files is not closed");
        } else if (files->empty()) {
            refuse("it has no files");
        } else if (!found.fault.empty()) {
            refuse(found.fault);
        } else {
            job.arguments = std::move(found.arguments);
            job.arguments.emplace_back("--");
            job.arguments.insert(job.arguments.end(), files->begin(), files->end());
            if (line.size() > longestCommand) {
                refuse("it is too long; a folder can stand for its files");
            } else if (const std::string reason = faultOf(job.arguments, setUpRun, check); !reason.empty()) {
                refuse(reason);
            } else {
                list.jobs.push_back(std::move(job));
            }
        }
    }
    if (!columns) list.faults.emplace_back("there is no line with the names of the columns");
    return list;
}

}  // namespace varnolix::job
