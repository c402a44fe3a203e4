#pragma once

#include <stdexcept>

namespace varnolix::job {

/// Why a command cannot go on: one plain sentence without a full stop, for the user. `main` prints it and ends with
/// status 1.
struct JobError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace varnolix::job
