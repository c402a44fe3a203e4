#include "job/many/many_folder.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "job/page/write_page.h"
#include "job/run/job_console.h"
#include "job/tables/checksum.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* speaker = "varnolix-job: ";

/// The value of a file that should hold JSON; null if it does not.
Json jsonOf(const fs::path& path) {
    if (!fs::is_regular_file(path)) return nullptr;
    return Json::parse(readFile(path), nullptr, false);
}

/// Whether the recorded command is that of the list, however many threads it had and wherever its folder was.
bool hasArguments(const Json& record, const std::vector<std::string>& arguments) {
    const Json command = record.value("command", Json());
    const std::size_t others = commandOf({}, {}, 1).size();
    return command.is_array() && command.size() == others + arguments.size() &&
           std::equal(arguments.begin(), arguments.end(), command.begin() + static_cast<std::ptrdiff_t>(others),
                      [](const std::string& argument, const Json& word) { return word == Json(argument); });
}

bool hasFiles(const Json& record, const fs::path& folder) {
    const Json files = record.value("files", Json::array());
    return std::all_of(files.begin(), files.end(), [&](const Json& file) {
        std::error_code error;
        return fs::file_size(folder / file.value("file", std::string()), error) ==
                   file.value("bytes", std::uintmax_t{0}) &&
               !error;
    });
}

}  // namespace

bool isOwnEntry(const std::string& name) {
    const std::string stem = name.ends_with(".new") ? name.substr(0, name.size() - 4) : name;
    return stem == "many" || stem == collectedTable || stem == summaryTable || stem == pageName;
}

std::vector<std::string> commandOf(const ManyFolder& folder, const ListedJob& job, int threads) {
    std::vector<std::string> words = {"run", "--quiet", "--force", "--output=" + folder.job(job).string(),
                                      "--threads=" + std::to_string(threads)};
    words.insert(words.end(), job.arguments.begin(), job.arguments.end());
    return words;
}

void keepList(const ManyFolder& folder, const KeptList& list) {
    Json jobs = Json::array();
    for (const ListedJob& job : list.jobs) {
        jobs.push_back({{"name", job.name}, {"line", job.line}, {"arguments", job.arguments}});
    }
    const Json object = {{"folder", list.folder.string()}, {"jobs", std::move(jobs)}};
    writeFile(folder.list(), object.dump(1) + "\n");
}

KeptList readKeptList(const ManyFolder& folder) {
    const Json object = jsonOf(folder.list());
    if (!object.is_object()) throw JobError(folder.base.string() + " holds no jobs of a list");
    KeptList list{object.at("folder").get<std::string>(), {}};
    for (const Json& entry : object.at("jobs")) {
        list.jobs.push_back({entry.at("name").get<std::string>(), entry.at("line").get<std::size_t>(),
                             entry.at("arguments").get<std::vector<std::string>>()});
    }
    return list;
}

void claimManyFolder(const ManyFolder& folder) {
    std::error_code error;
    // The folder `many` comes first, so a folder that has it is ours even if nothing else was made.
    if (!fs::is_empty(folder.base) && !fs::is_directory(folder.work())) {
        throw JobError(folder.base.string() + " holds other files, so no jobs are made in it");
    }
    fs::create_directories(folder.work() / "logs", error);
    if (error) throw JobError("cannot make the folder " + (folder.work() / "logs").string());
}

Json recordOfDone(const ManyFolder& folder, const ListedJob& job) {
    const fs::path place = folder.job(job);
    Json record = jsonOf(place / "job.json");
    if (!record.is_object() || record.value("status", "") != "complete") return nullptr;
    if (!hasArguments(record, job.arguments) || !hasFiles(record, place)) return nullptr;
    return record;
}

bool hasSameInputs(const Json& record, Checksums& known) {
    const Json inputs = record.value("inputs", Json::array());
    return std::all_of(inputs.begin(), inputs.end(), [&](const Json& input) {
        const std::string path = input.value("file", std::string());
        auto found = known.find(path);
        if (found == known.end()) found = known.emplace(path, sha256OfFile(path)).first;
        return input.value("sha256", Json()) == Json(found->second);
    });
}

std::string failureOf(const ManyFolder& folder, const ListedJob& job) {
    if (!fs::is_regular_file(folder.log(job))) return "";
    const std::string line = lastLineOf(readFile(folder.log(job)));
    return line.starts_with(speaker) ? line.substr(std::string_view(speaker).size()) : line;
}

}  // namespace varnolix::job
