#pragma once

#include <cstddef>

// On its own, as the tests link the program with another answer.

namespace varnolix {

/// Bytes that this process may use: the machine's memory, or the limit on the process where that is lower.
std::size_t usableMemory();

}  // namespace varnolix
