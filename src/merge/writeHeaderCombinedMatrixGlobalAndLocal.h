#pragma once

namespace varnolix {

/// Empties the combined report of the matching within and across files and writes its header.
void writeHeaderCombinedMatrixGlobalAndLocal();

}  // namespace varnolix
