#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "run/system/output_file.h"

// Pieces of work that do not depend on each other and mostly wait for outside tools.

namespace varnolix {

/// How many calls of an outside tool may run at once. Somebody else's WebLogo or converter may keep scratch files of a
/// fixed name, or may not expect company for another reason, so its calls come one after the other. Only a tool that
/// promises to work alongside itself is called from as many threads as the run has.
/// @param promise the file beside the tool that makes this promise, by being there
int callsAtOnce(const std::string& promise);

/// Does the pieces, so many at a time, and begins them in their order. Where one meets trouble the tools of all others
/// are ended, and no other begins.
/// @param doPiece is called with the numbers from 0 to count - 1, from several threads
/// @return the trouble of the earliest piece that met any, which is the same for every number of threads
std::optional<OutputTrouble> doPieces(std::size_t count, int atOnce,
                                      const std::function<std::optional<OutputTrouble>(std::size_t)>& doPiece);

}  // namespace varnolix
