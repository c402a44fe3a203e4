#pragma once

#include <cstddef>
#include <optional>
#include <string>

// How much memory this process may have: what the machine has, and what the limits on the process and on its control
// groups leave of it.

namespace varnolix {

/// The least limit on the memory of the control groups that the process is in, from its own up to the outermost one
/// that can be seen, of both versions; nothing where there is none.
/// @param root folder that stands for "/", without a slash at its end
std::optional<std::size_t> controlGroupLimit(const std::string& root);

/// The least of the machine's memory, the limits on the process's memory, and those of its control groups.
std::size_t memoryOfProcess();

/// What is left of it: limits on addresses leave what is not mapped yet, the others what does not lie in memory yet.
std::size_t memoryLeft();

}  // namespace varnolix
