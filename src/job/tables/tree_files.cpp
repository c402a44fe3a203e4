#include "job/tables/tree_files.h"

#include <filesystem>
#include <initializer_list>

#include "run/system/output_file.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"

namespace varnolix::job {

std::string writeTree(const std::string& script, const TreePaths& paths) {
    std::string command = "Rscript " + shellWord(script) + " " + shellWord(paths.table);
    for (const std::string* product : {&paths.newick, &paths.picture}) {
        if (product->empty()) continue;
        // What is there afterwards is of this run.
        refuseLink(*product);
        std::filesystem::remove(*product);
        command += " " + shellWord(*product);
    }
    ToolWork({paths.newick}).run(command + " > /dev/null 2>&1", paths.picture.empty() ? paths.newick : paths.picture);
    std::string missing;
    for (const std::string* product : {&paths.newick, &paths.picture}) {
        if (product->empty() || std::filesystem::exists(*product)) continue;
        missing += (missing.empty() ? "" : " and ") + std::filesystem::path(*product).filename().string();
    }
    if (missing.empty()) return "";
    return missing + " could not be written: Rscript or its package ape is missing or failed.";
}

}  // namespace varnolix::job
