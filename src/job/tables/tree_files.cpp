#include "job/tables/tree_files.h"

#include <filesystem>
#include <utility>

#include "run/system/output_file.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"

namespace varnolix::job {

namespace {

std::vector<std::string> productsOf(const TreePaths& tree) {
    std::vector<std::string> products{tree.newick};
    if (!tree.picture.empty()) products.push_back(tree.picture);
    return products;
}

/// A sentence about the files that are not there; empty if all are.
std::string missingOf(const TreePaths& tree) {
    std::string missing;
    for (const std::string& product : productsOf(tree)) {
        if (std::filesystem::exists(product)) continue;
        missing += (missing.empty() ? "" : " and ") + std::filesystem::path(product).filename().string();
    }
    if (missing.empty()) return "";
    return missing + " could not be written: Rscript or its package ape is missing or failed.";
}

}  // namespace

std::vector<std::string> writeTrees(const std::string& script, const std::vector<TreePaths>& trees) {
    std::string command = "Rscript " + shellWord(script);
    std::vector<std::string> products;
    for (const TreePaths& tree : trees) {
        command += " " + shellWord(tree.table) + " " + shellWord(tree.newick) + " " +
                   (tree.picture.empty() ? "-" : shellWord(tree.picture));
        for (std::string& product : productsOf(tree)) products.push_back(std::move(product));
    }
    if (products.empty()) return {};
    for (const std::string& product : products) {
        // What is there afterwards is of this run.
        refuseLink(product);
        std::filesystem::remove(product);
    }
    ToolWork(products).run(command + " > /dev/null 2>&1", products.front());
    std::vector<std::string> notes;
    for (const TreePaths& tree : trees) {
        if (std::string missing = missingOf(tree); !missing.empty()) notes.push_back(std::move(missing));
    }
    return notes;
}

}  // namespace varnolix::job
