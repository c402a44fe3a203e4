#include "job/tables/job_record.h"

#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "job/tables/matches_table.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* recordName = "job.json";

Json datasetsJson(const JobSources& sources) {
    std::vector<std::size_t> counts(sources.datasets.size());
    for (const JobMotif& motif : sources.motifs) ++counts[static_cast<std::size_t>(motif.dataset - 1)];
    Json list = Json::array();
    for (std::size_t place = 0; place < counts.size(); ++place) {
        list.push_back({{"dataset", sources.datasets[place].name},
                        {"file", "motifs/" + sources.datasets[place].fileName},
                        {"motifs", counts[place]}});
    }
    return list;
}

Json inputsJson(const std::vector<InputFile>& inputs) {
    Json list = Json::array();
    for (const InputFile& input : inputs) {
        list.push_back({{"file", input.file},
                        {"taken", input.taken},
                        {"refused", input.refused},
                        {"sha256", input.sha256.empty() ? Json() : Json(input.sha256)}});
    }
    return list;
}

Json matchesJson(const JobResults& results) {
    const CountsOfLists counts = matchCounts(results);
    Json object;
    for (const ListKind kind : listKinds) object[listName(kind)] = counts.at(static_cast<std::size_t>(kind));
    return object;
}

Json stagesJson(const std::vector<StageTime>& stages) {
    Json list = Json::array();
    for (const StageTime& stage : stages) list.push_back({{"stage", stage.stage}, {"seconds", stage.seconds}});
    return list;
}

Json writtenJson(const std::vector<WrittenFile>& files) {
    Json list = Json::array();
    for (const WrittenFile& file : files) list.push_back({{"file", file.file}, {"bytes", file.bytes}});
    return list;
}

std::size_t refusedIn(const std::vector<InputFile>& inputs) {
    std::size_t count = 0;
    for (const InputFile& input : inputs) count += input.refused;
    return count;
}

}  // namespace

std::string jobRecordText(const JobRecord& record, const JobResults& results) {
    const JobSources& sources = results.sources;
    Json object;
    object["program"] = "varnolix-job";
    object["version"] = record.version;
    object["date"] = record.date;
    object["command"] = record.command;
    object["settings"] = record.settings;
    object["inputs"] = inputsJson(record.inputs);
    object["datasets"] = datasetsJson(sources);
    object["collection"] = sources.collection.empty() ? Json() : Json(sources.collection);
    object["counts"] = {{"motifs", sources.motifs.size()},
                        {"refused", refusedIn(record.inputs)},
                        {"collection_motifs", sources.references.size()},
                        {"matches", matchesJson(results)}};
    object["stages"] = stagesJson(record.stages);
    object["seconds"] = record.seconds;
    object["peak_memory_bytes"] = record.peakMemory;
    object["files"] = writtenJson(record.written);
    object["notes"] = record.notes;
    object["status"] = "complete";
    return object.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::vector<WrittenFile> filesBelow(const std::string& folder) {
    std::vector<WrittenFile> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_symlink() || !entry.is_regular_file()) continue;
        std::string name = entry.path().lexically_relative(folder).string();
        if (name != recordName) files.push_back({std::move(name), entry.file_size()});
    }
    std::sort(files.begin(), files.end(),
              [](const WrittenFile& one, const WrittenFile& other) { return one.file < other.file; });
    return files;
}

std::uintmax_t peakMemoryOfProcess() {
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) return 0;
    constexpr std::uintmax_t bytesOfUnit = 1024;
    return static_cast<std::uintmax_t>(usage.ru_maxrss) * bytesOfUnit;
}

}  // namespace varnolix::job
