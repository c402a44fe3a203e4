#pragma once

#include <string>
#include <string_view>
#include <vector>

// WebLogo's own command: which calls of it have a shorter way, and the plain way for all others.

namespace varnolix::logos {

/// The environment of everything that draws, one "NAME=value" each. Worker and plain way share it, so that no setting
/// of the caller makes their pictures differ.
const std::vector<std::string>& drawingEnvironment();

/// Whether the options are those of one of the program's two calls.
bool isProgramCall(const std::vector<std::string>& options);

/// Whether the matrix has its header line and no row. WebLogo takes such a text for a sequence and draws the letters of
/// the header.
bool isHeaderAlone(std::string_view matrix);

/// Zero-terminated pointers to the words, for exec and its kin.
std::vector<char*> pointersTo(const std::vector<std::string>& words);

/// Becomes WebLogo's own command, with the standard input as it is. Returns only where that cannot be started: an exit
/// status, after a message on standard error.
int runWeblogo(const std::vector<std::string>& options);

/// The same with the matrix on standard input, and a limit to the time that it takes.
int runWeblogo(const std::vector<std::string>& options, std::string_view matrix);

}  // namespace varnolix::logos
