#pragma once

#include <cstddef>

// On its own, as the tests link the program with another answer.

namespace varnolix {

/// Bytes that the plan of memory shares out: all that this process may have.
std::size_t usableMemory();

}  // namespace varnolix
