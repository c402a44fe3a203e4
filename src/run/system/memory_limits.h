#pragma once

#include <cstddef>
#include <optional>
#include <string>

// How much memory this process may use, given the machine's memory and the limits on the process and its control
// groups.

namespace varnolix {

/// The lowest memory limit of the control groups (version 1 and 2) that contain the process, from its own group up to
/// the outermost visible one. Nothing if there is no limit.
/// @param root folder to use in place of "/", without a slash at its end
std::optional<std::size_t> controlGroupLimit(const std::string& root);

/// The smallest of: the machine's memory, the limits on the process, and the limits on its control groups.
std::size_t memoryOfProcess();

/// How much of that is still free. Limits on address space are compared with what the process has mapped, the others
/// with what it has in memory.
std::size_t memoryLeft();

/// How much of that other processes, which are about to start, find at this moment: no more than the machine has
/// available.
/// @param root as above
std::size_t memoryAvailable(const std::string& root = "");

}  // namespace varnolix
