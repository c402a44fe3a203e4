#pragma once

#include <cstddef>

// In a file of its own, as the tests link the program with another version of it.

namespace varnolix {

/// The bytes that the memory plan can share out: all that this process may use.
std::size_t usableMemory();

}  // namespace varnolix
