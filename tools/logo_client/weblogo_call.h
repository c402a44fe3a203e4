#pragma once

#include <string>
#include <string_view>
#include <vector>

// WebLogo's own command: which of its calls a worker can answer, and how to run it for all others.

namespace varnolix::logos {

/// The environment for everything that draws, as "NAME=value" entries. Workers and WebLogo's own command share it, so
/// that no setting of the caller can make their pictures differ.
const std::vector<std::string>& drawingEnvironment();

/// Whether the options are those of one of the two calls that the program makes.
bool isProgramCall(const std::vector<std::string>& options);

/// Whether the matrix has a header line but no rows. WebLogo would take such a text for a sequence and draw the letters
/// of the header.
bool isHeaderAlone(std::string_view matrix);

/// Pointers to the words, with a null pointer at the end, as the exec functions expect them.
std::vector<char*> pointersTo(const std::vector<std::string>& words);

/// Replaces this process with WebLogo's own command, which inherits standard input. Returns only if that cannot be
/// started: prints a message to standard error and returns the exit status.
int runWeblogo(const std::vector<std::string>& options);

/// The same with this matrix on standard input, and with a time limit.
int runWeblogo(const std::vector<std::string>& options, std::string_view matrix);

}  // namespace varnolix::logos
