#include "job/folder/job_folder.h"

#include <algorithm>

#include "job/folder/collection_store.h"
#include "job/folder/files.h"
#include "job/job_error.h"
#include "run/collections.h"
#include "run/run_text.h"
#include "run/system/outside_text.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

/// What stands in every version of the script `run`.
constexpr std::string_view runScriptTitle = "# Starts VARNOLIX in this job folder";

/// Puts the value in place of every "@name@".
void fillIn(std::string& text, const std::string& name, const std::string& value) {
    const std::string mark = "@" + name + "@";
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size())) {
        text.replace(at, mark.size(), value);
    }
}

void makeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder)) throw JobError("cannot make the folder " + folder.string());
}

/// Makes a link to a file of the installation, or removes the link if that file is gone. What was put there by hand
/// stays.
void linkFile(const fs::path& target, const fs::path& link) {
    const fs::file_status status = fs::symlink_status(link);
    if (fs::exists(status) && !fs::is_symlink(status)) return;
    fs::remove(link);
    if (fs::exists(target)) fs::create_symlink(target, link);
}

/// Whether the folder was made for a job. One that was killed while the folder was made or emptied has left the script
/// `run`, which comes first and goes last, or the beginning of it.
bool isJobFolder(const fs::path& folder) {
    const fs::path script = folder / "run";
    if (fs::is_directory(folder / "motifs") && fs::is_directory(folder / "result") && fs::exists(script)) return true;
    if (fs::is_regular_file(script)) return readFile(script).find(runScriptTitle) != std::string::npos;
    return std::all_of(fs::directory_iterator(folder), fs::directory_iterator(),
                       [](const fs::directory_entry& entry) { return entry.path().filename() == "run.new"; });
}

void writeRunScript(const fs::path& folder, const Installation& installation) {
    writeFile(folder / "run", runScript(installation));
    fs::permissions(folder / "run", fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec,
                    fs::perm_options::add);
}

}  // namespace

std::string runScript(const Installation& installation) {
    std::string text = readFile(installation.home / "tools" / "job_folder" / "run");
    fillIn(text, "home", singleQuoted(installation.home.string()));
    fillIn(text, "program", singleQuoted(installation.program.string()));
    fillIn(text, "packages", singleQuoted(installation.rPackages.string()));
    return text;
}

fs::path makeJobFolder(const fs::path& folder, const Installation& installation) {
    if (folder.string().find('\n') != std::string::npos) {
        throw JobError("a folder name with a line end cannot be answered in the dialogue");
    }
    makeFolder(folder);
    writeRunScript(folder, installation);
    for (const char* name : {"motifs", "result", "databases/jaspar", "databases/transfac", "databases/uniprobe"}) {
        makeFolder(folder / name);
    }
    fs::path job = fs::canonical(folder);
    for (const char* name : {"prince.php", "prince-calls-may-overlap"})
        writeFile(job / name, readFile(installation.home / "tools" / name));
    linkFile(installation.logoTool, job / "motifs" / "weblogo-3.4");
    const std::vector<CollectionPlace> places = collectionPlaces(installation);
    for (const Collection& collection : collections) {
        linkFile(nearestFile(places, collection), collectionFile(job, collection));
    }
    return job;
}

std::string describeJobFolder(const fs::path& folder) {
    const std::string job = folder.string();
    std::string text = "Job folder " + job + "\n  motif files go into  " + job + "/motifs/\n  reports appear in    " +
                       job + "/result/\n  start it with        " + job +
                       "/run   (answers from a file: run ANSWERS)\n\nAnswers for this folder:\n"
                       "  input file's location    " +
                       job +
                       "/motifs/\n  input file names         the bare names of files in motifs/, without blanks\n"
                       "  output file's location   " +
                       job + "/result/\n\nCollections (answer, name, what is there):\n";
    return text + collectionTable({{"", folder}});
}

std::string freeFolderName() {
    const std::string now = getCurrDateTimeFormat();
    const std::string stem = "varnolix-" + now.substr(0, now.find('_')) + "-";
    int number = 1;
    while (fs::exists(fs::symlink_status(stem + std::to_string(number)))) ++number;
    return stem + std::to_string(number);
}

void claimFolder(const fs::path& folder, bool mayEmpty) {
    const fs::file_status status = fs::status(folder);
    if (!fs::exists(status)) return;
    if (!fs::is_directory(status)) throw JobError(folder.string() + " exists and is not a folder");
    if (fs::is_empty(folder)) return;
    if (!isJobFolder(folder)) throw JobError(folder.string() + " holds other files, so no job is made in it");
    if (!mayEmpty) throw JobError(folder.string() + " holds a job already; --force replaces it");
    // A job that is killed meanwhile must neither look whole nor like no job at all.
    fs::remove(folder / "job.json");
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename() != "run") fs::remove_all(entry.path());
    }
    fs::remove_all(folder / "run");
}

}  // namespace varnolix::job
