#pragma once

namespace varnolix {

/// Empties the combined report of the matching across files and writes its header, with a note for one motif file.
void writeHeaderCombinedMatrixGlobal();

}  // namespace varnolix
