#pragma once

#include <optional>
#include <string>

#include "job/downloads/download.h"

namespace varnolix::job {

/// The arguments of `varnolix-job collections install`.
struct CollectionOptions {
    std::string name;
    std::string file;
    std::string folder;  ///< job folder; empty: the installation
    std::optional<Layout> layout;
};

/// Prints the collections, with where each is installed and how many motifs it has.
int listCollections();

/// Installs a collection from a download. A download with a motif that cannot be read is refused as a whole.
int installCommand(const CollectionOptions& options);

}  // namespace varnolix::job
