#pragma once

#include <optional>
#include <string>
#include <vector>

#include "job/downloads/download.h"
#include "job/families/families.h"

namespace varnolix::job {

/// The options of `varnolix-job run`, as on the command line.
struct RunOptions {
    std::vector<std::string> files;  ///< each FILE or NAME=FILE
    std::optional<Layout> layout;    ///< told by the content of each file if there is none
    bool skipsBad = false;
    double trimBits = 0;  ///< 0: nothing is trimmed
    int topMotifs = 10;
    int bestMatches = 10;
    std::string cutoff = "0.85";  ///< one of those that the dialogue takes
    double mostQ = 1;             ///< 1: the tables hold all matches
    int threads = 0;              ///< 0: all that the machine has
    std::string collection = "none";
    std::string type = "all";
    std::string format = "text";
    bool drawsTree = false;
    bool merges = false;
    bool findsFamilies = false;
    FamilySettings families;
    std::string folder;  ///< empty: a new one in the working directory
    bool replaces = false;
    bool isQuiet = false;
    std::vector<std::string> arguments;  ///< the whole command line, for the record
};

}  // namespace varnolix::job
